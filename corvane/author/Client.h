// What a service, an explorer item and a page have in common: actions, windows that they open, what they listen to.
#pragma once

#include "corvane/author/Host.h"
#include "corvane/author/Methods.h"
#include "corvane/base/Event.h"
#include "corvane/menus/ActionItem.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class __attribute__((visibility("default"))) Client {
protected:
    Client() = default;
    virtual ~Client();

    // The live state of one of its own actions, by the name in the definition. Fails with 5 for a name that it doesn't
    // have, and before the menus are built; a page has its actions between OnInitialize and OnTerminate.
    [[nodiscard]] Ref<ActionItem> Action(std::string_view sName) const;
    // The same for an action that not every definition of the class has: nothing happens without it.
    void EnableAction(std::string_view sName, bool bEnabled) const;
    // corvane::OpenWindow; OnExit is called when it closes, unless the options name another exit handler.
    Ref<Window> OpenWindow(const std::string& sWindow, const Ref<Object>& oAbout = nullptr,
                           WindowOptions oOptions = {}) const;
    // Until Unsubscribe, which the object's end calls, and of a service or a page the step before OnTerminate.
    void Keep(Subscription oSubscription) { m_aKept.push_back(std::move(oSubscription)); }
    void Unsubscribe() { m_aKept.clear(); }

private:
    [[nodiscard]] virtual Ref<Object> BaseObject() const = 0; // the embedded base

    std::vector<Subscription> m_aKept;
};

} // namespace corvane
