#include "desktop/session/Session.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Entering.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/session/WindowPlace.h"

#include <QApplication>
#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace corvane::desktop {

namespace {

constexpr int nVersion = 1;
constexpr int nSettleMilliseconds = 400;
constexpr const char* sExplorerBand = "Explorer";
constexpr const char* sStatusBand = "StatusBar";
constexpr const char* sRestoreWindow = "RestoreWindow";
constexpr const char* sMaximized = "maximized";
constexpr const char* sMinimized = "minimized";

QString Text(const std::string& sText) {
    return QString::fromStdString(sText);
}

void NoteNodes(const std::vector<Node*>& aNodes, QJsonArray& aOpen, QJsonArray& aClosed) {
    for (const Node* pNode : aNodes) {
        if (pNode->Children().empty())
            continue;
        (pNode->Expanded() ? aOpen : aClosed).append(Text(pNode->Key()));
        NoteNodes(pNode->Children(), aOpen, aClosed);
    }
}

Ref<ActionItemCollection> ToolbarItems() {
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oNavigation = oFramework ? oFramework->NavigationManager() : nullptr;
    const auto oMenus = oNavigation ? oNavigation->MenuManager() : nullptr;
    return oMenus ? oMenus->ToolbarActionItems() : nullptr;
}

// The entry that shows and hides the status bar, if the application has one.
Ref<Tool> StatusBarTool(const ActiveBar& oActiveBar) {
    for (const auto& oTool : oActiveBar.Tools()->All())
        if (const auto oItem = oTool->TagVariant().TryAs<ActionItem>())
            if (EqualText(oItem->Action(), "EnableStatusBar"))
                return oTool;
    return nullptr;
}

QString StateWord(FormState eState) {
    if (eState == FormState::Maximized)
        return sMaximized;
    return eState == FormState::Minimized ? QString(sMinimized) : QString();
}

FormState StateOf(const QString& sWord) {
    if (sWord == sMaximized)
        return FormState::Maximized;
    return sWord == sMinimized ? FormState::Minimized : FormState::Normal;
}

} // namespace

Session::Session(StateFile oFile, Parts oParts) : m_oFile(std::move(oFile)), m_oParts(std::move(oParts)) {
    m_oTimer.setSingleShot(true);
    m_oTimer.setInterval(nSettleMilliseconds);
    connect(&m_oTimer, &QTimer::timeout, this, &Session::Keep);
    m_aSubscriptions.push_back(m_oParts.frmMain->OnUnload.Subscribe([this](bool&) { m_frmMain_Unload(); }));
}

Session::~Session() = default;

Ref<TabStrip> Session::Tabs() const {
    for (const auto& oControl : m_oParts.frmPanel->Controls())
        if (auto oTabs = oControl.TryAs<TabStrip>())
            return oTabs;
    return nullptr;
}

std::vector<Ref<TreeView>> Session::Trees() const {
    std::vector<Ref<TreeView>> aTrees;
    for (const auto& oControl : m_oParts.frmPanel->Controls())
        if (auto oTree = oControl.TryAs<TreeView>())
            aTrees.push_back(std::move(oTree));
    return aTrees;
}

QJsonObject Session::Toolbars() const {
    QJsonObject oToolbars;
    const auto colItems = ToolbarItems();
    if (!colItems)
        return oToolbars;
    for (const auto& oBand : m_oParts.oActiveBar->Bands()->All())
        if (oBand->Kind() == BandKind::Toolbar && colItems->HasKey(oBand->Name()))
            oToolbars[Text(oBand->Name())] = colItems->Item(oBand->Name())->Checked();
    return oToolbars;
}

QJsonObject Session::Explorer() const {
    QJsonObject oExplorer;
    if (const auto oBand = m_oParts.oActiveBar->Bands()->Find(sExplorerBand))
        oExplorer["visible"] = oBand->Visible();
    const auto oTabs = Tabs();
    QJsonObject oTrees;
    for (const auto& oTree : Trees()) {
        if (oTabs && oTabs->Tabs() > 0 && oTree->Container() == oTabs->Tab())
            oExplorer["tab"] = Text(oTree->Name());
        QJsonArray aOpen;
        QJsonArray aClosed;
        NoteNodes(oTree->GetNodes()->Roots(), aOpen, aClosed);
        QJsonObject oKept{{"open", aOpen}, {"closed", aClosed}};
        const auto itAwaited = m_mapToSelect.find(oTree.Get());
        if (const Ref<Node> oNode = oTree->SelectedItem())
            oKept["selected"] = Text(oNode->Key());
        else if (itAwaited != m_mapToSelect.end())
            oKept["selected"] = Text(itAwaited->second);
        oTrees[Text(oTree->Name())] = oKept;
    }
    oExplorer["trees"] = oTrees;
    return oExplorer;
}

