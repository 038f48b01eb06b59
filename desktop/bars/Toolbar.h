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
    Toolbar(MenuBuilder& oMenus, BarActions& oActions, QWidget* pParent);

    // What stands in it, in order, the hidden ones too.
    void SetInstances(std::vector<Ref<Tool>> aInstances);
    // Brings the buttons up to those that are visible now. False when there is none.
    bool ShowButtons();
    // The button that closes it while it floats, where its frame has none.
    [[nodiscard]] QAction* CloseAction() const { return m_pClose; }

private:
    struct Entry {
        Ref<Tool> oInstance;
        bool bSeparator;
    };
    // A button or a separator. It shows nothing while there are fewer instances to show than there have been.
    struct Slot {
        QAction* pAction;
        bool bSeparator;
        bool bUsed;
        Ref<Tool> oInstance; // of a button that is used
        std::string sDropDownBand;
        QToolButton* pButton;
    };
    using Slots = std::vector<std::unique_ptr<Slot>>;

    [[nodiscard]] std::vector<const Entry*> VisibleEntries() const;
    [[nodiscard]] static bool Shows(const Slot& oSlot, const Entry& oEntry);
    void Place(std::size_t iSlot, std::size_t iEndSlot, const std::vector<const Entry*>& aEntries);
    std::unique_ptr<Slot> NewSlot(const Entry& oEntry, QAction* pBefore);
    void Use(Slot& oSlot, const Entry& oEntry);
    void LetGo(Slot& oSlot);
    void LeaveButton(QToolButton& oButton);
    void Clicked(const Slot& oSlot);

    MenuBuilder& m_oMenus;
    BarActions& m_oActions;
    std::vector<Entry> m_aEntries;
    Slots m_aSlots;
    std::map<std::string, QMenu*> m_mapMenus; // by the band that they show
    QAction* m_pClose;
};

} // namespace corvane::desktop
