// The one way from the host into the library and into plug-ins. What is called may fail, and it may end the application
// and with it the caller.
#pragma once

#include <QObject>
#include <QPointer>
#include <concepts>
#include <functional>
#include <memory>
#include <utility>

namespace corvane::desktop {

class Guard final {
public:
    using Function = std::function<void(const std::function<void()>&)>;

    Guard() = default; // calls without a guard: what fails reaches the caller
    // The function makes the call, shows what fails in it, and never fails itself.
    template <class F>
    requires(!std::same_as<std::remove_cvref_t<F>, Guard> && std::constructible_from<Function, F>) Guard(F&& function)
        : m_function(std::make_shared<const Function>(std::forward<F>(function))) {}

    // Makes the call. The guard itself may go meanwhile.
    void operator()(const std::function<void()>& act) const {
        if (const auto function = m_function)
            (*function)(act);
        else
            act();
    }
    // The same. False when the caller has gone meanwhile: then it must not be touched any more.
    [[nodiscard]] bool operator()(const QObject& caller, const std::function<void()>& act) const {
        const QPointer<const QObject> alive(&caller);
        (*this)(act);
        return !alive.isNull();
    }

    explicit operator bool() const { return m_function != nullptr; }

private:
    std::shared_ptr<const Function> m_function;
};

} // namespace corvane::desktop
