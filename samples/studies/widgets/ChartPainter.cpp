#include "ChartPainter.h"

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

constexpr double dblGap = 6;
constexpr std::size_t nManyPoints = 5000; // from here points are drawn small, and no longer smoothed

// One chart on its way to the device: measures from the outside in, then draws.
class ChartDrawing {
public:
    ChartDrawing(QPainter& oPainter, const QRectF& oArea, const ChartScene& oScene, const ChartStyle& oStyle)
        : m_oPainter(oPainter), m_oArea(oArea.adjusted(dblGap, dblGap, -dblGap, -dblGap)), m_oScene(oScene),
          m_oStyle(oStyle), m_oMetrics(oStyle.oFont) {}

    ChartLayout Draw() {
        m_oPainter.setFont(m_oStyle.oFont);
        m_oPainter.setRenderHint(QPainter::Antialiasing);
        if (!m_oScene.sEmpty.empty()) {
            m_oPainter.setPen(m_oStyle.colText);
            m_oPainter.drawText(m_oArea, Qt::AlignCenter | Qt::TextWordWrap, Text(m_oScene.sEmpty));
            return {};
        }
        m_oPlot = m_oArea;
        DrawLegend();
        DrawNote();
        Measure();
        if (m_oPlot.width() < 20 || m_oPlot.height() < 20)
            return {};
        m_oLayout = ChartLayout(m_oPlot, m_oScene.oX, m_oScene.oY);
        DrawAxes();
        m_oPainter.save();
        m_oPainter.setClipRect(m_oPlot.adjusted(-1, -1, 1, 1));
        DrawBars();
        DrawBands();
        DrawPoints();
        DrawLines();
        DrawMarks();
        m_oPainter.restore();
        return m_oLayout;
    }

private:
    void DrawLegend() {
        if (m_oScene.aLegend.empty())
            return;
        const double dblBox = m_oMetrics.ascent() * 0.8;
        double x = m_oArea.left();
        double y = m_oArea.top();
        for (const auto& [sName, nColor] : m_oScene.aLegend) {
            const QString sShown = m_oMetrics.elidedText(Text(sName), Qt::ElideMiddle, m_oArea.width() / 3);
            const double dblWidth = dblBox + dblGap + m_oMetrics.horizontalAdvance(sShown) + 2 * dblGap;
            if (x > m_oArea.left() && x + dblWidth > m_oArea.right()) {
                x = m_oArea.left();
                y += m_oMetrics.height();
            }
            m_oPainter.setPen(Qt::NoPen);
            m_oPainter.setBrush(m_oStyle.Series(nColor));
            m_oPainter.drawRect(QRectF(x, y + (m_oMetrics.height() - dblBox) / 2, dblBox, dblBox));
            m_oPainter.setPen(m_oStyle.colText);
            m_oPainter.drawText(QPointF(x + dblBox + dblGap, y + m_oMetrics.ascent()), sShown);
            x += dblWidth;
        }
        m_oPlot.setTop(y + m_oMetrics.height() + dblGap);
    }

    // As many lines as leave the greater part to the chart.
    void DrawNote() {
        QStringList aLines = Text(m_oScene.sNote).split('\n', Qt::SkipEmptyParts);
        const auto nRoom = static_cast<qsizetype>(m_oArea.height() / 3 / m_oMetrics.height());
        if (aLines.size() > nRoom)
            aLines = aLines.mid(0, nRoom);
        double y = m_oArea.bottom() - static_cast<double>(aLines.size()) * m_oMetrics.height();
        m_oPlot.setBottom(y - (aLines.isEmpty() ? 0 : dblGap));
        m_oPainter.setPen(m_oStyle.colText);
        for (const QString& sLine : aLines) {
            m_oPainter.drawText(QPointF(m_oArea.left(), y + m_oMetrics.ascent()),
                                m_oMetrics.elidedText(sLine, Qt::ElideRight, m_oArea.width()));
            y += m_oMetrics.height();
        }
    }

    void Measure() {
        m_oPlot.setBottom(m_oPlot.bottom() - 2 * m_oMetrics.height() - dblGap);
        m_oPlot.setTop(m_oPlot.top() + m_oMetrics.height() / 2);
        m_aTicksY = RoundTicks(m_oScene.oY.dblLow, m_oScene.oY.dblHigh,
                               std::clamp(static_cast<int>(m_oPlot.height() / (3 * m_oMetrics.height())), 2, 10));
        double dblWidest = 0;
        for (const QString& sLabel : LabelsOf(m_aTicksY))
            dblWidest = std::max(dblWidest, m_oMetrics.horizontalAdvance(sLabel));
        m_oPlot.setLeft(m_oPlot.left() + m_oMetrics.height() + dblGap + dblWidest + dblGap);
        m_aTicksX = TicksX();
        const QStringList aLabels = LabelsX();
        if (!aLabels.isEmpty()) // half of the last label stands out
            m_oPlot.setRight(m_oPlot.right() - std::min(30.0, m_oMetrics.horizontalAdvance(aLabels.last()) / 2));
    }

