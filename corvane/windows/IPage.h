// The library's view of a page.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/windows/WindowEnums.h"

namespace corvane {

class PageDef;
class Window;

class __attribute__((visibility("default"))) IPage : public virtual Object {
public:
    // The page joins its window. The pane positions are a property bag; always nothing in this version.
    virtual void Initialize(const Ref<corvane::Window>& oWindow, const Ref<corvane::PageDef>& oPageDef,
                            const Ref<Object>& oBusinessContext, const Ref<Object>& oLastPanePositions) = 0;
    virtual void Terminate(const Ref<Object>& oCurrentPanePositions) = 0;
    // May the window go on with this page as it is?
    [[nodiscard]] virtual bool IsValid() = 0;
    virtual void Activate() = 0;
    virtual void Deactivate() = 0;
    virtual void Save() = 0;
    [[nodiscard]] virtual Ref<corvane::PageDef> PageDef() const = 0;
    virtual void CommandClick(StandardCommandConstants eCommand) = 0;
};

} // namespace corvane
