// The user's own keys, toolbars and menus, kept as differences against the definition files: each change names the
// entry that it is about, and one whose entry has gone waits until it comes back.
#pragma once

#include "desktop/bars/BarChanges.h"
#include "desktop/commands/CommandList.h"
#include "desktop/state/StateFile.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace corvane::desktop {

// An entry as a change remembers it. When no tool has the key any more, the only entry of that action of that service
// is taken for the same one, moved.
struct EntryName {
    std::string tool;
    std::string service;
    std::string action;
    QString caption; // for users, as it was then
};

struct KeyChange {
    EntryName entry;
    QList<QKeySequence> keys;
};

// A change of one menu or toolbar.
struct PlaceChange {
    enum class What { Hidden, Moved, Added };
    What what = What::Hidden;
    std::string band;
    EntryName entry;
    std::string behind;     // the key of the entry in front of it; empty for the beginning. Not for what is hidden.
    std::string ahead = {}; // the key of the entry that follows it, which counts while that is there
};

// Whether it is the line between two entries of a bar.
[[nodiscard]] bool IsSeparator(const Tool& tool);

class PersonalBars final : public BarChanges {
public:
    // changed is called when something is to be drawn again.
    PersonalBars(StateFile file, Ref<ActiveBar> activeBar, std::function<void()> changed);
    ~PersonalBars() override;

    [[nodiscard]] QList<QKeySequence> KeysOf(const Tool& tool) const override;
    [[nodiscard]] bool HasOwnKeys(const Tool& tool) const override;
    [[nodiscard]] std::vector<Ref<Tool>> InstancesOf(const Band& band) const override;

    // The same with those that are hidden.
    [[nodiscard]] std::vector<Ref<Tool>> AllOf(const Band& band) const;

    // The user's changes. Each is kept at once.
    void SetKeys(const Tool& tool, const QList<QKeySequence>& keys);
    void ResetKeys(const Tool& tool);
    void ResetAllKeys();
    void SetHidden(const Band& band, const Tool& tool, bool hidden);
    [[nodiscard]] bool IsHidden(const Band& band, const Tool& tool) const;
    // The entry comes behind the other one of the same menu or toolbar, or to the beginning for nothing. Where ahead is
    // given, it comes in front of that, as behind a separator.
    void Move(const Band& band, const Tool& tool, const Tool* behind, const Tool* ahead = nullptr);
    void Add(const Band& band, const Tool& tool);
    void RemoveAdded(const Band& band, const Tool& tool);
    [[nodiscard]] bool IsAdded(const Band& band, const Tool& tool) const;
    [[nodiscard]] bool HasChanges(const Band& band) const;
    void ResetBand(const Band& band);
    void ResetAllBands();

    // Changes whose entries aren't there now.
    struct Aside {
        QString text;
        std::function<void()> forget;
    };
    [[nodiscard]] std::vector<Aside> KeysAside();
    [[nodiscard]] std::vector<Aside> PlacesAside();

private:
    void Read();
    void Changed();
    [[nodiscard]] EntryName NameOf(const Tool& tool) const;
    [[nodiscard]] const Tool* Find(const EntryName& entry) const;
    void Settle() const;
    [[nodiscard]] Ref<Tool> AddedInstance(const Band& band, const Tool& tool) const;

    StateFile m_file;
    Ref<ActiveBar> m_activeBar;
    std::function<void()> m_changed;
    std::vector<KeyChange> m_keys;
    std::vector<PlaceChange> m_places;

    // What the changes come to among the tools that are there; found again when tools have been added.
    struct SettledPlace {
        const PlaceChange* change;
        const Tool* tool;
        bool movedByFiles; // it is under another key now
    };
    mutable bool m_isSettled = false;
    mutable std::optional<Subscription> m_barChanged; // from the first time on: a start adds very many tools
    mutable std::unordered_map<const Tool*, const KeyChange*> m_keyMap;
    mutable std::vector<SettledPlace> m_settled;
    mutable std::unordered_map<std::string, std::unordered_map<const Tool*, Ref<Tool>>> m_added;
};

} // namespace corvane::desktop
