#include "desktop/windows/WindowFormFactory.h"

#include "desktop/windows/WindowForm.h"

namespace corvane::desktop {

Ref<IWindowForm> WindowFormFactory::NewWindowForm(WindowTypeConstants windowType, bool isMDIChild) {
    return New<WindowForm>(m_host, windowType, isMDIChild);
}

} // namespace corvane::desktop
