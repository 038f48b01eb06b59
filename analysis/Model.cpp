#include "analysis/Model.h"

#include "adapters/common/Nearest.h"
#include "corvane/base/TextIndex.h"

#include <algorithm>
#include <deque>
#include <tuple>
#include <unordered_map>

namespace corvane::check {

namespace {

template <class Act>
void ForEach(const Element& oParent, std::string_view sGroup, std::string_view sName, Act fnAct) {
    for (const Element& oGroup : oParent.Children())
        if (oGroup.sName == sGroup)
            for (const Element& oElement : oGroup.Children())
                if (oElement.sName == sName)
                    fnAct(oElement);
}

std::size_t CountOf(const Element& oParent, std::string_view sGroup, std::string_view sName) {
    std::size_t n = 0;
    ForEach(oParent, sGroup, sName, [&](const Element&) { ++n; });
    return n;
}

bool IsVowel(char c) {
    return std::string_view("aeiou").find(c) != std::string_view::npos;
}

// Nothing for a value that is missing or bad.
std::optional<std::string_view> GoodValue(const Element& oElement, std::string_view sAttribute) {
    const Attribute* pAttribute = oElement.Find(sAttribute);
    return pAttribute && !pAttribute->IsBad() ? std::optional(pAttribute->Value()) : std::nullopt;
}

class Builder {
public:
    Builder(Model& oModel, Report& oReport) : m_oModel(oModel), m_oReport(oReport) {}

    void AddFile(const File& oFile) {
        const Element& oRoot = *oFile.pRoot;
        Provider& oService = m_oModel.aServices.emplace_back();
        Fill(oService, ProviderKind::Service, oFile, oRoot, oRoot.Value("Name"), oRoot.Value("ProgID"));
        Register(m_mapServices, "service", oService.sName, oFile, oRoot);
        ForEach(oRoot, "ExplorerItems", "ExplorerItem", [&](const Element& oElement) {
            Provider& oItem = m_oModel.aItems.emplace_back();
            Fill(oItem, ProviderKind::ExplorerItem, oFile, oElement, oElement.Value("Name"), oElement.Value("ProgID"));
            Register(m_mapItems, "explorer item", oItem.sName, oFile, oElement);
        });
        ForEach(oRoot, "Windows", "Window", [&](const Element& oElement) { AddWindow(oFile, oElement); });
        ForEach(oRoot, "Preferences", "Page", [&](const Element& oElement) {
            Fill(m_oModel.aPreferencePages.emplace_back(), ProviderKind::PreferencePage, oFile, oElement,
                 oElement.Value("Caption"), oElement.Value("PageProgID"));
        });
    }

private:
    // What has a name, and the file in which it stands.
    struct Named {
        const File* pFile;
        const Element* pElement;
    };
    using Names = std::unordered_map<std::string_view, Named, TextHash, TextEqual>;

    void AddWindow(const File& oFile, const Element& oElement) {
        Window& oWindow = m_oModel.aWindows.emplace_back();
        oWindow.pFile = &oFile;
        oWindow.pElement = &oElement;
        oWindow.sName = oElement.Value("Name");
        Register(m_mapWindows, "window", oWindow.sName, oFile, oElement);
        Names mapPages;
        for (const Element& oPageElement : oElement.Children()) {
            if (oPageElement.sName != "Page")
                continue;
            Provider& oPage = m_oModel.aPages.emplace_back();
            Fill(oPage, ProviderKind::Page, oFile, oPageElement, oPageElement.Value("Caption"),
                 oPageElement.Value("PageProgID"));
            oWindow.aPages.push_back(&oPage);
            Register(mapPages, "page", Kept(m_oModel.oMemory, {oPage.sProgID, ".", oPage.sName}), oFile, oPageElement,
                     "PageProgID", "give it another Caption");
        }
    }

