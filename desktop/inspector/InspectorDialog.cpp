#include "desktop/inspector/InspectorDialog.h"

#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/log/LogView.h"
#include "desktop/style/DialogSize.h"
#include "desktop/style/QtText.h"
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

constexpr int refreshMilliseconds = 300;
constexpr int keyRole = Qt::UserRole;

QString StateOf(const Tool& tool) {
    QStringList states;
    if (!tool.Visible())
        states.append(InspectorDialog::tr("hidden"));
    if (!tool.Enabled())
        states.append(InspectorDialog::tr("disabled"));
    if (tool.Checked())
        states.append(InspectorDialog::tr("checked"));
    return states.join(", ");
}

QString KeyOf(const Tool& instance) {
    const Band* band = instance.OwningBand();
    return QString("tool %1 in %2").arg(Text(instance.Name()).toLower(), band ? Text(band->Name()).toLower() : "");
}

QString KeyOfFirst(const Tool& master) {
    for (const Tool* instance : master.Instances())
        if (instance->OwningBand())
            return KeyOf(*instance);
    return {};
}

QString KeyOf(const Node& node) {
    const Node* root = &node;
    while (root->Parent())
        root = root->Parent();
    return QString("node %1 in %2").arg(Text(node.Key()).toLower(), Text(root->Key()).toLower());
}

} // namespace

InspectorDialog::InspectorDialog(Ref<ActiveBar> activeBar, Ref<PanelForm> panelForm, const PersonalBars& bars,
                                 const ExplorerItemNotes& notes, const QString& logFile, QWidget* parent)
    : QDialog(parent), m_activeBar(std::move(activeBar)), m_panelForm(std::move(panelForm)), m_bars(bars),
      m_notes(notes), m_things(new QTreeWidget), m_facts(new QPlainTextEdit) {
    setWindowTitle(tr("Inspector"));
    ResizeWithin(*this, {900, 600});
    m_things->setHeaderLabels({tr("Object"), tr("State")});
    m_things->setUniformRowHeights(true);
    m_things->setAccessibleName(tr("Objects of the application"));
    m_things->setColumnWidth(0, 280);
    m_facts->setReadOnly(true);
    m_facts->setAccessibleName(tr("Details"));
    m_facts->setTabChangesFocus(true);
    auto* splitter = new QSplitter;
    splitter->addWidget(m_things);
    splitter->addWidget(m_facts);
    splitter->setSizes({400, 480});
    auto* tabs = new QTabWidget;
    tabs->setAccessibleName(windowTitle());
    tabs->addTab(splitter, tr("&Objects"));
    tabs->addTab(new LogView(logFile), tr("&Log"));
    auto* hint = new QLabel(tr("Ctrl+Alt+click an entry of a menu, a toolbar or the explorer to show it here."));
    hint->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs, 1);
    layout->addWidget(hint);
    connect(m_things, &QTreeWidget::currentItemChanged, this, &InspectorDialog::ShowFacts);
    m_things->installEventFilter(this);
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(refreshMilliseconds);
    connect(&m_refresh, &QTimer::timeout, this, &InspectorDialog::Fill);
    m_subscriptions.push_back(m_activeBar->Changed.Subscribe([this](const BarChange&) { Schedule(); }));
    for (const auto& control : m_panelForm->Controls())
        if (const auto tree = control.TryAs<TreeView>())
            m_subscriptions.push_back(tree->Changed.Subscribe([this](const TreeChange& change) {
                // What goes is released at once.
                if (change.eWhat == TreeChange::What::BeforeRemove || change.eWhat == TreeChange::What::BeforeClear)
                    m_factMap.clear();
                Schedule();
            }));
    Fill();
}

InspectorDialog::~InspectorDialog() = default;

void InspectorDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    m_things->setFocus();
}

bool InspectorDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_things && event->type() == QEvent::Show && m_stale)
        Fill();
    return QDialog::eventFilter(watched, event);
}

void InspectorDialog::Schedule() {
    m_stale = true;
    m_explainer.reset();
    if (m_things->isVisible() && !m_refresh.isActive())
        m_refresh.start();
}

