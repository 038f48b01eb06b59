#include "corvane/base/KeyedCollection.h"

namespace corvane {

void FailKeyInUse(std::string_view sKey) {
    throw Failure(FailureNumber::KeyInUse, "The key \"" + std::string(sKey) + "\" is already in use");
}

void FailNoSuchKey(std::string_view sKey) {
    throw Failure(FailureNumber::InvalidProcedureCall, "There is no \"" + std::string(sKey) + "\"");
}

void FailNoSuchIndex(long long nIndex, long long nCount) {
    throw Failure(FailureNumber::InvalidProcedureCall,
                  "There is no element " + std::to_string(nIndex) + " among " + std::to_string(nCount));
}

} // namespace corvane
