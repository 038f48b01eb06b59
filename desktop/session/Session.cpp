#include "desktop/session/Session.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/guard/PluginCall.h"
#include "desktop/session/WindowPlace.h"
#include "desktop/style/QtText.h"

#include <QApplication>
#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace corvane::desktop {

namespace {

constexpr int version = 1;
constexpr int settleMilliseconds = 400;
constexpr const char* explorerName = "Explorer";
constexpr const char* statusName = "StatusBar";
constexpr const char* restoreWindow = "RestoreWindow";
constexpr const char* maximized = "maximized";
constexpr const char* minimized = "minimized";

void NoteNodes(const std::vector<Node*>& nodes, QJsonArray& open, QJsonArray& closed) {
    for (const Node* node : nodes) {
        if (node->Children().empty())
            continue;
        (node->Expanded() ? open : closed).append(Text(node->Key()));
        NoteNodes(node->Children(), open, closed);
    }
}

Ref<ActionItemCollection> ToolbarItems() {
    const Ref<Framework> framework = Singleton::Framework();
    const auto navigation = framework ? framework->NavigationManager() : nullptr;
    const auto menus = navigation ? navigation->MenuManager() : nullptr;
    return menus ? menus->ToolbarActionItems() : nullptr;
}

QString StateWord(FormState state) {
    if (state == FormState::Maximized)
        return maximized;
    return state == FormState::Minimized ? QString(minimized) : QString();
}

FormState StateOf(const QString& word) {
    if (word == maximized)
        return FormState::Maximized;
    return word == minimized ? FormState::Minimized : FormState::Normal;
}

} // namespace

Session::Session(StateFile file, Parts parts) : m_file(std::move(file)), m_parts(std::move(parts)) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(settleMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &Session::Save);
    m_subscriptions.push_back(m_parts.mainForm->OnUnload.Subscribe([this](bool&) { m_frmMain_Unload(); }));
}

Session::~Session() = default;

Ref<TabStrip> Session::Tabs() const {
    for (const auto& control : m_parts.panelForm->Controls())
        if (auto tabs = control.TryAs<TabStrip>())
            return tabs;
    return nullptr;
}

std::vector<Ref<TreeView>> Session::Trees() const {
    std::vector<Ref<TreeView>> trees;
    for (const auto& control : m_parts.panelForm->Controls())
        if (auto tree = control.TryAs<TreeView>())
            trees.push_back(std::move(tree));
    return trees;
}

QJsonObject Session::Toolbars() const {
    QJsonObject toolbars;
    const auto items = ToolbarItems();
    if (!items)
        return toolbars;
    for (const auto& band : m_parts.activeBar->Bands()->All())
        if (band->Kind() == BandKind::Toolbar && items->HasKey(band->Name()))
            toolbars[Text(band->Name())] = items->Item(band->Name())->Checked();
    return toolbars;
}

QJsonObject Session::Explorer() const {
    QJsonObject explorer;
    if (const auto band = m_parts.activeBar->Bands()->Find(explorerName))
        explorer["visible"] = band->Visible();
    const auto tabs = Tabs();
    QJsonObject trees;
    for (const auto& tree : Trees()) {
        if (tabs && tabs->Tabs() > 0 && tree->Container() == tabs->Tab())
            explorer["tab"] = Text(tree->Name());
        QJsonArray open;
        QJsonArray closed;
        NoteNodes(tree->GetNodes()->Roots(), open, closed);
        QJsonObject kept{{"open", open}, {"closed", closed}};
        const auto awaited = m_toSelect.find(tree.Get());
        if (const Ref<Node> node = tree->SelectedItem())
            kept["selected"] = Text(node->Key());
        else if (awaited != m_toSelect.end())
            kept["selected"] = Text(awaited->second);
        trees[Text(tree->Name())] = kept;
    }
    explorer["trees"] = trees;
    return explorer;
}

Ref<WindowForm> Session::FormOf(const Window& window) const {
    for (const auto& frm : m_parts.mainForm->Forms())
        if (auto form = frm.TryAs<WindowForm>(); form && form->Controller().Get() == &window)
            return form;
    return nullptr;
}

std::vector<Ref<Window>> Session::OpenWindows() {
    std::vector<Ref<Window>> windows;
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->WindowManager() : nullptr;
    if (!manager || !manager->Windows())
        return windows;
    for (const auto& window : manager->Windows())
        if (!window->IsModal())
            windows.push_back(window);
    return windows;
}

