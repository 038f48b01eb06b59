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
    QFont font;
    QColor backgroundColor;
    QColor textColor;
    QColor faintColor; // grid and frame
    bool dark = false;

    // The colours of a series, distinguished by those who don't see red and green alike, too.
    [[nodiscard]] QColor Series(int color) const;

    [[nodiscard]] static ChartStyle Of(const QPalette& palette, const QFont& textFont);
    // Dark on white, for what leaves the program.
    [[nodiscard]] static ChartStyle ForPaper(const QFont& textFont);
};

// Where what was drawn stands.
class ChartLayout {
public:
    ChartLayout() = default;
    ChartLayout(const QRectF& plot, const ChartAxis& x, const ChartAxis& y);

    [[nodiscard]] const QRectF& Plot() const { return m_plot; } // empty where nothing could be drawn
    [[nodiscard]] QPointF At(double x, double y) const;

private:
    QRectF m_plot;
    double m_left = 0;
    double m_right = 1;
    double m_bottom = 0;
    double m_top = 1;
};

ChartLayout PaintChart(QPainter& painter, const QRectF& area, const ChartScene& scene, const ChartStyle& style);

// What is to be said about the place under the pointer; "" for nothing.
[[nodiscard]] QString ChartTip(const ChartScene& scene, const ChartLayout& layout, const QPointF& point);

} // namespace studies