Ref<WindowForm> Session::FormOf(const Window& oWindow) const {
    for (const auto& frm : m_oParts.frmMain->Forms())
        if (const auto oForm = frm.TryAs<WindowForm>(); oForm && oForm->Controller().Get() == &oWindow)
            return oForm;
    return nullptr;
}

std::vector<Ref<Window>> Session::OpenWindows() {
    std::vector<Ref<Window>> aWindows;
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->WindowManager() : nullptr;
    if (!oManager || !oManager->Windows())
        return aWindows;
    for (const auto& oWindow : oManager->Windows())
        if (!oWindow->IsModal())
            aWindows.push_back(oWindow);
    return aWindows;
}

// The children in the order of their tabs, which a person may have moved, and then the others.
std::vector<Session::KeptWindow> Session::KeptWindows() const {
    std::unordered_map<const Object*, Ref<WindowForm>> mapForms;
    for (const auto& frm : m_oParts.frmMain->Forms())
        if (const auto oForm = frm.TryAs<WindowForm>(); oForm && oForm->Controller())
            mapForms.emplace(static_cast<const Object*>(oForm->Controller().Get()), oForm);
    const auto* pArea = qobject_cast<const QMdiArea*>(m_oParts.pWindow->centralWidget());
    std::unordered_map<const QWidget*, std::size_t> mapPlaces;
    for (const QMdiSubWindow* pFrame : pArea ? pArea->subWindowList() : QList<QMdiSubWindow*>())
        mapPlaces.emplace(pFrame, mapPlaces.size());
    std::vector<KeptWindow> aWindows;
    for (const auto& oWindow : OpenWindows()) {
        const auto itForm = mapForms.find(static_cast<const Object*>(oWindow.Get()));
        const Ref<WindowForm> oForm = itForm == mapForms.end() ? nullptr : itForm->second;
        const auto itPlace = oForm ? mapPlaces.find(oForm->Frame()) : mapPlaces.end();
        aWindows.push_back({oWindow, oForm, itPlace == mapPlaces.end() ? mapPlaces.size() : itPlace->second});
    }
    std::stable_sort(aWindows.begin(), aWindows.end(),
                     [](const auto& oFirst, const auto& oSecond) { return oFirst.nPlace < oSecond.nPlace; });
    return aWindows;
}

// A key that the library made up says nothing at the next start.
QJsonArray Session::Windows() const {
    QJsonArray aWindows;
    for (const auto& [oWindow, oForm, nPlace] : KeptWindows()) {
        const bool bHasKey = oWindow->Key() != ToText(oWindow->ObjectKey());
        QJsonObject oEntry{{"name", Text(oWindow->WindowDef()->Name())},
                           {"key", bHasKey ? Text(oWindow->Key()) : QString()}};
        if (oWindow == Singleton::Framework()->WindowManager()->ActiveWindow())
            oEntry["active"] = true;
        if (oForm && oForm->Visible()) {
            const QRect oPlace = oForm->NormalPlace();
            oEntry["place"] = QJsonArray{oPlace.x(), oPlace.y(), oPlace.width(), oPlace.height()};
            if (const QString sState = StateWord(oForm->StateOfPerson()); !sState.isEmpty())
                oEntry["state"] = sState;
            if (oWindow->WindowType() != WindowTypeConstants::cvWizard)
                oEntry["page"] = static_cast<int>(oForm->ActivePageIndex());
        }
        aWindows.append(oEntry);
    }
    return aWindows;
}

QJsonObject Session::State() const {
    QJsonObject oState{{"version", nVersion},
                       {"docks", Packed(m_oParts.pWindow->saveState(nVersion))},
                       {"toolbars", Toolbars()},
                       {"explorer", Explorer()},
                       {"windows", m_aWindows}};
    if (m_oParts.bPlace)
        oState["geometry"] = Packed(m_oParts.pWindow->saveGeometry());
    if (const auto oStatus = m_oParts.oActiveBar->Bands()->Find(sStatusBand))
        oState["statusBar"] = oStatus->Visible();
    return oState;
}