const Explainer& InspectorDialog::Explained() const {
    if (!m_explainer)
        m_explainer = std::make_unique<Explainer>(m_activeBar, m_places, m_bars, m_notes);
    return *m_explainer;
}

void InspectorDialog::Fill() {
    m_refresh.stop();
    m_stale = false;
    m_explainer.reset();
    const bool first = m_items.isEmpty();
    std::vector<Thing> groups{Services()};
    AddBands(groups);
    Thing explorer{tr("Explorer"), {}, "group explorer", {}, {}};
    for (const auto& control : m_panelForm->Controls())
        if (const auto tree = control.TryAs<TreeView>())
            for (Thing& thing : ThingsOf(*tree, tree->GetNodes()->Roots()))
                explorer.below.push_back(std::move(thing));
    groups.push_back(std::move(explorer));
    groups.push_back(Windows());
    const QTreeWidgetItem* before = m_things->currentItem();
    const QString current = before ? before->data(0, keyRole).toString() : QString();
    m_fills = true;
    Sync(*m_things->invisibleRootItem(), groups);
    for (int i = 0; first && i < m_things->topLevelItemCount(); ++i)
        m_things->topLevelItem(i)->setExpanded(true);
    if (QTreeWidgetItem* still = m_items.value(current); still && still != m_things->currentItem())
        m_things->setCurrentItem(still);
    if (!m_things->currentItem())
        m_things->setCurrentItem(m_things->topLevelItem(0));
    m_fills = false;
    ShowFacts();
}

void InspectorDialog::Forget(QTreeWidgetItem& item) {
    for (int i = 0; i < item.childCount(); ++i)
        Forget(*item.child(i));
    m_factMap.remove(&item);
    const auto it = m_items.constFind(item.data(0, keyRole).toString());
    if (it != m_items.constEnd() && *it == &item)
        m_items.erase(it);
}

// An item that is further below comes with all below it.
QTreeWidgetItem* InspectorDialog::MoveOrMake(QTreeWidgetItem& above, int row, const QString& key) {
    for (int i = row + 1; i < above.childCount(); ++i)
        if (above.child(i)->data(0, keyRole).toString() == key) {
            const bool expanded = above.child(i)->isExpanded();
            QTreeWidgetItem* moved = above.takeChild(i);
            above.insertChild(row, moved);
            moved->setExpanded(expanded);
            return moved;
        }
    auto* made = new QTreeWidgetItem;
    made->setData(0, keyRole, key);
    above.insertChild(row, made);
    return made;
}

void InspectorDialog::Sync(QTreeWidgetItem& above, std::vector<Thing>& things) {
    QSet<QString> keys;
    for (const Thing& thing : things)
        keys.insert(thing.key);
    for (int i = above.childCount(); i-- > 0;)
        if (!keys.contains(above.child(i)->data(0, keyRole).toString())) {
            Forget(*above.child(i));
            delete above.takeChild(i);
        }
    int row = 0;
    for (Thing& thing : things) {
        QTreeWidgetItem* item = above.child(row);
        if (!item || item->data(0, keyRole).toString() != thing.key)
            item = MoveOrMake(above, row, thing.key);
        item->setText(0, thing.text);
        item->setText(1, thing.state);
        m_items.insert(thing.key, item);
        if (thing.facts)
            m_factMap.insert(item, thing.facts);
        Sync(*item, thing.below);
        ++row;
    }
    while (above.childCount() > row) { // those that were elsewhere before
        Forget(*above.child(row));
        delete above.takeChild(row);
    }
}

InspectorDialog::Thing InspectorDialog::Services() const {
    Thing group{tr("Services"), {}, "group services", {}, {}};
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (!manager)
        return group;
    for (const auto& def : manager->ServiceDefs()) {
        const std::string name = def->Name();
        Thing service{
            Text(name), {}, "service " + Text(name), [this, name] { return Explained().OfService(name); }, {}};
        for (const auto& actionItemDef : def->ActionItemDefs())
            if (const Ref<Tool> tool = actionItemDef->Tool())
                service.below.push_back({Text(actionItemDef->Name()),
                                         StateOf(*tool),
                                         "action " + Text(name) + " " + Text(actionItemDef->Name()),
                                         [this, tool] { return Explained().OfTool(*tool); },
                                         {}});
        group.below.push_back(std::move(service));
    }
    return group;
}

