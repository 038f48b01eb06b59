#include "desktop/MenuBar.h"

#include "desktop/BarActions.h"
#include "desktop/MenuBuilder.h"

#include <algorithm>

namespace corvane::desktop {

namespace {

// More than fit on a screen. The menus of the titles behind are made when somebody comes to them.
constexpr std::size_t nMenusAtOnce = 100;

} // namespace

MenuBar::MenuBar(MenuBuilder& oMenus, BarActions& oActions, QWidget* pParent)
    : QMenuBar(pParent), m_oMenus(oMenus), m_oActions(oActions) {
    m_oSample.addAction(QStringLiteral("X"));
    // Before anything opens from a title, it is under the pointer or the keyboard's.
    connect(this, &QMenuBar::hovered, this, [this](QAction* pAction) {
        for (const Title& oTitle : m_aTitles)
            if (oTitle.pAction == pAction && !oTitle.sDropDownBand.empty())
                GiveMenu(pAction, oTitle.sDropDownBand);
    });
}

void MenuBar::Show(const Band& oBand) {
    setVisible(oBand.Visible());
    std::vector<Title> aOld = std::exchange(m_aTitles, {});
    std::vector<QAction*> aBefore;
    for (const Title& oTitle : aOld)
        aBefore.push_back(oTitle.pAction);
    for (const auto& oInstance : oBand.Tools()->All())
        if (!EqualText(oInstance->Name(), "Separator"))
            m_aTitles.push_back(TakeOrMake(oInstance, aOld, m_aTitles.size() < nMenusAtOnce));
    if (std::equal(m_aTitles.begin(), m_aTitles.end(), aBefore.begin(), aBefore.end(),
                   [](const Title& oTitle, const QAction* pAction) { return oTitle.pAction == pAction; }))
        return;
    for (QAction* pAction : aBefore)
        removeAction(pAction);
    for (const Title& oTitle : m_aTitles)
        addAction(oTitle.pAction);
    for (const Title& oTitle : aOld)
        if (oTitle.pAction) {
            // One of its entries may be what is running now.
            if (QMenu* pMenu = oTitle.pAction->menu())
                pMenu->deleteLater();
            oTitle.pAction->deleteLater();
        }
}

// What is taken leaves nothing behind in the old titles.
MenuBar::Title MenuBar::TakeOrMake(const Ref<Tool>& oInstance, std::vector<Title>& aOld, bool bMenuAtOnce) {
    const std::string& sBand = oInstance->DropDownBand();
    const auto itOld = std::find_if(aOld.begin(), aOld.end(), [&](const Title& oTitle) {
        return oTitle.pAction && oTitle.oInstance == oInstance && oTitle.sDropDownBand == sBand;
    });
    if (itOld != aOld.end())
        return {oInstance, sBand, std::exchange(itOld->pAction, nullptr)};
    if (sBand.empty())
        return {oInstance, sBand, m_oActions.Add(oInstance, ActionPlace::Menu, this)};
    auto* pTitle = new QAction(this);
    m_oActions.Follow(oInstance, ActionPlace::Menu, pTitle, false);
    if (bMenuAtOnce)
        GiveMenu(pTitle, sBand);
    return {oInstance, sBand, pTitle};
}

void MenuBar::GiveMenu(QAction* pTitle, const std::string& sBand) {
    if (!pTitle->menu())
        pTitle->setMenu(m_oMenus.NewMenu(sBand, this));
}

bool MenuBar::HasVisibleTitle() const {
    return std::any_of(m_aTitles.begin(), m_aTitles.end(),
                       [](const Title& oTitle) { return oTitle.pAction->isVisible(); });
}

const QMenuBar& MenuBar::Sample() const {
    if (m_oSample.font() != font())
        m_oSample.setFont(font());
    return m_oSample;
}

int MenuBar::heightForWidth(int nWidth) const {
    return HasVisibleTitle() ? Sample().heightForWidth(nWidth) : QMenuBar::heightForWidth(nWidth);
}

QSize MenuBar::sizeHint() const {
    return HasVisibleTitle() ? Sample().sizeHint() : QMenuBar::sizeHint();
}

QSize MenuBar::minimumSizeHint() const {
    return HasVisibleTitle() ? Sample().minimumSizeHint() : QMenuBar::minimumSizeHint();
}

} // namespace corvane::desktop