// The children in the order of their tabs, which a user may have moved, and then the others.
std::vector<Session::SavedWindow> Session::SavedWindows() const {
    std::unordered_map<const Object*, Ref<WindowForm>> forms;
    for (const auto& frm : m_parts.mainForm->Forms())
        if (const auto form = frm.TryAs<WindowForm>(); form && form->Controller())
            forms.emplace(static_cast<const Object*>(form->Controller().Get()), form);
    std::unordered_map<const QWidget*, std::size_t> places;
    for (const QWidget* frame : m_parts.documents->Frames())
        places.emplace(frame, places.size());
    std::vector<SavedWindow> windows;
    for (const auto& window : OpenWindows()) {
        const auto formPosition = forms.find(static_cast<const Object*>(window.Get()));
        const Ref<WindowForm> form = formPosition == forms.end() ? nullptr : formPosition->second;
        const auto place = form ? places.find(form->Frame()) : places.end();
        windows.push_back({window, form, place == places.end() ? places.size() : place->second});
    }
    std::stable_sort(windows.begin(), windows.end(),
                     [](const auto& first, const auto& second) { return first.place < second.place; });
    return windows;
}

// A key that the library made up says nothing at the next start.
void Session::NoteWindows() {
    QJsonArray windows;
    std::vector<QWidget*> frames;
    for (const auto& [window, form, placeCount] : SavedWindows()) {
        const bool hasKey = window->Key() != ToText(window->ObjectKey());
        QJsonObject entry{{"name", Text(window->WindowDef()->Name())},
                          {"key", hasKey ? Text(window->Key()) : QString()}};
        if (window == Singleton::Framework()->WindowManager()->ActiveWindow())
            entry["active"] = true;
        if (const std::string item = m_parts.itemOf ? m_parts.itemOf(*window) : std::string(); !item.empty())
            entry["item"] = Text(item);
        if (form && form->Visible()) {
            const QRect place = form->Placement().NormalPlace();
            entry["place"] = QJsonArray{place.x(), place.y(), place.width(), place.height()};
            if (const QString state = StateWord(form->WindowState()); !state.isEmpty())
                entry["state"] = state;
            if (window->WindowType() != WindowTypeConstants::cvWizard)
                entry["page"] = static_cast<int>(form->ActivePageIndex());
            if (m_parts.documents->IsOwn(form->Frame()))
                entry["own"] = Packed(form->Frame()->saveGeometry());
        }
        windows.append(entry);
        frames.push_back(form ? form->Frame() : nullptr);
    }
    m_windows = windows;
    m_groups = m_parts.documents->State(frames);
}

QJsonObject Session::State() const {
    QJsonObject state{{"version", version},     {"docks", Packed(m_parts.window->saveState(version))},
                      {"toolbars", Toolbars()}, {"explorer", Explorer()},
                      {"views", OpenViews()},   {"windows", m_windows}};
    if (!m_groups.isEmpty())
        state["groups"] = m_groups;
    if (m_parts.place)
        state["geometry"] = Packed(m_parts.window->saveGeometry());
    if (const auto status = m_parts.activeBar->Bands()->Find(statusName))
        state["statusBar"] = status->Visible();
    return state;
}

void Session::Save() {
    m_timer.stop();
    if (!m_follows || m_ends)
        return;
    // Behind a question windows may be closing one after another, because the application ends.
    if (!QApplication::activeModalWidget())
        NoteWindows();
    const QJsonObject state = State();
    if (state == m_written)
        return;
    if (m_file.Write(state))
        m_written = state;
}

void Session::m_frmMain_Unload() {
    if (!m_follows || m_ends)
        return;
    const QJsonObject state = State(); // the windows are those of the last quiet moment
    if (state != m_written && m_file.Write(state))
        m_written = state;
    m_ends = true;
    // A service may refuse, and the application goes on.
    QMetaObject::invokeMethod(
        this, [this] { m_ends = !m_parts.mainForm->IsLoaded(); }, Qt::QueuedConnection);
}

void Session::Schedule() {
    if (m_follows && !m_ends && !m_timer.isActive())
        m_timer.start();
}

