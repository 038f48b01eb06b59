#include "desktop/bars/MenuBuilder.h"

#include <QCoreApplication>
#include <QHideEvent>
#include <QTimer>

namespace corvane::desktop {

namespace {

// A menu that doesn't come up when a handler has refused its opening: Qt has no way to say so before it shows.
class BandMenu final : public QMenu {
public:
    using QMenu::QMenu;
    void SetRefused(bool bRefused) { m_bRefused = bRefused; }

    void setVisible(bool bVisible) override {
        if (!bVisible || !m_bRefused)
            return QMenu::setVisible(bVisible);
        // Whoever opened it believes that it is open until it hides.
        QTimer::singleShot(0, this, [this] {
            QHideEvent oEvent;
            hideEvent(&oEvent);
        });
    }

private:
    bool m_bRefused = false;
};

} // namespace

QMenu* MenuBuilder::NewMenu(const std::string& sBand, QWidget* pParent) {
    auto* pMenu = new BandMenu(pParent);
    pMenu->setSeparatorsCollapsible(true);
    pMenu->setToolTipsVisible(false);
    QObject::connect(pMenu, &QMenu::aboutToShow, pMenu, [this, pMenu, sBand] {
        const Ref<Band> oBand = m_oActiveBar->Bands()->Find(sBand);
        pMenu->SetRefused(!oBand || !Fill(pMenu, oBand));
    });
    // An empty menu is never asked to open; this entry goes when the menu is filled.
    pMenu->addAction(QStringLiteral("…"));
    return pMenu;
}

bool MenuBuilder::Fill(QMenu* pMenu, const Ref<Band>& oBand) {
    bool bOpens = false;
    m_fnGuard([&] { bOpens = m_oActiveBar->Open(oBand); });
    if (!bOpens)
        return false;
    FillWith(pMenu, m_pChanges->InstancesOf(*oBand));
    if (pMenu->isEmpty())
        pMenu->addAction(QCoreApplication::translate("MenuBuilder", "(empty)"))->setEnabled(false);
    return true;
}

void MenuBuilder::Clear(QMenu* pMenu) {
    qDeleteAll(pMenu->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    pMenu->clear();
}

void MenuBuilder::FillWith(QMenu* pMenu, const std::vector<Ref<Tool>>& aInstances) {
    Clear(pMenu);
    for (const auto& oInstance : aInstances)
        AddInstance(pMenu, oInstance);
}

void MenuBuilder::AddInstance(QMenu* pMenu, const Ref<Tool>& oInstance) {
    if (EqualText(oInstance->Name(), "Separator")) {
        pMenu->addSeparator();
    } else if (EqualText(oInstance->Name(), "WindowList")) {
        AddWindows(pMenu);
    } else if (!oInstance->DropDownBand().empty() && m_oActiveBar->Bands()->Find(oInstance->DropDownBand())) {
        QMenu* pSubMenu = NewMenu(oInstance->DropDownBand(), pMenu);
        m_oActions.Follow(oInstance, ActionPlace::Menu, pSubMenu->menuAction(), false);
        pMenu->addMenu(pSubMenu);
    } else {
        pMenu->addAction(m_oActions.Add(oInstance, ActionPlace::Menu, pMenu));
    }
}

void MenuBuilder::AddWindows(QMenu* pMenu) {
    const auto aWindows = m_fnWindows ? m_fnWindows() : std::vector<OpenWindowEntry>();
    if (aWindows.empty()) {
        pMenu->addAction(QCoreApplication::translate("MenuBuilder", "(no open windows)"))->setEnabled(false);
        return;
    }
    int nNumber = 0;
    for (const auto& oWindow : aWindows) {
        QString sCaption = QString(oWindow.sCaption).replace('&', "&&");
        if (++nNumber <= 9)
            sCaption = QString("&%1 %2").arg(nNumber).arg(sCaption);
        QAction* pAction = pMenu->addAction(sCaption);
        pAction->setCheckable(true);
        pAction->setChecked(oWindow.bActive);
        QObject::connect(pAction, &QAction::triggered, pAction,
                         [this, fnActivate = oWindow.fnActivate] { m_fnGuard(fnActivate); });
    }
}

} // namespace corvane::desktop
