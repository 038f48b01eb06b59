#include "adapters/xml/XmlService.h"
#include "corvane/services/ServiceDef.h"
#include "desktop/failures/GuardedApplication.h"
#include "desktop/platform/HostParts.h"
#include "desktop/service/DefinitionTags.h"
#include "desktop/service/FitDefinition.h"
#include "desktop/service/HostDefinitions.h"
#include "desktop/service/ProgressControl.h"
#include "desktop/service/ScreenPrinter.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QMainWindow>
#include <QPrintPreviewDialog>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <array>
#include <gtest/gtest.h>
#include <unistd.h>

namespace corvane::desktop {
namespace {

constexpr const char* hostDefinition = R"(<Service Name="H" ProgID="H.H" Active="true"><Menus>
<MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="0"/>
<MenuItem Type="MenuTitle" ActionItem="Tools" PositionOrder="0"/>
<MenuItem Type="MenuItem" Path="File" ActionItem="Exit" PositionOrder="9911" ShortCutKey="Ctrl+Q"/>
</Menus></Service>)";

// What is left of it beside those menus, with path, action, order and shortcut of each entry.
std::string Fitted(const std::string& menus) {
    std::string actions;
    for (const DefinitionTag& tag : TagsIn(menus, {"MenuItem"}))
        actions += "<ActionItem Name='" + std::string(tag.Attribute("ActionItem")) + "'" +
                   (tag.Attribute("ActionItem") == "Quit" ? " Action='AppExit'" : "") + "/>";
    const Ref<IXmlDocument> document = New<XmlService>()->NewDocument();
    EXPECT_TRUE(
        document->LoadXml("<Service><ActionItems>" + actions + "</ActionItems><Menus>" + menus + "</Menus></Service>"));
    const auto service = New<ServiceDef>();
    service->Initialize(document->SelectSingleNode("Service"));
    MenusInUse inUse(hostDefinition);
    inUse.Add(*service->MenuItemDefs());
    std::string left;
    const std::string text = FitDefinition(hostDefinition, std::move(inUse));
    for (const DefinitionTag& tag : TagsIn(text, {"MenuItem"})) {
        for (const char* name : {"Path", "ActionItem", "PositionOrder", "ShortCutKey"})
            left.append(tag.Attribute(name)).append(" ");
        left.back() = '\n';
    }
    return left;
}

TEST(HostDefinitions, AreFittedIntoWhatTheApplicationHas) {
    struct Case {
        const char* application;
        const char* left;
    };
    const Case cases[] = {
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
        // What the host adds to File comes before the application's own end of it.
        {"<MenuItem Type='MenuTitle' ActionItem='File' PositionOrder='1'/>"
         "<MenuItem Type='MenuItem' Path='File' ActionItem='Quit' PositionOrder='90'/>",
         " Tools 2146 \nFile Exit 89.51 Ctrl+Q\n"},
        {"<MenuItem Type='MenuItem' Path='Edit' ActionItem='Quote' PositionOrder='1' ShortCutKey='ctrl+q'/>",
         " File 1 \n Tools 2146 \nFile Exit 9911 \n"},
        {"<MenuItem Type='MenuItem' Path='File' ActionItem='Exit' PositionOrder='1'/>", " File 1 \n Tools 2146 \n"},
    };
    for (const Case& testCase : cases)
        EXPECT_EQ(Fitted(testCase.application), testCase.left) << testCase.application;
}

// What is commented out isn't there, text that looks like a tag is none, and neither is a tag without an end.
TEST(DefinitionTags, AreFoundWithoutAParser) {
    std::string found;
    for (const DefinitionTag& tag : TagsIn("<?xml version='1.0'?><A x='1'/><!-- <A x='2'/> --><B/><![CDATA[<A "
                                           "x='3'/>]]><A y='&lt;' x = \"4>\"><A x='5'",
                                           {"A"}))
        found.append(tag.Attribute("x")).append(" ");
    EXPECT_EQ(found, "1 4> ");
}

class TextFiles final : public IFileSystem {
public:
    std::vector<std::pair<std::string, std::string>> files;
    mutable int reads = 0;

