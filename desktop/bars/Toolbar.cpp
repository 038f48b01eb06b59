#include "desktop/bars/Toolbar.h"

#include "desktop/bars/BarActions.h"
#include "desktop/bars/MenuBuilder.h"
#include "desktop/explorer/PictureIcon.h"

#include <QCoreApplication>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

namespace corvane::desktop {

Toolbar::Toolbar(MenuBuilder& oMenus, BarActions& oActions, QWidget* pParent)
    : QToolBar(pParent), m_oMenus(oMenus), m_oActions(oActions) {
    const QIcon oIcon = QIcon::fromTheme("window-close", style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    m_pClose = new QAction(oIcon, QCoreApplication::translate("Toolbar", "Close"), this);
    m_pClose->setToolTip(QCoreApplication::translate("Toolbar", "Close this toolbar"));
    m_pClose->setVisible(false);
    addAction(m_pClose);
    connect(this, &QToolBar::topLevelChanged, m_pClose, &QAction::setVisible);
}

void Toolbar::SetInstances(std::vector<Ref<Tool>> aInstances) {
    m_aEntries.clear();
    m_aEntries.reserve(aInstances.size());
    for (auto& oInstance : aInstances) {
        const bool bSeparator = EqualText(oInstance->Name(), "Separator");
        m_aEntries.push_back({std::move(oInstance), bSeparator});
    }
}

// Separators at the ends and behind one another part nothing.
std::vector<const Toolbar::Entry*> Toolbar::VisibleEntries() const {
    std::vector<const Entry*> aVisible;
    for (const Entry& oEntry : m_aEntries)
        if (oEntry.bSeparator ? !aVisible.empty() && !aVisible.back()->bSeparator : oEntry.oInstance->Visible())
            aVisible.push_back(&oEntry);
    if (!aVisible.empty() && aVisible.back()->bSeparator)
        aVisible.pop_back();
    return aVisible;
}

bool Toolbar::Shows(const Slot& oSlot, const Entry& oEntry) {
    if (!oSlot.bUsed || oSlot.bSeparator || oEntry.bSeparator)
        return oSlot.bUsed && oSlot.bSeparator && oEntry.bSeparator;
    return oSlot.oInstance == oEntry.oInstance && oSlot.sDropDownBand == oEntry.oInstance->DropDownBand();
}

// What stays at the beginning and at the end isn't touched.
bool Toolbar::ShowButtons() {
    std::vector<const Entry*> aEntries = VisibleEntries();
    const bool bAny = !aEntries.empty();
    std::size_t iSlot = 0; // behind the last one that stays at the beginning
    std::size_t iEntry = 0;
    for (std::size_t i = 0; i < m_aSlots.size(); ++i) {
        if (!m_aSlots[i]->bUsed)
            continue;
        if (iEntry == aEntries.size() || !Shows(*m_aSlots[i], *aEntries[iEntry]))
            break;
        ++iEntry;
        iSlot = i + 1;
    }
    aEntries.erase(aEntries.begin(), aEntries.begin() + static_cast<std::ptrdiff_t>(iEntry));
    std::size_t iEndSlot = m_aSlots.size(); // the first one that stays at the end
    for (std::size_t i = iEndSlot; i > iSlot; --i) {
        if (!m_aSlots[i - 1]->bUsed)
            continue;
        if (aEntries.empty() || !Shows(*m_aSlots[i - 1], *aEntries.back()))
            break;
        aEntries.pop_back();
        iEndSlot = i - 1;
    }
    if (iSlot < iEndSlot || !aEntries.empty())
        Place(iSlot, iEndSlot, aEntries);
    return bAny;
}

// Lets the slots of a range show the entries. Where there are too few of a kind, new ones come in.
void Toolbar::Place(std::size_t iSlot, std::size_t iEndSlot, const std::vector<const Entry*>& aEntries) {
    std::vector<std::pair<Slot*, const Entry*>> aTaken;
    const auto fnLeave = [&](std::size_t iTo) {
        for (; iSlot < iTo; ++iSlot)
            LetGo(*m_aSlots[iSlot]);
    };
    for (const Entry* pEntry : aEntries) {
        std::size_t i = iSlot;
        while (i < iEndSlot && m_aSlots[i]->bSeparator != pEntry->bSeparator)
            ++i;
        if (i == iEndSlot) {
            QAction* pBefore = iSlot < m_aSlots.size() ? m_aSlots[iSlot]->pAction : m_pClose;
            m_aSlots.insert(m_aSlots.begin() + static_cast<std::ptrdiff_t>(iSlot), NewSlot(*pEntry, pBefore));
            ++iEndSlot;
        } else {
            fnLeave(i);
            if (!Shows(*m_aSlots[i], *pEntry))
                aTaken.emplace_back(m_aSlots[i].get(), pEntry);
        }
        ++iSlot;
    }
    fnLeave(iEndSlot);
    for (const auto& [pSlot, pEntry] : aTaken)
        Use(*pSlot, *pEntry);
}

std::unique_ptr<Toolbar::Slot> Toolbar::NewSlot(const Entry& oEntry, QAction* pBefore) {
    auto pSlot = std::make_unique<Slot>(Slot{new QAction(this), oEntry.bSeparator, true, {}, {}, nullptr});
    if (oEntry.bSeparator) {
        pSlot->pAction->setSeparator(true);
        insertAction(pBefore, pSlot->pAction);
        return pSlot;
    }
    pSlot->bUsed = false;
    Use(*pSlot, oEntry);
    insertAction(pBefore, pSlot->pAction);
    auto* pButton = qobject_cast<QToolButton*>(widgetForAction(pSlot->pAction));
    pSlot->pButton = pButton;
    pButton->setFocusPolicy(Qt::TabFocus);
    pButton->setPopupMode(pSlot->pAction->menu() ? QToolButton::InstantPopup : QToolButton::DelayedPopup);
    Slot* const pKept = pSlot.get(); // lives as long as the action
    connect(pSlot->pAction, &QAction::triggered, this, [this, pKept] { Clicked(*pKept); });
    connect(pButton, &QToolButton::pressed, this, [pKept] {
        const QIcon oPressed = pKept->oInstance ? IconOf(pKept->oInstance->PictureOf(Tool::Pressed)) : QIcon();
        if (!oPressed.isNull())
            pKept->pButton->setIcon(oPressed);
    });
    connect(pButton, &QToolButton::released, this, [pKept] { pKept->pButton->setIcon(pKept->pAction->icon()); });
    return pSlot;
}

void Toolbar::Use(Slot& oSlot, const Entry& oEntry) {
    if (oSlot.bSeparator) {
        oSlot.bUsed = true;
        oSlot.pAction->setVisible(true);
        return;
    }
    if (oSlot.bUsed)
        m_oActions.Leave(oSlot.oInstance.Get(), oSlot.pAction);
    if (oSlot.bUsed && oSlot.pButton)
        LeaveButton(*oSlot.pButton);
    oSlot.bUsed = true;
    oSlot.oInstance = oEntry.oInstance;
    if (const std::string& sBand = oEntry.oInstance->DropDownBand(); sBand != oSlot.sDropDownBand) {
        oSlot.sDropDownBand = sBand;
        QMenu* pMenu = nullptr;
        if (!sBand.empty()) {
            QMenu*& pKept = m_mapMenus[sBand];
            if (!pKept)
                pKept = m_oMenus.NewMenu(sBand, this);
            pMenu = pKept;
        }
        oSlot.pAction->setMenu(pMenu);
        if (oSlot.pButton)
            oSlot.pButton->setPopupMode(pMenu ? QToolButton::InstantPopup : QToolButton::DelayedPopup);
    }
    m_oActions.Follow(oSlot.oInstance, ActionPlace::Toolbar, oSlot.pAction, false);
}

void Toolbar::LetGo(Slot& oSlot) {
    if (!oSlot.bUsed)
        return;
    oSlot.bUsed = false;
    if (oSlot.bSeparator) {
        oSlot.pAction->setVisible(false);
        return;
    }
    m_oActions.Leave(oSlot.oInstance.Get(), oSlot.pAction);
    oSlot.oInstance = nullptr;
    oSlot.pAction->setVisible(false);
    oSlot.pButton->setDown(false);
    oSlot.pButton->hide();
}

// A button that is to show something else neither fires what the person pressed before nor keeps the keyboard.
void Toolbar::LeaveButton(QToolButton& oButton) {
    if (oButton.isDown())
        oButton.setDown(false);
    if (oButton.hasFocus())
        focusNextPrevChild(true);
}

void Toolbar::Clicked(const Slot& oSlot) {
    const QPointer<Toolbar> pStill = this;
    if (const Ref<Tool> oInstance = oSlot.oInstance)
        m_oActions.Click(oInstance);
    if (pStill && oSlot.oInstance) // a click toggles the action by itself; what holds is the model
        m_oActions.ShowState(oSlot.oInstance->Master());
}

} // namespace corvane::desktop
