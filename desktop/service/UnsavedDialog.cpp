#include "desktop/service/UnsavedDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane::desktop {

UnsavedDialog::UnsavedDialog(std::vector<UnsavedGroup> groups, QWidget* parent)
    : QDialog(parent), m_groups(std::move(groups)), m_tree(new QTreeWidget) {
    setWindowTitle(tr("Unsaved Work"));
    auto* layout = new QVBoxLayout(this);
    auto* text = new QLabel(tr("These changes haven't been saved. What you don't save now will be lost."));
    text->setWordWrap(true);
    layout->addWidget(text);
    m_tree->setHeaderHidden(true);
    m_tree->setAccessibleName(tr("Unsaved work"));
    m_tree->setTextElideMode(Qt::ElideMiddle);
    layout->addWidget(m_tree, 1);
    FillTree();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Discard | QDialogButtonBox::Cancel);
    m_save = buttons->button(QDialogButtonBox::Save);
    m_save->setText(tr("&Save Checked"));
    m_save->setDefault(true);
    m_save->setFocus();
    buttons->button(QDialogButtonBox::Discard)->setText(tr("&Discard All"));
    layout->addWidget(buttons);
    connect(m_save, &QPushButton::clicked, this, [this] { Finish(ExitAnswer::What::Save); });
    connect(buttons->button(QDialogButtonBox::Discard), &QPushButton::clicked, this,
            [this] { Finish(ExitAnswer::What::Discard); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_tree, &QTreeWidget::itemChanged, this, [this] { m_save->setEnabled(!CheckedItems().empty()); });
    resize(460, 320);
}

void UnsavedDialog::FillTree() {
    for (const UnsavedGroup& group : m_groups) {
        auto* groupItem = new QTreeWidgetItem(m_tree, {QString::fromStdString(group.name)});
        groupItem->setFlags(groupItem->flags() | Qt::ItemIsAutoTristate | Qt::ItemIsUserCheckable);
        for (const UnsavedItem& item : group.items) {
            auto* treeWidgetItem = new QTreeWidgetItem(groupItem, {QString::fromStdString(item.name)});
            treeWidgetItem->setToolTip(0, treeWidgetItem->text(0));
            treeWidgetItem->setCheckState(0, Qt::Checked);
        }
    }
    m_tree->expandAll();
}

std::vector<UnsavedItem> UnsavedDialog::CheckedItems() const {
    std::vector<UnsavedItem> items;
    for (int groupIndex = 0; groupIndex < m_tree->topLevelItemCount(); ++groupIndex) {
        const QTreeWidgetItem* group = m_tree->topLevelItem(groupIndex);
        for (int item = 0; item < group->childCount(); ++item)
            if (group->child(item)->checkState(0) == Qt::Checked)
                items.push_back(m_groups[static_cast<std::size_t>(groupIndex)].items[static_cast<std::size_t>(item)]);
    }
    return items;
}

void UnsavedDialog::Finish(ExitAnswer::What what) {
    m_answer.what = what;
    if (what == ExitAnswer::What::Save)
        m_answer.items = CheckedItems();
    accept();
}

} // namespace corvane::desktop