InspectorDialog::Thing InspectorDialog::ThingOf(const Ref<Band>& band) const {
    const QString name = Text(band->Name());
    Thing thing{name,
                band->Visible() ? QString() : tr("hidden"),
                "band " + name.toLower(),
                [this, band] { return Explained().OfBand(*band); },
                {}};
    for (const auto& instance : m_bars.AllOf(*band))
        if (!EqualText(instance->Name(), "Separator"))
            thing.below.push_back({PlainCaption(*instance),
                                   StateOf(*instance),
                                   KeyOf(*instance),
                                   [this, instance] { return Explained().OfTool(*instance); },
                                   {}});
    return thing;
}

void InspectorDialog::AddBands(std::vector<Thing>& groups) const {
    Thing menus{tr("Menus"), {}, "group menus", {}, {}};
    Thing toolbars{tr("Toolbars"), {}, "group toolbars", {}, {}};
    Thing contexts{tr("Context menus"), {}, "group contexts", {}, {}};
    for (const auto& band : m_activeBar->Bands()->All())
        if (band->Kind() == BandKind::Toolbar)
            toolbars.below.push_back(ThingOf(band));
        else if (band->Name().starts_with("Context."))
            contexts.below.push_back(ThingOf(band));
        else if (band->Kind())
            menus.below.push_back(ThingOf(band));
    for (Thing* group : {&menus, &toolbars, &contexts})
        groups.push_back(std::move(*group));
}

std::vector<InspectorDialog::Thing> InspectorDialog::ThingsOf(const TreeView& tree,
                                                              const std::vector<Node*>& nodes) const {
    std::vector<Thing> things;
    for (Node* nodePointer : nodes)
        things.push_back({ShownNode(tree, *nodePointer), nodePointer->Selected() ? tr("selected") : QString(),
                          KeyOf(*nodePointer),
                          [this, node = Ref<Node>(nodePointer)] { return Explained().OfNode(*node); },
                          ThingsOf(tree, nodePointer->Children())});
    return things;
}

InspectorDialog::Thing InspectorDialog::Windows() const {
    Thing group{tr("Windows"), {}, "group windows", {}, {}};
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->WindowManager() : nullptr;
    if (!manager || !manager->Windows())
        return group;
    for (const auto& window : manager->Windows())
        group.below.push_back({ShownWindow(window->WindowDef()->Name(), window->Caption()),
                               window == manager->ActiveWindow() ? tr("active") : QString(),
                               "window " + Text(window->Key()),
                               [this, window] { return Explained().OfWindow(*window); },
                               {}});
    return group;
}

bool InspectorDialog::SelectKey(const QString& key) {
    QTreeWidgetItem* item = m_items.value(key);
    if (!item)
        return false;
    m_things->setCurrentItem(item);
    m_things->scrollToItem(item);
    return true;
}

bool InspectorDialog::Select(const Tool& instance) {
    Fill();
    return SelectKey(KeyOf(instance)) || SelectKey(KeyOfFirst(instance));
}

bool InspectorDialog::Select(const Node& node) {
    Fill();
    return SelectKey(KeyOf(node));
}

void InspectorDialog::ShowFacts() {
    if (m_fills)
        return;
    const auto factsFunction = m_factMap.value(m_things->currentItem());
    const QString facts = factsFunction ? TextOf(factsFunction()) : QString();
    if (facts != m_facts->toPlainText()) // else what is read or marked there would jump
        m_facts->setPlainText(facts);
}

QString InspectorDialog::FactsText() const {
    return m_facts->toPlainText();
}

} // namespace corvane::desktop

#include "moc_InspectorDialog.cpp"
