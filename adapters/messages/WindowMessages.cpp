#include "adapters/messages/WindowMessages.h"

#include <string>
#include <utility>

namespace corvane {

namespace {

[[noreturn]] void FailUnknown(const char* what, Long number) {
    Fail(FailureNumber::InvalidProcedureCall, std::string("There is no ") + what + " " + std::to_string(number));
}

} // namespace

Long WindowMessages::RegisterProc(WindowProc proc) {
    m_procs.emplace(++m_lastProc, std::make_shared<const WindowProc>(std::move(proc)));
    return m_lastProc;
}

Long WindowMessages::GetWindowProc(Long handle) const {
    const auto it = m_windows.find(handle);
    if (it == m_windows.end())
        FailUnknown("window", handle);
    return it->second.present;
}

void WindowMessages::SetWindowProc(Long handle, Long proc) {
    const auto it = m_windows.find(handle);
    if (it == m_windows.end())
        FailUnknown("window", handle);
    if (!m_procs.contains(proc))
        FailUnknown("window procedure", proc);
    it->second.present = proc;
}

Long WindowMessages::CallWindowProc(Long procedureId, Long handle, Long message, Long wParam, std::intptr_t lParam) {
    const auto it = m_procs.find(procedureId);
    if (it == m_procs.end())
        FailUnknown("window procedure", procedureId);
    const auto proc = it->second; // held while it runs
    return *proc ? (*proc)(handle, message, wParam, lParam) : 0;
}

Long WindowMessages::DefWindowProc(Long handle, Long message, Long wParam, std::intptr_t lParam) {
    const auto defaultProc = m_default;
    return defaultProc && *defaultProc ? (*defaultProc)(handle, message, wParam, lParam) : 0;
}

void WindowMessages::RegisterWindow(Long handle, WindowProc base) {
    if (m_windows.contains(handle))
        Fail(FailureNumber::KeyInUse, "There is a window " + std::to_string(handle) + " already");
    const Long baseNumber = RegisterProc(std::move(base));
    m_windows.emplace(handle, Window{baseNumber, baseNumber});
}

void WindowMessages::UnregisterWindow(Long handle) {
    const auto it = m_windows.find(handle);
    if (it == m_windows.end())
        return;
    m_procs.erase(it->second.base);
    m_windows.erase(it);
}

void WindowMessages::SetDefault(WindowProc defaultProcedure) {
    m_default = std::make_shared<const WindowProc>(std::move(defaultProcedure));
}

Long WindowMessages::SendMessage(Long handle, Long message, Long wParam, std::intptr_t lParam) {
    return CallWindowProc(GetWindowProc(handle), handle, message, wParam, lParam);
}

} // namespace corvane
