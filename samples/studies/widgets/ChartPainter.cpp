#include "ChartPainter.h"

#include "Errors.h"
#include "Histogram.h"
#include "QtText.h"
#include "Report.h"

#include <QFontMetricsF>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>

namespace studies {
namespace {

constexpr double gap = 6;
constexpr std::size_t manyPoints = 5000; // from here points are drawn small, and no longer smoothed

// One chart on its way to the device: measures from the outside in, then draws.
class ChartDrawing {
public:
    ChartDrawing(QPainter& painter, const QRectF& area, const ChartScene& scene, const ChartStyle& style)
        : m_painter(painter), m_area(area.adjusted(gap, gap, -gap, -gap)), m_scene(scene), m_style(style),
          m_metrics(style.font) {}

    ChartLayout Draw() {
        m_painter.setFont(m_style.font);
        m_painter.setRenderHint(QPainter::Antialiasing);
        if (!m_scene.empty.empty()) {
            m_painter.setPen(m_style.textColor);
            m_painter.drawText(m_area, Qt::AlignCenter | Qt::TextWordWrap, Text(m_scene.empty));
            return {};
        }
        m_plot = m_area;
        DrawLegend();
        DrawNote();
        Measure();
        if (m_plot.width() < 20 || m_plot.height() < 20)
            return {};
        m_layout = ChartLayout(m_plot, m_scene.x, m_scene.y);
        DrawAxes();
        m_painter.save();
        m_painter.setClipRect(m_plot.adjusted(-1, -1, 1, 1));
        DrawBars();
        DrawBands();
        DrawPoints();
        DrawLines();
        DrawBoxes();
        DrawMarks();
        m_painter.restore();
        return m_layout;
    }

private:
    void DrawLegend() {
        if (m_scene.legend.empty())
            return;
        const double box = m_metrics.ascent() * 0.8;
        double x = m_area.left();
        double y = m_area.top();
        for (const auto& [name, color] : m_scene.legend) {
            const QString shown = m_metrics.elidedText(Text(name), Qt::ElideMiddle, m_area.width() / 3);
            const double width = box + gap + m_metrics.horizontalAdvance(shown) + 2 * gap;
            if (x > m_area.left() && x + width > m_area.right()) {
                x = m_area.left();
                y += m_metrics.height();
            }
            m_painter.setPen(Qt::NoPen);
            m_painter.setBrush(m_style.Series(color));
            m_painter.drawRect(QRectF(x, y + (m_metrics.height() - box) / 2, box, box));
            m_painter.setPen(m_style.textColor);
            m_painter.drawText(QPointF(x + box + gap, y + m_metrics.ascent()), shown);
            x += width;
        }
        m_plot.setTop(y + m_metrics.height() + gap);
    }

    // As many lines as leave the greater part to the chart.
    void DrawNote() {
        QStringList lines = Text(m_scene.note).split('\n', Qt::SkipEmptyParts);
        const auto room = static_cast<qsizetype>(m_area.height() / 3 / m_metrics.height());
        if (lines.size() > room)
            lines = lines.mid(0, room);
        double y = m_area.bottom() - static_cast<double>(lines.size()) * m_metrics.height();
        m_plot.setBottom(y - (lines.isEmpty() ? 0 : gap));
        m_painter.setPen(m_style.textColor);
        for (const QString& line : lines) {
            m_painter.drawText(QPointF(m_area.left(), y + m_metrics.ascent()),
                               m_metrics.elidedText(line, Qt::ElideRight, m_area.width()));
            y += m_metrics.height();
        }
    }

    void Measure() {
        m_plot.setBottom(m_plot.bottom() - 2 * m_metrics.height() - gap);
        m_plot.setTop(m_plot.top() + m_metrics.height() / 2);
        m_ticksY = RoundTicks(m_scene.y.low, m_scene.y.high,
                              std::clamp(static_cast<int>(m_plot.height() / (3 * m_metrics.height())), 2, 10));
        double widest = 0;
        for (const QString& label : LabelsOf(m_ticksY))
            widest = std::max(widest, m_metrics.horizontalAdvance(label));
        m_plot.setLeft(m_plot.left() + m_metrics.height() + gap + widest + gap);
        m_ticksX = TicksX();
        const QStringList labels = LabelsX();
        if (!labels.isEmpty()) // half of the last label stands out
            m_plot.setRight(m_plot.right() - std::min(30.0, m_metrics.horizontalAdvance(labels.last()) / 2));
    }

