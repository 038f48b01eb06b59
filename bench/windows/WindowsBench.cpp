// Measures how long a window takes to open and to close: the models alone, and in the Qt host, against the same widgets
// put together by hand in the same run. Then the registry: what one more window costs when there are 10,000.
// Prints medians in microseconds.

#include "bench/Times.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/IQtPage.h"
#include "desktop/application/Application.h"
#include "headless/ModelHost.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollArea>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

namespace corvane::bench {
namespace {

constexpr int rounds = 101;

class FieldPage final : public IPageAccess, public desktop::IQtPage {
public:
    Ref<IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) override { return new QLineEdit(parent); }

private:
    Ref<PageBase> m_base = New<PageBase>();
};

// Leaves what isn't a page, such as the host's own service, to the factory that was there.
class PageFactory final : public IObjectFactory {
public:
    explicit PageFactory(Ref<IObjectFactory> others) : m_others(std::move(others)) {}
    Ref<Object> Create(std::string_view progID) override {
        return progID == "B.Page" ? Ref<Object>(New<FieldPage>()) : m_others->Create(progID);
    }

private:
    Ref<IObjectFactory> m_others;
};

struct Figures {
    double open;
    double close;
};

Figures Measure(const std::function<void()>& openFunction, const std::function<void()>& closeFunction) {
    std::vector<double> open;
    std::vector<double> close;
    for (int i = 0; i < rounds; ++i) {
        open.push_back(Microseconds(openFunction));
        close.push_back(Microseconds(closeFunction));
    }
    return {Median(open), Median(close)};
}

// Everything is on screen, and what is to be deleted has gone.
void Turn() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Print(const char* what, int pages, const Figures& o, const Figures* floor) {
    std::printf("%-14s %2d page%s  open %8.1f  close %8.1f", what, pages, pages == 1 ? " " : "s", o.open, o.close);
    if (floor)
        std::printf("   ratio %.2f and %.2f", o.open / floor->open, o.close / floor->close);
    std::printf("\n");
}

QByteArray WindowXml(int pages) {
    QByteArray xml = QStringLiteral("<Window Name='W%1' Caption='W' Type='Window' State='Normal' PageWidth='3000' "
                                    "PageHeight='2000' DefPageWidth='4500' DefPageHeight='3000'>")
                         .arg(pages)
                         .toUtf8();
    for (int i = 1; i <= pages; ++i)
        xml += QStringLiteral("<Page PageProgID='B.Page' Caption='P%1' IsOptional='true' IsResizable='true'/>")
                   .arg(i)
                   .toUtf8();
    return xml + "</Window>";
}

void WriteApplication(const QString& folder) {
    QDir(folder).mkpath("Services");
    QDir(folder).mkpath("Images");
    QFile::copy(CORVANE_SCHEMA, folder + "/Services/Service.xdr");
    QFile file(folder + "/Services/shell.xml");
    if (!file.open(QIODevice::WriteOnly))
        Fail(FailureNumber::FileAccess, "The application can't be written");
    file.write("<Service Name='Shell' ProgID='Corvane.Framework' Active='true'><ActionItems><ActionItem "
               "Name='Navigation' Action='ViewNavigation' PassActionItemParam='true'/></ActionItems><Windows>" +
               WindowXml(1) + WindowXml(10) + "</Windows></Service>");
}

void UsePages() {
    Platform platform = CurrentPlatform();
    platform.oObjectFactory = New<PageFactory>(platform.oObjectFactory);
    SetCurrentPlatform(std::move(platform));
}

Ref<Window> Open(int pages, bool hide = false) {
    const auto manager = CorvaneMain::Framework()->WindowManager();
    return manager->OpenWindow("W" + std::to_string(pages), New<FieldPage>(), nullptr,
                               WindowShowModeConstants::cvDefinitionDefault, WindowStateConstants::cvDefinitionDefault,
                               MDIWindowTypeConstants::cvDefinitionDefault, WindowTypeConstants::cvDefinitionDefault,
                               BusinessContextTypeConstants::cvDefinitionDefault,
                               ShowApplyCommandConstants::cvDefinitionDefault, {}, hide);
}

Figures Plain(int pages) {
    QMainWindow main;
    auto* area = new QMdiArea;
    main.setCentralWidget(area);
    main.resize(1100, 720);
    main.show();
    Turn();
    QMdiSubWindow* window = nullptr;
    return Measure(
        [&] {
            window = new QMdiSubWindow;
            auto* body = new QWidget;
            auto* layout = new QVBoxLayout(body);
            auto* tabs = pages > 1 ? new QTabWidget : nullptr;
            for (int i = 0; i < pages; ++i) {
                auto* place = new QScrollArea;
                if (i == 0)
                    place->setWidget(new QLineEdit);
                if (tabs)
                    tabs->addTab(place, QStringLiteral("P%1").arg(i + 1));
                else
                    layout->addWidget(place);
            }
            if (tabs)
                layout->addWidget(tabs);
            window->setWidget(body);
            area->addSubWindow(window);
            window->show();
            Turn();
        },
        [&] {
            window->hide();
            window->deleteLater();
            Turn();
        });
}

void CompareKinds(const std::string& folder) {
    std::vector<Figures> floors;
    for (const int pages : {1, 10}) {
        floors.push_back(Plain(pages));
        Print("Qt by hand", pages, floors.back(), nullptr);
    }
    Ref<Window> window;
    const auto close = [&window] { window->Terminate(); };
    {
        inspect::ModelHost host({folder, true, nullptr});
        (void)host.Start();
        UsePages();
        for (const int pages : {1, 10})
            Print("models alone", pages, Measure([&] { window = Open(pages); }, close), nullptr);
        host.Exit();
    }
    desktop::Application application({folder, false});
    UsePages();
    (void)application.Start();
    Turn();
    for (const int pages : {1, 10}) {
        const Figures figures = Measure(
            [&] {
                window = Open(pages);
                Turn();
            },
            [&] {
                close();
                Turn();
            });
        Print("Qt host", pages, figures, &floors[pages == 1 ? 0 : 1]);
    }
}

// Each line: the windows that there are, and what the last 1,000 cost apiece.
void FillRegistry(const std::string& folder) {
    constexpr int step = 1000;
    inspect::ModelHost host({folder, true, nullptr});
    (void)host.Start();
    UsePages();
    std::vector<Ref<Window>> windows;
    for (int i = 0; i < 10; ++i) {
        const double time = Microseconds([&] {
            for (int n = 0; n < step; ++n)
                windows.push_back(Open(1, true));
        });
        if (i == 0 || i == 9)
            std::printf("registry       %5zu windows  open  %6.1f\n", windows.size(), time / step);
    }
    std::shuffle(windows.begin(), windows.end(), std::mt19937(1));
    for (int i = 0; i < 10; ++i) {
        const double time = Microseconds([&] {
            for (int n = 0; n < step; ++n) {
                windows.back()->Terminate();
                windows.pop_back();
            }
        });
        if (i == 0 || i == 9)
            std::printf("registry       %5zu windows  close %6.1f\n", windows.size(), time / step);
    }
    host.Exit();
}

} // namespace
} // namespace corvane::bench

int main(int argumentCount, char** arguments) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // the platform's remarks
    const QApplication application(argumentCount, arguments);
    QApplication::setStyle("fusion");
    const QTemporaryDir folder;
    qputenv("XDG_STATE_HOME", folder.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    const QString folderPath = folder.path() + "/App";
    try {
        corvane::bench::WriteApplication(folderPath);
        corvane::bench::CompareKinds(folderPath.toStdString());
        corvane::bench::FillRegistry(folderPath.toStdString());
        return 0;
    } catch (const corvane::Failure& failure) {
        std::fprintf(stderr, "bench_windows: %s\n", failure.Description.c_str());
        return 1;
    }
}
