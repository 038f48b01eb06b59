// The item behind a folder definition that names no component: a name and nothing else.
#pragma once

#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/IExplorerItemAccess.h"

namespace corvane {

class GenericFolder final : public IExplorerItemAccess {
public:
    Ref<IExplorerItem> ExplorerItem() override { return m_oExplorerItemBase; }
    std::string_view TypeName() const override { return "GenericFolder"; }

private:
    Ref<ExplorerItemBase> m_oExplorerItemBase = New<ExplorerItemBase>();
};

} // namespace corvane