void Session::Keep() {
    m_oTimer.stop();
    if (!m_bFollows || m_bEnds)
        return;
    // Behind a question windows may be closing one after another, because the application ends.
    if (!QApplication::activeModalWidget())
        m_aWindows = Windows();
    const QJsonObject oState = State();
    if (oState == m_oWritten)
        return;
    if (m_oFile.Write(oState))
        m_oWritten = oState;
}

void Session::m_frmMain_Unload() {
    if (!m_bFollows || m_bEnds)
        return;
    const QJsonObject oState = State(); // the windows are those of the last quiet moment
    if (oState != m_oWritten && m_oFile.Write(oState))
        m_oWritten = oState;
    m_bEnds = true;
    // A service may refuse, and the application goes on.
    QMetaObject::invokeMethod(
        this, [this] { m_bEnds = !m_oParts.frmMain->IsLoaded(); }, Qt::QueuedConnection);
}

void Session::Schedule() {
    if (m_bFollows && !m_bEnds && !m_oTimer.isActive())
        m_oTimer.start();
}

void Session::Follow() {
    m_bFollows = true;
    m_oParts.pWindow->installEventFilter(this);
    for (QDockWidget* pDock : m_oParts.pWindow->findChildren<QDockWidget*>())
        pDock->installEventFilter(this);
    m_aSubscriptions.push_back(m_oParts.oActiveBar->Changed.Subscribe([this](const BarChange& oChange) {
        if (oChange.eWhat == BarChange::What::BandLook || oChange.eWhat == BarChange::What::ToolState)
            Schedule();
    }));
    if (const auto oTabs = Tabs())
        m_aSubscriptions.push_back(oTabs->Changed.Subscribe([this] { Schedule(); }));
    const Ref<Framework> oFramework = Singleton::Framework();
    if (const auto oManager = oFramework ? oFramework->WindowManager() : nullptr) {
        const auto fnSchedule = [this](const Ref<Window>&) { Schedule(); };
        m_aSubscriptions.push_back(oManager->WindowInitializeEvent.Subscribe(fnSchedule));
        m_aSubscriptions.push_back(oManager->WindowTerminateEvent.Subscribe(fnSchedule));
        m_aSubscriptions.push_back(oManager->WindowActivateEvent.Subscribe([this](const Ref<Window>& oWindow) {
            if (const auto oForm = FormOf(*oWindow); oForm && oForm->Frame())
                oForm->Frame()->installEventFilter(this);
            Schedule();
        }));
    }
    for (const auto& oTree : Trees())
        m_aSubscriptions.push_back(oTree->Changed.Subscribe(
            [this, pTree = oTree.Get()](const TreeChange& oChange) { Tree_Changed(pTree, oChange); }));
}

bool Session::eventFilter(QObject* pWatched, QEvent* pEvent) {
    switch (pEvent->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
    case QEvent::LayoutRequest: // a toolbar or a dock has been moved
        Schedule();
        break;
    case QEvent::Close: // a moment's change counts, and from here on windows are closed one after another
        if (pWatched == m_oParts.pWindow)
            Keep();
        break;
    default:
        break;
    }
    return QObject::eventFilter(pWatched, pEvent);
}

void Session::Tree_Changed(TreeView* pTree, const TreeChange& oChange) {
    if (oChange.eWhat == TreeChange::What::Expanded || oChange.eWhat == TreeChange::What::Selection)
        Schedule();
    if (oChange.eWhat == TreeChange::What::Selection && !m_bSelects && pTree->SelectedItem())
        m_mapToSelect.clear(); // whoever has chosen something by now isn't taken away from it
    if (oChange.eWhat != TreeChange::What::AfterInsert || m_bEnds ||
        (!m_mapAwaited.contains(pTree) && !m_mapToSelect.contains(pTree)))
        return;
    if (m_aInserted.empty()) // whoever adds it may open it by itself in the same breath
        QMetaObject::invokeMethod(
            this,
            [this] {
                OpenAwaitedNodes();
                SelectAwaitedNodes();
            },
            Qt::QueuedConnection);
    m_aInserted.emplace_back(oChange.pNode);
}

void Session::OpenAwaitedNodes() {
    m_aInserted.clear();
    for (auto& [pTree, mapNodes] : m_mapAwaited)
        for (auto it = mapNodes.begin(); it != mapNodes.end();) {
            const Ref<Node> oNode = pTree->GetNodes()->Find(it->first);
            if (oNode)
                oNode->SetExpanded(it->second);
            it = oNode ? mapNodes.erase(it) : std::next(it);
        }
    std::erase_if(m_mapAwaited, [](const auto& oEntry) { return oEntry.second.empty(); });
}

