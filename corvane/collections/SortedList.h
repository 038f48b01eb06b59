// A map from a key to a value that is filled first and read afterwards: adding appends, the first read that needs
// order sorts. It is the library's own and no part of what hosts and plug-ins see.
#pragma once

#include "corvane/base/Object.h"
#include "corvane/base/SharedText.h"
#include "corvane/base/Variant.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

// Numeric keys order as numbers, so that 9 comes before 10 and 1 equals 1.0; text keys without regard to case.
enum SortModeConstants : Long { SortNumeric = 0, SortText = 1 };

// One slot of the table. Nearly all values are objects and nearly all keys numbers, which are in it as they are; that
// keeps a slot small.
class SortedListItem {
public:
    SortedListItem() = default; // the empty key, the empty value
    explicit SortedListItem(std::string_view sKey) : m_sKey(sKey) {}
    SortedListItem(const Variant& vKey, Variant vValue);

    // The key stays when the slot is removed, which can still be sorted and found.
    [[nodiscard]] std::string Key() const;
    // What the key reads as, kept from the first time on. Fails with 13 for no number, with 6 for one too large.
    [[nodiscard]] Double KeyNumber() const;
    [[nodiscard]] bool IsKeyNumeric() const;
    [[nodiscard]] bool IsKeyWhole() const { return m_eKeyState == KeyState::Whole; }
    [[nodiscard]] static int CompareTexts(const SortedListItem& oLeft, const SortedListItem& oRight);

    [[nodiscard]] Variant Value() const;
    // Puts no object in place of an object, the Long 0 in place of anything else, and returns what was there.
    Variant TakeValue();

    bool Deleted = false;

private:
    enum class KeyState : std::uint8_t { Text, TextAndNumber, Whole };

    bool m_bObject = false;
    mutable KeyState m_eKeyState = KeyState::Text;
    SharedText m_sKey;              // unless the key is a Long
    mutable Double m_dblNumber = 0; // unless the key is a text that hasn't been read as a number
    Ref<Object> m_oValue;           // also what holds a value that isn't an object; nothing for the empty one
};

// While the mode is numeric, every read that sorts or searches fails with 13 when it meets a key that isn't a number.
class SortedList final : public virtual Object {
public:
    // Removes the item of that key, any one of several. A key that isn't there is ignored.
    void Remove(std::string_view sKey);
    // Removes the first item in order of the keys, if there is one. Fails with 6 when it is behind slot 32767.
    void RemoveTop();
    [[nodiscard]] Long Count() const { return m_lCount; }
    // The values and the keys in order of the keys. The first is at index 0; none at all for an empty list.
    // Both fail with 9 once a compaction has brought never-used slots into the range.
    [[nodiscard]] std::vector<Variant> Items();
    [[nodiscard]] std::vector<std::string> Keys();
    // In numeric mode a key that isn't a number fails with 0x80040001.
    [[nodiscard]] bool Exists(std::string_view sKey);
    // Releases all values. The mode stays.
    void Clear();
    // Numeric until it is set. Setting it fails with 0x80040003 unless the list is empty.
    [[nodiscard]] SortModeConstants SortMode() const { return m_eSortMode; }
    void SetSortMode(SortModeConstants eSortMode);
    // The value of a key; empty when it isn't there.
    [[nodiscard]] Variant Item(std::string_view sKey);
    // The first value in order of the keys, or the Long 0 when there is none. Fails as RemoveTop does.
    [[nodiscard]] Variant GetTop();

    // Appends. An equal key is not looked for: it leaves two items of one key. In numeric mode a key whose text is no
    // number fails with 0x80040001; in any mode an object as key fails. Nothing changes then.
    void Add(const Variant& vKey, Variant vValue);

private:
    // 0 as the lower bound represents the whole working range, and is then written.
    void QuickSort(Long& lLo, Long& lHi);
    void SelectionSort(Long lLo, Long lHi);
    [[nodiscard]] bool SortDifferentNumbers();
    void Allocate();
    void Defrag();
    // The slot of a live item with the key, or 0.
    void BinarySearch(std::string_view sKey, Long& lResult);
    // 1, -1 or 0 as the first key orders after, before or with the second.
    void KeyComp(const SortedListItem& oItem1, const SortedListItem& oItem2, Long& lResult) const;

    [[nodiscard]] SortedListItem& Slot(Long lIndex) { return m_aItems[static_cast<std::size_t>(lIndex) - 1]; }
    void SortIfNeeded();
    [[nodiscard]] Long Partition(Long lLo, Long lHi);
    [[nodiscard]] Long TopSlot();
    void RemoveSlot(Long lIndex);
    [[nodiscard]] std::vector<Long> LiveSlots();

    Long m_lCount = 0;
    Long m_lHighest = 0;                  // slots 1 to this one are the working range, removed ones among them
    std::vector<SortedListItem> m_aItems; // slots count from 1, so slot 1 is element 0
    Long m_lAllocated = 0;
    Long m_lCompactBelow = 0; // a compaction that leaves fewer live items than this gives memory back
    bool m_bNeedsSort = false;
    SortModeConstants m_eSortMode = SortNumeric;
    std::uint32_t m_uRandom = 0x2545F491u; // state of the pivot's generator; never 0
};

} // namespace corvane
