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
    explicit Flag(bool& bFlag) : m_bFlag(bFlag), m_bBefore(std::exchange(bFlag, true)) {}
    ~Flag() { m_bFlag = m_bBefore; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& m_bFlag;
    bool m_bBefore;
};

} // namespace

// A window and a dialog save what has changed; a wizard and a save dialog do their work as a whole.
bool WindowForm::SavesChangesAlone() const {
    return m_eType == WindowTypeConstants::cvWindow || m_eType == WindowTypeConstants::cvDialog;
}

bool WindowForm::CodeSays(Command eCommand, bool bEnabled) const {
    const auto it = m_mapByCode.find(eCommand);
    return it != m_mapByCode.end() && it->second == bEnabled;
}

bool WindowForm::AllPassable() const {
    return std::all_of(m_aSlots.begin(), m_aSlots.end(), [](const auto& oSlot) { return oSlot->IsPassable(); });
}

bool WindowForm::AnyChanged() const {
    return (SavesChangesAlone() && CodeSays(Command::cvApply, true)) ||
           std::any_of(m_aSlots.begin(), m_aSlots.end(), [](const auto& oSlot) { return oSlot->IsChanged(); });
}

bool WindowForm::HasChanges() {
    if (!m_oController || !Visible())
        return false;
    AskAll();
    return AnyChanged();
}

bool WindowForm::HasUnsavedChanges() {
    return SavesChangesAlone() && HasChanges();
}

Ref<Object> WindowForm::BusinessContext() const {
    const auto oWindow = m_oController.TryAs<Window>();
    return oWindow ? oWindow->BusinessContext() : nullptr;
}

void WindowForm::SettleChanges(bool bSaved) {
    m_oSaved = bSaved;
    QTimer::singleShot(0, m_pHost->pMainWindow, [oSelf = Ref<WindowForm>(this)] { oSelf->m_oSaved.reset(); });
}

// What the pages say of a command, by what they last answered.
bool WindowForm::IsInOrderFor(Command eCommand) const {
    const bool bIsWizard = m_eType == WindowTypeConstants::cvWizard;
    const auto nPages = static_cast<int>(m_aSlots.size());
    switch (eCommand) {
    case Command::cvHelp:
        return m_iFront < nPages && m_aSlots[static_cast<std::size_t>(m_iFront)]->HelpTopic() != 0;
    case Command::cvCancel:
        return true;
    case Command::cvPrevious:
        return m_iFront > 0;
    case Command::cvNext:
        return m_iFront + 1 < nPages && m_aSlots[static_cast<std::size_t>(m_iFront)]->IsPassable();
    case Command::cvApply: // or Save As
        return AllPassable() && (!SavesChangesAlone() || AnyChanged());
    case Command::cvOK: // or Finish or Save
        // A wizard without one of its steps would do half of its work.
        return AllPassable() && (!bIsWizard || std::none_of(m_aSlots.begin(), m_aSlots.end(), [](const auto& oSlot) {
                   return oSlot->IsBroken() && !oSlot->PageDef()->IsOptional();
               }));
    }
    return false;
}

bool WindowForm::IsCommandEnabled(Command eStandardCommand) {
    if (!m_pBody || !m_oController || !m_pBody->Commands().Button(eStandardCommand) ||
        CodeSays(eStandardCommand, false))
        return false;
    bool bEnabled = false;
    m_pHost->fnGuard([&] { bEnabled = IsInOrderFor(eStandardCommand); });
    return bEnabled;
}

void WindowForm::SetIsCommandEnabled(Command eStandardCommand, bool bEnabled) {
    m_mapByCode[eStandardCommand] = bEnabled;
    ShowState();
}

// The state may be older than what the pages hold, so they are asked before anything is done.
void WindowForm::ClickCommand(Command eStandardCommand) {
    const Ref<Form> oSelf(this);
    if (m_bInCommand || !m_oController)
        return;
    const Flag oInCommand(m_bInCommand);
    m_pHost->fnGuard([&] {
        if (IsCommandEnabled(eStandardCommand))
            Do(eStandardCommand);
    });
    ShowState();
}

void WindowForm::Do(Command eCommand) {
    switch (eCommand) {
    case Command::cvHelp:
        DoHelp();
        break;
    case Command::cvCancel:
        DoCancel();
        break;
    case Command::cvPrevious:
        Step(-1, eCommand);
        break;
    case Command::cvNext:
        Step(1, eCommand);
        break;
    case Command::cvApply: // or Save As, which ends the dialog
        if (TellPages(eCommand) && SavePages() && m_eType == WindowTypeConstants::cvSaveDialog)
            Close(false);
        break;
    case Command::cvOK: // or Finish or Save
        if (TellPages(eCommand) && SavePages())
            Close(false);
        break;
    }
}

void WindowForm::DoHelp() {
    const Ref<PageSlot> oSlot = m_aSlots[static_cast<std::size_t>(m_iFront)];
    if (!oSlot->IsUsable() || !FailsIn(m_iFront, [&] { oSlot->Click(Command::cvHelp); }))
        m_pHost->fnHelp(oSlot->HelpTopic());
}

void WindowForm::DoCancel() {
    AskAll();
    const LeaveAnswer eAnswer = AnyChanged() ? AskToLeave() : LeaveAnswer::Discard;
    if (eAnswer == LeaveAnswer::Stay || !m_oController)
        return;
    if (eAnswer == LeaveAnswer::Discard)
        TellPages(Command::cvCancel);
    if (m_oController)
        Close(eAnswer == LeaveAnswer::Discard);
}

