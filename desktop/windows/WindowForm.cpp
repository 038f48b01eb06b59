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

// The place within the room, where that is large enough for what the window needs.
QRect Fitted(QRect oPlace, const QRect& oRoom, const QSize& oWanted, const QSize& oNeeded) {
    oPlace.setSize(oPlace.size().expandedTo(oWanted).boundedTo(oRoom.size()).expandedTo(oNeeded));
    oPlace.moveTo(std::clamp(oPlace.left(), oRoom.left(), std::max(oRoom.left(), oRoom.right() + 1 - oPlace.width())),
                  std::clamp(oPlace.top(), oRoom.top(), std::max(oRoom.top(), oRoom.bottom() + 1 - oPlace.height())));
    return oPlace;
}

} // namespace

WindowForm::WindowForm(std::shared_ptr<const WindowHost> pHost, WindowTypeConstants eType, bool bIsMDIChild)
    : Form(pHost->frmMain, bIsMDIChild), m_pHost(std::move(pHost)), m_eType(eType) {
    SubscribeToItself();
}

WindowForm::~WindowForm() {
    DropFrame();
    m_pHost->oMessages->UnregisterWindow(m_lHWnd);
}

// Before the window's own subscription: the pages end first.
void WindowForm::SubscribeToItself() {
    m_aSubscriptions.push_back(OnQueryUnload.Subscribe([this](bool& bRefused) { QueryUnload(bRefused); }));
    m_aSubscriptions.push_back(OnUnload.Subscribe([this](bool&) { EndPages(); }));
    m_aSubscriptions.push_back(Changed.Subscribe([this](Change eChange) { HearChange(eChange); }));
    m_aSubscriptions.push_back(ModalLoop.Subscribe([this] { RunModalLoop(); }));
}

void WindowForm::Initialize(const Ref<IWindowFormController>& oWindowFormController, bool bIsApplyCommandShown) {
    m_oController = oWindowFormController;
    MakeSlots();
    MakeFrame(bIsApplyCommandShown);
    SetCaption(m_oController->WindowDef()->Caption());
    AskAll();
    ShowState();
    // Behind the window's own subscription: the window is active before its page is.
    m_aSubscriptions.push_back(OnActivate.Subscribe([this] {
        if (!m_pFrame)
            return;
        m_bIsActive = true;
        ByPerson(WindowStep::What::Activate, 0, [] {});
        m_pFrame->BringToFront();
        ActivateFront();
    }));
    m_aSubscriptions.push_back(OnDeactivate.Subscribe([this] {
        m_bIsActive = false;
        DeactivateFront();
    }));
}

Ref<Window> WindowForm::ShownWindow() const {
    return m_oController.TryAs<Window>();
}

void WindowForm::ByPerson(WindowStep::What eWhat, int nWhich, const std::function<void()>& fnDo) {
    const Ref<Form> oSelf(this);
    m_pHost->fnGuard([&] {
        const auto oWindow = ShownWindow();
        if (m_pHost->fnByPerson && oWindow)
            m_pHost->fnByPerson({*oWindow, eWhat, nWhich, [this] { return !IsLoaded(); }}, fnDo);
        else
            fnDo();
    });
}

void WindowForm::MakeSlots() {
    std::vector<Ref<PageDef>> aPageDefs;
    for (const auto& oPageDef : m_oController->WindowDef()->PageDefs())
        aPageDefs.push_back(oPageDef);
    std::stable_sort(aPageDefs.begin(), aPageDefs.end(),
                     [](const auto& a, const auto& b) { return a->PositionOrder() < b->PositionOrder(); });
    for (const auto& oPageDef : aPageDefs) {
        m_aSlots.push_back(New<PageSlot>(oPageDef, m_pHost->fnGuard));
        m_aSlots.back()->Create(m_oController);
    }
}

