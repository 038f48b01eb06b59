#include "desktop/custom/ShortcutsDialog.h"

#include "desktop/style/ClearButton.h"
#include "desktop/style/DialogSize.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

enum Column { CommandColumn, KeysColumn, OwnerColumn, NoteColumn };
constexpr int nIndexRole = Qt::UserRole; // of a command among all
constexpr int nWindowKeyRole = Qt::UserRole + 2;
constexpr int nAsideRole = Qt::UserRole + 1; // of a change whose entry has gone

QString FullName(const CommandEntry& oCommand) {
    return oCommand.sPath.isEmpty() ? oCommand.sCaption : oCommand.sPath + " › " + oCommand.sCaption;
}

} // namespace

ShortcutsDialog::ShortcutsDialog(PersonalBars& oBars, const ActiveBar& oActiveBar, QWidget* pParent)
    : QDialog(pParent), m_oBars(oBars), m_oCommands(oActiveBar), m_aWindowKeys(WindowKeys(oActiveBar)),
      m_pFilter(new QLineEdit), m_pList(new QTreeWidget), m_pConflict(new QLabel) {
    setWindowTitle(tr("Keyboard Shortcuts"));
    ResizeWithin(*this, {940, 580});
    m_pFilter->setPlaceholderText(tr("Search for a command, shortcut or owner"));
    m_pFilter->setAccessibleName(tr("Search"));
    m_pFilter->installEventFilter(this);
    AddClearButton(*m_pFilter);
    m_pList->setHeaderLabels({tr("Command"), tr("Shortcut"), tr("Owner"), tr("Note")});
    m_pList->setRootIsDecorated(false);
    m_pList->setUniformRowHeights(true);
    m_pList->setAllColumnsShowFocus(true);
    m_pList->setAccessibleName(tr("Commands and their shortcuts"));
    m_pList->header()->setSectionResizeMode(QHeaderView::Interactive);
    m_pConflict->setWordWrap(true);
    m_pConflict->setTextFormat(Qt::PlainText);
    m_pConflict->setAccessibleName(tr("Conflict"));
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(m_pFilter);
    pLayout->addWidget(m_pList, 1);
    pLayout->addWidget(NewEditRow());
    pLayout->addWidget(m_pConflict);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* pResetAll = pButtons->addButton(tr("Reset &All…"), QDialogButtonBox::ResetRole);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(pResetAll, &QPushButton::clicked, this, [this] {
        if (QMessageBox::question(this, windowTitle(), tr("Reset all shortcuts to the application's defaults?")) !=
            QMessageBox::Yes)
            return;
        m_oBars.ResetAllKeys();
        ShowAll();
    });
    pLayout->addWidget(pButtons);
    connect(m_pFilter, &QLineEdit::textChanged, this, &ShortcutsDialog::Filter);
    connect(m_pList, &QTreeWidget::currentItemChanged, this, &ShortcutsDialog::ShowCurrent);
    for (const CommandEntry& oCommand : m_oCommands.All())
        NewRow(oCommand);
    AddWindowKeys();
    ShowAll();
    m_pList->setColumnWidth(CommandColumn, 250);
    m_pList->setColumnWidth(KeysColumn, 110);
    m_pList->setColumnWidth(OwnerColumn, 260);
    m_pList->setCurrentItem(m_pList->topLevelItem(0));
}

ShortcutsDialog::~ShortcutsDialog() = default;

