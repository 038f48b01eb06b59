#include "desktop/service/UnsavedDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane::desktop {

UnsavedDialog::UnsavedDialog(std::vector<UnsavedGroup> groups, const std::vector<std::string>& jobs, QWidget* parent)
    : QDialog(parent), m_groups(std::move(groups)), m_tree(new QTreeWidget) {
    const bool onlyJobs = m_groups.empty();
    setWindowTitle(onlyJobs ? tr("Running Jobs") : tr("Unsaved Work"));
    auto* layout = new QVBoxLayout(this);
    auto* text = new QLabel(
        onlyJobs       ? tr("These jobs haven't finished. They will be cancelled.")
        : jobs.empty() ? tr("These changes haven't been saved. What you don't save now will be lost.")
                       : tr("These changes haven't been saved. What you don't save now will be lost, and jobs that "
                            "haven't finished will be cancelled."));
    text->setWordWrap(true);
    layout->addWidget(text);
    m_tree->setHeaderHidden(true);
    m_tree->setAccessibleName(windowTitle());
    m_tree->setTextElideMode(Qt::ElideMiddle);
    layout->addWidget(m_tree, 1);
    FillTree(jobs);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Discard | QDialogButtonBox::Cancel);
    m_save = buttons->button(QDialogButtonBox::Save);
    m_save->setText(onlyJobs ? tr("Cancel &Jobs and Quit") : tr("&Save Checked"));
    m_save->setDefault(true);
    m_save->setFocus();
    if (onlyJobs) {
        m_save->setIcon({}); // there is nothing to save
        buttons->button(QDialogButtonBox::Cancel)->setText(tr("&Don't Quit"));
    }
    buttons->button(QDialogButtonBox::Discard)->setText(tr("&Discard All"));
    buttons->button(QDialogButtonBox::Discard)->setVisible(!onlyJobs);
    layout->addWidget(buttons);
    connect(m_save, &QPushButton::clicked, this, [this] { Finish(ExitAnswer::What::Save); });
    connect(buttons->button(QDialogButtonBox::Discard), &QPushButton::clicked, this,
            [this] { Finish(ExitAnswer::What::Discard); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_tree, &QTreeWidget::itemChanged, this, [this] { m_save->setEnabled(!CheckedItems().empty()); });
    resize(460, 320);
}

void UnsavedDialog::FillTree(const std::vector<std::string>& jobs) {
    for (const UnsavedGroup& group : m_groups) {
        auto* groupItem = new QTreeWidgetItem(m_tree, {QString::fromStdString(group.name)});
        groupItem->setFlags(groupItem->flags() | Qt::ItemIsAutoTristate | Qt::ItemIsUserCheckable);
        for (const UnsavedItem& item : group.items) {
            auto* treeWidgetItem = new QTreeWidgetItem(groupItem, {QString::fromStdString(item.name)});
            treeWidgetItem->setToolTip(0, treeWidgetItem->text(0));
            treeWidgetItem->setCheckState(0, Qt::Checked);
        }
    }
    if (!jobs.empty()) {
        auto* group = new QTreeWidgetItem(m_tree, {tr("Running jobs")});
        for (const std::string& title : jobs) {
            auto* job = new QTreeWidgetItem(group, {QString::fromStdString(title)});
            job->setToolTip(0, job->text(0));
        }
    }
    m_tree->expandAll();
}

std::vector<UnsavedItem> UnsavedDialog::CheckedItems() const {
    std::vector<UnsavedItem> items;
    for (int groupIndex = 0; groupIndex < static_cast<int>(m_groups.size()); ++groupIndex) {
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

#include "moc_UnsavedDialog.cpp"
