// Draws a chart into any rectangle of any paint device: a widget, a picture, a page.
#pragma once

#include "Chart.h"

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QPointF>
#include <QRectF>
#include <QString>

namespace studies {

struct ChartStyle {
    QFont oFont;
    QColor colBackground;
    QColor colText;
    QColor colFaint; // grid and frame
    bool bDark = false;

    // The colours of a series, told apart by those who don't see red and green alike, too.
    [[nodiscard]] QColor Series(int nColor) const;

    [[nodiscard]] static ChartStyle Of(const QPalette& oPalette, const QFont& oFont);
    // Dark on white, for what leaves the program.
    [[nodiscard]] static ChartStyle ForPaper(const QFont& oFont);
};

// Where what was drawn stands.
class ChartLayout {
public:
    ChartLayout() = default;
    ChartLayout(const QRectF& oPlot, const ChartAxis& oX, const ChartAxis& oY);

    [[nodiscard]] const QRectF& Plot() const { return m_oPlot; } // empty where nothing could be drawn
    [[nodiscard]] QPointF At(double x, double y) const;

private:
    QRectF m_oPlot;
    double m_dblLeft = 0;
    double m_dblRight = 1;
    double m_dblBottom = 0;
    double m_dblTop = 1;
};

ChartLayout PaintChart(QPainter& oPainter, const QRectF& oArea, const ChartScene& oScene, const ChartStyle& oStyle);

// What is to be said about the place under the pointer; "" for nothing.
[[nodiscard]] QString ChartTip(const ChartScene& oScene, const ChartLayout& oLayout, const QPointF& oPoint);

} // namespace studies
