#include "cli/check/Model.h"

#include "adapters/common/Nearest.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <deque>
#include <tuple>
#include <unordered_map>

namespace corvane::check {

namespace {

// An element as the library's records read it. What was found to be bad counts as absent.
class ElementNode final : public IXmlNode {
public:
    // From then on it is that element; texts of the one before are no longer valid.
    void Show(const Element& oElement) {
        m_pElement = &oElement;
        m_nTexts = 0;
    }

    std::optional<std::string> Attribute(std::string_view sName) const override {
        const auto* pAttribute = m_pElement->Find(sName);
        return pAttribute && !pAttribute->bBad ? std::optional<std::string>(pAttribute->sValue) : std::nullopt;
    }
    const char* AttributeText(std::string_view sName) const override {
        const auto* pAttribute = m_pElement->Find(sName);
        if (!pAttribute || pAttribute->bBad)
            return nullptr;
        if (m_nTexts == m_aTexts.size())
            m_aTexts.emplace_back();
        return m_aTexts[m_nTexts++].assign(pAttribute->sValue).c_str();
    }
    void SetAttribute(std::string_view /*sName*/, std::string_view /*sValue*/) override {}
    std::vector<Ref<IXmlNode>> SelectNodes(std::string_view /*sXPath*/) const override { return {}; }
    Ref<IXmlNode> SelectSingleNode(std::string_view /*sXPath*/) const override { return nullptr; }
    Long Line() const override { return m_pElement->oAt.lLine; }

private:
    const Element* m_pElement = nullptr;
    mutable std::deque<std::string> m_aTexts; // the first m_nTexts have been handed out
    mutable std::size_t m_nTexts = 0;
};

template <class Act>
void ForEach(const Element& oParent, std::string_view sGroup, std::string_view sName, Act fnAct) {
    for (const Element& oGroup : oParent.aChildren)
        if (oGroup.sName == sGroup)
            for (const Element& oElement : oGroup.aChildren)
                if (oElement.sName == sName)
                    fnAct(oElement);
}

// Whether the records can be made of it: no word is missing that has no default.
bool IsUsable(const Element& oElement, std::initializer_list<std::string_view> aNeeded) {
    return std::all_of(aNeeded.begin(), aNeeded.end(), [&](std::string_view sName) {
        const Attribute* pAttribute = oElement.Find(sName);
        return pAttribute && !pAttribute->bBad;
    });
}

class Builder {
public:
    Builder(Model& oModel, Report& oReport) : m_oModel(oModel), m_oReport(oReport) {}

