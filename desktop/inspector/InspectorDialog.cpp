#include "desktop/inspector/InspectorDialog.h"

#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/log/LogView.h"
#include "desktop/style/DialogSize.h"
#include "desktop/translation/ShownText.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QSet>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

constexpr int nRefreshMilliseconds = 300;
constexpr int nKeyRole = Qt::UserRole;

QString Text(const std::string& sText) {
    return QString::fromStdString(sText);
}

QString StateOf(const Tool& oTool) {
    QStringList aStates;
    if (!oTool.Visible())
        aStates.append(InspectorDialog::tr("hidden"));
    if (!oTool.Enabled())
        aStates.append(InspectorDialog::tr("disabled"));
    if (oTool.Checked())
        aStates.append(InspectorDialog::tr("checked"));
    return aStates.join(", ");
}

QString KeyOf(const Tool& oInstance) {
    const Band* pBand = oInstance.OwningBand();
    return QString("tool %1 in %2").arg(Text(oInstance.Name()).toLower(), pBand ? Text(pBand->Name()).toLower() : "");
}

QString KeyOfFirst(const Tool& oMaster) {
    for (const Tool* pInstance : oMaster.Instances())
        if (pInstance->OwningBand())
            return KeyOf(*pInstance);
    return {};
}

QString KeyOf(const Node& oNode) {
    const Node* pRoot = &oNode;
    while (pRoot->Parent())
        pRoot = pRoot->Parent();
    return QString("node %1 in %2").arg(Text(oNode.Key()).toLower(), Text(pRoot->Key()).toLower());
}

} // namespace

InspectorDialog::InspectorDialog(Ref<ActiveBar> oActiveBar, Ref<PanelForm> frmPanel, const PersonalBars& oBars,
                                 const ExplorerItemNotes& oNotes, const QString& sLogFile, QWidget* pParent)
    : QDialog(pParent), m_oActiveBar(std::move(oActiveBar)), m_frmPanel(std::move(frmPanel)), m_oBars(oBars),
      m_oNotes(oNotes), m_pThings(new QTreeWidget), m_pFacts(new QPlainTextEdit) {
    setWindowTitle(tr("Inspector"));
    ResizeWithin(*this, {900, 600});
    m_pThings->setHeaderLabels({tr("Object"), tr("State")});
    m_pThings->setUniformRowHeights(true);
    m_pThings->setAccessibleName(tr("Objects of the application"));
    m_pThings->setColumnWidth(0, 280);
    m_pFacts->setReadOnly(true);
    m_pFacts->setAccessibleName(tr("Details"));
    m_pFacts->setTabChangesFocus(true);
    auto* pSplitter = new QSplitter;
    pSplitter->addWidget(m_pThings);
    pSplitter->addWidget(m_pFacts);
    pSplitter->setSizes({400, 480});
    auto* pTabs = new QTabWidget;
    pTabs->setAccessibleName(windowTitle());
    pTabs->addTab(pSplitter, tr("&Objects"));
    pTabs->addTab(new LogView(sLogFile), tr("&Log"));
    auto* pHint = new QLabel(tr("Ctrl+Alt+click an entry of a menu, a toolbar or the explorer to show it here."));
    pHint->setWordWrap(true);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(pTabs, 1);
    pLayout->addWidget(pHint);
    connect(m_pThings, &QTreeWidget::currentItemChanged, this, &InspectorDialog::ShowFacts);
    m_pThings->installEventFilter(this);
    m_oRefresh.setSingleShot(true);
    m_oRefresh.setInterval(nRefreshMilliseconds);
    connect(&m_oRefresh, &QTimer::timeout, this, &InspectorDialog::Fill);
    m_aSubscriptions.push_back(m_oActiveBar->Changed.Subscribe([this](const BarChange&) { Schedule(); }));
    for (const auto& oControl : m_frmPanel->Controls())
        if (const auto oTree = oControl.TryAs<TreeView>())
            m_aSubscriptions.push_back(oTree->Changed.Subscribe([this](const TreeChange& oChange) {
                // What goes is let go of at once.
                if (oChange.eWhat == TreeChange::What::BeforeRemove || oChange.eWhat == TreeChange::What::BeforeClear)
                    m_mapFacts.clear();
                Schedule();
            }));
    Fill();
}

InspectorDialog::~InspectorDialog() = default;

void InspectorDialog::showEvent(QShowEvent* pEvent) {
    QDialog::showEvent(pEvent);
    m_pThings->setFocus();
}

bool InspectorDialog::eventFilter(QObject* pWatched, QEvent* pEvent) {
    if (pWatched == m_pThings && pEvent->type() == QEvent::Show && m_bStale)
        Fill();
    return QDialog::eventFilter(pWatched, pEvent);
}

