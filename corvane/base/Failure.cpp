#include "corvane/base/Failure.h"

#include <new>
#include <utility>

namespace corvane {

namespace {

const char* RunTimeText(Long lNumber) {
    switch (lNumber) {
    case FailureNumber::InvalidProcedureCall:
        return "Invalid procedure call or argument";
    case FailureNumber::Overflow:
        return "Overflow";
    case FailureNumber::OutOfMemory:
        return "Out of memory";
    case FailureNumber::Subscript:
        return "Subscript out of range";
    case FailureNumber::TypeMismatch:
        return "Type mismatch";
    case FailureNumber::OutOfStackSpace:
        return "Out of stack space";
    case FailureNumber::FileNotFound:
        return "File not found";
    case FailureNumber::FileAccess:
        return "Path/File access error";
    case FailureNumber::PathNotFound:
        return "Path not found";
    case FailureNumber::ObjectNotSet:
        return "Object variable not set";
    case FailureNumber::CannotCreateObject:
        return "Component can't create object";
    case FailureNumber::NoSuchMember:
        return "Object doesn't have this property or method";
    case FailureNumber::WrongNumberOfArguments:
        return "Wrong number of arguments";
    case FailureNumber::KeyInUse:
        return "This key is already in use in this collection";
    default:
        return "Application-defined failure";
    }
}

} // namespace

Failure::Failure(Long lNumber, std::string sDescription, std::string sSource, std::string sHelpFile, Long lHelpContext)
    : Number(lNumber), Source(sSource.empty() ? "Corvane" : std::move(sSource)),
      Description(sDescription.empty() ? RunTimeText(lNumber) : std::move(sDescription)),
      HelpFile(std::move(sHelpFile)), HelpContext(lHelpContext) {}

Failure::~Failure() = default;

void Fail(Long lNumber, std::string sDescription, std::string sSource) {
    throw Failure(lNumber, std::move(sDescription), std::move(sSource));
}

Failure CurrentFailure() {
    try {
        throw;
    } catch (const Failure& oFailure) {
        return oFailure;
    } catch (const std::bad_alloc&) {
        return Failure(FailureNumber::OutOfMemory);
    } catch (const std::exception& oException) {
        return Failure(FailureNumber::Foreign, oException.what());
    } catch (...) {
        return Failure(FailureNumber::Foreign, "An exception of an unknown type");
    }
}

} // namespace corvane
