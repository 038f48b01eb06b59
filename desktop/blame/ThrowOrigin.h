// Whose code an exception came from that only the program itself catches. It is noted when the exception is thrown, as
// the calls that led there are gone when it is caught.
#pragma once

namespace corvane::desktop {

// While one lives, the exceptions of its thread are noted, or not noted. They stand within one another; the innermost
// holds. Noting costs a walk up the calls for each exception, so it is for code that is expected to throw none.
class ThrowOrigin final {
public:
    enum class Mode { Noted, NotNoted };

    explicit ThrowOrigin(Mode mode) noexcept;
    ~ThrowOrigin();
    ThrowOrigin(const ThrowOrigin&) = delete;
    ThrowOrigin& operator=(const ThrowOrigin&) = delete;

    // The plug-in, by its library, in whose code the latest noted exception of this thread was thrown: the innermost
    // on the way to it. A null pointer when no plug-in was on the way, or nothing has been noted.
    [[nodiscard]] static const char* Latest() noexcept;

private:
    Mode m_before;
    const char* m_latestBefore;
};

} // namespace corvane::desktop