    // Fewer until the labels have room.
    [[nodiscard]] std::vector<double> TicksX() const {
        std::vector<double> aTicks;
        if (!m_oScene.oX.aNames.empty()) {
            for (std::size_t i = 0; i < m_oScene.oX.aNames.size(); ++i)
                aTicks.push_back(static_cast<double>(i));
            return aTicks;
        }
        for (int nWanted = 12; nWanted >= 1; --nWanted) {
            aTicks = RoundTicks(m_oScene.oX.dblLow, m_oScene.oX.dblHigh, nWanted);
            double dblWidth = 0;
            for (const QString& sLabel : LabelsOf(aTicks))
                dblWidth += m_oMetrics.horizontalAdvance(sLabel) + 3 * dblGap;
            if (dblWidth < m_oPlot.width())
                break;
        }
        return aTicks;
    }

    [[nodiscard]] static QStringList LabelsOf(const std::vector<double>& aTicks) {
        QStringList aLabels;
        const double dblStep = aTicks.size() > 1 ? aTicks[1] - aTicks[0] : 1;
        const int nDecimals = std::clamp(static_cast<int>(std::ceil(-std::log10(dblStep) - 1e-9)), 0, 12);
        for (const double dblTick : aTicks)
            aLabels.append(Text(DecimalText(dblTick, nDecimals)));
        return aLabels;
    }

    [[nodiscard]] QStringList LabelsX() const {
        if (m_oScene.oX.aNames.empty())
            return LabelsOf(m_aTicksX);
        QStringList aLabels;
        const double dblRoom = m_oPlot.width() / static_cast<double>(m_oScene.oX.aNames.size()) - dblGap;
        for (const std::string& sName : m_oScene.oX.aNames)
            aLabels.append(m_oMetrics.elidedText(Text(sName), Qt::ElideMiddle, dblRoom));
        return aLabels;
    }

    void DrawAxes() {
        const QPen oGrid(m_oStyle.colFaint, 1);
        const QStringList aLabelsY = LabelsOf(m_aTicksY);
        for (std::size_t i = 0; i < m_aTicksY.size(); ++i) {
            const double y = m_oLayout.At(m_oScene.oX.dblLow, m_aTicksY[i]).y();
            m_oPainter.setPen(oGrid);
            m_oPainter.drawLine(QPointF(m_oPlot.left(), y), QPointF(m_oPlot.right(), y));
            m_oPainter.setPen(m_oStyle.colText);
            const QString& sLabel = aLabelsY[static_cast<qsizetype>(i)];
            m_oPainter.drawText(QPointF(m_oPlot.left() - dblGap - m_oMetrics.horizontalAdvance(sLabel),
                                        y + m_oMetrics.ascent() / 2 - 1),
                                sLabel);
        }
        const QStringList aLabelsX = LabelsX();
        for (std::size_t i = 0; i < m_aTicksX.size(); ++i) {
            const double x = m_oLayout.At(m_aTicksX[i], m_oScene.oY.dblLow).x();
            m_oPainter.setPen(m_oStyle.colText);
            m_oPainter.drawLine(QPointF(x, m_oPlot.bottom()), QPointF(x, m_oPlot.bottom() + 3));
            const QString& sLabel = aLabelsX[static_cast<qsizetype>(i)];
            m_oPainter.drawText(
                QPointF(x - m_oMetrics.horizontalAdvance(sLabel) / 2, m_oPlot.bottom() + dblGap + m_oMetrics.ascent()),
                sLabel);
        }
        m_oPainter.setPen(m_oStyle.colText);
        m_oPainter.drawLine(m_oPlot.bottomLeft(), m_oPlot.bottomRight());
        m_oPainter.drawLine(m_oPlot.bottomLeft(), m_oPlot.topLeft());
        DrawAxisNames();
    }

