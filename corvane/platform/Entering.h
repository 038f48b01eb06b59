// Reports to the observer that the library enters the code of a client's object, and that it returns. Scopes are
// within one another as the calls do.
#pragma once

#include "corvane/base/Ref.h"

namespace corvane {

class __attribute__((visibility("default"))) Entering final {
public:
    class Watcher {
    public:
        virtual ~Watcher() = default;
        virtual void Entered(const Object& oObject) noexcept = 0;
        virtual void Left() noexcept = 0;
    };

    // Without an object the observer isn't notified. Fails with 28 in the 400th nested scope: endless recursion through
    // the library is reported while there is stack left to report it.
    explicit Entering(const Ref<Object>& oObject);
    ~Entering();
    Entering(const Entering&) = delete;
    Entering& operator=(const Entering&) = delete;

    // There is one, or a null pointer for none. It isn't changed inside of a scope.
    static void SetWatcher(Watcher* pWatcher) noexcept;

private:
    bool m_bTold;
};

} // namespace corvane
