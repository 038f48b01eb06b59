#include "corvane/base/Object.h"

#include "corvane/base/Failure.h"
#include "corvane/base/ObjectWatch.h"
#include "corvane/base/Text.h"
#include "corvane/base/Variant.h"

#include <cstdlib>
#include <cxxabi.h>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>

namespace corvane {

Object::~Object() {
    ObjectWatch::Forget(*this);
}

Long Object::ObjectKey() const noexcept {
    // Far from the small numbers that applications use as keys of their windows, next to which these are.
    static Long lLast = 1'000'000'000;
    if (m_lObjectKey == 0)
        m_lObjectKey = ++lLast;
    return m_lObjectKey;
}

std::string_view Object::TypeName() const {
    static std::unordered_map<std::type_index, std::string> mapNames;
    const std::type_info& oType = typeid(*this);
    auto it = mapNames.find(oType);
    if (it == mapNames.end()) {
        int nStatus = 0;
        char* pDemangled = abi::__cxa_demangle(oType.name(), nullptr, nullptr, &nStatus);
        std::string sName = nStatus == 0 ? pDemangled : oType.name();
        std::free(pDemangled);
        const std::size_t iTemplate = sName.find('<');
        const std::size_t iScope = sName.rfind("::", iTemplate == std::string::npos ? iTemplate : iTemplate - 1);
        if (iScope != std::string::npos)
            sName.erase(0, iScope + 2);
        it = mapNames.emplace(oType, std::move(sName)).first;
    }
    return it->second;
}

Variant Object::Invoke(std::string_view sName, std::span<const Variant> /*aArguments*/) {
    Fail(FailureNumber::NoSuchMember,
         "An object of class \"" + std::string(TypeName()) + "\" has no member \"" + std::string(sName) + "\"");
}

void Object::Put(std::string_view sName, const Variant& /*vValue*/) {
    Fail(FailureNumber::NoSuchMember, "An object of class \"" + std::string(TypeName()) + "\" has no property \"" +
                                          std::string(sName) + "\" that can be written");
}

std::vector<MemberInfo> Object::MembersByName() const {
    return {};
}

bool Object::HasMember(std::string_view /*sName*/) const {
    return false;
}

} // namespace corvane
