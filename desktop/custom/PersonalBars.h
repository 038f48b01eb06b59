// A person's own keys, toolbars and menus, kept as differences against the definition files: each change names the
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
    std::string sTool;
    std::string sService;
    std::string sAction;
    QString sCaption; // for people, as it was then
};

struct KeyChange {
    EntryName oEntry;
    QList<QKeySequence> aKeys;
};

// A change of one menu or toolbar.
struct PlaceChange {
    enum class What { Hidden, Moved, Added };
    What eWhat = What::Hidden;
    std::string sBand;
    EntryName oEntry;
    std::string sBehind; // the key of the entry in front of it; empty for the beginning. Not for what is hidden.
};

class PersonalBars final : public BarChanges {
public:
    // fnChanged is called when something is to be drawn anew.
    PersonalBars(StateFile oFile, Ref<ActiveBar> oActiveBar, std::function<void()> fnChanged);
    ~PersonalBars() override;

    [[nodiscard]] QList<QKeySequence> KeysOf(const Tool& oTool) const override;
    [[nodiscard]] bool HasOwnKeys(const Tool& oTool) const override;
    [[nodiscard]] std::vector<Ref<Tool>> InstancesOf(const Band& oBand) const override;

    // The same with those that are hidden.
    [[nodiscard]] std::vector<Ref<Tool>> AllOf(const Band& oBand) const;

    // The person's changes. Each is kept at once.
    void SetKeys(const Tool& oTool, const QList<QKeySequence>& aKeys);
    void ResetKeys(const Tool& oTool);
    void ResetAllKeys();
    void SetHidden(const Band& oBand, const Tool& oTool, bool bHidden);
    [[nodiscard]] bool IsHidden(const Band& oBand, const Tool& oTool) const;
    // Of toolbars alone. The entry comes behind the other one of the same toolbar, or to the beginning for nothing.
    void Move(const Band& oBand, const Tool& oTool, const Tool* pBehind);
    void Add(const Band& oBand, const Tool& oTool);
    void RemoveAdded(const Band& oBand, const Tool& oTool);
    [[nodiscard]] bool IsAdded(const Band& oBand, const Tool& oTool) const;
    [[nodiscard]] bool HasChanges(const Band& oBand) const;
    void ResetBand(const Band& oBand);
    void ResetAllBands();

    // Changes whose entries aren't there now.
    struct Aside {
        QString sText;
        std::function<void()> fnForget;
    };
    [[nodiscard]] std::vector<Aside> KeysAside();
    [[nodiscard]] std::vector<Aside> PlacesAside();

private:
    void Read();
    void Changed();
    [[nodiscard]] EntryName NameOf(const Tool& oTool) const;
    [[nodiscard]] const Tool* Find(const EntryName& oEntry) const;
    void Settle() const;
    [[nodiscard]] Ref<Tool> AddedInstance(const Band& oBand, const Tool& oTool) const;

    StateFile m_oFile;
    Ref<ActiveBar> m_oActiveBar;
    std::function<void()> m_fnChanged;
    std::vector<KeyChange> m_aKeys;
    std::vector<PlaceChange> m_aPlaces;

    // What the changes come to among the tools that are there; found again when tools have been added.
    struct SettledPlace {
        const PlaceChange* pChange;
        const Tool* pTool;
        bool bMovedByFiles; // it stands under another key now
    };
    mutable bool m_bSettled = false;
    mutable std::optional<Subscription> m_oBarChanged; // from the first time on: a start adds very many tools
    mutable std::unordered_map<const Tool*, const KeyChange*> m_mapKeys;
    mutable std::vector<SettledPlace> m_aSettled;
    mutable std::unordered_map<std::string, std::unordered_map<const Tool*, Ref<Tool>>> m_mapAdded;
};

} // namespace corvane::desktop
