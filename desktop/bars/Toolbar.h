// A toolbar on screen. It has only as many buttons as show: what comes takes over the button of what goes, as Qt would
// lay out hundreds of hidden ones again and again.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"

#include <QPointer>
#include <QToolBar>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QToolButton;

namespace corvane::desktop {

class BarActions;
class MenuBuilder;

class Toolbar final : public QToolBar {
public:
    Toolbar(MenuBuilder& menus, BarActions& actions, QWidget* parent);

    // What is in it, in order, the hidden ones too.
    void SetInstances(std::vector<Ref<Tool>> instances);
    // Brings the buttons up to those that are visible now. False when there is none.
    bool ShowButtons();
    // The button that closes it while it floats, where its frame has none.
    [[nodiscard]] QAction* CloseAction() const { return m_close; }

private:
    struct Entry {
        Ref<Tool> instance;
        bool separator;
    };
    // A button or a separator. It shows nothing while there are fewer instances to show than there have been.
    struct Slot {
        QAction* action;
        bool separator;
        bool used;
        Ref<Tool> instance; // of a button that is used
        std::string dropDownBand;
        QToolButton* button;
    };
    using Slots = std::vector<std::unique_ptr<Slot>>;

    [[nodiscard]] std::vector<const Entry*> VisibleEntries() const;
    [[nodiscard]] static bool Shows(const Slot& slot, const Entry& entry);
    void Place(std::size_t slotIndex, std::size_t endSlot, const std::vector<const Entry*>& entries);
    std::unique_ptr<Slot> NewSlot(const Entry& entry, QAction* before);
    void Use(Slot& slot, const Entry& entry);
    void LetGo(Slot& slot);
    void LeaveButton(QToolButton& button);
    void Clicked(const Slot& slot);

    MenuBuilder& m_menus;
    BarActions& m_actions;
    std::vector<Entry> m_entries;
    Slots m_slots;
    std::map<std::string, QMenu*> m_menuMap; // by the band that they show
    QAction* m_close;
};

} // namespace corvane::desktop
