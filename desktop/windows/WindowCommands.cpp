#include "desktop/windows/WindowCommands.h"

#include <QScopedValueRollback>

namespace corvane::desktop {

bool WindowCommands::SavesChangesAlone() const {
    return m_type == WindowTypeConstants::cvWindow || m_type == WindowTypeConstants::cvDialog;
}

bool WindowCommands::CodeSays(Command command, bool enabled) const {
    const auto it = m_byCode.find(command);
    return it != m_byCode.end() && it->second == enabled;
}

bool WindowCommands::AnyChanged() const {
    return (SavesChangesAlone() && CodeSays(Command::cvApply, true)) || m_pages.AnyChanged();
}

// What the pages say of a command, by what they last answered.
bool WindowCommands::IsInOrderFor(Command command) const {
    const PageSlot* front = m_pages.Front();
    switch (command) {
    case Command::cvHelp:
        return front && front->HelpTopic() != 0;
    case Command::cvCancel:
        return true;
    case Command::cvPrevious:
        return m_pages.FrontIndex() > 0;
    case Command::cvNext:
        return m_pages.FrontIndex() + 1 < m_pages.Count() && front->IsPassable();
    case Command::cvApply: // or Save As
        return m_pages.AllPassable() && (!SavesChangesAlone() || AnyChanged());
    case Command::cvOK: // or Finish or Save
        // A wizard without one of its steps would do half of its work.
        return m_pages.AllPassable() && (m_type != WindowTypeConstants::cvWizard || !m_pages.IsIncomplete());
    }
    return false;
}

bool WindowCommands::IsEnabled(Command command) const {
    bool enabled = false;
    if (!CodeSays(command, false))
        m_guard([&] { enabled = IsInOrderFor(command); });
    return enabled;
}

bool WindowCommands::CanBeSaved() const {
    return IsInOrderFor(SavesChangesAlone() ? Command::cvApply : Command::cvOK);
}

WindowCommands::Command WindowCommands::Default() const {
    if (m_type != WindowTypeConstants::cvWizard)
        return Command::cvOK;
    return m_pages.FrontIndex() + 1 < m_pages.Count() ? Command::cvNext : Command::cvFinish;
}

bool WindowCommands::SkipsStep() const {
    const PageSlot* front = m_pages.Front();
    return front && Default() == Command::cvNext && !front->IsValid() && front->IsPassable();
}

void WindowCommands::Click(Command command) {
    if (m_isRunning)
        return;
    const QScopedValueRollback running(m_isRunning, true);
    m_guard([&] { Do(command); });
    m_owner.ShowState();
}

void WindowCommands::Do(Command command) {
    switch (command) {
    case Command::cvHelp:
        Help();
        break;
    case Command::cvCancel:
        Cancel();
        break;
    case Command::cvPrevious:
        Step(-1, command);
        break;
    case Command::cvNext:
        Step(1, command);
        break;
    case Command::cvApply: // or Save As, which ends the dialog
        if (NotifyPages(command) && SavePages() && m_type == WindowTypeConstants::cvSaveDialog)
            m_owner.Close(false);
        break;
    case Command::cvOK: // or Finish or Save
        if (NotifyPages(command) && SavePages())
            m_owner.Close(false);
        break;
    }
}

void WindowCommands::Help() {
    PageSlot& page = *m_pages.Front();
    if (!page.IsUsable() || Succeeds(m_pages.FrontIndex(), [&] { page.Click(Command::cvHelp); }))
        m_owner.ShowHelp(page.HelpTopic());
}

void WindowCommands::Cancel() {
    m_pages.AskAll();
    const LeaveAnswer answer = AnyChanged() ? m_owner.AskToLeave() : LeaveAnswer::Discard;
    if (answer == LeaveAnswer::Stay || !m_owner.IsOpen())
        return;
    if (answer == LeaveAnswer::Save || NotifyPages(Command::cvCancel))
        m_owner.Close(answer == LeaveAnswer::Discard);
}

void WindowCommands::Step(int by, Command command) {
    const int from = m_pages.FrontIndex();
    PageSlot& page = m_pages.At(from);
    if (page.IsUsable() && !Succeeds(from, [&] { page.Click(command); }))
        return;
    if (m_pages.FrontIndex() != from)
        return; // the page has done it itself
    page.Ask();
    if (m_owner.IsOpen() && (by < 0 || page.IsPassable()))
        m_owner.GoTo(from + by);
}

// False when what the page does fails or ends the window. The failure is shown with the page in front.
bool WindowCommands::Succeeds(int page, const std::function<void()>& act) {
    try {
        act();
        return m_owner.IsOpen();
    } catch (...) {
        if (m_owner.IsOpen())
            m_guard([&] { m_owner.BringToFront(page); });
        if (m_raises)
            throw;
        m_guard([failure = std::current_exception()] { std::rethrow_exception(failure); });
        return false;
    }
}

// False when a page failed, isn't valid now or has ended the window. Cancelling goes on whatever the pages say.
bool WindowCommands::NotifyPages(Command command) {
    const bool isCancel = command == Command::cvCancel;
    for (int i = 0; i < m_pages.Count(); ++i) {
        PageSlot& page = m_pages.At(i);
        if (!page.IsUsable())
            continue;
        if (isCancel)
            m_guard([&] { page.Click(command); });
        else if (!Succeeds(i, [&] { page.Click(command); }))
            return false;
        if (!m_owner.IsOpen())
            return false;
    }
    m_pages.AskAll();
    const int hindrance = isCancel ? -1 : m_pages.FirstHindrance();
    if (m_owner.IsOpen() && hindrance >= 0)
        m_owner.BringToFront(hindrance);
    return m_owner.IsOpen() && hindrance < 0;
}

bool WindowCommands::IsToBeSaved(const PageSlot& slot) const {
    if (!slot.IsUsable() || !slot.IsValid())
        return false;
    if (SavesChangesAlone())
        return slot.IsChanged() || CodeSays(Command::cvApply, true);
    return !slot.PageDef()->IsOptional() || slot.HasWidget();
}

bool WindowCommands::SavePages() {
    for (int i = 0; i < m_pages.Count(); ++i) {
        PageSlot& page = m_pages.At(i);
        if (IsToBeSaved(page) && !Succeeds(i, [&] { page.Save(); }))
            return false;
    }
    if (CodeSays(Command::cvApply, true))
        m_byCode.erase(Command::cvApply);
    m_pages.AskAll();
    return m_owner.IsOpen();
}

void WindowCommands::Save() {
    const QScopedValueRollback raises(m_raises, true);
    (void)SavePages();
}

} // namespace corvane::desktop
