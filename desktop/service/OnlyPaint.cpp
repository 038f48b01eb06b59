#include "desktop/service/OnlyPaint.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
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
        if (QPushButton* button = watched->isWindowType() ? ButtonOf(*static_cast<QKeyEvent*>(event)) : nullptr) {
            button->click();
            return true;
        }
        return !IsForButton(watched);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyRelease:
        return !IsForButton(watched);
    case QEvent::Timer:
    case QEvent::SockAct:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::Shortcut:
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

// The letters that are underlined on buttons work without their shortcuts, which would reach everything else, too.
QPushButton* OnlyPaint::ButtonOf(const QKeyEvent& event) const {
    const QKeySequence pressed(event.keyCombination());
    for (QPushButton* button : m_buttons)
        if (button->isVisible() && ((event.key() == Qt::Key_Escape && button == m_buttons.front()) ||
                                    pressed == QKeySequence::mnemonic(button->text())))
            return button;
    return nullptr;
}

// Input comes to the window first, which hands it to the widget.
bool OnlyPaint::IsForButton(const QObject* watched) const {
    return std::any_of(m_buttons.begin(), m_buttons.end(), [&](const QPushButton* button) {
        return watched == button || (watched->isWindowType() && button->isVisible());
    });
}

} // namespace corvane::desktop
