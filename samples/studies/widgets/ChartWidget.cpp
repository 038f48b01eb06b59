#include "ChartWidget.h"

#include "Errors.h"
#include "QtText.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace studies {
namespace {

// For those who don't see it: what it shows, what is below it, and the figures that the pointer would show.
std::string DescriptionOf(const ChartScene& scene) {
    constexpr std::size_t most = 40; // figures
    if (!scene.empty.empty())
        return scene.empty;
    std::string text = Translated("%1 over %2", {scene.y.label, scene.x.label}) + ". " + scene.note;
    std::size_t told = 0;
    const auto Tell = [&](const auto& parts) {
        for (const auto& part : parts)
            if (!part.tip.empty() && told++ < most)
                text += "\n" + part.tip;
    };
    Tell(scene.boxes);
    Tell(scene.marks);
    Tell(scene.bars);
    return text;
}

// A picture, and not a filler, as a widget of an unknown class is.
QAccessibleInterface* AccessibleChart(const QString& className, QObject* object) {
    auto* chart = className == QLatin1String("studies::ChartWidget") ? qobject_cast<QWidget*>(object) : nullptr;
    return chart ? new QAccessibleWidget(chart, QAccessible::Graphic) : nullptr;
}

} // namespace

ChartWidget::ChartWidget(QWidget* parent) : QWidget(parent) {
    static const bool isKnown = (QAccessible::installFactory(&AccessibleChart), true);
    (void)isKnown;
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(Text(Translated("Chart")));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ChartWidget::SetScene(ChartScene scene) {
    m_scene = std::move(scene);
    m_drawn = {};
    setAccessibleDescription(Text(DescriptionOf(m_scene)));
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

corvane::desktop::Drawing DrawingOf(const ChartScene& scene, const QSize& size) {
    return {size, [scene, size](QPainter& painter) {
                QFont font;
                font.setPixelSize(13);
                PaintChart(painter, QRectF(QPointF(), size), scene, ChartStyle::ForPaper(font));
            }};
}

} // namespace studies

#include "moc_ChartWidget.cpp"
