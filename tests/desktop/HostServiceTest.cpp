#include "desktop/service/DefinitionScan.h"
#include "desktop/service/HostDefinitions.h"
#include "desktop/service/ProgressControl.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <array>
#include <gtest/gtest.h>
#include <unistd.h>

namespace corvane::desktop {
namespace {

constexpr const char* sHostDefinition = R"(<Service Name="H" ProgID="H.H" Active="true"><Menus>
<MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="0"/>
<MenuItem Type="MenuTitle" ActionItem="Tools" PositionOrder="0"/>
<MenuItem Type="MenuItem" Path="File" ActionItem="Exit" PositionOrder="9911" ShortCutKey="Ctrl+Q"/>
</Menus></Service>)";

// The menu entries that are left, as key, order and shortcut.
std::string Fitted(std::string_view sMenus, std::string_view sRoot = "ProgID='A.A' Active='True'") {
    DefinitionScan oScan;
    oScan.LookFor(sHostDefinition);
    oScan.Add("<Service Name='A' " + std::string(sRoot) + "><Menus>" + std::string(sMenus) + "</Menus></Service>");
    const std::string sText = FitDefinition(sHostDefinition, oScan);
    std::string sLeft;
    for (const DefinitionTag& oTag : TagsIn(sText, {"MenuItem"}))
        sLeft += MenuKey(oTag) + " " + std::string(oTag.Attribute("PositionOrder")) + " " +
                 std::string(oTag.Attribute("ShortCutKey")) + "\n";
    return sLeft;
}

TEST(HostDefinitions, AreFittedIntoWhatTheApplicationHas) {
    struct Case {
        const char* sApplication;
        const char* sLeft;
    };
    const Case aCases[] = {
        {"", "File 1 \nTools 2146 \nFile.Exit 9911 Ctrl+Q\n"},
        // A title that is there stays the application's; a missing one finds its place before Window and Help.
        {"<MenuItem Type='MenuTitle' ActionItem='file' PositionOrder='10'/>"
         "<MenuItem Type='MenuTitle' ActionItem='Help' PositionOrder='90'/>"
         "<MenuItem Type='MenuTitle' ActionItem='Window' PositionOrder='80'/>",
         "Tools 79 \nFile.Exit 9911 Ctrl+Q\n"},
        // No room between two neighbours: a free order at the end.
        {"<MenuItem Type='MenuTitle' ActionItem='Plot' PositionOrder='5'/>"
         "<MenuItem Type='MenuTitle' ActionItem='Help' PositionOrder='6'/>",
         "File 1 \nTools 2146 \nFile.Exit 9911 Ctrl+Q\n"},
        {"<MenuItem Type='MenuItem' Path='Edit' ActionItem='Quote' ShortCutKey='ctrl+q'/>",
         "File 1 \nTools 2146 \nFile.Exit 9911 \n"},
        {"<MenuItem Type='MenuItem' Path='File' ActionItem='Exit'/>", "File 1 \nTools 2146 \n"},
        // What is commented out isn't there, and text that looks like a tag is no tag.
        {"<!-- <MenuItem Type='MenuItem' Path='File' ActionItem='Exit'/> -->"
         "<ActionItem Description='&lt;MenuItem>'/><![CDATA[<MenuItem Path='File' ActionItem='Exit'/>]]>",
         "File 1 \nTools 2146 \nFile.Exit 9911 Ctrl+Q\n"},
        {"<MenuItem Type='MenuTitle' ActionItem='File' PositionOrder='3' <MenuItem",
         "File 1 \nTools 2146 \nFile.Exit 9911 Ctrl+Q\n"},
    };
    for (const Case& oCase : aCases)
        EXPECT_EQ(Fitted(oCase.sApplication), oCase.sLeft) << oCase.sApplication;
    EXPECT_EQ(Fitted(aCases[1].sApplication, "ProgID='A.A' Active='false'"), aCases[0].sLeft);
}

class TextFiles final : public IFileSystem {
public:
    std::vector<std::pair<std::string, std::string>> aFiles;
    mutable int nReads = 0;

