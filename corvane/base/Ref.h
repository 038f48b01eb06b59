// The only owner of objects: a counted reference that may be nothing. Using nothing fails with 91 and never crashes.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Object.h"

#include <concepts>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace corvane {

[[noreturn, gnu::visibility("default")]] void FailObjectNotSet();
[[noreturn, gnu::visibility("default")]] void FailNoSuchInterface(const Object& oObject);

template <class T>
class Ref {
public:
    Ref() noexcept = default;
    Ref(std::nullptr_t) noexcept {}
    // Shares an object that another reference holds already, for example `this`.
    explicit Ref(T* pObject) noexcept : m_pObject(pObject) { Hold(); }
    Ref(const Ref& oOther) noexcept : m_pObject(oOther.m_pObject) { Hold(); }
    Ref(Ref&& oOther) noexcept : m_pObject(std::exchange(oOther.m_pObject, nullptr)) {}
    template <class U>
    requires(std::convertible_to<U*, T*>) Ref(const Ref<U>& oOther)
    noexcept : m_pObject(oOther.Get()) { Hold(); }
    ~Ref() {
        if (m_pObject)
            m_pObject->Release();
    }

    Ref& operator=(const Ref& oOther) noexcept {
        Ref(oOther).Swap(*this);
        return *this;
    }
    Ref& operator=(Ref&& oOther) noexcept {
        Ref(std::move(oOther)).Swap(*this);
        return *this;
    }

    // Takes over the reference that a new object is born with.
    static Ref Adopt(T* pObject) noexcept {
        Ref oRef;
        oRef.m_pObject = pObject;
        return oRef;
    }

    T* operator->() const {
        if (!m_pObject) [[unlikely]]
            FailObjectNotSet();
#ifndef NDEBUG
        m_pObject->CheckThread();
#endif
        return m_pObject;
    }
    T& operator*() const {
        return *operator->();
    }
    [[nodiscard]] T* Get() const noexcept {
        return m_pObject;
    }
    explicit operator bool() const noexcept {
        return m_pObject != nullptr;
    }

    // The same object seen as another type. Fails with 13 when it isn't one; nothing stays nothing.
    template <class U>
    [[nodiscard]] Ref<U> As() const {
        Ref<U> oOther = TryAs<U>();
        if (m_pObject && !oOther)
            FailNoSuchInterface(*m_pObject);
        return oOther;
    }
    // The same, but nothing when it isn't one.
    template <class U>
    [[nodiscard]] Ref<U> TryAs() const noexcept {
        if constexpr (std::convertible_to<T*, U*>)
            return Ref<U>(static_cast<U*>(m_pObject));
        else
            return Ref<U>(dynamic_cast<U*>(m_pObject));
    }

    void Swap(Ref& oOther) noexcept {
        std::swap(m_pObject, oOther.m_pObject);
    }

private:
    void Hold() const noexcept {
        if (m_pObject)
            m_pObject->AddRef();
    }

    T* m_pObject = nullptr;
};

// Identity: two views of one object are equal.
template <class T, class U>
[[nodiscard]] bool operator==(const Ref<T>& oLeft, const Ref<U>& oRight) noexcept {
    return static_cast<const Object*>(oLeft.Get()) == static_cast<const Object*>(oRight.Get());
}
template <class T>
[[nodiscard]] bool operator==(const Ref<T>& oLeft, std::nullptr_t) noexcept {
    return oLeft.Get() == nullptr;
}

template <class T, class... Arguments>
[[nodiscard]] Ref<T> New(Arguments&&... aArguments) {
    return Ref<T>::Adopt(new T(std::forward<Arguments>(aArguments)...));
}

} // namespace corvane
