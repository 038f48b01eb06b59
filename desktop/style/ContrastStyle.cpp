#include "desktop/style/ContrastStyle.h"

#include "desktop/style/Contrast.h"

#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace corvane::desktop {

namespace {

// What has the focus gets a thicker line, so that it isn't the colour alone that tells.
void DrawLine(QPainter* pPainter, const QStyleOption& oOption, const QRect& oRect, bool bRound = false) {
    const bool bFocus = oOption.state.testFlag(QStyle::State_HasFocus) && oOption.state.testFlag(QStyle::State_Enabled);
    const auto eGroup = oOption.state.testFlag(QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
    const int nWidth = bFocus ? 2 : 1;
    const QPalette::ColorRole eLine = IsOfContrast(oOption.palette) ? QPalette::WindowText : QPalette::PlaceholderText;
    pPainter->save();
    pPainter->setRenderHint(QPainter::Antialiasing, bRound);
    pPainter->setBrush(Qt::NoBrush);
    QPen oPen(oOption.palette.color(eGroup, bFocus ? QPalette::Highlight : eLine), nWidth);
    oPen.setJoinStyle(Qt::MiterJoin);
    pPainter->setPen(oPen);
    const QRectF oLine = QRectF(oRect).adjusted(nWidth / 2.0, nWidth / 2.0, -nWidth / 2.0, -nWidth / 2.0);
    if (bRound)
        pPainter->drawEllipse(oLine);
    else
        pPainter->drawRect(oLine);
    pPainter->restore();
}

// On a dark ground the style below draws the boxes of check marks darker than that.
bool IsDark(const QPalette& oPalette) {
    return LuminanceOf(oPalette.color(QPalette::Window)) < 0.1;
}

} // namespace

void ContrastStyle::Follow() {
    auto* pOurs = dynamic_cast<ContrastStyle*>(QApplication::style());
    const bool bWanted = IsOfContrast(QApplication::palette()) || IsDark(QApplication::palette());
    if (bWanted == (pOurs != nullptr))
        return;
    const QString sBase = pOurs ? pOurs->m_sBase : QApplication::style()->objectName();
    const QPalette oPalette = QApplication::palette();
    QApplication::setStyle(pOurs ? QStyleFactory::create(sBase) : new ContrastStyle(sBase));
    if (QApplication::palette() != oPalette) // a style may bring one of its own
        QApplication::setPalette(oPalette);
}

void ContrastStyle::drawPrimitive(PrimitiveElement eElement, const QStyleOption* pOption, QPainter* pPainter,
                                  const QWidget* pWidget) const {
    QProxyStyle::drawPrimitive(eElement, pOption, pPainter, pWidget);
    const bool bIsMark = eElement == PE_IndicatorCheckBox || eElement == PE_IndicatorItemViewItemCheck ||
                         eElement == PE_IndicatorRadioButton;
    if (!bIsMark && !IsOfContrast(pOption->palette))
        return;
    switch (eElement) {
    case PE_FrameLineEdit:
    case PE_Frame:
    case PE_FrameMenu:
    case PE_FrameGroupBox:
    case PE_FrameTabWidget:
    case PE_FrameWindow:
    case PE_FrameDockWidget:
    case PE_PanelTipLabel:
    case PE_PanelButtonCommand:
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        DrawLine(pPainter, *pOption, pOption->rect);
        break;
    case PE_IndicatorRadioButton:
        DrawLine(pPainter, *pOption, pOption->rect, true);
        break;
    case PE_PanelButtonTool:
        if (pOption->state & (State_On | State_Sunken | State_MouseOver))
            DrawLine(pPainter, *pOption, pOption->rect);
        break;
    default:
        break;
    }
}

void ContrastStyle::drawControl(ControlElement eElement, const QStyleOption* pOption, QPainter* pPainter,
                                const QWidget* pWidget) const {
    QProxyStyle::drawControl(eElement, pOption, pPainter, pWidget);
    if (!IsOfContrast(pOption->palette))
        return;
    switch (eElement) {
    case CE_TabBarTabShape:
    case CE_HeaderSection:
    case CE_ProgressBarGroove:
    case CE_DockWidgetTitle:
        DrawLine(pPainter, *pOption, pOption->rect);
        break;
    default:
        break;
    }
    // Which tab is in front.
    if (eElement == CE_TabBarTabShape && pOption->state.testFlag(State_Selected))
        pPainter->fillRect(QRect(pOption->rect.left(), pOption->rect.top(), pOption->rect.width(), 3),
                           pOption->palette.color(QPalette::Highlight));
}

void ContrastStyle::drawComplexControl(ComplexControl eControl, const QStyleOptionComplex* pOption, QPainter* pPainter,
                                       const QWidget* pWidget) const {
    if (!IsOfContrast(pOption->palette)) {
        QProxyStyle::drawComplexControl(eControl, pOption, pPainter, pWidget);
        return;
    }
    if (eControl == CC_TitleBar) {
        // The style below writes white on the colour of selections, whatever that is.
        QStyleOptionTitleBar oOption(*qstyleoption_cast<const QStyleOptionTitleBar*>(pOption));
        const bool bActive = oOption.titleBarState & State_Active;
        if (bActive && ContrastOf(Qt::white, oOption.palette.color(QPalette::Highlight)) < dReadable)
            oOption.palette.setColor(QPalette::Highlight, QColor(0x00, 0x00, 0x80));
        if (!bActive && LuminanceOf(oOption.palette.color(QPalette::Window)) < 0.5) {
            // Else the signs in its buttons are black on black.
            oOption.palette.setColor(QPalette::Highlight, QColor(0x38, 0x38, 0x38));
            oOption.titleBarState |= State_Active;
            oOption.state |= State_Active;
        }
        QProxyStyle::drawComplexControl(eControl, &oOption, pPainter, pWidget);
        DrawLine(pPainter, oOption, oOption.rect);
        return;
    }
    QProxyStyle::drawComplexControl(eControl, pOption, pPainter, pWidget);
    if (eControl == CC_ComboBox || eControl == CC_SpinBox)
        DrawLine(pPainter, *pOption, pOption->rect);
    if (eControl == CC_ScrollBar)
        DrawLine(pPainter, *pOption, subControlRect(eControl, pOption, SC_ScrollBarSlider, pWidget));
}

} // namespace corvane::desktop
