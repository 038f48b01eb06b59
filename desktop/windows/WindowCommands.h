// The commands of one window: which of them are enabled, and what they do to its pages.
#pragma once

#include "corvane/windows/WindowEnums.h"
#include "desktop/guard/Guard.h"
#include "desktop/windows/WindowHost.h"
#include "desktop/windows/WindowPages.h"

#include <QString>
#include <exception>
#include <functional>
#include <map>

namespace corvane::desktop {

class WindowCommands final {
public:
    using Command = StandardCommandConstants;

    // The window around them.
    class Owner {
    public:
        [[nodiscard]] virtual bool IsOpen() const = 0;
        virtual void BringToFront(int page) = 0; // also a step that can't be reached
        virtual void GoTo(int page) = 0;         // only one that can
        virtual void ShowState() = 0;
        virtual void ShowHelp(Long topic) = 0;
        [[nodiscard]] virtual LeaveAnswer AskToLeave() = 0; // what becomes of the changes; Save has been done then
        virtual void Close(bool cancelled) = 0;

    protected:
        ~Owner() = default;
    };

    // The owner outlives its commands and is held while one of them runs.
    WindowCommands(WindowTypeConstants type, WindowPages& pages, Guard guard, Owner& owner)
        : m_type(type), m_pages(pages), m_guard(std::move(guard)), m_owner(owner) {}

    // A window and a dialog save what has changed; a wizard and a save dialog do their work as a whole.
    [[nodiscard]] bool SavesChangesAlone() const;
    // By what the pages last answered, and by what code has said.
    [[nodiscard]] bool AnyChanged() const;
    [[nodiscard]] bool IsEnabled(Command command) const;
    [[nodiscard]] bool IsHeldBack(Command command) const { return CodeSays(command, false); }
    [[nodiscard]] bool CanBeSaved() const;
    // False holds a command back until true; true enables Apply, Save and Save As also while no page reports a change.
    void SetEnabled(Command command, bool enabled) { m_byCode[command] = enabled; }
    // The command that the return key chooses.
    [[nodiscard]] Command Default() const;
    // Of a wizard: whether Next leaves the step in front out.
    [[nodiscard]] bool SkipsStep() const;

    // The state may be older than what the pages hold, so they are asked before anything is done. Does nothing while
    // another command runs.
    void Click(Command command);
    // Saves what is to be saved. False when that has failed, which has been shown, or has ended the window.
    [[nodiscard]] bool SavePages();
    // The same. What fails is raised.
    void Save();

private:
    [[nodiscard]] bool CodeSays(Command command, bool enabled) const;
    [[nodiscard]] bool IsInOrderFor(Command command) const;
    void Do(Command command);
    void Help();
    void Cancel();
    void Step(int by, Command command);
    [[nodiscard]] bool NotifyPages(Command command);
    [[nodiscard]] bool Succeeds(int page, const std::function<void()>& act);
    [[nodiscard]] bool IsToBeSaved(const PageSlot& slot) const;

    WindowTypeConstants m_type;
    WindowPages& m_pages;
    Guard m_guard;
    Owner& m_owner;
    std::map<Command, bool> m_byCode; // what code has said of a command
    bool m_isRunning = false;
    bool m_raises = false; // failures of saving go to the caller
};

} // namespace corvane::desktop
