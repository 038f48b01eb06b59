#include "@Name@Page.h"

#include <QLabel>

QWidget* @Name@Page::MakeWidget(QWidget* parent) {
    const auto item = About(); // nothing when the window was opened without one
    auto* label = new QLabel(item ? QString::fromStdString(item->Name()) : QString(), parent);
    label->setAlignment(Qt::AlignCenter);
    return label;
}