    // Fewer until the labels have room.
    [[nodiscard]] std::vector<double> TicksX() const {
        std::vector<double> ticks;
        if (!m_scene.x.names.empty()) {
            for (std::size_t i = 0; i < m_scene.x.names.size(); ++i)
                ticks.push_back(static_cast<double>(i));
            return ticks;
        }
        for (int wanted = 12; wanted >= 1; --wanted) {
            ticks = RoundTicks(m_scene.x.low, m_scene.x.high, wanted);
            double width = 0;
            for (const QString& label : LabelsOf(ticks))
                width += m_metrics.horizontalAdvance(label) + 3 * gap;
            if (width < m_plot.width())
                break;
        }
        return ticks;
    }

    [[nodiscard]] static QStringList LabelsOf(const std::vector<double>& ticks) {
        QStringList labels;
        const double step = ticks.size() > 1 ? ticks[1] - ticks[0] : 1;
        const int decimals = std::clamp(static_cast<int>(std::ceil(-std::log10(step) - 1e-9)), 0, 12);
        for (const double tick : ticks)
            labels.append(Text(DecimalText(tick, decimals)));
        return labels;
    }

    [[nodiscard]] QStringList LabelsX() const {
        if (m_scene.x.names.empty())
            return LabelsOf(m_ticksX);
        QStringList labels;
        const double room = m_plot.width() / static_cast<double>(m_scene.x.names.size()) - gap;
        for (const std::string& name : m_scene.x.names)
            labels.append(m_metrics.elidedText(Text(name), Qt::ElideMiddle, room));
        return labels;
    }

    void DrawAxes() {
        const QPen grid(m_style.faintColor, 1);
        const QStringList labelsY = LabelsOf(m_ticksY);
        for (std::size_t i = 0; i < m_ticksY.size(); ++i) {
            const double y = m_layout.At(m_scene.x.low, m_ticksY[i]).y();
            m_painter.setPen(grid);
            m_painter.drawLine(QPointF(m_plot.left(), y), QPointF(m_plot.right(), y));
            m_painter.setPen(m_style.textColor);
            const QString& label = labelsY[static_cast<qsizetype>(i)];
            m_painter.drawText(
                QPointF(m_plot.left() - gap - m_metrics.horizontalAdvance(label), y + m_metrics.ascent() / 2 - 1),
                label);
        }
        const QStringList labelsX = LabelsX();
        for (std::size_t i = 0; i < m_ticksX.size(); ++i) {
            const double x = m_layout.At(m_ticksX[i], m_scene.y.low).x();
            m_painter.setPen(m_style.textColor);
            m_painter.drawLine(QPointF(x, m_plot.bottom()), QPointF(x, m_plot.bottom() + 3));
            const QString& label = labelsX[static_cast<qsizetype>(i)];
            m_painter.drawText(
                QPointF(x - m_metrics.horizontalAdvance(label) / 2, m_plot.bottom() + gap + m_metrics.ascent()), label);
        }
        m_painter.setPen(m_style.textColor);
        m_painter.drawLine(m_plot.bottomLeft(), m_plot.bottomRight());
        m_painter.drawLine(m_plot.bottomLeft(), m_plot.topLeft());
        DrawAxisNames();
    }

    void DrawAxisNames() {
        const QString x = m_metrics.elidedText(Text(m_scene.x.label), Qt::ElideMiddle, m_plot.width());
        m_painter.drawText(QPointF(m_plot.center().x() - m_metrics.horizontalAdvance(x) / 2,
                                   m_plot.bottom() + gap + m_metrics.height() + m_metrics.ascent()),
                           x);
        const QString y = m_metrics.elidedText(Text(m_scene.y.label), Qt::ElideMiddle, m_plot.height());
        m_painter.save();
        m_painter.translate(m_area.left() + m_metrics.ascent(),
                            m_plot.center().y() + m_metrics.horizontalAdvance(y) / 2);
        m_painter.rotate(-90);
        m_painter.drawText(QPointF(0, 0), y);
        m_painter.restore();
    }

