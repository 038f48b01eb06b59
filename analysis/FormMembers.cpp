#include "analysis/FormMembers.h"

#include "adapters/common/Nearest.h"
#include "analysis/Model.h"
#include "corvane/base/Text.h"
#include "forms/FormBinding.h"

#include <algorithm>

namespace corvane::check {

namespace {

using forms::FieldKind;

bool IsWhole(ValueType type) {
    return type == ValueType::Int32 || type == ValueType::Int64 || type == ValueType::Enumeration;
}

bool IsFraction(ValueType type) {
    return type == ValueType::Float32 || type == ValueType::Float64;
}

// Whether every value of the field has a place in a property of that type.
bool Fits(const forms::FieldDef& field, ValueType type) {
    if (type == ValueType::Any)
        return true;
    switch (field.kind) {
    case FieldKind::Table:
    case FieldKind::Tree:
        return type == (field.look == forms::FieldLook::TextTable ? ValueType::Text : ValueType::Reference);
    case FieldKind::Boolean:
        return type == ValueType::Boolean;
    case FieldKind::Integer:
        return IsWhole(type) || IsFraction(type) || type == ValueType::Text;
    case FieldKind::Number:
        return IsFraction(type) || type == ValueType::Text || (IsWhole(type) && field.decimals == 0);
    case FieldKind::Choice:
        return type == ValueType::Text || IsWhole(type);
    case FieldKind::Text:
        return type != ValueType::Reference && type != ValueType::Boolean;
    case FieldKind::Shown:
        return type != ValueType::Reference;
    case FieldKind::Progress:
        return IsWhole(type) || IsFraction(type);
    default:
        return type == ValueType::Text;
    }
}

std::string_view WantedBy(const forms::FieldDef& field) {
    switch (field.kind) {
    case FieldKind::Table:
    case FieldKind::Tree:
        return field.look == forms::FieldLook::TextTable ? "std::string" : "an object with Count and Item";
    case FieldKind::Boolean:
        return "bool";
    case FieldKind::Integer:
        return "Long";
    case FieldKind::Number:
    case FieldKind::Progress:
        return "Double";
    default:
        return "std::string";
    }
}

} // namespace

MemberFault FaultOfMember(const forms::FieldDef& field, const std::vector<MemberInfo>& members) {
    const bool isButton = field.kind == FieldKind::Button;
    const char* kind = isButton ? "member" : "property";
    const auto it = std::find_if(members.begin(), members.end(),
                                 [&](const MemberInfo& member) { return EqualText(member.Name, field.name); });
    if (it == members.end()) {
        std::vector<std::string> names;
        for (const MemberInfo& member : members)
            if (isButton == (member.What == MemberInfo::Kind::Method))
                names.emplace_back(member.Name);
        const auto nearest = Nearest(names, field.name);
        return {true, std::string("has no ") + kind + " of that name",
                nearest    ? "name it " + Quoted(*nearest)
                : isButton ? "list the member in Methods<\u2026>() or Fields<\u2026>()"
                           : "list the value in Fields<\u2026>()"};
    }
    if (isButton)
        return it->What == MemberInfo::Kind::Method && it->ParameterCount == 0
                   ? MemberFault()
                   : MemberFault{false, "has it, but not as a procedure without parameters",
                                 "write one without parameters"};
    const bool isRead =
        it->What == MemberInfo::Kind::Property || (it->ParameterCount == 0 && it->Result.What != ValueType::Nothing);
    if (!isRead)
        return {false, "has it as a procedure and not as a property", "write it as a property"};
    if (Fits(field, it->Result.What))
        return {};
    return {false, "has the property in a type that can't hold every value of the field",
            "make it " + std::string(WantedBy(field)) + ", or take another widget"};
}

} // namespace corvane::check
