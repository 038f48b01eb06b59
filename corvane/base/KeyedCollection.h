// An ordered sequence with a 1-based index and an optional key per element, compared without regard to case.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Ref.h"
#include "corvane/base/SharedText.h"
#include "corvane/base/TextIndex.h"
#include "corvane/base/Variant.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace corvane {

[[noreturn, gnu::visibility("default")]] void FailKeyInUse(std::string_view sKey);
[[noreturn, gnu::visibility("default")]] void FailNoSuchKey(std::string_view sKey);
[[noreturn, gnu::visibility("default")]] void FailNoSuchIndex(long long nIndex, long long nCount);

// What of a collection can be called by name, whatever its elements are: "Count", "Item" by key or index, "HasKey" and
// "KeyAt".
class __attribute__((visibility("default"))) CollectionByName : public virtual Object {
public:
    Variant Invoke(std::string_view sName, std::span<const Variant> aArguments) override;
    [[nodiscard]] std::vector<MemberInfo> MembersByName() const override;
    [[nodiscard]] bool HasMember(std::string_view sName) const override;

    std::string_view TypeName() const override { return "KeyedCollection"; }

private:
    [[nodiscard]] virtual Variant NamedItem(std::string_view sKey) const = 0;
    [[nodiscard]] virtual Variant ItemAt(Long lIndex) const = 0;
    [[nodiscard]] virtual bool IsKey(std::string_view sKey) const = 0;
    [[nodiscard]] virtual std::string KeyOf(Long lIndex) const = 0;
    [[nodiscard]] virtual Long Size() const = 0;
};

// T is Ref of something or a value type. Look-up by key is one hash look-up, or a look at each key while there are a
// few elements only, which then need no index: there are several collections for every definition. Iteration goes in
// order of insertion, and elements may be added and removed meanwhile: what is added is still reached, what is removed
// is passed over.
template <class T>
class __attribute__((visibility("default"))) KeyedCollection final : public CollectionByName {
    struct Slot {
        T oValue{};
        SharedText sKey;
        bool bHasKey = false;
        bool bLive = true;
    };
    using Place = std::uint32_t;
    static constexpr std::size_t None = static_cast<std::size_t>(-1);
    static constexpr std::size_t nFew = 16;

public:
    KeyedCollection() = default;

    // Reserves memory for that many elements.
    void Reserve(std::size_t nElements) { m_aSlots.reserve(nElements); }
    void Add(T oValue) { m_aSlots.push_back({std::move(oValue), {}, false, true}); }
    // An empty key is a key like any other. Fails with 457 when the key is present; nothing is added then.
    void Add(T oValue, std::string_view sKey) { AddShared(std::move(oValue), SharedText(sKey)); }
    // The same for a key that is shared with another owner.
    void AddShared(T oValue, SharedText sKey) {
        if (HasIndex() ? m_pPlaces->AddOrFind(sKey.Get(), static_cast<Place>(m_aSlots.size()), KeyOfPlace()) != nullptr
                       : HasKey(sKey.Get()))
            FailKeyInUse(sKey.Get());
        m_aSlots.push_back({std::move(oValue), std::move(sKey), true, true});
    }

    // Both fail with 5 when there is no such element.
    [[nodiscard]] T Item(std::string_view sKey) const { return m_aSlots[SlotOf(sKey)].oValue; }
    [[nodiscard]] T Item(Long lIndex) const { return m_aSlots[SlotAt(lIndex)].oValue; }
    // The same by key, quicker when the element is the n-th (from 0) of those added and none has been removed.
    [[nodiscard]] T ItemNear(const SharedText& sKey, std::size_t nPlace) const {
        if (nPlace < m_aSlots.size() && m_aSlots[nPlace].bHasKey && m_aSlots[nPlace].sKey == sKey)
            return m_aSlots[nPlace].oValue;
        return Item(sKey.Get());
    }
    // A null pointer when there is no such element; holds until the next change of the collection.
    [[nodiscard]] const T* Find(std::string_view sKey) const {
        const std::size_t iSlot = FindSlot(sKey);
        return iSlot == None ? nullptr : &m_aSlots[iSlot].oValue;
    }
    void Remove(std::string_view sKey) { RemoveSlot(SlotOf(sKey)); }
    void Remove(Long lIndex) { RemoveSlot(SlotAt(lIndex)); }

    [[nodiscard]] Long Count() const { return static_cast<Long>(m_aSlots.size() - m_nDead); }
    [[nodiscard]] bool HasKey(std::string_view sKey) const { return FindSlot(sKey) != None; }
    // The key of an element by its index; empty for one without.
    [[nodiscard]] std::string KeyAt(Long lIndex) const { return m_aSlots[SlotAt(lIndex)].sKey; }

    struct End {};
    class Iterator {
    public:
        explicit Iterator(const KeyedCollection& oCollection) : m_oCollection(&oCollection) {
            ++oCollection.m_nIterators;
            SkipDead();
        }
        Iterator(const Iterator&) = delete;
        Iterator& operator=(const Iterator&) = delete;
        ~Iterator() { --m_oCollection->m_nIterators; }
        T operator*() const { return m_oCollection->m_aSlots[m_iSlot].oValue; }
        Iterator& operator++() {
            ++m_iSlot;
            SkipDead();
            return *this;
        }
        bool operator!=(End) const { return m_iSlot < m_oCollection->m_aSlots.size(); }

