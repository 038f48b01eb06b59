#include "desktop/windows/WindowFrame.h"

#include <QCloseEvent>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr QSize probe(1000, 1000); // larger than what a frame needs for itself

using Notifier = std::shared_ptr<WindowFrame::Notifier>;

class ChildFrame final : public QMdiSubWindow {
public:
    explicit ChildFrame(Notifier notifier) : m_notifier(std::move(notifier)) {
        setAttribute(Qt::WA_DeleteOnClose, false);
        // The main window has the keys of its children itself.
        for (QAction* action : systemMenu()->actions())
            action->setShortcuts({});
        connect(this, &QMdiSubWindow::windowStateChanged, this,
                [held = m_notifier](Qt::WindowStates old, Qt::WindowStates newStates) { // also while this is destroyed
                    if ((newStates & ~old) & Qt::WindowActive)
                        held->Notify(&WindowFrame::Observer::FrameActivated);
                    if ((newStates ^ old) & ~Qt::WindowStates(Qt::WindowActive))
                        held->Notify(&WindowFrame::Observer::FramePlaced);
                });
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        m_notifier->Notify(&WindowFrame::Observer::CloseRequested);
    }
    void moveEvent(QMoveEvent* event) override {
        QMdiSubWindow::moveEvent(event);
        m_notifier->Notify(&WindowFrame::Observer::FramePlaced);
    }
    void resizeEvent(QResizeEvent* event) override {
        QMdiSubWindow::resizeEvent(event);
        m_notifier->Notify(&WindowFrame::Observer::FramePlaced);
    }

private:
    Notifier m_notifier;
};

class DialogFrame final : public QDialog {
public:
    DialogFrame(Notifier notifier, QWidget* owner, Qt::WindowFlags flags)
        : QDialog(owner, flags), m_notifier(std::move(notifier)) {}
    // The escape key and the close box.
    void reject() override { m_notifier->Notify(&WindowFrame::Observer::CloseRequested); }

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        m_notifier->Notify(&WindowFrame::Observer::CloseRequested);
    }
    void moveEvent(QMoveEvent* event) override {
        QDialog::moveEvent(event);
        m_notifier->Notify(&WindowFrame::Observer::FramePlaced);
    }
    void resizeEvent(QResizeEvent* event) override {
        QDialog::resizeEvent(event);
        m_notifier->Notify(&WindowFrame::Observer::FramePlaced);
    }
    void changeEvent(QEvent* event) override {
        QDialog::changeEvent(event);
        if (event->type() == QEvent::WindowStateChange)
            m_notifier->Notify(&WindowFrame::Observer::FramePlaced);
    }
    bool event(QEvent* event) override {
        const bool done = QDialog::event(event);
        if (event->type() == QEvent::WindowActivate)
            m_notifier->Notify(&WindowFrame::Observer::FrameActivated);
        return done;
    }

private:
    Notifier m_notifier;
};

// A child that was moved out of the main window. Its keys are the main window's as well, which is why it has that for a
// parent; for the desktop it is a window as any other.
class OwnFrame final : public QWidget {
public:
    OwnFrame(Notifier notifier, QWidget* owner) : QWidget(owner, Qt::Window), m_notifier(std::move(notifier)) {
        auto* all = new QVBoxLayout(this);
        all->setContentsMargins(0, 0, 0, 0);
        all->setSpacing(0);
    }

    // It reports nothing from now on; its activation may still be on its way from the desktop.
    void Release() { m_notifier = std::make_shared<WindowFrame::Notifier>(WindowFrame::Notifier{nullptr}); }

protected:
    void showEvent(QShowEvent* event) override {
        QWidget::showEvent(event);
        windowHandle()->setTransientParent(nullptr);
    }
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        m_notifier->Notify(&WindowFrame::Observer::CloseRequested);
    }
    bool event(QEvent* event) override {
        const bool done = QWidget::event(event);
        if (event->type() == QEvent::WindowActivate)
            m_notifier->Notify(&WindowFrame::Observer::FrameActivated);
        return done;
    }

private:
    Notifier m_notifier;
};

void CopyTitle(const QWidget& from, QWidget& to) {
    to.setWindowTitle(from.windowTitle());
    to.setWindowIcon(from.windowIcon());
    to.setWindowModified(from.isWindowModified());
}

