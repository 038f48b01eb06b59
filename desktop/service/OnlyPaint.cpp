#include "desktop/service/OnlyPaint.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <algorithm>

namespace corvane::desktop {

OnlyPaint::OnlyPaint(std::vector<QPushButton*> buttons) : m_buttons(std::move(buttons)) {
    QCoreApplication::instance()->installEventFilter(this);
}

OnlyPaint::~OnlyPaint() {
    QCoreApplication::instance()->removeEventFilter(this);
}

bool OnlyPaint::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && watched->isWindowType() &&
            m_buttons.front()->isVisible()) {
            m_buttons.front()->click();
            return true;
        }
        return !IsForButton(watched);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyRelease:
        return !IsForButton(watched);
    case QEvent::Shortcut:
        if (QPushButton* button = ButtonOf(static_cast<QShortcutEvent*>(event)->key()))
            button->click();
        return true;
    case QEvent::Timer:
    case QEvent::SockAct:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::ShortcutOverride:
    case QEvent::Close:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::InputMethod:
        event->ignore();
        return true;
    default:
        return false;
    }
}

// Whose underlined letter it is, also where a menu has the same one and the event is sent there.
QPushButton* OnlyPaint::ButtonOf(const QKeySequence& pressed) const {
    const auto it = std::find_if(m_buttons.begin(), m_buttons.end(), [&](const QPushButton* button) {
        return button->isVisible() && pressed == QKeySequence::mnemonic(button->text());
    });
    return it == m_buttons.end() ? nullptr : *it;
}

// Input comes to the window first, which hands it to the widget.
bool OnlyPaint::IsForButton(const QObject* watched) const {
    return std::any_of(m_buttons.begin(), m_buttons.end(), [&](const QPushButton* button) {
        return watched == button || (watched->isWindowType() && button->isVisible());
    });
}

} // namespace corvane::desktop
