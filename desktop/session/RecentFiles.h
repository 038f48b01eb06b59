// The files that an application opened last, kept for it between runs: the main form's member "RecentFiles".
#pragma once

#include "corvane/base/Automation.h"
#include "desktop/state/StateFile.h"

#include <functional>
#include <string>
#include <vector>

namespace corvane::desktop {

class RecentFiles final : public Automation<RecentFiles> {
public:
    static constexpr std::size_t MostFiles = 12;

    explicit RecentFiles(StateFile file);

    // The file comes first; one that is there already moves.
    void Add(const std::string& path);
    // Harmless for a file that isn't there.
    void Remove(const std::string& path);
    void Clear();
    [[nodiscard]] Long Count() const { return static_cast<Long>(m_paths.size()); }
    // Called when they are others.
    void SetOnChange(std::function<void()> onChange) { m_onChange = std::move(onChange); }
    // From 1, the latest. Fails with 9 outside.
    [[nodiscard]] std::string Item(Long position) const;

    std::string_view TypeName() const override { return "RecentFiles"; }

    static constexpr auto Members = MemberTable(
        Method("Add", &RecentFiles::Add), Method("Remove", &RecentFiles::Remove), Method("Clear", &RecentFiles::Clear),
        Property("Count", &RecentFiles::Count), Method("Item", &RecentFiles::Item));

private:
    void Save();

    StateFile m_file;
    std::vector<std::string> m_paths;
    std::function<void()> m_onChange;
};

} // namespace corvane::desktop
