// An owner of actions: a service, an explorer item, a page. The menu manager provides their live state.
#pragma once

#include "corvane/base/KeyedCollection.h"
#include "corvane/base/Ref.h"

namespace corvane {

class ActionItem;
using ActionItemCollection = KeyedCollection<Ref<ActionItem>>;

class __attribute__((visibility("default"))) IActionsProvider : public virtual Object {
public:
    // Keep the collection: one item an action, by name.
    virtual void Initialize(const Ref<ActionItemCollection>& oActionItems) = 0;
    // The collection kept, the same object, since the menu manager adds to it later.
    [[nodiscard]] virtual Ref<ActionItemCollection> ActionItems() const = 0;
};

} // namespace corvane
