#include "adapters/messages/WindowMessages.h"

#include <string>
#include <utility>

namespace corvane {

namespace {

[[noreturn]] void FailUnknown(const char* sWhat, Long lNumber) {
    Fail(FailureNumber::InvalidProcedureCall, std::string("There is no ") + sWhat + " " + std::to_string(lNumber));
}

} // namespace

Long WindowMessages::RegisterProc(WindowProc fnProc) {
    m_mapProcs.emplace(++m_lLastProc, std::make_shared<const WindowProc>(std::move(fnProc)));
    return m_lLastProc;
}

Long WindowMessages::GetWindowProc(Long hWnd) const {
    const auto it = m_mapWindows.find(hWnd);
    if (it == m_mapWindows.end())
        FailUnknown("window", hWnd);
    return it->second.lPresent;
}

void WindowMessages::SetWindowProc(Long hWnd, Long lProc) {
    const auto it = m_mapWindows.find(hWnd);
    if (it == m_mapWindows.end())
        FailUnknown("window", hWnd);
    if (!m_mapProcs.contains(lProc))
        FailUnknown("window procedure", lProc);
    it->second.lPresent = lProc;
}

Long WindowMessages::CallWindowProc(Long lProc, Long hWnd, Long uMsg, Long wParam, std::intptr_t lParam) {
    const auto it = m_mapProcs.find(lProc);
    if (it == m_mapProcs.end())
        FailUnknown("window procedure", lProc);
    const auto pProc = it->second; // held while it runs
    return *pProc ? (*pProc)(hWnd, uMsg, wParam, lParam) : 0;
}

Long WindowMessages::DefWindowProc(Long hWnd, Long uMsg, Long wParam, std::intptr_t lParam) {
    const auto pDefault = m_pDefault;
    return pDefault && *pDefault ? (*pDefault)(hWnd, uMsg, wParam, lParam) : 0;
}

void WindowMessages::RegisterWindow(Long hWnd, WindowProc fnBase) {
    if (m_mapWindows.contains(hWnd))
        Fail(FailureNumber::KeyInUse, "There is a window " + std::to_string(hWnd) + " already");
    const Long lBase = RegisterProc(std::move(fnBase));
    m_mapWindows.emplace(hWnd, Window{lBase, lBase});
}

void WindowMessages::UnregisterWindow(Long hWnd) {
    const auto it = m_mapWindows.find(hWnd);
    if (it == m_mapWindows.end())
        return;
    m_mapProcs.erase(it->second.lBase);
    m_mapWindows.erase(it);
}

void WindowMessages::SetDefault(WindowProc fnDefault) {
    m_pDefault = std::make_shared<const WindowProc>(std::move(fnDefault));
}

Long WindowMessages::SendMessage(Long hWnd, Long uMsg, Long wParam, std::intptr_t lParam) {
    return CallWindowProc(GetWindowProc(hWnd), hWnd, uMsg, wParam, lParam);
}

} // namespace corvane
