#include "analysis/MenuPlan.h"

#include <algorithm>

namespace corvane::check {

namespace {

constexpr const char* mainBar = "Main";
constexpr const char* toolbarsMenu = "View.Toolbars";
constexpr Double titleWeight = 1000000;
constexpr Double undefinedTitle = 500;

std::optional<Long> InRange(Double rank) {
    try {
        return RoundToLong(rank);
    } catch (const Failure&) {
        return std::nullopt;
    }
}

Double Order(const Entry& entry) {
    return static_cast<Double>(entry.positionOrder);
}

Double Hundredfold(const Entry& entry) {
    return static_cast<Double>(entry.positionOrder * 100.0F);
}

std::string_view NameOf(const Tool* tool) {
    return tool->name;
}

} // namespace

MenuPlan::MenuPlan(Model& model)
    : m_placings(&model.memory), m_byEntry(&model.memory), m_lost(&model.memory), m_byAction(&model.memory),
      m_menu(&model.memory), m_allTools(&model.memory) {
    for (const char* name : {"StatusBar", "Explorer", mainBar})
        AddBar(name, nullptr).ofHost = true;
    for (const char* name : {"Separator", "WindowList"})
        AddTool(name);
    m_placings.reserve(model.entries);
    m_byEntry.resize(model.entries);
    m_lost.resize(model.actions);
    m_byAction.resize(model.actions);
    m_menu.reserve(model.entries);
    ReadTitles(model);
    for (Provider* provider : model.MenuProviders())
        for (const Entry& entry : provider->entries) {
            if (entry.IsOfContextMenu())
                continue;
            Placing& placing = m_placings.emplace_back();
            placing.entry = &entry;
            m_byEntry[entry.number] = &placing;
            if (entry.IsButton())
                ShareButton(placing);
            else
                Rank(placing);
        }
    ShareRanks();
    Build();
}

void MenuPlan::ReadTitles(Model& model) {
    for (Provider* provider : model.MenuProviders())
        for (const Entry& entry : provider->entries) {
            if (!entry.IsTitle())
                continue;
            // A page's title on the menu bar joins one that is there; below another title it doesn't.
            if (provider->kind == ProviderKind::Page && m_titles.contains(entry.action->name))
                continue;
            const auto [it, isNew] = m_titles.emplace(entry.key, &entry);
            if (!isNew)
                m_doubleTitles.push_back({it->second, &entry});
        }
}

void MenuPlan::Rank(Placing& placing) {
    const Entry& entry = *placing.entry;
    if (entry.IsTitle() && entry.path.empty()) {
        placing.rank = InRange(Order(entry));
    } else {
        const bool samePath = m_lastRanked && m_lastRanked->entry->path == entry.path;
        placing.title = samePath ? m_lastRanked->title : TitleOf(entry.path);
        const Double title = placing.title ? Order(*placing.title) : undefinedTitle;
        placing.rank = InRange(title * titleWeight + Hundredfold(entry));
        m_lastRanked = &placing;
    }
    if (placing.rank)
        m_menu.push_back(&placing);
}

void MenuPlan::Share(Placing& placing, const Placing& owner) {
    placing.owner = owner.entry;
    m_shared.push_back(&placing);
}

void MenuPlan::ShareButton(Placing& placing) {
    const auto [it, isNew] = m_buttons.emplace(placing.entry->PositionKey(), &placing);
    if (!isNew)
        Share(placing, *it->second);
}

// The first of a rank that was read has it.
void MenuPlan::ShareRanks() {
    // Placings are in the order of reading.
    std::sort(m_menu.begin(), m_menu.end(),
              [](const Placing* a, const Placing* b) { return *a->rank != *b->rank ? *a->rank < *b->rank : a < b; });
    const Placing* owner = nullptr;
    std::erase_if(m_menu, [&](Placing* placing) {
        const bool shares = owner && *owner->rank == *placing->rank;
        if (shares)
            Share(*placing, *owner);
        else
            owner = placing;
        return shares;
    });
    std::sort(m_shared.begin(), m_shared.end());
    for (const Placing* placing : m_shared)
        if (const Placing*& lost = m_lost[placing->entry->action->number]; !lost && !placing->entry->IsButton())
            lost = placing;
}

void MenuPlan::Build() {
    for (Placing* placing : m_menu)
        PlaceMenu(*placing);
    for (Placing* placing : m_shared) {
        if (placing->entry->IsButton())
            PlaceButton(*placing);
        else
            PlaceMenu(*placing);
    }
    for (const auto& [text, placing] : m_buttons)
        PlaceButton(*placing);
    if (Bar* windows = Find("Window"))
        windows->slots.emplace_back(FindTool("WindowList"));
}

Bar& MenuPlan::AddBar(std::string_view name, const Entry* asking) {
    Bar& bar = m_bars[std::string(name)];
    bar.name = name;
    bar.firstAsked = asking;
    return bar;
}

Bar* MenuPlan::Find(std::string_view name) {
    if (m_lastBar && m_lastBar->name == name)
        return m_lastBar;
    const auto it = m_bars.find(name);
    if (it == m_bars.end())
        return nullptr;
    m_lastBar = &it->second;
    return m_lastBar;
}

const Bar* MenuPlan::FindBar(std::string_view name) const {
    const auto it = m_bars.find(name);
    return it == m_bars.end() ? nullptr : &it->second;
}

const Entry* MenuPlan::TitleOf(std::string_view path) const {
    const auto it = m_titles.find(path);
    return it == m_titles.end() ? nullptr : it->second;
}

const Placing* MenuPlan::PlacingOf(const Entry& entry) const {
    return m_byEntry[entry.number];
}

const Placing* MenuPlan::LostPlaceOf(const Action& action) const {
    return m_lost[action.number];
}

const Tool* MenuPlan::FindTool(std::string_view name) const {
    const Tool* const* tool = m_tools.Find(name, NameOf);
    return tool ? *tool : nullptr;
}

Slot* MenuPlan::SlotOf(Bar& bar, const Tool* tool) {
    const auto it =
        std::find_if(bar.slots.begin(), bar.slots.end(), [&](const Slot& slot) { return slot.tool == tool; });
    return it == bar.slots.end() ? nullptr : &*it;
}

// The tool of that name, which is a new one if there is none. The name stays as long as the model does.
const Tool* MenuPlan::AddTool(std::string_view name) {
    const Tool* newTool = &m_allTools.emplace_back(Tool{name, m_allTools.size(), nullptr});
    const Tool* const* tool = m_tools.AddOrFind(name, newTool, NameOf);
    if (!tool)
        return newTool;
    m_allTools.pop_back();
    return *tool;
}

// Where entries of a path are: a placeholder when no title is there. Nothing when the start would stop.
Bar* MenuPlan::EntryBar(std::string_view path, const Placing& placing) {
    if (Bar* bar = Find(path))
        return bar;
    const std::size_t point = path.find('.');
    Bar* root = Find(point == std::string_view::npos ? mainBar : path.substr(0, point));
    const bool hasTool = FindTool(path) != nullptr;
    if (!root && !hasTool)
        return nullptr;
    if (!hasTool)
        root->slots.emplace_back(AddTool(path));
    return &AddBar(path, placing.entry);
}

Bar* MenuPlan::ParentBar(std::string_view path, const Placing& placing) {
    return path.empty() ? Find(mainBar) : EntryBar(path, placing);
}

// The tool that the action has already, or that of its key, or a new one.
void MenuPlan::NameTool(Placing& placing) {
    const Entry& entry = *placing.entry;
    const Tool*& tool = m_byAction[entry.action->number];
    if (!ToolOf(*entry.action)) {
        const std::size_t before = m_allTools.size();
        tool = AddTool(entry.key);
        if (m_allTools.size() > before)
            m_allTools.back().maker = &entry;
    }
    placing.tool = tool;
    placing.reserved = EqualText(tool->name, "Separator") || EqualText(tool->name, "WindowList");
}

void MenuPlan::PlaceMenu(Placing& placing) {
    NameTool(placing);
    if (placing.entry->IsTitle()) {
        PlaceTitle(placing);
    } else if (Bar* bar = EntryBar(placing.entry->path, placing)) {
        PlaceEntry(placing, *bar);
    } else {
        placing.withoutRoot = true;
    }
}

void MenuPlan::PlaceEntry(Placing& placing, Bar& bar) {
    if (!LostPlaceOf(*placing.entry->action)) {
        bar.slots.emplace_back(placing.tool, placing.entry);
        placing.bar = &bar;
    } else if (Slot* slot = SlotOf(bar, placing.tool)) {
        slot->entries.push_back(placing.entry);
        placing.bar = &bar;
    }
}

void MenuPlan::PlaceTitle(Placing& placing) {
    const Entry& entry = *placing.entry;
    Bar* own = Find(entry.key);
    const bool adopts = own != nullptr;
    if (adopts && own->ofHost) {
        placing.reserved = true;
        return;
    }
    if (!adopts)
        own = &AddBar(entry.key, nullptr);
    Bar* parent = ParentBar(entry.path, placing);
    if (!parent) {
        placing.withoutRoot = true;
        return;
    }
    if (!own->title)
        own->title = &entry;
    Slot* slot = adopts ? SlotOf(*parent, placing.tool) : nullptr;
    if (adopts && !slot) {
        placing.otherTool = true;
        return;
    }
    if (slot)
        slot->entries.push_back(&entry);
    else
        parent->slots.emplace_back(placing.tool, &entry);
    placing.bar = parent;
}

void MenuPlan::PlaceButton(Placing& placing) {
    NameTool(placing);
    std::string barName = "Toolbars.";
    barName += placing.entry->path;
    if (!Find(barName)) {
        if (!Find(toolbarsMenu)) {
            // The list of toolbars, for which a menu View is made when there is none.
            const Tool* tool = AddTool(toolbarsMenu);
            AddBar(toolbarsMenu, placing.entry);
            if (Bar* view = EntryBar("View", placing))
                view->slots.emplace_back(tool);
        }
        Find(toolbarsMenu)->slots.emplace_back(AddTool(m_names.emplace_back(barName)));
        AddBar(barName, placing.entry);
    }
    Bar& bar = *Find(barName);
    bar.slots.emplace_back(placing.tool, placing.entry);
    placing.bar = &bar;
}

std::optional<Long> ContextRank(const Entry& entry) {
    return InRange(entry.type == MenuType::fwContextMenuTitle ? Order(entry) : Hundredfold(entry));
}

} // namespace corvane::check
