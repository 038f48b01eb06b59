#include "corvane/windows/Window.h"
#include "desktop/windows/WindowForm.h"

#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <exception>
#include <utility>

namespace corvane::desktop {

namespace {

// Set for as long as a scope runs.
class Flag {
public:
    explicit Flag(bool& flag) : m_flag(flag), m_before(std::exchange(flag, true)) {}
    ~Flag() { m_flag = m_before; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& m_flag;
    bool m_before;
};

} // namespace

// A window and a dialog save what has changed; a wizard and a save dialog do their work as a whole.
bool WindowForm::SavesChangesAlone() const {
    return m_type == WindowTypeConstants::cvWindow || m_type == WindowTypeConstants::cvDialog;
}

bool WindowForm::CodeSays(Command command, bool enabled) const {
    const auto it = m_byCode.find(command);
    return it != m_byCode.end() && it->second == enabled;
}

bool WindowForm::AllPassable() const {
    return std::all_of(m_slots.begin(), m_slots.end(), [](const auto& slot) { return slot->IsPassable(); });
}

bool WindowForm::AnyChanged() const {
    return (SavesChangesAlone() && CodeSays(Command::cvApply, true)) ||
           std::any_of(m_slots.begin(), m_slots.end(), [](const auto& slot) { return slot->IsChanged(); });
}

bool WindowForm::HasChanges() {
    if (!m_controller || !Visible())
        return false;
    AskAll();
    return AnyChanged();
}

bool WindowForm::HasUnsavedChanges() {
    return SavesChangesAlone() && HasChanges();
}

Ref<Object> WindowForm::BusinessContext() const {
    const auto window = m_controller.TryAs<Window>();
    return window ? window->BusinessContext() : nullptr;
}

void WindowForm::SettleChanges(bool saved) {
    m_saved = saved;
    QTimer::singleShot(0, m_host->mainWindow, [self = Ref<WindowForm>(this)] { self->m_saved.reset(); });
}

// What the pages say of a command, by what they last answered.
bool WindowForm::IsInOrderFor(Command command) const {
    const bool isWizard = m_type == WindowTypeConstants::cvWizard;
    const auto pages = static_cast<int>(m_slots.size());
    switch (command) {
    case Command::cvHelp:
        return m_front < pages && m_slots[static_cast<std::size_t>(m_front)]->HelpTopic() != 0;
    case Command::cvCancel:
        return true;
    case Command::cvPrevious:
        return m_front > 0;
    case Command::cvNext:
        return m_front + 1 < pages && m_slots[static_cast<std::size_t>(m_front)]->IsPassable();
    case Command::cvApply: // or Save As
        return AllPassable() && (!SavesChangesAlone() || AnyChanged());
    case Command::cvOK: // or Finish or Save
        // A wizard without one of its steps would do half of its work.
        return AllPassable() && (!isWizard || std::none_of(m_slots.begin(), m_slots.end(), [](const auto& slot) {
                   return slot->IsBroken() && !slot->PageDef()->IsOptional();
               }));
    }
    return false;
}

bool WindowForm::IsCommandEnabled(Command standardCommand) {
    if (!m_body || !m_controller || !m_body->Commands().Button(standardCommand) || CodeSays(standardCommand, false))
        return false;
    bool enabled = false;
    m_host->guard([&] { enabled = IsInOrderFor(standardCommand); });
    return enabled;
}

void WindowForm::SetIsCommandEnabled(Command standardCommand, bool enabled) {
    m_byCode[standardCommand] = enabled;
    ShowState();
}

// The state may be older than what the pages hold, so they are asked before anything is done.
void WindowForm::ClickCommand(Command standardCommand) {
    const Ref<Form> self(this);
    if (m_inCommand || !m_controller)
        return;
    const Flag inCommand(m_inCommand);
    m_host->guard([&] {
        if (IsCommandEnabled(standardCommand))
            Do(standardCommand);
    });
    ShowState();
}

void WindowForm::Do(Command command) {
    switch (command) {
    case Command::cvHelp:
        DoHelp();
        break;
    case Command::cvCancel:
        DoCancel();
        break;
    case Command::cvPrevious:
        Step(-1, command);
        break;
    case Command::cvNext:
        Step(1, command);
        break;
    case Command::cvApply: // or Save As, which ends the dialog
        if (NotifyPages(command) && SavePages() && m_type == WindowTypeConstants::cvSaveDialog)
            Close(false);
        break;
    case Command::cvOK: // or Finish or Save
        if (NotifyPages(command) && SavePages())
            Close(false);
        break;
    }
}

void WindowForm::DoHelp() {
    const Ref<PageSlot> slot = m_slots[static_cast<std::size_t>(m_front)];
    if (!slot->IsUsable() || !FailsIn(m_front, [&] { slot->Click(Command::cvHelp); }))
        m_host->help(slot->HelpTopic());
}

void WindowForm::DoCancel() {
    AskAll();
    const LeaveAnswer answer = AnyChanged() ? AskToLeave() : LeaveAnswer::Discard;
    if (answer == LeaveAnswer::Stay || !m_controller)
        return;
    if (answer == LeaveAnswer::Discard)
        NotifyPages(Command::cvCancel);
    if (m_controller)
        Close(answer == LeaveAnswer::Discard);
}

void WindowForm::Step(int by, Command command) {
    const Ref<PageSlot> slot = m_slots[static_cast<std::size_t>(m_front)];
    const int from = m_front;
    if (slot->IsUsable() && FailsIn(m_front, [&] { slot->Click(command); }))
        return;
    if (!m_controller || m_front != from)
        return; // the page has done it itself
    slot->Ask();
    if (by < 0 || slot->IsPassable())
        BringToFront(m_front + by);
}

// True when what the page does fails or ends the window. The failure is shown with the page in front.
bool WindowForm::FailsIn(int page, const std::function<void()>& act) {
    try {
        act();
        return !m_controller;
    } catch (...) {
        if (m_controller)
            m_host->guard([&] { BringToFront(page, true); });
        if (m_raises)
            throw;
        m_host->guard([failure = std::current_exception()] { std::rethrow_exception(failure); });
        return true;
    }
}

// False when a page failed or isn't valid now. Cancelling goes on whatever the pages say.
bool WindowForm::NotifyPages(Command command) {
    const Slots slots = m_slots;
    const bool isCancel = command == Command::cvCancel;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (!slots[i]->IsUsable())
            continue;
        if (isCancel)
            m_host->guard([&] { slots[i]->Click(command); });
        else if (FailsIn(static_cast<int>(i), [&] { slots[i]->Click(command); }))
            return false;
        if (!m_controller)
            return false;
    }
    AskAll();
    if (isCancel || AllPassable() || !m_controller)
        return !!m_controller;
    const auto it = std::find_if(slots.begin(), slots.end(), [](const auto& slot) { return !slot->IsPassable(); });
    BringToFront(static_cast<int>(it - slots.begin()), true);
    return false;
}

bool WindowForm::IsToBeSaved(const PageSlot& slot) const {
    if (!slot.IsUsable() || !slot.IsValid())
        return false;
    if (SavesChangesAlone())
        return slot.IsChanged() || CodeSays(Command::cvApply, true);
    return !slot.PageDef()->IsOptional() || slot.HasWidget();
}

bool WindowForm::SavePages() {
    const Slots slots = m_slots;
    for (std::size_t i = 0; i < slots.size(); ++i)
        if (IsToBeSaved(*slots[i]) && FailsIn(static_cast<int>(i), [&] { slots[i]->Save(); }))
            return false;
    if (CodeSays(Command::cvApply, true))
        m_byCode.erase(Command::cvApply);
    AskAll();
    return true;
}

bool WindowForm::CanBeSaved() {
    if (!m_controller)
        return false;
    AskAll();
    ShowState();
    return IsInOrderFor(SavesChangesAlone() ? Command::cvApply : Command::cvOK);
}

void WindowForm::Save() {
    const Ref<Form> self(this);
    if (!CanBeSaved())
        return;
    const Flag raises(m_raises);
    SavePages();
    ShowState();
}

void WindowForm::Close(bool cancelled) {
    const Ref<Form> self(this);
    const Flag inClose(m_inClose);
    m_cancelled = cancelled;
    Unload();
}

QString WindowForm::Hindrance() const {
    for (const auto& slot : m_slots)
        if (!slot->IsPassable())
            return WindowBody::tr("The page “%1” has missing or invalid entries.").arg(slot->Mark().caption);
    return {};
}

LeaveAnswer WindowForm::AskToLeave() {
    if (!m_host->askToLeave)
        return LeaveAnswer::Discard;
    LeaveQuestion question;
    question.window = TitleOf(*this);
    question.hindrance = SavesChangesAlone() ? Hindrance() : QString();
    question.canSave = SavesChangesAlone() && question.hindrance.isEmpty() && !CodeSays(Command::cvOK, false);
    question.over = Frame();
    LeaveAnswer answer = m_host->askToLeave(question);
    if (answer == LeaveAnswer::Save && (!m_controller || !SavePages()))
        answer = LeaveAnswer::Stay;
    return answer;
}

std::string WindowForm::AsText() {
    static constexpr const char* kinds[] = {"window", "wizard", "dialog", "save dialog"};
    std::string text = "Window " + Caption() + " (" + kinds[static_cast<std::size_t>(m_type)];
    if (IsModal())
        text += ", modal";
    if (m_isActive)
        text += ", active";
    text += ")\n";
    for (std::size_t i = 0; i < m_slots.size(); ++i) {
        const auto& slot = m_slots[i];
        text += "  Page " + slot->PageDef()->Caption();
        text += static_cast<int>(i) == m_front ? " (in front)" : "";
        text += slot->IsChanged() ? " (changed)" : "";
        text += slot->IsValid() ? "" : " (not valid)";
        text += slot->IsBroken() ? " (can't be shown: " + slot->WhyBroken()->Description + ")" : "";
        text += "\n";
    }
    if (!m_body || !m_body->AreCommandsShown())
        return text;
    text += "  Commands";
    for (const Command command : m_body->Commands().Commands()) {
        QString name = m_body->Commands().Button(command)->text();
        text += " [" + name.remove('&').toStdString() + (IsCommandEnabled(command) ? "]" : " (off)]");
    }
    return text + "\n";
}

} // namespace corvane::desktop
