// A text that doesn't change and is held by many, so that a copy of it is a count. One thread, as for objects.
#pragma once

#include "corvane/base/SmallMemory.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {

// Records, tools and action items carry the same names and captions, most of them a dozen times over an application.
// Takes any text and gives it back as a std::string, which lives as long as one of its holders does.
class SharedText {
public:
    SharedText() noexcept = default; // the empty text, which needs no memory
    SharedText(std::string sText) : m_pHeld(sText.empty() ? nullptr : new Held(std::move(sText))) {}
    SharedText(std::string_view sText) : m_pHeld(sText.empty() ? nullptr : new Held(sText)) {}
    SharedText(const char* sText) : SharedText(std::string_view(sText)) {}
    SharedText(const SharedText& oOther) noexcept : m_pHeld(oOther.m_pHeld) {
        if (m_pHeld)
            ++m_pHeld->nHolders;
    }
    SharedText(SharedText&& oOther) noexcept : m_pHeld(std::exchange(oOther.m_pHeld, nullptr)) {}
    SharedText& operator=(SharedText oOther) noexcept {
        std::swap(m_pHeld, oOther.m_pHeld);
        return *this;
    }
    ~SharedText() {
        if (m_pHeld && --m_pHeld->nHolders == 0)
            delete m_pHeld;
    }

    [[nodiscard]] const std::string& Get() const noexcept { return m_pHeld ? m_pHeld->sText : Empty(); }
    operator const std::string&() const noexcept { return Get(); }
    [[nodiscard]] bool IsEmpty() const noexcept { return !m_pHeld; }

    // Byte by byte.
    friend bool operator==(const SharedText& oLeft, const SharedText& oRight) noexcept {
        return oLeft.m_pHeld == oRight.m_pHeld || oLeft.Get() == oRight.Get();
    }

private:
    struct Held {
        template <class Text>
        explicit Held(Text&& oText) : sText(std::forward<Text>(oText)) {}
        static void* operator new(std::size_t nBytes) { return SmallMemory::Take(nBytes); }
        static void operator delete(void* pMemory, std::size_t nBytes) noexcept {
            SmallMemory::GiveBack(pMemory, nBytes);
        }

        const std::string sText;
        std::uint32_t nHolders = 1;
    };
    static const std::string& Empty() noexcept {
        static const std::string sEmpty;
        return sEmpty;
    }

    Held* m_pHeld = nullptr;
};

} // namespace corvane
