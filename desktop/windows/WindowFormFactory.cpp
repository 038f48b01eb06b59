#include "desktop/windows/WindowFormFactory.h"

#include "desktop/windows/WindowForm.h"

namespace corvane::desktop {

Ref<IWindowForm> WindowFormFactory::NewWindowForm(WindowTypeConstants eWindowType, bool bIsMDIChild) {
    return New<WindowForm>(m_pHost, eWindowType, bIsMDIChild);
}

} // namespace corvane::desktop
