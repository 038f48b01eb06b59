#include "corvane/collections/SortedList.h"

#include "corvane/base/Text.h"
#include "corvane/platform/Handlers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace corvane {

namespace {

constexpr Long SmallestGrowth = 10;
constexpr Long SmallRange = 15;
constexpr Long KeyInvalid = FailureNumber::ObjectErrorBase + 1;
constexpr Long ModeInvalid = FailureNumber::ObjectErrorBase + 3;

[[noreturn]] void FailKeyInvalid() {
    Fail(KeyInvalid, "Key Invalid: Text keys are invalid when SortMode is Numeric");
}

bool IsNumeric(std::string_view sKey) {
    const std::optional<Double> oNumber = NumberIn(sKey);
    return oNumber && std::isfinite(*oNumber);
}

// Holds a value that isn't an object.
class PlainValue final : public virtual Object {
public:
    explicit PlainValue(Variant vOfItem) : vValue(std::move(vOfItem)) {}

    const Variant vValue;
};

Long HalfToEven(Long lSum) {
    const Long lLower = lSum / 2;
    return lSum % 2 == 0 ? lLower : lLower + lLower % 2;
}

// A single-precision value from 0 inclusive to 1 exclusive; xorshift, 32 bits.
Single NextRandom(std::uint32_t& uState) {
    uState ^= uState << 13;
    uState ^= uState >> 17;
    uState ^= uState << 5;
    return static_cast<Single>(uState >> 8) / 16777216.0F;
}

// Holds the pivot out of the table while slots move, and fills the hole with it in the end, also after a comparison
// that failed: no slot is ever lost.
class HeldPivot {
public:
    explicit HeldPivot(SortedListItem& oPivot) : m_pHole(&oPivot), m_oPivot(std::move(oPivot)) {}
    HeldPivot(const HeldPivot&) = delete;
    HeldPivot& operator=(const HeldPivot&) = delete;
    ~HeldPivot() { *m_pHole = std::move(m_oPivot); }

    [[nodiscard]] const SortedListItem& Item() const { return m_oPivot; }
    void FillFrom(SortedListItem& oItem) {
        SortedListItem& oHole = *std::exchange(m_pHole, &oItem);
        oHole = std::move(oItem);
    }

private:
    SortedListItem* m_pHole;
    SortedListItem m_oPivot;
};

} // namespace

SortedListItem::SortedListItem(const Variant& vKey, Variant vValue) : m_bObject(vValue.IsObject()) {
    if (const Long* pLong = vKey.Get<Long>()) {
        m_eKeyState = KeyState::Whole;
        m_dblNumber = *pLong;
    } else {
        m_sKey = ToText(vKey);
    }
    if (m_bObject)
        m_oValue = ToObject(vValue);
    else if (!vValue.IsEmpty())
        m_oValue = New<PlainValue>(std::move(vValue));
}

std::string SortedListItem::Key() const {
    return m_eKeyState == KeyState::Whole ? ToText(static_cast<Long>(m_dblNumber)) : m_sKey.Get();
}

Double SortedListItem::KeyNumber() const {
    if (m_eKeyState != KeyState::Text)
        return m_dblNumber;
    const std::string& sKey = m_sKey;
    const std::optional<Double> oNumber = NumberIn(sKey);
    if (!oNumber)
        Fail(FailureNumber::TypeMismatch, "Type mismatch: the key \"" + sKey + "\" is not a number");
    if (std::isinf(*oNumber))
        Fail(FailureNumber::Overflow);
    m_dblNumber = *oNumber;
    m_eKeyState = KeyState::TextAndNumber;
    return m_dblNumber;
}

bool SortedListItem::IsKeyNumeric() const {
    return m_eKeyState != KeyState::Text || IsNumeric(m_sKey.Get());
}

int SortedListItem::CompareTexts(const SortedListItem& oLeft, const SortedListItem& oRight) {
    if (oLeft.m_eKeyState != KeyState::Whole && oRight.m_eKeyState != KeyState::Whole)
        return CompareText(oLeft.m_sKey.Get(), oRight.m_sKey.Get());
    return CompareText(oLeft.Key(), oRight.Key());
}