    void Fill(Provider& oProvider, ProviderKind eKind, const File& oFile, const Element& oElement,
              std::string_view sName, std::string_view sProgID) {
        oProvider.eKind = eKind;
        oProvider.pFile = &oFile;
        oProvider.pElement = &oElement;
        oProvider.sName = sName;
        oProvider.sProgID = sProgID;
        m_oActions = {};
        oProvider.aActions.reserve(CountOf(oElement, "ActionItems", "ActionItem"));
        ForEach(oElement, "ActionItems", "ActionItem",
                [&](const Element& oActionElement) { AddAction(oProvider, oActionElement); });
        m_mapEntries.clear();
        oProvider.aEntries.reserve(CountOf(oElement, "Menus", "MenuItem"));
        ForEach(oElement, "Menus", "MenuItem",
                [&](const Element& oEntryElement) { AddEntry(oProvider, oEntryElement); });
    }

    void AddAction(Provider& oProvider, const Element& oElement) {
        const std::string_view sName = oElement.Value("Name");
        Action* pAction = &oProvider.aActions.emplace_back(
            Action{&oElement, &oProvider, sName, oElement.Value("Action"), m_oModel.nActions});
        if (Action** ppFirst = m_oActions.AddOrFind(sName, pAction, NameOf)) {
            ReportDuplicate("action", sName, {oProvider.pFile, &oElement}, {oProvider.pFile, (*ppFirst)->pElement},
                            "Name", "give one of them another name");
            oProvider.aActions.pop_back();
        } else {
            ++m_oModel.nActions;
        }
    }

    void AddEntry(Provider& oProvider, const Element& oElement) {
        const Attribute* pName = oElement.Find("ActionItem");
        Action** ppAction = pName ? m_oActions.Find(pName->Value(), NameOf) : nullptr;
        if (pName && !ppAction)
            ReportUnknownAction(oProvider, *pName);
        const std::optional<std::string_view> oType = GoodValue(oElement, "Type");
        const std::optional<std::string_view> oOrder = GoodValue(oElement, "PositionOrder");
        if (!ppAction || !oType || !oOrder)
            return;
        Entry oEntry{&oElement,
                     &oProvider,
                     *ppAction,
                     MenuTypeOf(*oType).value(), // a bad word has gone
                     ToSingle(Variant(*oOrder)),
                     oElement.Value("Path"),
                     {},
                     m_oModel.nEntries};
        oEntry.sKey = KeyOf(oEntry);
        // Services have no keys of their own for their entries.
        if (oProvider.eKind != ProviderKind::Service &&
            !Register(m_mapEntries, "entry", oEntry.sKey, *oProvider.pFile, oElement, "ActionItem",
                      "remove it, or give it another Path"))
            return;
        oProvider.aEntries.push_back(oEntry);
        ++m_oModel.nEntries;
    }

    [[nodiscard]] std::string_view KeyOf(const Entry& oEntry) {
        const std::string_view sName = oEntry.pAction->sName;
        const std::string_view sMark = oEntry.IsButton() ? "Tool." : "";
        if (oEntry.sPath.empty() && sMark.empty())
            return sName;
        return Kept(m_oModel.oMemory, {sMark, oEntry.sPath, oEntry.sPath.empty() ? "" : ".", sName});
    }

    void ReportUnknownAction(const Provider& oProvider, const Attribute& oName) {
        std::vector<std::string> aNames;
        for (const Action& oAction : oProvider.aActions)
            aNames.emplace_back(oAction.sName);
        m_oReport.Add(Rule::UnknownAction, oProvider.pFile->At(oName.AtValue()),
                      oProvider.Named() + " has no action " + Quoted(oName.Value()),
                      WriteInstead(aNames, oName.Value(), "define it there as an ActionItem"));
    }

    // False for a name that is there already. The name stays as long as the model does.
    bool Register(Names& mapNames, std::string_view sKind, std::string_view sName, const File& oFile,
                  const Element& oElement, std::string_view sAttribute = "Name",
                  std::string_view sCure = "give one of them another name") {
        const Named oThis{&oFile, &oElement};
        const auto [it, bNew] = mapNames.try_emplace(sName, oThis);
        if (!bNew)
            ReportDuplicate(sKind, sName, oThis, it->second, sAttribute, sCure);
        return bNew;
    }

