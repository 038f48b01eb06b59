// Makes the host's forms.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/windows/IWindowForm.h"

namespace corvane {

class __attribute__((visibility("default"))) IWindowFormFactory : public virtual Object {
public:
    // A new form, which must be a Form as well. The type is never cvDefinitionDefault.
    virtual Ref<IWindowForm> NewWindowForm(WindowTypeConstants eWindowType, bool bIsMDIChild) = 0;
};

} // namespace corvane
