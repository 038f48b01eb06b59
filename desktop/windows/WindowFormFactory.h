// Makes the forms of windows, wizards, dialogs and save dialogs.
#pragma once

#include "corvane/windows/IWindowFormFactory.h"
#include "desktop/windows/WindowHost.h"

#include <memory>

namespace corvane::desktop {

class WindowFormFactory final : public IWindowFormFactory {
public:
    explicit WindowFormFactory(std::shared_ptr<const WindowHost> host) : m_host(std::move(host)) {}
    Ref<IWindowForm> NewWindowForm(WindowTypeConstants windowType, bool isMDIChild) override;

private:
    std::shared_ptr<const WindowHost> m_host;
};

} // namespace corvane::desktop
