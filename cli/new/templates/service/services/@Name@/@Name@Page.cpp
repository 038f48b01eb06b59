#include "@Name@Page.h"

#include "@Name@Items.h"

#include <QLabel>

using namespace corvane;

QWidget* @Name@Page::NewWidget(QWidget* parent) {
    const auto item = m_base->BusinessContext().TryAs<@Name@Item>();
    auto* label = new QLabel(item ? QString::fromStdString(item->Name()) : QString(), parent);
    label->setAlignment(Qt::AlignCenter);
    return label;
}