void WindowForm::MakeFrame(bool bIsApplyCommandShown) {
    const auto oDef = m_oController->WindowDef();
    const auto oWindow = m_oController.TryAs<Window>();
    BodyOptions oOptions;
    oOptions.eType = m_eType;
    oOptions.bIsChild = MDIChild();
    oOptions.bWithApply = bIsApplyCommandShown;
    // A window in which nothing has been changed is closed by its close box alone.
    oOptions.bWithCommands = m_eType != WindowTypeConstants::cvWindow || (oWindow && oWindow->IsModal());
    oOptions.bWithPageList = oDef->Name() == WindowHost::ListedWindow;
    std::vector<PageRoom> aRooms;
    const QSize oPageSize(PixelsX(oDef->DefPageWidth()), PixelsY(oDef->DefPageHeight()));
    for (const auto& oSlot : m_aSlots) {
        aRooms.push_back({oSlot->Mark(), oPageSize, oSlot->PageDef()->IsResizable()});
        m_pHost->fnGuard([&] { oOptions.bWithHelp |= m_pHost->fnHelp && oSlot->HelpTopic() != 0; });
    }
    m_pBody = new WindowBody(oOptions, aRooms);
    m_pFrame = std::make_unique<WindowFrame>(
        MDIChild() ? m_pHost->pArea.data() : nullptr, m_pHost->pMainWindow, m_pBody,
        m_eType == WindowTypeConstants::cvWindow,
        WindowFrame::Listeners{[this] { ByPerson(WindowStep::What::Close, 0, [this] { RequestClose(); }); },
                               [this] {
                                   m_pHost->fnGuard([this] {
                                       if (Visible() && m_oController)
                                           Activate();
                                   });
                               },
                               [this] { FrameMoved(); }});
    if (MDIChild())
        m_pFrame->SetIcon(m_pHost->ChildIcon());
    QObject::connect(m_pBody, &WindowBody::PageChosen,
                     [this](int iPage) { ByPerson(WindowStep::What::Page, iPage, [&] { BringToFront(iPage); }); });
    QObject::connect(m_pBody, &WindowBody::AllPagesWanted, [this] {
        for (std::size_t i = 0; i < m_aSlots.size(); ++i)
            m_aSlots[i]->MakeWidget(m_pBody->Place(static_cast<int>(i)));
    });
    QObject::connect(m_pBody, &WindowBody::CommandChosen, [this](Command eCommand) {
        ByPerson(WindowStep::What::Command, static_cast<int>(eCommand), [&] { ClickCommand(eCommand); });
    });
}

QString TitleOf(const Form& oForm) {
    const auto* pForm = dynamic_cast<const WindowForm*>(&oForm);
    const std::string sWindow = pForm ? pForm->WindowName() : std::string();
    return sWindow.empty() ? QString::fromStdString(oForm.Caption()) : ShownWindow(sWindow, oForm.Caption());
}

std::string WindowForm::WindowName() const {
    return m_oController ? m_oController->WindowDef()->Name() : std::string();
}

void WindowForm::HearChange(Change eChange) {
    switch (eChange) {
    case Change::Loaded:
        Loaded();
        return;
    case Change::Unloaded:
        Unloaded();
        return;
    default:
        break;
    }
    if (!m_pFrame)
        return;
    switch (eChange) {
    case Change::Shown:
        Shown();
        break;
    case Change::Hidden:
        m_pFrame->Hide();
        if (m_pLoop)
            m_pLoop->quit();
        ActivateNext();
        break;
    case Change::Moved:
        if (!m_bFromFrame)
            m_pFrame->Place(RectOfModel());
        break;
    case Change::State:
        if (!m_bFromFrame && Visible())
            m_pFrame->SetState(WindowState());
        break;
    case Change::Caption:
        m_pFrame->SetTitle(TitleOf(*this));
        break;
    default:
        if (m_pFrame->Widget())
            m_pFrame->Widget()->update();
        break;
    }
}

void WindowForm::Loaded() {
    m_lHWnd = HWnd();
    m_pHost->oMessages->RegisterWindow(m_lHWnd, [this](Long, Long uMsg, Long, std::intptr_t) -> Long {
        if (uMsg == WindowMessage::Close && IsLoaded()) {
            m_bCloseArrived = true;
            Unload();
        }
        return 0;
    });
}

void WindowForm::Shown() {
    const bool bFirst = !std::exchange(m_bIsPlaced, true);
    if (!m_aSlots.empty()) {
        const Ref<PageSlot> oSlot = m_aSlots[static_cast<std::size_t>(m_iFront)];
        oSlot->MakeWidget(m_pBody->Place(m_iFront));
        if (!m_oController)
            return; // the page has ended the window
        m_pBody->ShowPage(m_iFront);
    }
    if (IsModal())
        m_pBody->ShowCommands();
    ShowState();
    if (bFirst)
        PlaceFirst();
    m_pFrame->Show(IsModal(), WindowState());
    FrameMoved();
    if (bFirst && !m_aSlots.empty())
        m_aSlots[static_cast<std::size_t>(m_iFront)]->Focus();
}

QRect WindowForm::RectOfModel() const {
    return {PixelsX(Left()), PixelsY(Top()), PixelsX(Width()), PixelsY(Height())};
}

