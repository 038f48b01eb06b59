#include "corvane/menus/MenuSection.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"

#include <algorithm>
#include <map>

namespace corvane {

namespace {

// Nothing while there is no application.
Ref<MenuManager> Menus() {
    const Ref<Framework> oFramework = CorvaneMain::Framework();
    const Ref<NavigationManager> oNavigation = oFramework ? oFramework->NavigationManager() : nullptr;
    return oNavigation ? oNavigation->MenuManager() : nullptr;
}

// The position of an instance in its menu; -1 when it isn't there any more.
Long PositionOf(const BandTools& oTools, const Ref<Tool>& oInstance) {
    const auto& aTools = oTools.All();
    const auto it = std::find(aTools.begin(), aTools.end(), oInstance);
    return it == aTools.end() ? -1 : static_cast<Long>(it - aTools.begin());
}

void TakeOut(BandTools& oTools, const Ref<Tool>& oInstance) {
    if (const Long lPosition = PositionOf(oTools, oInstance); lPosition >= 0)
        oTools.Remove(lPosition);
}

} // namespace

// Whose procedure the entries call: it finds the function of the entry that was chosen.
class MenuSection::Provider final : public Automation<Provider, IActionsProvider> {
public:
    explicit Provider(Object& oOwner) : m_pOwner(&oOwner) {}

    void Choose(const Ref<ActionItem>& oActionItem) {
        const auto it = m_mapChosen.find(oActionItem->Name());
        if (it == m_mapChosen.end())
            return;
        const std::function<void()> fnChosen = it->second; // it may fill the section again
        const Ref<Object> oOwner(m_pOwner);
        const Entering oEntering(oOwner);
        try {
            fnChosen();
        } catch (...) {
            RaiseFrom(CorvaneMain::PlaceOf(oOwner, oActionItem->Name()));
        }
    }
    void Set(const std::string& sName, std::function<void()> fnChosen) { m_mapChosen[sName] = std::move(fnChosen); }
    void Forget() {
        m_mapChosen.clear();
        m_colActionItems = New<ActionItemCollection>();
    }

    void Initialize(const Ref<ActionItemCollection>& oActionItems) override { m_colActionItems = oActionItems; }
    Ref<ActionItemCollection> ActionItems() const override { return m_colActionItems; }
    std::string_view TypeName() const override { return "MenuSection"; }

    static constexpr auto Members = MemberTable(Method("Choose", &Provider::Choose));

private:
    Object* m_pOwner;
    std::map<std::string, std::function<void()>> m_mapChosen; // by the names of the entries' actions
    Ref<ActionItemCollection> m_colActionItems = New<ActionItemCollection>();
};

MenuSection::MenuSection(Object& oOwner, std::string sPath, std::string sName, std::string sBehind, bool bSeparated)
    : m_oProvider(New<Provider>(oOwner)), m_sPath(std::move(sPath)), m_sName(std::move(sName)),
      m_sBehind(std::move(sBehind)), m_bSeparated(bSeparated) {}

MenuSection::~MenuSection() {
    try {
        Clear();
    } catch (...) {
        m_oProvider->Forget();
    }
}

Ref<BandTools> MenuSection::Tools() const {
    const Ref<MenuManager> oMenus = Menus();
    const Ref<Band> oBand = oMenus ? oMenus->ActiveBar()->Bands()->Find(m_sPath) : nullptr;
    return oBand ? oBand->Tools() : nullptr;
}

// Where the next entry stands; -1 for the menu's end.
Long MenuSection::NextPosition(const BandTools& oTools) const {
    const Ref<Tool> oLast = m_aEntries.empty() ? m_oSeparator : m_aEntries.back();
    const Ref<Tool> oBefore = oLast || m_sBehind.empty() ? oLast : oTools.Find(m_sPath + "." + m_sBehind);
    const Long lBefore = oBefore ? PositionOf(oTools, oBefore) : -1;
    return lBefore < 0 ? -1 : lBefore + 1;
}

Ref<ActionItem> MenuSection::Add(const std::string& sCaption, std::function<void()> fnChosen) {
    const Ref<MenuManager> oMenus = Menus();
    const std::string sName = m_sName + std::to_string(Count() + 1);
    oMenus->AddMenu(m_oProvider, m_oProvider, sName, m_sPath, 0, MenuType::fwMenuItem, sCaption, "Choose", true);
    Ref<ActionItem> oActionItem = m_oProvider->ActionItems()->Item(sName);
    m_oProvider->Set(sName, std::move(fnChosen));

    // The entry has been added at the menu's end and goes to its place from there.
    const Ref<BandTools> oTools = Tools();
    const Ref<Tool> oMaster(&oTools->Item(oTools->Count() - 1)->Master());
    oTools->Remove(oTools->Count() - 1);
    if (m_bSeparated && !m_oSeparator)
        m_oSeparator = oTools->Insert(NextPosition(*oTools), oMenus->ActiveBar()->Tools()->Item("Separator"));
    m_aEntries.push_back(oTools->Insert(NextPosition(*oTools), oMaster));
    m_aEntries.back()->SetCaption(sCaption);

    auto colActionItemDefs = New<ActionItemDefCollection>();
    colActionItemDefs->Add(oActionItem->ActionItemDef(), sName);
    oMenus->OnActionsProviderActive(m_oProvider, m_oProvider, colActionItemDefs);
    return oActionItem;
}

void MenuSection::Clear() {
    const Ref<MenuManager> oMenus = Menus();
    const Ref<BandTools> oTools = Tools();
    for (const Ref<Tool>& oInstance : std::exchange(m_aEntries, {})) {
        oInstance->SetVisible(false);
        oInstance->SetTagVariant(nullptr);
        if (oTools)
            TakeOut(*oTools, oInstance);
    }
    if (const Ref<Tool> oSeparator = std::exchange(m_oSeparator, nullptr); oSeparator && oTools)
        TakeOut(*oTools, oSeparator);
    m_oProvider->Forget();
    if (oMenus && oTools)
        oMenus->Refresh();
}

std::string MenuSection::Verbatim(const std::string& sText) {
    std::string sCaption;
    for (const char c : sText)
        sCaption.append(c == '&' ? 2 : 1, c);
    return sCaption;
}

} // namespace corvane