    std::vector<std::string> Files(std::string_view) const override {
        std::vector<std::string> paths;
        for (const auto& [path, text] : files)
            paths.push_back(path);
        return paths;
    }
    std::string FileName(std::string_view path) const override { return std::string(path.substr(path.rfind('/') + 1)); }
    std::string Extension(std::string_view path) const override {
        return std::string(path.substr(path.rfind('.') + 1));
    }
    std::string Join(std::string_view folder, std::string_view name) const override {
        return std::string(folder) + "/" + std::string(name);
    }
    std::string ReadAll(std::string_view path) const override {
        ++reads;
        for (const auto& [name, text] : files)
            if (name == path)
                return text;
        Fail(FailureNumber::FileNotFound);
    }
};

TEST(HostDefinitions, StandBehindTheApplicationsUnlessItHasItsOwn) {
    struct Case {
        const char* file;
        const char* service;
        const char* active; // of the host's
    };
    const Case cases[] = {
        {"S/a.xml", "Name='A' ProgID='A.A' Active='true'", "Framework Desktop "},
        {"S/a.xml", "Name='Shell' ProgID='Corvane.Framework' Active='true'", "Desktop "},
        {"S/a.xml", "Name='Shell' ProgID='Corvane.Framework' Active='false'", "Framework Desktop "},
        {"S/a.xml", "Name='corvane.desktop' Active='false'", "Framework "},
        {"S/corvane.desktop.xml", "Name='A' ProgID='A.A' Active='true'", "Framework "},
    };
    for (const Case& testCase : cases) {
        const auto files = New<TextFiles>();
        files->files = {{testCase.file, std::string("<Service ") + testCase.service + "/>"}, {"S/b.txt", ""}};
        const auto host = New<HostFileSystem>(files, "S");
        std::string active;
        for (const std::string& path : host->Files("S")) { // as the library reads them
            const std::string text = host->ReadAll(path);
            if (path == testCase.file)
                EXPECT_EQ(text, files->files[0].second);
            else if (text.find("Active=\"true\"") != std::string::npos)
                active += path.find("Framework") != std::string::npos ? "Framework " : "Desktop ";
        }
        EXPECT_EQ(active, testCase.active) << testCase.service;
        EXPECT_EQ(files->reads, 2) << "each file is read once";
    }
}

// Hears what is posted to it: all that was posted before has been delivered by then, or held back.
class Probe final : public QObject {
public:
    using QObject::QObject;
    bool heard = false;

protected:
    void customEvent(QEvent* /*event*/) override { heard = true; }
};

// Work that advances and asks as it should, until it is cancelled or what is due has been let through.
void Work(ProgressControl& progress, bool untilCancelled) {
    Probe probe;
    QCoreApplication::postEvent(&probe, new QEvent(QEvent::User));
    while (!progress.WasCanceled() && (untilCancelled || !probe.heard)) {
        progress.SetValue(progress.Value() + 0.01);
        QThread::msleep(1);
    }
}

TEST(Dialogs, OfferChoicesAsButtonsOrAsAListAndReportAnswers) {
    CommonDialog dialogs(true);
    std::vector<std::string> answers;
    dialogs.SetOnAnswer([&](const std::string& text) { answers.push_back(text); });
    struct Case {
        const char* choices;
        const char* press; // the text of a button, without what marks its mnemonic
        const char* answer;
    };
    for (const auto& [choices, press, answer] : {Case{"Save & Close\nDiscard", "Save & Close", "Save & Close"},
                                                 {"Save\nDiscard", "Discard", "Discard"},
                                                 {"Save\nDiscard", "Cancel", ""},
                                                 {"1\n2\n3\n4", "OK", "1"},
                                                 {"1\n2\n3\n4", "Cancel", ""}}) {
        QTimer::singleShot(0, qApp, [press = QString(press)] {
            for (auto* button : QApplication::activeModalWidget()->findChildren<QPushButton*>())
                if (button->isVisible() && button->text().replace("&&", "\1").remove('&').replace("\1", "&") == press)
                    return button->click();
            ADD_FAILURE() << press.toStdString();
            QApplication::activeModalWidget()->close();
        });
        const std::array<Variant, 3> arguments{"Title", "What now?", choices};
        EXPECT_EQ(ToText(dialogs.Invoke("Ask", arguments)), answer) << choices;
        EXPECT_EQ(answers.back(), answer);
    }
}

TEST(Progress, LetsPaintAndCancelThroughAndNothingElse) {
    QMainWindow window;
    QPushButton other("Other", &window);
    auto progress = New<ProgressControl>();
    window.setCentralWidget(progress->Widget());
    window.show();
    auto* cancel = progress->Widget()->findChild<QPushButton*>();
    progress->SetSources({[] { return QString("Counting"); }, [] { return QString("Counter"); }});
    progress->SetCancel(true);
    progress->SetWasCanceled(false);
    progress->SetMax(100);
    progress->SetValue(0);
    int ticks = 0;
    int otherCount = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    QObject::connect(&other, &QPushButton::clicked, [&] { ++otherCount; });
    timer.start(1);
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ASSERT_EQ(::write(pipe[1], "x", 1), 1);
    int readyCount = 0;
    QSocketNotifier ready(pipe[0], QSocketNotifier::Read);
    QObject::connect(&ready, &QSocketNotifier::activated, [&] { ++readyCount; });
    const auto click = [&window](QWidget* button) {
        const QPoint place = button->mapTo(&window, button->rect().center());
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            QCoreApplication::postEvent(
                window.windowHandle(),
                new QMouseEvent(type, place, window.mapToGlobal(place), Qt::LeftButton,
                                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier));
    };
    other.raise();
    click(&other);
    QCoreApplication::postEvent(window.windowHandle(), new QEvent(QEvent::Close));
    for (int i = 0; i < 3; ++i)
        Work(*progress, false);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(readyCount, 0);
    EXPECT_EQ(otherCount, 0);
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(progress->WasCanceled());
    EXPECT_EQ(progress->Widget()->findChildren<QLabel*>().front()->text(), "Counting");

    click(cancel);
    Work(*progress, true);
    EXPECT_TRUE(progress->WasCanceled());
    // What was held back comes when the work is done.
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > 0 && readyCount > 0; }, 30000));
    ready.setEnabled(false);
    ::close(pipe[0]);
    ::close(pipe[1]);
}

