// Finds things by their names without regard to case. The names stay where they are: the index holds nothing but the
// hash and the thing, in one block of memory.
#pragma once

#include "corvane/base/Text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

// T is small and default-constructible, such as a pointer or a place in a sequence. fnNameOf(T) gives a thing's name,
// which must not change while the thing is in the index.
template <class T>
class TextIndex {
public:
    // A null pointer when there is none of that name. Holds until the next Add or Remove.
    template <class NameOf>
    [[nodiscard]] T* Find(std::string_view sName, const NameOf& fnNameOf) {
        const std::size_t i = SlotOf(sName, fnNameOf);
        return i == None ? nullptr : &m_aSlots[i].oThing;
    }
    template <class NameOf>
    [[nodiscard]] const T* Find(std::string_view sName, const NameOf& fnNameOf) const {
        const std::size_t i = SlotOf(sName, fnNameOf);
        return i == None ? nullptr : &m_aSlots[i].oThing;
    }

    // Adds the thing unless there is one of that name: then nothing happens, and the other is what returns.
    template <class NameOf>
    T* AddOrFind(std::string_view sName, T oThing, const NameOf& fnNameOf) {
        if ((m_nUsed + 1) * 4 > m_aSlots.size() * 3)
            Grow();
        const std::uint32_t uHash = Hash(sName);
        const std::size_t i = Probe(sName, uHash, fnNameOf);
        if (m_aSlots[i].uHash != 0)
            return &m_aSlots[i].oThing;
        m_aSlots[i] = {std::move(oThing), uHash};
        ++m_nUsed;
        return nullptr;
    }

    // Nothing happens when there is none of that name.
    template <class NameOf>
    void Remove(std::string_view sName, const NameOf& fnNameOf) {
        std::size_t iHole = SlotOf(sName, fnNameOf);
        if (iHole == None)
            return;
        // What could be in the hole moves up, so that no search ends too early.
        for (std::size_t i = Next(iHole); m_aSlots[i].uHash != 0; i = Next(i)) {
            const std::size_t iHome = m_aSlots[i].uHash & Mask();
            if (((i - iHome) & Mask()) >= ((i - iHole) & Mask())) {
                m_aSlots[iHole] = m_aSlots[i];
                iHole = i;
            }
        }
        m_aSlots[iHole] = {};
        --m_nUsed;
    }

private:
    struct Slot {
        T oThing{};
        std::uint32_t uHash = 0; // of an empty slot
    };
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    static std::uint32_t Hash(std::string_view sName) noexcept {
        const auto u = static_cast<std::uint32_t>(HashText(sName));
        return u ? u : 1;
    }
    [[nodiscard]] std::size_t Mask() const { return m_aSlots.size() - 1; }
    [[nodiscard]] std::size_t Next(std::size_t i) const { return (i + 1) & Mask(); }

    template <class NameOf>
    [[nodiscard]] std::size_t SlotOf(std::string_view sName, const NameOf& fnNameOf) const {
        if (m_aSlots.empty())
            return None;
        const std::size_t i = Probe(sName, Hash(sName), fnNameOf);
        return m_aSlots[i].uHash != 0 ? i : None;
    }
    // The slot of the name, or the empty slot for it.
    template <class NameOf>
    [[nodiscard]] std::size_t Probe(std::string_view sName, std::uint32_t uHash, const NameOf& fnNameOf) const {
        std::size_t i = uHash & Mask();
        while (m_aSlots[i].uHash != 0 &&
               (m_aSlots[i].uHash != uHash || !EqualText(fnNameOf(m_aSlots[i].oThing), sName)))
            i = Next(i);
        return i;
    }
    void Place(Slot oSlot) {
        std::size_t i = oSlot.uHash & Mask();
        while (m_aSlots[i].uHash != 0)
            i = Next(i);
        m_aSlots[i] = std::move(oSlot);
    }
    void Grow() {
        constexpr std::size_t nFirst = 8;
        std::vector<Slot> aOld(m_aSlots.empty() ? nFirst : m_aSlots.size() * 2);
        aOld.swap(m_aSlots);
        for (Slot& oSlot : aOld)
            if (oSlot.uHash != 0)
                Place(std::move(oSlot));
    }

    std::vector<Slot> m_aSlots; // a power of two
    std::size_t m_nUsed = 0;
};

} // namespace corvane
