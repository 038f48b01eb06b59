// The form of a window, a wizard, a dialog or a save dialog: the model of a form with pages and commands, drawn in a
// frame. The model tells the frame what to do, and what a person does to the frame is told to the model.
#pragma once

#include "corvane/platform/controls/Form.h"
#include "corvane/windows/IWindowForm.h"
#include "desktop/windows/PageSlot.h"
#include "desktop/windows/WindowBody.h"
#include "desktop/windows/WindowFrame.h"
#include "desktop/windows/WindowHost.h"

#include <QPointer>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QEventLoop;

namespace corvane::desktop {

class WindowForm final : public Form, public IWindowForm {
public:
    WindowForm(std::shared_ptr<const WindowHost> pHost, WindowTypeConstants eType, bool bIsMDIChild);
    ~WindowForm() override;

    // As IWindowForm. ClickCommand does nothing for a command that isn't enabled, and what fails in it is shown, as
    // after a click. Save raises what fails.
    void Initialize(const Ref<IWindowFormController>& oWindowFormController, bool bIsApplyCommandShown) override;
    [[nodiscard]] std::string WindowName() const; // of the definition; empty before Initialize and at the end
    [[nodiscard]] Long MinWindowWidth(Long lPageWidth) override;
    [[nodiscard]] Long MinWindowHeight(Long lPageHeight) override;
    [[nodiscard]] Long NonPageWidth() override;
    [[nodiscard]] Long NonPageHeight() override;
    [[nodiscard]] Long ActivePageIndex() override { return m_iFront; }
    // Fails with 9 when there is no such page.
    void SetActivePageIndex(Long lIndex) override;
    [[nodiscard]] bool IsCommandEnabled(StandardCommandConstants eStandardCommand) override;
    // False holds a command back until true; true enables Apply, Save and Save As also while no page reports a change.
    void SetIsCommandEnabled(StandardCommandConstants eStandardCommand, bool bEnabled) override;
    void ClickCommand(StandardCommandConstants eStandardCommand) override;
    void PageValidityChanged(const Ref<IPage>& oPage) override;
    [[nodiscard]] bool CanBeSaved() override;
    void Save() override;

    // For the host.
    // What the close box does: it asks and unloads.
    void RequestClose();
    // Runs what a person does to the window, with all that it brings about, so that whoever follows the person hears
    // it.
    void ByPerson(WindowStep::What eWhat, int nWhich, const std::function<void()>& fnDo);
    // Ends the window as if it had been cancelled, without asking.
    void Abandon();
    // Whether something is changed in a window that is shown, whatever its type.
    [[nodiscard]] bool HasChanges();
    // The same for what Save can save; a wizard is saved by nothing but Finish.
    [[nodiscard]] bool HasUnsavedChanges();
    [[nodiscard]] Ref<Object> BusinessContext() const; // nothing for a window without one
    // The person has been asked about the changes already: until the event loop turns, closing asks no more. A window
    // whose changes have been saved ends as if by OK.
    void SettleChanges(bool bSaved);
    // Nothing before Initialize and after the end.
    [[nodiscard]] Ref<Window> ShownWindow() const;
    // Null before Initialize and after the end.
    [[nodiscard]] QWidget* Frame() const { return m_pFrame ? m_pFrame->Widget() : nullptr; }
    [[nodiscard]] WindowBody* Body() const { return m_pBody; }
    [[nodiscard]] const Ref<IWindowFormController>& Controller() const { return m_oController; } // likewise
    // Where it stands while it is neither maximized nor minimized: in pixels, from the corner of the area or of the
    // main window.
    [[nodiscard]] QRect NormalPlace() const { return RectOfModel(); }
    // The state that the person gave it; behind tabs every window is as large as the area, and that isn't one.
    [[nodiscard]] FormState StateOfPerson() const;
    // Puts a window that is shown where it stood once, as far as there is room for it.
    void PlaceAgain(const QRect& oPlace, FormState eState);
    [[nodiscard]] std::string AsText();

    std::string_view TypeName() const override { return "WindowForm"; }

private:
    using Command = StandardCommandConstants;
    using Slots = std::vector<Ref<PageSlot>>;

    // WindowForm.cpp: the form and its frame.
    void SubscribeToItself();
    void MakeSlots();
    void MakeFrame(bool bIsApplyCommandShown);
    void HearChange(Change eChange);
    void Loaded();
    void Shown();
    void PlaceFirst();
    [[nodiscard]] QRect RectOfModel() const;
    [[nodiscard]] bool IsBehindTab() const;
    [[nodiscard]] bool IsCornerTaken(const QPoint& oCorner) const;
    [[nodiscard]] QPoint FreeCorner(const QRect& oPlace, const QRect& oRoom, int nStep) const;
    void ApplyMinimum();
    void FrameActivated();
    void FrameMoved();
    void Unloaded();
    void DropFrame();
    void ActivateNext();
    void RunModalLoop();
    void QueryUnload(bool& bRefused);
    void TellNoActiveChild(bool bRefuses);
    [[nodiscard]] QSize NonPageSize();

    // WindowFormPages.cpp: pages.
    void BringToFront(int iPage, bool bAnyway = false); // in a wizard only a step that can be reached, otherwise
    void ActivateFront();
    void DeactivateFront();
    void EndPages();
    void AskAll();
    void ShowState();
    void ShowCommands();
    [[nodiscard]] bool IsReachable(int iPage) const;

    // WindowFormCommands.cpp: commands.
    [[nodiscard]] bool SavesChangesAlone() const;
    [[nodiscard]] bool IsInOrderFor(Command eCommand) const;
    [[nodiscard]] bool CodeSays(Command eCommand, bool bEnabled) const;
    [[nodiscard]] bool AllPassable() const;
    [[nodiscard]] bool AnyChanged() const;
    [[nodiscard]] QString Hindrance() const;
    void Do(Command eCommand);
    void Step(int nBy, Command eCommand);
    bool TellPages(Command eCommand);
    void DoHelp();
    void DoCancel();
    bool SavePages();
    bool FailsIn(int iPage, const std::function<void()>& fnAct);
    [[nodiscard]] bool IsToBeSaved(const PageSlot& oSlot) const;
    void Close(bool bCancelled);
    // Asks whether what has changed may go, or saves it.
    [[nodiscard]] LeaveAnswer AskToLeave();

    std::shared_ptr<const WindowHost> m_pHost;
    WindowTypeConstants m_eType;
    Ref<IWindowFormController> m_oController; // from Initialize to the end
    Slots m_aSlots;
    int m_iFront = 0;
    int m_iActive = -1; // the page that has been reported active
    bool m_bIsActive = false;
    std::map<Command, bool> m_mapByCode; // what code has said of a command
    std::optional<bool> m_oCancelled;    // how it ends, once that is settled
    std::optional<bool> m_oSaved;        // what became of its changes before it is closed
    Long m_lHWnd = 0;
    QSize m_oMinimum; // by the definition
    bool m_bCloseArrived = false;
    bool m_bIsPlaced = false;
    bool m_bFromFrame = false; // the model follows the frame
    bool m_bInCommand = false;
    bool m_bInClose = false; // by a command, which has asked already
    bool m_bRaises = false;  // failures of saving go to the caller
    QEventLoop* m_pLoop = nullptr;
    std::unique_ptr<WindowFrame> m_pFrame;
    QPointer<WindowBody> m_pBody;
    std::vector<Subscription> m_aSubscriptions;
};

// The caption as people read it, in their language.
[[nodiscard]] QString TitleOf(const Form& oForm);

} // namespace corvane::desktop
