// The toolkit's application object, with a guard around everything that the toolkit calls: a failure in a slot, a
// timer, an event handler or a call that another thread has queued ends here, as near as it can be caught, and not the
// program.
#pragma once

#include "corvane/base/Failure.h"

#include <QApplication>
#include <QEvent>
#include <QString>
#include <functional>
#include <string>

namespace corvane::desktop {

struct UncaughtFailure {
    Failure failure;
    std::string plugin;   // in whose code it was thrown, by its library; empty when no plug-in was on the way
    std::string page;     // the ProgID of the page whose widget was called; empty for another's
    QString receiver;     // the class of the object that was called
    bool isInput = false; // the user did something; otherwise it may come again and again by itself
};

class GuardedApplication final : public QApplication {
    Q_OBJECT
public:
    using QApplication::QApplication;

    // Shows failures, in the main thread; of several the one made last. Without one they go to the error stream.
    class Catcher final {
    public:
        using Function = std::function<void(const UncaughtFailure&)>;
        explicit Catcher(Function show);
        ~Catcher();
        Catcher(const Catcher&) = delete;
        Catcher& operator=(const Catcher&) = delete;

    private:
        friend class GuardedApplication;
        Function m_show;
    };

    // How many events are being handled in this thread, each within the one before. 0 in a program with another
    // application object.
    [[nodiscard]] static int EventDepth() noexcept;

    bool notify(QObject* receiver, QEvent* event) override;
    // Runs the event loop. What the toolkit calls without an event ends here and starts the loop again.
    int Run();

private:
    // In a catch block.
    static UncaughtFailure Current(QObject* receiver, QEvent::Type type);
    static void Show(const UncaughtFailure& uncaught);
};

} // namespace corvane::desktop