    void DrawBars() {
        for (const ChartBar& bar : m_scene.bars) {
            QRectF rect(m_layout.At(bar.left, bar.top), m_layout.At(bar.right, bar.bottom));
            m_painter.setPen(rect.width() > 4 ? QPen(m_style.backgroundColor, 1) : QPen(Qt::NoPen));
            m_painter.setBrush(m_style.Series(bar.color));
            m_painter.drawRect(rect);
        }
    }

    void DrawBands() {
        m_painter.setPen(Qt::NoPen);
        for (const ChartBand& band : m_scene.bands) {
            QPolygonF shape;
            for (const ChartBand::Edge& edge : band.edges)
                shape.append(m_layout.At(edge.x, edge.high));
            for (auto it = band.edges.rbegin(); it != band.edges.rend(); ++it)
                shape.append(m_layout.At(it->x, it->low));
            QColor bandColor = m_style.Series(band.color);
            bandColor.setAlphaF(0.25F);
            m_painter.setBrush(bandColor);
            // Devices that know no clipping, as those of SVG files, get no more than what is in sight.
            m_painter.drawPolygon(shape.intersected(QPolygonF(m_plot)));
        }
    }

    void DrawPoints() {
        const bool many = m_scene.points.size() > manyPoints;
        m_painter.setRenderHint(QPainter::Antialiasing, !many);
        m_painter.setPen(Qt::NoPen);
        const double radius = m_metrics.height() / 6;
        int color = -1;
        for (const ChartPoint& point : m_scene.points) {
            if (point.color != color) {
                color = point.color;
                QColor pointColor = m_style.Series(color);
                pointColor.setAlphaF(many ? 0.35F : 0.75F);
                m_painter.setBrush(pointColor);
                m_painter.setPen(Qt::NoPen);
            }
            const QPointF at = m_layout.At(point.x, point.y);
            if (many)
                m_painter.fillRect(QRectF(at.x() - 1, at.y() - 1, 2, 2), m_painter.brush());
            else
                m_painter.drawEllipse(at, radius, radius);
        }
        m_painter.setRenderHint(QPainter::Antialiasing);
    }

    void DrawLines() {
        m_painter.setBrush(Qt::NoBrush);
        for (const ChartLine& line : m_scene.lines) {
            QPolygonF shape;
            for (const auto& [x, y] : line.points)
                shape.append(m_layout.At(x, y));
            m_painter.setPen(QPen(m_style.backgroundColor, 4));
            m_painter.drawPolyline(shape);
            m_painter.setPen(QPen(m_style.Series(line.color), 2));
            m_painter.drawPolyline(shape);
        }
    }

    void DrawBoxes() {
        const double half = std::abs(m_layout.At(0.12, 0).x() - m_layout.At(0, 0).x());
        const double radius = m_metrics.height() / 8;
        for (const ChartBox& box : m_scene.boxes) {
            const QColor boxColor = m_style.Series(box.color);
            const auto at = [&](double y) { return m_layout.At(box.x, y); };
            const auto across = [&](double y, double width) {
                m_painter.drawLine(at(y) - QPointF(width, 0), at(y) + QPointF(width, 0));
            };
            m_painter.setPen(QPen(boxColor, 1.5));
            m_painter.drawLine(at(box.low), at(box.q1));
            m_painter.drawLine(at(box.q3), at(box.high));
            across(box.low, half / 2);
            across(box.high, half / 2);
            QColor inside = boxColor;
            inside.setAlphaF(0.25F);
            m_painter.setBrush(inside);
            m_painter.drawRect(QRectF(at(box.q3) - QPointF(half, 0), at(box.q1) + QPointF(half, 0)));
            m_painter.setPen(QPen(boxColor, 3));
            across(box.median, half);
            m_painter.setPen(QPen(boxColor, 1));
            m_painter.setBrush(Qt::NoBrush);
            for (const double value : box.beyond)
                m_painter.drawEllipse(at(value), radius, radius);
        }
    }

    void DrawMarks() {
        const double cap = m_metrics.height() / 2;
        for (const ChartMark& mark : m_scene.marks) {
            const QColor markColor = m_style.Series(mark.color);
            m_painter.setPen(QPen(markColor, 2));
            const QPointF low = m_layout.At(mark.x, mark.low);
            const QPointF high = m_layout.At(mark.x, mark.high);
            m_painter.drawLine(low, high);
            for (const QPointF& end : {low, high})
                m_painter.drawLine(end - QPointF(cap, 0), end + QPointF(cap, 0));
            m_painter.setBrush(markColor);
            m_painter.drawEllipse(m_layout.At(mark.x, mark.middle), cap / 2, cap / 2);
        }
    }

