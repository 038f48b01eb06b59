#include "desktop/bars/MenuBar.h"

#include "desktop/bars/BarActions.h"
#include "desktop/bars/MenuBuilder.h"

#include <algorithm>
#include <set>

namespace corvane::desktop {

namespace {

constexpr std::size_t nMostTitles = 60;
constexpr std::size_t nFewTitles = 24;   // are measured as they are
constexpr int nSettleMilliseconds = 100; // nobody presses a key before the first picture

} // namespace

MenuBar::MenuBar(MenuBuilder& oMenus, BarActions& oActions, QWidget* pParent)
    : QMenuBar(pParent), m_oMenus(oMenus), m_oActions(oActions), m_pRest(new QMenu(tr("More"), this)) {
    m_pRest->addAction(QString()); // an empty menu is never asked to open
    m_oRestKeys.setSingleShot(true);
    m_oRestKeys.setInterval(nSettleMilliseconds);
    connect(&m_oRestKeys, &QTimer::timeout, this, &MenuBar::TakeRestKeys);
    connect(m_pRest, &QMenu::aboutToShow, this, [this] { m_oMenus.FillWith(m_pRest, m_aRest); });
}

void MenuBar::Show(const Band& oBand) {
    setVisible(oBand.Visible());
    std::vector<Title> aOld = std::exchange(m_aTitles, {});
    std::vector<QAction*> aBefore;
    for (const Title& oTitle : aOld)
        aBefore.push_back(oTitle.pAction);
    std::vector<Ref<Tool>> aRest;
    for (const auto& oInstance : oBand.Tools()->All()) {
        if (EqualText(oInstance->Name(), "Separator"))
            continue;
        if (m_aTitles.size() < nMostTitles)
            m_aTitles.push_back(TakeOrMake(oInstance, aOld));
        else
            aRest.push_back(oInstance);
    }
    const bool bSame =
        std::equal(m_aTitles.begin(), m_aTitles.end(), aBefore.begin(), aBefore.end(),
                   [](const Title& oTitle, const QAction* pBefore) { return oTitle.pAction == pBefore; });
    if (!bSame) {
        for (QAction* pAction : aBefore)
            removeAction(pAction);
        for (const Title& oTitle : m_aTitles)
            insertAction(m_aRest.empty() ? nullptr : m_pRest->menuAction(), oTitle.pAction);
        for (const Title& oTitle : aOld)
            if (oTitle.pAction) {
                // One of its entries may be what is running now.
                if (QMenu* pMenu = oTitle.pAction->menu())
                    pMenu->deleteLater();
                oTitle.pAction->deleteLater();
            }
    }
    ShowRest(std::move(aRest));
}

void MenuBar::ShowRest(std::vector<Ref<Tool>> aRest) {
    if (aRest.empty() && !m_aRest.empty())
        removeAction(m_pRest->menuAction());
    else if (!aRest.empty() && m_aRest.empty())
        addAction(m_pRest->menuAction());
    if (!aRest.empty() || !m_aRestKeys.empty())
        m_oRestKeys.start();
    m_aRest = std::move(aRest);
}

// The first title of a letter has it. Those in the bar have theirs from Qt.
void MenuBar::TakeRestKeys() {
    m_aRestKeys.clear();
    std::set<QKeySequence> setTaken{QKeySequence()};
    for (const QAction* pAction : actions())
        if (pAction->isVisible())
            setTaken.insert(QKeySequence::mnemonic(pAction->text()));
    for (const Ref<Tool>& oInstance : m_aRest) {
        const QKeySequence oKey = QKeySequence::mnemonic(CaptionOf(*oInstance));
        if (!oInstance->Visible() || !setTaken.insert(oKey).second)
            continue;
        m_aRestKeys.push_back(std::make_unique<QShortcut>(oKey, this));
        connect(m_aRestKeys.back().get(), &QShortcut::activated, this, [this, oInstance] { OpenInRest(oInstance); });
    }
}

void MenuBar::OpenInRest(const Ref<Tool>& oInstance) {
    setActiveAction(m_pRest->menuAction());
    for (QAction* pAction : m_pRest->actions())
        if (m_oActions.InstanceOf(pAction) == oInstance)
            m_pRest->setActiveAction(pAction);
}

// What is taken leaves nothing behind in the old titles.
MenuBar::Title MenuBar::TakeOrMake(const Ref<Tool>& oInstance, std::vector<Title>& aOld) {
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
    pTitle->setMenu(m_oMenus.NewMenu(sBand, this));
    return {oInstance, sBand, pTitle};
}

// To measure them one by one is what takes the time.
bool MenuBar::IsMeasuredByOneTitle() const {
    return m_aTitles.size() > nFewTitles && std::any_of(m_aTitles.begin(), m_aTitles.end(), [](const Title& oTitle) {
               return oTitle.pAction->isVisible();
           });
}

const QMenuBar& MenuBar::Sample() const {
    if (!m_pSample) {
        m_pSample = std::make_unique<QMenuBar>();
        m_pSample->addAction(QStringLiteral("X"));
    }
    if (m_pSample->font() != font())
        m_pSample->setFont(font());
    return *m_pSample;
}

int MenuBar::heightForWidth(int nWidth) const {
    return IsMeasuredByOneTitle() ? Sample().heightForWidth(nWidth) : QMenuBar::heightForWidth(nWidth);
}

QSize MenuBar::sizeHint() const {
    return IsMeasuredByOneTitle() ? Sample().sizeHint() : QMenuBar::sizeHint();
}

QSize MenuBar::minimumSizeHint() const {
    return IsMeasuredByOneTitle() ? Sample().minimumSizeHint() : QMenuBar::minimumSizeHint();
}

} // namespace corvane::desktop
