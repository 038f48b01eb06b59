// The root of everything that crosses an interface: an intrusive reference count, a class name at run time, and calls
// by name. One thread: the count is not atomic.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/SmallMemory.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class Variant;

// One callable member, as documentation and tools list it.
struct MemberInfo {
    enum class Kind { Method, Property };
    std::string_view Name;
    Kind What;
    std::size_t ParameterCount; // of a method; 0 for a property
    bool CanWrite;              // a property that takes a value
};

class __attribute__((visibility("default"))) Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    static void* operator new(std::size_t nBytes) { return SmallMemory::Take(nBytes); }
    static void operator delete(void* pMemory, std::size_t nBytes) noexcept { SmallMemory::GiveBack(pMemory, nBytes); }

    void AddRef() const noexcept { ++m_nReferences; }
    void Release() const noexcept {
        if (--m_nReferences == 0)
            delete this;
    }

    // A number of this object's own, stable while it lives, given out at the first call.
    [[nodiscard]] Long ObjectKey() const noexcept;

    // The class name, without namespace.
    [[nodiscard]] virtual std::string_view TypeName() const;

    // Calls a method, or reads a property when there are no arguments. 438 for an unknown name, 450 for a wrong
    // number of arguments, 13 for an argument that doesn't convert.
    virtual Variant Invoke(std::string_view sName, std::span<const Variant> aArguments);

    // Writes a property. 438 for an unknown name or one that can't be written.
    virtual void Put(std::string_view sName, const Variant& vValue);

    // The members that Invoke and Put know, in order of their names.
    [[nodiscard]] virtual std::vector<MemberInfo> MembersByName() const;

    // Whether MembersByName lists the name. Ask first if the answer may be no: a call that fails takes fifty times as
    // long.
    [[nodiscard]] virtual bool HasMember(std::string_view sName) const;

protected:
    Object() = default;
    virtual ~Object();

private:
    mutable std::uint32_t m_nReferences = 1; // New adopts it, so that a constructor can provide references to itself
    mutable Long m_lObjectKey = 0;
};

} // namespace corvane