// Where the definition gives no size the page in front does; a window that would hide another of its kind is moved.
void WindowForm::PlaceFirst() {
    const auto oDef = m_oController->WindowDef();
    QRect oPlace = RectOfModel();
    const QSize oWanted = m_pBody->sizeHint() + m_pFrame->Surround();
    if (oDef->DefPageWidth() == 0 || oDef->DefPageHeight() == 0) {
        const Ref<Form> frmMain(m_pHost->frmMain);
        oPlace.setSize({oDef->DefPageWidth() == 0 ? oWanted.width() : oPlace.width(),
                        oDef->DefPageHeight() == 0 ? oWanted.height() : oPlace.height()});
        oPlace.moveTo(CorvaneMain::CenteredLeft(oPlace.width(), PixelsX(frmMain->ScaleWidth()), 0),
                      CorvaneMain::CenteredTop(oPlace.height(), PixelsY(frmMain->ScaleHeight()), 0));
    }
    const QRect oRoom = m_pFrame->Room();
    MinMaxInfo oInfo;
    m_pHost->oMessages->SendMessage(m_lHWnd, WindowMessage::GetMinMaxInfo, 0, reinterpret_cast<std::intptr_t>(&oInfo));
    const int nBeside = std::max(m_pFrame->Surround().height(), 8); // a title bar
    const QSize oMinimum(oInfo.oMinTrackSize.lX, oInfo.oMinTrackSize.lY);
    m_oMinimum = oMinimum.boundedTo(oRoom.size());
    ApplyMinimum();
    oPlace = Fitted(oPlace, oRoom, oMinimum, m_pFrame->Minimum());
    if (MDIChild())
        oPlace.moveTopLeft(FreeCorner(oPlace, oRoom, nBeside));
    m_pFrame->Place(oPlace);
    const bool bAnyResizable = std::any_of(m_aSlots.begin(), m_aSlots.end(),
                                           [](const auto& oSlot) { return oSlot->PageDef()->IsResizable(); });
    if (!MDIChild() && !bAnyResizable && !m_aSlots.empty())
        m_pFrame->Fix(oPlace.size());
}

// Down the diagonal, and once more from the top; where all corners are taken, a window does hide another.
QPoint WindowForm::FreeCorner(const QRect& oPlace, const QRect& oRoom, int nStep) const {
    for (QRect oTried : {oPlace, QRect(oRoom.topLeft(), oPlace.size())})
        for (; oRoom.contains(oTried); oTried.translate(nStep, nStep))
            if (!IsCornerTaken(oTried.topLeft()))
                return oTried.topLeft();
    return oPlace.topLeft();
}

bool WindowForm::IsBehindTab() const {
    return MDIChild() && m_pHost->pArea && m_pHost->pArea->viewMode() == QMdiArea::TabbedView;
}

FormState WindowForm::StateOfPerson() const {
    return IsBehindTab() ? FormState::Normal : WindowState();
}

void WindowForm::PlaceAgain(const QRect& oPlace, FormState eState) {
    if (!m_pFrame || !Visible())
        return;
    if (IsBehindTab()) { // for when it is free again
        const QScopedValueRollback oFromFrame(m_bFromFrame, true);
        Move(TwipsX(oPlace.left()), TwipsY(oPlace.top()), TwipsX(oPlace.width()), TwipsY(oPlace.height()));
        return;
    }
    QRect oRoom = m_pFrame->Room();
    // A main window that is just being maximized gets its size a moment later.
    const QWidget* pMain = m_pHost->pMainWindow;
    if (MDIChild() && pMain && (pMain->isMaximized() || pMain->isFullScreen()))
        oRoom.setSize(oRoom.size() + (pMain->screen()->availableSize() - pMain->size()).expandedTo(QSize(0, 0)));
    SetWindowState(FormState::Normal);
    m_pFrame->Place(Fitted(oPlace, oRoom, m_oMinimum, m_pFrame->Minimum()));
    FrameMoved();
    SetWindowState(eState);
}

// The definition's, and what buttons and pages need so that nothing is cut off.
void WindowForm::ApplyMinimum() {
    m_pFrame->SetMinimum(m_oMinimum.expandedTo(m_pBody->minimumSizeHint() + m_pFrame->Surround()));
}

bool WindowForm::IsCornerTaken(const QPoint& oCorner) const {
    const auto aForms = Application()->Forms();
    return std::any_of(aForms.begin(), aForms.end(), [&](const Ref<Form>& frm) {
        return frm.Get() != this && frm->MDIChild() && frm->Visible() && PixelsX(frm->Left()) == oCorner.x() &&
               PixelsY(frm->Top()) == oCorner.y();
    });
}

// A window manager may raise what a modal window holds back.
void WindowForm::FrameActivated() {
    const QWidget* pModal = QApplication::activeModalWidget();
    if (Visible() && m_oController && (!pModal || pModal == Frame()))
        m_pHost->fnGuard([this] { Activate(); });
}

void WindowForm::FrameMoved() {
    if (!m_pFrame || !Visible() || m_bFromFrame || !m_pFrame->Widget() || !m_pFrame->Widget()->isVisible())
        return;
    m_bFromFrame = true;
    m_pHost->fnGuard([this] {
        const FormState eState = m_pFrame->State();
        const QRect oPlace = m_pFrame->PlaceNow();
        if (eState == FormState::Normal && !IsBehindTab() && oPlace != RectOfModel())
            Move(TwipsX(oPlace.left()), TwipsY(oPlace.top()), TwipsX(oPlace.width()), TwipsY(oPlace.height()));
        if (eState != WindowState())
            SetWindowState(eState);
    });
    m_bFromFrame = false;
}

