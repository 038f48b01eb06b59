// Shows a chart, and tells about what is under the pointer.
#pragma once

#include "ChartPainter.h"
#include "desktop/Drawing.h"

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

// For paper, dark on white: as it looks with that many pixels, in whatever size it is drawn.
[[nodiscard]] corvane::desktop::Drawing DrawingOf(const ChartScene& scene, const QSize& size);

} // namespace studies
