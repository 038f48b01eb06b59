#include "desktop/bars/BarActions.h"

#include "corvane/platform/controls/BarText.h"
#include "desktop/explorer/PictureIcon.h"
#include "desktop/translation/ShownText.h"

#include <QApplication>
#include <QFont>
#include <QStyle>
#include <QStyleOption>
#include <QToolButton>

namespace corvane::desktop {

namespace {

constexpr std::size_t nMostIcons = 512;

// A picture of its own for the disabled state, or the normal one greyed out.
QIcon IconOfPictures(const Ref<Picture>& oNormalPicture, const Ref<Picture>& oDisabledPicture) {
    const QIcon oNormal = IconOf(oNormalPicture);
    if (oNormal.isNull())
        return oNormal;
    const QIcon oDisabled = IconOf(oDisabledPicture);
    QIcon oIcon;
    QStyleOption oOption;
    oOption.palette = QApplication::palette();
    for (const int nSize : {16, 24, 32, 48, 64}) {
        const QPixmap oPixmap = oNormal.pixmap(QSize(nSize, nSize), 1.0);
        oIcon.addPixmap(oPixmap);
        oIcon.addPixmap(oDisabled.isNull()
                            ? QApplication::style()->generatedIconPixmap(QIcon::Disabled, oPixmap, &oOption)
                            : oDisabled.pixmap(QSize(nSize, nSize), 1.0),
                        QIcon::Disabled);
    }
    return oIcon;
}

// A toolbar would show and hide its buttons while it lays itself out, and begin its layout anew after each of them.
void ShowButton(const QAction& oAction) {
    for (QObject* pObject : oAction.associatedObjects())
        if (auto* pButton = qobject_cast<QToolButton*>(pObject))
            pButton->setVisible(oAction.isVisible());
}

QString ToolTipOf(const Tool& oInstance, const QString& sKeys) {
    QString sTip = ShownToolTip(oInstance);
    if (sTip.isEmpty())
        sTip = QString::fromStdString(WithoutMnemonic(CaptionOf(oInstance).toStdString()));
    return sKeys.isEmpty() ? sTip : QString("%1 (%2)").arg(sTip, sKeys);
}

} // namespace

QString CaptionOf(const Tool& oInstance) {
    if (!oInstance.Caption().empty())
        return ShownCaption(oInstance);
    const QString sName = QString::fromStdString(oInstance.Name());
    return sName.mid(sName.lastIndexOf('.') + 1).replace('&', "&&");
}

QAction* BarActions::Add(const Ref<Tool>& oInstance, ActionPlace ePlace, QObject* pParent) {
    auto* pAction = new QAction(pParent);
    Follow(oInstance, ePlace, pAction, true);
    return pAction;
}

void BarActions::Follow(const Ref<Tool>& oInstance, ActionPlace ePlace, QAction* pAction, bool bClicks) {
    const Shown oShown{oInstance, ePlace, pAction};
    auto& aShown = m_mapShown[oInstance.Get()];
    std::erase_if(aShown, [](const Shown& oOld) { return oOld.pAction.isNull(); });
    aShown.push_back(oShown);
    Texts(oShown);
    State(oShown);
    if (bClicks)
        QObject::connect(pAction, &QAction::triggered, pAction, [this, oShown] {
            const QPointer<QAction> pStill = oShown.pAction;
            m_fnClick(oShown.oInstance);
            if (pStill) // a click toggles the action by itself; what holds is the model
                State(oShown);
        });
}

void BarActions::Leave(const Tool* pInstance, const QAction* pAction) {
    const auto it = m_mapShown.find(pInstance);
    if (it == m_mapShown.end())
        return;
    std::erase_if(it->second, [&](const Shown& oShown) { return oShown.pAction == pAction; });
    if (it->second.empty())
        m_mapShown.erase(it);
}

void BarActions::ShowState(const Tool& oMaster) {
    for (const Tool* pInstance : oMaster.Instances())
        if (const auto it = m_mapShown.find(pInstance); it != m_mapShown.end())
            for (const Shown& oShown : it->second)
                State(oShown);
}

void BarActions::ShowTexts(const Tool* pInstance) {
    if (const auto it = m_mapShown.find(pInstance); it != m_mapShown.end())
        for (const Shown& oShown : it->second)
            Texts(oShown);
}

void BarActions::ShowAllTexts() {
    m_mapIcons.clear(); // they have the palette's colours
    for (const auto& [pInstance, aShown] : m_mapShown)
        for (const Shown& oShown : aShown)
            Texts(oShown);
}

Ref<Tool> BarActions::InstanceOf(const QAction* pAction) const {
    for (const auto& [pInstance, aShown] : m_mapShown)
        for (const Shown& oShown : aShown)
            if (oShown.pAction == pAction)
                return oShown.oInstance;
    return nullptr;
}

const QIcon& BarActions::IconFor(const Tool& oInstance) {
    const Ref<Picture> oNormal = oInstance.PictureOf(Tool::Normal);
    const Ref<Picture> oDisabled = oInstance.PictureOf(Tool::Disabled);
    if (m_mapIcons.size() >= nMostIcons)
        m_mapIcons.clear();
    const auto [it, bNew] = m_mapIcons.try_emplace({oNormal.Get(), oDisabled.Get()});
    if (bNew)
        it->second = {oNormal, oDisabled, IconOfPictures(oNormal, oDisabled)};
    return it->second.oIcon;
}

void BarActions::State(const Shown& oShown) {
    QAction* pAction = oShown.pAction;
    if (!pAction)
        return;
    const Tool& oTool = *oShown.oInstance;
    ++m_nTouched;
    if (pAction->isCheckable() != oTool.Checked())
        pAction->setCheckable(oTool.Checked());
    if (pAction->isChecked() != oTool.Checked())
        pAction->setChecked(oTool.Checked());
    if (pAction->isEnabled() != oTool.Enabled())
        pAction->setEnabled(oTool.Enabled());
    if (pAction->isVisible() != oTool.Visible()) {
        pAction->setVisible(oTool.Visible());
        if (oShown.ePlace == ActionPlace::Toolbar)
            ShowButton(*pAction);
    }
}

void BarActions::Texts(const Shown& oShown) {
    QAction* pAction = oShown.pAction;
    if (!pAction)
        return;
    const Tool& oTool = *oShown.oInstance;
    ++m_nTouched;
    QString sText = CaptionOf(oTool);
    if (oShown.ePlace == ActionPlace::Menu) {
        // Behind the tab a menu shows it in the column of shortcuts.
        if (const QString sKeys = m_pChanges->KeysText(oTool); !sKeys.isEmpty() && oTool.DropDownBand().empty())
            sText += "\t" + sKeys;
    } else {
        if (const QIcon& oIcon = IconFor(oTool); oIcon.cacheKey() != pAction->icon().cacheKey())
            pAction->setIcon(oIcon);
        pAction->setIconText(QString::fromStdString(WithoutMnemonic(sText.toStdString())));
        pAction->setToolTip(ToolTipOf(oTool, m_pChanges->KeysText(oTool)));
    }
    pAction->setText(sText);
    pAction->setStatusTip(ShownDescription(oTool));
    if (pAction->font().bold() != oTool.IsDefaultItem()) {
        QFont oFont = pAction->font();
        oFont.setBold(oTool.IsDefaultItem());
        pAction->setFont(oFont);
    }
}

} // namespace corvane::desktop
