#include "desktop/service/UnsavedDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane::desktop {

UnsavedDialog::UnsavedDialog(std::vector<UnsavedGroup> aGroups, QWidget* pParent)
    : QDialog(pParent), m_aGroups(std::move(aGroups)), m_pTree(new QTreeWidget) {
    setWindowTitle(tr("Unsaved Work"));
    auto* pLayout = new QVBoxLayout(this);
    auto* pText = new QLabel(tr("These changes haven't been saved. What you don't save now will be lost."));
    pText->setWordWrap(true);
    pLayout->addWidget(pText);
    m_pTree->setHeaderHidden(true);
    m_pTree->setAccessibleName(tr("Unsaved work"));
    m_pTree->setTextElideMode(Qt::ElideMiddle);
    pLayout->addWidget(m_pTree, 1);
    FillTree();
    auto* pButtons =
        new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Discard | QDialogButtonBox::Cancel);
    m_pSave = pButtons->button(QDialogButtonBox::Save);
    m_pSave->setText(tr("&Save Checked"));
    m_pSave->setDefault(true);
    m_pSave->setFocus();
    pButtons->button(QDialogButtonBox::Discard)->setText(tr("&Discard All"));
    pLayout->addWidget(pButtons);
    connect(m_pSave, &QPushButton::clicked, this, [this] { Finish(ExitAnswer::What::Save); });
    connect(pButtons->button(QDialogButtonBox::Discard), &QPushButton::clicked, this,
            [this] { Finish(ExitAnswer::What::Discard); });
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_pTree, &QTreeWidget::itemChanged, this, [this] { m_pSave->setEnabled(!CheckedItems().empty()); });
    resize(460, 320);
}

void UnsavedDialog::FillTree() {
    for (const UnsavedGroup& oGroup : m_aGroups) {
        auto* pGroup = new QTreeWidgetItem(m_pTree, {QString::fromStdString(oGroup.sName)});
        pGroup->setFlags(pGroup->flags() | Qt::ItemIsAutoTristate | Qt::ItemIsUserCheckable);
        for (const UnsavedItem& oItem : oGroup.aItems) {
            auto* pItem = new QTreeWidgetItem(pGroup, {QString::fromStdString(oItem.sName)});
            pItem->setToolTip(0, pItem->text(0));
            pItem->setCheckState(0, Qt::Checked);
        }
    }
    m_pTree->expandAll();
}

std::vector<UnsavedItem> UnsavedDialog::CheckedItems() const {
    std::vector<UnsavedItem> aItems;
    for (int iGroup = 0; iGroup < m_pTree->topLevelItemCount(); ++iGroup) {
        const QTreeWidgetItem* pGroup = m_pTree->topLevelItem(iGroup);
        for (int iItem = 0; iItem < pGroup->childCount(); ++iItem)
            if (pGroup->child(iItem)->checkState(0) == Qt::Checked)
                aItems.push_back(m_aGroups[static_cast<std::size_t>(iGroup)].aItems[static_cast<std::size_t>(iItem)]);
    }
    return aItems;
}

void UnsavedDialog::Finish(ExitAnswer::What eWhat) {
    m_oAnswer.eWhat = eWhat;
    if (eWhat == ExitAnswer::What::Save)
        m_oAnswer.aItems = CheckedItems();
    accept();
}

} // namespace corvane::desktop