void Session::Follow() {
    m_follows = true;
    m_parts.window->installEventFilter(this);
    connect(m_parts.documents, &Documents::Changed, this, &Session::Schedule);
    for (QDockWidget* dock : m_parts.window->findChildren<QDockWidget*>())
        dock->installEventFilter(this);
    m_subscriptions.push_back(m_parts.activeBar->Changed.Subscribe([this](const BarChange& change) {
        if (change.eWhat == BarChange::What::BandLook || change.eWhat == BarChange::What::ToolState)
            Schedule();
    }));
    if (const auto tabs = Tabs())
        m_subscriptions.push_back(tabs->Changed.Subscribe([this] { Schedule(); }));
    const Ref<Framework> framework = Singleton::Framework();
    if (const auto manager = framework ? framework->WindowManager() : nullptr) {
        const auto schedule = [this](const Ref<Window>&) { Schedule(); };
        m_subscriptions.push_back(manager->WindowInitializeEvent.Subscribe(schedule));
        m_subscriptions.push_back(manager->WindowTerminateEvent.Subscribe(schedule));
        m_subscriptions.push_back(manager->WindowActivateEvent.Subscribe([this](const Ref<Window>& window) {
            if (const auto form = FormOf(*window); form && form->Frame())
                form->Frame()->installEventFilter(this);
            Schedule();
        }));
    }
    for (const auto& tree : Trees())
        m_subscriptions.push_back(tree->Changed.Subscribe(
            [this, treeView = tree.Get()](const TreeChange& change) { Tree_Changed(treeView, change); }));
}

bool Session::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
    case QEvent::LayoutRequest: // a toolbar or a dock has been moved
        Schedule();
        break;
    case QEvent::Close: // a moment's change counts, and from here on windows are closed one after another
        if (watched == m_parts.window)
            Save();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void Session::Tree_Changed(TreeView* tree, const TreeChange& change) {
    if (change.eWhat == TreeChange::What::Expanded || change.eWhat == TreeChange::What::Selection)
        Schedule();
    if (change.eWhat == TreeChange::What::Selection && !m_selects && tree->SelectedItem())
        m_toSelect.clear(); // whoever has chosen something by now isn't taken away from it
    if (m_ends)
        return;
    if (change.eWhat == TreeChange::What::BeforeClear)
        KeepNodes(*tree);
    const bool opens = change.eWhat == TreeChange::What::Expanded && change.pNode->Children().empty();
    if (opens && change.pNode->Expanded())
        m_opened.emplace_back(change.pNode);
    const bool isAwaited =
        change.eWhat == TreeChange::What::AfterInsert && (m_awaited.contains(tree) || m_toSelect.contains(tree));
    if ((isAwaited || !m_opened.empty()) && !std::exchange(m_nodesCome, true))
        // Whoever adds a node may open it by itself in the same breath.
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_nodesCome = false;
                NodesCame();
            },
            Qt::QueuedConnection);
}

void Session::OpenAwaitedNodes() {
    for (auto& [tree, nodes] : m_awaited)
        for (auto it = nodes.begin(); it != nodes.end();) {
            const Ref<Node> node = tree->GetNodes()->Find(it->first);
            if (node)
                node->SetExpanded(it->second);
            it = node ? nodes.erase(it) : std::next(it);
        }
    std::erase_if(m_awaited, [](const auto& entry) { return entry.second.empty(); });
}

void Session::Restore(bool follow) {
    m_read = m_file.Read();
    m_windows = m_read["windows"].toArray();
    if (m_read["version"].toInt() > version)
        m_read = {}; // a later version's; what it means isn't known here
    if (!m_read.isEmpty()) {
        RestoreToolbars(m_read);
        ShowViews(m_read["views"].toArray());
        RestoreExplorer(m_read["explorer"].toObject());
        if (m_parts.place)
            desktop::PlaceAgain(*m_parts.window, m_read["geometry"]);
        m_parts.flush();
        m_parts.window->restoreState(Unpacked(m_read["docks"]), version);
        m_parts.flush(); // what was kept also says what was hidden then; what holds is the models
    }
    for (const auto& tree : Trees())
        CloseNewNodes(*tree, m_read["explorer"].toObject()["trees"].toObject()[Text(tree->Name())].toObject());
    if (follow)
        Follow();
}

