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

Qt::WindowStates StatesOf(FormState state) {
    if (state == FormState::Maximized)
        return Qt::WindowMaximized;
    return state == FormState::Minimized ? Qt::WindowMinimized : Qt::WindowNoState;
}

} // namespace

WindowFrame::WindowFrame(QMdiArea* area, QWidget* owner, QWidget* body, bool withStateButtons, Observer& observer)
    : m_notifier(std::make_shared<WindowFrame::Notifier>(WindowFrame::Notifier{&observer})), m_area(area),
      m_owner(owner) {
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
        m_widget = m_child;
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

void WindowFrame::Close() {
    m_notifier->observer = nullptr;
    QWidget* const widget = m_widget;
    m_widget = nullptr;
    m_child = nullptr;
    m_dialog = nullptr;
    if (!widget)
        return;
    widget->deleteLater();
    widget->hide();
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
}

void WindowFrame::BringToFront() {
    if (m_child && m_area) {
        if (m_isAdded && m_area->activeSubWindow() != m_child)
            m_area->setActiveSubWindow(m_child);
        if (m_child && m_child->window()->isVisible() && !m_child->window()->isActiveWindow())
            m_child->window()->activateWindow();
    } else if (m_dialog && m_dialog->isVisible() && !m_dialog->isActiveWindow()) {
        m_dialog->raise();
        if (m_dialog)
            m_dialog->activateWindow();
    }
}

void WindowFrame::SetTitle(const QString& title) {
    if (m_widget)
        m_widget->setWindowTitle(QString(title).replace("[*]", "[*][*]") + "[*]");
}

void WindowFrame::SetIcon(const QIcon& icon) {
    if (m_widget)
        m_widget->setWindowIcon(icon);
}

void WindowFrame::SetModified(bool modified) {
    if (m_widget)
        m_widget->setWindowModified(modified);
}

void WindowFrame::SetState(FormState state) {
    if (!m_widget || State() == state)
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
    if (m_widget && State() == FormState::Normal)
        m_widget->setGeometry(place.translated(Corner()));
}

QRect WindowFrame::PlaceNow() const {
    return m_widget ? m_widget->geometry().translated(-Corner()) : QRect();
}

void WindowFrame::SetMinimum(const QSize& size) {
    if (m_widget && m_widget->minimumSize() != m_widget->maximumSize())
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
