// Measures how long a window takes to open and to close: the models alone, and in the Qt host, against the same widgets
// put together by hand in the same run. Then the registry: what one more window costs when there are 10,000.
// Prints medians in microseconds.

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

constexpr int nRounds = 101;

class FieldPage final : public IPageAccess, public desktop::IQtPage {
public:
    Ref<IPage> Page() override { return m_oBase; }
    QWidget* NewWidget(QWidget* pParent) override { return new QLineEdit(pParent); }

private:
    Ref<PageBase> m_oBase = New<PageBase>();
};

// Leaves what is no page, such as the host's own service, to the factory that was there.
class PageFactory final : public IObjectFactory {
public:
    explicit PageFactory(Ref<IObjectFactory> oOthers) : m_oOthers(std::move(oOthers)) {}
    Ref<Object> Create(std::string_view sProgID) override {
        return sProgID == "B.Page" ? Ref<Object>(New<FieldPage>()) : m_oOthers->Create(sProgID);
    }

private:
    Ref<IObjectFactory> m_oOthers;
};

double Microseconds(const std::function<void()>& fnAct) {
    const auto oStart = std::chrono::steady_clock::now();
    fnAct();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - oStart).count();
}

double Median(std::vector<double>& aTimes) {
    std::nth_element(aTimes.begin(), aTimes.begin() + static_cast<std::ptrdiff_t>(aTimes.size() / 2), aTimes.end());
    return aTimes[aTimes.size() / 2];
}

struct Figures {
    double dblOpen;
    double dblClose;
};

Figures Measure(const std::function<void()>& fnOpen, const std::function<void()>& fnClose) {
    std::vector<double> aOpen;
    std::vector<double> aClose;
    for (int i = 0; i < nRounds; ++i) {
        aOpen.push_back(Microseconds(fnOpen));
        aClose.push_back(Microseconds(fnClose));
    }
    return {Median(aOpen), Median(aClose)};
}

// Everything is on screen, and what is to be deleted has gone.
void Turn() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Print(const char* sWhat, int nPages, const Figures& o, const Figures* pFloor) {
    std::printf("%-14s %2d page%s  open %8.1f  close %8.1f", sWhat, nPages, nPages == 1 ? " " : "s", o.dblOpen,
                o.dblClose);
    if (pFloor)
        std::printf("   ratio %.2f and %.2f", o.dblOpen / pFloor->dblOpen, o.dblClose / pFloor->dblClose);
    std::printf("\n");
}

QByteArray WindowXml(int nPages) {
    QByteArray sXml = QStringLiteral("<Window Name='W%1' Caption='W' Type='Window' State='Normal' PageWidth='3000' "
                                     "PageHeight='2000' DefPageWidth='4500' DefPageHeight='3000'>")
                          .arg(nPages)
                          .toUtf8();
    for (int i = 1; i <= nPages; ++i)
        sXml += QStringLiteral("<Page PageProgID='B.Page' Caption='P%1' IsOptional='true' IsResizable='true'/>")
                    .arg(i)
                    .toUtf8();
    return sXml + "</Window>";
}

void WriteApplication(const QString& sFolder) {
    QDir(sFolder).mkpath("Services");
    QDir(sFolder).mkpath("Images");
    QFile::copy(CORVANE_SCHEMA, sFolder + "/Services/Service.xdr");
    QFile oFile(sFolder + "/Services/shell.xml");
    if (!oFile.open(QIODevice::WriteOnly))
        Fail(FailureNumber::FileAccess, "The application can't be written");
    oFile.write("<Service Name='Shell' ProgID='Corvane.Framework' Active='true'><ActionItems><ActionItem "
                "Name='Navigation' Action='ViewNavigation' PassActionItemParam='true'/></ActionItems><Windows>" +
                WindowXml(1) + WindowXml(10) + "</Windows></Service>");
}

void UsePages() {
    Platform oPlatform = CurrentPlatform();
    oPlatform.oObjectFactory = New<PageFactory>(oPlatform.oObjectFactory);
    SetCurrentPlatform(std::move(oPlatform));
}

Ref<Window> Open(int nPages, bool bHide = false) {
    const auto oManager = CorvaneMain::Framework()->WindowManager();
    return oManager->OpenWindow("W" + std::to_string(nPages), New<FieldPage>(), nullptr,
                                WindowShowModeConstants::cvDefinitionDefault, WindowStateConstants::cvDefinitionDefault,
                                MDIWindowTypeConstants::cvDefinitionDefault, WindowTypeConstants::cvDefinitionDefault,
                                BusinessContextTypeConstants::cvDefinitionDefault,
                                ShowApplyCommandConstants::cvDefinitionDefault, {}, bHide);
}