void Session::Restore(bool bFollow) {
    m_oRead = m_oFile.Read();
    m_aWindows = m_oRead["windows"].toArray();
    if (m_oRead["version"].toInt() > nVersion)
        m_oRead = {}; // a later version's; what it means isn't known here
    if (!m_oRead.isEmpty()) {
        RestoreToolbars(m_oRead["toolbars"].toObject());
        RestoreExplorer(m_oRead["explorer"].toObject());
        if (m_oParts.bPlace)
            desktop::PlaceAgain(*m_oParts.pWindow, m_oRead["geometry"]);
        m_oParts.fnFlush();
        m_oParts.pWindow->restoreState(Unpacked(m_oRead["docks"]), nVersion);
        m_oParts.fnFlush(); // what was kept also tells what was hidden then; what holds is the models
    }
    if (bFollow)
        Follow();
}

void Session::RestoreToolbars(const QJsonObject& oToolbars) {
    const Ref<ActiveBar> oActiveBar = m_oParts.oActiveBar;
    m_oParts.fnGuard([&] {
        const auto colItems = ToolbarItems();
        for (auto it = oToolbars.begin(); colItems && it != oToolbars.end(); ++it) {
            const std::string sBand = it.key().toStdString();
            const auto oTool = oActiveBar->Tools()->Find(sBand);
            if (oTool && it->isBool() && colItems->HasKey(sBand) && colItems->Item(sBand)->Checked() != it->toBool())
                oActiveBar->Click(oTool); // as the person did
        }
        const auto oBand = oActiveBar->Bands()->Find(sStatusBand);
        if (oBand && m_oRead["statusBar"].isBool() && oBand->Visible() != m_oRead["statusBar"].toBool())
            if (const auto oTool = StatusBarTool(*oActiveBar))
                oActiveBar->Click(oTool);
    });
}

void Session::RestoreExplorer(const QJsonObject& oExplorer) {
    m_oParts.fnGuard([&] {
        const auto oTabs = Tabs();
        const std::string sTab = oExplorer["tab"].toString().toStdString();
        for (const auto& oTree : Trees())
            if (oTabs && EqualText(oTree->Name(), sTab) && oTree->Container() < oTabs->Tabs())
                oTabs->ChooseTab(oTree->Container());
        const auto oBand = m_oParts.oActiveBar->Bands()->Find(sExplorerBand);
        if (oBand && oBand->Visible() && oExplorer["visible"].isBool() && !oExplorer["visible"].toBool())
            m_oParts.oActiveBar->Close(oBand);
    });
    const QJsonObject oTrees = oExplorer["trees"].toObject();
    for (const auto& oTree : Trees())
        RestoreNodes(oTree, oTrees[Text(oTree->Name())].toObject());
    SelectNodes(oTrees);
}

void Session::RestoreNodes(const Ref<TreeView>& oTree, const QJsonObject& oNodes) {
    for (const bool bOpen : {true, false})
        for (const auto& oKey : oNodes[bOpen ? "open" : "closed"].toArray()) {
            const std::string sKey = oKey.toString().toStdString();
            if (const Ref<Node> oNode = oTree->GetNodes()->Find(sKey))
                oNode->SetExpanded(bOpen);
            else
                m_mapAwaited[oTree.Get()][sKey] = bOpen;
        }
}

void Session::SelectNodes(const QJsonObject& oTrees) {
    m_bSelects = true;
    for (const auto& oTree : Trees()) {
        const std::string sKey = oTrees[Text(oTree->Name())].toObject()["selected"].toString().toStdString();
        if (sKey.empty() || oTree->SelectedItem())
            continue; // nothing was, or a service has selected something of its own
        if (const Ref<Node> oNode = oTree->GetNodes()->Find(sKey))
            oTree->SetSelectedItem(oNode);
        else
            m_mapToSelect[oTree.Get()] = sKey;
    }
    m_bSelects = false;
}

// As the person did it, so that the item is the active one and its commands can be chosen.
void Session::ClickNode(const Ref<TreeView>& oTree, const Ref<Node>& oNode) {
    m_bSelects = true;
    m_oParts.fnGuard([&] {
        oTree->SetSelectedItem(oNode);
        oTree->NodeClick.Raise(oNode);
        oTree->Click.Raise();
    });
    m_bSelects = false;
}