QWidget* ShortcutsDialog::NewEditRow() {
    auto* pRow = new QWidget;
    auto* pLayout = new QHBoxLayout(pRow);
    pLayout->setContentsMargins(0, 0, 0, 0);
    auto* pLabel = new QLabel(tr("&New shortcut:"));
    m_pKeys = new QKeySequenceEdit;
    m_pKeys->setAccessibleName(tr("New shortcut"));
    if (auto* pField = m_pKeys->findChild<QLineEdit*>()) // it is what has the focus
        pField->setAccessibleName(tr("New shortcut"));
    pLabel->setBuddy(m_pKeys);
    m_pAssign = new QPushButton(tr("A&ssign"));
    m_pNone = new QPushButton(tr("No Shor&tcut"));
    m_pReset = new QPushButton(tr("&Reset"));
    m_pForget = new QPushButton(tr("&Forget"));
    for (QPushButton* pButton : {m_pAssign, m_pNone, m_pReset, m_pForget})
        pButton->setAutoDefault(false);
    pLayout->addWidget(pLabel);
    pLayout->addWidget(m_pKeys, 1);
    for (QPushButton* pButton : {m_pAssign, m_pNone, m_pReset, m_pForget})
        pLayout->addWidget(pButton);
    // The field tells of keys only when no others have followed for a second.
    m_pKeys->installEventFilter(this);
    connect(m_pKeys, &QKeySequenceEdit::keySequenceChanged, this, &ShortcutsDialog::ShowConflict);
    connect(m_pAssign, &QPushButton::clicked, this, &ShortcutsDialog::Assign);
    connect(m_pNone, &QPushButton::clicked, this, [this] {
        if (const CommandEntry* pCommand = Current())
            m_oBars.SetKeys(*pCommand->oTool, {});
        ShowAll();
    });
    connect(m_pReset, &QPushButton::clicked, this, [this] {
        if (const CommandEntry* pCommand = Current())
            m_oBars.ResetKeys(*pCommand->oTool);
        ShowAll();
    });
    connect(m_pForget, &QPushButton::clicked, this, [this] {
        const int iAside = m_pList->currentItem()->data(0, nAsideRole).toInt();
        m_oBars.KeysAside().at(static_cast<std::size_t>(iAside)).fnForget();
        ShowAll();
    });
    return pRow;
}

QTreeWidgetItem* ShortcutsDialog::NewRow(const CommandEntry& oCommand) {
    auto* pItem = new QTreeWidgetItem(m_pList, {FullName(oCommand), QString(), oCommand.oOwner.Text()});
    pItem->setData(0, nIndexRole, static_cast<int>(&oCommand - m_oCommands.All().data()));
    pItem->setToolTip(CommandColumn, QString::fromStdString(oCommand.oTool->Name()));
    return pItem;
}

void ShortcutsDialog::AddWindowKeys() {
    for (const WindowKey& oKey : m_aWindowKeys) {
        auto* pItem = new QTreeWidgetItem(
            m_pList, {oKey.sWhat, oKey.oKeys.toString(QKeySequence::NativeText), oKey.sOwner,
                      oKey.bComesFirst ? tr("can't be changed") : tr("can't be changed; commands come first")});
        pItem->setData(0, nWindowKeyRole, true);
    }
}

const WindowKey* ShortcutsDialog::WindowKeyOf(const QKeySequence& oKeys) const {
    const WindowKey* pFound = nullptr;
    for (const WindowKey& oKey : m_aWindowKeys)
        if (oKey.oKeys == oKeys && (!pFound || (oKey.bComesFirst && !pFound->bComesFirst)))
            pFound = &oKey;
    return pFound;
}

