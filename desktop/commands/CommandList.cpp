#include "desktop/commands/CommandList.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/platform/controls/BarText.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/service/HeldShell.h"
#include "desktop/style/QtText.h"
#include "desktop/translation/ShownText.h"

#include <QCoreApplication>

namespace corvane::desktop {

namespace {

constexpr const char* arrow = " › ";
constexpr std::string_view context = "Context.";
constexpr int deepest = 20; // menus that open one another in a ring end somewhere

struct Commands {
    Q_DECLARE_TR_FUNCTIONS(Commands)
};

bool OpensBand(const Tool& tool) {
    if (!tool.DropDownBand().empty())
        return true;
    for (const Tool* instance : tool.Instances())
        if (!instance->DropDownBand().empty())
            return true;
    return false;
}

// Of the tool itself, or of the first instance that has one.
template <class CaptionFunction>
QString CaptionWith(const Tool& tool, const CaptionFunction& captionFunction) {
    QString caption = captionFunction(tool);
    for (const Tool* instance : tool.Instances())
        if (caption.isEmpty())
            caption = captionFunction(*instance);
    if (caption.isEmpty())
        return Text(tool.Name()).section('.', -1);
    return Text(WithoutMnemonic(caption.toStdString()));
}

// "a data set" for items of the definition "DataSet"; a folder, of which there is one, by its name.
QString KindText(const std::string& item) {
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (manager && manager->ExplorerItemDefs()->HasKey(item)) {
        const auto definition = manager->ExplorerItemDefs()->Item(item);
        if (definition->ExplorerItemType() == ExplorerItemType::fwExplorerItemFolder)
            return Commands::tr("“%1”").arg(Text(definition->DisplayName().empty() ? item : definition->DisplayName()));
    }
    QString name;
    for (const QChar c : Text(item)) {
        if (c.isUpper() && !name.isEmpty() && !name.back().isUpper() && !name.back().isSpace())
            name += ' ';
        name += c == '_' ? QChar(' ') : c;
    }
    QStringList words = name.split(' ', Qt::SkipEmptyParts);
    for (QString& word : words)
        if (word.size() < 2 || !word[1].isUpper()) // an abbreviation stays one
            word = word.toLower();
    name = words.join(' ');
    const bool beginsWithVowel = !name.isEmpty() && QString("aeiou").contains(name.front(), Qt::CaseInsensitive);
    return (beginsWithVowel ? Commands::tr("an %1", "kind of item in the explorer")
                            : Commands::tr("a %1", "kind of item in the explorer"))
        .arg(name);
}

} // namespace

QString PlainCaption(const Tool& tool) {
    return CaptionWith(tool, [](const Tool& instance) { return ShownCaption(instance); });
}

QString OriginalCaption(const Tool& tool) {
    return CaptionWith(tool, [](const Tool& instance) { return Text(instance.Caption()); });
}

QString Owner::Text() const {
    switch (kind) {
    case Kind::Service:
        return desktop::Text(service);
    case Kind::ExplorerItem:
        return Commands::tr("%1 (%2 in the explorer)").arg(desktop::Text(service), desktop::Text(item));
    case Kind::Page:
        return Commands::tr("page %1 of the window %2").arg(desktop::Text(item), desktop::Text(window));
    case Kind::Host:
        break;
    }
    return Commands::tr("the window itself"); // its users don't know the host by a name
}

// Of those that could provide it beside a service: an item that is chosen, or a window that is in front.
QString CommandEntry::WhatFirst() const {
    const auto action = Action();
    const bool isWaiting = !action || (owner.kind == Owner::Kind::Service && !tool->Enabled() && !action->Enabled());
    if (!isWaiting)
        return {};
    QStringList kinds;
    QStringList windows;
    for (const Placement& placement : placements)
        if (placement.owner.kind == Owner::Kind::ExplorerItem)
            kinds.append(KindText(placement.owner.item));
        else if (placement.owner.kind == Owner::Kind::Page)
            windows.append(Commands::tr("“%1”").arg(Text(placement.owner.window)));
    kinds.removeDuplicates();
    windows.removeDuplicates();
    if (!kinds.isEmpty())
        return Commands::tr("Choose %1 in the explorer first").arg(kinds.join(Commands::tr(" or ")));
    return windows.isEmpty()
               ? QString()
               : Commands::tr("Bring the window %1 to the front first").arg(windows.join(Commands::tr(" or ")));
}

QString CommandEntry::WhyNot() const {
    const auto action = Action();
    if (QString first = WhatFirst(); !first.isEmpty())
        return first;
    if (!action)
        return Commands::tr("no active item or window provides it");
    // A provider's own state may differ from the tool's: it takes effect when the provider becomes active.
    const QString notActive = Commands::tr("%1 isn't active");
    if (!tool->Visible())
        return (action->Visible() ? notActive : Commands::tr("hidden by %1")).arg(owner.Text());
    if (!tool->Enabled())
        return (action->Enabled() ? notActive : Commands::tr("disabled by %1")).arg(owner.Text());
    if (action->Action().empty())
        return Commands::tr("%1 has no procedure for it").arg(owner.Text());
    return {};
}

CommandList::CommandList(const ActiveBar& activeBar) {
    ReadPlacements();
    ReadPaths(activeBar);
    for (const auto& tool : activeBar.Tools()->All()) {
        if (IsHostTool(*tool) || OpensBand(*tool))
            continue;
        m_commandMap.emplace(tool.Get(), m_commands.size());
        m_commands.push_back(
            {tool, PlainCaption(*tool), OriginalCaption(*tool), PathOf(*tool), PlacementsOf(*tool), OwnerOf(*tool)});
    }
}

void CommandList::ReadPlacements() {
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (!manager)
        return;
    for (const auto& serviceDef : manager->ServiceDefs()) {
        Add(serviceDef->ActionItemDefs(), serviceDef->MenuItemDefs(),
            {Owner::Kind::Service, serviceDef->Name(), {}, {}});
        for (const auto& itemDef : serviceDef->ExplorerItemDefs())
            Add(itemDef->ActionItemDefs(), itemDef->MenuItemDefs(),
                {Owner::Kind::ExplorerItem, serviceDef->Name(), itemDef->Name(), {}});
    }
    for (const auto& windowDef : manager->WindowDefs())
        for (const auto& pageDef : windowDef->PageDefs())
            Add(pageDef->ActionItemDefs(), pageDef->MenuItemDefs(),
                {Owner::Kind::Page, {}, pageDef->Caption(), windowDef->Name()});
}

void CommandList::Add(const Ref<ActionItemDefCollection>& actionItemDefs,
                      const Ref<MenuItemDefCollection>& menuItemDefs, const Owner& owner) {
    for (const auto& actionItemDef : actionItemDefs)
        m_owners.emplace(actionItemDef.Get(), owner);
    for (const auto& menuItemDef : menuItemDefs)
        if (const auto& actionItemDef = menuItemDef->ActionItemDef(); actionItemDef && actionItemDef->Tool())
            m_placements[actionItemDef->Tool().Get()].push_back({menuItemDef, owner});
}

Owner CommandList::OwnerOf(const Tool& tool) const {
    const auto action = tool.TagVariant().TryAs<ActionItem>();
    const auto it = action ? m_owners.find(action->ActionItemDef().Get()) : m_owners.end();
    if (it != m_owners.end())
        return it->second;
    const auto& placements = PlacementsOf(tool);
    return placements.empty() ? Owner() : placements.front().owner;
}

void CommandList::ReadPaths(const ActiveBar& activeBar) {
    for (const auto& band : activeBar.Bands()->All()) {
        for (const auto& instance : band->Tools()->All())
            if (!instance->DropDownBand().empty())
                m_openers.try_emplace(
                    std::string(instance->DropDownBand()),
                    Opener{band->Kind() == BandKind::MenuBar ? std::string() : band->Name(), PlainCaption(*instance)});
        if (band->Kind() == BandKind::Toolbar)
            m_openers.try_emplace(band->Name(), Opener{{}, Commands::tr("Toolbar %1").arg(ShownCaption(*band))});
    }
}

QString CommandList::BandPath(const std::string& band, int depth) const {
    const auto it = m_openers.find(band);
    if (it == m_openers.end()) {
        if (EqualText(std::string_view(band).substr(0, context.size()), context))
            return Commands::tr("Explorer") + arrow + Text(std::string_view(band).substr(context.size()));
        return {};
    }
    if (it->second.band.empty() || depth == deepest)
        return it->second.caption;
    const QString above = BandPath(it->second.band, depth + 1);
    return above.isEmpty() ? it->second.caption : above + arrow + it->second.caption;
}

// Of several places the first in a menu.
QString CommandList::PathOf(const Tool& tool) const {
    QString path;
    for (const Tool* instance : tool.Instances()) {
        const Band* band = instance->OwningBand();
        if (!band || (!path.isEmpty() && band->Kind() == BandKind::Toolbar))
            continue;
        path = BandPath(band->Name(), 0);
        if (band->Kind() != BandKind::Toolbar && !path.isEmpty())
            break;
    }
    return path;
}

const CommandEntry* CommandList::Find(const Tool& tool) const {
    const auto it = m_commandMap.find(&tool.Master());
    return it == m_commandMap.end() ? nullptr : &m_commands[it->second];
}

const std::vector<Placement>& CommandList::PlacementsOf(const Tool& tool) const {
    static const std::vector<Placement> none;
    const auto it = m_placements.find(&tool.Master());
    return it == m_placements.end() ? none : it->second;
}

} // namespace corvane::desktop
