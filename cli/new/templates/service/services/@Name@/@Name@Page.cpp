#include "@Name@Page.h"

#include "@Name@Items.h"

#include <QLabel>

using namespace corvane;

QWidget* @Name@Page::NewWidget(QWidget* pParent) {
    const auto oItem = m_oBase->BusinessContext().TryAs<@Name@Item>();
    auto* pLabel = new QLabel(oItem ? QString::fromStdString(oItem->Name()) : QString(), pParent);
    pLabel->setAlignment(Qt::AlignCenter);
    return pLabel;
}
