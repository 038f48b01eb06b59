// The library's view of an explorer item.
#pragma once

#include "corvane/base/KeyedCollection.h"
#include "corvane/base/Ref.h"

#include <string>

namespace corvane {

class ExplorerItemDef;

class __attribute__((visibility("default"))) IExplorerItem : public virtual Object {
public:
    // The item is added to the explorer: it sets its name and adds its children. A second call does so again.
    virtual void Initialize(const Ref<corvane::ExplorerItemDef>& oExplorerItemDef) = 0;
    [[nodiscard]] virtual std::string Name() const = 0;
    // A rename by the user, of which the item is notified as OnAfterRename. An item sets its own name by
    // ExplorerItemBase::NameSilently.
    virtual void SetName(const std::string& sName) = 0;
    // What the tree shows, and what the user edits. Both fail with 91 before Initialize.
    [[nodiscard]] virtual std::string DisplayName() = 0;
    [[nodiscard]] virtual std::string EditName() = 0;
    // The objects below; nothing before Initialize.
    [[nodiscard]] virtual Ref<KeyedCollection<Ref<Object>>> Children() const = 0;
    [[nodiscard]] virtual Ref<corvane::ExplorerItemDef> ExplorerItemDef() const = 0;
};

} // namespace corvane
