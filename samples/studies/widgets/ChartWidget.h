// Shows a chart, tells about what is under the pointer, and writes it to picture files.
#pragma once

#include "ChartPainter.h"

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace studies {

class ChartWidget final : public QWidget {
    Q_OBJECT
public:
    explicit ChartWidget(QWidget* parent = nullptr);

    void SetScene(ChartScene scene);
    [[nodiscard]] const ChartScene& Scene() const { return m_scene; }
    // As the pointer there would show it.
    [[nodiscard]] QString TipAt(const QPoint& point);

    // Small, for what is around it takes it for the least as soon as a text beside it wraps.
    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override { return {280, 200}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Draw(); // into the picture that is kept: there may be many points

    ChartScene m_scene;
    ChartLayout m_layout;
    QPixmap m_drawn; // null: not drawn as it is now
};

// For paper: dark on white, with twice as many pixels as the size says.
[[nodiscard]] QImage ChartPicture(const ChartScene& scene, const QSize& size);
// Into a rectangle of any device, as large as it is, as in a picture of that size.
void DrawChart(QPainter& painter, const QRectF& area, const ChartScene& scene, const QSize& size);
// SVG when the path ends so, PNG otherwise. Fails when the file can't be written.
void SaveChart(const ChartScene& scene, const QSize& size, const QString& path);

} // namespace studies