    std::vector<std::string> Files(std::string_view) const override {
        std::vector<std::string> aPaths;
        for (const auto& [sPath, sText] : aFiles)
            aPaths.push_back(sPath);
        return aPaths;
    }
    std::string FileName(std::string_view sPath) const override {
        return std::string(sPath.substr(sPath.rfind('/') + 1));
    }
    std::string Extension(std::string_view sPath) const override {
        return std::string(sPath.substr(sPath.rfind('.') + 1));
    }
    std::string Join(std::string_view sFolder, std::string_view sName) const override {
        return std::string(sFolder) + "/" + std::string(sName);
    }
    std::string ReadAll(std::string_view sPath) const override {
        ++nReads;
        for (const auto& [sName, sText] : aFiles)
            if (sName == sPath)
                return sText;
        Fail(FailureNumber::FileNotFound);
    }
};

TEST(HostDefinitions, StandBehindTheApplicationsUnlessItHasItsOwn) {
    struct Case {
        const char* sService;
        std::vector<std::string> aHosts;
    };
    const Case aCases[] = {
        {"Name='A' ProgID='A.A' Active='true'", {"S/Corvane.Framework.xml", "S/Corvane.Desktop.xml"}},
        {"Name='Shell' ProgID='Corvane.Framework' Active='true'", {"S/Corvane.Desktop.xml"}},
        {"Name='corvane.desktop' Active='false'", {"S/Corvane.Framework.xml"}},
    };
    for (const Case& oCase : aCases) {
        const auto oFiles = New<TextFiles>();
        oFiles->aFiles = {{"S/a.xml", std::string("<Service ") + oCase.sService + "/>"}, {"S/b.txt", ""}};
        const auto oHost = New<HostFileSystem>(oFiles, "S");
        std::vector<std::string> aExpected{"S/a.xml", "S/b.txt"};
        aExpected.insert(aExpected.end(), oCase.aHosts.begin(), oCase.aHosts.end());
        EXPECT_EQ(oHost->Files("S"), aExpected) << oCase.sService;
        EXPECT_EQ(oHost->ReadAll("S/a.xml"), oFiles->aFiles[0].second);
        EXPECT_EQ(oFiles->nReads, 1) << "each file is read once";
        EXPECT_NE(oHost->ReadAll(oCase.aHosts[0]).find("ActionItem"), std::string::npos);
    }
}

// Work of that many milliseconds, which advances and asks as it should.
void Work(ProgressControl& oProgress, int nMilliseconds) {
    QElapsedTimer oTime;
    oTime.start();
    while (!oTime.hasExpired(nMilliseconds) && !oProgress.WasCanceled()) {
        oProgress.SetValue(oProgress.Value() + 0.01);
        QThread::msleep(1);
    }
}

TEST(Progress, LetsPaintAndCancelThroughAndNothingElse) {
    QMainWindow oWindow;
    QPushButton oOther("Other", &oWindow);
    auto oProgress = New<ProgressControl>();
    oWindow.setCentralWidget(oProgress->Widget());
    oWindow.show();
    auto* pCancel = oProgress->Widget()->findChild<QPushButton*>();
    oProgress->SetSources({[] { return QString("Counting"); }, [] { return QString("Counter"); }});
    oProgress->SetCancel(true);
    oProgress->SetWasCanceled(false);
    oProgress->SetMax(100);
    oProgress->SetValue(0);
    int nTicks = 0;
    int nOther = 0;
    QTimer oTimer;
    QObject::connect(&oTimer, &QTimer::timeout, [&] { ++nTicks; });
    QObject::connect(&oOther, &QPushButton::clicked, [&] { ++nOther; });
    oTimer.start(1);
    std::array<int, 2> aPipe{};
    ASSERT_EQ(::pipe(aPipe.data()), 0);
    ASSERT_EQ(::write(aPipe[1], "x", 1), 1);
    int nReady = 0;
    QSocketNotifier oReady(aPipe[0], QSocketNotifier::Read);
    QObject::connect(&oReady, &QSocketNotifier::activated, [&] { ++nReady; });
    const auto fnClick = [&oWindow](QWidget* pButton) {
        const QPoint oPlace = pButton->mapTo(&oWindow, pButton->rect().center());
        for (const auto eType : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            QCoreApplication::postEvent(
                oWindow.windowHandle(),
                new QMouseEvent(eType, oPlace, oWindow.mapToGlobal(oPlace), Qt::LeftButton,
                                eType == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier));
    };
    oOther.raise();
    fnClick(&oOther);
    QCoreApplication::postEvent(oWindow.windowHandle(), new QEvent(QEvent::Close));
    Work(*oProgress, 150);
    EXPECT_EQ(nTicks, 0);
    EXPECT_EQ(nReady, 0);
    EXPECT_EQ(nOther, 0);
    EXPECT_TRUE(oWindow.isVisible());
    EXPECT_FALSE(oProgress->WasCanceled());
    EXPECT_EQ(oProgress->Widget()->findChildren<QLabel*>().front()->text(), "Counting");

    fnClick(pCancel);
    Work(*oProgress, 20000); // ends when it sees that it was cancelled
    EXPECT_TRUE(oProgress->WasCanceled());
    // What was held back comes when the work is done.
    QTest::qWait(50);
    EXPECT_GT(nTicks, 0);
    EXPECT_GT(nReady, 0);
    oReady.setEnabled(false);
    ::close(aPipe[0]);
    ::close(aPipe[1]);
}

TEST(Progress, NamesTheServiceThatDoesNotAnswerToCancel) {
    QMainWindow oWindow;
    auto oProgress = New<ProgressControl>();
    oWindow.setCentralWidget(oProgress->Widget());
    oWindow.show();
    oProgress->SetSources({[] { return QString("Counting"); }, [] { return QString("Counter"); }});
    oProgress->SetCancel(true);
    oProgress->SetMax(100);
    oProgress->SetValue(0);
    oProgress->Widget()->findChild<QPushButton*>()->click();
    const QLabel* pText = oProgress->Widget()->findChildren<QLabel*>().front();
    QElapsedTimer oTime;
    oTime.start();
    while (!pText->text().contains("Counter") && !oTime.hasExpired(20000)) {
        oProgress->Increment(); // and never asks
        QThread::msleep(20);
    }
    EXPECT_EQ(pText->text(), "Counter doesn't answer to Cancel");
    EXPECT_TRUE(oProgress->WasCanceled());
    QThread::msleep(50);
    oProgress->Increment();
    EXPECT_EQ(pText->text(), QString::fromUtf8("Cancelling…"));
}

} // namespace
} // namespace corvane::desktop
