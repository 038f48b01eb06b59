// The form of a window, a wizard, a dialog or a save dialog: the model of a form with pages and commands, drawn in a
// frame. The model tells the frame what to do, and what a user does to the frame is reported to the model.
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
    WindowForm(std::shared_ptr<const WindowHost> host, WindowTypeConstants type, bool isMDIChild);
    ~WindowForm() override;

    // As IWindowForm. ClickCommand does nothing for a command that isn't enabled, and what fails in it is shown, as
    // after a click. Save raises what fails.
    void Initialize(const Ref<IWindowFormController>& windowFormController, bool isApplyCommandShown) override;
    [[nodiscard]] std::string WindowName() const; // of the definition; empty before Initialize and at the end
    [[nodiscard]] Long MinWindowWidth(Long pageWidth) override;
    [[nodiscard]] Long MinWindowHeight(Long pageHeight) override;
    [[nodiscard]] Long NonPageWidth() override;
    [[nodiscard]] Long NonPageHeight() override;
    [[nodiscard]] Long ActivePageIndex() override { return m_front; }
    // Fails with 9 when there is no such page.
    void SetActivePageIndex(Long index) override;
    [[nodiscard]] bool IsCommandEnabled(StandardCommandConstants standardCommand) override;
    // False holds a command back until true; true enables Apply, Save and Save As also while no page reports a change.
    void SetIsCommandEnabled(StandardCommandConstants standardCommand, bool enabled) override;
    void ClickCommand(StandardCommandConstants standardCommand) override;
    void PageValidityChanged(const Ref<IPage>& page) override;
    [[nodiscard]] bool CanBeSaved() override;
    void Save() override;

    // For the host.
    // What the close box does: it asks and unloads.
    void RequestClose();
    // Runs what a user does to the window, with all that it brings about, so that whoever follows the user is notified
    // of it.
    void ByUser(WindowStep::What what, int which, const std::function<void()>& work);
    // Ends the window as if it had been cancelled, without asking.
    void Abandon();
    // Whether something is changed in a window that is shown, whatever its type.
    [[nodiscard]] bool HasChanges();
    // The same for what Save can save; a wizard is saved by nothing but Finish.
    [[nodiscard]] bool HasUnsavedChanges();
    [[nodiscard]] Ref<Object> BusinessContext() const; // nothing for a window without one
    // The user has been asked about the changes already: until the event loop turns, closing asks no more. A window
    // whose changes have been saved ends as if by OK.
    void SettleChanges(bool saved);
    // Nothing before Initialize and after the end.
    [[nodiscard]] Ref<Window> ShownWindow() const;
    // Null before Initialize and after the end.
    [[nodiscard]] QWidget* Frame() const { return m_frame ? m_frame->Widget() : nullptr; }
    [[nodiscard]] WindowBody* Body() const { return m_body; }
    [[nodiscard]] const Ref<IWindowFormController>& Controller() const { return m_controller; } // likewise
    // Where it is while it is neither maximized nor minimized: in pixels, from the corner of the area or of the
    // main window.
    [[nodiscard]] QRect NormalPlace() const { return RectOfModel(); }
    // The state that the user gave it; behind tabs every window is as large as the area, and that isn't one.
    [[nodiscard]] FormState UserState() const;
    // Puts a window that is shown where it was once, as far as there is space for it.
    void PlaceAgain(const QRect& place, FormState state);
    [[nodiscard]] std::string AsText();

    std::string_view TypeName() const override { return "WindowForm"; }

private:
    using Command = StandardCommandConstants;
    using Slots = std::vector<Ref<PageSlot>>;

    // WindowForm.cpp: the form and its frame.
    void SubscribeToItself();
    void MakeSlots();
    void MakeFrame(bool isApplyCommandShown);
    void OnFormChanged(Change change);
    void Loaded();
    void Shown();
    void PlaceFirst();
    [[nodiscard]] QRect RectOfModel() const;
    [[nodiscard]] bool IsBehindTab() const;
    [[nodiscard]] bool IsCornerTaken(const QPoint& corner) const;
    [[nodiscard]] QPoint FreeCorner(const QRect& place, const QRect& room, int step) const;
    void ApplyMinimum();
    void FrameActivated();
    void FrameMoved();
    void Unloaded();
    void DropFrame();
    void ActivateNext();
    void RunModalLoop();
    void QueryUnload(bool& refused);
    void HideActiveChild(bool refuses);
    [[nodiscard]] QSize NonPageSize();

    // WindowFormPages.cpp: pages.
    void BringToFront(int page, bool anyway = false); // in a wizard only a step that can be reached, otherwise
    void ActivateFront();
    void DeactivateFront();
    void EndPages();
    void AskAll();
    void ShowState();
    void ShowCommands();
    [[nodiscard]] bool IsReachable(int page) const;

    // WindowFormCommands.cpp: commands.
    [[nodiscard]] bool SavesChangesAlone() const;
    [[nodiscard]] bool IsInOrderFor(Command command) const;
    [[nodiscard]] bool CodeSays(Command command, bool enabled) const;
    [[nodiscard]] bool AllPassable() const;
    [[nodiscard]] bool AnyChanged() const;
    [[nodiscard]] QString Hindrance() const;
    void Do(Command command);
    void Step(int by, Command command);
    bool NotifyPages(Command command);
    void DoHelp();
    void DoCancel();
    bool SavePages();
    bool FailsIn(int page, const std::function<void()>& act);
    [[nodiscard]] bool IsToBeSaved(const PageSlot& slot) const;
    void Close(bool cancelled);
    // Asks whether what has changed may go, or saves it.
    [[nodiscard]] LeaveAnswer AskToLeave();

    std::shared_ptr<const WindowHost> m_host;
    WindowTypeConstants m_type;
    Ref<IWindowFormController> m_controller; // from Initialize to the end
    Slots m_slots;
    int m_front = 0;
    int m_active = -1; // the page that has been reported active
    bool m_isActive = false;
    std::map<Command, bool> m_byCode; // what code has said of a command
    std::optional<bool> m_cancelled;  // how it ends, once that is settled
    std::optional<bool> m_saved;      // what became of its changes before it is closed
    Long m_handle = 0;
    QSize m_minimum; // by the definition
    bool m_closeArrived = false;
    bool m_isPlaced = false;
    bool m_fromFrame = false; // the model follows the frame
    bool m_inCommand = false;
    bool m_inClose = false; // by a command, which has asked already
    bool m_raises = false;  // failures of saving go to the caller
    QEventLoop* m_loop = nullptr;
    std::unique_ptr<WindowFrame> m_frame;
    QPointer<WindowBody> m_body;
    std::vector<Subscription> m_subscriptions;
};

// The caption as users read it, in their language.
[[nodiscard]] QString TitleOf(const Form& form);

} // namespace corvane::desktop
