#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/palette/PaletteDialog.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QTest>

namespace corvane::desktop {
namespace {

TEST(FuzzyText, FindsLettersInOrderBestTogetherAndAtTheBeginningOfWords) {
    struct Case {
        const char* typed;
        const char* better;
        const char* worse; // empty for one that doesn't fit at all is written as "-"
    };
    const Case cases[] = {
        {"sas", "File › Save As", "File › Classes"},    {"open", "File › Open", "File › Options Envelope"},
        {"OPEN", "File › Open", "Open › File"},         {"fi op", "File › Open", "-Edit › Open"},
        {"save", "File › Save", "File › Save As Copy"}, {"äö", "File › Ärger Öl", "-File › Arger Ol"},
    };
    for (const Case& testCase : cases) {
        const QStringList words = FuzzyWords(testCase.typed);
        const auto score = [&](const QString& text) {
            return FuzzyText(text, text.lastIndexOf(QString("› ")) + 2).Score(words);
        };
        const QString worse = testCase.worse;
        ASSERT_TRUE(score(testCase.better)) << testCase.typed;
        if (worse.startsWith('-'))
            EXPECT_FALSE(score(worse.mid(1))) << testCase.typed;
        else
            EXPECT_GT(score(testCase.better), score(worse)) << testCase.typed;
    }
    EXPECT_EQ(FuzzyText("Save As", 0).Places(FuzzyWords("sa")), (std::vector<qsizetype>{0, 1}));
    EXPECT_EQ(FuzzyText("Save As", 0).Places(FuzzyWords("sas")), (std::vector<qsizetype>{0, 5, 6}));
}

class PaletteTest : public ::testing::Test {
protected:
    PaletteTest() {
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Plugin("T0");
        m_folder.Service("Trouble", "T0.Service", R"(<ActionItems><ActionItem Name="Ping" Action="OnPing"/>
            <ActionItem Name="Off" Action="OnPing" Enabled="false"/>
            <ActionItem Name="Weigh" Enabled="false"/></ActionItems><Menus>
            <MenuItem Type="MenuItem" ActionItem="Weigh" Path="File" PositionOrder="3" Caption="Weigh"/>
            <MenuItem Type="MenuItem" ActionItem="Ping" Path="File" PositionOrder="1" Caption="Ask for an #Answer"/>
            <MenuItem Type="MenuItem" ActionItem="Off" Path="File" PositionOrder="2" Caption="Answer Nothing"/></Menus>
            <ExplorerItems><ExplorerItem Name="Root" Type="Folder"><ActionItems><ActionItem Name="Item" Action="X"/>
            </ActionItems><Menus><MenuItem Type="ContextMenuItem" ActionItem="Item" PositionOrder="1" Caption="Inquire"/>
            </Menus></ExplorerItem><ExplorerItem Name="DataSet" Type="Default" Parent="Root"><ActionItems>
            <ActionItem Name="Weigh" Action="X"/></ActionItems><Menus>
            <MenuItem Type="MenuItem" ActionItem="Weigh" Path="File" PositionOrder="3" Caption="Weigh"/></Menus>
            </ExplorerItem></ExplorerItems>)");
        m_application = std::make_unique<Application>(ApplicationOptions{m_folder.App(), false});
        EXPECT_TRUE(m_application->Start());
    }
    // Opens the palette by its key and types.
    PaletteDialog* Type(const QString& text) {
        QTest::keyClick(&m_application->Window(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        auto* palette = m_application->Window().findChild<PaletteDialog*>();
        if (palette)
            QTest::keyClicks(&palette->Field(), text);
        return palette;
    }
    [[nodiscard]] std::string Status() const {
        return m_application->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
    }

    AppFolder m_folder;
    std::unique_ptr<Application> m_application;
};

TEST_F(PaletteTest, FewLettersAndEnterChooseACommand) {
    QPointer<PaletteDialog> palette = Type("answ");
    ASSERT_TRUE(palette);
    const auto* model = palette->List().model();
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->data(model->index(0, 0), Qt::AccessibleTextRole).toString(), "Ask for an Answer, File");
    QTest::keyClick(&palette->Field(), Qt::Key_Return);
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(palette);
    EXPECT_EQ(Status(), "Ping");
}

TEST_F(PaletteTest, WhatCannotBeChosenSaysWhyAndStays) {
    struct Case {
        const char* typed;
        const char* status;
    };
    for (const Case& testCase : {Case{"answer noth", "Unavailable: disabled by Trouble."},
                                 Case{"inqu", "Choose “Root” in the explorer first."},
                                 Case{"weigh", "Choose a data set in the explorer first."},
                                 Case{"zzz", "No command contains these letters in this order."}}) {
        PaletteDialog* palette = Type(testCase.typed);
        ASSERT_TRUE(palette);
        QTest::keyClick(&palette->Field(), Qt::Key_Return);
        EXPECT_TRUE(palette->isVisible());
        EXPECT_EQ(palette->Status().text().toStdString(), testCase.status);
        QTest::keyClick(&palette->Field(), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(Status(), "");
}

} // namespace
} // namespace corvane::desktop