Variant SortedListItem::Value() const {
    if (m_bObject)
        return m_oValue;
    return m_oValue ? m_oValue.As<PlainValue>()->vValue : Variant();
}

Variant SortedListItem::TakeValue() {
    Variant vTaken = Value();
    m_oValue = m_bObject ? Ref<Object>() : New<PlainValue>(Long{0});
    return vTaken;
}

void SortedList::Remove(std::string_view sKey) try {
    Long lSlot = 0;
    BinarySearch(sKey, lSlot);
    if (lSlot != 0)
        RemoveSlot(lSlot);
} catch (...) {
    Reraise("SortedList", "Remove");
}

void SortedList::RemoveTop() try {
    if (const Long lSlot = TopSlot())
        RemoveSlot(lSlot);
} catch (...) {
    Reraise("SortedList", "RemoveTop");
}

std::vector<Variant> SortedList::Items() try {
    std::vector<Variant> aItems;
    for (const Long lSlot : LiveSlots())
        aItems.push_back(Slot(lSlot).Value());
    return aItems;
} catch (...) {
    Reraise("SortedList", "Items");
}

std::vector<std::string> SortedList::Keys() try {
    std::vector<std::string> aKeys;
    for (const Long lSlot : LiveSlots())
        aKeys.push_back(Slot(lSlot).Key());
    return aKeys;
} catch (...) {
    Reraise("SortedList", "Keys");
}

bool SortedList::Exists(std::string_view sKey) try {
    if (m_eSortMode == SortNumeric && !IsNumeric(sKey))
        FailKeyInvalid();
    Long lSlot = 0;
    BinarySearch(sKey, lSlot);
    return lSlot != 0;
} catch (...) {
    Reraise("SortedList", "Exists");
}

void SortedList::Clear() try {
    const auto aReleased = std::exchange(m_aItems, {}); // the end of a value may call back, so it comes last
    m_lCount = 0;
    m_lAllocated = 0;
    m_lHighest = 0;
} catch (...) {
    Reraise("SortedList", "Clear");
}

void SortedList::SetSortMode(SortModeConstants eSortMode) try {
    if (m_lCount != 0)
        Fail(ModeInvalid, "SortMode Failure: You cannot change the SortMode unless the list is empty.");
    m_eSortMode = eSortMode;
} catch (...) {
    Reraise("SortedList", "SortMode (Let)");
}

Variant SortedList::Item(std::string_view sKey) try {
    Long lSlot = 0;
    BinarySearch(sKey, lSlot);
    return lSlot != 0 ? Slot(lSlot).Value() : Variant();
} catch (...) {
    Reraise("SortedList", "Item");
}

Variant SortedList::GetTop() try {
    const Long lSlot = TopSlot();
    return lSlot != 0 ? Slot(lSlot).Value() : Variant(Long{0});
} catch (...) {
    Reraise("SortedList", "GetTop");
}

void SortedList::Add(const Variant& vKey, Variant vValue) try {
    if (m_eSortMode == SortNumeric && vKey.IsObject())
        FailKeyInvalid();
    SortedListItem oItem(vKey, std::move(vValue));
    if (m_eSortMode == SortNumeric && !oItem.IsKeyNumeric())
        FailKeyInvalid();
    if (m_lHighest >= m_lAllocated)
        Allocate();
    ++m_lCount;
    ++m_lHighest;
    // What a compaction left in the slot is released.
    Slot(m_lHighest) = std::move(oItem);
    m_bNeedsSort = true;
} catch (...) {
    Reraise("SortedList", "Add");
}

void SortedList::QuickSort(Long& lLo, Long& lHi) try {
    if (lLo == 0) {
        lHi = m_lHighest;
        lLo = 1;
        if (lHi - lLo >= SmallRange && SortDifferentNumbers())
            return;
    }
    if (lHi - lLo < SmallRange) {
        SelectionSort(lLo, lHi);
        return;
    }
    const Long lPivot = Partition(lLo, lHi);
    Long lBelow = lPivot - 1;
    QuickSort(lLo, lBelow);
    Long lAbove = lPivot + 1;
    QuickSort(lAbove, lHi);
} catch (...) {
    Reraise("SortedList", "QuickSort");
}

