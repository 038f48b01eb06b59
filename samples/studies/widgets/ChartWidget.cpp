#include "ChartWidget.h"

#include "Errors.h"
#include "QtText.h"

#include <QFileInfo>
#include <QHelpEvent>
#include <QPainter>
#include <QSvgGenerator>
#include <QToolTip>

namespace studies {
namespace {

QFont PaperFont() {
    QFont font;
    font.setPixelSize(13);
    return font;
}

void SaveSvg(const ChartScene& scene, const QSize& size, const QString& path) {
    QSvgGenerator generator;
    generator.setFileName(path);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    generator.setTitle(QFileInfo(path).completeBaseName());
    QPainter painter;
    if (!painter.begin(&generator))
        FailWith(Translated("The file “%1” can't be written.", {Utf8(path)}));
    PaintChart(painter, QRectF(QPointF(), size), scene, ChartStyle::ForPaper(PaperFont()));
}

} // namespace

ChartWidget::ChartWidget(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(Text(Translated("Chart")));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ChartWidget::SetScene(ChartScene scene) {
    m_scene = std::move(scene);
    m_drawn = {};
    // For those who don't see it.
    setAccessibleDescription(
        m_scene.empty.empty() ? Text(Translated("%1 over %2", {m_scene.y.label, m_scene.x.label}) + ". " + m_scene.note)
                              : Text(m_scene.empty));
    update();
}

void ChartWidget::Draw() {
    const double ratio = devicePixelRatioF();
    if (!m_drawn.isNull() && m_drawn.size() == size() * ratio)
        return;
    m_drawn = QPixmap(size() * ratio);
    m_drawn.setDevicePixelRatio(ratio);
    QPainter painter(&m_drawn);
    m_layout = PaintChart(painter, rect(), m_scene, ChartStyle::Of(palette(), font()));
}

QString ChartWidget::TipAt(const QPoint& point) {
    Draw();
    return ChartTip(m_scene, m_layout, point);
}

bool ChartWidget::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::ToolTip: {
        const auto& help = *static_cast<QHelpEvent*>(event);
        const QString tip = TipAt(help.pos());
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help.globalPos(), tip, this);
        return true;
    }
    case QEvent::PaletteChange:
    case QEvent::FontChange:
        m_drawn = {};
        update();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void ChartWidget::paintEvent(QPaintEvent* /*event*/) {
    if (size().isEmpty())
        return;
    Draw();
    QPainter(this).drawPixmap(0, 0, m_drawn);
}

QImage ChartPicture(const ChartScene& scene, const QSize& size) {
    constexpr double ratio = 2;
    QImage image(size * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    PaintChart(painter, QRectF(QPointF(), size), scene, ChartStyle::ForPaper(PaperFont()));
    return image;
}

void DrawChart(QPainter& painter, const QRectF& area, const ChartScene& scene, const QSize& size) {
    painter.save();
    painter.translate(area.topLeft());
    painter.scale(area.width() / size.width(), area.height() / size.height());
    PaintChart(painter, QRectF(QPointF(), size), scene, ChartStyle::ForPaper(PaperFont()));
    painter.restore();
}

void SaveChart(const ChartScene& scene, const QSize& size, const QString& path) {
    if (path.endsWith(".svg", Qt::CaseInsensitive)) {
        SaveSvg(scene, size, path);
        return;
    }
    if (!ChartPicture(scene, size).save(path, "PNG"))
        FailWith(Translated("The file “%1” can't be written.", {Utf8(path)}));
}

} // namespace studies

#include "moc_ChartWidget.cpp"
