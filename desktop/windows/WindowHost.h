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
#include <string>

class QMdiArea;

namespace corvane {
class PageDef;
class Window;
} // namespace corvane

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
    enum class What { Command, Page, Close, Activate, Field };
    const Window& window;
    What what;
    int which = 0;                       // the command, the page's index
    std::function<bool()> hasEnded = {}; // the window
    // Of a field, as in a record of steps: "set", "Title", and "Title Sleep".
    std::string verb = {}, field = {}, rest = {};
};

class FrameKeeper;
class QtFormPage;
using OpenFormFunction = std::function<Ref<QtFormPage>(const Ref<PageDef>&)>;

struct WindowHost {

    // The window whose pages are in a list, however many they are.
    static constexpr const char* ListedWindow = "Corvane.Preferences";

    MdiForm* mainForm = nullptr; // outlives every form
    QPointer<QMdiArea> area;
    FrameKeeper* frames = nullptr; // goes with the area
    QPointer<QWidget> mainWindow;
    // Of the main window's children; one for all, as loading it takes longer than the rest.
    [[nodiscard]] const QIcon& ChildIcon() const;
    Ref<WindowMessages> messages;
    Guard guard;
    // Without it no one is asked and the changes go.
    std::function<LeaveAnswer(const LeaveQuestion&)> askToLeave;
    // The page of the form that the application has for a page; nothing when it has none. Fails when no form comes of
    // the file, and as the page's class does. Without it no page has a form.
    OpenFormFunction openForm;
    // Asked when a window that is shown is to close: false keeps it open, and close, which closes it as the close box
    // does, may be called later. Without it every window may.
    std::function<bool(const Ref<Window>&, const QString& title, QWidget* over, const std::function<void()>& close)>
        mayClose;
    // Says something that waits for the user's answer. Without it that is left out.
    std::function<void(const QString& title, const QString& text)> inform;
    // What a window offers may be different from now on, or it is the active one or no longer.
    std::function<void()> changed;
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
