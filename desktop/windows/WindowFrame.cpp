#include "desktop/windows/WindowFrame.h"

#include <QCloseEvent>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScreen>
#include <QVBoxLayout>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr QSize oProbe(1000, 1000); // larger than what a frame needs for itself

// A frame's widget outlives the frame by a turn of the event loop, and then nobody listens any more.
using Ears = std::shared_ptr<WindowFrame::Ears>;

class ChildFrame final : public QMdiSubWindow {
public:
    explicit ChildFrame(Ears pEars) : m_pEars(std::move(pEars)) {
        setAttribute(Qt::WA_DeleteOnClose, false);
        // The main window has the keys of its children itself.
        for (QAction* pAction : systemMenu()->actions())
            pAction->setShortcuts({});
        connect(this, &QMdiSubWindow::windowStateChanged, this, [this](Qt::WindowStates eOld, Qt::WindowStates eNew) {
            if ((eNew & ~eOld) & Qt::WindowActive)
                m_pEars->Tell(&WindowFrame::Listeners::fnActivated);
            if ((eNew ^ eOld) & ~Qt::WindowStates(Qt::WindowActive))
                m_pEars->Tell(&WindowFrame::Listeners::fnPlaced);
        });
    }

protected:
    void closeEvent(QCloseEvent* pEvent) override {
        pEvent->ignore();
        m_pEars->Tell(&WindowFrame::Listeners::fnCloseRequested);
    }
    void moveEvent(QMoveEvent* pEvent) override {
        QMdiSubWindow::moveEvent(pEvent);
        m_pEars->Tell(&WindowFrame::Listeners::fnPlaced);
    }
    void resizeEvent(QResizeEvent* pEvent) override {
        QMdiSubWindow::resizeEvent(pEvent);
        m_pEars->Tell(&WindowFrame::Listeners::fnPlaced);
    }

private:
    Ears m_pEars;
};

class DialogFrame final : public QDialog {
public:
    DialogFrame(Ears pEars, QWidget* pOwner, Qt::WindowFlags eFlags)
        : QDialog(pOwner, eFlags), m_pEars(std::move(pEars)) {}
    // The escape key and the close box.
    void reject() override { m_pEars->Tell(&WindowFrame::Listeners::fnCloseRequested); }

protected:
    void closeEvent(QCloseEvent* pEvent) override {
        pEvent->ignore();
        m_pEars->Tell(&WindowFrame::Listeners::fnCloseRequested);
    }
    void moveEvent(QMoveEvent* pEvent) override {
        QDialog::moveEvent(pEvent);
        m_pEars->Tell(&WindowFrame::Listeners::fnPlaced);
    }
    void resizeEvent(QResizeEvent* pEvent) override {
        QDialog::resizeEvent(pEvent);
        m_pEars->Tell(&WindowFrame::Listeners::fnPlaced);
    }
    void changeEvent(QEvent* pEvent) override {
        QDialog::changeEvent(pEvent);
        if (pEvent->type() == QEvent::WindowStateChange)
            m_pEars->Tell(&WindowFrame::Listeners::fnPlaced);
    }
    bool event(QEvent* pEvent) override {
        const bool bDone = QDialog::event(pEvent);
        if (pEvent->type() == QEvent::WindowActivate)
            m_pEars->Tell(&WindowFrame::Listeners::fnActivated);
        return bDone;
    }

private:
    Ears m_pEars;
};

Qt::WindowStates StatesOf(FormState eState) {
    if (eState == FormState::Maximized)
        return Qt::WindowMaximized;
    return eState == FormState::Minimized ? Qt::WindowMinimized : Qt::WindowNoState;
}

} // namespace

WindowFrame::WindowFrame(QMdiArea* pArea, QWidget* pOwner, QWidget* pBody, bool bWithStateButtons, Listeners oListeners)
    : m_pEars(std::make_shared<WindowFrame::Ears>(std::move(oListeners))), m_pArea(pArea), m_pOwner(pOwner) {
    if (pArea) {
        m_pChild = new ChildFrame(m_pEars);
        m_pChild->setParent(pArea->viewport(), m_pChild->windowFlags()); // without one it has no title bar
        auto* pProbe = new QWidget;
        pProbe->setFixedSize(oProbe);
        m_pChild->setWidget(pProbe);
        m_pChild->ensurePolished();
        m_oSurround = m_pChild->sizeHint() - oProbe;
        m_pChild->setWidget(nullptr);
        delete pProbe;
        m_pChild->setWidget(pBody);
        m_pWidget = m_pChild;
        return;
    }
    Qt::WindowFlags eFlags = Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    if (bWithStateButtons)
        eFlags |= Qt::WindowMinMaxButtonsHint;
    m_pDialog = new DialogFrame(m_pEars, pOwner, eFlags);
    auto* pLayout = new QVBoxLayout(m_pDialog);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(pBody);
    m_pWidget = m_pDialog;
}