    // What has no name at all has a finding of its own.
    void ReportDuplicate(std::string_view sKind, std::string_view sName, const Named& oSecond, const Named& oFirst,
                         std::string_view sAttribute, std::string_view sCure) {
        const auto PlaceOf = [&](const Named& o) { return o.pFile->At(o.pElement->At(sAttribute)); };
        if (!sName.empty())
            m_oReport.Add(Rule::DuplicateName, PlaceOf(oSecond),
                          (IsVowel(sKind.front()) ? "there is an " : "there is a ") + std::string(sKind) + " " +
                              Quoted(sName) + " already",
                          std::string(sCure), {{PlaceOf(oFirst), "the first one"}});
    }

    static std::string_view NameOf(const Action* pAction) { return pAction->sName; }

    Model& m_oModel;
    Report& m_oReport;
    Names m_mapServices;
    Names m_mapItems;
    Names m_mapWindows;
    TextIndex<Action*> m_oActions; // of the provider at hand, as the next
    Names m_mapEntries;
};

} // namespace

std::vector<Finding> Report::TakeSorted() {
    std::vector<Finding> aFindings = std::move(m_aFindings);
    const auto Key = [](const Finding& o) { return std::tie(o.oPlace.sFile, o.oPlace.oAt, o.eRule, o.sText); };
    std::stable_sort(aFindings.begin(), aFindings.end(),
                     [&](const Finding& a, const Finding& b) { return Key(a) < Key(b); });
    aFindings.erase(std::unique(aFindings.begin(), aFindings.end(),
                                [&](const Finding& a, const Finding& b) { return Key(a) == Key(b); }),
                    aFindings.end());
    return aFindings;
}

bool Action::PassesItself() const {
    return BooleanOf(*pElement, "PassActionItemParam", false);
}

std::string Entry::PositionKey() const {
    const std::string sOrder = ToText(fPositionOrder);
    return IsTitle() || IsOfContextMenu() ? sOrder : std::string(sPath) + "." + sOrder;
}

Place Entry::At(std::string_view sAttribute) const {
    return pProvider->pFile->At(pElement->At(sAttribute));
}

std::string Entry::Named() const {
    const bool bTitle = IsTitle() || eType == MenuType::fwContextMenuTitle;
    return (bTitle ? "the title " : IsButton() ? "the button " : "the entry ") + Quoted(sKey);
}

Action* Provider::FindAction(std::string_view sAction) {
    for (Action& oAction : aActions)
        if (EqualText(oAction.sName, sAction))
            return &oAction;
    return nullptr;
}

std::string Provider::Named() const {
    switch (eKind) {
    case ProviderKind::Service:
        return "the service " + Quoted(sName);
    case ProviderKind::ExplorerItem:
        return "the explorer item " + Quoted(sName);
    case ProviderKind::Page:
    case ProviderKind::PreferencePage:
        break;
    }
    return "the page " + Quoted(sName.empty() ? sProgID : sName);
}

// Of all explorer items one is current, and of all pages one is in front.
bool Provider::MayMeet(const Provider& oOther) const {
    return this == &oOther || eKind == ProviderKind::Service || eKind != oOther.eKind;
}

std::vector<Provider*> Model::MenuProviders() {
    std::vector<Provider*> aProviders;
    for (auto* pProviders : {&aServices, &aItems, &aPages})
        for (Provider& oProvider : *pProviders)
            aProviders.push_back(&oProvider);
    return aProviders;
}

void BuildModel(Model& oModel, Report& oReport) {
    Builder oBuilder(oModel, oReport);
    for (const auto& pFile : oModel.aFiles)
        if (pFile->bActive)
            oBuilder.AddFile(*pFile);
}

bool BooleanOf(const Element& oElement, std::string_view sAttribute, bool bDefault) {
    const std::optional<std::string_view> oValue = GoodValue(oElement, sAttribute);
    return oValue ? ToBoolean(Variant(*oValue)) : bDefault;
}

std::string Quoted(std::string_view sText) {
    return "\"" + std::string(sText) + "\"";
}

std::string WriteInstead(std::span<const std::string> aNames, std::string_view sWritten,
                         const std::string& sOtherwise) {
    const auto oNearest = Nearest(aNames, sWritten);
    return oNearest ? "write " + Quoted(*oNearest) : sOtherwise;
}

} // namespace corvane::check