void Session::RestoreToolbars(const QJsonObject& state) {
    const Ref<ActiveBar> activeBar = m_parts.activeBar;
    const QJsonObject toolbars = state["toolbars"].toObject();
    m_parts.guard([&] {
        const auto items = ToolbarItems();
        for (auto it = toolbars.begin(); items && it != toolbars.end(); ++it) {
            const std::string band = it.key().toStdString();
            const auto tool = activeBar->Tools()->Find(band);
            if (tool && it->isBool() && items->HasKey(band) && items->Item(band)->Checked() != it->toBool())
                activeBar->Click(tool); // as the user did
        }
        const auto band = activeBar->Bands()->Find(statusName);
        if (band && state["statusBar"].isBool() && band->Visible() != state["statusBar"].toBool())
            if (const auto tool = ToolOfAction("EnableStatusBar"))
                activeBar->Click(tool);
    });
}

void Session::RestoreExplorer(const QJsonObject& explorer) {
    m_parts.guard([&] {
        const auto tabs = Tabs();
        const std::string tab = explorer["tab"].toString().toStdString();
        for (const auto& tree : Trees())
            if (tabs && EqualText(tree->Name(), tab) && tree->Container() < tabs->Tabs())
                tabs->ChooseTab(tree->Container());
        const auto band = m_parts.activeBar->Bands()->Find(explorerName);
        if (band && band->Visible() && explorer["visible"].isBool() && !explorer["visible"].toBool())
            m_parts.activeBar->Close(band);
    });
    const QJsonObject trees = explorer["trees"].toObject();
    for (const auto& tree : Trees())
        RestoreNodes(tree, trees[Text(tree->Name())].toObject());
    SelectNodes(trees);
}

void Session::RestoreNodes(const Ref<TreeView>& tree, const QJsonObject& nodes) {
    for (const bool open : {true, false})
        for (const auto& key : nodes[open ? "open" : "closed"].toArray()) {
            const std::string keyName = key.toString().toStdString();
            if (const Ref<Node> node = tree->GetNodes()->Find(keyName))
                node->SetExpanded(open);
            else
                m_awaited[tree.Get()][keyName] = open;
        }
}

void Session::SelectNodes(const QJsonObject& trees) {
    m_selects = true;
    for (const auto& tree : Trees()) {
        const std::string key = trees[Text(tree->Name())].toObject()["selected"].toString().toStdString();
        if (key.empty() || tree->SelectedItem())
            continue; // nothing was, or a service has selected something of its own
        if (const Ref<Node> node = tree->GetNodes()->Find(key))
            tree->SetSelectedItem(node);
        else
            m_toSelect[tree.Get()] = key;
    }
    m_selects = false;
}

// As the user did it, so that the item is the active one and its commands can be chosen.
void Session::ClickNode(const Ref<TreeView>& tree, const Ref<Node>& node) {
    m_selects = true;
    m_parts.guard([&] {
        tree->SetSelectedItem(node);
        tree->NodeClick.Raise(node);
        tree->Click.Raise();
    });
    m_selects = false;
}

// Of several trees with a selection it is the one in front; one behind it can be the only one.
void Session::ClickSelectedNode() {
    const auto tabs = Tabs();
    if (!tabs || tabs->Tabs() == 0)
        return;
    const Long front = tabs->Tab();
    Ref<TreeView> chosen;
    for (const auto& tree : Trees())
        if (tree->SelectedItem() && (!chosen || tree->Container() == front))
            chosen = tree;
    if (!chosen)
        return;
    m_parts.guard([&] { tabs->ChooseTab(chosen->Container()); });
    ClickNode(chosen, chosen->SelectedItem());
    m_parts.guard([&] { tabs->ChooseTab(front); });
}

void Session::SelectAwaitedNodes() {
    const auto tabs = Tabs();
    const auto toSelect = m_toSelect;
    for (const auto& [tree, key] : toSelect) {
        const Ref<Node> node = tree->GetNodes()->Find(key);
        if (!node)
            continue;
        m_toSelect.erase(tree);
        if (tabs && tree->Container() == tabs->Tab())
            ClickNode(Ref<TreeView>(tree), node);
        else
            node->SetSelected(true);
    }
}

