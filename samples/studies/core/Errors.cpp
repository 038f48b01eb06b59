#include "Errors.h"

#include "corvane/base/Failure.h"

#include <utility>

namespace studies {

void FailWith(std::string text) {
    corvane::Fail(corvane::FailureNumber::ObjectErrorBase + 1, std::move(text), "Studies");
}

} // namespace studies
