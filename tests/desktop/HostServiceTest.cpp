#include "adapters/xml/XmlService.h"
#include "corvane/services/ServiceDef.h"
#include "desktop/service/DefinitionTags.h"
#include "desktop/service/FitDefinition.h"
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

// What is left of it beside those menus, with path, action, order and shortcut of each entry.
std::string Fitted(const std::string& sMenus) {
    std::string sActions;
    for (const DefinitionTag& oTag : TagsIn(sMenus, {"MenuItem"}))
        sActions += "<ActionItem Name='" + std::string(oTag.Attribute("ActionItem")) + "'/>";
    const Ref<IXmlDocument> oDocument = New<XmlService>()->NewDocument();
    EXPECT_TRUE(oDocument->LoadXml("<Service><ActionItems>" + sActions + "</ActionItems><Menus>" + sMenus +
                                   "</Menus></Service>"));
    const auto oService = New<ServiceDef>();
    oService->Initialize(oDocument->SelectSingleNode("Service"));
    MenusInUse oInUse(sHostDefinition);
    oInUse.Add(*oService->MenuItemDefs());
    std::string sLeft;
    const std::string sText = FitDefinition(sHostDefinition, std::move(oInUse));
    for (const DefinitionTag& oTag : TagsIn(sText, {"MenuItem"})) {
        for (const char* sName : {"Path", "ActionItem", "PositionOrder", "ShortCutKey"})
            sLeft.append(oTag.Attribute(sName)).append(" ");
        sLeft.back() = '\n';
    }
    return sLeft;
}

TEST(HostDefinitions, AreFittedIntoWhatTheApplicationHas) {
    struct Case {
        const char* sApplication;
        const char* sLeft;
    };
    const Case aCases[] = {
        {"", " File 1 \n Tools 2146 \nFile Exit 9911 Ctrl+Q\n"},
        // A title that is there stays the application's; a missing one finds its place before Window and Help.
        {"<MenuItem Type='MenuTitle' ActionItem='file' PositionOrder='10'/>"
         "<MenuItem Type='MenuTitle' ActionItem='Help' PositionOrder='90'/>"
         "<MenuItem Type='MenuTitle' ActionItem='Window' PositionOrder='80'/>",
         " Tools 79 \nFile Exit 9911 Ctrl+Q\n"},
        // No room between two neighbours: a free order at the end.
        {"<MenuItem Type='MenuTitle' ActionItem='Plot' PositionOrder='5'/>"
         "<MenuItem Type='MenuTitle' ActionItem='Help' PositionOrder='6'/>",
         " File 1 \n Tools 2146 \nFile Exit 9911 Ctrl+Q\n"},
        {"<MenuItem Type='MenuItem' Path='Edit' ActionItem='Quote' PositionOrder='1' ShortCutKey='ctrl+q'/>",
         " File 1 \n Tools 2146 \nFile Exit 9911 \n"},
        {"<MenuItem Type='MenuItem' Path='File' ActionItem='Exit' PositionOrder='1'/>", " File 1 \n Tools 2146 \n"},
    };
    for (const Case& oCase : aCases)
        EXPECT_EQ(Fitted(oCase.sApplication), oCase.sLeft) << oCase.sApplication;
}

// What is commented out isn't there, text that looks like a tag is none, and neither is a tag without an end.
TEST(DefinitionTags, AreFoundWithoutAParser) {
    std::string sFound;
    for (const DefinitionTag& oTag : TagsIn("<?xml version='1.0'?><A x='1'/><!-- <A x='2'/> --><B/><![CDATA[<A "
                                            "x='3'/>]]><A y='&lt;' x = \"4>\"><A x='5'",
                                            {"A"}))
        sFound.append(oTag.Attribute("x")).append(" ");
    EXPECT_EQ(sFound, "1 4> ");
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
        const char* sFile;
        const char* sService;
        const char* sActive; // of the host's
    };
    const Case aCases[] = {
        {"S/a.xml", "Name='A' ProgID='A.A' Active='true'", "Framework Desktop "},
        {"S/a.xml", "Name='Shell' ProgID='Corvane.Framework' Active='true'", "Desktop "},
        {"S/a.xml", "Name='Shell' ProgID='Corvane.Framework' Active='false'", "Framework Desktop "},
        {"S/a.xml", "Name='corvane.desktop' Active='false'", "Framework "},
        {"S/corvane.desktop.xml", "Name='A' ProgID='A.A' Active='true'", "Framework "},
    };
    for (const Case& oCase : aCases) {
        const auto oFiles = New<TextFiles>();
        oFiles->aFiles = {{oCase.sFile, std::string("<Service ") + oCase.sService + "/>"}, {"S/b.txt", ""}};
        const auto oHost = New<HostFileSystem>(oFiles, "S");
        std::string sActive;
        for (const std::string& sPath : oHost->Files("S")) { // as the library reads them
            const std::string sText = oHost->ReadAll(sPath);
            if (sPath == oCase.sFile)
                EXPECT_EQ(sText, oFiles->aFiles[0].second);
            else if (sText.find("Active=\"true\"") != std::string::npos)
                sActive += sPath.find("Framework") != std::string::npos ? "Framework " : "Desktop ";
        }
        EXPECT_EQ(sActive, oCase.sActive) << oCase.sService;
        EXPECT_EQ(oFiles->nReads, 2) << "each file is read once";
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
    EXPECT_EQ(pText->text(), "Counter isn't responding to Cancel");
    EXPECT_TRUE(oProgress->WasCanceled());
    QThread::msleep(50);
    oProgress->Increment();
    EXPECT_EQ(pText->text(), QString::fromUtf8("Cancelling…"));
}

} // namespace
} // namespace corvane::desktop