    void AddFile(const File& oFile) {
        const Element& oRoot = *oFile.oRoot;
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
    struct Where {
        const File* pFile;
        Position oAt;
    };
    using Actions = std::unordered_map<std::string_view, Action*, TextHash, TextEqual>;
    using Places = std::unordered_map<std::string, Where, TextHash, TextEqual>;

    void AddWindow(const File& oFile, const Element& oElement) {
        Window& oWindow = m_oModel.aWindows.emplace_back();
        oWindow.pFile = &oFile;
        oWindow.pElement = &oElement;
        oWindow.sName = oElement.Value("Name");
        Register(m_mapWindows, "window", oWindow.sName, oFile, oElement);
        Places mapPages;
        for (const Element& oPageElement : oElement.aChildren) {
            if (oPageElement.sName != "Page")
                continue;
            Provider& oPage = m_oModel.aPages.emplace_back();
            Fill(oPage, ProviderKind::Page, oFile, oPageElement, oPageElement.Value("Caption"),
                 oPageElement.Value("PageProgID"));
            oWindow.aPages.push_back(&oPage);
            Register(mapPages, "page", oPage.sProgID + "." + oPage.sName, oFile, oPageElement, "PageProgID",
                     "give it another Caption");
        }
    }

    void Fill(Provider& oProvider, ProviderKind eKind, const File& oFile, const Element& oElement,
              std::string_view sName, std::string_view sProgID) {
        oProvider.eKind = eKind;
        oProvider.pFile = &oFile;
        oProvider.pElement = &oElement;
        oProvider.sName = sName;
        oProvider.sProgID = sProgID;
        Actions mapByName;
        ForEach(oElement, "ActionItems", "ActionItem", [&](const Element& oActionElement) {
            const std::string_view sAction = oActionElement.Value("Name");
            const auto [it, bNew] = mapByName.try_emplace(sAction, nullptr);
            if (!bNew)
                return ReportDuplicate("action", sAction, oFile.At(oActionElement.At("Name")),
                                       oFile.At(it->second->pElement->At("Name")), "give one of them another name");
            auto oDef = New<ActionItemDef>();
            oDef->Initialize(Shown(oActionElement));
            oProvider.aActions.push_back({&oActionElement, &oProvider, oDef, m_oModel.nActions++});
            it->second = &oProvider.aActions.back();
        });
        Places mapEntries;
        ForEach(oElement, "Menus", "MenuItem",
                [&](const Element& oEntryElement) { AddEntry(oProvider, oEntryElement, mapByName, mapEntries); });
    }

    void AddEntry(Provider& oProvider, const Element& oElement, const Actions& mapActions, Places& mapEntries) {
        const Attribute* pName = oElement.Find("ActionItem");
        const auto itAction = pName ? mapActions.find(pName->sValue) : mapActions.end();
        Action* pAction = itAction != mapActions.end() ? itAction->second : nullptr;
        if (pName && !pAction)
            ReportUnknownAction(oProvider, *pName);
        if (!pAction || !IsUsable(oElement, {"Type", "PositionOrder"}))
            return;
        auto oDef = New<MenuItemDef>();
        oDef->Initialize(Shown(oElement));
        oDef->SetActionItemDef(pAction->oDef);
        const std::string sKey = oDef->Key();
        // Services have no keys of their own for their entries.
        if (oProvider.eKind != ProviderKind::Service && !Register(mapEntries, "entry", sKey, *oProvider.pFile, oElement,
                                                                  "ActionItem", "remove it, or give it another Path"))
            return;
        oProvider.aEntries.push_back({&oElement, &oProvider, pAction, oDef, sKey, m_oModel.nEntries++});
    }

    void ReportUnknownAction(const Provider& oProvider, const Attribute& oName) {
        std::vector<std::string> aNames;
        for (const Action& oAction : oProvider.aActions)
            aNames.push_back(oAction.oDef->Name());
        m_oReport.Add(Rule::UnknownAction, oProvider.pFile->At(oName.oValue),
                      oProvider.Named() + " has no action " + Quoted(oName.sValue),
                      WriteInstead(aNames, oName.sValue, "define it there as an ActionItem"));
    }

    // False for a name that is there already.
    bool Register(Places& mapPlaces, std::string_view sKind, const std::string& sName, const File& oFile,
                  const Element& oElement, std::string_view sAttribute = "Name",
                  std::string_view sCure = "give one of them another name") {
        const auto [it, bNew] = mapPlaces.try_emplace(sName, Where{&oFile, oElement.At(sAttribute)});
        if (!bNew)
            ReportDuplicate(sKind, sName, oFile.At(oElement.At(sAttribute)), it->second.pFile->At(it->second.oAt),
                            sCure);
        return bNew;
    }

    // What has no name at all has a finding of its own.
    void ReportDuplicate(std::string_view sKind, std::string_view sName, Place oPlace, Place oFirst,
                         std::string_view sCure) {
        if (!sName.empty())
            m_oReport.Add(Rule::DuplicateName, std::move(oPlace),
                          "there is a " + std::string(sKind) + " " + Quoted(sName) + " already", std::string(sCure),
                          {{std::move(oFirst), "the first one"}});
    }

    [[nodiscard]] const Ref<ElementNode>& Shown(const Element& oElement) {
        m_oNode->Show(oElement);
        return m_oNode;
    }

    Model& m_oModel;
    Report& m_oReport;
    Ref<ElementNode> m_oNode = New<ElementNode>();
    Places m_mapServices;
    Places m_mapItems;
    Places m_mapWindows;
};

} // namespace

std::vector<Finding> Report::Sorted() const {
    std::vector<Finding> aFindings = m_aFindings;
    const auto Key = [](const Finding& o) { return std::tie(o.oPlace.sFile, o.oPlace.oAt, o.eRule, o.sText); };
    std::stable_sort(aFindings.begin(), aFindings.end(),
                     [&](const Finding& a, const Finding& b) { return Key(a) < Key(b); });
    aFindings.erase(std::unique(aFindings.begin(), aFindings.end(),
                                [&](const Finding& a, const Finding& b) { return Key(a) == Key(b); }),
                    aFindings.end());
    return aFindings;
}

Place Entry::At(std::string_view sAttribute) const {
    return pProvider->pFile->At(pElement->At(sAttribute));
}

std::string Entry::Named() const {
    const bool bTitle = oDef->MenuType() == MenuType::fwMenuTitle || oDef->MenuType() == MenuType::fwContextMenuTitle;
    const bool bButton = oDef->MenuType() == MenuType::fwToolbarItem;
    return (bTitle ? "the title " : bButton ? "the button " : "the entry ") + Quoted(sKey);
}

Action* Provider::FindAction(std::string_view sAction) {
    for (Action& oAction : aActions)
        if (EqualText(oAction.oDef->Name(), sAction))
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
    const Attribute* pAttribute = oElement.Find(sAttribute);
    return pAttribute && !pAttribute->bBad ? ToBoolean(Variant(pAttribute->sValue)) : bDefault;
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
