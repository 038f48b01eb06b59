// What a window offers to its form.
#pragma once

#include "corvane/base/Ref.h"

namespace corvane {

class PageDef;
class WindowDef;

class __attribute__((visibility("default"))) IWindowFormController : public virtual Object {
public:
    [[nodiscard]] virtual Ref<corvane::WindowDef> WindowDef() const = 0;
    // The last call of the form, once its unload has reached the window.
    virtual void ExitWindow(bool bWasWindowCancelled) = 0;
    // The page's own object, each time.
    virtual void PageInitialize(const Ref<Object>& oPageObj, const Ref<PageDef>& oPageDef) = 0;
    virtual void PageTerminate(const Ref<Object>& oPageObj) = 0;
    virtual void PageActivate(const Ref<Object>& oPageObj) = 0;
    virtual void PageDeactivate(const Ref<Object>& oPageObj) = 0;
};

} // namespace corvane