// The window that a service has opened for it, or nothing.
Ref<Window> Session::OpenAgain(const QJsonObject& entry) {
    const std::string name = entry["name"].toString().toStdString();
    const std::string key = entry["key"].toString().toStdString();
    const Ref<Framework> framework = Singleton::Framework();
    const auto services = framework ? framework->ServiceManager() : nullptr;
    if (!services || !services->WindowDefs()->HasKey(name))
        return nullptr; // gone with an upgrade
    std::unordered_set<const Window*> before;
    for (const auto& window : OpenWindows())
        before.insert(window.Get());
    const std::array<Variant, 2> arguments{name, key};
    // The service that has the window's definition comes first; no other is started for it.
    const std::string& ownService = services->WindowDefs()->Item(name)->Service();
    const Ref<Object>* own = services->Services()->Find(ownService);
    std::vector<Ref<Object>> asked;
    if (own)
        asked.push_back(*own);
    for (const auto& service : services->Services())
        if (!own || service != *own)
            asked.push_back(service);
    for (const auto& service : asked) {
        if (CorvaneMain::HasEnded()) // by an earlier one
            return nullptr;
        if (own && service != *own && m_parts.isIdle && m_parts.isIdle(service))
            continue;
        if (service->HasMember(restoreWindow) &&
            CallPlugin(service, restoreWindow, [&] { return ToBoolean(service->Invoke(restoreWindow, arguments)); }))
            break;
    }
    for (const auto& window : OpenWindows()) {
        const bool isNew = !before.contains(window.Get());
        // One with a key may have been open: then it is only brought to the front.
        if (EqualText(window->WindowDef()->Name(), name) && (isNew || (!key.empty() && window->Key() == key)))
            return window;
    }
    return nullptr;
}

bool Session::Reopen(const std::string& name, const std::string& key) {
    return OpenAgain({{"name", Text(name)}, {"key", Text(key)}}) != nullptr;
}

void Session::PlaceAgain(Window& window, const QJsonObject& entry) {
    const auto form = FormOf(window);
    const QJsonArray places = entry["place"].toArray();
    const QRect place(places[0].toInt(), places[1].toInt(), places[2].toInt(), places[3].toInt());
    if (!form || !form->Visible())
        return;
    const FormState state = StateOf(entry["state"].toString());
    if (places.size() == 4 && place.isValid())
        form->PlaceAgain(place, state == FormState::Maximized ? FormState::Normal : state);
    const int page = entry["page"].toInt();
    if (page > 0 && page < window.WindowDef()->PageDefs()->Count())
        window.SetActivePageIndex(page);
}

void Session::RestoreGroups(const QJsonArray& windows, const std::vector<Ref<WindowForm>>& forms) {
    std::vector<QWidget*> frames;
    for (const auto& form : forms)
        frames.push_back(form && form->Visible() ? form->Frame() : nullptr);
    m_parts.guard([&] {
        m_parts.documents->Restore(m_read["groups"].toObject(), frames);
        for (qsizetype i = 0; i < windows.size(); ++i)
            if (const QJsonValue own = windows[i].toObject()["own"]; own.isString())
                if (const auto& form = forms[static_cast<std::size_t>(i)]; form && form->Frame())
                    if (m_parts.documents->MoveToOwnWindow(form->Frame()))
                        desktop::PlaceAgain(*form->Frame(), own);
    });
}

void Session::RestoreWindows() {
    ClickSelectedNode();
    Ref<WindowForm> active;
    std::vector<Ref<WindowForm>> maximizedForms;
    const QJsonArray windows = m_read["windows"].toArray();
    std::vector<Ref<WindowForm>> forms;
    for (const auto& value : windows) {
        forms.emplace_back();
        m_parts.guard([&] {
            const QJsonObject entry = value.toObject();
            const Ref<Window> window = OpenAgain(entry);
            if (!window)
                return;
            PlaceAgain(*window, entry);
            if (m_parts.setItem)
                m_parts.setItem(*window, entry["item"].toString().toStdString());
            forms.back() = FormOf(*window);
            if (entry["active"].toBool())
                active = FormOf(*window);
            if (StateOf(entry["state"].toString()) == FormState::Maximized)
                maximizedForms.push_back(FormOf(*window));
        });
    }
    RestoreGroups(windows, forms);
    if (active && active->Visible())
        m_parts.guard([&] { active->Activate(); });
    // Last: the next child that comes to the front takes being maximized over.
    for (const auto& form : maximizedForms)
        if (form && form->Visible() && form->WindowState() != FormState::Maximized)
            m_parts.guard([&] { form->PlaceAgain(form->Placement().NormalPlace(), FormState::Maximized); });
    m_read = {};
    Schedule();
}

} // namespace corvane::desktop

#include "moc_Session.cpp"
