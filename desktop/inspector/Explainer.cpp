#include "desktop/inspector/Explainer.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"

#include <QCoreApplication>

namespace corvane::desktop {

namespace {

QString Text(std::string_view sText) {
    return QString::fromUtf8(sText.data(), static_cast<qsizetype>(sText.size()));
}

struct Inspector {
    Q_DECLARE_TR_FUNCTIONS(Inspector)
};

QString YesNo(bool bYes) {
    return bYes ? Inspector::tr("yes") : Inspector::tr("no");
}

// The band in which an entry of a definition stands.
std::string BandOf(const Placement& oPlacement) {
    const MenuItemDef& oDef = *oPlacement.oMenuItemDef;
    switch (oDef.MenuType()) {
    case MenuType::fwToolbarItem:
        return "Toolbars." + oDef.Path();
    case MenuType::fwContextMenuItem:
    case MenuType::fwContextMenuTitle:
        return "Context." + oPlacement.oOwner.sItem + (oDef.Path().empty() ? "" : "." + oDef.Path());
    default:
        return oDef.Path();
    }
}

QString PositionOf(const Placement& oPlacement) {
    const MenuItemDef& oDef = *oPlacement.oMenuItemDef;
    return QString("%1 (%2)").arg(Text(ToText(oDef.PositionOrder())), Text(oDef.PositionKey()));
}

Ref<ServiceManager> Services() {
    const Ref<Framework> oFramework = Singleton::Framework();
    return oFramework ? oFramework->ServiceManager() : nullptr;
}

} // namespace

QString TextOf(const Facts& aFacts) {
    QString sText;
    for (const auto& [sName, sValue] : aFacts)
        sText += sName + ": " + sValue + "\n";
    return sText;
}

void ExplorerItemNotes::Follow() {
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oNavigation = oFramework ? oFramework->NavigationManager() : nullptr;
    const auto oExplorer = oNavigation ? oNavigation->ExplorerManager() : nullptr;
    if (!oExplorer)
        return;
    m_oAdd = oExplorer->onAdd.Subscribe([this](const Ref<Object>& oItem) {
        if (const auto oDef = CorvaneMain::QueryExplorerItem(oItem)->ExplorerItemDef())
            m_mapNotes[ToText(oItem->ObjectKey())] = {oDef->Name(), std::string(oItem->TypeName())};
    });
}

const ExplorerItemNotes::Note* ExplorerItemNotes::Find(const Node& oNode) const {
    const auto it = m_mapNotes.find(oNode.Tag());
    return it == m_mapNotes.end() ? nullptr : &it->second;
}

Explainer::Explainer(Ref<ActiveBar> oActiveBar, const DefinitionPlaces& oPlaces, const PersonalBars& oBars,
                     const ExplorerItemNotes& oNotes)
    : m_oActiveBar(std::move(oActiveBar)), m_oPlaces(oPlaces), m_oBars(oBars), m_oNotes(oNotes),
      m_oCommands(*m_oActiveBar) {}

DefinitionPlaces Explainer::ReadPlaces() {
    return {*CurrentPlatform().oFileSystem, CurrentPlatform().oUtilities->GetAppFolder("Services")};
}

const Placement* Explainer::PlacementIn(const Tool& oInstance) const {
    const auto& aPlacements = m_oCommands.PlacementsOf(oInstance);
    const Band* pBand = oInstance.OwningBand();
    if (!pBand)
        return aPlacements.empty() ? nullptr : &aPlacements.front();
    for (const Placement& oPlacement : aPlacements)
        if (EqualText(BandOf(oPlacement), pBand->Name()) ||
            (BandOf(oPlacement).empty() && pBand->Kind() == BandKind::MenuBar))
            return &oPlacement;
    return nullptr;
}

QString Explainer::PlaceOf(const Tool& oInstance) const {
    const Placement* pPlacement = PlacementIn(oInstance);
    return pPlacement ? m_oPlaces.Find(*pPlacement).Text() : QString();
}

void Explainer::AddPlaces(Facts& aFacts, const Tool& oInstance) const {
    const Placement* pHere = PlacementIn(oInstance);
    const Band* pBand = oInstance.OwningBand();
    if (pHere) {
        const QString sPlace = m_oPlaces.Find(*pHere).Text();
        aFacts.emplace_back(Inspector::tr("Added by"),
                            sPlace.isEmpty() ? Inspector::tr("code of %1").arg(pHere->oOwner.Text())
                                             : Inspector::tr("%1, for %2").arg(sPlace, pHere->oOwner.Text()));
        aFacts.emplace_back(Inspector::tr("Position (position key)"), PositionOf(*pHere));
    } else if (pBand && m_oBars.IsAdded(*pBand, oInstance)) {
        aFacts.emplace_back(Inspector::tr("Added by"), Inspector::tr("you"));
    } else {
        const CommandEntry* pCommand = m_oCommands.Find(oInstance);
        const bool bByCode = pCommand && pCommand->oOwner.eKind != Owner::Kind::Host;
        aFacts.emplace_back(Inspector::tr("Added by"),
                            bByCode ? Inspector::tr("code of %1, at run time").arg(pCommand->oOwner.Text())
                                    : Inspector::tr("the library; not defined in a file"));
    }
    for (const Placement& oPlacement : m_oCommands.PlacementsOf(oInstance))
        if (&oPlacement != pHere)
            aFacts.emplace_back(
                Inspector::tr("Also defined by"),
                Inspector::tr("%1, for %2").arg(m_oPlaces.Find(oPlacement).Text(), oPlacement.oOwner.Text()));
}

void Explainer::AddState(Facts& aFacts, const Tool& oInstance) const {
    const CommandEntry* pCommand = m_oCommands.Find(oInstance);
    if (!pCommand) {
        aFacts.emplace_back(Inspector::tr("Visible"), YesNo(oInstance.Visible()));
        return;
    }
    const auto oAction = pCommand->Action();
    const QString sWhyNot = pCommand->WhyNot();
    if (oAction) {
        aFacts.emplace_back(Inspector::tr("Action"), Text(oAction->Name()));
        aFacts.emplace_back(Inspector::tr("Procedure"),
                            oAction->Action().empty() ? Inspector::tr("none") : Text(oAction->Action()));
        const auto oProvider = oAction->ActionsProviderObj();
        aFacts.emplace_back(Inspector::tr("Provider"),
                            oProvider ? Inspector::tr("%1, an object of the class %2")
                                            .arg(pCommand->oOwner.Text(), Text(oProvider->TypeName()))
                                      : Inspector::tr("none"));
    } else {
        aFacts.emplace_back(Inspector::tr("Provider"), Inspector::tr("none at present"));
    }
    const QString sOffers = Inspector::tr("as set by %1").arg(pCommand->oOwner.Text());
    const QString sShown = oInstance.Visible() ? (oAction ? sOffers : Inspector::tr("not hidden")) : sWhyNot;
    aFacts.emplace_back(Inspector::tr("Visible"), YesNo(oInstance.Visible()) + ": " + sShown);
    aFacts.emplace_back(Inspector::tr("Enabled"),
                        YesNo(sWhyNot.isEmpty()) + ": " + (sWhyNot.isEmpty() ? sOffers : sWhyNot));
    aFacts.emplace_back(Inspector::tr("Checked"), YesNo(oInstance.Checked()));
}

Facts Explainer::OfTool(const Tool& oInstance) const {
    Facts aFacts;
    const CommandEntry* pCommand = m_oCommands.Find(oInstance);
    QString sEntry = PlainCaption(oInstance);
    if (pCommand && !pCommand->sPath.isEmpty())
        sEntry = pCommand->sPath + " › " + sEntry;
    aFacts.emplace_back(Inspector::tr("Entry"), sEntry);
    if (const QString sOriginal = OriginalCaption(oInstance); sOriginal != PlainCaption(oInstance))
        aFacts.emplace_back(Inspector::tr("Translated from"), sOriginal);
    aFacts.emplace_back(Inspector::tr("Key"), Text(oInstance.Name()));
    if (const Band* pBand = oInstance.OwningBand())
        aFacts.emplace_back(Inspector::tr("Location"), Text(pBand->Name()));
    AddPlaces(aFacts, oInstance);
    AddState(aFacts, oInstance);
    const QString sKeys = m_oBars.KeysText(oInstance);
    const QString sWas = BarChanges::None().KeysText(oInstance);
    aFacts.emplace_back(Inspector::tr("Shortcut"), m_oBars.HasOwnKeys(oInstance)
                                                       ? Inspector::tr("%1, set by you instead of %2")
                                                             .arg(sKeys.isEmpty() ? Inspector::tr("none") : sKeys,
                                                                  sWas.isEmpty() ? Inspector::tr("none") : sWas)
                                                       : (sKeys.isEmpty() ? Inspector::tr("none") : sKeys));
    if (const Band* pBand = oInstance.OwningBand(); pBand && m_oBars.IsHidden(*pBand, oInstance))
        aFacts.emplace_back(Inspector::tr("Hidden"), Inspector::tr("by you, in this menu or toolbar"));
    if (!oInstance.DropDownBand().empty())
        aFacts.emplace_back(Inspector::tr("Opens"), Text(oInstance.DropDownBand()));
    return aFacts;
}

QString Explainer::PlaceOf(const Band& oBand) const {
    for (const auto& oOther : m_oActiveBar->Bands()->All())
        for (const auto& oInstance : oOther->Tools()->All())
            if (EqualText(oInstance->DropDownBand(), oBand.Name()))
                if (const QString sPlace = PlaceOf(*oInstance); !sPlace.isEmpty())
                    return sPlace;
    constexpr std::string_view sContext = "Context.";
    if (oBand.Name().starts_with(sContext))
        return m_oPlaces.FindExplorerItem(oBand.Name().substr(sContext.size())).Text();
    const auto aInstances = oBand.Tools()->All();
    return oBand.Kind() == BandKind::Toolbar && !aInstances.empty() ? PlaceOf(*aInstances.front()) : QString();
}

Facts Explainer::OfBand(const Band& oBand) const {
    Facts aFacts{{Inspector::tr("Key"), Text(oBand.Name())}, {Inspector::tr("Caption"), Text(oBand.Caption())}};
    const QString sPlace = PlaceOf(oBand);
    aFacts.emplace_back(Inspector::tr("Added by"),
                        sPlace.isEmpty() ? Inspector::tr("the library; not defined in a file") : sPlace);
    aFacts.emplace_back(Inspector::tr("Entries"), QString::number(oBand.Tools()->Count()));
    aFacts.emplace_back(Inspector::tr("Visible"), YesNo(oBand.Visible()));
    if (m_oBars.HasChanges(oBand))
        aFacts.emplace_back(Inspector::tr("Changed"), Inspector::tr("by you"));
    return aFacts;
}

Facts Explainer::OfNode(const Node& oNode) const {
    Facts aFacts{{Inspector::tr("Explorer item"), Text(oNode.Text())}, {Inspector::tr("Key"), Text(oNode.Key())}};
    const auto* pNote = m_oNotes.Find(oNode);
    if (!pNote)
        return aFacts;
    aFacts.emplace_back(Inspector::tr("Kind"), Text(pNote->sItem));
    aFacts.emplace_back(Inspector::tr("Added by"), m_oPlaces.FindExplorerItem(pNote->sItem).Text());
    const auto oManager = Services();
    if (oManager)
        for (const auto& oServiceDef : oManager->ServiceDefs())
            if (oServiceDef->ExplorerItemDefs()->HasKey(pNote->sItem))
                aFacts.emplace_back(Inspector::tr("Owner"), Text(oServiceDef->Name()));
    aFacts.emplace_back(Inspector::tr("Provider"), Inspector::tr("an object of the class %1").arg(Text(pNote->sClass)));
    return aFacts;
}

Facts Explainer::OfService(const std::string& sName) const {
    Facts aFacts{{Inspector::tr("Service"), Text(sName)},
                 {Inspector::tr("Defined in"), m_oPlaces.FindService(sName).Text()}};
    const auto oManager = Services();
    if (!oManager || !oManager->ServiceDefs()->HasKey(sName))
        return aFacts;
    const auto oDef = oManager->ServiceDefs()->Item(sName);
    const auto oService = oManager->Services()->HasKey(sName) ? oManager->Services()->Item(sName) : nullptr;
    aFacts.emplace_back(Inspector::tr("ProgID"), Text(oDef->ProgID()));
    aFacts.emplace_back(Inspector::tr("Object"), oService
                                                     ? Inspector::tr("of the class %1").arg(Text(oService->TypeName()))
                                                     : Inspector::tr("none"));
    aFacts.emplace_back(Inspector::tr("Active"), YesNo(oService && oManager->IsServiceAlive(oService)));
    aFacts.emplace_back(Inspector::tr("Starts the application"), YesNo(oDef->IsStartService()));
    aFacts.emplace_back(Inspector::tr("Actions"), QString::number(oDef->ActionItemDefs()->Count()));
    aFacts.emplace_back(Inspector::tr("Entries"), QString::number(oDef->MenuItemDefs()->Count()));
    aFacts.emplace_back(Inspector::tr("Explorer items"), QString::number(oDef->ExplorerItemDefs()->Count()));
    return aFacts;
}

Facts Explainer::OfWindow(const Window& oWindow) const {
    const auto oDef = oWindow.WindowDef();
    Facts aFacts{{Inspector::tr("Window"), Text(oWindow.Caption())},
                 {Inspector::tr("Name"), Text(oDef->Name())},
                 {Inspector::tr("Key"), Text(oWindow.Key())},
                 {Inspector::tr("Added by"), m_oPlaces.FindWindow(oDef->Name()).Text()},
                 {Inspector::tr("Modal"), YesNo(oWindow.IsModal())},
                 {Inspector::tr("Pages"), QString::number(oDef->PageDefs()->Count())}};
    return aFacts;
}

} // namespace corvane::desktop
