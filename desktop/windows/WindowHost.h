// What the forms of windows need of the application around them.
#pragma once

#include "adapters/messages/WindowMessages.h"
#include "corvane/platform/controls/MdiForm.h"
#include "desktop/guard/Guard.h"

#include <QIcon>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

class QMdiArea;

namespace corvane {
class Window;
}

namespace corvane::desktop {

// A window with unsaved changes is to close.
struct LeaveQuestion {
    QString window;
    QString hindrance; // why it can't be saved as it is; empty when it can
    bool canSave = false;
    QWidget* over = nullptr;
};
enum class LeaveAnswer { Stay, Discard, Save };

// What a user does to a window, for those who follow it.
struct WindowStep {
    enum class What { Command, Page, Close, Activate };
    const Window& window;
    What what;
    int which = 0;                       // the command, the page's index
    std::function<bool()> hasEnded = {}; // the window
};

struct WindowHost {

    // The window whose pages are in a list, however many they are.
    static constexpr const char* ListedWindow = "Corvane.Preferences";

    MdiForm* mainForm = nullptr; // outlives every form
    QPointer<QMdiArea> area;
    QPointer<QWidget> mainWindow;
    // Of the main window's children; one for all, as loading it takes longer than the rest.
    [[nodiscard]] const QIcon& ChildIcon() const;
    Ref<WindowMessages> messages;
    Guard guard;
    // Without it no one is asked and the changes go.
    std::function<LeaveAnswer(const LeaveQuestion&)> askToLeave;
    // Opens a help topic. Without it no window offers help.
    std::function<void(Long)> help;
    // Runs what a user does to a window. Without it that is just done.
    std::function<void(const WindowStep&, const std::function<void()>& work)> byUser;
    // Runs instead of the event loop while a modal form is open and returns when goesOn says no; end ends the form.
    std::function<void(const std::function<bool()>& goesOn, const std::function<void()>& end)> modalLoop;

private:
    mutable QIcon m_childIcon; // null until it is needed
};

} // namespace corvane::desktop
