// What a plug-in draws, such as a chart, as it leaves the program: as a picture, in a file, on paper. A plug-in that
// includes this links Qt6::Svg.
#pragma once

#include "desktop/IPrintout.h"
#include "desktop/WholeFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QSize>
#include <QSvgGenerator>
#include <utility>

namespace corvane::desktop {

class Drawing {
public:
    // Draws on white, from the origin to that size; once for each use, also on other threads, and as long as there is a
    // copy of the drawing. What it refers to must live that long.
    Drawing(const QSize& size, std::function<void(QPainter&)> draw) : m_size(size), m_draw(std::move(draw)) {}

    // Into a rectangle of any device, in the units of its painter.
    void Paint(QPainter& painter, const QRectF& area) const {
        painter.save();
        painter.translate(area.topLeft());
        painter.scale(area.width() / m_size.width(), area.height() / m_size.height());
        m_draw(painter);
        painter.restore();
    }
    // With twice as many pixels as the size says.
    [[nodiscard]] QImage Picture() const {
        constexpr double ratio = 2;
        QImage image(m_size * ratio, QImage::Format_RGB32);
        image.fill(Qt::white);
        image.setDevicePixelRatio(ratio);
        QPainter painter(&image);
        Paint(painter, QRectF({}, m_size));
        return image;
    }
    // As lines and letters, not as pixels.
    void AddTo(IPrintout& printout) const {
        printout.AddPicture(m_size,
                            [self = *this](QPainter& painter, const QRectF& area) { self.Paint(painter, area); });
    }
    // A drawing in SVG when the path, in UTF-8, ends so; the picture as PNG otherwise. Fails as WriteWholeFile.
    void Save(const std::string& path) const {
        const QFileInfo file(QString::fromStdString(path));
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        if (file.suffix().compare("svg", Qt::CaseInsensitive) == 0)
            WriteSvg(buffer, file.completeBaseName());
        else
            Picture().save(&buffer, "PNG");
        WriteWholeFile(path, std::string_view(buffer.data().constData(), static_cast<std::size_t>(buffer.size())));
    }

private:
    void WriteSvg(QIODevice& device, const QString& title) const {
        QSvgGenerator generator;
        generator.setOutputDevice(&device);
        generator.setSize(m_size);
        generator.setViewBox(QRect({}, m_size));
        generator.setTitle(title);
        QPainter painter(&generator);
        Paint(painter, QRectF({}, m_size));
    }

    QSize m_size;
    std::function<void(QPainter&)> m_draw;
};

} // namespace corvane::desktop