    void DrawAxisNames() {
        const QString sX = m_oMetrics.elidedText(Text(m_oScene.oX.sLabel), Qt::ElideMiddle, m_oPlot.width());
        m_oPainter.drawText(QPointF(m_oPlot.center().x() - m_oMetrics.horizontalAdvance(sX) / 2,
                                    m_oPlot.bottom() + dblGap + m_oMetrics.height() + m_oMetrics.ascent()),
                            sX);
        const QString sY = m_oMetrics.elidedText(Text(m_oScene.oY.sLabel), Qt::ElideMiddle, m_oPlot.height());
        m_oPainter.save();
        m_oPainter.translate(m_oArea.left() + m_oMetrics.ascent(),
                             m_oPlot.center().y() + m_oMetrics.horizontalAdvance(sY) / 2);
        m_oPainter.rotate(-90);
        m_oPainter.drawText(QPointF(0, 0), sY);
        m_oPainter.restore();
    }

    void DrawBars() {
        for (const ChartBar& oBar : m_oScene.aBars) {
            QRectF oRect(m_oLayout.At(oBar.dblLeft, oBar.dblTop), m_oLayout.At(oBar.dblRight, oBar.dblBottom));
            m_oPainter.setPen(oRect.width() > 4 ? QPen(m_oStyle.colBackground, 1) : QPen(Qt::NoPen));
            m_oPainter.setBrush(m_oStyle.Series(oBar.nColor));
            m_oPainter.drawRect(oRect);
        }
    }

    void DrawBands() {
        m_oPainter.setPen(Qt::NoPen);
        for (const ChartBand& oBand : m_oScene.aBands) {
            QPolygonF oShape;
            for (const ChartBand::Edge& oEdge : oBand.aEdges)
                oShape.append(m_oLayout.At(oEdge.x, oEdge.dblHigh));
            for (auto it = oBand.aEdges.rbegin(); it != oBand.aEdges.rend(); ++it)
                oShape.append(m_oLayout.At(it->x, it->dblLow));
            QColor colBand = m_oStyle.Series(oBand.nColor);
            colBand.setAlphaF(0.25F);
            m_oPainter.setBrush(colBand);
            m_oPainter.drawPolygon(oShape);
        }
    }

    void DrawPoints() {
        const bool bMany = m_oScene.aPoints.size() > nManyPoints;
        m_oPainter.setRenderHint(QPainter::Antialiasing, !bMany);
        m_oPainter.setPen(Qt::NoPen);
        const double dblRadius = m_oMetrics.height() / 6;
        int nColor = -1;
        for (const ChartPoint& oPoint : m_oScene.aPoints) {
            if (oPoint.nColor != nColor) {
                nColor = oPoint.nColor;
                QColor colPoint = m_oStyle.Series(nColor);
                colPoint.setAlphaF(bMany ? 0.35F : 0.75F);
                m_oPainter.setBrush(colPoint);
                m_oPainter.setPen(Qt::NoPen);
            }
            const QPointF oAt = m_oLayout.At(oPoint.x, oPoint.y);
            if (bMany)
                m_oPainter.fillRect(QRectF(oAt.x() - 1, oAt.y() - 1, 2, 2), m_oPainter.brush());
            else
                m_oPainter.drawEllipse(oAt, dblRadius, dblRadius);
        }
        m_oPainter.setRenderHint(QPainter::Antialiasing);
    }

    void DrawLines() {
        m_oPainter.setBrush(Qt::NoBrush);
        for (const ChartLine& oLine : m_oScene.aLines) {
            QPolygonF oShape;
            for (const auto& [x, y] : oLine.aPoints)
                oShape.append(m_oLayout.At(x, y));
            m_oPainter.setPen(QPen(m_oStyle.colBackground, 4));
            m_oPainter.drawPolyline(oShape);
            m_oPainter.setPen(QPen(m_oStyle.Series(oLine.nColor), 2));
            m_oPainter.drawPolyline(oShape);
        }
    }

    void DrawMarks() {
        const double dblCap = m_oMetrics.height() / 2;
        for (const ChartMark& oMark : m_oScene.aMarks) {
            const QColor colMark = m_oStyle.Series(oMark.nColor);
            m_oPainter.setPen(QPen(colMark, 2));
            const QPointF oLow = m_oLayout.At(oMark.x, oMark.dblLow);
            const QPointF oHigh = m_oLayout.At(oMark.x, oMark.dblHigh);
            m_oPainter.drawLine(oLow, oHigh);
            for (const QPointF& oEnd : {oLow, oHigh})
                m_oPainter.drawLine(oEnd - QPointF(dblCap, 0), oEnd + QPointF(dblCap, 0));
            m_oPainter.setBrush(colMark);
            m_oPainter.drawEllipse(m_oLayout.At(oMark.x, oMark.dblMiddle), dblCap / 2, dblCap / 2);
        }
    }

