// The signals by which a system or a user ends a program from outside: they close the main window, as its close box
// does, so that services end and unsaved work is asked about.
#pragma once

#include <QObject>

class QSocketNotifier;
class QWidget;

namespace corvane::desktop {

// One at a time. SIGTERM, SIGHUP and SIGINT; a second one while the first is being answered ends the program at once.
// The end of the desktop's session closes the window, too, and is called off when that is refused.
class EndSignals final : public QObject {
    Q_OBJECT
public:
    explicit EndSignals(QWidget* mainWindow);
    ~EndSignals() override;

private:
    void Arrived();

    QWidget* m_mainWindow;
    QSocketNotifier* m_notifier = nullptr;
};

} // namespace corvane::desktop