    QPainter& m_painter;
    QRectF m_area;
    const ChartScene& m_scene;
    const ChartStyle& m_style;
    QFontMetricsF m_metrics;
    QRectF m_plot;
    std::vector<double> m_ticksX;
    std::vector<double> m_ticksY;
    ChartLayout m_layout;
};

QString PointTip(const ChartScene& scene, const ChartPoint& point) {
    QString tip;
    if (!scene.legend.empty())
        tip = Text(scene.legend[static_cast<std::size_t>(point.color)].first) + "\n";
    return tip + QString("%1: %2\n%3: %4\n%5")
                     .arg(Text(scene.x.label), Text(FigureText(point.x)), Text(scene.y.label),
                          Text(FigureText(point.y)), Text(Translated("row %1", {CountText(point.row + 1)})));
}

} // namespace

QColor ChartStyle::Series(int color) const {
    static constexpr std::array<QRgb, 8> light{0xff3478b8, 0xffd08a2e, 0xff3d9a5f, 0xffc4483f,
                                               0xff7d5bb5, 0xff2b9a9a, 0xff8a6d4f, 0xff6b7480};
    static constexpr std::array<QRgb, 8> darkColors{0xff5fa3e0, 0xffe8a74e, 0xff5fc084, 0xffe8746a,
                                                    0xffa98be0, 0xff4fc4c4, 0xffb8977a, 0xffa0aab6};
    return QColor((dark ? darkColors : light)[static_cast<std::size_t>(color) % light.size()]);
}

ChartStyle ChartStyle::Of(const QPalette& palette, const QFont& textFont) {
    ChartStyle style{textFont, palette.color(QPalette::Base), palette.color(QPalette::Text), {}, false};
    style.dark = style.backgroundColor.lightness() < 128;
    style.faintColor = style.textColor;
    style.faintColor.setAlphaF(0.15F);
    return style;
}

ChartStyle ChartStyle::ForPaper(const QFont& textFont) {
    return {textFont, Qt::white, QColor(0x20, 0x24, 0x28), QColor(0xdd, 0xdd, 0xdd), false};
}

ChartLayout::ChartLayout(const QRectF& plot, const ChartAxis& x, const ChartAxis& y)
    : m_plot(plot), m_left(x.low), m_right(x.high), m_bottom(y.low), m_top(y.high) {}

QPointF ChartLayout::At(double x, double y) const {
    return {m_plot.left() + (x - m_left) / (m_right - m_left) * m_plot.width(),
            m_plot.bottom() - (y - m_bottom) / (m_top - m_bottom) * m_plot.height()};
}

ChartLayout PaintChart(QPainter& painter, const QRectF& area, const ChartScene& scene, const ChartStyle& style) {
    painter.fillRect(area, style.backgroundColor);
    return ChartDrawing(painter, area, scene, style).Draw();
}

QString ChartTip(const ChartScene& scene, const ChartLayout& layout, const QPointF& point) {
    constexpr double reach = 8;
    if (!layout.Plot().adjusted(-reach, -reach, reach, reach).contains(point))
        return {};
    for (const ChartBar& bar : scene.bars)
        if (QRectF(layout.At(bar.left, bar.top), layout.At(bar.right, bar.bottom)).contains(point))
            return Text(bar.tip);
    const auto IsNear = [&](const auto& part) { // it is a line, with something small around it
        const QRectF line(layout.At(part.x, part.high), layout.At(part.x, part.low));
        return line.adjusted(-2 * reach, -reach, 2 * reach, reach).contains(point);
    };
    for (const ChartBox& box : scene.boxes)
        if (IsNear(box))
            return Text(box.tip);
    for (const ChartMark& mark : scene.marks)
        if (IsNear(mark))
            return Text(mark.tip);
    const ChartPoint* nearest = nullptr;
    double nearestValue = reach * reach;
    for (const ChartPoint& candidate : scene.points) {
        const QPointF away = layout.At(candidate.x, candidate.y) - point;
        if (const double awayValue = QPointF::dotProduct(away, away); awayValue < nearestValue) {
            nearestValue = awayValue;
            nearest = &candidate;
        }
    }
    return nearest ? PointTip(scene, *nearest) : QString();
}

} // namespace studies