Figures Plain(int nPages) {
    QMainWindow oMain;
    auto* pArea = new QMdiArea;
    oMain.setCentralWidget(pArea);
    oMain.resize(1100, 720);
    oMain.show();
    Turn();
    QMdiSubWindow* pWindow = nullptr;
    return Measure(
        [&] {
            pWindow = new QMdiSubWindow;
            auto* pBody = new QWidget;
            auto* pLayout = new QVBoxLayout(pBody);
            auto* pTabs = nPages > 1 ? new QTabWidget : nullptr;
            for (int i = 0; i < nPages; ++i) {
                auto* pPlace = new QScrollArea;
                if (i == 0)
                    pPlace->setWidget(new QLineEdit);
                if (pTabs)
                    pTabs->addTab(pPlace, QStringLiteral("P%1").arg(i + 1));
                else
                    pLayout->addWidget(pPlace);
            }
            if (pTabs)
                pLayout->addWidget(pTabs);
            pWindow->setWidget(pBody);
            pArea->addSubWindow(pWindow);
            pWindow->show();
            Turn();
        },
        [&] {
            pWindow->hide();
            pWindow->deleteLater();
            Turn();
        });
}

void CompareKinds(const std::string& sFolder) {
    std::vector<Figures> aFloors;
    for (const int nPages : {1, 10}) {
        aFloors.push_back(Plain(nPages));
        Print("Qt by hand", nPages, aFloors.back(), nullptr);
    }
    Ref<Window> oWindow;
    const auto fnClose = [&oWindow] { oWindow->Terminate(); };
    {
        inspect::ModelHost oHost({sFolder, true, nullptr});
        (void)oHost.Start();
        UsePages();
        for (const int nPages : {1, 10})
            Print("models alone", nPages, Measure([&] { oWindow = Open(nPages); }, fnClose), nullptr);
        oHost.Exit();
    }
    desktop::Application oApplication({sFolder, false});
    UsePages();
    (void)oApplication.Start();
    Turn();
    for (const int nPages : {1, 10}) {
        const Figures oFigures = Measure(
            [&] {
                oWindow = Open(nPages);
                Turn();
            },
            [&] {
                fnClose();
                Turn();
            });
        Print("Qt host", nPages, oFigures, &aFloors[nPages == 1 ? 0 : 1]);
    }
}

// Each line: the windows that there are, and what the last 1,000 cost apiece.
void FillRegistry(const std::string& sFolder) {
    constexpr int nStep = 1000;
    inspect::ModelHost oHost({sFolder, true, nullptr});
    (void)oHost.Start();
    UsePages();
    std::vector<Ref<Window>> aWindows;
    for (int i = 0; i < 10; ++i) {
        const double dblTime = Microseconds([&] {
            for (int n = 0; n < nStep; ++n)
                aWindows.push_back(Open(1, true));
        });
        if (i == 0 || i == 9)
            std::printf("registry       %5zu windows  open  %6.1f\n", aWindows.size(), dblTime / nStep);
    }
    std::shuffle(aWindows.begin(), aWindows.end(), std::mt19937(1));
    for (int i = 0; i < 10; ++i) {
        const double dblTime = Microseconds([&] {
            for (int n = 0; n < nStep; ++n) {
                aWindows.back()->Terminate();
                aWindows.pop_back();
            }
        });
        if (i == 0 || i == 9)
            std::printf("registry       %5zu windows  close %6.1f\n", aWindows.size(), dblTime / nStep);
    }
    oHost.Exit();
}

} // namespace
} // namespace corvane::bench

int main(int nArguments, char** pArguments) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // the platform's remarks
    const QApplication oApplication(nArguments, pArguments);
    QApplication::setStyle("fusion");
    const QTemporaryDir oFolder;
    qputenv("XDG_STATE_HOME", oFolder.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", oFolder.path().toUtf8());
    const QString sFolder = oFolder.path() + "/App";
    try {
        corvane::bench::WriteApplication(sFolder);
        corvane::bench::CompareKinds(sFolder.toStdString());
        corvane::bench::FillRegistry(sFolder.toStdString());
        return 0;
    } catch (const corvane::Failure& oFailure) {
        std::fprintf(stderr, "bench_windows: %s\n", oFailure.Description.c_str());
        return 1;
    }
}