void ShortcutsDialog::ShowRow(QTreeWidgetItem* pItem, const CommandEntry& oCommand) {
    const bool bOwn = m_oBars.HasOwnKeys(*oCommand.oTool);
    QStringList aNotes;
    for (const QKeySequence& oKeys : m_oBars.KeysOf(*oCommand.oTool))
        if (const QStringList aOthers = OthersOf(oKeys, oCommand); !aOthers.isEmpty())
            aNotes.append(tr("conflict: %1").arg(aOthers.join(", ")));
    bool bConflict = !aNotes.isEmpty();
    for (const QKeySequence& oKeys : m_oBars.KeysOf(*oCommand.oTool))
        if (const WindowKey* pKey = WindowKeyOf(oKeys)) {
            bConflict |= pKey->bComesFirst;
            aNotes.append(pKey->bComesFirst ? tr("conflict: %1 (%2)").arg(pKey->sWhat, pKey->sOwner)
                                            : tr("instead of %1 (%2)").arg(pKey->sWhat, pKey->sOwner));
        }
    if (bOwn) {
        const QString sBefore = BarChanges::None().KeysText(*oCommand.oTool);
        aNotes.prepend(sBefore.isEmpty() ? tr("changed") : tr("changed; was %1").arg(sBefore));
    }
    pItem->setText(KeysColumn, m_oBars.KeysText(*oCommand.oTool));
    pItem->setText(NoteColumn, aNotes.join("; "));
    pItem->setToolTip(NoteColumn, aNotes.join("\n"));
    pItem->setIcon(NoteColumn, bConflict ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
    QFont oFont = m_pList->font();
    oFont.setBold(bOwn);
    pItem->setFont(KeysColumn, oFont);
}

// One change may make conflicts anywhere or end them.
void ShortcutsDialog::ShowAll() {
    m_mapByKeys.clear();
    for (const CommandEntry& oCommand : m_oCommands.All())
        for (const QKeySequence& oKeys : m_oBars.KeysOf(*oCommand.oTool))
            m_mapByKeys[oKeys[0].toCombined()].append(&oCommand);
    ShowAside();
    for (int i = 0; i < m_pList->topLevelItemCount(); ++i)
        if (QTreeWidgetItem* pItem = m_pList->topLevelItem(i); pItem->data(0, nIndexRole).isValid())
            ShowRow(pItem, m_oCommands.All()[static_cast<std::size_t>(pItem->data(0, nIndexRole).toInt())]);
    ShowCurrent();
}

void ShortcutsDialog::ShowAside() {
    for (int i = m_pList->topLevelItemCount(); i-- > 0;)
        if (m_pList->topLevelItem(i)->data(0, nAsideRole).isValid())
            delete m_pList->takeTopLevelItem(i);
    int iAside = 0;
    for (const auto& oAside : m_oBars.KeysAside()) {
        auto* pItem = new QTreeWidgetItem(m_pList, {oAside.sText, QString(), QString(), tr("no longer exists; kept")});
        pItem->setData(0, nAsideRole, iAside++);
    }
}

const CommandEntry* ShortcutsDialog::Current() const {
    const QTreeWidgetItem* pItem = m_pList->currentItem();
    if (!pItem || !pItem->data(0, nIndexRole).isValid())
        return nullptr;
    return &m_oCommands.All()[static_cast<std::size_t>(pItem->data(0, nIndexRole).toInt())];
}

bool ShortcutsDialog::Select(const Tool& oTool) {
    const CommandEntry* pCommand = m_oCommands.Find(oTool);
    for (int i = 0; pCommand && i < m_pList->topLevelItemCount(); ++i) {
        m_pList->setCurrentItem(m_pList->topLevelItem(i));
        if (Current() == pCommand)
            return true;
    }
    return false;
}

QStringList ShortcutsDialog::OthersOf(const QKeySequence& oKeys, const CommandEntry& oCommand) const {
    QStringList aOthers;
    for (const CommandEntry* pOther : m_mapByKeys.value(oKeys[0].toCombined()))
        if (pOther != &oCommand)
            aOthers.append(QString("%1 (%2)").arg(FullName(*pOther), pOther->oOwner.Text()));
    return aOthers;
}

void ShortcutsDialog::ShowCurrent() {
    const CommandEntry* pCommand = Current();
    m_pKeys->clear();
    m_pKeys->setEnabled(pCommand);
    m_pNone->setEnabled(pCommand && !m_oBars.KeysOf(*pCommand->oTool).isEmpty());
    m_pReset->setEnabled(pCommand && m_oBars.HasOwnKeys(*pCommand->oTool));
    m_pForget->setVisible(m_pList->currentItem() && m_pList->currentItem()->data(0, nAsideRole).isValid());
    ShowConflict();
}

bool ShortcutsDialog::eventFilter(QObject* pWatched, QEvent* pEvent) {
    // The arrows go from the search into the list.
    if (pWatched == m_pFilter && pEvent->type() == QEvent::KeyPress)
        if (const int nKey = static_cast<QKeyEvent*>(pEvent)->key(); nKey == Qt::Key_Down || nKey == Qt::Key_Up) {
            QCoreApplication::sendEvent(m_pList, pEvent);
            return true;
        }
    // Esc alone leads out of the field, as out of every other; to be assigned it needs a modifier.
    const bool bKey = pEvent->type() == QEvent::KeyPress || pEvent->type() == QEvent::ShortcutOverride;
    if (pWatched == m_pKeys && bKey &&
        static_cast<QKeyEvent*>(pEvent)->keyCombination() == QKeyCombination(Qt::Key_Escape)) {
        if (pEvent->type() == QEvent::KeyPress)
            LeaveKeys();
        return true;
    }
    if (pWatched == m_pKeys && pEvent->type() == QEvent::KeyPress)
        QMetaObject::invokeMethod(this, &ShortcutsDialog::ShowConflict, Qt::QueuedConnection);
    return QDialog::eventFilter(pWatched, pEvent);
}

void ShortcutsDialog::LeaveKeys() {
    if (m_pKeys->keySequence().isEmpty())
        reject();
    else
        ShowCurrent();
}

// A command has keys of one stroke; of several the latest counts.
QKeySequence ShortcutsDialog::Typed() const {
    const QKeySequence oKeys = m_pKeys->keySequence();
    return oKeys.isEmpty() ? oKeys : QKeySequence(oKeys[static_cast<uint>(oKeys.count() - 1)]);
}

void ShortcutsDialog::ShowConflict() {
    const WindowKey* pKey = WindowKeyOf(Typed());
    m_pAssign->setEnabled(Current() && !Typed().isEmpty() && !(pKey && pKey->bComesFirst));
    m_pConflict->setText(Conflict());
}

QString ShortcutsDialog::Conflict() const {
    const CommandEntry* pCommand = Current();
    if (!pCommand)
        return {};
    QStringList aTexts;
    const QKeySequence oTyped = Typed();
    const QList<QKeySequence> aKeys = oTyped.isEmpty() ? m_oBars.KeysOf(*pCommand->oTool) : QList<QKeySequence>{oTyped};
    for (const QKeySequence& oKeys : aKeys) {
        const QString sKeys = oKeys.toString(QKeySequence::NativeText);
        if (const WindowKey* pKey = WindowKeyOf(oKeys))
            aTexts.append(pKey->bComesFirst
                              ? tr("%1 is reserved for the window: %2. It can't be assigned to a command.")
                                    .arg(sKeys, pKey->sWhat)
                              : tr("%1 is also used by %2: %3. The command takes precedence.")
                                    .arg(sKeys, pKey->sOwner, pKey->sWhat));
        if (const QStringList aOthers = OthersOf(oKeys, *pCommand); !aOthers.isEmpty())
            aTexts.append(tr("%1 is also the shortcut of %2. Of the available commands, the one that you changed takes "
                             "precedence, otherwise the first.")
                              .arg(sKeys, aOthers.join(", ")));
    }
    return aTexts.join("\n");
}

void ShortcutsDialog::Assign() {
    const CommandEntry* pCommand = Current();
    if (!pCommand || !m_pAssign->isEnabled())
        return;
    m_oBars.SetKeys(*pCommand->oTool, {Typed()});
    ShowAll();
}

void ShortcutsDialog::Filter(const QString& sText) {
    for (int i = 0; i < m_pList->topLevelItemCount(); ++i) {
        QTreeWidgetItem* pItem = m_pList->topLevelItem(i);
        bool bShown = sText.isEmpty();
        for (int iColumn = 0; iColumn < m_pList->columnCount(); ++iColumn)
            bShown = bShown || pItem->text(iColumn).contains(sText, Qt::CaseInsensitive);
        pItem->setHidden(!bShown);
    }
    // Keys go to the current row: to one that is seen, or to none.
    if (const QTreeWidgetItem* pCurrent = m_pList->currentItem(); pCurrent && !pCurrent->isHidden())
        return;
    QTreeWidgetItem* pFirst = nullptr;
    for (int i = m_pList->topLevelItemCount(); i-- > 0;)
        if (!m_pList->topLevelItem(i)->isHidden())
            pFirst = m_pList->topLevelItem(i);
    m_pList->setCurrentItem(pFirst);
}

} // namespace corvane::desktop
