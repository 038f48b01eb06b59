#include "corvane/author/Client.h"

#include "corvane/menus/IActionsProvider.h"
#include "corvane/windows/Window.h"

namespace corvane {

Client::~Client() = default;

Ref<ActionItem> Client::Action(std::string_view sName) const {
    const Ref<Object> oBase = BaseObject();
    const Ref<ActionItemCollection> colItems = oBase.As<IActionsProvider>()->ActionItems();
    const Ref<ActionItem>* pItem = colItems ? colItems->Find(sName) : nullptr;
    if (!pItem)
        Fail(FailureNumber::InvalidProcedureCall,
             "There is no action \"" + std::string(sName) + "\"" + (colItems ? "" : " yet"),
             std::string(oBase->TypeName()));
    return *pItem;
}

void Client::EnableAction(std::string_view sName, bool bEnabled) const {
    const Ref<ActionItemCollection> colItems = BaseObject().As<IActionsProvider>()->ActionItems();
    if (const Ref<ActionItem>* pItem = colItems ? colItems->Find(sName) : nullptr)
        (*pItem)->SetEnabled(bEnabled);
}

Ref<Window> Client::OpenWindow(const std::string& sWindow, const Ref<Object>& oAbout, WindowOptions oOptions) const {
    if (!oOptions.exit)
        oOptions.exit = BaseObject().As<IWindowExitHandler>();
    return corvane::OpenWindow(sWindow, oAbout, oOptions);
}

} // namespace corvane
