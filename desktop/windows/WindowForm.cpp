#include "desktop/windows/WindowForm.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/Window.h"
#include "desktop/translation/ShownText.h"
#include "desktop/windows/PagePlace.h"
#include "desktop/windows/Twips.h"

#include <QApplication>
#include <QEventLoop>
#include <QMdiArea>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>
#include <algorithm>

namespace corvane::desktop {

namespace {

// The place within the space, where that is large enough for what the window needs.
QRect Fitted(QRect place, const QRect& room, const QSize& wanted, const QSize& needed) {
    place.setSize(place.size().expandedTo(wanted).boundedTo(room.size()).expandedTo(needed));
    place.moveTo(std::clamp(place.left(), room.left(), std::max(room.left(), room.right() + 1 - place.width())),
                 std::clamp(place.top(), room.top(), std::max(room.top(), room.bottom() + 1 - place.height())));
    return place;
}

} // namespace

WindowForm::WindowForm(std::shared_ptr<const WindowHost> host, WindowTypeConstants type, bool isMDIChild)
    : Form(host->mainForm, isMDIChild), m_host(std::move(host)), m_type(type) {
    SubscribeToItself();
}

WindowForm::~WindowForm() {
    DropFrame();
    m_host->messages->UnregisterWindow(m_handle);
}

// Before the window's own subscription: the pages end first.
void WindowForm::SubscribeToItself() {
    m_subscriptions.push_back(OnQueryUnload.Subscribe([this](bool& refused) { QueryUnload(refused); }));
    m_subscriptions.push_back(OnUnload.Subscribe([this](bool&) { EndPages(); }));
    m_subscriptions.push_back(Changed.Subscribe([this](Change change) { OnFormChanged(change); }));
    m_subscriptions.push_back(ModalLoop.Subscribe([this] { RunModalLoop(); }));
}

void WindowForm::Initialize(const Ref<IWindowFormController>& windowFormController, bool isApplyCommandShown) {
    m_controller = windowFormController;
    MakeSlots();
    MakeFrame(isApplyCommandShown);
    SetCaption(m_controller->WindowDef()->Caption());
    AskAll();
    ShowState();
    // Behind the window's own subscription: the window is active before its page is.
    m_subscriptions.push_back(OnActivate.Subscribe([this] {
        if (!m_frame)
            return;
        m_isActive = true;
        ByUser(WindowStep::What::Activate, 0, [] {});
        m_frame->BringToFront();
        ActivateFront();
    }));
    m_subscriptions.push_back(OnDeactivate.Subscribe([this] {
        m_isActive = false;
        DeactivateFront();
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

void WindowForm::MakeSlots() {
    std::vector<Ref<PageDef>> pageDefs;
    for (const auto& pageDef : m_controller->WindowDef()->PageDefs())
        pageDefs.push_back(pageDef);
    std::stable_sort(pageDefs.begin(), pageDefs.end(),
                     [](const auto& a, const auto& b) { return a->PositionOrder() < b->PositionOrder(); });
    for (const auto& pageDef : pageDefs) {
        m_slots.push_back(New<PageSlot>(pageDef, m_host->guard));
        m_slots.back()->Create(m_controller);
    }
}

void WindowForm::MakeFrame(bool isApplyCommandShown) {
    const auto def = m_controller->WindowDef();
    const auto window = m_controller.TryAs<Window>();
    BodyOptions options;
    options.type = m_type;
    options.isChild = MDIChild();
    options.withApply = isApplyCommandShown;
    // A window in which nothing has been changed is closed by its close box alone.
    options.withCommands = m_type != WindowTypeConstants::cvWindow || (window && window->IsModal());
    options.withPageList = def->Name() == WindowHost::ListedWindow;
    std::vector<PageRoom> rooms;
    const QSize pageSize(PixelsX(def->DefPageWidth()), PixelsY(def->DefPageHeight()));
    for (const auto& slot : m_slots) {
        rooms.push_back({slot->Mark(), pageSize, slot->PageDef()->IsResizable()});
        m_host->guard([&] { options.withHelp |= m_host->help && slot->HelpTopic() != 0; });
    }
    m_body = new WindowBody(options, rooms);
    m_frame = std::make_unique<WindowFrame>(
        MDIChild() ? m_host->area.data() : nullptr, m_host->mainWindow, m_body, m_type == WindowTypeConstants::cvWindow,
        WindowFrame::Listeners{[this] { ByUser(WindowStep::What::Close, 0, [this] { RequestClose(); }); },
                               [this] { FrameActivated(); }, [this] { FrameMoved(); }});
    if (MDIChild())
        m_frame->SetIcon(m_host->ChildIcon());
    QObject::connect(m_body, &WindowBody::PageChosen,
                     [this](int page) { ByUser(WindowStep::What::Page, page, [&] { BringToFront(page); }); });
    QObject::connect(m_body, &WindowBody::AllPagesWanted, [this] {
        for (std::size_t i = 0; i < m_slots.size(); ++i)
            m_slots[i]->MakeWidget(m_body->Place(static_cast<int>(i)));
    });
    QObject::connect(m_body, &WindowBody::CommandChosen, [this](Command command) {
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

void WindowForm::OnFormChanged(Change change) {
    switch (change) {
    case Change::Loaded:
        Loaded();
        return;
    case Change::Unloaded:
        Unloaded();
        return;
    default:
        break;
    }
    if (!m_frame)
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
        if (!m_fromFrame)
            m_frame->Place(RectOfModel());
        break;
    case Change::State:
        if (!m_fromFrame && Visible())
            m_frame->SetState(WindowState());
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

void WindowForm::Shown() {
    const bool first = !std::exchange(m_isPlaced, true);
    if (!m_slots.empty()) {
        const Ref<PageSlot> slot = m_slots[static_cast<std::size_t>(m_front)];
        slot->MakeWidget(m_body->Place(m_front));
        if (!m_controller)
            return; // the page has ended the window
        m_body->ShowPage(m_front);
    }
    if (IsModal())
        m_body->ShowCommands();
    ShowState();
    if (first)
        PlaceFirst();
    m_frame->Show(IsModal(), WindowState());
    FrameMoved();
    if (first && !m_slots.empty())
        m_slots[static_cast<std::size_t>(m_front)]->Focus();
}

QRect WindowForm::RectOfModel() const {
    return {PixelsX(Left()), PixelsY(Top()), PixelsX(Width()), PixelsY(Height())};
}

// Where the definition gives no size the page in front does; a window that would hide another of its kind is moved.
void WindowForm::PlaceFirst() {
    const auto def = m_controller->WindowDef();
    QRect place = RectOfModel();
    const QSize wanted = m_body->sizeHint() + m_frame->Surround();
    if (def->DefPageWidth() == 0 || def->DefPageHeight() == 0) {
        const Ref<Form> mainForm(m_host->mainForm);
        place.setSize({def->DefPageWidth() == 0 ? wanted.width() : place.width(),
                       def->DefPageHeight() == 0 ? wanted.height() : place.height()});
        place.moveTo(CorvaneMain::CenteredLeft(place.width(), PixelsX(mainForm->ScaleWidth()), 0),
                     CorvaneMain::CenteredTop(place.height(), PixelsY(mainForm->ScaleHeight()), 0));
    }
    const QRect room = m_frame->Room();
    MinMaxInfo info;
    m_host->messages->SendMessage(m_handle, WindowMessage::GetMinMaxInfo, 0, reinterpret_cast<std::intptr_t>(&info));
    const int beside = std::max(m_frame->Surround().height(), 8); // a title bar
    const QSize minimum(info.oMinTrackSize.lX, info.oMinTrackSize.lY);
    m_minimum = minimum.boundedTo(room.size());
    ApplyMinimum();
    place = Fitted(place, room, minimum, m_frame->Minimum());
    if (MDIChild())
        place.moveTopLeft(FreeCorner(place, room, beside));
    m_frame->Place(place);
    const bool anyResizable =
        std::any_of(m_slots.begin(), m_slots.end(), [](const auto& slot) { return slot->PageDef()->IsResizable(); });
    if (!MDIChild() && !anyResizable && !m_slots.empty())
        m_frame->Fix(place.size());
}

// Down the diagonal, and once more from the top; where all corners are taken, a window does hide another.
QPoint WindowForm::FreeCorner(const QRect& place, const QRect& room, int step) const {
    for (QRect tried : {place, QRect(room.topLeft(), place.size())})
        for (; room.contains(tried); tried.translate(step, step))
            if (!IsCornerTaken(tried.topLeft()))
                return tried.topLeft();
    return place.topLeft();
}

bool WindowForm::IsBehindTab() const {
    return MDIChild() && m_host->area && m_host->area->viewMode() == QMdiArea::TabbedView;
}

FormState WindowForm::UserState() const {
    return IsBehindTab() ? FormState::Normal : WindowState();
}

void WindowForm::PlaceAgain(const QRect& place, FormState state) {
    if (!m_frame || !Visible())
        return;
    if (IsBehindTab()) { // for when it is free again
        const QScopedValueRollback fromFrame(m_fromFrame, true);
        Move(TwipsX(place.left()), TwipsY(place.top()), TwipsX(place.width()), TwipsY(place.height()));
        return;
    }
    QRect room = m_frame->Room();
    // A main window that is just being maximized gets its size a moment later.
    const QWidget* main = m_host->mainWindow;
    if (MDIChild() && main && (main->isMaximized() || main->isFullScreen()))
        room.setSize(room.size() + (main->screen()->availableSize() - main->size()).expandedTo(QSize(0, 0)));
    SetWindowState(FormState::Normal);
    m_frame->Place(Fitted(place, room, m_minimum, m_frame->Minimum()));
    FrameMoved();
    SetWindowState(state);
}

// The definition's, and what buttons and pages need so that nothing is cut off.
void WindowForm::ApplyMinimum() {
    m_frame->SetMinimum(m_minimum.expandedTo(m_body->minimumSizeHint() + m_frame->Surround()));
}

bool WindowForm::IsCornerTaken(const QPoint& corner) const {
    const auto forms = Application()->Forms();
    return std::any_of(forms.begin(), forms.end(), [&](const Ref<Form>& frm) {
        return frm.Get() != this && frm->MDIChild() && frm->Visible() && PixelsX(frm->Left()) == corner.x() &&
               PixelsY(frm->Top()) == corner.y();
    });
}

// A window manager may raise what a modal window holds back.
void WindowForm::FrameActivated() {
    const QWidget* modal = QApplication::activeModalWidget();
    if (Visible() && m_controller && (!modal || modal == Frame()))
        m_host->guard([this] { Activate(); });
}

void WindowForm::FrameMoved() {
    if (!m_frame || !Visible() || m_fromFrame || !m_frame->Widget() || !m_frame->Widget()->isVisible())
        return;
    m_fromFrame = true;
    m_host->guard([this] {
        const FormState state = m_frame->State();
        const QRect place = m_frame->PlaceNow();
        if (state == FormState::Normal && !IsBehindTab() && place != RectOfModel())
            Move(TwipsX(place.left()), TwipsY(place.top()), TwipsX(place.width()), TwipsY(place.height()));
        if (state != WindowState())
            SetWindowState(state);
    });
    m_fromFrame = false;
}

QSize WindowForm::NonPageSize() {
    return m_body->NonPageSize() + m_frame->Surround();
}

Long WindowForm::MinWindowWidth(Long pageWidth) {
    const int width = NonPageSize().width() + PixelsX(pageWidth);
    return RoundToLong(TwipsX(std::min(width, m_body->screen()->availableSize().width())));
}

Long WindowForm::MinWindowHeight(Long pageHeight) {
    const int height = NonPageSize().height() + PixelsY(pageHeight);
    return RoundToLong(TwipsY(std::min(height, m_body->screen()->availableSize().height())));
}

Long WindowForm::NonPageWidth() {
    return RoundToLong(TwipsX(NonPageSize().width()));
}

Long WindowForm::NonPageHeight() {
    return RoundToLong(TwipsY(NonPageSize().height()));
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

// A form that code has hidden has no one in front of it who could answer.
void WindowForm::QueryUnload(bool& refused) {
    HideActiveChild(true);
    if (!m_inClose) {
        m_cancelled.reset();
        AskAll();
        if (m_saved) {
            m_cancelled = !*m_saved;
        } else if (Visible() && AnyChanged()) {
            const LeaveAnswer answer = AskToLeave();
            refused = answer == LeaveAnswer::Stay;
            if (answer == LeaveAnswer::Save)
                m_cancelled = false;
        }
    }
    QTimer::singleShot(0, m_host->mainWindow,
                       [mainForm = Ref<MdiForm>(m_host->mainForm)] { mainForm->SetRefusesToTellChild(false); });
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
    m_slots.clear();
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

// Its widgets stay until the event loop turns, and what they may still say is ignored.
void WindowForm::DropFrame() {
    if (m_body)
        m_body->disconnect();
    m_body = nullptr;
    m_frame.reset();
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

} // namespace corvane::desktop