Qt::WindowStates StatesOf(FormState state) {
    if (state == FormState::Maximized)
        return Qt::WindowMaximized;
    return state == FormState::Minimized ? Qt::WindowMinimized : Qt::WindowNoState;
}

} // namespace

WindowFrame::WindowFrame(QMdiArea* area, QWidget* owner, QWidget* body, bool withStateButtons, Observer& observer,
                         FrameKeeper* keeper)
    : m_notifier(std::make_shared<WindowFrame::Notifier>(WindowFrame::Notifier{&observer})), m_area(area),
      m_owner(owner), m_keeper(area ? keeper : nullptr), m_hasStateButtons(withStateButtons) {
    if (area) {
        m_child = new ChildFrame(m_notifier);
        m_child->setParent(area->viewport(), m_child->windowFlags()); // without one it has no title bar
        auto* probeWidget = new QWidget;
        probeWidget->setFixedSize(probe);
        m_child->setWidget(probeWidget);
        m_child->ensurePolished();
        m_surround = m_child->sizeHint() - probe;
        m_child->setWidget(nullptr);
        delete probeWidget;
        m_child->setWidget(body);
        m_freeFlags = m_child->windowFlags();
        m_widget = m_child;
        TellKeeper(&FrameKeeper::FrameMade);
        return;
    }
    Qt::WindowFlags flags = Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    if (withStateButtons)
        flags |= Qt::WindowMinMaxButtonsHint;
    m_dialog = new DialogFrame(m_notifier, owner, flags);
    auto* layout = new QVBoxLayout(m_dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(body);
    m_widget = m_dialog;
}

void WindowFrame::TellKeeper(void (FrameKeeper::*what)(WindowFrame&)) {
    if (m_keeper)
        (m_keeper->*what)(*this);
}

void WindowFrame::Close() {
    m_notifier->observer = nullptr;
    TellKeeper(&FrameKeeper::FrameClosed);
    m_keeper = nullptr;
    const QPointer<QWidget> widgets[] = {m_child.data(), m_dialog.data(), m_own.data()};
    m_widget = nullptr;
    m_child = nullptr;
    m_dialog = nullptr;
    m_own = nullptr;
    for (const auto& widget : widgets)
        if (widget) {
            widget->deleteLater();
            widget->hide();
        }
}

void WindowFrame::Hold(Holding holding) {
    if (!m_child || holding == m_holding)
        return;
    const bool wasOwn = m_holding == Holding::Own;
    m_holding = holding;
    if (holding == Holding::InTab) {
        m_child->setMinimumSize(0, 0);
        if (m_child->isMaximized() || m_child->isMinimized()) {
            if (m_child->isVisible())
                m_child->showNormal();
            else
                m_child->setWindowState(Qt::WindowNoState);
        }
        m_child->setWindowFlags(Qt::SubWindow | Qt::FramelessWindowHint);
    } else if (holding == Holding::Free) {
        m_child->setWindowFlags(m_freeFlags);
        m_child->setMinimumSize(m_minimum);
    }
    if (wasOwn || holding == Holding::Own)
        MoveBody(!wasOwn);
}

// Between the child and the window of its own.
void WindowFrame::MoveBody(bool own) {
    QWidget* const body = own ? m_child->widget() : m_own->layout()->itemAt(m_own->layout()->count() - 1)->widget();
    const QPointer<QWidget> focus = body->focusWidget();
    const bool isShown = m_widget->isVisible();
    if (own) {
        m_own = new OwnFrame(m_notifier, m_owner);
        CopyTitle(*m_child, *m_own);
        m_child->setWidget(nullptr);
        m_own->layout()->addWidget(body);
        m_widget = m_own;
        m_child->hide();
    } else {
        m_own->layout()->removeWidget(body);
        m_child->setWidget(body);
        CopyTitle(*m_own, *m_child);
        m_widget = m_child;
        static_cast<OwnFrame*>(m_own.data())->Release();
        m_own->deleteLater();
        m_own->hide();
        m_own = nullptr;
    }
    body->show();
    if (isShown && m_widget)
        m_widget->show();
    if (focus)
        focus->setFocus();
}

void WindowFrame::PlaceInTab(const QRect& place) {
    if (m_child && m_holding == Holding::InTab)
        m_child->setGeometry(place);
}

void WindowFrame::StayOnTop(bool stays) {
    if (m_child)
        m_child->setWindowFlag(Qt::WindowStaysOnTopHint, stays);
}

void WindowFrame::Show(bool modal, FormState state) {
    if (!m_widget)
        return;
    if (m_child && m_area && !std::exchange(m_isAdded, true)) {
        const QRect place = m_child->geometry(); // the area would choose a place of its own
        m_area->addSubWindow(m_child);
        if (m_child)
            m_child->setGeometry(place);
    }
    TellKeeper(&FrameKeeper::FrameShown);
    if (m_dialog && modal != m_dialog->isModal() && !m_dialog->isVisible())
        m_dialog->setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    if (m_widget && !m_widget->isVisible())
        SetState(state);
    if (m_widget)
        m_widget->show();
    BringToFront();
}

void WindowFrame::Hide() {
    if (m_widget)
        m_widget->hide();
    TellKeeper(&FrameKeeper::FrameHidden);
}

void WindowFrame::BringToFront() {
    if (m_own) {
        m_own->raise();
        if (m_own && m_own->isVisible() && !m_own->isActiveWindow())
            m_own->activateWindow();
    } else if (m_child && m_area) {
        if (m_isAdded && m_area->activeSubWindow() != m_child)
            m_area->setActiveSubWindow(m_child);
        else if (m_isAdded)
            TellKeeper(&FrameKeeper::FrameRaised);
        if (m_child && m_child->window()->isVisible() && !m_child->window()->isActiveWindow())
            m_child->window()->activateWindow();
    } else if (m_dialog && m_dialog->isVisible() && !m_dialog->isActiveWindow()) {
        m_dialog->raise();
        if (m_dialog)
            m_dialog->activateWindow();
    }
}

void WindowFrame::Activate() {
    BringToFront();
    m_notifier->Notify(&Observer::FrameActivated);
}

void WindowFrame::SetTitle(const QString& title) {
    if (m_widget)
        m_widget->setWindowTitle(QString(title).replace("[*]", "[*][*]") + "[*]");
    TellKeeper(&FrameKeeper::FrameChanged);
}

void WindowFrame::SetIcon(const QIcon& icon) {
    if (m_widget)
        m_widget->setWindowIcon(icon);
    TellKeeper(&FrameKeeper::FrameChanged);
}

void WindowFrame::SetModified(bool modified) {
    if (!m_widget || m_widget->isWindowModified() == modified)
        return;
    m_widget->setWindowModified(modified);
    TellKeeper(&FrameKeeper::FrameChanged);
}

void WindowFrame::SetState(FormState state) {
    if (!m_widget || m_holding != Holding::Free || State() == state)
        return;
    if (!m_child || !m_child->isVisible()) {
        m_widget->setWindowState(StatesOf(state));
        return;
    }
    switch (state) {
    case FormState::Maximized:
        m_child->showMaximized();
        break;
    case FormState::Minimized:
        m_child->showMinimized();
        break;
    case FormState::Normal:
        m_child->showNormal();
        break;
    }
}

FormState WindowFrame::State() const {
    if (m_widget && m_widget->isMinimized())
        return FormState::Minimized;
    return m_widget && m_widget->isMaximized() ? FormState::Maximized : FormState::Normal;
}

QPoint WindowFrame::Corner() const {
    return m_dialog && m_owner ? m_owner->frameGeometry().topLeft() : QPoint();
}

void WindowFrame::Place(const QRect& place) {
    if (m_widget && m_holding == Holding::Free && State() == FormState::Normal)
        m_widget->setGeometry(place.translated(Corner()));
}

QRect WindowFrame::PlaceNow() const {
    return m_widget ? m_widget->geometry().translated(-Corner()) : QRect();
}

void WindowFrame::SetMinimum(const QSize& size) {
    m_minimum = size;
    if (m_widget && m_holding == Holding::Free && m_widget->minimumSize() != m_widget->maximumSize())
        m_widget->setMinimumSize(size);
}

void WindowFrame::Fix(const QSize& size) {
    if (m_widget)
        m_widget->setFixedSize(size);
}

QRect WindowFrame::Room() const {
    if (m_child && m_area)
        return QRect(QPoint(), m_area->viewport()->size());
    const QScreen* screen = m_owner ? m_owner->screen() : nullptr;
    return screen ? screen->availableGeometry().translated(-Corner()) : QRect(0, 0, 1024, 768);
}

} // namespace corvane::desktop
