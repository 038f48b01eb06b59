#include "desktop/style/ContrastStyle.h"

#include "desktop/style/Contrast.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace corvane::desktop {

namespace {

// What has the focus gets a thicker line, so that it isn't shown by the colour alone.
void DrawLine(QPainter* painter, const QStyleOption& option, const QRect& rect, bool round = false) {
    const bool focus = option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_Enabled);
    const auto group = option.state.testFlag(QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
    const int width = focus ? 2 : 1;
    const QPalette::ColorRole lineRole =
        IsOfContrast(option.palette) ? QPalette::WindowText : QPalette::PlaceholderText;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, round);
    painter->setBrush(Qt::NoBrush);
    QPen pen(option.palette.color(group, focus ? QPalette::Highlight : lineRole), width);
    pen.setJoinStyle(Qt::MiterJoin);
    painter->setPen(pen);
    const QRectF line = QRectF(rect).adjusted(width / 2.0, width / 2.0, -width / 2.0, -width / 2.0);
    if (round)
        painter->drawEllipse(line);
    else
        painter->drawRect(line);
    painter->restore();
}

// On a dark ground the style below draws the boxes of check marks darker than that.
bool IsDark(const QPalette& palette) {
    return LuminanceOf(palette.color(QPalette::Window)) < 0.1;
}

// Whether keys go elsewhere: what is selected in it isn't what they act on.
bool IsWithoutFocus(const QWidget* widget) {
    const auto* view = qobject_cast<const QAbstractItemView*>(widget);
    if (!view || view->focusPolicy() == Qt::NoFocus || view->window()->windowType() == Qt::Popup)
        return false;
    const QWidget* focus = QApplication::focusWidget();
    return !focus || (focus != view && !view->isAncestorOf(focus));
}

// Its selection is grey: the colour of texts, as far as the ground lets it through.
QStyleOptionViewItem WithGreySelection(QStyleOptionViewItem option) {
    QColor grey = option.palette.color(QPalette::Active, QPalette::Text);
    grey.setAlphaF(0.18F);
    option.palette.setColor(QPalette::Inactive, QPalette::Highlight,
                            OnGround(grey, option.palette.color(QPalette::Active, QPalette::Base)));
    option.palette.setColor(QPalette::Inactive, QPalette::HighlightedText,
                            option.palette.color(QPalette::Active, QPalette::Text));
    option.state &= ~QStyle::State_Active;
    return option;
}

} // namespace

void ContrastStyle::Follow() {
    if (dynamic_cast<ContrastStyle*>(QApplication::style()))
        return;
    const QPalette palette = QApplication::palette();
    QApplication::setStyle(new ContrastStyle(QApplication::style()->objectName()));
    if (QApplication::palette() != palette) // a style may bring one of its own
        QApplication::setPalette(palette);
}

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
    const auto* item = element == PE_PanelItemViewItem || element == PE_PanelItemViewRow
                           ? qstyleoption_cast<const QStyleOptionViewItem*>(option)
                           : nullptr;
    if (item && !IsOfContrast(option->palette) && IsWithoutFocus(widget)) {
        const QStyleOptionViewItem grey = WithGreySelection(*item);
        QProxyStyle::drawPrimitive(element, &grey, painter, widget);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isMark = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck ||
                        element == PE_IndicatorRadioButton;
    if (!(isMark && IsDark(option->palette)) && !IsOfContrast(option->palette))
        return;
    switch (element) {
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
        DrawLine(painter, *option, option->rect);
        break;
    case PE_IndicatorRadioButton:
        DrawLine(painter, *option, option->rect, true);
        break;
    case PE_PanelButtonTool:
        if (option->state & (State_On | State_Sunken | State_MouseOver))
            DrawLine(painter, *option, option->rect);
        break;
    default:
        break;
    }
}

void ContrastStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
        item && element == CE_ItemViewItem && !IsOfContrast(option->palette) && IsWithoutFocus(widget)) {
        const QStyleOptionViewItem grey = WithGreySelection(*item);
        QProxyStyle::drawControl(element, &grey, painter, widget);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
    if (!IsOfContrast(option->palette))
        return;
    switch (element) {
    case CE_TabBarTabShape:
    case CE_HeaderSection:
    case CE_ProgressBarGroove:
    case CE_DockWidgetTitle:
        DrawLine(painter, *option, option->rect);
        break;
    default:
        break;
    }
    // Which tab is in front.
    if (element == CE_TabBarTabShape && option->state.testFlag(State_Selected))
        painter->fillRect(QRect(option->rect.left(), option->rect.top(), option->rect.width(), 3),
                          option->palette.color(QPalette::Highlight));
}

void ContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* optionComplex,
                                       QPainter* painter, const QWidget* widget) const {
    if (!IsOfContrast(optionComplex->palette)) {
        QProxyStyle::drawComplexControl(control, optionComplex, painter, widget);
        return;
    }
    if (control == CC_TitleBar) {
        // The style below writes white on the colour of selections, whatever that is.
        QStyleOptionTitleBar option(*qstyleoption_cast<const QStyleOptionTitleBar*>(optionComplex));
        const bool active = option.titleBarState & State_Active;
        if (active && ContrastOf(Qt::white, option.palette.color(QPalette::Highlight)) < readable)
            option.palette.setColor(QPalette::Highlight, QColor(0x00, 0x00, 0x80));
        if (!active && LuminanceOf(option.palette.color(QPalette::Window)) < 0.5) {
            // Else the signs in its buttons are black on black.
            option.palette.setColor(QPalette::Highlight, QColor(0x38, 0x38, 0x38));
            option.titleBarState |= State_Active;
            option.state |= State_Active;
        }
        QProxyStyle::drawComplexControl(control, &option, painter, widget);
        DrawLine(painter, option, option.rect);
        return;
    }
    QProxyStyle::drawComplexControl(control, optionComplex, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox)
        DrawLine(painter, *optionComplex, optionComplex->rect);
    if (control == CC_Slider)
        for (const SubControl part : {SC_SliderGroove, SC_SliderHandle})
            DrawLine(painter, *optionComplex, subControlRect(control, optionComplex, part, widget));
    if (control == CC_ScrollBar)
        DrawLine(painter, *optionComplex, subControlRect(control, optionComplex, SC_ScrollBarSlider, widget));
}

} // namespace corvane::desktop
