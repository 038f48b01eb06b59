#include "corvane/windows/MinWindowSize.h"

#include "corvane/base/KeyedCollection.h"
#include "corvane/base/Variant.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"

namespace corvane::MinWindowSize {

namespace {

using Longs = KeyedCollection<Long>;

// By window handle; each is there only while it isn't empty.
Ref<Longs> m_colMinWidths;
Ref<Longs> m_colMinHeights;
Ref<Longs> m_colPrevProcs;

Long MinWindowProc(Long hWnd, Long uMsg, Long wParam, std::intptr_t lParam) {
    try {
        const std::string sKey = std::to_string(hWnd);
        const auto& oMessages = CurrentPlatform().oWindowMessages;
        if (uMsg == WindowMessage::GetMinMaxInfo) {
            auto* pInfo = reinterpret_cast<MinMaxInfo*>(lParam);
            MinMaxInfo oInfo = *pInfo;
            oInfo.oMinTrackSize = {m_colMinWidths->Item(sKey), m_colMinHeights->Item(sKey)};
            *pInfo = oInfo;
            return oMessages->DefWindowProc(hWnd, uMsg, wParam, lParam);
        }
        if (uMsg == WindowMessage::Close) {
            oMessages->SetWindowProc(hWnd, m_colPrevProcs->Item(sKey));
            for (Ref<Longs>* pcol : {&m_colMinWidths, &m_colMinHeights, &m_colPrevProcs})
                (*pcol)->Remove(sKey);
            for (Ref<Longs>* pcol : {&m_colMinWidths, &m_colMinHeights, &m_colPrevProcs})
                if ((*pcol)->Count() == 0)
                    *pcol = nullptr;
        }
        // The entry of a window that closes is gone by now, so its request ends here and only took the hook away.
        return oMessages->CallWindowProc(m_colPrevProcs->Item(sKey), hWnd, uMsg, wParam, lParam);
    } catch (...) {
        return 0; // in silence: it is inside the dispatch of a message
    }
}

// One number for one procedure of one platform.
Long MinWindowProcNumber() {
    static Long lRegisteredWith = 0; // the identity of the platform's messages
    static Long lNumber = 0;
    const auto& oMessages = CurrentPlatform().oWindowMessages;
    if (lRegisteredWith != oMessages->ObjectKey()) {
        lNumber = oMessages->RegisterProc(MinWindowProc);
        lRegisteredWith = oMessages->ObjectKey();
    }
    return lNumber;
}

} // namespace

void SetMinWindowSize(Long hWnd, Long lMinWidth, Long lMinHeight) try {
    for (Ref<Longs>* pcol : {&m_colMinWidths, &m_colMinHeights, &m_colPrevProcs})
        if (!*pcol)
            *pcol = New<Longs>();
    const auto& oPlatform = CurrentPlatform();
    const std::string sKey = std::to_string(hWnd);
    m_colMinWidths->Add(lMinWidth / RoundToLong(oPlatform.oScreen->TwipsPerPixelX()), sKey);
    m_colMinHeights->Add(lMinHeight / RoundToLong(oPlatform.oScreen->TwipsPerPixelY()), sKey);
    m_colPrevProcs->Add(oPlatform.oWindowMessages->GetWindowProc(hWnd), sKey);
    oPlatform.oWindowMessages->SetWindowProc(hWnd, MinWindowProcNumber());
} catch (...) {
    Reraise("MinWindowSize", "SetMinWindowSize");
}

} // namespace corvane::MinWindowSize
