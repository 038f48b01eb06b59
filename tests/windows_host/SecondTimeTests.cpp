// Answers that are given less often, and what is done after them once more.
#include "desktop/service/ScreenPrinter.h"
#include "tests/windows_host/HostRoom.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPaintEngine>
#include <QPrintEngine>
#include <QPrinter>
#include <QRegularExpression>

namespace corvane::desktop {
namespace {

using Command = StandardCommandConstants;

TEST_F(HostRoom, SaveAtTheCloseBoxSavesAndEndsAsByOk) {
    Define("W", "Type='Window'", "A B");
    Start();
    (void)Open("W");
    Page("A").Enter("new");
    Page("B").Enter("");
    m_heard->Take();
    m_application->Dialogs().AddAnswer("Save"); // can't be: a page is invalid
    LastForm()->Frame()->close();
    EXPECT_TRUE(LastForm()->IsLoaded());
    EXPECT_EQ(m_heard->Take(), "");
    Turn();
    Page("B").Enter("x");
    m_application->Dialogs().AddAnswer("Save");
    LastForm()->Frame()->close();
    EXPECT_FALSE(LastForm()->IsLoaded());
    EXPECT_EQ(m_heard->Take(), "A.Save B.Save A.Deactivate A.Terminate B.Terminate exit(done)");
}

TEST_F(HostRoom, PreviousLeavesAnInvalidStepAndNextComesBackToIt) {
    Define("W", wizard, "A B");
    Start();
    const auto window = Open("W");
    for (const int time : {1, 2}) {
        window->ClickCommand(Command::cvNext);
        EXPECT_EQ(window->ActivePageIndex(), 1) << time;
        Page("B").Enter("");
        m_heard->Take();
        window->ClickCommand(Command::cvPrevious);
        EXPECT_EQ(m_heard->Take(), "B.Click4 B.Deactivate A.Activate") << time;
        EXPECT_EQ(Commands(), "-Previous Next* -Finish Cancel") << "the step to come isn't valid";
    }
}

// The changes were given up for an exit that didn't come, so they are asked for again.
TEST_F(HostRoom, DiscardBeforeARefusedExitIsForThatExitAlone) {
    Define("D", "Type='Dialog' IsMDIChild='false'", "A");
    Define("W", wizard, "B");
    Start();
    (void)Open("D");
    (void)Open("W");
    Page("A").Enter("new");
    Page("B").Enter("new");
    m_heard->Take();
    m_application->Dialogs().AddAnswer("Discard"); // all that is unsaved
    m_application->Dialogs().AddAnswer("Stay");    // in the wizard, which is asked for itself
    m_application->Window().close();
    EXPECT_TRUE(m_application->Window().isVisible());
    EXPECT_EQ(m_heard->Take(), "");
    Turn();
    m_application->Dialogs().AddAnswer("Stay");
    m_forms.front()->Frame()->close();
    EXPECT_TRUE(m_forms.front()->IsLoaded()) << "it asks";
    Turn();
    for (const char* answer : {"Save", "Discard"})
        m_application->Dialogs().AddAnswer(answer);
    m_application->Window().close();
    EXPECT_FALSE(m_application->Window().isVisible());
    EXPECT_EQ(m_heard->Take(), "A.Save B.Deactivate B.Terminate exit(cancelled) A.Activate A.Deactivate A.Terminate "
                               "exit(done)");
}

TEST_F(HostRoom, MenuListsTheOpenWindowsAndBringsThemBack) {
    Define("W", "Type='Window'", "A");
    Start();
    QMenu* menu = nullptr;
    for (QAction* title : m_application->Window().menuBar()->actions())
        if (title->text().remove('&') == "Window")
            menu = title->menu();
    ASSERT_TRUE(menu);
    const auto list = [&] {
        Q_EMIT menu->aboutToShow();
        QStringList entries;
        for (const QAction* entry : menu->actions())
            if (!entry->isSeparator() && !entry->text().contains("lose All"))
                entries.append(entry->text() + (entry->isChecked() ? "*" : "") + (entry->isEnabled() ? "" : "-"));
        return entries.join(" ").toStdString();
    };
    EXPECT_EQ(list(), "(no open windows)-");
    const auto first = Open("W", "1");
    const auto second = Open("W", "2");
    second->SetCaption("Fish & Chips");
    EXPECT_EQ(list(), "&1 W &2 Fish && Chips*");
    m_forms.front()->SetWindowState(FormState::Minimized);
    for (QAction* entry : menu->actions())
        if (entry->text() == "&1 W")
            entry->trigger();
    EXPECT_EQ(Manager().ActiveWindow(), first);
    EXPECT_EQ(m_forms.front()->WindowState(), FormState::Normal);
    EXPECT_EQ(list(), "&1 W* &2 Fish && Chips");
    first->Terminate();
    second->Terminate();
    EXPECT_EQ(list(), "(no open windows)-");
}

// Writes down the texts that are put on the paper, and where.
class Paper final : public QPaintEngine, public QPrintEngine {
public:
    Paper() : QPaintEngine(QPaintEngine::AllFeatures) {}
    bool begin(QPaintDevice* /*device*/) override {
        ++pages;
        return true;
    }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& changed) override {
        if (changed.state() & QPaintEngine::DirtyTransform)
            m_transform = changed.transform();
    }
    void drawPixmap(const QRectF& /*place*/, const QPixmap& /*pixmap*/, const QRectF& /*source*/) override {}
    void drawTextItem(const QPointF& place, const QTextItem& item) override {
        texts.append(item.text());
        places.append(m_transform.map(place));
    }
    [[nodiscard]] Type type() const override { return User; }
    void setProperty(PrintEnginePropertyKey key, const QVariant& value) override { m_properties[key] = value; }
    [[nodiscard]] QVariant property(PrintEnginePropertyKey key) const override { return m_properties.value(key); }
    bool newPage() override {
        ++pages;
        return true;
    }
    bool abort() override { return true; }
    [[nodiscard]] int metric(QPaintDevice::PaintDeviceMetric metric) const override {
        switch (metric) {
        case QPaintDevice::PdmWidth:
            return width;
        case QPaintDevice::PdmHeight:
            return height;
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

    static constexpr int width = 3000;
    static constexpr int height = 2100;
    QStringList texts;
    QList<QPointF> places;
    int pages = 0;

private:
    QTransform m_transform;
    QMap<int, QVariant> m_properties;
};

class PaperPrinter final : public QPrinter {
public:
    explicit PaperPrinter(Paper& paper) : QPrinter(QPrinter::HighResolution) { setEngines(&paper, &paper); }
};

TEST_F(HostRoom, WindowOnPaperHasAHeadingAndAllThatTheWindowShows) {
    Define("W", "Type='Window'", "A");
    Start();
    (void)Open("W");
    Page("A").Enter("weighed twice");
    for (const int time : {1, 2}) {
        Paper paper;
        PaperPrinter printer(paper);
        PaintWidget(printer, *LastForm()->Body(), "Penguins");
        EXPECT_EQ(paper.pages, 1) << time;
        const QString texts = paper.texts.join('|');
        EXPECT_TRUE(texts.startsWith("Penguins|") || texts.contains("|Penguins|")) << texts.toStdString();
        EXPECT_TRUE(texts.contains("weighed twice")) << texts.toStdString();
        EXPECT_TRUE(texts.contains("Apply")) << "its commands: " << texts.toStdString();
        EXPECT_TRUE(texts.contains(QRegularExpression("\\d+:\\d\\d"))) << "the time: " << texts.toStdString();
        for (const QPointF& place : paper.places)
            EXPECT_TRUE(QRectF(0, 0, Paper::width, Paper::height).contains(place)) << place.x() << " " << place.y();
    }
}

} // namespace
} // namespace corvane::desktop