// How many letters are in the packed streams of a PDF file.
qsizetype LettersIn(const QString& path) {
    QFile file(path);
    const QByteArray pdf = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    qsizetype letters = 0;
    for (qsizetype at = pdf.indexOf("\nstream\n"); at >= 0; at = pdf.indexOf("\nstream\n", at + 1)) {
        const qsizetype begin = at + 8;
        if (pdf.at(begin) != 'x')
            continue;
        letters += qUncompress(QByteArray("\0\1\0\0", 4) + pdf.mid(begin, pdf.indexOf("endstream", begin) - begin))
                       .count(" Tj");
    }
    return letters;
}

// Without a printer the preview prints into the file that the host asks for, and stays where the user cancels that.
TEST(Printing, PreviewAsksTheHostForTheFileAndSaysWhenItCannotBeWritten) {
    const QTemporaryDir folder;
    QMainWindow window;
    window.setWindowTitle("a/b");
    QString file, proposed;
    int asked = 0;
    ScreenPrinter::Host host;
    host.mainWindow = [&] { return &window; };
    host.file = [&](const QString& name) {
        ++asked;
        proposed = name;
        return file;
    };
    host.hasPrinters = [] { return false; };
    const auto printer = New<ScreenPrinter>(host);
    int failures = 0;
    const GuardedApplication::Catcher catcher([&](const UncaughtFailure& uncaught) {
        failures += uncaught.failure.Number == FailureNumber::FileAccess ? 1 : 100;
    });
    const QStringList files{"", folder.path() + "/none/a.pdf", folder.path() + "/a.pdf"}; // in turn, the last is good
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        auto* preview = qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget());
        if (!preview || !preview->isVisible() || asked >= files.size())
            return;
        file = files[asked];
        for (QAction* action : preview->findChildren<QAction*>())
            if (action->text() == QCoreApplication::translate("QPrintPreviewDialog", "Print"))
                action->trigger();
    });
    user.start(5);
    constexpr Long mainForm = 1;
    printer->PrintWindow(mainForm, 0);
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(proposed, "a b.pdf");
    EXPECT_EQ(failures, 1);
    QFile written(files.last());
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.read(5), "%PDF-");
    // On the paper is the window's title, too.
    window.setWindowTitle("Penguins");
    host.withDialogs = false;
    file = folder.path() + "/titled.pdf";
    New<ScreenPrinter>(host)->PrintWindow(mainForm, 0);
    EXPECT_GE(LettersIn(file), LettersIn(files.last()) + 5) << "an hour has one or two figures";
}

// A second piece of work can be cancelled as the first one could.
TEST(Progress, CancelIsOfferedAgainAfterAPieceOfWorkThatWasCancelled) {
    auto progress = New<ProgressControl>();
    auto* cancel = progress->Widget()->findChild<QPushButton*>();
    for (const int time : {1, 2}) {
        progress->SetCancel(true); // as the library begins
        progress->SetWasCanceled(false);
        progress->SetMax(10);
        progress->SetValue(0);
        EXPECT_TRUE(cancel->isEnabled()) << time;
        EXPECT_FALSE(progress->WasCanceled()) << time;
        cancel->click();
        EXPECT_FALSE(cancel->isEnabled()) << time;
        EXPECT_TRUE(progress->WasCanceled()) << time;
    }
}

TEST(Progress, NamesTheServiceThatDoesNotAnswerToCancel) {
    QMainWindow window;
    auto progress = New<ProgressControl>();
    window.setCentralWidget(progress->Widget());
    window.show();
    progress->SetSources({[] { return QString("Counting"); }, [] { return QString("Counter"); }});
    progress->SetCancel(true);
    progress->SetMax(100);
    progress->SetValue(0);
    progress->Widget()->findChild<QPushButton*>()->click();
    const QLabel* text = progress->Widget()->findChildren<QLabel*>().front();
    const auto worksUntil = [&](const QString& wanted) {
        QElapsedTimer time;
        time.start();
        while (text->text() != wanted && !time.hasExpired(60000)) {
            progress->Increment(); // and never asks
            QThread::msleep(20);
        }
        return text->text() == wanted;
    };
    EXPECT_TRUE(worksUntil("Counter isn't responding to Cancel")) << text->text().toStdString();
    EXPECT_TRUE(progress->WasCanceled());
    EXPECT_TRUE(worksUntil(QString::fromUtf8("Cancelling…"))) << text->text().toStdString();
}

} // namespace
} // namespace corvane::desktop
