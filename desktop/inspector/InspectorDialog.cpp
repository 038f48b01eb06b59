#include "desktop/inspector/InspectorDialog.h"

#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/log/LogView.h"

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
    resize(900, 600);
    m_pThings->setHeaderLabels({tr("What"), tr("State")});
    m_pThings->setUniformRowHeights(true);
    m_pThings->setAccessibleName(tr("What the application is made of"));
    m_pThings->setColumnWidth(0, 280);
    m_pFacts->setReadOnly(true);
    m_pFacts->setAccessibleName(tr("About it"));
    m_pFacts->setTabChangesFocus(true);
    auto* pSplitter = new QSplitter;
    pSplitter->addWidget(m_pThings);
    pSplitter->addWidget(m_pFacts);
    pSplitter->setSizes({400, 480});
    auto* pTabs = new QTabWidget;
    pTabs->setAccessibleName(windowTitle());
    pTabs->addTab(pSplitter, tr("&Objects"));
    pTabs->addTab(new LogView(sLogFile), tr("&Log"));
    auto* pHint = new QLabel(tr("Ctrl+Alt+click on an entry of a menu, a toolbar or the explorer shows it here."));
    pHint->setWordWrap(true);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(pTabs, 1);
    pLayout->addWidget(pHint);
    connect(m_pThings, &QTreeWidget::currentItemChanged, this, &InspectorDialog::ShowFacts);
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

void InspectorDialog::Schedule() {
    if (!m_oRefresh.isActive())
        m_oRefresh.start();
}

QTreeWidgetItem* InspectorDialog::Group(const QString& sText) {
    return Add(nullptr, sText, {}, "group " + sText, {});
}

QTreeWidgetItem* InspectorDialog::Add(QTreeWidgetItem* pAbove, const QString& sText, const QString& sState,
                                      const QString& sKey, FactsFunction fnFacts) {
    auto* pItem = new QTreeWidgetItem(QStringList{sText, sState});
    pItem->setData(0, nKeyRole, sKey);
    if (pAbove)
        pAbove->addChild(pItem);
    else
        m_pThings->addTopLevelItem(pItem);
    m_mapItems.insert(sKey, pItem);
    if (fnFacts)
        m_mapFacts.insert(pItem, std::move(fnFacts));
    return pItem;
}

void InspectorDialog::Fill() {
    const QTreeWidgetItem* pCurrent = m_pThings->currentItem();
    const QString sCurrent = pCurrent ? pCurrent->data(0, nKeyRole).toString() : QString();
    QSet<QString> setOpen;
    for (auto it = m_mapItems.cbegin(); it != m_mapItems.cend(); ++it)
        if (it.value()->isExpanded())
            setOpen.insert(it.key());
    const bool bFirst = m_mapItems.isEmpty();
    m_bFills = true;
    m_mapItems.clear();
    m_mapFacts.clear();
    m_pThings->clear();
    m_pExplainer = std::make_unique<Explainer>(m_oActiveBar, m_oPlaces, m_oBars, m_oNotes);
    FillServices();
    FillBands();
    FillExplorer();
    FillWindows();
    for (auto it = m_mapItems.cbegin(); it != m_mapItems.cend(); ++it)
        it.value()->setExpanded(setOpen.contains(it.key()) || (bFirst && !it.value()->parent()));
    m_bFills = false;
    if (!SelectKey(sCurrent))
        m_pThings->setCurrentItem(m_pThings->topLevelItem(0));
    ShowFacts();
}

void InspectorDialog::FillServices() {
    QTreeWidgetItem* pGroup = Group(tr("Services"));
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    if (!oManager)
        return;
    for (const auto& oDef : oManager->ServiceDefs()) {
        const std::string sName = oDef->Name();
        QTreeWidgetItem* pService = Add(pGroup, Text(sName), {}, "service " + Text(sName),
                                        [this, sName] { return m_pExplainer->OfService(sName); });
        for (const auto& oActionItemDef : oDef->ActionItemDefs())
            if (const Ref<Tool> oTool = oActionItemDef->Tool())
                Add(pService, Text(oActionItemDef->Name()), StateOf(*oTool),
                    "action " + Text(sName) + " " + Text(oActionItemDef->Name()),
                    [this, oTool] { return m_pExplainer->OfTool(*oTool); });
    }
}

void InspectorDialog::AddBand(QTreeWidgetItem* pGroup, const Ref<Band>& oBand) {
    const QString sName = Text(oBand->Name());
    QTreeWidgetItem* pBand = Add(pGroup, sName, oBand->Visible() ? QString() : tr("hidden"), "band " + sName.toLower(),
                                 [this, oBand] { return m_pExplainer->OfBand(*oBand); });
    for (const auto& oInstance : m_oBars.AllOf(*oBand))
        if (!EqualText(oInstance->Name(), "Separator"))
            Add(pBand, PlainCaption(*oInstance), StateOf(*oInstance), KeyOf(*oInstance),
                [this, oInstance] { return m_pExplainer->OfTool(*oInstance); });
}

void InspectorDialog::FillBands() {
    QTreeWidgetItem* pMenus = Group(tr("Menus"));
    QTreeWidgetItem* pToolbars = Group(tr("Toolbars"));
    QTreeWidgetItem* pContexts = Group(tr("Context menus"));
    for (const auto& oBand : m_oActiveBar->Bands()->All())
        if (oBand->Kind() == BandKind::Toolbar)
            AddBand(pToolbars, oBand);
        else if (oBand->Name().starts_with("Context."))
            AddBand(pContexts, oBand);
        else if (oBand->Kind())
            AddBand(pMenus, oBand);
}

void InspectorDialog::AddNodes(QTreeWidgetItem* pAbove, const std::vector<Node*>& aNodes) {
    for (Node* pNode : aNodes) {
        const Ref<Node> oNode(pNode);
        AddNodes(Add(pAbove, Text(pNode->Text()), pNode->Selected() ? tr("chosen") : QString(), KeyOf(*pNode),
                     [this, oNode] { return m_pExplainer->OfNode(*oNode); }),
                 pNode->Children());
    }
}

void InspectorDialog::FillExplorer() {
    QTreeWidgetItem* pGroup = Group(tr("Explorer"));
    for (const auto& oControl : m_frmPanel->Controls())
        if (const auto oTree = oControl.TryAs<TreeView>())
            AddNodes(pGroup, oTree->GetNodes()->Roots());
}

void InspectorDialog::FillWindows() {
    QTreeWidgetItem* pGroup = Group(tr("Windows"));
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->WindowManager() : nullptr;
    if (!oManager || !oManager->Windows())
        return;
    for (const auto& oWindow : oManager->Windows())
        Add(pGroup, Text(oWindow->Caption()), oWindow == oManager->ActiveWindow() ? tr("active") : QString(),
            "window " + Text(oWindow->Key()), [this, oWindow] { return m_pExplainer->OfWindow(*oWindow); });
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
    m_pFacts->setPlainText(fnFacts ? TextOf(fnFacts()) : QString());
}

QString InspectorDialog::FactsText() const {
    return m_pFacts->toPlainText();
}

} // namespace corvane::desktop
