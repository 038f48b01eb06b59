#include "desktop/inspector/Explainer.h"

#include "adapters/process/ProcessObject.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/style/QtText.h"

#include <QCoreApplication>

namespace corvane::desktop {

namespace {

struct Inspector {
    Q_DECLARE_TR_FUNCTIONS(Inspector)
};

QString YesNo(bool yes) {
    return yes ? Inspector::tr("yes") : Inspector::tr("no");
}

// Of a service in a process of its own.
void AddProcess(Facts& facts, const Process& process) {
    constexpr double mebibyte = 1024.0 * 1024.0;
    const ProcessUse use = process.Use();
    const QString memory = QString::number(static_cast<double>(use.memory) / mebibyte, 'f', 1);
    if (use.id != 0)
        facts.emplace_back(Inspector::tr("Process"), Inspector::tr("%1, with %2 MiB").arg(use.id).arg(memory));
    else if (use.starts == 0)
        facts.emplace_back(Inspector::tr("Process"), Inspector::tr("not started yet"));
    else
        facts.emplace_back(Inspector::tr("Process"), Text(process.Death()));
    facts.emplace_back(Inspector::tr("Described in"), Text(process.File()));
    facts.emplace_back(Inspector::tr("Starts"), QString::number(use.starts));
    if (use.calls == 0)
        return;
    facts.emplace_back(Inspector::tr("Calls"), Inspector::tr("%1, %2 ms on average")
                                                   .arg(use.calls)
                                                   .arg(use.milliseconds / static_cast<double>(use.calls), 0, 'f', 2));
    facts.emplace_back(Inspector::tr("Longest call"),
                       Inspector::tr("%1 ms: %2").arg(use.longest, 0, 'f', 2).arg(Text(use.longestName)));
}

// The band in which an entry of a definition is.
std::string BandOf(const Placement& placement) {
    const MenuItemDef& def = *placement.menuItemDef;
    switch (def.MenuType()) {
    case MenuType::fwToolbarItem:
        return "Toolbars." + def.Path();
    case MenuType::fwContextMenuItem:
    case MenuType::fwContextMenuTitle:
        return "Context." + placement.owner.item + (def.Path().empty() ? "" : "." + def.Path());
    default:
        return def.Path();
    }
}

QString PositionOf(const Placement& placement) {
    const MenuItemDef& def = *placement.menuItemDef;
    return QString("%1 (%2)").arg(Text(ToText(def.PositionOrder())), Text(def.PositionKey()));
}

Ref<ServiceManager> Services() {
    const Ref<Framework> framework = Singleton::Framework();
    return framework ? framework->ServiceManager() : nullptr;
}

} // namespace

QString TextOf(const Facts& facts) {
    QString text;
    for (const auto& [name, value] : facts)
        text += name + ": " + value + "\n";
    return text;
}

void ExplorerItemNotes::Follow() {
    const Ref<Framework> framework = Singleton::Framework();
    const auto navigation = framework ? framework->NavigationManager() : nullptr;
    const auto explorer = navigation ? navigation->ExplorerManager() : nullptr;
    if (!explorer)
        return;
    m_add = explorer->onAdd.Subscribe([this](const Ref<Object>& item) {
        if (const auto def = CorvaneMain::QueryExplorerItem(item)->ExplorerItemDef())
            m_notes[ToText(item->ObjectKey())] = {def->Name(), std::string(item->TypeName())};
    });
}

const ExplorerItemNotes::Note* ExplorerItemNotes::Find(const Node& node) const {
    const auto it = m_notes.find(node.Tag());
    return it == m_notes.end() ? nullptr : &it->second;
}

Explainer::Explainer(Ref<ActiveBar> activeBar, const DefinitionPlaces& places, const PersonalBars& bars,
                     const ExplorerItemNotes& notes)
    : m_activeBar(std::move(activeBar)), m_places(places), m_bars(bars), m_notes(notes), m_commands(*m_activeBar) {}

DefinitionPlaces Explainer::ReadPlaces() {
    return {*CurrentPlatform().oFileSystem, CurrentPlatform().oUtilities->GetAppFolder("Services")};
}

const Placement* Explainer::PlacementIn(const Tool& instance) const {
    const auto& placements = m_commands.PlacementsOf(instance);
    const Band* band = instance.OwningBand();
    if (!band)
        return placements.empty() ? nullptr : &placements.front();
    for (const Placement& placement : placements)
        if (EqualText(BandOf(placement), band->Name()) ||
            (BandOf(placement).empty() && band->Kind() == BandKind::MenuBar))
            return &placement;
    return nullptr;
}

QString Explainer::PlaceOf(const Tool& instance) const {
    const Placement* placement = PlacementIn(instance);
    return placement ? m_places.Find(*placement).Text() : QString();
}

void Explainer::AddPlaces(Facts& facts, const Tool& instance) const {
    const Placement* here = PlacementIn(instance);
    const Band* band = instance.OwningBand();
    if (here) {
        const QString place = m_places.Find(*here).Text();
        facts.emplace_back(Inspector::tr("Added by"), place.isEmpty()
                                                          ? Inspector::tr("code of %1").arg(here->owner.Text())
                                                          : Inspector::tr("%1, for %2").arg(place, here->owner.Text()));
        facts.emplace_back(Inspector::tr("Position (position key)"), PositionOf(*here));
    } else if (band && m_bars.IsAdded(*band, instance)) {
        facts.emplace_back(Inspector::tr("Added by"), Inspector::tr("you"));
    } else {
        const CommandEntry* command = m_commands.Find(instance);
        const bool byCode = command && command->owner.kind != Owner::Kind::Host;
        facts.emplace_back(Inspector::tr("Added by"),
                           byCode ? Inspector::tr("code of %1, at run time").arg(command->owner.Text())
                                  : Inspector::tr("the library; not defined in a file"));
    }
    for (const Placement& placement : m_commands.PlacementsOf(instance))
        if (&placement != here)
            facts.emplace_back(
                Inspector::tr("Also defined by"),
                Inspector::tr("%1, for %2").arg(m_places.Find(placement).Text(), placement.owner.Text()));
}

void Explainer::AddState(Facts& facts, const Tool& instance) const {
    const CommandEntry* command = m_commands.Find(instance);
    if (!command) {
        facts.emplace_back(Inspector::tr("Visible"), YesNo(instance.Visible()));
        return;
    }
    const auto action = command->Action();
    const QString whyNot = command->WhyNot();
    if (action) {
        facts.emplace_back(Inspector::tr("Action"), Text(action->Name()));
        facts.emplace_back(Inspector::tr("Procedure"),
                           action->Action().empty() ? Inspector::tr("none") : Text(action->Action()));
        const auto provider = action->ActionsProviderObj();
        facts.emplace_back(
            Inspector::tr("Provider"),
            provider
                ? Inspector::tr("%1, an object of the class %2").arg(command->owner.Text(), Text(provider->TypeName()))
                : Inspector::tr("none"));
    } else {
        facts.emplace_back(Inspector::tr("Provider"), Inspector::tr("none at present"));
    }
    const QString offers = Inspector::tr("as set by %1").arg(command->owner.Text());
    const QString shown = instance.Visible() ? (action ? offers : Inspector::tr("not hidden")) : whyNot;
    facts.emplace_back(Inspector::tr("Visible"), YesNo(instance.Visible()) + ": " + shown);
    facts.emplace_back(Inspector::tr("Enabled"), YesNo(whyNot.isEmpty()) + ": " + (whyNot.isEmpty() ? offers : whyNot));
    facts.emplace_back(Inspector::tr("Checked"), YesNo(instance.Checked()));
}

Facts Explainer::OfTool(const Tool& instance) const {
    Facts facts;
    const CommandEntry* command = m_commands.Find(instance);
    QString entry = PlainCaption(instance);
    if (command && !command->path.isEmpty())
        entry = command->path + " › " + entry;
    facts.emplace_back(Inspector::tr("Entry"), entry);
    if (const QString original = OriginalCaption(instance); original != PlainCaption(instance))
        facts.emplace_back(Inspector::tr("Translated from"), original);
    facts.emplace_back(Inspector::tr("Key"), Text(instance.Name()));
    if (const Band* band = instance.OwningBand())
        facts.emplace_back(Inspector::tr("Location"), Text(band->Name()));
    AddPlaces(facts, instance);
    AddState(facts, instance);
    const QString keys = m_bars.KeysText(instance);
    const QString was = BarChanges::None().KeysText(instance);
    facts.emplace_back(Inspector::tr("Shortcut"), m_bars.HasOwnKeys(instance)
                                                      ? Inspector::tr("%1, set by you instead of %2")
                                                            .arg(keys.isEmpty() ? Inspector::tr("none") : keys,
                                                                 was.isEmpty() ? Inspector::tr("none") : was)
                                                      : (keys.isEmpty() ? Inspector::tr("none") : keys));
    if (const Band* band = instance.OwningBand(); band && m_bars.IsHidden(*band, instance))
        facts.emplace_back(Inspector::tr("Hidden"), Inspector::tr("by you, in this menu or toolbar"));
    if (!instance.DropDownBand().empty())
        facts.emplace_back(Inspector::tr("Opens"), Text(instance.DropDownBand()));
    return facts;
}

QString Explainer::PlaceOf(const Band& band) const {
    for (const auto& other : m_activeBar->Bands()->All())
        for (const auto& instance : other->Tools()->All())
            if (EqualText(instance->DropDownBand(), band.Name()))
                if (QString place = PlaceOf(*instance); !place.isEmpty())
                    return place;
    constexpr std::string_view context = "Context.";
    if (band.Name().starts_with(context))
        return m_places.FindExplorerItem(band.Name().substr(context.size())).Text();
    const auto instances = band.Tools()->All();
    return band.Kind() == BandKind::Toolbar && !instances.empty() ? PlaceOf(*instances.front()) : QString();
}

Facts Explainer::OfBand(const Band& band) const {
    Facts facts{{Inspector::tr("Key"), Text(band.Name())}, {Inspector::tr("Caption"), Text(band.Caption())}};
    const QString place = PlaceOf(band);
    facts.emplace_back(Inspector::tr("Added by"),
                       place.isEmpty() ? Inspector::tr("the library; not defined in a file") : place);
    facts.emplace_back(Inspector::tr("Entries"), QString::number(band.Tools()->Count()));
    facts.emplace_back(Inspector::tr("Visible"), YesNo(band.Visible()));
    if (m_bars.HasChanges(band))
        facts.emplace_back(Inspector::tr("Changed"), Inspector::tr("by you"));
    return facts;
}

Facts Explainer::OfNode(const Node& node) const {
    Facts facts{{Inspector::tr("Explorer item"), Text(node.Text())}, {Inspector::tr("Key"), Text(node.Key())}};
    const auto* note = m_notes.Find(node);
    if (!note)
        return facts;
    facts.emplace_back(Inspector::tr("Kind"), Text(note->item));
    facts.emplace_back(Inspector::tr("Added by"), m_places.FindExplorerItem(note->item).Text());
    const auto manager = Services();
    if (manager)
        for (const auto& serviceDef : manager->ServiceDefs())
            if (serviceDef->ExplorerItemDefs()->HasKey(note->item))
                facts.emplace_back(Inspector::tr("Owner"), Text(serviceDef->Name()));
    facts.emplace_back(Inspector::tr("Provider"),
                       Inspector::tr("an object of the class %1").arg(Text(note->className)));
    return facts;
}

Facts Explainer::OfService(const std::string& name) const {
    Facts facts{{Inspector::tr("Service"), Text(name)},
                {Inspector::tr("Defined in"), m_places.FindService(name).Text()}};
    const auto manager = Services();
    if (!manager || !manager->ServiceDefs()->HasKey(name))
        return facts;
    const auto def = manager->ServiceDefs()->Item(name);
    const auto service = manager->Services()->HasKey(name) ? manager->Services()->Item(name) : nullptr;
    facts.emplace_back(Inspector::tr("ProgID"), Text(def->ProgID()));
    facts.emplace_back(Inspector::tr("Object"), service
                                                    ? Inspector::tr("of the class %1").arg(Text(service->TypeName()))
                                                    : Inspector::tr("none"));
    if (const auto own = service.TryAs<ProcessObject>())
        AddProcess(facts, *own->Owner());
    facts.emplace_back(Inspector::tr("Active"), YesNo(service && manager->IsServiceAlive(service)));
    facts.emplace_back(Inspector::tr("Starts the application"), YesNo(def->IsStartService()));
    facts.emplace_back(Inspector::tr("Actions"), QString::number(def->ActionItemDefs()->Count()));
    facts.emplace_back(Inspector::tr("Entries"), QString::number(def->MenuItemDefs()->Count()));
    facts.emplace_back(Inspector::tr("Explorer items"), QString::number(def->ExplorerItemDefs()->Count()));
    return facts;
}

Facts Explainer::OfWindow(const Window& window) const {
    const auto def = window.WindowDef();
    Facts facts{{Inspector::tr("Window"), Text(window.Caption())},
                {Inspector::tr("Name"), Text(def->Name())},
                {Inspector::tr("Key"), Text(window.Key())},
                {Inspector::tr("Added by"), m_places.FindWindow(def->Name()).Text()},
                {Inspector::tr("Modal"), YesNo(window.IsModal())},
                {Inspector::tr("Pages"), QString::number(def->PageDefs()->Count())}};
    return facts;
}

} // namespace corvane::desktop
