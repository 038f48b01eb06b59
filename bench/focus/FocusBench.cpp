// Measures a focus switch: of 100 providers with 50 actions each, a third of them on toolbars, one lets go of its tools
// and the next one takes its own. The models alone, with the pass that brings Qt's widgets up to date, and painted;
// beside a plain Qt program that does the same with setVisible and setEnabled on its actions. Then what a command costs
// from Qt's trigger to the procedure behind its name. Prints medians in microseconds.

#include "bench/focus/Benches.h"
#include "bench/startup/Inputs.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/application/Application.h"

#include <QApplication>
#include <QMenuBar>
#include <QToolBar>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace corvane::bench {
namespace {

constexpr int nProviders = 100;
constexpr int nActions = 50;
constexpr int nMenus = 10;
constexpr int nToolbars = 5;
constexpr int nSwitches = 400;

std::string Action(int iProvider, int iAction) {
    return "P" + std::to_string(iProvider) + "A" + std::to_string(iAction);
}

// No two alike, so that every button that comes has to be painted.
std::string Caption(int iProvider, int iAction) {
    return "Entry " + std::to_string(iAction) + " of " + std::to_string(iProvider);
}

bool IsOnToolbar(int iAction) {
    return iAction % 3 == 0;
}

void WriteDefinitions(const std::filesystem::path& oApp) {
    std::filesystem::create_directories(oApp / "Services");
    std::filesystem::copy_file(CORVANE_SCHEMA, oApp / "Services/Service.xdr");
    std::ofstream oFile(oApp / "Services/Focus.xml");
    oFile << "<Service Name=\"Focus\" ProgID=\"Corvane.Framework\" Active=\"true\"><ActionItems>"
             "<ActionItem Name=\"Navigation\" Action=\"ViewNavigation\" PassActionItemParam=\"true\"/>";
    for (int iMenu = 0; iMenu < nMenus; ++iMenu)
        oFile << "<ActionItem Name=\"M" << iMenu << "\"/>";
    oFile << "</ActionItems><Menus>";
    for (int iMenu = 0; iMenu < nMenus; ++iMenu)
        oFile << "<MenuItem Type=\"MenuTitle\" ActionItem=\"M" << iMenu << "\" PositionOrder=\"" << iMenu + 1
              << "\" Caption=\"Menu " << iMenu << "\"/>";
    oFile << "</Menus><ExplorerItems>";
    for (int iProvider = 0; iProvider < nProviders; ++iProvider) {
        oFile << "<ExplorerItem Name=\"P" << iProvider << "\" Type=\"Folder\"><ActionItems>";
        for (int i = 0; i < nActions; ++i)
            oFile << "<ActionItem Name=\"" << Action(iProvider, i) << "\" Action=\"Do\"/>";
        oFile << "</ActionItems><Menus>";
        for (int i = 0; i < nActions; ++i) {
            const int nOrder = iProvider * nActions / nMenus + i / nMenus + 1;
            oFile << "<MenuItem Type=\"MenuItem\" Path=\"M" << i % nMenus << "\" ActionItem=\"" << Action(iProvider, i)
                  << "\" PositionOrder=\"" << nOrder << "\" Caption=\"" << Caption(iProvider, i) << "\"/>";
            if (IsOnToolbar(i))
                oFile << "<MenuItem Type=\"ToolbarItem\" Path=\"B" << i % nToolbars << "\" ActionItem=\""
                      << Action(iProvider, i) << "\" PositionOrder=\"" << 1000 + nOrder * nMenus + i % nMenus
                      << "\" Caption=\"" << Caption(iProvider, i) << "\"/>";
        }
        oFile << "</Menus></ExplorerItem>";
    }
    oFile << "</ExplorerItems></Service>";
}

void Paint() {
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

struct Times {
    double dblModel;
    double dblPass;    // model and pass
    double dblPainted; // all of it
};

Times MeasureCorvane(const std::filesystem::path& oApp) {
    desktop::Application oApplication({oApp.string(), false});
    if (!oApplication.Start())
        throw std::runtime_error("the application doesn't start");
    const auto oMenus = CorvaneMain::Framework()->NavigationManager()->MenuManager();
    const auto colDefs = CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs();
    std::vector<Ref<ExplorerItemBase>> aProviders;
    std::vector<Ref<ActionItemDefCollection>> aDefs;
    for (int i = 0; i < nProviders; ++i) {
        aProviders.push_back(New<ExplorerItemBase>());
        aDefs.push_back(colDefs->Item("P" + std::to_string(i))->ActionItemDefs());
        oMenus->OnActionsProviderAdd(aProviders.back(), aProviders.back(), aDefs.back(), false);
    }
    std::vector<double> aModel, aPass, aPainted;
    std::size_t iActive = 0;
    oMenus->OnActionsProviderActive(aProviders[0], aProviders[0], aDefs[0]);
    for (int iSwitch = 0; iSwitch < nSwitches; ++iSwitch) {
        const std::size_t iNext = static_cast<std::size_t>(iSwitch * 37 + 1) % nProviders;
        if (iNext == iActive)
            continue;
        double dblModel = 0;
        double dblPass = 0;
        aPainted.push_back(Microseconds([&] {
            dblPass = Microseconds([&] {
                dblModel = Microseconds([&] {
                    oMenus->OnActionsProviderInActive(aProviders[iActive], aProviders[iActive], aDefs[iActive]);
                    oMenus->OnActionsProviderActive(aProviders[iNext], aProviders[iNext], aDefs[iNext]);
                });
                oApplication.Window().Flush();
            });
            Paint();
        }));
        aModel.push_back(dblModel);
        aPass.push_back(dblPass);
        iActive = iNext;
    }
    const auto oTool = oApplication.Bar()->Tools()->Item("M0." + Action(static_cast<int>(iActive), 0));
    const auto aBars = oApplication.Window().findChildren<QToolBar*>();
    const bool bShown = std::any_of(aBars.begin(), aBars.end(), [](const QToolBar* p) { return p->isVisible(); });
    if (!oTool->Visible() || !bShown)
        throw std::runtime_error("the active provider's actions aren't shown");
    return {Median(aModel), Median(aPass), Median(aPainted)};
}

// The same by hand: all actions made beforehand, hidden and disabled while their provider isn't active.
class PlainWindow final : public QMainWindow {
public:
    PlainWindow() {
        std::vector<QMenu*> aMenus;
        std::vector<QToolBar*> aToolbars;
        for (int i = 0; i < nMenus; ++i)
            aMenus.push_back(menuBar()->addMenu(QString("Menu %1").arg(i)));
        for (int i = 0; i < nToolbars; ++i)
            aToolbars.push_back(addToolBar(QString("B%1").arg(i)));
        for (int iProvider = 0; iProvider < nProviders; ++iProvider)
            for (int i = 0; i < nActions; ++i) {
                auto* pAction = new QAction(QString::fromStdString(Caption(iProvider, i)), this);
                pAction->setVisible(false);
                pAction->setEnabled(false);
                aMenus[static_cast<std::size_t>(i % nMenus)]->addAction(pAction);
                if (IsOnToolbar(i))
                    aToolbars[static_cast<std::size_t>(i % nToolbars)]->addAction(pAction);
                m_aActions.push_back(pAction);
            }
    }
    void Show(std::size_t iProvider, bool bShow) {
        for (std::size_t i = iProvider * nActions; i < (iProvider + 1) * nActions; ++i) {
            m_aActions[i]->setVisible(bShow);
            m_aActions[i]->setEnabled(bShow);
        }
    }

private:
    std::vector<QAction*> m_aActions;
};

double MeasurePlain() {
    PlainWindow oWindow;
    oWindow.resize(1100, 720);
    oWindow.show();
    oWindow.Show(0, true);
    Paint();
    std::vector<double> aPainted;
    std::size_t iActive = 0;
    for (int iSwitch = 0; iSwitch < nSwitches; ++iSwitch) {
        const std::size_t iNext = static_cast<std::size_t>(iSwitch * 37 + 1) % nProviders;
        if (iNext == iActive)
            continue;
        aPainted.push_back(Microseconds([&] {
            oWindow.Show(iActive, false);
            oWindow.Show(iNext, true);
            Paint();
        }));
        iActive = iNext;
    }
    return Median(aPainted);
}

} // namespace

void MeasureFocus() {
    const TemporaryFolder oFolder;
    WriteDefinitions(oFolder.Path() / "Focus");
    qputenv("XDG_STATE_HOME", (oFolder.Path() / "State").string().c_str());
    const Times oTimes = MeasureCorvane(oFolder.Path() / "Focus");
    const double dblPlain = MeasurePlain();
    std::printf("focus switch, %d providers of %d actions\n", nProviders, nActions);
    std::printf("  %-28s %9.1f us\n", "Corvane, models", oTimes.dblModel);
    std::printf("  %-28s %9.1f us\n", "Corvane, with Qt's pass", oTimes.dblPass);
    std::printf("  %-28s %9.1f us   %.2f of Qt by hand\n", "Corvane, painted", oTimes.dblPainted,
                oTimes.dblPainted / dblPlain);
    std::printf("  %-28s %9.1f us\n", "Qt by hand, painted", dblPlain);
}

} // namespace corvane::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication oQt(argc, argv);
    corvane::bench::MeasureFocus();
    corvane::bench::MeasureCommands();
}
