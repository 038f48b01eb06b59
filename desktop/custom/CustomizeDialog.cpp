#include "desktop/custom/CustomizeDialog.h"

#include "desktop/style/DialogSize.h"
#include "desktop/translation/ShownText.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <set>

namespace corvane::desktop {

namespace {

constexpr int nNameRole = Qt::UserRole;

bool IsSeparator(const Tool& oTool) {
    return EqualText(oTool.Name(), "Separator");
}

QString InstanceCaption(const Tool& oInstance) {
    const QString sCaption = PlainCaption(oInstance);
    return sCaption.isEmpty() ? PlainCaption(oInstance.Master()) : sCaption;
}

} // namespace

CustomizeDialog::CustomizeDialog(PersonalBars& oBars, Ref<ActiveBar> oActiveBar, PickFunction fnPick, QWidget* pParent)
    : QDialog(pParent), m_oBars(oBars), m_oActiveBar(std::move(oActiveBar)), m_fnPick(std::move(fnPick)),
      m_pBands(new QTreeWidget), m_pEntries(new QListWidget), m_pAside(new QLabel) {
    setWindowTitle(tr("Customize Menus and Toolbars"));
    ResizeWithin(*this, {760, 520});
    m_pBands->setHeaderHidden(true);
    m_pBands->setAccessibleName(tr("Menus and toolbars"));
    m_pEntries->setAccessibleName(tr("Entries"));
    m_pAside->setWordWrap(true);
    m_pAside->setTextFormat(Qt::PlainText);
    auto* pSplitter = new QSplitter;
    pSplitter->addWidget(m_pBands);
    pSplitter->addWidget(m_pEntries);
    pSplitter->setStretchFactor(0, 2);
    pSplitter->setStretchFactor(1, 3);
    auto* pHint = new QLabel(tr("Unchecked entries are hidden. Toolbar buttons can be moved and added."));
    pHint->setWordWrap(true);
    auto* pGrid = new QGridLayout(this);
    pGrid->addWidget(pHint, 0, 0, 1, 2);
    pGrid->addWidget(pSplitter, 1, 0);
    pGrid->addWidget(NewButtons(), 1, 1);
    pGrid->addWidget(m_pAside, 2, 0);
    m_pForget = NewButton(tr("&Forget These"), [this] { ForgetAside(); });
    pGrid->addWidget(m_pForget, 2, 1, Qt::AlignTop);
    auto* pClose = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(pClose, &QDialogButtonBox::rejected, this, &QDialog::reject);
    pGrid->addWidget(pClose, 3, 0, 1, 2);
    pGrid->setColumnStretch(0, 1);
    pGrid->setRowStretch(1, 1);
    connect(m_pBands, &QTreeWidget::currentItemChanged, this, &CustomizeDialog::ShowBand);
    connect(m_pEntries, &QListWidget::currentRowChanged, this, &CustomizeDialog::ShowButtons);
    connect(m_pEntries, &QListWidget::itemChanged, this, &CustomizeDialog::Entry_Changed);
    FillBands();
}

QPushButton* CustomizeDialog::NewButton(const QString& sText, const std::function<void()>& fnClick) {
    auto* pButton = new QPushButton(sText);
    pButton->setAutoDefault(false);
    connect(pButton, &QPushButton::clicked, this, fnClick);
    return pButton;
}

QWidget* CustomizeDialog::NewButtons() {
    auto* pColumn = new QWidget;
    auto* pLayout = new QVBoxLayout(pColumn);
    pLayout->setContentsMargins(0, 0, 0, 0);
    m_pUp = NewButton(tr("Move &Up"), [this] { MoveCurrent(-1); });
    m_pDown = NewButton(tr("Move &Down"), [this] { MoveCurrent(1); });
    m_pAdd = NewButton(tr("&Add…"), [this] { m_fnPick(this, [this](const Ref<Tool>& oTool) { AddCommand(oTool); }); });
    m_pRemove = NewButton(tr("&Remove"), [this] {
        if (const auto oTool = ToolAt(m_pEntries->currentRow()))
            m_oBars.RemoveAdded(*CurrentBand(), *oTool);
        ShowBand();
    });
    m_pReset = NewButton(tr("R&eset This"), [this] {
        m_oBars.ResetBand(*CurrentBand());
        ShowBand();
    });
    auto* pResetAll = NewButton(tr("Reset A&ll…"), [this] {
        if (QMessageBox::question(this, windowTitle(),
                                  tr("Reset all menus and toolbars to the application's defaults?")) !=
            QMessageBox::Yes)
            return;
        m_oBars.ResetAllBands();
        ShowBand();
    });
    for (QPushButton* pButton : {m_pUp, m_pDown, m_pAdd, m_pRemove})
        pLayout->addWidget(pButton);
    pLayout->addStretch();
    pLayout->addWidget(m_pReset);
    pLayout->addWidget(pResetAll);
    return pColumn;
}

void CustomizeDialog::AddBand(QTreeWidgetItem* pGroup, const Ref<Band>& oBand, const QString& sCaption) {
    auto* pItem = new QTreeWidgetItem(pGroup, {sCaption});
    pItem->setData(0, nNameRole, QString::fromStdString(oBand->Name()));
}

void CustomizeDialog::FillBands() {
    auto* pToolbars = new QTreeWidgetItem(m_pBands, {tr("Toolbars")});
    auto* pMenus = new QTreeWidgetItem(m_pBands, {tr("Menus")});
    auto* pContexts = new QTreeWidgetItem(m_pBands, {tr("Context menus")});
    std::set<std::string> setSeen;
    const std::function<void(QTreeWidgetItem*, const Ref<Band>&)> fnMenus = [&](QTreeWidgetItem* pGroup,
                                                                                const Ref<Band>& oAbove) {
        for (const auto& oInstance : oAbove->Tools()->All()) {
            const auto oBand =
                oInstance->DropDownBand().empty() ? nullptr : m_oActiveBar->Bands()->Find(oInstance->DropDownBand());
            if (!oBand || !setSeen.insert(oBand->Name()).second)
                continue;
            AddBand(pGroup, oBand, InstanceCaption(*oInstance));
            fnMenus(pGroup->child(pGroup->childCount() - 1), oBand);
        }
    };
    for (const auto& oBand : m_oActiveBar->Bands()->All())
        if (oBand->Kind() == BandKind::Toolbar)
            AddBand(pToolbars, oBand, ShownCaption(*oBand));
        else if (oBand->Kind() == BandKind::MenuBar)
            fnMenus(pMenus, oBand);
        else if (oBand->Name().starts_with("Context.") && setSeen.insert(oBand->Name()).second) {
            AddBand(pContexts, oBand, QString::fromStdString(oBand->Name().substr(8)));
            fnMenus(pContexts->child(pContexts->childCount() - 1), oBand);
        }
    for (QTreeWidgetItem* pGroup : {pToolbars, pMenus, pContexts}) {
        pGroup->setFlags(Qt::ItemIsEnabled);
        pGroup->setHidden(pGroup->childCount() == 0);
        pGroup->setExpanded(true);
    }
    QTreeWidgetItem* pFirst = pToolbars->childCount() > 0 ? pToolbars->child(0) : pMenus->child(0);
    m_pBands->setCurrentItem(pFirst);
    ShowBand();
}

bool CustomizeDialog::SelectBand(const std::string& sBand) {
    for (QTreeWidgetItemIterator it(m_pBands); *it; ++it)
        if (EqualText((*it)->data(0, nNameRole).toString().toStdString(), sBand)) {
            m_pBands->setCurrentItem(*it);
            return true;
        }
    return false;
}

Ref<Band> CustomizeDialog::CurrentBand() const {
    const QTreeWidgetItem* pItem = m_pBands->currentItem();
    const QString sName = pItem ? pItem->data(0, nNameRole).toString() : QString();
    return sName.isEmpty() ? nullptr : m_oActiveBar->Bands()->Find(sName.toStdString());
}

Ref<Tool> CustomizeDialog::ToolAt(int nRow) const {
    const QListWidgetItem* pItem = m_pEntries->item(nRow);
    return pItem ? m_oActiveBar->Tools()->Find(pItem->data(nNameRole).toString().toStdString()) : nullptr;
}

void CustomizeDialog::ShowBand() {
    const int nRow = m_pEntries->currentRow();
    m_bFills = true;
    m_pEntries->clear();
    const Ref<Band> oBand = CurrentBand();
    if (oBand)
        for (const auto& oInstance : m_oBars.AllOf(*oBand)) {
            auto* pItem = new QListWidgetItem(m_pEntries);
            if (IsSeparator(*oInstance)) {
                pItem->setText("————");
                pItem->setData(Qt::AccessibleTextRole, tr("Separator"));
                pItem->setFlags(Qt::NoItemFlags);
                continue;
            }
            const bool bAdded = m_oBars.IsAdded(*oBand, *oInstance);
            pItem->setText(bAdded ? tr("%1 (added)").arg(InstanceCaption(*oInstance)) : InstanceCaption(*oInstance));
            pItem->setToolTip(QString::fromStdString(oInstance->Name()));
            pItem->setData(nNameRole, QString::fromStdString(oInstance->Name()));
            pItem->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
            pItem->setCheckState(m_oBars.IsHidden(*oBand, *oInstance) ? Qt::Unchecked : Qt::Checked);
        }
    m_bFills = false;
    m_pEntries->setCurrentRow(std::min(nRow, m_pEntries->count() - 1));
    QStringList aAside;
    for (const auto& oAside : m_oBars.PlacesAside())
        aAside.append(oAside.sText);
    m_pAside->setText(aAside.isEmpty() ? QString()
                                       : tr("Kept for entries that no longer exist:\n%1").arg(aAside.join('\n')));
    m_pAside->setVisible(!aAside.isEmpty());
    m_pForget->setVisible(!aAside.isEmpty());
    ShowButtons();
}

void CustomizeDialog::ShowButtons() {
    const Ref<Band> oBand = CurrentBand();
    const bool bToolbar = oBand && oBand->Kind() == BandKind::Toolbar;
    const auto oTool = ToolAt(m_pEntries->currentRow());
    m_pUp->setEnabled(bToolbar && oTool && m_pEntries->currentRow() > 0);
    m_pDown->setEnabled(bToolbar && oTool && m_pEntries->currentRow() < m_pEntries->count() - 1);
    m_pAdd->setEnabled(bToolbar);
    m_pRemove->setEnabled(bToolbar && oTool && m_oBars.IsAdded(*oBand, *oTool));
    m_pReset->setEnabled(oBand && m_oBars.HasChanges(*oBand));
}

void CustomizeDialog::Entry_Changed(QListWidgetItem* pItem) {
    if (m_bFills)
        return;
    const auto oTool = ToolAt(m_pEntries->row(pItem));
    if (oTool)
        m_oBars.SetHidden(*CurrentBand(), *oTool, pItem->checkState() == Qt::Unchecked);
    ShowButtons();
}

// Over the next entry, not over a separator alone.
void CustomizeDialog::MoveCurrent(int nStep) {
    const int nRow = m_pEntries->currentRow();
    const auto oTool = ToolAt(nRow);
    const Ref<Band> oBand = CurrentBand();
    if (!oTool || !oBand)
        return;
    int nBehind = nRow + nStep; // downwards the entry below, upwards the one above the one above
    int nPassed = nStep > 0 ? 0 : 1;
    for (; nBehind >= 0 && nBehind < m_pEntries->count(); nBehind += nStep)
        if (ToolAt(nBehind) && nPassed-- == 0)
            break;
    if (nBehind >= m_pEntries->count())
        return;
    const auto oBehind = ToolAt(nBehind);
    m_oBars.Move(*oBand, *oTool, oBehind.Get());
    ShowBand();
    SelectEntry(*oTool);
}

// It is chosen, to be moved where it should be; so is one that the toolbar has already.
void CustomizeDialog::AddCommand(const Ref<Tool>& oTool) {
    if (const Ref<Band> oBand = CurrentBand(); oBand && oBand->Kind() == BandKind::Toolbar)
        m_oBars.Add(*oBand, *oTool);
    ShowBand();
    SelectEntry(*oTool);
}

void CustomizeDialog::SelectEntry(const Tool& oTool) {
    for (int i = 0; i < m_pEntries->count(); ++i)
        if (const auto oEntry = ToolAt(i); oEntry && &oEntry->Master() == &oTool.Master())
            m_pEntries->setCurrentRow(i);
}

void CustomizeDialog::ForgetAside() {
    for (auto aAside = m_oBars.PlacesAside(); !aAside.empty(); aAside = m_oBars.PlacesAside())
        aAside.front().fnForget();
    ShowBand();
}

} // namespace corvane::desktop