void InspectorDialog::Schedule() {
    m_bStale = true;
    m_pExplainer.reset();
    if (m_pThings->isVisible() && !m_oRefresh.isActive())
        m_oRefresh.start();
}

const Explainer& InspectorDialog::Explained() const {
    if (!m_pExplainer)
        m_pExplainer = std::make_unique<Explainer>(m_oActiveBar, m_oPlaces, m_oBars, m_oNotes);
    return *m_pExplainer;
}

void InspectorDialog::Fill() {
    m_oRefresh.stop();
    m_bStale = false;
    m_pExplainer.reset();
    const bool bFirst = m_mapItems.isEmpty();
    std::vector<Thing> aGroups{Services()};
    AddBands(aGroups);
    Thing oExplorer{tr("Explorer"), {}, "group explorer", {}, {}};
    for (const auto& oControl : m_frmPanel->Controls())
        if (const auto oTree = oControl.TryAs<TreeView>())
            for (Thing& oThing : ThingsOf(*oTree, oTree->GetNodes()->Roots()))
                oExplorer.aBelow.push_back(std::move(oThing));
    aGroups.push_back(std::move(oExplorer));
    aGroups.push_back(Windows());
    const QTreeWidgetItem* pBefore = m_pThings->currentItem();
    const QString sCurrent = pBefore ? pBefore->data(0, nKeyRole).toString() : QString();
    m_bFills = true;
    Sync(*m_pThings->invisibleRootItem(), aGroups);
    for (int i = 0; bFirst && i < m_pThings->topLevelItemCount(); ++i)
        m_pThings->topLevelItem(i)->setExpanded(true);
    if (QTreeWidgetItem* pStill = m_mapItems.value(sCurrent); pStill && pStill != m_pThings->currentItem())
        m_pThings->setCurrentItem(pStill);
    if (!m_pThings->currentItem())
        m_pThings->setCurrentItem(m_pThings->topLevelItem(0));
    m_bFills = false;
    ShowFacts();
}

void InspectorDialog::Forget(QTreeWidgetItem& oItem) {
    for (int i = 0; i < oItem.childCount(); ++i)
        Forget(*oItem.child(i));
    m_mapFacts.remove(&oItem);
    const auto it = m_mapItems.constFind(oItem.data(0, nKeyRole).toString());
    if (it != m_mapItems.constEnd() && *it == &oItem)
        m_mapItems.erase(it);
}

// An item that stands further below comes with all below it.
QTreeWidgetItem* InspectorDialog::MoveOrMake(QTreeWidgetItem& oAbove, int iRow, const QString& sKey) {
    for (int i = iRow + 1; i < oAbove.childCount(); ++i)
        if (oAbove.child(i)->data(0, nKeyRole).toString() == sKey) {
            const bool bExpanded = oAbove.child(i)->isExpanded();
            QTreeWidgetItem* pMoved = oAbove.takeChild(i);
            oAbove.insertChild(iRow, pMoved);
            pMoved->setExpanded(bExpanded);
            return pMoved;
        }
    auto* pMade = new QTreeWidgetItem;
    pMade->setData(0, nKeyRole, sKey);
    oAbove.insertChild(iRow, pMade);
    return pMade;
}

void InspectorDialog::Sync(QTreeWidgetItem& oAbove, std::vector<Thing>& aThings) {
    QSet<QString> setKeys;
    for (const Thing& oThing : aThings)
        setKeys.insert(oThing.sKey);
    for (int i = oAbove.childCount(); i-- > 0;)
        if (!setKeys.contains(oAbove.child(i)->data(0, nKeyRole).toString())) {
            Forget(*oAbove.child(i));
            delete oAbove.takeChild(i);
        }
    int iRow = 0;
    for (Thing& oThing : aThings) {
        QTreeWidgetItem* pItem = oAbove.child(iRow);
        if (!pItem || pItem->data(0, nKeyRole).toString() != oThing.sKey)
            pItem = MoveOrMake(oAbove, iRow, oThing.sKey);
        pItem->setText(0, oThing.sText);
        pItem->setText(1, oThing.sState);
        m_mapItems.insert(oThing.sKey, pItem);
        if (oThing.fnFacts)
            m_mapFacts.insert(pItem, std::move(oThing.fnFacts));
        Sync(*pItem, oThing.aBelow);
        ++iRow;
    }
    while (oAbove.childCount() > iRow) { // those that stood elsewhere before
        Forget(*oAbove.child(iRow));
        delete oAbove.takeChild(iRow);
    }
}