void WindowForm::Step(int nBy, Command eCommand) {
    const Ref<PageSlot> oSlot = m_aSlots[static_cast<std::size_t>(m_iFront)];
    const int iFrom = m_iFront;
    if (oSlot->IsUsable() && FailsIn(m_iFront, [&] { oSlot->Click(eCommand); }))
        return;
    if (!m_oController || m_iFront != iFrom)
        return; // the page has done it itself
    oSlot->Ask();
    if (nBy < 0 || oSlot->IsPassable())
        BringToFront(m_iFront + nBy);
}

// True when what the page does fails or ends the window. The failure is shown with the page in front.
bool WindowForm::FailsIn(int iPage, const std::function<void()>& fnAct) {
    try {
        fnAct();
        return !m_oController;
    } catch (...) {
        if (m_oController)
            m_pHost->fnGuard([&] { BringToFront(iPage, true); });
        if (m_bRaises)
            throw;
        m_pHost->fnGuard([oFailure = std::current_exception()] { std::rethrow_exception(oFailure); });
        return true;
    }
}

// False when a page failed or isn't valid now. Cancelling goes on whatever the pages say.
bool WindowForm::TellPages(Command eCommand) {
    const Slots aSlots = m_aSlots;
    const bool bIsCancel = eCommand == Command::cvCancel;
    for (std::size_t i = 0; i < aSlots.size(); ++i) {
        if (!aSlots[i]->IsUsable())
            continue;
        if (bIsCancel)
            m_pHost->fnGuard([&] { aSlots[i]->Click(eCommand); });
        else if (FailsIn(static_cast<int>(i), [&] { aSlots[i]->Click(eCommand); }))
            return false;
        if (!m_oController)
            return false;
    }
    AskAll();
    if (bIsCancel || AllPassable() || !m_oController)
        return !!m_oController;
    const auto it = std::find_if(aSlots.begin(), aSlots.end(), [](const auto& oSlot) { return !oSlot->IsPassable(); });
    BringToFront(static_cast<int>(it - aSlots.begin()), true);
    return false;
}

bool WindowForm::IsToBeSaved(const PageSlot& oSlot) const {
    if (!oSlot.IsUsable() || !oSlot.IsValid())
        return false;
    if (SavesChangesAlone())
        return oSlot.IsChanged() || CodeSays(Command::cvApply, true);
    return !oSlot.PageDef()->IsOptional() || oSlot.HasWidget();
}

bool WindowForm::SavePages() {
    const Slots aSlots = m_aSlots;
    for (std::size_t i = 0; i < aSlots.size(); ++i)
        if (IsToBeSaved(*aSlots[i]) && FailsIn(static_cast<int>(i), [&] { aSlots[i]->Save(); }))
            return false;
    if (CodeSays(Command::cvApply, true))
        m_mapByCode.erase(Command::cvApply);
    AskAll();
    return true;
}

bool WindowForm::CanBeSaved() {
    if (!m_oController)
        return false;
    AskAll();
    ShowState();
    return IsInOrderFor(SavesChangesAlone() ? Command::cvApply : Command::cvOK);
}

void WindowForm::Save() {
    const Ref<Form> oSelf(this);
    if (!CanBeSaved())
        return;
    const Flag oRaises(m_bRaises);
    SavePages();
    ShowState();
}

void WindowForm::Close(bool bCancelled) {
    const Ref<Form> oSelf(this);
    const Flag oInClose(m_bInClose);
    m_oCancelled = bCancelled;
    Unload();
}

QString WindowForm::Hindrance() const {
    for (const auto& oSlot : m_aSlots)
        if (!oSlot->IsPassable())
            return WindowBody::tr("The page “%1” has missing or invalid entries.").arg(oSlot->Mark().sCaption);
    return {};
}

LeaveAnswer WindowForm::AskToLeave() {
    if (!m_pHost->fnAskToLeave)
        return LeaveAnswer::Discard;
    LeaveQuestion oQuestion;
    oQuestion.sWindow = TitleOf(*this);
    oQuestion.sHindrance = SavesChangesAlone() ? Hindrance() : QString();
    oQuestion.bCanSave = SavesChangesAlone() && oQuestion.sHindrance.isEmpty() && !CodeSays(Command::cvOK, false);
    oQuestion.pOver = Frame();
    LeaveAnswer eAnswer = m_pHost->fnAskToLeave(oQuestion);
    if (eAnswer == LeaveAnswer::Save && (!m_oController || !SavePages()))
        eAnswer = LeaveAnswer::Stay;
    return eAnswer;
}

std::string WindowForm::AsText() {
    static constexpr const char* aKinds[] = {"window", "wizard", "dialog", "save dialog"};
    std::string sText = "Window " + Caption() + " (" + aKinds[static_cast<std::size_t>(m_eType)];
    if (IsModal())
        sText += ", modal";
    if (m_bIsActive)
        sText += ", active";
    sText += ")\n";
    for (std::size_t i = 0; i < m_aSlots.size(); ++i) {
        const auto& oSlot = m_aSlots[i];
        sText += "  Page " + oSlot->PageDef()->Caption();
        sText += static_cast<int>(i) == m_iFront ? " (in front)" : "";
        sText += oSlot->IsChanged() ? " (changed)" : "";
        sText += oSlot->IsValid() ? "" : " (not valid)";
        sText += oSlot->IsBroken() ? " (can't be shown: " + oSlot->WhyBroken()->Description + ")" : "";
        sText += "\n";
    }
    if (!m_pBody || !m_pBody->AreCommandsShown())
        return sText;
    sText += "  Commands";
    for (const Command eCommand : m_pBody->Commands().Commands()) {
        QString sName = m_pBody->Commands().Button(eCommand)->text();
        sText += " [" + sName.remove('&').toStdString() + (IsCommandEnabled(eCommand) ? "]" : " (off)]");
    }
    return sText + "\n";
}

} // namespace corvane::desktop
