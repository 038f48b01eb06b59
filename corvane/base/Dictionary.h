// Values by name, in order of insertion, which services fill. Names compare without regard to case.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/base/Variant.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class __attribute__((visibility("default"))) Dictionary final : public Automation<Dictionary> {
public:
    // Fails with 457 when the name is present.
    void Add(std::string_view sName, Variant vValue);
    // Replaces the value in its place, or adds it.
    void Set(std::string_view sName, Variant vValue);
    // Both fail with 5 when there is no such name.
    [[nodiscard]] Variant Item(std::string_view sName) const { return m_colEntries->Item(sName)->vValue; }
    void Remove(std::string_view sName) { m_colEntries->Remove(sName); }
    [[nodiscard]] bool Exists(std::string_view sName) const { return m_colEntries->HasKey(sName); }
    [[nodiscard]] Long Count() const { return m_colEntries->Count(); }
    // In order of insertion, as they were first written.
    [[nodiscard]] std::vector<std::string> Keys() const;
    // One of those, from 1. Fails with 5 outside.
    [[nodiscard]] std::string KeyAt(Long lIndex) const { return m_colEntries->KeyAt(lIndex); }

    static constexpr auto Members =
        MemberTable(Method("Add", &Dictionary::Add), Method("Set", &Dictionary::Set), Method("Item", &Dictionary::Item),
                    Method("Remove", &Dictionary::Remove), Method("Exists", &Dictionary::Exists),
                    Property("Count", &Dictionary::Count), Method("KeyAt", &Dictionary::KeyAt));

private:
    struct Entry final : virtual Object {
        Variant vValue;
    };
    Ref<KeyedCollection<Ref<Entry>>> m_colEntries = New<KeyedCollection<Ref<Entry>>>();
};

} // namespace corvane