// Of whole numbers that all differ there is only one order, and no comparison fails: then numbers and places are
// sorted, and each slot moves once. Otherwise nothing happens.
bool SortedList::SortDifferentNumbers() {
    if (m_eSortMode != SortNumeric)
        return false;
    std::vector<std::pair<Double, Long>> aOrder;
    aOrder.reserve(static_cast<std::size_t>(m_lHighest));
    for (Long lSlot = 1; lSlot <= m_lHighest; ++lSlot) {
        if (!Slot(lSlot).IsKeyWhole())
            return false;
        aOrder.emplace_back(Slot(lSlot).KeyNumber(), lSlot);
    }
    std::sort(aOrder.begin(), aOrder.end());
    const auto IsSame = [](const auto& oLeft, const auto& oRight) { return oLeft.first == oRight.first; };
    if (std::adjacent_find(aOrder.begin(), aOrder.end(), IsSame) != aOrder.end())
        return false;
    // Around each cycle of places.
    for (Long lFirst = 1; lFirst <= m_lHighest; ++lFirst) {
        const auto From = [&](Long lSlot) -> Long& { return aOrder[static_cast<std::size_t>(lSlot) - 1].second; };
        if (From(lFirst) == lFirst)
            continue;
        SortedListItem oHeld = std::move(Slot(lFirst));
        Long lHole = lFirst;
        for (Long lFrom = From(lHole); lFrom != lFirst; lFrom = From(lHole)) {
            Slot(lHole) = std::move(Slot(lFrom));
            From(lHole) = lHole;
            lHole = lFrom;
        }
        Slot(lHole) = std::move(oHeld);
        From(lHole) = lHole;
    }
    m_bNeedsSort = false;
    return true;
}

// Parts the range around a random pivot and returns its final place.
Long SortedList::Partition(Long lLo, Long lHi) {
    const Double dblSpan = static_cast<Double>(lHi) - lLo + 1;
    const auto lPivot = static_cast<Long>(static_cast<Double>(NextRandom(m_uRandom)) * dblSpan + lLo);
    if (lPivot != lLo)
        std::swap(Slot(lPivot), Slot(lLo));
    HeldPivot oPivot(Slot(lLo));
    const auto IsBelowPivot = [&](Long lIndex) {
        Long lOrder = 0;
        KeyComp(Slot(lIndex), oPivot.Item(), lOrder);
        return lOrder == -1;
    };
    Long i = lLo;
    Long j = lHi;
    for (;;) {
        while (!IsBelowPivot(j))
            if (--j <= i)
                return i;
        oPivot.FillFrom(Slot(j));
        ++i;
        // Where both meet is the hole: what was there was below the pivot and has just moved.
        while (i < j && IsBelowPivot(i))
            ++i;
        if (i >= j)
            return j;
        oPivot.FillFrom(Slot(i));
    }
}

void SortedList::SelectionSort(Long lLo, Long lHi) try {
    for (Long i = lLo; i < lHi; ++i) {
        Long lMinimum = i;
        for (Long k = i + 1; k <= lHi; ++k) {
            Long lOrder = 0;
            KeyComp(Slot(k), Slot(lMinimum), lOrder);
            if (lOrder == -1)
                lMinimum = k;
        }
        if (lMinimum != i)
            std::swap(Slot(i), Slot(lMinimum));
    }
    m_bNeedsSort = false;
} catch (...) {
    Reraise("SortedList", "SelectionSort");
}

void SortedList::Allocate() try {
    Long lGrow = RoundToLong(m_lCount / 10.0);
    if (lGrow < SmallestGrowth)
        lGrow = SmallestGrowth;
    m_lCompactBelow = m_lCount - lGrow;
    m_lAllocated = m_lHighest + lGrow;
    m_aItems.resize(static_cast<std::size_t>(m_lAllocated));
} catch (...) {
    Reraise("SortedList", "Allocate");
}