InspectorDialog::Thing InspectorDialog::Services() const {
    Thing oGroup{tr("Services"), {}, "group services", {}, {}};
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    if (!oManager)
        return oGroup;
    for (const auto& oDef : oManager->ServiceDefs()) {
        const std::string sName = oDef->Name();
        Thing oService{
            Text(sName), {}, "service " + Text(sName), [this, sName] { return Explained().OfService(sName); }, {}};
        for (const auto& oActionItemDef : oDef->ActionItemDefs())
            if (const Ref<Tool> oTool = oActionItemDef->Tool())
                oService.aBelow.push_back({Text(oActionItemDef->Name()),
                                           StateOf(*oTool),
                                           "action " + Text(sName) + " " + Text(oActionItemDef->Name()),
                                           [this, oTool] { return Explained().OfTool(*oTool); },
                                           {}});
        oGroup.aBelow.push_back(std::move(oService));
    }
    return oGroup;
}

InspectorDialog::Thing InspectorDialog::ThingOf(const Ref<Band>& oBand) const {
    const QString sName = Text(oBand->Name());
    Thing oThing{sName,
                 oBand->Visible() ? QString() : tr("hidden"),
                 "band " + sName.toLower(),
                 [this, oBand] { return Explained().OfBand(*oBand); },
                 {}};
    for (const auto& oInstance : m_oBars.AllOf(*oBand))
        if (!EqualText(oInstance->Name(), "Separator"))
            oThing.aBelow.push_back({PlainCaption(*oInstance),
                                     StateOf(*oInstance),
                                     KeyOf(*oInstance),
                                     [this, oInstance] { return Explained().OfTool(*oInstance); },
                                     {}});
    return oThing;
}

void InspectorDialog::AddBands(std::vector<Thing>& aGroups) const {
    Thing oMenus{tr("Menus"), {}, "group menus", {}, {}};
    Thing oToolbars{tr("Toolbars"), {}, "group toolbars", {}, {}};
    Thing oContexts{tr("Context menus"), {}, "group contexts", {}, {}};
    for (const auto& oBand : m_oActiveBar->Bands()->All())
        if (oBand->Kind() == BandKind::Toolbar)
            oToolbars.aBelow.push_back(ThingOf(oBand));
        else if (oBand->Name().starts_with("Context."))
            oContexts.aBelow.push_back(ThingOf(oBand));
        else if (oBand->Kind())
            oMenus.aBelow.push_back(ThingOf(oBand));
    for (Thing* pGroup : {&oMenus, &oToolbars, &oContexts})
        aGroups.push_back(std::move(*pGroup));
}

std::vector<InspectorDialog::Thing> InspectorDialog::ThingsOf(const TreeView& oTree,
                                                              const std::vector<Node*>& aNodes) const {
    std::vector<Thing> aThings;
    for (Node* pNode : aNodes)
        aThings.push_back({ShownNode(oTree, *pNode), pNode->Selected() ? tr("selected") : QString(), KeyOf(*pNode),
                           [this, oNode = Ref<Node>(pNode)] { return Explained().OfNode(*oNode); },
                           ThingsOf(oTree, pNode->Children())});
    return aThings;
}

InspectorDialog::Thing InspectorDialog::Windows() const {
    Thing oGroup{tr("Windows"), {}, "group windows", {}, {}};
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->WindowManager() : nullptr;
    if (!oManager || !oManager->Windows())
        return oGroup;
    for (const auto& oWindow : oManager->Windows())
        oGroup.aBelow.push_back({ShownWindow(oWindow->WindowDef()->Name(), oWindow->Caption()),
                                 oWindow == oManager->ActiveWindow() ? tr("active") : QString(),
                                 "window " + Text(oWindow->Key()),
                                 [this, oWindow] { return Explained().OfWindow(*oWindow); },
                                 {}});
    return oGroup;
}

bool InspectorDialog::SelectKey(const QString& sKey) {
    QTreeWidgetItem* pItem = m_mapItems.value(sKey);
    if (!pItem)
        return false;
    m_pThings->setCurrentItem(pItem);
    m_pThings->scrollToItem(pItem);
    return true;
}

bool InspectorDialog::Select(const Tool& oInstance) {
    Fill();
    return SelectKey(KeyOf(oInstance)) || SelectKey(KeyOfFirst(oInstance));
}

bool InspectorDialog::Select(const Node& oNode) {
    Fill();
    return SelectKey(KeyOf(oNode));
}

void InspectorDialog::ShowFacts() {
    if (m_bFills)
        return;
    const auto fnFacts = m_mapFacts.value(m_pThings->currentItem());
    const QString sFacts = fnFacts ? TextOf(fnFacts()) : QString();
    if (sFacts != m_pFacts->toPlainText()) // else what is read or marked there would jump
        m_pFacts->setPlainText(sFacts);
}

QString InspectorDialog::FactsText() const {
    return m_pFacts->toPlainText();
}

} // namespace corvane::desktop
