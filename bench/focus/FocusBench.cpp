// Measures a focus switch: of 100 providers with 50 actions each, a third of them on toolbars, one releases its tools
// and the next one takes its own. The models alone, with the pass that brings Qt's widgets up to date, and painted;
// beside a plain Qt program that does the same with setVisible and setEnabled on its actions. Then what a command costs
// from Qt's trigger to the procedure behind its name. Prints medians in microseconds.

#include "bench/Times.h"
#include "bench/focus/Benches.h"
#include "bench/startup/Inputs.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"

#include <QApplication>
#include <QMenuBar>
#include <QToolBar>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace corvane::bench {
namespace {

constexpr int providers = 100;
constexpr int actionCount = 50;
constexpr int menus = 10;
constexpr int toolbars = 5;
constexpr int switches = 400;

std::string Action(int provider, int action) {
    return "P" + std::to_string(provider) + "A" + std::to_string(action);
}

// No two alike, so that every button that comes has to be painted.
std::string Caption(int provider, int action) {
    return "Entry " + std::to_string(action) + " of " + std::to_string(provider);
}

bool IsOnToolbar(int action) {
    return action % 3 == 0;
}

void WriteDefinitions(const std::filesystem::path& app) {
    std::filesystem::create_directories(app / "Services");
    std::filesystem::copy_file(CORVANE_SCHEMA, app / "Services/Service.xdr");
    std::ofstream file(app / "Services/Focus.xml");
    file << "<Service Name=\"Focus\" ProgID=\"Corvane.Framework\" Active=\"true\"><ActionItems>"
            "<ActionItem Name=\"Navigation\" Action=\"ViewNavigation\" PassActionItemParam=\"true\"/>";
    for (int menu = 0; menu < menus; ++menu)
        file << "<ActionItem Name=\"M" << menu << "\"/>";
    file << "</ActionItems><Menus>";
    for (int menu = 0; menu < menus; ++menu)
        file << "<MenuItem Type=\"MenuTitle\" ActionItem=\"M" << menu << "\" PositionOrder=\"" << menu + 1
             << "\" Caption=\"Menu " << menu << "\"/>";
    file << "</Menus><ExplorerItems>";
    for (int provider = 0; provider < providers; ++provider) {
        file << "<ExplorerItem Name=\"P" << provider << "\" Type=\"Folder\"><ActionItems>";
        for (int i = 0; i < actionCount; ++i)
            file << "<ActionItem Name=\"" << Action(provider, i) << "\" Action=\"Do\"/>";
        file << "</ActionItems><Menus>";
        for (int i = 0; i < actionCount; ++i) {
            const int order = provider * actionCount / menus + i / menus + 1;
            file << "<MenuItem Type=\"MenuItem\" Path=\"M" << i % menus << "\" ActionItem=\"" << Action(provider, i)
                 << "\" PositionOrder=\"" << order << "\" Caption=\"" << Caption(provider, i) << "\"/>";
            if (IsOnToolbar(i))
                file << "<MenuItem Type=\"ToolbarItem\" Path=\"B" << i % toolbars << "\" ActionItem=\""
                     << Action(provider, i) << "\" PositionOrder=\"" << 1000 + order * menus + i % menus
                     << "\" Caption=\"" << Caption(provider, i) << "\"/>";
        }
        file << "</Menus></ExplorerItem>";
    }
    file << "</ExplorerItems></Service>";
}

void Paint() {
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

struct Times {
    double model;
    double pass;    // model and pass
    double painted; // all of it
};

Times MeasureCorvane(const std::filesystem::path& app) {
    desktop::Application application({app.string(), false});
    if (!application.Start())
        throw std::runtime_error("the application doesn't start");
    const auto menusManager = CorvaneMain::Framework()->NavigationManager()->MenuManager();
    const auto itemDefs = CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs();
    std::vector<Ref<ExplorerItemBase>> providerList;
    std::vector<Ref<ActionItemDefCollection>> defs;
    for (int i = 0; i < providers; ++i) {
        providerList.push_back(New<ExplorerItemBase>());
        defs.push_back(itemDefs->Item("P" + std::to_string(i))->ActionItemDefs());
        menusManager->OnActionsProviderAdd(providerList.back(), providerList.back(), defs.back(), false);
    }
    std::vector<double> model, pass, painted;
    std::size_t active = 0;
    menusManager->OnActionsProviderActive(providerList[0], providerList[0], defs[0]);
    for (int switchIndex = 0; switchIndex < switches; ++switchIndex) {
        const std::size_t next = static_cast<std::size_t>(switchIndex * 37 + 1) % providers;
        if (next == active)
            continue;
        double modelValue = 0;
        double passValue = 0;
        painted.push_back(Microseconds([&] {
            passValue = Microseconds([&] {
                modelValue = Microseconds([&] {
                    menusManager->OnActionsProviderInActive(providerList[active], providerList[active], defs[active]);
                    menusManager->OnActionsProviderActive(providerList[next], providerList[next], defs[next]);
                });
                application.Window().Flush();
            });
            Paint();
        }));
        model.push_back(modelValue);
        pass.push_back(passValue);
        active = next;
    }
    const auto tool = application.Bar()->Tools()->Item("M0." + Action(static_cast<int>(active), 0));
    const auto bars = application.Window().findChildren<QToolBar*>();
    const bool shown = std::any_of(bars.begin(), bars.end(), [](const QToolBar* p) { return p->isVisible(); });
    if (!tool->Visible() || !shown)
        throw std::runtime_error("the active provider's actions aren't shown");
    return {Median(model), Median(pass), Median(painted)};
}

// The same by hand: all actions made beforehand, hidden and disabled while their provider isn't active.
class PlainWindow final : public QMainWindow {
public:
    PlainWindow() {
        std::vector<QMenu*> menuList;
        std::vector<QToolBar*> toolbarList;
        for (int i = 0; i < menus; ++i)
            menuList.push_back(menuBar()->addMenu(QString("Menu %1").arg(i)));
        for (int i = 0; i < toolbars; ++i)
            toolbarList.push_back(addToolBar(QString("B%1").arg(i)));
        for (int provider = 0; provider < providers; ++provider)
            for (int i = 0; i < actionCount; ++i) {
                auto* action = new QAction(QString::fromStdString(Caption(provider, i)), this);
                action->setVisible(false);
                action->setEnabled(false);
                menuList[static_cast<std::size_t>(i % menus)]->addAction(action);
                if (IsOnToolbar(i))
                    toolbarList[static_cast<std::size_t>(i % toolbars)]->addAction(action);
                m_actions.push_back(action);
            }
    }
    void Show(std::size_t provider, bool show) {
        for (std::size_t i = provider * actionCount; i < (provider + 1) * actionCount; ++i) {
            m_actions[i]->setVisible(show);
            m_actions[i]->setEnabled(show);
        }
    }

private:
    std::vector<QAction*> m_actions;
};

double MeasurePlain() {
    PlainWindow window;
    window.resize(1100, 720);
    window.show();
    window.Show(0, true);
    Paint();
    std::vector<double> painted;
    std::size_t active = 0;
    for (int switchIndex = 0; switchIndex < switches; ++switchIndex) {
        const std::size_t next = static_cast<std::size_t>(switchIndex * 37 + 1) % providers;
        if (next == active)
            continue;
        painted.push_back(Microseconds([&] {
            window.Show(active, false);
            window.Show(next, true);
            Paint();
        }));
        active = next;
    }
    return Median(painted);
}

} // namespace

void MeasureFocus() {
    const TemporaryFolder folder;
    WriteDefinitions(folder.Path() / "Focus");
    qputenv("XDG_STATE_HOME", (folder.Path() / "State").string().c_str());
    const Times times = MeasureCorvane(folder.Path() / "Focus");
    const double plain = MeasurePlain();
    std::printf("focus switch, %d providers of %d actions\n", providers, actionCount);
    std::printf("  %-28s %9.1f us\n", "Corvane, models", times.model);
    std::printf("  %-28s %9.1f us\n", "Corvane, with Qt's pass", times.pass);
    std::printf("  %-28s %9.1f us   %.2f of Qt by hand\n", "Corvane, painted", times.painted, times.painted / plain);
    std::printf("  %-28s %9.1f us\n", "Qt by hand, painted", plain);
}

} // namespace corvane::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication qt(argc, argv);
    corvane::bench::MeasureFocus();
    corvane::bench::MeasureCommands();
}
