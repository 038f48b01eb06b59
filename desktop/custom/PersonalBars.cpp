#include "desktop/custom/PersonalBars.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"

#include <QJsonArray>
#include <algorithm>
#include <array>

namespace corvane::desktop {

namespace {

constexpr std::array<const char*, 3> aWhatWords{"hidden", "moved", "added"};

QString Text(const std::string& sText) {
    return QString::fromStdString(sText);
}

QJsonObject AsJson(const EntryName& oEntry) {
    return {{"entry", Text(oEntry.sTool)},
            {"service", Text(oEntry.sService)},
            {"action", Text(oEntry.sAction)},
            {"caption", oEntry.sCaption}};
}

EntryName EntryIn(const QJsonObject& oJson) {
    return {oJson["entry"].toString().toStdString(), oJson["service"].toString().toStdString(),
            oJson["action"].toString().toStdString(), oJson["caption"].toString()};
}

bool IsSeparator(const Tool& oTool) {
    return EqualText(oTool.Name(), "Separator");
}

// Calls back for each entry of a service or of its explorer items that has a tool.
template <class VISIT>
void VisitEntries(VISIT fnVisit) {
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    if (!oManager)
        return;
    for (const auto& oServiceDef : oManager->ServiceDefs()) {
        const auto fnEach = [&](const Ref<MenuItemDefCollection>& colMenuItemDefs) {
            for (const auto& oDef : colMenuItemDefs)
                if (oDef->ActionItemDef() && oDef->ActionItemDef()->Tool())
                    fnVisit(oServiceDef->Name(), oDef->ActionItemDef()->Name(), *oDef->ActionItemDef()->Tool());
        };
        fnEach(oServiceDef->MenuItemDefs());
        for (const auto& oItemDef : oServiceDef->ExplorerItemDefs())
            fnEach(oItemDef->MenuItemDefs());
    }
}

// Separators at the ends and behind one another part nothing.
void DropIdleSeparators(std::vector<Ref<Tool>>& aInstances) {
    std::vector<Ref<Tool>> aKept;
    for (auto& oInstance : aInstances)
        if (!IsSeparator(*oInstance) || (!aKept.empty() && !IsSeparator(*aKept.back())))
            aKept.push_back(std::move(oInstance));
    if (!aKept.empty() && IsSeparator(*aKept.back()))
        aKept.pop_back();
    aInstances = std::move(aKept);
}

} // namespace

PersonalBars::PersonalBars(StateFile oFile, Ref<ActiveBar> oActiveBar, std::function<void()> fnChanged)
    : m_oFile(std::move(oFile)), m_oActiveBar(std::move(oActiveBar)), m_fnChanged(std::move(fnChanged)) {
    Read();
}

PersonalBars::~PersonalBars() = default;

void PersonalBars::Read() {
    const QJsonObject oRead = m_oFile.Read();
    for (const auto& oValue : oRead["keys"].toArray()) {
        const QJsonObject oJson = oValue.toObject();
        KeyChange oChange{EntryIn(oJson), {}};
        for (const auto& oKeys : oJson["keys"].toArray())
            if (const auto oSequence = QKeySequence::fromString(oKeys.toString(), QKeySequence::PortableText);
                oSequence.count() == 1)
                oChange.aKeys.append(oSequence);
        if (!oChange.oEntry.sTool.empty())
            m_aKeys.push_back(std::move(oChange));
    }
    for (const auto& oValue : oRead["places"].toArray()) {
        const QJsonObject oJson = oValue.toObject();
        const auto it = std::find(aWhatWords.begin(), aWhatWords.end(), oJson["change"].toString());
        if (it == aWhatWords.end() || oJson["entry"].toString().isEmpty())
            continue;
        m_aPlaces.push_back({static_cast<PlaceChange::What>(it - aWhatWords.begin()),
                             oJson["band"].toString().toStdString(), EntryIn(oJson),
                             oJson["behind"].toString().toStdString()});
    }
}

void PersonalBars::Changed() {
    m_bSettled = false;
    QJsonArray aKeys;
    for (const KeyChange& oChange : m_aKeys) {
        QJsonArray aSequences;
        for (const QKeySequence& oSequence : oChange.aKeys)
            aSequences.append(oSequence.toString(QKeySequence::PortableText));
        QJsonObject oJson = AsJson(oChange.oEntry);
        oJson["keys"] = aSequences;
        aKeys.append(oJson);
    }
    QJsonArray aPlaces;
    for (const PlaceChange& oChange : m_aPlaces) {
        QJsonObject oJson = AsJson(oChange.oEntry);
        oJson["band"] = Text(oChange.sBand);
        oJson["change"] = aWhatWords[static_cast<std::size_t>(oChange.eWhat)];
        if (oChange.eWhat != PlaceChange::What::Hidden)
            oJson["behind"] = Text(oChange.sBehind);
        aPlaces.append(oJson);
    }
    m_oFile.Write({{"version", 1}, {"keys", aKeys}, {"places", aPlaces}});
    m_fnChanged();
}

EntryName PersonalBars::NameOf(const Tool& oTool) const {
    EntryName oEntry{oTool.Name(), {}, {}, OriginalCaption(oTool.Master())};
    VisitEntries([&](const std::string& sService, const std::string& sAction, const Tool& oOther) {
        if (&oOther == &oTool.Master() && oEntry.sService.empty()) {
            oEntry.sService = sService;
            oEntry.sAction = sAction;
        }
    });
    return oEntry;
}

const Tool* PersonalBars::Find(const EntryName& oEntry) const {
    if (const Ref<Tool> oTool = m_oActiveBar->Tools()->Find(oEntry.sTool))
        return oTool.Get();
    std::unordered_set<const Tool*> setFound;
    if (!oEntry.sService.empty())
        VisitEntries([&](const std::string& sService, const std::string& sAction, const Tool& oTool) {
            if (EqualText(sService, oEntry.sService) && EqualText(sAction, oEntry.sAction))
                setFound.insert(&oTool);
        });
    return setFound.size() == 1 ? *setFound.begin() : nullptr;
}

void PersonalBars::Settle() const {
    if (m_bSettled)
        return;
    if (!m_oBarChanged)
        m_oBarChanged = m_oActiveBar->Changed.Subscribe([this](const BarChange& oChange) {
            if (oChange.eWhat == BarChange::What::BandTools || oChange.eWhat == BarChange::What::BandAdded)
                m_bSettled = false;
        });
    m_bSettled = true;
    m_mapKeys.clear();
    m_aSettled.clear();
    for (const KeyChange& oChange : m_aKeys)
        if (const Tool* pTool = Find(oChange.oEntry))
            m_mapKeys.emplace(pTool, &oChange);
    for (const PlaceChange& oChange : m_aPlaces)
        if (const Tool* pTool = Find(oChange.oEntry))
            m_aSettled.push_back({&oChange, pTool, !EqualText(pTool->Name(), oChange.oEntry.sTool)});
}

QList<QKeySequence> PersonalBars::KeysOf(const Tool& oTool) const {
    Settle();
    const auto it = m_mapKeys.find(&oTool.Master());
    return it == m_mapKeys.end() ? BarChanges::KeysOf(oTool) : it->second->aKeys;
}

bool PersonalBars::HasOwnKeys(const Tool& oTool) const {
    Settle();
    return m_mapKeys.contains(&oTool.Master());
}

void PersonalBars::SetKeys(const Tool& oTool, const QList<QKeySequence>& aKeys) {
    const Tool* pMaster = &oTool.Master();
    std::erase_if(m_aKeys, [&](const KeyChange& oChange) { return Find(oChange.oEntry) == pMaster; });
    if (aKeys != BarChanges::KeysOf(oTool))
        m_aKeys.push_back({NameOf(oTool), aKeys});
    Changed();
}

void PersonalBars::ResetKeys(const Tool& oTool) {
    SetKeys(oTool, BarChanges::KeysOf(oTool));
}

void PersonalBars::ResetAllKeys() {
    m_aKeys.clear();
    Changed();
}

bool PersonalBars::IsHidden(const Band& oBand, const Tool& oTool) const {
    Settle();
    return std::any_of(m_aSettled.begin(), m_aSettled.end(), [&](const SettledPlace& oPlace) {
        return oPlace.pChange->eWhat == PlaceChange::What::Hidden && oPlace.pTool == &oTool.Master() &&
               (oPlace.bMovedByFiles || EqualText(oPlace.pChange->sBand, oBand.Name()));
    });
}

void PersonalBars::SetHidden(const Band& oBand, const Tool& oTool, bool bHidden) {
    const Tool* pMaster = &oTool.Master();
    std::erase_if(m_aPlaces, [&](const PlaceChange& oChange) {
        return oChange.eWhat == PlaceChange::What::Hidden && Find(oChange.oEntry) == pMaster &&
               (EqualText(oChange.sBand, oBand.Name()) || !EqualText(oChange.oEntry.sTool, pMaster->Name()));
    });
    if (bHidden)
        m_aPlaces.push_back({PlaceChange::What::Hidden, oBand.Name(), NameOf(oTool), {}});
    Changed();
}

void PersonalBars::Move(const Band& oBand, const Tool& oTool, const Tool* pBehind) {
    const std::string sBehind = pBehind ? pBehind->Name() : std::string();
    const Tool* pMaster = &oTool.Master();
    PlaceChange oChange{PlaceChange::What::Moved, oBand.Name(), NameOf(oTool), sBehind};
    // The latest move comes last, as each is told against what the earlier ones left.
    std::erase_if(m_aPlaces, [&](const PlaceChange& oOld) {
        const bool bIsIts = oOld.eWhat != PlaceChange::What::Hidden && EqualText(oOld.sBand, oBand.Name()) &&
                            Find(oOld.oEntry) == pMaster;
        if (bIsIts && oOld.eWhat == PlaceChange::What::Added)
            oChange.eWhat = PlaceChange::What::Added;
        return bIsIts;
    });
    m_aPlaces.push_back(std::move(oChange));
    Changed();
}

void PersonalBars::Add(const Band& oBand, const Tool& oTool) {
    const auto aNow = AllOf(oBand);
    if (std::any_of(aNow.begin(), aNow.end(), [&](const auto& oOld) { return &oOld->Master() == &oTool.Master(); })) {
        SetHidden(oBand, oTool, false); // it is there already
        return;
    }
    const auto itLast = std::find_if(aNow.rbegin(), aNow.rend(), [](const auto& o) { return !IsSeparator(*o); });
    m_aPlaces.push_back({PlaceChange::What::Added, oBand.Name(), NameOf(oTool),
                         itLast == aNow.rend() ? std::string() : (*itLast)->Name()});
    Changed();
}

void PersonalBars::RemoveAdded(const Band& oBand, const Tool& oTool) {
    std::erase_if(m_aPlaces, [&](const PlaceChange& oChange) {
        return oChange.eWhat == PlaceChange::What::Added && EqualText(oChange.sBand, oBand.Name()) &&
               Find(oChange.oEntry) == &oTool.Master();
    });
    Changed();
}

bool PersonalBars::IsAdded(const Band& oBand, const Tool& oTool) const {
    Settle();
    return std::any_of(m_aSettled.begin(), m_aSettled.end(), [&](const SettledPlace& oPlace) {
        return oPlace.pChange->eWhat == PlaceChange::What::Added && oPlace.pTool == &oTool.Master() &&
               EqualText(oPlace.pChange->sBand, oBand.Name());
    });
}

bool PersonalBars::HasChanges(const Band& oBand) const {
    return std::any_of(m_aPlaces.begin(), m_aPlaces.end(),
                       [&](const PlaceChange& oChange) { return EqualText(oChange.sBand, oBand.Name()); });
}

void PersonalBars::ResetBand(const Band& oBand) {
    std::erase_if(m_aPlaces, [&](const PlaceChange& oChange) { return EqualText(oChange.sBand, oBand.Name()); });
    Changed();
}

void PersonalBars::ResetAllBands() {
    m_aPlaces.clear();
    Changed();
}

// An instance of the person's own, with the look of one that the definitions made.
Ref<Tool> PersonalBars::AddedInstance(const Band& oBand, const Tool& oTool) const {
    Ref<Tool>& oInstance = m_mapAdded[oBand.Name()][&oTool];
    if (oInstance)
        return oInstance;
    oInstance = New<Tool>(const_cast<Band*>(&oBand), Ref<Tool>(const_cast<Tool*>(&oTool)));
    oInstance->SetCaption(OriginalCaption(oTool).replace('&', "&&").toStdString());
    for (const Tool* pOther : oTool.Instances()) {
        if (pOther == oInstance.Get())
            continue;
        if (oInstance->Description().empty())
            oInstance->SetDescription(pOther->Description());
        for (const Long lState : {Tool::Normal, Tool::Pressed, Tool::Disabled})
            if (const Ref<Picture> oPicture = pOther->PictureOf(lState))
                oInstance->SetPicture(lState, oPicture);
    }
    const auto oAction = oTool.TagVariant().TryAs<ActionItem>();
    const auto oDef = oAction ? oAction->ActionItemDef() : nullptr;
    const Ref<Framework> oFramework = Singleton::Framework();
    if (!oInstance->PictureOf(Tool::Normal) && oDef && !oDef->Image().empty() && oFramework)
        oInstance->SetPicture(Tool::Normal, oFramework->GetImage(oDef->Image()));
    return oInstance;
}

// The entries in the person's order, those that they hid too.
std::vector<Ref<Tool>> PersonalBars::AllOf(const Band& oBand) const {
    Settle();
    std::vector<Ref<Tool>> aInstances = oBand.Tools()->All();
    if (oBand.Kind() != BandKind::Toolbar)
        return aInstances;
    for (const SettledPlace& oPlace : m_aSettled) {
        const PlaceChange& oChange = *oPlace.pChange;
        if (oChange.eWhat == PlaceChange::What::Hidden || !EqualText(oChange.sBand, oBand.Name()))
            continue;
        const auto itOld = std::find_if(aInstances.begin(), aInstances.end(),
                                        [&](const auto& o) { return &o->Master() == oPlace.pTool; });
        const bool bIsThere = itOld != aInstances.end();
        if (!bIsThere && oChange.eWhat == PlaceChange::What::Moved)
            continue; // the files took it from this toolbar
        auto itBehind = aInstances.begin();
        if (!oChange.sBehind.empty()) {
            itBehind = std::find_if(aInstances.begin(), aInstances.end(),
                                    [&](const auto& o) { return EqualText(o->Name(), oChange.sBehind); });
            if (itBehind == aInstances.end() && bIsThere)
                continue; // what it stood behind has gone, and it stays where the files put it
            if (itBehind != aInstances.end())
                ++itBehind;
        }
        if (!bIsThere) {
            aInstances.insert(itBehind, AddedInstance(oBand, *oPlace.pTool));
        } else if (itOld < itBehind) {
            std::rotate(itOld, itOld + 1, itBehind);
        } else {
            std::rotate(itBehind, itOld, itOld + 1);
        }
    }
    return aInstances;
}

std::vector<Ref<Tool>> PersonalBars::InstancesOf(const Band& oBand) const {
    Settle();
    if (m_aSettled.empty())
        return oBand.Tools()->All();
    std::vector<Ref<Tool>> aInstances = AllOf(oBand);
    const std::size_t nAll = aInstances.size();
    std::erase_if(aInstances, [&](const auto& oInstance) { return IsHidden(oBand, *oInstance); });
    if (aInstances.size() != nAll)
        DropIdleSeparators(aInstances);
    return aInstances;
}

std::vector<PersonalBars::Aside> PersonalBars::KeysAside() {
    std::vector<Aside> aAside;
    for (const KeyChange& oChange : m_aKeys) {
        if (Find(oChange.oEntry))
            continue;
        QStringList aKeys;
        for (const QKeySequence& oKeys : oChange.aKeys)
            aKeys.append(oKeys.toString(QKeySequence::NativeText));
        aAside.push_back({QString("%1 (%2): %3")
                              .arg(oChange.oEntry.sCaption, Text(oChange.oEntry.sTool),
                                   aKeys.isEmpty() ? QString("–") : aKeys.join(", ")),
                          [this, sTool = oChange.oEntry.sTool] {
                              std::erase_if(m_aKeys, [&](const KeyChange& o) { return o.oEntry.sTool == sTool; });
                              Changed();
                          }});
    }
    return aAside;
}

std::vector<PersonalBars::Aside> PersonalBars::PlacesAside() {
    std::vector<Aside> aAside;
    for (const PlaceChange& oChange : m_aPlaces)
        if (!Find(oChange.oEntry) || !m_oActiveBar->Bands()->Find(oChange.sBand))
            aAside.push_back(
                {QString("%1 (%2): %3, %4")
                     .arg(oChange.oEntry.sCaption, Text(oChange.oEntry.sTool),
                          QLatin1String(aWhatWords[static_cast<std::size_t>(oChange.eWhat)]), Text(oChange.sBand)),
                 [this, sTool = oChange.oEntry.sTool, sBand = oChange.sBand] {
                     std::erase_if(m_aPlaces,
                                   [&](const PlaceChange& o) { return o.oEntry.sTool == sTool && o.sBand == sBand; });
                     Changed();
                 }});
    return aAside;
}

} // namespace corvane::desktop
