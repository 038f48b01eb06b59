// What an explorer item's own class offers, so that the library reaches the ExplorerItemBase inside it.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/explorer/IExplorerItem.h"

namespace corvane {

class __attribute__((visibility("default"))) IExplorerItemAccess : public virtual Object {
public:
    virtual Ref<IExplorerItem> ExplorerItem() = 0;
};

} // namespace corvane
