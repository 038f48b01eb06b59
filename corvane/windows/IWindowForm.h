// The host's half of a window: the form with its buttons and pages. It must be a Form as well.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/windows/WindowEnums.h"

namespace corvane {

class IPage;
class IWindowFormController;

// Sizes are in twips.
class __attribute__((visibility("default"))) IWindowForm : public virtual Object {
public:
    // Once, after the form is loaded: build the form from the definition and report each page. The apply command is
    // shown only if the flag is true.
    virtual void Initialize(const Ref<IWindowFormController>& oWindowFormController, bool bIsApplyCommandShown) = 0;
    // The form's size that gives its pages that size.
    [[nodiscard]] virtual Long MinWindowWidth(Long lPageWidth) = 0;
    [[nodiscard]] virtual Long MinWindowHeight(Long lPageHeight) = 0;
    // What of the form isn't page.
    [[nodiscard]] virtual Long NonPageWidth() = 0;
    [[nodiscard]] virtual Long NonPageHeight() = 0;
    // The page in front, from 0.
    [[nodiscard]] virtual Long ActivePageIndex() = 0;
    virtual void SetActivePageIndex(Long lIndex) = 0;
    [[nodiscard]] virtual bool IsCommandEnabled(StandardCommandConstants eStandardCommand) = 0;
    virtual void SetIsCommandEnabled(StandardCommandConstants eStandardCommand, bool bEnabled) = 0;
    // Acts as if the command had been clicked.
    virtual void ClickCommand(StandardCommandConstants eStandardCommand) = 0;
    virtual void PageValidityChanged(const Ref<IPage>& oPage) = 0;
    [[nodiscard]] virtual bool CanBeSaved() = 0;
    virtual void Save() = 0;
};

} // namespace corvane
