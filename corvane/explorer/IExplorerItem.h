// The library's view of an explorer item.
#pragma once

#include "corvane/base/KeyedCollection.h"
#include "corvane/base/Ref.h"

#include <string>

namespace corvane {

class ExplorerItemDef;

class __attribute__((visibility("default"))) IExplorerItem : public virtual Object {
public:
    // The item joins the explorer: it settles its name and fills its children. A second call does so anew.
    virtual void Initialize(const Ref<corvane::ExplorerItemDef>& oExplorerItemDef) = 0;
    [[nodiscard]] virtual std::string Name() const = 0;
    // A rename, which the item hears of.
    virtual void SetName(const std::string& sName) = 0;
    // What the tree shows, and what the user edits. Both fail with 91 before Initialize.
    [[nodiscard]] virtual std::string DisplayName() = 0;
    [[nodiscard]] virtual std::string EditName() = 0;
    // The objects below; nothing before Initialize.
    [[nodiscard]] virtual Ref<KeyedCollection<Ref<Object>>> Children() const = 0;
    [[nodiscard]] virtual Ref<corvane::ExplorerItemDef> ExplorerItemDef() const = 0;
};

} // namespace corvane
