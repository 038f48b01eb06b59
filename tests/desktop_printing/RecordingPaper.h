// Paper that writes down what is put on it.
#pragma once

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPrintEngine>
#include <QPrinter>

namespace corvane::desktop {

// Writes down the texts and the pictures that are put on the paper, and where.
class RecordingPaper final : public QPaintEngine, public QPrintEngine {
public:
    // Picture is what a preview draws on.
    explicit RecordingPaper(Type type = User) : QPaintEngine(QPaintEngine::AllFeatures), m_type(type) {}
    bool begin(QPaintDevice* /*device*/) override { return newPage(); }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& changed) override {
        if (changed.state() & QPaintEngine::DirtyTransform)
            m_transform = changed.transform();
    }
    void drawPixmap(const QRectF& place, const QPixmap& pixmap, const QRectF& /*source*/) override {
        pictures.append(pixmap.toImage());
        places.append(m_transform.mapRect(place));
    }
    void drawTextItem(const QPointF& place, const QTextItem& item) override {
        sheets.back().append(item.text());
        places.append(QRectF(m_transform.map(place), QSizeF(1, 1)));
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode /*mode*/) override {
        places.append(m_transform.mapRect(QPolygonF(QList<QPointF>(points, points + count)).boundingRect()));
    }
    [[nodiscard]] Type type() const override { return m_type; }
    void setProperty(PrintEnginePropertyKey key, const QVariant& value) override { m_properties[key] = value; }
    [[nodiscard]] QVariant property(PrintEnginePropertyKey key) const override { return m_properties.value(key); }
    bool newPage() override {
        sheets.append(QStringList());
        return true;
    }
    bool abort() override { return true; }
    [[nodiscard]] int metric(QPaintDevice::PaintDeviceMetric metric) const override {
        switch (metric) {
        case QPaintDevice::PdmWidth:
            return area.width();
        case QPaintDevice::PdmHeight:
            return area.height();
        case QPaintDevice::PdmDevicePixelRatioScaled:
            return static_cast<int>(QPaintDevice::devicePixelRatioFScale());
        case QPaintDevice::PdmDevicePixelRatio:
            return 1;
        case QPaintDevice::PdmNumColors:
            return 1 << 24;
        case QPaintDevice::PdmDepth:
            return 32;
        case QPaintDevice::PdmWidthMM:
            return 250;
        case QPaintDevice::PdmHeightMM:
            return 180;
        default:
            return 300; // dots per inch
        }
    }
    [[nodiscard]] QPrinter::PrinterState printerState() const override { return QPrinter::Active; }

    static constexpr QRect area{0, 0, 3000, 2100};
    // All texts of a sheet, in the order in which they were drawn.
    [[nodiscard]] QString Texts(qsizetype sheet = 0) const { return sheets[sheet].join('|'); }

    QList<QStringList> sheets;
    QList<QImage> pictures;
    QList<QRectF> places;

private:
    Type m_type;
    QTransform m_transform;
    QMap<int, QVariant> m_properties;
};

class PaperPrinter final : public QPrinter {
public:
    explicit PaperPrinter(RecordingPaper& paper) : QPrinter(QPrinter::HighResolution) { setEngines(&paper, &paper); }
};

} // namespace corvane::desktop
