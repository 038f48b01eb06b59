#include "desktop/application/Application.h"
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
        const char* sTyped;
        const char* sBetter;
        const char* sWorse; // empty for one that doesn't fit at all is written as "-"
    };
    const Case aCases[] = {
        {"sas", "File › Save As", "File › Classes"},    {"open", "File › Open", "File › Options Envelope"},
        {"OPEN", "File › Open", "Open › File"},         {"fi op", "File › Open", "-Edit › Open"},
        {"save", "File › Save", "File › Save As Copy"}, {"äö", "File › Ärger Öl", "-File › Arger Ol"},
    };
    for (const Case& oCase : aCases) {
        const QStringList aWords = FuzzyWords(oCase.sTyped);
        const auto fnScore = [&](const QString& sText) {
            return FuzzyText(sText, sText.lastIndexOf(QString("› ")) + 2).Score(aWords);
        };
        const QString sWorse = oCase.sWorse;
        ASSERT_TRUE(fnScore(oCase.sBetter)) << oCase.sTyped;
        if (sWorse.startsWith('-'))
            EXPECT_FALSE(fnScore(sWorse.mid(1))) << oCase.sTyped;
        else
            EXPECT_GT(fnScore(oCase.sBetter), fnScore(sWorse)) << oCase.sTyped;
    }
    EXPECT_EQ(FuzzyText("Save As", 0).Places(FuzzyWords("sa")), (std::vector<qsizetype>{0, 1}));
    EXPECT_EQ(FuzzyText("Save As", 0).Places(FuzzyWords("sas")), (std::vector<qsizetype>{0, 5, 6}));
}

class PaletteTest : public ::testing::Test {
protected:
    PaletteTest() {
        m_oFolder.Service("Shell", "Corvane.Framework", sShellContent);
        m_oFolder.Plugin("T0");
        m_oFolder.Service("Trouble", "T0.Service", R"(<ActionItems><ActionItem Name="Ping" Action="OnPing"/>
            <ActionItem Name="Off" Action="OnPing" Enabled="false"/></ActionItems><Menus>
            <MenuItem Type="MenuItem" ActionItem="Ping" Path="File" PositionOrder="1" Caption="Ask for an #Answer"/>
            <MenuItem Type="MenuItem" ActionItem="Off" Path="File" PositionOrder="2" Caption="Answer Nothing"/></Menus>
            <ExplorerItems><ExplorerItem Name="Root" Type="Folder"><ActionItems><ActionItem Name="Item" Action="X"/>
            </ActionItems><Menus><MenuItem Type="ContextMenuItem" ActionItem="Item" PositionOrder="1" Caption="Inquire"/>
            </Menus></ExplorerItem></ExplorerItems>)");
        m_pApplication = std::make_unique<Application>(ApplicationOptions{m_oFolder.App(), false});
        EXPECT_TRUE(m_pApplication->Start());
    }
    // Opens the palette by its key and types.
    PaletteDialog* Type(const QString& sText) {
        QTest::keyClick(&m_pApplication->Window(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        auto* pPalette = m_pApplication->Window().findChild<PaletteDialog*>();
        if (pPalette)
            QTest::keyClicks(&pPalette->Field(), sText);
        return pPalette;
    }
    [[nodiscard]] std::string Status() const {
        return m_pApplication->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
    }

    AppFolder m_oFolder;
    std::unique_ptr<Application> m_pApplication;
};

TEST_F(PaletteTest, FewLettersAndEnterChooseACommand) {
    QPointer<PaletteDialog> pPalette = Type("answ");
    ASSERT_TRUE(pPalette);
    const auto* pModel = pPalette->List().model();
    ASSERT_EQ(pModel->rowCount(), 2);
    EXPECT_EQ(pModel->data(pModel->index(0, 0), Qt::AccessibleTextRole).toString(), "Ask for an Answer, File, Trouble");
    QTest::keyClick(&pPalette->Field(), Qt::Key_Return);
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(pPalette);
    EXPECT_EQ(Status(), "Ping");
}

TEST_F(PaletteTest, WhatCannotBeChosenSaysWhyAndStays) {
    struct Case {
        const char* sTyped;
        const char* sStatus;
    };
    for (const Case& oCase : {Case{"answer noth", "Unavailable: disabled by Trouble."},
                              Case{"inqu", "Unavailable: first select an item “Root” in the "
                                           "explorer."},
                              Case{"zzz", "No command contains these letters in this order."}}) {
        PaletteDialog* pPalette = Type(oCase.sTyped);
        ASSERT_TRUE(pPalette);
        QTest::keyClick(&pPalette->Field(), Qt::Key_Return);
        EXPECT_TRUE(pPalette->isVisible());
        EXPECT_EQ(pPalette->Status().text().toStdString(), oCase.sStatus);
        QTest::keyClick(&pPalette->Field(), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(Status(), "");
}

} // namespace
} // namespace corvane::desktop