// Of several trees with a selection it is the one in front; one behind it can be the only one.
void Session::ClickSelectedNode() {
    const auto oTabs = Tabs();
    if (!oTabs || oTabs->Tabs() == 0)
        return;
    const Long lFront = oTabs->Tab();
    Ref<TreeView> oChosen;
    for (const auto& oTree : Trees())
        if (oTree->SelectedItem() && (!oChosen || oTree->Container() == lFront))
            oChosen = oTree;
    if (!oChosen)
        return;
    m_oParts.fnGuard([&] { oTabs->ChooseTab(oChosen->Container()); });
    ClickNode(oChosen, oChosen->SelectedItem());
    m_oParts.fnGuard([&] { oTabs->ChooseTab(lFront); });
}

void Session::SelectAwaitedNodes() {
    const auto oTabs = Tabs();
    const auto mapToSelect = m_mapToSelect;
    for (const auto& [pTree, sKey] : mapToSelect) {
        const Ref<Node> oNode = pTree->GetNodes()->Find(sKey);
        if (!oNode)
            continue;
        m_mapToSelect.erase(pTree);
        if (oTabs && pTree->Container() == oTabs->Tab())
            ClickNode(Ref<TreeView>(pTree), oNode);
        else
            oNode->SetSelected(true);
    }
}

// The window that a service has opened for it, or nothing.
Ref<Window> Session::OpenAgain(const QJsonObject& oEntry) {
    const std::string sName = oEntry["name"].toString().toStdString();
    const std::string sKey = oEntry["key"].toString().toStdString();
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oServices = oFramework ? oFramework->ServiceManager() : nullptr;
    if (!oServices || !oServices->WindowDefs()->HasKey(sName))
        return nullptr; // gone with an upgrade
    std::unordered_set<const Window*> setBefore;
    for (const auto& oWindow : OpenWindows())
        setBefore.insert(oWindow.Get());
    const std::array<Variant, 2> aArguments{sName, sKey};
    for (const auto& oService : oServices->Services()) {
        const Entering oEntering(oService);
        if (oService->HasMember(sRestoreWindow) && ToBoolean(oService->Invoke(sRestoreWindow, aArguments)))
            break;
    }
    for (const auto& oWindow : OpenWindows()) {
        const bool bIsNew = !setBefore.contains(oWindow.Get());
        // One with a key may have been open: then it is only brought to the front.
        if (EqualText(oWindow->WindowDef()->Name(), sName) && (bIsNew || (!sKey.empty() && oWindow->Key() == sKey)))
            return oWindow;
    }
    return nullptr;
}

void Session::PlaceAgain(Window& oWindow, const QJsonObject& oEntry) {
    const auto oForm = FormOf(oWindow);
    const QJsonArray aPlace = oEntry["place"].toArray();
    const QRect oPlace(aPlace[0].toInt(), aPlace[1].toInt(), aPlace[2].toInt(), aPlace[3].toInt());
    if (!oForm || !oForm->Visible())
        return;
    const FormState eState = StateOf(oEntry["state"].toString());
    if (aPlace.size() == 4 && oPlace.isValid())
        oForm->PlaceAgain(oPlace, eState == FormState::Maximized ? FormState::Normal : eState);
    const int iPage = oEntry["page"].toInt();
    if (iPage > 0 && iPage < oWindow.WindowDef()->PageDefs()->Count())
        oWindow.SetActivePageIndex(iPage);
}

void Session::RestoreWindows() {
    ClickSelectedNode();
    Ref<WindowForm> oActive;
    std::vector<Ref<WindowForm>> aMaximized;
    const QJsonArray aWindows = m_oRead["windows"].toArray();
    for (const auto& oValue : aWindows)
        m_oParts.fnGuard([&] {
            const QJsonObject oEntry = oValue.toObject();
            const Ref<Window> oWindow = OpenAgain(oEntry);
            if (!oWindow)
                return;
            PlaceAgain(*oWindow, oEntry);
            if (oEntry["active"].toBool())
                oActive = FormOf(*oWindow);
            if (StateOf(oEntry["state"].toString()) == FormState::Maximized)
                aMaximized.push_back(FormOf(*oWindow));
        });
    if (oActive && oActive->Visible())
        m_oParts.fnGuard([&] { oActive->Activate(); });
    // Last: the next child that comes to the front takes being maximized over.
    for (const auto& oForm : aMaximized)
        if (oForm && oForm->Visible() && oForm->StateOfPerson() != FormState::Maximized)
            m_oParts.fnGuard([&] { oForm->PlaceAgain(oForm->NormalPlace(), FormState::Maximized); });
    m_oRead = {};
    Schedule();
}

} // namespace corvane::desktop
