#include "corvane/base/Ref.h"

namespace corvane {

void FailObjectNotSet() {
    throw Failure(FailureNumber::ObjectNotSet);
}

void FailNoSuchInterface(const Object& oObject) {
    throw Failure(FailureNumber::TypeMismatch, "Type mismatch: an object of class \"" +
                                                   std::string(oObject.TypeName()) +
                                                   "\" doesn't offer the interface that is asked for");
}

} // namespace corvane