QSize WindowForm::NonPageSize() {
    return m_pBody->NonPageSize() + m_pFrame->Surround();
}

Long WindowForm::MinWindowWidth(Long lPageWidth) {
    const int nWidth = NonPageSize().width() + PixelsX(lPageWidth);
    return RoundToLong(TwipsX(std::min(nWidth, m_pBody->screen()->availableSize().width())));
}

Long WindowForm::MinWindowHeight(Long lPageHeight) {
    const int nHeight = NonPageSize().height() + PixelsY(lPageHeight);
    return RoundToLong(TwipsY(std::min(nHeight, m_pBody->screen()->availableSize().height())));
}

Long WindowForm::NonPageWidth() {
    return RoundToLong(TwipsX(NonPageSize().width()));
}

Long WindowForm::NonPageHeight() {
    return RoundToLong(TwipsY(NonPageSize().height()));
}

void WindowForm::RunModalLoop() {
    if (m_pLoop)
        return; // shown again from inside; the first loop goes on
    if (m_pHost->fnModalLoop) {
        m_pHost->fnModalLoop([this] { return IsLoaded() && Visible(); }, [this] { Abandon(); });
    } else {
        QEventLoop oLoop;
        m_pLoop = &oLoop;
        oLoop.exec();
        m_pLoop = nullptr;
    }
    if (Visible()) // the application is ending
        Abandon();
}

// The first request that a window with a minimum size gets only takes the size away, so a second one follows.
void WindowForm::RequestClose() {
    const Ref<Form> oSelf(this);
    m_pHost->fnGuard([this] {
        m_bCloseArrived = false;
        m_pHost->oMessages->SendMessage(m_lHWnd, WindowMessage::Close, 0, 0);
        if (IsLoaded() && !m_bCloseArrived)
            m_pHost->oMessages->SendMessage(m_lHWnd, WindowMessage::Close, 0, 0);
    });
}

void WindowForm::Abandon() {
    const Ref<Form> oSelf(this);
    m_pHost->fnGuard([this] { Close(true); });
}

// A form that code has hidden has nobody in front of it who could answer.
void WindowForm::QueryUnload(bool& bRefused) {
    TellNoActiveChild(true);
    if (!m_bInClose) {
        m_oCancelled.reset();
        AskAll();
        if (m_oSaved) {
            m_oCancelled = !*m_oSaved;
        } else if (Visible() && AnyChanged()) {
            const LeaveAnswer eAnswer = AskToLeave();
            bRefused = eAnswer == LeaveAnswer::Stay;
            if (eAnswer == LeaveAnswer::Save)
                m_oCancelled = false;
        }
    }
    QTimer::singleShot(0, m_pHost->pMainWindow,
                       [frmMain = Ref<MdiForm>(m_pHost->frmMain)] { frmMain->SetRefusesToTellChild(false); });
}

// While a child is asked, and after it has refused until the event loop turns, nobody finds it to ask it again.
void WindowForm::TellNoActiveChild(bool bRefuses) {
    if (MDIChild() && Application())
        Application()->SetRefusesToTellChild(bRefuses);
}

void WindowForm::Unloaded() {
    TellNoActiveChild(false);
    if (m_pLoop)
        m_pLoop->quit();
    m_pHost->oMessages->SendMessage(m_lHWnd, WindowMessage::Close, 0, 0); // takes the minimum size away
    m_pHost->oMessages->UnregisterWindow(m_lHWnd);
    DropFrame();
    m_aSlots.clear();
    const Ref<IWindowFormController> oController = std::move(m_oController);
    try {
        if (oController)
            oController->ExitWindow(m_oCancelled.value_or(true));
    } catch (...) {
        ActivateNext();
        throw;
    }
    ActivateNext();
}

// Its widgets stay until the event loop turns, and what they may still say isn't heard.
void WindowForm::DropFrame() {
    if (m_pBody)
        m_pBody->disconnect();
    m_pBody = nullptr;
    m_pFrame.reset();
}

// Of the forms that can be seen, the one that was active last.
void WindowForm::ActivateNext() {
    MdiForm* const frmMain = Application();
    const Ref<Form> frmForeground = frmMain ? frmMain->ForegroundForm() : nullptr;
    if (!frmMain || (frmForeground && frmForeground.Get() != this))
        return;
    const auto aForms = frmMain->Forms();
    for (auto it = aForms.rbegin(); it != aForms.rend(); ++it)
        if (it->Get() != this && (*it)->Visible()) {
            (*it)->Activate();
            return;
        }
}

} // namespace corvane::desktop
