// The form of a window, a wizard, a dialog or a save dialog: the model of a form with pages and commands, drawn in a
// frame. The model tells the frame what to do, and what a user does to the frame is reported to the model. Pages,
// commands and the frame's placement are parts of their own, which live as long as the form; whatever calls a page may
// end the window, and is followed by IsOpen.
#pragma once

#include "corvane/platform/controls/Form.h"
#include "corvane/windows/IWindowForm.h"
#include "desktop/windows/WindowBody.h"
#include "desktop/windows/WindowCommands.h"
#include "desktop/windows/WindowFrame.h"
#include "desktop/windows/WindowHost.h"
#include "desktop/windows/WindowPages.h"
#include "desktop/windows/WindowPlacement.h"

#include <QPointer>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QEventLoop;

namespace corvane::desktop {

class WindowForm final : public Form, public IWindowForm, private WindowFrame::Observer, private WindowCommands::Owner {
public:
    WindowForm(std::shared_ptr<const WindowHost> host, WindowTypeConstants type, bool isMDIChild);
    ~WindowForm() override;

    // As IWindowForm. ClickCommand does nothing for a command that isn't enabled, and what fails in it is shown, as
    // after a click. Save raises what fails.
    void Initialize(const Ref<IWindowFormController>& windowFormController, bool isApplyCommandShown) override;
    [[nodiscard]] std::string WindowName() const; // of the definition; empty before Initialize and at the end
    [[nodiscard]] Long MinWindowWidth(Long pageWidth) override { return m_placement.WidthFor(pageWidth); }
    [[nodiscard]] Long MinWindowHeight(Long pageHeight) override { return m_placement.HeightFor(pageHeight); }
    [[nodiscard]] Long NonPageWidth() override;
    [[nodiscard]] Long NonPageHeight() override;
    [[nodiscard]] Long ActivePageIndex() override { return m_pages.FrontIndex(); }
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
    // A document is in the main window and saved by a command of the menus; it has no row of buttons. Others are
    // answered and go.
    [[nodiscard]] bool IsDocument() const;
    // Whether a document has changes that nothing but an entry that isn't valid keeps from being saved.
    [[nodiscard]] bool OffersSave() const;
    // Saves a document's changes as a user does, or shows the page that holds them back and says why.
    void SaveByUser();
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
    [[nodiscard]] const WindowPages& Pages() const { return m_pages; }
    [[nodiscard]] const WindowPlacement& Placement() const { return m_placement; }
    // Puts a window that is shown where it was once, as far as there is space for it.
    void PlaceAgain(const QRect& place, FormState state);
    [[nodiscard]] std::string AsText();
    // Adds what the page in front shows; a failure of the page leaves it.
    void Print(IPrintout& printout);

    std::string_view TypeName() const override { return "WindowForm"; }

private:
    using Command = StandardCommandConstants;

    // The model's events.
    void SubscribeToItself();
    void SubscribeToActivation();
    void OnFormChanged(Change change);
    void Loaded();
    void Shown();
    void Unloaded();
    void QueryUnload(bool& refused);
    [[nodiscard]] bool MayClose();
    void RunModalLoop();

    // WindowFrame::Observer.
    void CloseRequested() override;
    void FrameActivated() override;
    void FramePlaced() override;

    // WindowCommands::Owner.
    [[nodiscard]] bool IsOpen() const override { return m_controller && m_body; }
    void BringToFront(int page) override;
    void GoTo(int page) override;
    void ShowState() override;
    void ShowHelp(Long topic) override;
    [[nodiscard]] LeaveAnswer AskToLeave() override;
    void Close(bool cancelled) override;

    void MakeFrame(bool isApplyCommandShown);
    void ConnectBody();
    void DropFrame();
    [[nodiscard]] bool ShowFront();
    void ShowCommands();
    void NotifyChanged() const;
    void SaveDocument();
    [[nodiscard]] bool HasEntries() const;
    void HideActiveChild(bool refuses);
    void ActivateNext();
    [[nodiscard]] QString Hindrance() const;

    std::shared_ptr<const WindowHost> m_host;
    WindowTypeConstants m_type;
    Ref<IWindowFormController> m_controller; // from Initialize to the end
    WindowPages m_pages;
    WindowCommands m_commands;
    WindowPlacement m_placement;
    std::unique_ptr<WindowFrame> m_frame; // from Initialize on; closed at the end
    QPointer<WindowBody> m_body;          // from Initialize to the end
    std::unique_ptr<QObject> m_listener;  // to the body's signals
    std::optional<bool> m_cancelled;      // how it ends, once that is settled
    std::optional<bool> m_saved;          // what became of its changes before it is closed
    Long m_handle = 0;
    bool m_closeArrived = false;
    bool m_isPlaced = false;
    bool m_isActive = false;
    bool m_beginsChanged = false; // a page counted as changed before the user could enter anything
    bool m_inClose = false;       // by a command, which has asked already
    QEventLoop* m_loop = nullptr;
    std::vector<Subscription> m_subscriptions;
};

// The caption as users read it, in their language.
[[nodiscard]] QString TitleOf(const Form& form);

} // namespace corvane::desktop
