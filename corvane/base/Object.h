// The root of everything that crosses an interface: an intrusive reference count, a class name at run time, and calls
// by name. One thread: the count is not atomic, and debug builds check it.
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

class Object;
class Variant;

// The type of a value that travels by name. Any is a Variant, Nothing the result of a procedure.
enum class ValueType { Nothing, Any, Boolean, Int32, Int64, Float32, Float64, Text, Enumeration, Reference };

struct ValueInfo {
    ValueType What = ValueType::Nothing;
    std::string_view Class = {}; // of a Reference, as in "corvane::ActionItem"
};

// One callable member, as documentation and tools list it.
struct MemberInfo {
    enum class Kind { Method, Property };
    std::string_view Name;
    Kind What;
    std::size_t ParameterCount; // of a method; 0 for a property
    bool CanWrite;              // a property that takes a value
    // As many as ParameterCount, in order. They last as long as the class's code.
    std::span<const ValueInfo> Parameters = {};
    ValueInfo Result = {}; // of a method, or what a property holds
};

// What debug builds watch. The functions are there in every build, so that debug plug-ins fit a library of any.
namespace detail {

// Ends the program with a message that names the class when this isn't the thread that has loaded the library.
[[gnu::visibility("default")]] void CheckThread(const Object& oObject) noexcept;
// A debug build of the library knows its living objects.
[[gnu::visibility("default")]] void ObjectMade(const Object& oObject) noexcept;

} // namespace detail

class __attribute__((visibility("default"))) Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    static void* operator new(std::size_t nBytes) { return SmallMemory::Take(nBytes); }
    static void operator delete(void* pMemory, std::size_t nBytes) noexcept { SmallMemory::GiveBack(pMemory, nBytes); }

    void AddRef() const noexcept {
        CheckThread();
        ++m_nReferences;
    }
    void Release() const noexcept {
        CheckThread();
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

    // In debug builds alone: fails the program when another thread than the library's uses the object.
    void CheckThread() const noexcept {
#ifndef NDEBUG
        detail::CheckThread(*this);
#endif
    }

protected:
#ifdef NDEBUG
    Object() = default;
#else
    Object() {
        detail::ObjectMade(*this);
    }
#endif
    virtual ~Object();

private:
    mutable std::uint32_t m_nReferences = 1; // New adopts it, so that a constructor can provide references to itself
    mutable Long m_lObjectKey = 0;
};

} // namespace corvane
