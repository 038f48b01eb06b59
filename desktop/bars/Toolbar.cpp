#include "desktop/bars/Toolbar.h"

#include "desktop/bars/BarActions.h"
#include "desktop/bars/MenuBuilder.h"
#include "desktop/explorer/PictureIcon.h"

#include <QCoreApplication>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

namespace corvane::desktop {

Toolbar::Toolbar(MenuBuilder& menus, BarActions& actions, QWidget* parent)
    : QToolBar(parent), m_menus(menus), m_actions(actions) {
    const QIcon icon = QIcon::fromTheme("window-close", style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    m_close = new QAction(icon, QCoreApplication::translate("Toolbar", "Close"), this);
    m_close->setToolTip(QCoreApplication::translate("Toolbar", "Close this toolbar"));
    m_close->setVisible(false);
    addAction(m_close);
    connect(this, &QToolBar::topLevelChanged, m_close, &QAction::setVisible);
}

void Toolbar::SetInstances(std::vector<Ref<Tool>> instances) {
    m_entries.clear();
    m_entries.reserve(instances.size());
    for (auto& instance : instances) {
        const bool separator = EqualText(instance->Name(), "Separator");
        m_entries.push_back({std::move(instance), separator});
    }
}

// Separators at the ends and behind one another part nothing.
std::vector<const Toolbar::Entry*> Toolbar::VisibleEntries() const {
    std::vector<const Entry*> visible;
    for (const Entry& entry : m_entries)
        if (entry.separator ? !visible.empty() && !visible.back()->separator : entry.instance->Visible())
            visible.push_back(&entry);
    if (!visible.empty() && visible.back()->separator)
        visible.pop_back();
    return visible;
}

bool Toolbar::Shows(const Slot& slot, const Entry& entry) {
    if (!slot.used || slot.separator || entry.separator)
        return slot.used && slot.separator && entry.separator;
    return slot.instance == entry.instance && slot.dropDownBand == entry.instance->DropDownBand();
}

// What stays at the beginning and at the end isn't touched.
bool Toolbar::ShowButtons() {
    std::vector<const Entry*> entries = VisibleEntries();
    const bool any = !entries.empty();
    std::size_t slot = 0; // behind the last one that stays at the beginning
    std::size_t entry = 0;
    for (std::size_t i = 0; i < m_slots.size(); ++i) {
        if (!m_slots[i]->used)
            continue;
        if (entry == entries.size() || !Shows(*m_slots[i], *entries[entry]))
            break;
        ++entry;
        slot = i + 1;
    }
    entries.erase(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(entry));
    std::size_t endSlot = m_slots.size(); // the first one that stays at the end
    for (std::size_t i = endSlot; i > slot; --i) {
        if (!m_slots[i - 1]->used)
            continue;
        if (entries.empty() || !Shows(*m_slots[i - 1], *entries.back()))
            break;
        entries.pop_back();
        endSlot = i - 1;
    }
    if (slot < endSlot || !entries.empty())
        Place(slot, endSlot, entries);
    return any;
}

// Lets the slots of a range show the entries. Where there are too few of a kind, new ones come in.
void Toolbar::Place(std::size_t slotIndex, std::size_t endSlot, const std::vector<const Entry*>& entries) {
    std::vector<std::pair<Slot*, const Entry*>> taken;
    const auto leave = [&](std::size_t to) {
        for (; slotIndex < to; ++slotIndex)
            LetGo(*m_slots[slotIndex]);
    };
    for (const Entry* entry : entries) {
        std::size_t i = slotIndex;
        while (i < endSlot && m_slots[i]->separator != entry->separator)
            ++i;
        if (i == endSlot) {
            QAction* before = slotIndex < m_slots.size() ? m_slots[slotIndex]->action : m_close;
            m_slots.insert(m_slots.begin() + static_cast<std::ptrdiff_t>(slotIndex), NewSlot(*entry, before));
            ++endSlot;
        } else {
            leave(i);
            if (!Shows(*m_slots[i], *entry))
                taken.emplace_back(m_slots[i].get(), entry);
        }
        ++slotIndex;
    }
    leave(endSlot);
    for (const auto& [slot, entry] : taken)
        Use(*slot, *entry);
}

std::unique_ptr<Toolbar::Slot> Toolbar::NewSlot(const Entry& entry, QAction* before) {
    auto slot = std::make_unique<Slot>(Slot{new QAction(this), entry.separator, true, {}, {}, nullptr});
    if (entry.separator) {
        slot->action->setSeparator(true);
        insertAction(before, slot->action);
        return slot;
    }
    slot->used = false;
    Use(*slot, entry);
    insertAction(before, slot->action);
    auto* button = qobject_cast<QToolButton*>(widgetForAction(slot->action));
    slot->button = button;
    button->setFocusPolicy(Qt::TabFocus);
    button->setPopupMode(slot->action->menu() ? QToolButton::InstantPopup : QToolButton::DelayedPopup);
    Slot* const kept = slot.get(); // lives as long as the action
    connect(slot->action, &QAction::triggered, this, [this, kept] { Clicked(*kept); });
    connect(button, &QToolButton::pressed, this, [kept] {
        const QIcon pressed = kept->instance ? IconOf(kept->instance->PictureOf(Tool::Pressed)) : QIcon();
        if (!pressed.isNull())
            kept->button->setIcon(pressed);
    });
    connect(button, &QToolButton::released, this, [kept] { kept->button->setIcon(kept->action->icon()); });
    return slot;
}

void Toolbar::Use(Slot& slot, const Entry& entry) {
    if (slot.separator) {
        slot.used = true;
        slot.action->setVisible(true);
        return;
    }
    if (slot.used)
        m_actions.Leave(slot.instance.Get(), slot.action);
    if (slot.used && slot.button)
        LeaveButton(*slot.button);
    slot.used = true;
    slot.instance = entry.instance;
    if (const std::string& band = entry.instance->DropDownBand(); band != slot.dropDownBand) {
        slot.dropDownBand = band;
        QMenu* menu = nullptr;
        if (!band.empty()) {
            QMenu*& kept = m_menuMap[band];
            if (!kept)
                kept = m_menus.NewMenu(band, this);
            menu = kept;
        }
        slot.action->setMenu(menu);
        if (slot.button)
            slot.button->setPopupMode(menu ? QToolButton::InstantPopup : QToolButton::DelayedPopup);
    }
    m_actions.Follow(slot.instance, ActionPlace::Toolbar, slot.action, false);
}

void Toolbar::LetGo(Slot& slot) {
    if (!slot.used)
        return;
    slot.used = false;
    if (slot.separator) {
        slot.action->setVisible(false);
        return;
    }
    m_actions.Leave(slot.instance.Get(), slot.action);
    slot.instance = nullptr;
    slot.action->setVisible(false);
    slot.button->setDown(false);
    slot.button->hide();
}

// A button that is to show something else neither fires what the user pressed before nor keeps the keyboard.
void Toolbar::LeaveButton(QToolButton& button) {
    if (button.isDown())
        button.setDown(false);
    if (button.hasFocus())
        focusNextPrevChild(true);
}

void Toolbar::Clicked(const Slot& slot) {
    const QPointer<Toolbar> still = this;
    if (const Ref<Tool> instance = slot.instance)
        m_actions.Click(instance);
    if (still && slot.instance) // a click toggles the action by itself; what holds is the model
        m_actions.ShowState(slot.instance->Master());
}

} // namespace corvane::desktop