    QPainter& m_oPainter;
    QRectF m_oArea;
    const ChartScene& m_oScene;
    const ChartStyle& m_oStyle;
    QFontMetricsF m_oMetrics;
    QRectF m_oPlot;
    std::vector<double> m_aTicksX;
    std::vector<double> m_aTicksY;
    ChartLayout m_oLayout;
};

QString PointTip(const ChartScene& oScene, const ChartPoint& oPoint) {
    QString sTip;
    if (!oScene.aLegend.empty())
        sTip = Text(oScene.aLegend[static_cast<std::size_t>(oPoint.nColor)].first) + "\n";
    return sTip + QString("%1: %2\n%3: %4\nrow %5")
                      .arg(Text(oScene.oX.sLabel), Text(FigureText(oPoint.x)), Text(oScene.oY.sLabel),
                           Text(FigureText(oPoint.y)), Text(CountText(oPoint.iRow + 1)));
}

} // namespace

QColor ChartStyle::Series(int nColor) const {
    static constexpr std::array<QRgb, 8> aLight{0xff3478b8, 0xffd08a2e, 0xff3d9a5f, 0xffc4483f,
                                                0xff7d5bb5, 0xff2b9a9a, 0xff8a6d4f, 0xff6b7480};
    static constexpr std::array<QRgb, 8> aDark{0xff5fa3e0, 0xffe8a74e, 0xff5fc084, 0xffe8746a,
                                               0xffa98be0, 0xff4fc4c4, 0xffb8977a, 0xffa0aab6};
    return QColor((bDark ? aDark : aLight)[static_cast<std::size_t>(nColor) % aLight.size()]);
}

ChartStyle ChartStyle::Of(const QPalette& oPalette, const QFont& oFont) {
    ChartStyle oStyle{oFont, oPalette.color(QPalette::Base), oPalette.color(QPalette::Text), {}, false};
    oStyle.bDark = oStyle.colBackground.lightness() < 128;
    oStyle.colFaint = oStyle.colText;
    oStyle.colFaint.setAlphaF(0.15F);
    return oStyle;
}

ChartStyle ChartStyle::ForPaper(const QFont& oFont) {
    return {oFont, Qt::white, QColor(0x20, 0x24, 0x28), QColor(0xdd, 0xdd, 0xdd), false};
}

ChartLayout::ChartLayout(const QRectF& oPlot, const ChartAxis& oX, const ChartAxis& oY)
    : m_oPlot(oPlot), m_dblLeft(oX.dblLow), m_dblRight(oX.dblHigh), m_dblBottom(oY.dblLow), m_dblTop(oY.dblHigh) {}

QPointF ChartLayout::At(double x, double y) const {
    return {m_oPlot.left() + (x - m_dblLeft) / (m_dblRight - m_dblLeft) * m_oPlot.width(),
            m_oPlot.bottom() - (y - m_dblBottom) / (m_dblTop - m_dblBottom) * m_oPlot.height()};
}

ChartLayout PaintChart(QPainter& oPainter, const QRectF& oArea, const ChartScene& oScene, const ChartStyle& oStyle) {
    oPainter.fillRect(oArea, oStyle.colBackground);
    return ChartDrawing(oPainter, oArea, oScene, oStyle).Draw();
}

QString ChartTip(const ChartScene& oScene, const ChartLayout& oLayout, const QPointF& oPoint) {
    constexpr double dblReach = 8;
    if (!oLayout.Plot().adjusted(-dblReach, -dblReach, dblReach, dblReach).contains(oPoint))
        return {};
    for (const ChartBar& oBar : oScene.aBars)
        if (QRectF(oLayout.At(oBar.dblLeft, oBar.dblTop), oLayout.At(oBar.dblRight, oBar.dblBottom)).contains(oPoint))
            return Text(oBar.sTip);
    for (const ChartMark& oMark : oScene.aMarks)
        if (QRectF(oLayout.At(oMark.x, oMark.dblHigh), oLayout.At(oMark.x, oMark.dblLow))
                .adjusted(-2 * dblReach, -dblReach, 2 * dblReach, dblReach)
                .contains(oPoint))
            return Text(oMark.sTip);
    const ChartPoint* pNearest = nullptr;
    double dblNearest = dblReach * dblReach;
    for (const ChartPoint& oCandidate : oScene.aPoints) {
        const QPointF oAway = oLayout.At(oCandidate.x, oCandidate.y) - oPoint;
        if (const double dblAway = QPointF::dotProduct(oAway, oAway); dblAway < dblNearest) {
            dblNearest = dblAway;
            pNearest = &oCandidate;
        }
    }
    return pNearest ? PointTip(oScene, *pNearest) : QString();
}

} // namespace studies
