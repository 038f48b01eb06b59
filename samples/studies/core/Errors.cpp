#include "Errors.h"

#include "corvane/base/Failure.h"

#include <utility>

namespace studies {

void FailWith(std::string sText) {
    corvane::Fail(corvane::FailureNumber::ObjectErrorBase + 1, std::move(sText), "Studies");
}

} // namespace studies
