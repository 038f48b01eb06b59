// What of a window is saved, and how it is left.
#include "desktop/windows/WindowForm.h"

#include <QScopedValueRollback>
#include <QTimer>

namespace corvane::desktop {

bool WindowForm::IsDocument() const {
    return MDIChild() && m_type == WindowTypeConstants::cvWindow && !IsModal();
}

bool WindowForm::OffersSave() const {
    const auto command = [this] {
        return m_body->Commands().Button(Command::cvApply) ? Command::cvApply : Command::cvOK;
    };
    return IsOpen() && IsDocument() && m_commands.AnyChanged() && !m_commands.IsHeldBack(command());
}

void WindowForm::SaveByUser() {
    const Ref<Form> self(this);
    if (!OffersSave())
        return;
    if (m_body->Commands().Button(Command::cvApply))
        ByUser(WindowStep::What::Command, static_cast<int>(Command::cvApply), [this] { SaveDocument(); });
    else
        m_host->guard([this] { SaveDocument(); }); // which has no step of its own
}

void WindowForm::SaveDocument() {
    m_pages.AskAll();
    ShowState();
    if (const int page = m_pages.FirstHindrance(); page >= 0 && IsOpen()) {
        const QString hindrance = Hindrance();
        BringToFront(page);
        if (IsOpen() && m_host->inform)
            m_host->inform(TitleOf(*this), WindowBody::tr("It can't be saved yet. %1").arg(hindrance));
    } else if (IsOpen() && m_body->Commands().Button(Command::cvApply)) {
        ClickCommand(Command::cvApply);
    } else if (IsOpen()) {
        (void)m_commands.SavePages();
        ShowState();
    }
}

// Whether something would be lost that a user has entered: what a page fills in by itself is no entry.
bool WindowForm::HasEntries() const {
    return m_commands.AnyChanged() && !(m_beginsChanged && m_body && !m_body->HasEntries());
}

bool WindowForm::CanBeSaved() {
    const Ref<Form> self(this);
    if (!IsOpen())
        return false;
    m_pages.AskAll();
    ShowState();
    return IsOpen() && m_commands.CanBeSaved();
}

void WindowForm::Save() {
    const Ref<Form> self(this);
    if (!CanBeSaved())
        return;
    m_commands.Save();
    ShowState();
}

bool WindowForm::HasChanges() {
    const Ref<Form> self(this);
    if (!m_controller || !Visible())
        return false;
    m_pages.AskAll();
    return m_commands.AnyChanged();
}

bool WindowForm::HasUnsavedChanges() {
    return m_commands.SavesChangesAlone() && HasChanges();
}

// Closing.

void WindowForm::SettleChanges(bool saved) {
    m_saved = saved;
    QTimer::singleShot(0, m_host->mainWindow, [self = Ref<WindowForm>(this)] { self->m_saved.reset(); });
}

// The first request that a window with a minimum size gets only takes the size away, so a second one follows.
void WindowForm::RequestClose() {
    const Ref<Form> self(this);
    m_host->guard([this] {
        m_closeArrived = false;
        m_host->messages->SendMessage(m_handle, WindowMessage::Close, 0, 0);
        if (IsLoaded() && !m_closeArrived)
            m_host->messages->SendMessage(m_handle, WindowMessage::Close, 0, 0);
    });
}

void WindowForm::Abandon() {
    const Ref<Form> self(this);
    m_host->guard([this] { Close(true); });
}

void WindowForm::Close(bool cancelled) {
    const Ref<Form> self(this);
    const QScopedValueRollback inClose(m_inClose, true);
    m_cancelled = cancelled;
    Unload();
}

QString WindowForm::Hindrance() const {
    const int page = m_pages.FirstHindrance();
    return page < 0
               ? QString()
               : WindowBody::tr("The page “%1” has missing or invalid entries.").arg(m_pages.At(page).Mark().caption);
}

LeaveAnswer WindowForm::AskToLeave() {
    if (!m_host->askToLeave || !HasEntries())
        return LeaveAnswer::Discard;
    LeaveQuestion question;
    question.window = TitleOf(*this);
    question.hindrance = m_commands.SavesChangesAlone() ? Hindrance() : QString();
    question.canSave =
        m_commands.SavesChangesAlone() && question.hindrance.isEmpty() && !m_commands.IsHeldBack(Command::cvOK);
    question.over = Frame();
    const LeaveAnswer answer = m_host->askToLeave(question);
    if (answer == LeaveAnswer::Save && (!m_controller || !m_commands.SavePages()))
        return LeaveAnswer::Stay;
    return answer;
}

} // namespace corvane::desktop