WindowFrame::~WindowFrame() {
    m_pEars->bClosed = true;
    if (!m_pWidget)
        return;
    m_pWidget->hide();
    m_pWidget->deleteLater();
}

void WindowFrame::Show(bool bModal, FormState eState) {
    if (!m_pWidget)
        return;
    if (m_pChild && m_pArea && !std::exchange(m_bIsAdded, true)) {
        const QRect oPlace = m_pChild->geometry(); // the area would choose a place of its own
        m_pArea->addSubWindow(m_pChild);
        m_pChild->setGeometry(oPlace);
    }
    if (m_pDialog && bModal != m_pDialog->isModal() && !m_pDialog->isVisible())
        m_pDialog->setWindowModality(bModal ? Qt::ApplicationModal : Qt::NonModal);
    if (!m_pWidget->isVisible())
        SetState(eState);
    m_pWidget->show();
    BringToFront();
}

void WindowFrame::Hide() {
    if (m_pWidget)
        m_pWidget->hide();
}

void WindowFrame::BringToFront() {
    if (m_pChild && m_pArea) {
        if (m_bIsAdded && m_pArea->activeSubWindow() != m_pChild)
            m_pArea->setActiveSubWindow(m_pChild);
        if (m_pChild->window()->isVisible() && !m_pChild->window()->isActiveWindow())
            m_pChild->window()->activateWindow();
    } else if (m_pDialog && m_pDialog->isVisible() && !m_pDialog->isActiveWindow()) {
        m_pDialog->raise();
        m_pDialog->activateWindow();
    }
}

void WindowFrame::SetTitle(const QString& sTitle) {
    if (m_pWidget)
        m_pWidget->setWindowTitle(QString(sTitle).replace("[*]", "[*][*]") + "[*]");
}

void WindowFrame::SetIcon(const QIcon& oIcon) {
    if (m_pWidget)
        m_pWidget->setWindowIcon(oIcon);
}

void WindowFrame::SetModified(bool bModified) {
    if (m_pWidget)
        m_pWidget->setWindowModified(bModified);
}

void WindowFrame::SetState(FormState eState) {
    if (!m_pWidget || State() == eState)
        return;
    if (!m_pChild || !m_pChild->isVisible()) {
        m_pWidget->setWindowState(StatesOf(eState));
        return;
    }
    switch (eState) {
    case FormState::Maximized:
        m_pChild->showMaximized();
        break;
    case FormState::Minimized:
        m_pChild->showMinimized();
        break;
    case FormState::Normal:
        m_pChild->showNormal();
        break;
    }
}

FormState WindowFrame::State() const {
    if (m_pWidget && m_pWidget->isMinimized())
        return FormState::Minimized;
    return m_pWidget && m_pWidget->isMaximized() ? FormState::Maximized : FormState::Normal;
}

QPoint WindowFrame::Corner() const {
    return m_pDialog && m_pOwner ? m_pOwner->frameGeometry().topLeft() : QPoint();
}

void WindowFrame::Place(const QRect& oPlace) {
    if (m_pWidget && State() == FormState::Normal)
        m_pWidget->setGeometry(oPlace.translated(Corner()));
}

QRect WindowFrame::PlaceNow() const {
    return m_pWidget ? m_pWidget->geometry().translated(-Corner()) : QRect();
}

void WindowFrame::SetMinimum(const QSize& oSize) {
    if (m_pWidget && m_pWidget->minimumSize() != m_pWidget->maximumSize())
        m_pWidget->setMinimumSize(oSize);
}

void WindowFrame::Fix(const QSize& oSize) {
    if (m_pWidget)
        m_pWidget->setFixedSize(oSize);
}

QRect WindowFrame::Room() const {
    if (m_pChild && m_pArea)
        return QRect(QPoint(), m_pArea->viewport()->size());
    const QScreen* pScreen = m_pOwner ? m_pOwner->screen() : nullptr;
    return pScreen ? pScreen->availableGeometry().translated(-Corner()) : QRect(0, 0, 1024, 768);
}

} // namespace corvane::desktop
