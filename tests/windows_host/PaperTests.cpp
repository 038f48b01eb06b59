// What a printed window has on its paper.
#include "desktop/service/ScreenPrinter.h"
#include "tests/windows_host/HostFixture.h"

#include <QLineEdit>
#include <QPaintEngine>
#include <QPainter>
#include <QPrintEngine>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>

namespace corvane::desktop {
namespace {

// Writes down the texts and the pictures that are put on the paper, and where.
class Paper final : public QPaintEngine, public QPrintEngine {
public:
    Paper() : QPaintEngine(QPaintEngine::AllFeatures) {}
    bool begin(QPaintDevice* /*device*/) override { return ++pages > 0; }
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
        texts.append(item.text());
        places.append(QRectF(m_transform.map(place), QSizeF(1, 1)));
    }
    [[nodiscard]] Type type() const override { return User; }
    void setProperty(PrintEnginePropertyKey key, const QVariant& value) override { m_properties[key] = value; }
    [[nodiscard]] QVariant property(PrintEnginePropertyKey key) const override { return m_properties.value(key); }
    bool newPage() override { return ++pages > 0; }
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
    [[nodiscard]] QPrinter::PrinterState printerState() const override { return QPrinter::Idle; }

    static constexpr QRect area{0, 0, 3000, 2100};
    QStringList texts;
    QList<QImage> pictures;
    QList<QRectF> places;
    int pages = 0;

private:
    QTransform m_transform;
    QMap<int, QVariant> m_properties;
};

class PaperPrinter final : public QPrinter {
public:
    explicit PaperPrinter(Paper& paper) : QPrinter(QPrinter::HighResolution) { setEngines(&paper, &paper); }
};

// What of the picture has that colour, as parts of its size.
QRectF PlaceOf(const QColor& color, const QImage& picture) {
    QRect place;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) == color)
                place |= QRect(x, y, 1, 1);
    return QTransform::fromScale(1.0 / picture.width(), 1.0 / picture.height()).mapRect(QRectF(place));
}

// Where the part is in the window, as parts of its size.
QRectF PlaceIn(const QWidget& body, const QWidget& part) {
    return QTransform::fromScale(1.0 / body.width(), 1.0 / body.height())
        .mapRect(QRectF(part.mapTo(&body, QPoint()), part.size()));
}

TEST_F(HostFixture, WindowOnPaperHasAHeadingAndAllThatTheWindowShows) {
    Define("W", "Type='Window'", "A");
    Start();
    (void)Open("W");
    Page("A").Enter("weighed"); // from then on there are commands
    const std::pair<QWidget*, QColor> parts[] = {{LastForm()->Body()->findChild<QLineEdit*>(), QColor(255, 0, 0)},
                                                 {Button(StandardCommandConstants::cvOK), QColor(0, 0, 255)}};
    for (const auto& [part, color] : parts)
        part->setStyleSheet("border: none; background: " + color.name());
    QImage before;
    for (const char* entry : {"weighed once", "weighed twice"}) {
        Page("A").Enter(entry);
        Turn();
        WindowBody& body = *LastForm()->Body();
        Paper paper;
        PaperPrinter printer(paper);
        PaintWidget(printer, body, "Penguins");
        EXPECT_EQ(paper.pages, 1);
        const QString texts = paper.texts.join('|');
        EXPECT_TRUE(texts.contains("Penguins")) << texts.toStdString();
        EXPECT_TRUE(texts.contains(QRegularExpression("\\d+:\\d\\d"))) << "the time: " << texts.toStdString();
        ASSERT_EQ(paper.pictures.size(), 1);
        const QImage printed = paper.pictures.front();
        for (const auto& [part, color] : parts) {
            const QRectF shown = PlaceIn(body, *part);
            const QRectF found = PlaceOf(color, printed);
            for (const double difference : {found.left() - shown.left(), found.right() - shown.right(),
                                            found.top() - shown.top(), found.bottom() - shown.bottom()})
                EXPECT_NEAR(difference, 0, 0.01) << entry << " " << color.name().toStdString();
        }
        EXPECT_NE(printed, before) << "what has been entered is there";
        before = printed;
        const QRectF picture = paper.places.back();
        EXPECT_NEAR(picture.width() / picture.height(), static_cast<double>(body.width()) / body.height(), 0.01);
        for (const QRectF& place : paper.places)
            EXPECT_TRUE(QRectF(Paper::area).contains(place)) << place.x() << " " << place.y() << " " << place.width();
    }
}

} // namespace
} // namespace corvane::desktop