void SortedList::Defrag() try {
    // The flag alone decides, up to the allocated bound: slots that never held an item count as live and join the
    // working range.
    Long lWrite = 1;
    for (Long lRead = 1; lRead <= m_lAllocated; ++lRead) {
        if (Slot(lRead).Deleted)
            continue;
        if (lWrite != lRead)
            Slot(lWrite) = Slot(lRead);
        ++lWrite;
    }
    for (Long k = lWrite; k <= m_lAllocated; ++k)
        Slot(k).Deleted = true;
    m_lHighest = lWrite - 1;
    if (m_lCount < m_lCompactBelow)
        Allocate();
} catch (...) {
    Reraise("SortedList", "Defrag");
}

void SortedList::BinarySearch(std::string_view sKey, Long& lResult) try {
    SortIfNeeded();
    const SortedListItem oWanted(sKey);
    Long lLo = 1;
    Long lHi = m_lHighest;
    while (lLo <= lHi) {
        const Long lMid = HalfToEven(lHi + lLo);
        Long lOrder = 0;
        KeyComp(oWanted, Slot(lMid), lOrder);
        if (lOrder == 0) {
            if (!Slot(lMid).Deleted) {
                lResult = lMid;
                return;
            }
            Defrag();
            lLo = 1;
            lHi = m_lHighest;
        } else if (lOrder == -1) {
            lHi = lMid - 1;
        } else {
            lLo = lMid + 1;
        }
    }
    lResult = 0;
} catch (...) {
    Reraise("SortedList", "BinarySearch");
}

void SortedList::KeyComp(const SortedListItem& oItem1, const SortedListItem& oItem2, Long& lResult) const try {
    if (m_eSortMode == SortNumeric) {
        const Double dblKey1 = oItem1.KeyNumber();
        const Double dblKey2 = oItem2.KeyNumber();
        lResult = dblKey1 > dblKey2 ? 1 : dblKey1 < dblKey2 ? -1 : 0;
    } else {
        const int nOrder = SortedListItem::CompareTexts(oItem1, oItem2);
        lResult = nOrder > 0 ? 1 : nOrder < 0 ? -1 : 0;
    }
} catch (...) {
    Reraise("SortedList", "KeyComp");
}

void SortedList::SortIfNeeded() {
    if (!m_bNeedsSort)
        return;
    Long lLo = 0;
    Long lHi = 0;
    QuickSort(lLo, lHi);
}

// The first live slot, or 0. The index has sixteen bits.
Long SortedList::TopSlot() {
    SortIfNeeded();
    std::int16_t nIndex = 0;
    while (nIndex != m_lHighest) {
        if (nIndex == std::numeric_limits<std::int16_t>::max())
            Fail(FailureNumber::Overflow);
        ++nIndex;
        if (!Slot(nIndex).Deleted)
            return nIndex;
    }
    return 0;
}

void SortedList::RemoveSlot(Long lIndex) {
    SortedListItem& oItem = Slot(lIndex);
    const Variant vReleased = oItem.TakeValue(); // its end may call back, so it comes last
    oItem.Deleted = true;
    --m_lCount;
}

// All live slots in order. Fails with 9 when there are more of them than items, for which there would be no place.
std::vector<Long> SortedList::LiveSlots() {
    std::vector<Long> aSlots;
    if (m_lCount == 0)
        return aSlots;
    SortIfNeeded();
    if (m_lCount < 0)
        Fail(FailureNumber::Subscript);
    aSlots.reserve(static_cast<std::size_t>(m_lCount));
    for (Long lSlot = 1; lSlot <= m_lHighest; ++lSlot) {
        if (Slot(lSlot).Deleted)
            continue;
        if (static_cast<Long>(aSlots.size()) == m_lCount)
            Fail(FailureNumber::Subscript);
        aSlots.push_back(lSlot);
    }
    return aSlots;
}

} // namespace corvane
