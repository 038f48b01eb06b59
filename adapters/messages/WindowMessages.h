// Window procedures for a toolkit that has none: a host registers its windows and sends them what happens to them.
#pragma once

#include "corvane/platform/IWindowMessages.h"

#include <memory>
#include <unordered_map>

namespace corvane {

class WindowMessages final : public IWindowMessages {
public:
    Long RegisterProc(WindowProc proc) override;
    Long GetWindowProc(Long handle) const override;
    // Fails with 5 for a handle or a procedure that isn't registered.
    void SetWindowProc(Long handle, Long proc) override;
    // Fails with 5 for a procedure that isn't registered.
    Long CallWindowProc(Long procedureId, Long handle, Long message, Long wParam, std::intptr_t lParam) override;
    // What the host has set; 0 until then.
    Long DefWindowProc(Long handle, Long message, Long wParam, std::intptr_t lParam) override;

    // For the host. The base procedure is what the window does by itself. 457 for a handle that is registered.
    void RegisterWindow(Long handle, WindowProc base);
    // The handle may be registered again afterwards. No effect for an unknown one.
    void UnregisterWindow(Long handle);
    void SetDefault(WindowProc defaultProcedure);
    // The answer of the window's present procedure. A procedure may replace itself, or end its window, while it runs.
    Long SendMessage(Long handle, Long message, Long wParam, std::intptr_t lParam);

private:
    struct Window {
        Long base;
        Long present;
    };

    std::unordered_map<Long, std::shared_ptr<const WindowProc>> m_procs;
    std::unordered_map<Long, Window> m_windows;
    std::shared_ptr<const WindowProc> m_default;
    Long m_lastProc = 0;
};

} // namespace corvane
