// What a printed window has on its paper.
#include "desktop/printing/Printout.h"
#include "tests/desktop_printing/RecordingPaper.h"
#include "tests/windows_host/HostFixture.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

namespace corvane::desktop {
namespace {

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

TEST_F(HostFixture, WindowOnPaperHasAHeadingAndAllThatThePageShows) {
    Define("W", "Type='Window'", "A");
    Start();
    (void)Open("W");
    QWidget* edit = LastForm()->Body()->findChild<QLineEdit*>();
    QWidget* page = edit->parentWidget();
    edit->setStyleSheet("border: none; background: #ff0000");
    QImage before;
    for (const char* entry : {"weighed once", "weighed twice"}) {
        Page("A").Enter(entry);
        Turn();
        RecordingPaper paper;
        PaperPrinter printer(paper);
        Printout printout;
        LastForm()->Print(printout);
        EXPECT_EQ(printout.Paint(printer, "Penguins"), 1U);
        ASSERT_EQ(paper.sheets.size(), 1);
        const QString texts = paper.Texts();
        EXPECT_TRUE(texts.contains("Penguins")) << texts.toStdString();
        EXPECT_TRUE(texts.contains(QRegularExpression("\\d+:\\d\\d"))) << "the time: " << texts.toStdString();
        ASSERT_EQ(paper.pictures.size(), 1);
        const QImage printed = paper.pictures.front();
        const QRectF shown = PlaceIn(*page, *edit);
        const QRectF found = PlaceOf(QColor(255, 0, 0), printed);
        for (const double difference : {found.left() - shown.left(), found.right() - shown.right(),
                                        found.top() - shown.top(), found.bottom() - shown.bottom()})
            EXPECT_NEAR(difference, 0, 0.01) << entry;
        EXPECT_NE(printed, before) << "what has been entered is there";
        before = printed;
        for (const QRectF& place : paper.places)
            EXPECT_TRUE(QRectF(RecordingPaper::area).contains(place)) << place.x() << " " << place.y();
    }
}

} // namespace
} // namespace corvane::desktop
