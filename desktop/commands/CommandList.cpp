#include "desktop/commands/CommandList.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/platform/controls/BarText.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/translation/ShownText.h"

#include <QCoreApplication>
#include <array>

namespace corvane::desktop {

namespace {

constexpr const char* sArrow = " › ";
constexpr std::string_view sContext = "Context.";
constexpr int nDeepest = 20; // menus that open one another in a ring end somewhere

QString Text(std::string_view sText) {
    return QString::fromUtf8(sText.data(), static_cast<qsizetype>(sText.size()));
}

struct Commands {
    Q_DECLARE_TR_FUNCTIONS(Commands)
};

bool IsHostTool(const Tool& oTool) {
    static constexpr std::array aNames{"Separator", "WindowList", "Status", "ctlProgressBar", "ExplorerPanel"};
    return std::any_of(aNames.begin(), aNames.end(), [&](const char* s) { return EqualText(oTool.Name(), s); });
}

bool OpensBand(const Tool& oTool) {
    if (!oTool.DropDownBand().empty())
        return true;
    for (const Tool* pInstance : oTool.Instances())
        if (!pInstance->DropDownBand().empty())
            return true;
    return false;
}

// Of the tool itself, or of the first instance that has one.
template <class CaptionFunction>
QString CaptionWith(const Tool& oTool, const CaptionFunction& fnCaption) {
    QString sCaption = fnCaption(oTool);
    for (const Tool* pInstance : oTool.Instances())
        if (sCaption.isEmpty())
            sCaption = fnCaption(*pInstance);
    if (sCaption.isEmpty())
        return Text(oTool.Name()).section('.', -1);
    return Text(WithoutMnemonic(sCaption.toStdString()));
}

} // namespace

QString PlainCaption(const Tool& oTool) {
    return CaptionWith(oTool, [](const Tool& oInstance) { return ShownCaption(oInstance); });
}

QString OriginalCaption(const Tool& oTool) {
    return CaptionWith(oTool, [](const Tool& oInstance) { return Text(oInstance.Caption()); });
}

QString Owner::Text() const {
    switch (eKind) {
    case Kind::Service:
        return desktop::Text(sService);
    case Kind::ExplorerItem:
        return Commands::tr("%1 (%2 in the explorer)").arg(desktop::Text(sService), desktop::Text(sItem));
    case Kind::Page:
        return Commands::tr("page %1 of the window %2").arg(desktop::Text(sItem), desktop::Text(sWindow));
    case Kind::Host:
        break;
    }
    return "Corvane";
}

QString CommandEntry::WhyNot() const {
    const auto oAction = Action();
    if (!oAction) {
        QStringList aWanted;
        for (const Placement& oPlacement : aPlacements)
            if (oPlacement.oOwner.eKind == Owner::Kind::ExplorerItem)
                aWanted.append(Commands::tr("select an item “%1” in the explorer").arg(Text(oPlacement.oOwner.sItem)));
            else if (oPlacement.oOwner.eKind == Owner::Kind::Page)
                aWanted.append(Commands::tr("bring the window “%1” to the front").arg(Text(oPlacement.oOwner.sWindow)));
        aWanted.removeDuplicates();
        return aWanted.isEmpty() ? Commands::tr("no active item or window provides it")
                                 : Commands::tr("first %1").arg(aWanted.join(Commands::tr(" or ")));
    }
    // A provider's own state may differ from the tool's: it takes effect when the provider becomes active.
    const QString sNotActive = Commands::tr("%1 isn't active");
    if (!oTool->Visible())
        return (oAction->Visible() ? sNotActive : Commands::tr("hidden by %1")).arg(oOwner.Text());
    if (!oTool->Enabled())
        return (oAction->Enabled() ? sNotActive : Commands::tr("disabled by %1")).arg(oOwner.Text());
    if (oAction->Action().empty())
        return Commands::tr("%1 has no procedure for it").arg(oOwner.Text());
    return {};
}

CommandList::CommandList(const ActiveBar& oActiveBar) {
    ReadPlacements();
    ReadPaths(oActiveBar);
    for (const auto& oTool : oActiveBar.Tools()->All()) {
        if (IsHostTool(*oTool) || OpensBand(*oTool))
            continue;
        m_mapCommands.emplace(oTool.Get(), m_aCommands.size());
        m_aCommands.push_back({oTool, PlainCaption(*oTool), OriginalCaption(*oTool), PathOf(*oTool),
                               PlacementsOf(*oTool), OwnerOf(*oTool)});
    }
}

void CommandList::ReadPlacements() {
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    if (!oManager)
        return;
    for (const auto& oServiceDef : oManager->ServiceDefs()) {
        Add(oServiceDef->ActionItemDefs(), oServiceDef->MenuItemDefs(),
            {Owner::Kind::Service, oServiceDef->Name(), {}, {}});
        for (const auto& oItemDef : oServiceDef->ExplorerItemDefs())
            Add(oItemDef->ActionItemDefs(), oItemDef->MenuItemDefs(),
                {Owner::Kind::ExplorerItem, oServiceDef->Name(), oItemDef->Name(), {}});
    }
    for (const auto& oWindowDef : oManager->WindowDefs())
        for (const auto& oPageDef : oWindowDef->PageDefs())
            Add(oPageDef->ActionItemDefs(), oPageDef->MenuItemDefs(),
                {Owner::Kind::Page, {}, oPageDef->Caption(), oWindowDef->Name()});
}

void CommandList::Add(const Ref<ActionItemDefCollection>& colActionItemDefs,
                      const Ref<MenuItemDefCollection>& colMenuItemDefs, const Owner& oOwner) {
    for (const auto& oActionItemDef : colActionItemDefs)
        m_mapOwners.emplace(oActionItemDef.Get(), oOwner);
    for (const auto& oMenuItemDef : colMenuItemDefs)
        if (const auto& oActionItemDef = oMenuItemDef->ActionItemDef(); oActionItemDef && oActionItemDef->Tool())
            m_mapPlacements[oActionItemDef->Tool().Get()].push_back({oMenuItemDef, oOwner});
}

Owner CommandList::OwnerOf(const Tool& oTool) const {
    const auto oAction = oTool.TagVariant().TryAs<ActionItem>();
    const auto it = oAction ? m_mapOwners.find(oAction->ActionItemDef().Get()) : m_mapOwners.end();
    if (it != m_mapOwners.end())
        return it->second;
    const auto& aPlacements = PlacementsOf(oTool);
    return aPlacements.empty() ? Owner() : aPlacements.front().oOwner;
}

void CommandList::ReadPaths(const ActiveBar& oActiveBar) {
    for (const auto& oBand : oActiveBar.Bands()->All()) {
        for (const auto& oInstance : oBand->Tools()->All())
            if (!oInstance->DropDownBand().empty())
                m_mapOpeners.try_emplace(std::string(oInstance->DropDownBand()),
                                         Opener{oBand->Kind() == BandKind::MenuBar ? std::string() : oBand->Name(),
                                                PlainCaption(*oInstance)});
        if (oBand->Kind() == BandKind::Toolbar)
            m_mapOpeners.try_emplace(oBand->Name(), Opener{{}, Commands::tr("Toolbar %1").arg(ShownCaption(*oBand))});
    }
}

QString CommandList::BandPath(const std::string& sBand, int nDepth) const {
    const auto it = m_mapOpeners.find(sBand);
    if (it == m_mapOpeners.end()) {
        if (EqualText(std::string_view(sBand).substr(0, sContext.size()), sContext))
            return Commands::tr("Explorer") + sArrow + Text(std::string_view(sBand).substr(sContext.size()));
        return {};
    }
    if (it->second.sBand.empty() || nDepth == nDeepest)
        return it->second.sCaption;
    const QString sAbove = BandPath(it->second.sBand, nDepth + 1);
    return sAbove.isEmpty() ? it->second.sCaption : sAbove + sArrow + it->second.sCaption;
}

// Of several places the first in a menu.
QString CommandList::PathOf(const Tool& oTool) const {
    QString sPath;
    for (const Tool* pInstance : oTool.Instances()) {
        const Band* pBand = pInstance->OwningBand();
        if (!pBand || (!sPath.isEmpty() && pBand->Kind() == BandKind::Toolbar))
            continue;
        sPath = BandPath(pBand->Name(), 0);
        if (pBand->Kind() != BandKind::Toolbar && !sPath.isEmpty())
            break;
    }
    return sPath;
}

const CommandEntry* CommandList::Find(const Tool& oTool) const {
    const auto it = m_mapCommands.find(&oTool.Master());
    return it == m_mapCommands.end() ? nullptr : &m_aCommands[it->second];
}

const std::vector<Placement>& CommandList::PlacementsOf(const Tool& oTool) const {
    static const std::vector<Placement> aNone;
    const auto it = m_mapPlacements.find(&oTool.Master());
    return it == m_mapPlacements.end() ? aNone : it->second;
}

} // namespace corvane::desktop
