#include "desktop/custom/PersonalBars.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/style/QtText.h"

#include <QJsonArray>
#include <algorithm>
#include <array>

namespace corvane::desktop {

namespace {

constexpr std::array<const char*, 3> whatWords{"hidden", "moved", "added"};

QJsonObject AsJson(const EntryName& entry) {
    return {{"entry", Text(entry.tool)},
            {"service", Text(entry.service)},
            {"action", Text(entry.action)},
            {"caption", entry.caption}};
}

EntryName EntryIn(const QJsonObject& json) {
    return {json["entry"].toString().toStdString(), json["service"].toString().toStdString(),
            json["action"].toString().toStdString(), json["caption"].toString()};
}

// Calls back for each entry of a service or of its explorer items that has a tool.
template <class VISIT>
void VisitEntries(VISIT visit) {
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (!manager)
        return;
    for (const auto& serviceDef : manager->ServiceDefs()) {
        const auto each = [&](const Ref<MenuItemDefCollection>& menuItemDefs) {
            for (const auto& def : menuItemDefs)
                if (def->ActionItemDef() && def->ActionItemDef()->Tool())
                    visit(serviceDef->Name(), def->ActionItemDef()->Name(), *def->ActionItemDef()->Tool());
        };
        each(serviceDef->MenuItemDefs());
        for (const auto& itemDef : serviceDef->ExplorerItemDefs())
            each(itemDef->MenuItemDefs());
    }
}

// Separators at the ends and behind one another part nothing.
void DropIdleSeparators(std::vector<Ref<Tool>>& instances) {
    std::vector<Ref<Tool>> kept;
    for (auto& instance : instances)
        if (!IsSeparator(*instance) || (!kept.empty() && !IsSeparator(*kept.back())))
            kept.push_back(std::move(instance));
    if (!kept.empty() && IsSeparator(*kept.back()))
        kept.pop_back();
    instances = std::move(kept);
}

} // namespace

bool IsSeparator(const Tool& tool) {
    return EqualText(tool.Name(), "Separator");
}

PersonalBars::PersonalBars(StateFile file, Ref<ActiveBar> activeBar, std::function<void()> changed)
    : m_file(std::move(file)), m_activeBar(std::move(activeBar)), m_changed(std::move(changed)) {
    Read();
}

PersonalBars::~PersonalBars() = default;

void PersonalBars::Read() {
    const QJsonObject read = m_file.Read();
    for (const auto& value : read["keys"].toArray()) {
        const QJsonObject json = value.toObject();
        KeyChange change{EntryIn(json), {}};
        for (const auto& keys : json["keys"].toArray())
            if (const auto sequence = QKeySequence::fromString(keys.toString(), QKeySequence::PortableText);
                sequence.count() == 1 || sequence.count() == 2)
                change.keys.append(sequence);
        if (!change.entry.tool.empty())
            m_keys.push_back(std::move(change));
    }
    for (const auto& value : read["places"].toArray()) {
        const QJsonObject json = value.toObject();
        const auto it = std::find(whatWords.begin(), whatWords.end(), json["change"].toString());
        if (it == whatWords.end() || json["entry"].toString().isEmpty())
            continue;
        m_places.push_back({static_cast<PlaceChange::What>(it - whatWords.begin()),
                            json["band"].toString().toStdString(), EntryIn(json),
                            json["behind"].toString().toStdString(), json["ahead"].toString().toStdString()});
    }
}

void PersonalBars::Changed() {
    m_isSettled = false;
    QJsonArray keys;
    for (const KeyChange& change : m_keys) {
        QJsonArray sequences;
        for (const QKeySequence& sequence : change.keys)
            sequences.append(sequence.toString(QKeySequence::PortableText));
        QJsonObject json = AsJson(change.entry);
        json["keys"] = sequences;
        keys.append(json);
    }
    QJsonArray places;
    for (const PlaceChange& change : m_places) {
        QJsonObject json = AsJson(change.entry);
        json["band"] = Text(change.band);
        json["change"] = whatWords[static_cast<std::size_t>(change.what)];
        if (change.what != PlaceChange::What::Hidden)
            json["behind"] = Text(change.behind);
        if (!change.ahead.empty())
            json["ahead"] = Text(change.ahead);
        places.append(json);
    }
    m_file.Write({{"version", 1}, {"keys", keys}, {"places", places}});
    m_changed();
}

EntryName PersonalBars::NameOf(const Tool& tool) const {
    EntryName entry{tool.Name(), {}, {}, OriginalCaption(tool.Master())};
    VisitEntries([&](const std::string& service, const std::string& action, const Tool& other) {
        if (&other == &tool.Master() && entry.service.empty()) {
            entry.service = service;
            entry.action = action;
        }
    });
    return entry;
}

const Tool* PersonalBars::Find(const EntryName& entry) const {
    if (const Ref<Tool> tool = m_activeBar->Tools()->Find(entry.tool))
        return tool.Get();
    std::unordered_set<const Tool*> found;
    if (!entry.service.empty())
        VisitEntries([&](const std::string& service, const std::string& action, const Tool& tool) {
            if (EqualText(service, entry.service) && EqualText(action, entry.action))
                found.insert(&tool);
        });
    return found.size() == 1 ? *found.begin() : nullptr;
}

void PersonalBars::Settle() const {
    if (m_isSettled)
        return;
    if (!m_barChanged)
        m_barChanged = m_activeBar->Changed.Subscribe([this](const BarChange& change) {
            if (change.eWhat == BarChange::What::BandTools || change.eWhat == BarChange::What::BandAdded)
                m_isSettled = false;
        });
    m_isSettled = true;
    m_keyMap.clear();
    m_settled.clear();
    for (const KeyChange& change : m_keys)
        if (const Tool* tool = Find(change.entry))
            m_keyMap.emplace(tool, &change);
    for (const PlaceChange& change : m_places)
        if (const Tool* tool = Find(change.entry))
            m_settled.push_back({&change, tool, !EqualText(tool->Name(), change.entry.tool)});
}

QList<QKeySequence> PersonalBars::KeysOf(const Tool& tool) const {
    Settle();
    const auto it = m_keyMap.find(&tool.Master());
    return it == m_keyMap.end() ? BarChanges::KeysOf(tool) : it->second->keys;
}

bool PersonalBars::HasOwnKeys(const Tool& tool) const {
    Settle();
    return m_keyMap.contains(&tool.Master());
}

void PersonalBars::SetKeys(const Tool& tool, const QList<QKeySequence>& keys) {
    const Tool* master = &tool.Master();
    std::erase_if(m_keys, [&](const KeyChange& change) { return Find(change.entry) == master; });
    if (keys != BarChanges::KeysOf(tool))
        m_keys.push_back({NameOf(tool), keys});
    Changed();
}

void PersonalBars::ResetKeys(const Tool& tool) {
    SetKeys(tool, BarChanges::KeysOf(tool));
}

void PersonalBars::ResetAllKeys() {
    m_keys.clear();
    Changed();
}

bool PersonalBars::IsHidden(const Band& band, const Tool& tool) const {
    Settle();
    return std::any_of(m_settled.begin(), m_settled.end(), [&](const SettledPlace& place) {
        return place.change->what == PlaceChange::What::Hidden && place.tool == &tool.Master() &&
               (place.movedByFiles || EqualText(place.change->band, band.Name()));
    });
}

void PersonalBars::SetHidden(const Band& band, const Tool& tool, bool hidden) {
    const Tool* master = &tool.Master();
    std::erase_if(m_places, [&](const PlaceChange& change) {
        return change.what == PlaceChange::What::Hidden && Find(change.entry) == master &&
               (EqualText(change.band, band.Name()) || !EqualText(change.entry.tool, master->Name()));
    });
    if (hidden)
        m_places.push_back({PlaceChange::What::Hidden, band.Name(), NameOf(tool), {}});
    Changed();
}

void PersonalBars::Move(const Band& band, const Tool& tool, const Tool* behind, const Tool* ahead) {
    const std::string behindText = behind ? behind->Name() : std::string();
    const Tool* master = &tool.Master();
    PlaceChange change{PlaceChange::What::Moved, band.Name(), NameOf(tool), behindText,
                       ahead ? ahead->Name() : std::string()};
    // The latest move comes last, as each is reported against what the earlier ones left.
    std::erase_if(m_places, [&](const PlaceChange& old) {
        const bool isIts =
            old.what != PlaceChange::What::Hidden && EqualText(old.band, band.Name()) && Find(old.entry) == master;
        if (isIts && old.what == PlaceChange::What::Added)
            change.what = PlaceChange::What::Added;
        return isIts;
    });
    m_places.push_back(std::move(change));
    Changed();
}

void PersonalBars::Add(const Band& band, const Tool& tool) {
    const auto now = AllOf(band);
    if (std::any_of(now.begin(), now.end(), [&](const auto& old) { return &old->Master() == &tool.Master(); })) {
        SetHidden(band, tool, false); // it is there already
        return;
    }
    const auto last = std::find_if(now.rbegin(), now.rend(), [](const auto& o) { return !IsSeparator(*o); });
    m_places.push_back(
        {PlaceChange::What::Added, band.Name(), NameOf(tool), last == now.rend() ? std::string() : (*last)->Name()});
    Changed();
}

void PersonalBars::RemoveAdded(const Band& band, const Tool& tool) {
    std::erase_if(m_places, [&](const PlaceChange& change) {
        return change.what == PlaceChange::What::Added && EqualText(change.band, band.Name()) &&
               Find(change.entry) == &tool.Master();
    });
    Changed();
}

bool PersonalBars::IsAdded(const Band& band, const Tool& tool) const {
    Settle();
    return std::any_of(m_settled.begin(), m_settled.end(), [&](const SettledPlace& place) {
        return place.change->what == PlaceChange::What::Added && place.tool == &tool.Master() &&
               EqualText(place.change->band, band.Name());
    });
}

bool PersonalBars::HasChanges(const Band& band) const {
    return std::any_of(m_places.begin(), m_places.end(),
                       [&](const PlaceChange& change) { return EqualText(change.band, band.Name()); });
}

void PersonalBars::ResetBand(const Band& band) {
    std::erase_if(m_places, [&](const PlaceChange& change) { return EqualText(change.band, band.Name()); });
    Changed();
}

void PersonalBars::ResetAllBands() {
    m_places.clear();
    Changed();
}

// An instance of the user's own, with the look of one that the definitions made.
Ref<Tool> PersonalBars::AddedInstance(const Band& band, const Tool& tool) const {
    Ref<Tool>& instance = m_added[band.Name()][&tool];
    if (instance)
        return instance;
    instance = New<Tool>(const_cast<Band*>(&band), Ref<Tool>(const_cast<Tool*>(&tool)));
    instance->SetCaption(OriginalCaption(tool).replace('&', "&&").toStdString());
    for (const Tool* other : tool.Instances()) {
        if (other == instance.Get())
            continue;
        if (instance->Description().empty())
            instance->SetDescription(other->Description());
        for (const Long state : {Tool::Normal, Tool::Pressed, Tool::Disabled})
            if (const Ref<Picture> picture = other->PictureOf(state))
                instance->SetPicture(state, picture);
    }
    const auto action = tool.TagVariant().TryAs<ActionItem>();
    const auto def = action ? action->ActionItemDef() : nullptr;
    const Ref<Framework> framework = Singleton::Framework();
    if (!instance->PictureOf(Tool::Normal) && def && !def->Image().empty() && framework)
        instance->SetPicture(Tool::Normal, framework->GetImage(def->Image()));
    return instance;
}

// The entries in the user's order, those that they hid too.
std::vector<Ref<Tool>> PersonalBars::AllOf(const Band& band) const {
    Settle();
    std::vector<Ref<Tool>> instances = band.Tools()->All();
    for (const SettledPlace& place : m_settled) {
        const PlaceChange& change = *place.change;
        if (change.what == PlaceChange::What::Hidden || !EqualText(change.band, band.Name()))
            continue;
        const auto old =
            std::find_if(instances.begin(), instances.end(), [&](const auto& o) { return &o->Master() == place.tool; });
        const bool isThere = old != instances.end();
        if (!isThere && change.what == PlaceChange::What::Moved)
            continue; // the files took it from this toolbar
        const auto ahead = change.ahead.empty() ? instances.end()
                                                : std::find_if(instances.begin(), instances.end(), [&](const auto& o) {
                                                      return EqualText(o->Name(), change.ahead);
                                                  });
        auto behind = ahead == instances.end() ? instances.begin() : ahead;
        if (ahead == instances.end() && !change.behind.empty()) {
            behind = std::find_if(instances.begin(), instances.end(),
                                  [&](const auto& o) { return EqualText(o->Name(), change.behind); });
            if (behind == instances.end() && isThere)
                continue; // what it was behind has gone, and it stays where the files put it
            if (behind != instances.end())
                ++behind;
        }
        if (!isThere) {
            instances.insert(behind, AddedInstance(band, *place.tool));
        } else if (old < behind) {
            std::rotate(old, old + 1, behind);
        } else {
            std::rotate(behind, old, old + 1);
        }
    }
    return instances;
}

std::vector<Ref<Tool>> PersonalBars::InstancesOf(const Band& band) const {
    Settle();
    if (m_settled.empty())
        return band.Tools()->All();
    std::vector<Ref<Tool>> instances = AllOf(band);
    const std::size_t all = instances.size();
    std::erase_if(instances, [&](const auto& instance) { return IsHidden(band, *instance); });
    if (instances.size() != all)
        DropIdleSeparators(instances);
    return instances;
}

std::vector<PersonalBars::Aside> PersonalBars::KeysAside() {
    std::vector<Aside> aside;
    for (const KeyChange& change : m_keys) {
        if (Find(change.entry))
            continue;
        QStringList keyList;
        for (const QKeySequence& keys : change.keys)
            keyList.append(keys.toString(QKeySequence::NativeText));
        aside.push_back({QString("%1 (%2): %3")
                             .arg(change.entry.caption, Text(change.entry.tool),
                                  keyList.isEmpty() ? QString("–") : keyList.join(", ")),
                         [this, tool = change.entry.tool] {
                             std::erase_if(m_keys, [&](const KeyChange& o) { return o.entry.tool == tool; });
                             Changed();
                         }});
    }
    return aside;
}

std::vector<PersonalBars::Aside> PersonalBars::PlacesAside() {
    std::vector<Aside> aside;
    for (const PlaceChange& change : m_places)
        if (!Find(change.entry) || !m_activeBar->Bands()->Find(change.band))
            aside.push_back(
                {QString("%1 (%2): %3, %4")
                     .arg(change.entry.caption, Text(change.entry.tool),
                          QLatin1String(whatWords[static_cast<std::size_t>(change.what)]), Text(change.band)),
                 [this, tool = change.entry.tool, band = change.band] {
                     std::erase_if(m_places,
                                   [&](const PlaceChange& o) { return o.entry.tool == tool && o.band == band; });
                     Changed();
                 }});
    return aside;
}

} // namespace corvane::desktop
