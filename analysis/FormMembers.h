// Whether a class has what a field of a form is bound to. Only sources of this folder include it.
#pragma once

#include "corvane/base/Object.h"
#include "forms/FormDef.h"

#include <string>
#include <vector>

namespace corvane::check {

struct MemberFault {
    bool isMissing = false; // otherwise it is of another type
    std::string text;       // behind "the class "X" "; "" for none
    std::string cure;
};

[[nodiscard]] MemberFault FaultOfMember(const forms::FieldDef& field, const std::vector<MemberInfo>& members);

} // namespace corvane::check
