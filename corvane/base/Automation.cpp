#include "corvane/base/Automation.h"

namespace corvane {

void FailNoSuchMember(const Object& oObject, std::string_view sName) {
    throw Failure(FailureNumber::NoSuchMember, "An object of class \"" + std::string(oObject.TypeName()) +
                                                   "\" has no member \"" + std::string(sName) +
                                                   "\" that can be used in this way");
}

void FailArgumentCount(const Object& oObject, std::string_view sName, std::size_t nWanted, std::size_t nGiven) {
    throw Failure(FailureNumber::WrongNumberOfArguments,
                  "\"" + std::string(sName) + "\" of class \"" + std::string(oObject.TypeName()) + "\" takes " +
                      std::to_string(nWanted) + " arguments and was given " + std::to_string(nGiven));
}

} // namespace corvane
