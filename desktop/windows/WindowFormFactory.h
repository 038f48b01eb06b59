// Makes the forms of windows, wizards, dialogs and save dialogs.
#pragma once

#include "corvane/windows/IWindowFormFactory.h"
#include "desktop/windows/WindowHost.h"

#include <memory>

namespace corvane::desktop {

class WindowFormFactory final : public IWindowFormFactory {
public:
    explicit WindowFormFactory(std::shared_ptr<const WindowHost> pHost) : m_pHost(std::move(pHost)) {}
    Ref<IWindowForm> NewWindowForm(WindowTypeConstants eWindowType, bool bIsMDIChild) override;

private:
    std::shared_ptr<const WindowHost> m_pHost;
};

} // namespace corvane::desktop
