#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Handlers.h"

namespace corvane {

namespace {

void ShowState(Tool& oTool, const ActionItem& oActionItem) {
    oTool.SetChecked(oActionItem.Checked());
    oTool.SetEnabled(oActionItem.Enabled());
    oTool.SetVisible(oActionItem.Visible());
}

template <class T>
void Prefetch(const Ref<T>& oObject) {
    constexpr std::size_t nLine = 64;
    const auto* pBytes = reinterpret_cast<const char*>(oObject.Get());
    if (!pBytes) // an action that is nowhere has no tool
        return;
    for (std::size_t n = 0; n < sizeof(T); n += nLine)
        __builtin_prefetch(pBytes + n, 1);
}

// A switch comes after much else, so that next to nothing of what it touches is near the processor. To ask for all of
// it beforehand takes a fraction of the time of waiting for one object after another.
void PrefetchAll(const Ref<ActionItemDefCollection>& colActionItemDefs,
                 const Ref<ActionItemCollection>& colActionItems) {
    if (!colActionItems)
        return;
    for (const auto& oActionItem : colActionItems)
        Prefetch(oActionItem);
    for (const auto& oActionItemDef : colActionItemDefs)
        Prefetch(oActionItemDef->Tool());
}

} // namespace

void MenuManager::OnActionsProviderAdd(const Ref<Object>& oActionsProviderObj,
                                       const Ref<IActionsProvider>& oActionsProvider,
                                       const Ref<ActionItemDefCollection>& colActionItemDefs, bool bActivate) try {
    const Ref<MenuManager> oSelf(this); // a provider may end the application
    auto colActionItems = New<ActionItemCollection>();
    colActionItems->Reserve(static_cast<std::size_t>(colActionItemDefs->Count()));
    for (const auto& oActionItemDef : colActionItemDefs) {
        auto oActionItem = New<ActionItem>();
        colActionItems->AddShared(oActionItem, oActionItemDef->SharedName());
        const Ref<Tool> oTool = oActionItemDef->Tool();
        oActionItem->Initialize(oActionsProviderObj, oActionItemDef);
        oActionItem->CopyFrom(*oActionItemDef);
        oActionItem->SetTool(oTool);
        if (!oTool)
            continue;
        oTool->SetTagVariant(oActionItem);
        if (bActivate)
            ShowState(*oTool, *oActionItem);
    }
    oActionsProvider->Initialize(colActionItems);
    Refresh();
} catch (...) {
    Reraise("MenuManager", "OnActionsProviderAdd");
}

void MenuManager::OnActionsProviderActive(const Ref<Object>& /*oActionsProviderObj*/,
                                          const Ref<IActionsProvider>& oActionsProvider,
                                          const Ref<ActionItemDefCollection>& colActionItemDefs) try {
    const Ref<MenuManager> oSelf(this);
    const Ref<ActionItemCollection> colActionItems = oActionsProvider->ActionItems();
    PrefetchAll(colActionItemDefs, colActionItems);
    std::size_t nPlace = 0;
    for (const auto& oActionItemDef : colActionItemDefs) {
        const Ref<ActionItem> oActionItem = colActionItems->ItemNear(oActionItemDef->SharedName(), nPlace++);
        const Ref<Tool> oTool = oActionItemDef->Tool();
        if (!oTool)
            continue;
        oActionItem->SetTool(oTool);
        ShowState(*oTool, *oActionItem);
        oTool->SetTagVariant(oActionItem);
    }
    Refresh();
} catch (...) {
    Reraise("MenuManager", "OnActionsProviderActive");
}

void MenuManager::OnActionsProviderInActive(const Ref<Object>& /*oActionsProviderObj*/,
                                            const Ref<IActionsProvider>& oActionsProvider,
                                            const Ref<ActionItemDefCollection>& colActionItemDefs) try {
    const Ref<MenuManager> oSelf(this);
    const Ref<ActionItemCollection> colActionItems = oActionsProvider->ActionItems();
    PrefetchAll(colActionItemDefs, colActionItems);
    std::size_t nPlace = 0;
    for (const auto& oActionItemDef : colActionItemDefs) {
        const Ref<ActionItem> oActionItem = colActionItems->ItemNear(oActionItemDef->SharedName(), nPlace++);
        const Ref<Tool> oTool = oActionItemDef->Tool();
        oActionItem->SetTool(nullptr);
        if (!oTool)
            continue;
        oTool->SetTagVariant(nullptr);
        if (oActionItemDef->IsShared())
            oTool->SetEnabled(false);
        else
            oTool->SetVisible(false);
    }
    Refresh();
} catch (...) {
    Reraise("MenuManager", "OnActionsProviderInActive");
}

void MenuManager::OnActionsProviderRemove(const Ref<Object>& /*oActionsProviderObj*/,
                                          const Ref<IActionsProvider>& oActionsProvider) try {
    const Ref<MenuManager> oSelf(this);
    for (const auto& oActionItem : oActionsProvider->ActionItems()) {
        const Ref<Tool> oTool = oActionItem->Tool();
        if (!oTool)
            continue;
        oTool->SetVisible(false);
        oTool->SetTagVariant(nullptr);
        oActionItem->SetTool(nullptr);
    }
    Refresh();
} catch (...) {
    Reraise("MenuManager", "OnActionsProviderRemove");
}

// Both texts live on the instance alone, and many an action has none in that band: what isn't found is passed over,
// and so is a text that can't be set.
template <class Set>
void MenuManager::SetInstanceText(const std::string& sPath, const std::string& sActionItemName, Set fnSet) const {
    try {
        if (const Ref<Band> oBand = FindBand(sPath))
            if (const Ref<Tool> oInstance = oBand->Tools()->Find(oBand->Name() + "." + sActionItemName))
                fnSet(*oInstance);
    } catch (...) {
    }
}

void MenuManager::SetMenuCaption(const std::string& sPath, const std::string& sActionItemName,
                                 const std::string& sCaption) {
    SetInstanceText(sPath, sActionItemName, [&](Tool& oInstance) { oInstance.SetCaption(sCaption); });
}

void MenuManager::SetActionDesctiption(const std::string& sPath, const std::string& sActionItemName,
                                       const std::string& sDescription) {
    SetInstanceText(sPath, sActionItemName, [&](Tool& oInstance) { oInstance.SetDescription(sDescription); });
}

} // namespace corvane
