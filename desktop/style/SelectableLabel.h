// A label whose text users can select and copy.
#pragma once

#include <QLabel>

namespace corvane::desktop {

// Wraps its text, which is plain. Belongs to no widget yet.
[[nodiscard]] inline QLabel* NewSelectableLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace corvane::desktop
