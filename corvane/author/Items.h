// What explorer items do with others: those that a user has selected, drops, and children that come when a folder
// opens.
#pragma once

#include "corvane/base/Automation.h"

#include <string>
#include <utility>
#include <vector>

namespace corvane {

// All items of the explorer that the user has selected, in the order of the tree; the active one is among them. Empty
// when none is selected. The host's main form has them as its member "SelectedItems". Fails with 438 in a host without
// that, and before the root's Initialize with 91.
[[nodiscard, gnu::visibility("default")]] std::vector<Ref<Object>> SelectedItems();

// What is dropped on an item, whose class has the members CanDrop and Drop: other items, or files. Made by the host.
class __attribute__((visibility("default"))) Dropped final : public Automation<Dropped> {
public:
    Dropped(std::vector<Ref<Object>> aItems, std::vector<std::string> aFiles, bool bCopies)
        : m_aItems(std::move(aItems)), m_aFiles(std::move(aFiles)), m_bCopies(bCopies) {}
    ~Dropped() override;

    // In the order of the tree; none of what is dropped is the target itself or above it.
    [[nodiscard]] const std::vector<Ref<Object>>& Items() const { return m_aItems; }
    [[nodiscard]] const std::vector<std::string>& Files() const { return m_aFiles; } // absolute paths, in UTF-8
    // Whether the user asks for copies, with Ctrl held down.
    [[nodiscard]] bool Copies() const { return m_bCopies; }

    // The same by name. Numbers begin with 1; they fail with 9 outside of the count.
    [[nodiscard]] Long Count() const { return static_cast<Long>(m_aItems.size()); }
    [[nodiscard]] Ref<Object> Item(Long lIndex) const;
    [[nodiscard]] Long FileCount() const { return static_cast<Long>(m_aFiles.size()); }
    [[nodiscard]] std::string File(Long lIndex) const;

    static constexpr auto Members = MemberTable(Property("Count", &Dropped::Count), Method("Item", &Dropped::Item),
                                                Property("FileCount", &Dropped::FileCount),
                                                Method("File", &Dropped::File), Property("Copies", &Dropped::Copies));

    std::string_view TypeName() const override { return "Dropped"; }

private:
    std::vector<Ref<Object>> m_aItems;
    std::vector<std::string> m_aFiles;
    bool m_bCopies;
};

// What a folder's member LazyChildren adds its children to. The host adds them to the explorer once the member has
// returned, and none if it fails.
class __attribute__((visibility("default"))) NewChildren final : public Automation<NewChildren> {
public:
    ~NewChildren() override;

    // sKind is the name of the item's definition. Fails with 91 for nothing.
    void Add(const Ref<Object>& oItem, const std::string& sKind);
    [[nodiscard]] Long Count() const { return static_cast<Long>(m_aAdded.size()); }
    [[nodiscard]] const std::vector<std::pair<Ref<Object>, std::string>>& All() const { return m_aAdded; }

    static constexpr auto Members =
        MemberTable(Method("Add", &NewChildren::Add), Property("Count", &NewChildren::Count));

    std::string_view TypeName() const override { return "NewChildren"; }

private:
    std::vector<std::pair<Ref<Object>, std::string>> m_aAdded;
};

} // namespace corvane
