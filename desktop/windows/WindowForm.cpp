#include "desktop/windows/WindowForm.h"

#include "corvane/services/WindowDef.h"
#include "corvane/windows/Window.h"
#include "desktop/IPrintout.h"
#include "desktop/translation/ShownText.h"
#include "desktop/windows/PagePlace.h"
#include "desktop/windows/Twips.h"

#include <QApplication>
#include <QEventLoop>
#include <QMdiArea>
#include <QPushButton>
#include <QTimer>

namespace corvane::desktop {

WindowForm::WindowForm(std::shared_ptr<const WindowHost> host, WindowTypeConstants type, bool isMDIChild)
    : Form(host->mainForm, isMDIChild), m_host(std::move(host)), m_type(type),
      m_pages(type, m_host->guard, m_host->openForm), m_commands(type, m_pages, m_host->guard, *this),
      m_placement(*this, m_host) {
    SubscribeToItself();
}

WindowForm::~WindowForm() {
    DropFrame();
    m_host->messages->UnregisterWindow(m_handle);
}

// Before the window's own subscription: the pages end first.
void WindowForm::SubscribeToItself() {
    m_subscriptions.push_back(OnQueryUnload.Subscribe([this](bool& refused) { QueryUnload(refused); }));
    m_subscriptions.push_back(OnUnload.Subscribe([this](bool&) { m_pages.End(); }));
    m_subscriptions.push_back(Changed.Subscribe([this](Change change) { OnFormChanged(change); }));
    m_subscriptions.push_back(ModalLoop.Subscribe([this] { RunModalLoop(); }));
}

void WindowForm::Initialize(const Ref<IWindowFormController>& windowFormController, bool isApplyCommandShown) {
    const Ref<Form> self(this);
    m_controller = windowFormController;
    m_pages.Create(m_controller);
    if (m_controller)
        MakeFrame(isApplyCommandShown);
    if (!IsOpen())
        return;
    SetCaption(m_controller->WindowDef()->Caption());
    m_pages.AskAll();
    ShowState();
    if (IsOpen())
        SubscribeToActivation();
}

// Behind the window's own subscription: the window is active before its page is.
void WindowForm::SubscribeToActivation() {
    m_subscriptions.push_back(OnActivate.Subscribe([this] {
        const Ref<Form> self(this);
        if (!IsOpen())
            return;
        m_isActive = true;
        NotifyChanged();
        m_pages.SetWindowActive(true);
        ByUser(WindowStep::What::Activate, 0, [] {});
        m_frame->BringToFront();
        m_pages.ActivateFront();
    }));
    m_subscriptions.push_back(OnDeactivate.Subscribe([this] {
        const Ref<Form> self(this);
        m_isActive = false;
        m_pages.SetWindowActive(false);
        m_pages.Deactivate();
    }));
}

Ref<Window> WindowForm::ShownWindow() const {
    return m_controller.TryAs<Window>();
}

void WindowForm::ByUser(WindowStep::What what, int which, const std::function<void()>& work) {
    const Ref<Form> self(this);
    m_host->guard([&] {
        const auto window = ShownWindow();
        if (m_host->byUser && window)
            m_host->byUser({*window, what, which, [this] { return !IsLoaded(); }}, work);
        else
            work();
    });
}

void WindowForm::MakeFrame(bool isApplyCommandShown) {
    const auto def = m_controller->WindowDef();
    const auto window = m_controller.TryAs<Window>();
    BodyOptions options;
    options.type = m_type;
    options.isChild = MDIChild();
    options.withApply = isApplyCommandShown;
    // A window that isn't modal is closed by its close box alone until something in it has been changed.
    options.withCommands = m_type != WindowTypeConstants::cvWindow || (window && window->IsModal());
    options.withPageList = def->Name() == WindowHost::ListedWindow;
    std::vector<PageRoom> rooms;
    const QSize pageSize(PixelsX(def->DefPageWidth()), PixelsY(def->DefPageHeight()));
    for (int page = 0; page < m_pages.Count(); ++page) {
        const PageSlot& slot = m_pages.At(page);
        rooms.push_back({slot.Mark(), pageSize, slot.PageDef()->IsResizable()});
        m_host->guard([&] { options.withHelp |= m_host->help && slot.HelpTopic() != 0; });
    }
    if (!m_controller)
        return; // a page has ended the window
    m_body = new WindowBody(options, rooms);
    m_frame = std::make_unique<WindowFrame>(MDIChild() ? m_host->area.data() : nullptr, m_host->mainWindow, m_body,
                                            m_type == WindowTypeConstants::cvWindow,
                                            static_cast<WindowFrame::Observer&>(*this), m_host->frames);
    if (MDIChild())
        m_frame->SetIcon(m_host->ChildIcon());
    m_placement.SetFrame(*m_frame, *m_body);
    ConnectBody();
}

void WindowForm::ConnectBody() {
    m_listener = std::make_unique<QObject>();
    QObject::connect(m_body, &WindowBody::PageChosen, m_listener.get(),
                     [this](int page) { ByUser(WindowStep::What::Page, page, [&] { GoTo(page); }); });
    QObject::connect(m_body, &WindowBody::AllPagesWanted, m_listener.get(), [this] {
        const Ref<Form> self(this);
        for (int page = 0; page < m_pages.Count() && IsOpen(); ++page)
            m_pages.At(page).MakeWidget(m_body->Place(page));
    });
    QObject::connect(m_body, &WindowBody::CommandChosen, m_listener.get(), [this](Command command) {
        ByUser(WindowStep::What::Command, static_cast<int>(command), [&] { ClickCommand(command); });
    });
}

QString TitleOf(const Form& form) {
    const auto* windowForm = dynamic_cast<const WindowForm*>(&form);
    const std::string window = windowForm ? windowForm->WindowName() : std::string();
    return window.empty() ? QString::fromStdString(form.Caption()) : ShownWindow(window, form.Caption());
}

std::string WindowForm::WindowName() const {
    return m_controller ? m_controller->WindowDef()->Name() : std::string();
}

// The model's events.

void WindowForm::OnFormChanged(Change change) {
    const Ref<Form> self(this);
    if (change == Change::Loaded)
        Loaded();
    else if (change == Change::Unloaded)
        Unloaded();
    if (!IsOpen())
        return;
    switch (change) {
    case Change::Shown:
        Shown();
        break;
    case Change::Hidden:
        m_frame->Hide();
        if (m_loop)
            m_loop->quit();
        ActivateNext();
        break;
    case Change::Moved:
        m_placement.FollowModel();
        break;
    case Change::State:
        m_placement.FollowModelState();
        break;
    case Change::Caption:
        m_frame->SetTitle(TitleOf(*this));
        break;
    default:
        if (m_frame->Widget())
            m_frame->Widget()->update();
        break;
    }
}

void WindowForm::Loaded() {
    m_handle = HWnd();
    m_host->messages->RegisterWindow(m_handle, [this](Long, Long message, Long, std::intptr_t) -> Long {
        if (message == WindowMessage::Close && IsLoaded()) {
            m_closeArrived = true;
            Unload();
        }
        return 0;
    });
}

// Makes the widget of the page in front, and shows it. False when a page has ended the window, or has brought another
// page to the front.
bool WindowForm::ShowFront() {
    const int page = m_pages.FrontIndex();
    m_pages.At(page).MakeWidget(m_body->Place(page));
    if (!IsOpen() || page != m_pages.FrontIndex())
        return false;
    m_body->ShowPage(page);
    return IsOpen();
}

void WindowForm::Shown() {
    const bool first = !std::exchange(m_isPlaced, true);
    if (m_pages.Count() > 0 && !ShowFront() && !IsOpen())
        return;
    if (IsModal())
        m_body->ShowCommands();
    ShowState();
    if (first && IsOpen() && !IsDocument() && m_commands.AnyChanged()) {
        m_beginsChanged = true;
        m_body->WatchEntries();
    }
    if (first && IsOpen())
        m_placement.PlaceFirst(*m_controller->WindowDef());
    if (IsOpen())
        m_frame->Show(IsModal(), WindowState());
    FramePlaced();
    if (first && IsOpen() && m_pages.Front())
        m_pages.Front()->Focus();
}

void WindowForm::QueryUnload(bool& refused) {
    HideActiveChild(true);
    if (Visible() && !MayClose()) {
        refused = true;
    } else if (!m_inClose) {
        m_cancelled.reset();
        m_pages.AskAll();
        if (m_saved) {
            m_cancelled = !*m_saved;
        } else if (Visible() && HasEntries()) { // no one is in front of a hidden form who could answer
            const LeaveAnswer answer = AskToLeave();
            refused = answer == LeaveAnswer::Stay;
            if (answer == LeaveAnswer::Save)
                m_cancelled = false;
        }
    }
    QTimer::singleShot(0, m_host->mainWindow,
                       [mainForm = Ref<MdiForm>(m_host->mainForm)] { mainForm->SetRefusesToTellChild(false); });
}

bool WindowForm::MayClose() {
    return !m_host->mayClose ||
           m_host->mayClose(ShownWindow(), TitleOf(*this), Frame(), [self = Ref<WindowForm>(this)] {
               if (self->IsLoaded())
                   self->RequestClose();
           });
}

// While a child is asked, and after it has refused until the event loop turns, no one finds it to ask it again.
void WindowForm::HideActiveChild(bool refuses) {
    if (MDIChild() && Application())
        Application()->SetRefusesToTellChild(refuses);
}

void WindowForm::Unloaded() {
    HideActiveChild(false);
    if (m_loop)
        m_loop->quit();
    m_host->messages->SendMessage(m_handle, WindowMessage::Close, 0, 0); // takes the minimum size away
    m_host->messages->UnregisterWindow(m_handle);
    DropFrame();
    NotifyChanged();
    const Ref<IWindowFormController> controller = std::move(m_controller);
    try {
        if (controller)
            controller->ExitWindow(m_cancelled.value_or(true));
    } catch (...) {
        ActivateNext();
        throw;
    }
    ActivateNext();
}

// What its widgets may still say is ignored. Others' connections stay: those of accessibility forget the body at its
// end.
void WindowForm::DropFrame() {
    m_listener.reset();
    m_body = nullptr;
    if (m_frame)
        m_frame->Close();
}

// Of the forms that can be seen, the one that was active last.
void WindowForm::ActivateNext() {
    MdiForm* const mainForm = Application();
    const Ref<Form> foregroundForm = mainForm ? mainForm->ForegroundForm() : nullptr;
    if (!mainForm || (foregroundForm && foregroundForm.Get() != this))
        return;
    const auto forms = mainForm->Forms();
    for (auto it = forms.rbegin(); it != forms.rend(); ++it)
        if (it->Get() != this && (*it)->Visible()) {
            (*it)->Activate();
            return;
        }
}

void WindowForm::RunModalLoop() {
    if (m_loop)
        return; // shown again from inside; the first loop goes on
    if (m_host->modalLoop) {
        m_host->modalLoop([this] { return IsLoaded() && Visible(); }, [this] { Abandon(); });
    } else {
        QEventLoop loop;
        m_loop = &loop;
        loop.exec();
        m_loop = nullptr;
    }
    if (Visible()) // the application is ending
        Abandon();
}

// The frame's events.

void WindowForm::CloseRequested() {
    ByUser(WindowStep::What::Close, 0, [this] { RequestClose(); });
}

// A window manager may raise what a modal window holds back.
void WindowForm::FrameActivated() {
    const Ref<Form> self(this);
    const QWidget* modal = QApplication::activeModalWidget();
    if (Visible() && IsOpen() && (!modal || modal == Frame()))
        m_host->guard([this] { Activate(); });
}

void WindowForm::FramePlaced() {
    const Ref<Form> self(this);
    if (IsOpen())
        m_placement.FollowFrame();
}

// Pages.

void WindowForm::SetActivePageIndex(Long index) {
    if (index < 0 || index >= m_pages.Count())
        Fail(FailureNumber::Subscript, "There is no page " + std::to_string(index), "ActivePageIndex");
    GoTo(index);
}

void WindowForm::GoTo(int page) {
    if (m_pages.IsReachable(page))
        BringToFront(page);
}

void WindowForm::BringToFront(int page) {
    const Ref<Form> self(this);
    if (page != m_pages.FrontIndex())
        m_pages.Deactivate();
    if (!IsOpen())
        return; // the page that left ended the window
    m_pages.SetFront(page);
    if (Visible()) {
        const bool isFirst = !m_pages.At(page).HasWidget();
        if (!ShowFront())
            return; // or the one that comes did, or has gone on to another one
        m_placement.ApplyMinimum();
        if (isFirst || m_type == WindowTypeConstants::cvWizard)
            m_pages.At(page).Focus();
    }
    m_pages.ActivateFront();
    ShowState();
}

void WindowForm::PageValidityChanged(const Ref<IPage>& page) {
    const Ref<Form> self(this);
    m_pages.Ask(page);
    ShowState();
}

// Commands.

bool WindowForm::IsCommandEnabled(Command standardCommand) {
    return IsOpen() && m_body->Commands().Button(standardCommand) && m_commands.IsEnabled(standardCommand) && IsOpen();
}

void WindowForm::SetIsCommandEnabled(Command standardCommand, bool enabled) {
    const Ref<Form> self(this);
    m_commands.SetEnabled(standardCommand, enabled);
    ShowState();
}

void WindowForm::ClickCommand(Command standardCommand) {
    const Ref<Form> self(this);
    if (IsCommandEnabled(standardCommand))
        m_commands.Click(standardCommand);
    else
        ShowState();
}

void WindowForm::ShowCommands() {
    if (const int height = m_body->ShowCommands(); height > 0)
        m_placement.MakeSpaceFor(height);
}

void WindowForm::ShowState() {
    if (!IsOpen())
        return;
    for (int page = 0; page < m_pages.Count(); ++page)
        m_body->MarkPage(page, m_pages.MarkOf(page));
    const bool isModified = m_commands.AnyChanged() && m_commands.SavesChangesAlone();
    if (isModified && !IsDocument())
        ShowCommands();
    for (const Command command : m_body->Commands().Commands()) {
        const bool isEnabled = IsCommandEnabled(command);
        if (!IsOpen())
            return;
        m_body->Commands().SetCommandEnabled(command, isEnabled);
    }
    m_body->SetDefault(m_commands.Default());
    if (m_type == WindowTypeConstants::cvWizard)
        m_body->Commands().SetSkips(m_commands.SkipsStep());
    m_frame->SetModified(isModified);
    NotifyChanged();
}

void WindowForm::NotifyChanged() const {
    if (m_host->changed)
        m_host->changed();
}

void WindowForm::ShowHelp(Long topic) {
    m_host->help(topic);
}

Ref<Object> WindowForm::BusinessContext() const {
    const auto window = ShownWindow();
    return window ? window->BusinessContext() : nullptr;
}

// Placement.

Long WindowForm::NonPageWidth() {
    return RoundToLong(TwipsX(m_placement.NonPageSize().width()));
}

Long WindowForm::NonPageHeight() {
    return RoundToLong(TwipsY(m_placement.NonPageSize().height()));
}

void WindowForm::PlaceAgain(const QRect& place, FormState state) {
    if (IsOpen() && Visible())
        m_placement.PlaceAgain(place, state);
}

void WindowForm::Print(IPrintout& printout) {
    if (!IsOpen())
        return;
    if (PageSlot* front = m_pages.Front())
        front->Print(m_body->Place(m_pages.FrontIndex()), printout);
    else
        printout.AddWidget(*m_body);
}

std::string WindowForm::AsText() {
    static constexpr const char* kinds[] = {"window", "wizard", "dialog", "save dialog"};
    std::string text = "Window " + Caption() + " (" + kinds[static_cast<std::size_t>(m_type)];
    if (IsModal())
        text += ", modal";
    if (m_isActive)
        text += ", active";
    text += ")\n";
    for (int page = 0; page < m_pages.Count(); ++page) {
        const PageSlot& slot = m_pages.At(page);
        text += "  Page " + slot.PageDef()->Caption();
        text += page == m_pages.FrontIndex() ? " (in front)" : "";
        text += slot.IsChanged() ? " (changed)" : "";
        text += slot.IsValid() ? "" : " (not valid)";
        text += slot.IsBroken() ? " (can't be shown: " + slot.WhyBroken()->Description + ")" : "";
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