    private:
        void SkipDead() {
            while (m_iSlot < m_oCollection->m_aSlots.size() && !m_oCollection->m_aSlots[m_iSlot].bLive)
                ++m_iSlot;
        }
        Ref<const KeyedCollection> m_oCollection; // its last other reference may go meanwhile
        std::size_t m_iSlot = 0;
    };
    [[nodiscard]] Iterator begin() const { return Iterator(*this); }
    [[nodiscard]] End end() const { return {}; }

private:
    // Values that don't travel by name are read as nothing.
    [[nodiscard]] static Variant AsVariant(const T& oValue) {
        if constexpr (std::is_constructible_v<Variant, const T&>)
            return Variant(oValue);
        else
            return {};
    }
    [[nodiscard]] Variant NamedItem(std::string_view sKey) const override {
        return AsVariant(m_aSlots[SlotOf(sKey)].oValue);
    }
    [[nodiscard]] Variant ItemAt(Long lIndex) const override { return AsVariant(m_aSlots[SlotAt(lIndex)].oValue); }
    [[nodiscard]] bool IsKey(std::string_view sKey) const override { return HasKey(sKey); }
    [[nodiscard]] std::string KeyOf(Long lIndex) const override { return KeyAt(lIndex); }
    [[nodiscard]] Long Size() const override { return Count(); }

    [[nodiscard]] auto KeyOfPlace() const {
        return [this](Place iPlace) -> std::string_view { return m_aSlots[iPlace].sKey.Get(); };
    }
    // Asked before an element is added. Once there is an index it stays.
    [[nodiscard]] bool HasIndex() {
        if (m_pPlaces || m_aSlots.size() < nFew)
            return m_pPlaces != nullptr;
        m_pPlaces = std::make_unique<TextIndex<Place>>();
        for (std::size_t i = 0; i < m_aSlots.size(); ++i)
            if (m_aSlots[i].bHasKey)
                m_pPlaces->AddOrFind(m_aSlots[i].sKey.Get(), static_cast<Place>(i), KeyOfPlace());
        return true;
    }
    // None when there is no such element.
    [[nodiscard]] std::size_t FindSlot(std::string_view sKey) const {
        if (m_pPlaces) {
            const Place* pPlace = m_pPlaces->Find(sKey, KeyOfPlace());
            return pPlace ? *pPlace : None;
        }
        for (std::size_t i = 0; i < m_aSlots.size(); ++i)
            if (m_aSlots[i].bHasKey && EqualText(m_aSlots[i].sKey.Get(), sKey))
                return i;
        return None;
    }
    [[nodiscard]] std::size_t SlotOf(std::string_view sKey) const {
        const std::size_t iSlot = FindSlot(sKey);
        if (iSlot == None)
            FailNoSuchKey(sKey);
        return iSlot;
    }
    [[nodiscard]] std::size_t SlotAt(Long lIndex) const {
        if (lIndex < 1 || lIndex > Count())
            FailNoSuchIndex(lIndex, Count());
        Compact();
        if (m_nDead == 0)
            return static_cast<std::size_t>(lIndex) - 1;
        std::size_t i = 0;
        for (Long lLive = 0;; ++i)
            if (m_aSlots[i].bLive && ++lLive == lIndex)
                return i;
    }
    void RemoveSlot(std::size_t iSlot) {
        [[maybe_unused]] const T oRemoved =
            std::move(m_aSlots[iSlot].oValue); // its end may call back, so it comes last
        if (m_pPlaces && m_aSlots[iSlot].bHasKey)
            m_pPlaces->Remove(m_aSlots[iSlot].sKey.Get(), KeyOfPlace());
        m_aSlots[iSlot] = {T{}, {}, false, false};
        ++m_nDead;
        if (m_nDead > 32 && m_nDead > m_aSlots.size() / 2)
            Compact();
    }
    void Compact() const {
        if (m_nDead == 0 || m_nIterators != 0)
            return;
        std::size_t iTo = 0;
        for (std::size_t iFrom = 0; iFrom < m_aSlots.size(); ++iFrom) {
            if (!m_aSlots[iFrom].bLive)
                continue;
            if (iFrom != iTo) {
                if (m_pPlaces && m_aSlots[iFrom].bHasKey)
                    *m_pPlaces->Find(m_aSlots[iFrom].sKey.Get(), KeyOfPlace()) = static_cast<Place>(iTo);
                m_aSlots[iTo] = std::move(m_aSlots[iFrom]);
            }
            ++iTo;
        }
        m_aSlots.resize(iTo);
        m_nDead = 0;
    }

    mutable std::vector<Slot> m_aSlots;
    std::unique_ptr<TextIndex<Place>> m_pPlaces; // of the elements with a key; nothing while there are few
    mutable std::uint32_t m_nDead = 0;
    mutable std::uint32_t m_nIterators = 0;
};

// The most frequent one is compiled in the library.
extern template class __attribute__((visibility("default"))) KeyedCollection<Ref<Object>>;

// for (const auto& oItem : colItems), with the collection held meanwhile; 91 for nothing.
template <class T>
[[nodiscard]] auto begin(const Ref<KeyedCollection<T>>& colItems) {
    return colItems->begin();
}
template <class T>
[[nodiscard]] auto end(const Ref<KeyedCollection<T>>& colItems) {
    return colItems->end();
}

// Whether the collection has the key. Never fails.
template <class T>
[[nodiscard]] bool KeyExists(const Ref<KeyedCollection<T>>& colItems, std::string_view sKey) noexcept {
    return colItems && colItems.Get()->HasKey(sKey);
}

} // namespace corvane
