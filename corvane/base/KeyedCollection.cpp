#include "corvane/base/KeyedCollection.h"

#include "corvane/base/Automation.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

constexpr std::array<ValueInfo, 1> aByKeyOrIndex{{{ValueType::Any}}};
constexpr std::array<ValueInfo, 1> aByKey{{{ValueType::Text}}};
constexpr std::array<ValueInfo, 1> aByIndex{{{ValueType::Int32}}};
// In order of their names.
constexpr std::array<MemberInfo, 4> aMembers{{
    {"Count", MemberInfo::Kind::Property, 0, false, {}, {ValueType::Int32}},
    {"HasKey", MemberInfo::Kind::Method, 1, false, aByKey, {ValueType::Boolean}},
    {"Item", MemberInfo::Kind::Method, 1, false, aByKeyOrIndex, {ValueType::Any}},
    {"KeyAt", MemberInfo::Kind::Method, 1, false, aByIndex, {ValueType::Text}},
}};

} // namespace

Variant CollectionByName::Invoke(std::string_view sName, std::span<const Variant> aArguments) {
    const auto it = std::find_if(aMembers.begin(), aMembers.end(),
                                 [&](const MemberInfo& oMember) { return EqualText(oMember.Name, sName); });
    if (it == aMembers.end())
        FailNoSuchMember(*this, sName);
    if (aArguments.size() != it->ParameterCount)
        FailArgumentCount(*this, sName, it->ParameterCount, aArguments.size());
    if (it->Name == "Count")
        return Size();
    if (it->Name == "HasKey")
        return IsKey(ToText(aArguments[0]));
    if (it->Name == "KeyAt")
        return KeyOf(ToLong(aArguments[0]));
    if (const auto* pKey = aArguments[0].Get<std::string>())
        return NamedItem(*pKey);
    return ItemAt(ToLong(aArguments[0]));
}

std::vector<MemberInfo> CollectionByName::MembersByName() const {
    return {aMembers.begin(), aMembers.end()};
}

bool CollectionByName::HasMember(std::string_view sName) const {
    return std::any_of(aMembers.begin(), aMembers.end(),
                       [&](const MemberInfo& oMember) { return EqualText(oMember.Name, sName); });
}

template class KeyedCollection<Ref<Object>>;

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
