// Which commands of the host's own service can be chosen now: those that act on the active window follow it.
#pragma once

#include "corvane/base/Ref.h"

#include <QObject>
#include <QTimer>

namespace corvane::desktop {

class HostService;
class MainWindow;

class CommandStates final : public QObject {
    Q_OBJECT
public:
    // The window outlives it.
    explicit CommandStates(MainWindow& window);
    ~CommandStates() override;

    // Whose actions these are; until it is known, and without one, nothing is done.
    void SetService(Ref<HostService> service);
    // Brings them in line once the event loop turns.
    void Schedule();
    void Update();

Q_SIGNALS:
    // After each time: windows have come, gone or changed.
    void Updated();

private:
    void UpdateActions();

    MainWindow& m_window;
    Ref<HostService> m_service;
    QTimer m_soon;
};

} // namespace corvane::desktop
