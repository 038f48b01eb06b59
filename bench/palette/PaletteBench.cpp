// Measures how long the command palette takes for a key press among 5,000 commands, painting included, and compares the
// search in it with a plain scan for the typed text in the same run. Prints medians and the worst in milliseconds.

#include "desktop/palette/PaletteDialog.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace corvane::bench {
namespace {

constexpr int Commands = 5000;
constexpr int Rounds = 30;

std::vector<desktop::PaletteEntry> Entries() {
    const QStringList aVerbs{"Open",   "Save",      "Import",  "Export", "Delete",
                             "Rename", "Summarize", "Compare", "Print",  "Show"};
    const QStringList aThings{"Study", "Data Set", "Analysis", "Report", "Table",
                              "Chart", "Sample",   "Group",    "Filter", "Note"};
    std::vector<desktop::PaletteEntry> aEntries;
    for (int i = 0; i < Commands; ++i)
        aEntries.push_back({nullptr, QString("%1 %2 %3").arg(aVerbs[i % 10], aThings[i / 10 % 10]).arg(i / 100),
                            QString("Menu %1 › Part %2").arg(i % 25).arg(i / 25 % 20), i % 7 == 0 ? "Ctrl+K" : "",
                            QString("Service %1").arg(i % 40), i % 3 == 0 ? "disabled by its service" : "", ""});
    return aEntries;
}

struct Times {
    std::vector<double> aMilliseconds;
    void Add(const QElapsedTimer& oTime) { aMilliseconds.push_back(static_cast<double>(oTime.nsecsElapsed()) / 1e6); }
    double Median() {
        std::sort(aMilliseconds.begin(), aMilliseconds.end());
        return aMilliseconds[aMilliseconds.size() / 2];
    }
    double Worst() { return *std::max_element(aMilliseconds.begin(), aMilliseconds.end()); }
};

void Print(const char* sWhat, Times& oTimes, double fFloor) {
    std::printf("%-46s median %7.3f ms  worst %7.3f ms  ratio %6.2f\n", sWhat, oTimes.Median(), oTimes.Worst(),
                oTimes.Median() / fFloor);
}

void Run() {
    const std::vector<desktop::PaletteEntry> aEntries = Entries();
    desktop::PaletteModel oModel(aEntries);
    desktop::PaletteDialog oDialog(aEntries, {}, {}, nullptr);
    oDialog.setAttribute(Qt::WA_DeleteOnClose, false);
    oDialog.resize(640, 440);
    oDialog.show();
    QApplication::processEvents();
    Times oScan;
    Times oSearch;
    Times oKey;
    QElapsedTimer oTime;
    std::size_t nFound = 0;
    for (int i = 0; i < Rounds; ++i)
        for (const QString& sText : {QString("sum an 3"), QString("opstudy"), QString("print"), QString("zq")})
            for (qsizetype n = 1; n <= sText.size(); ++n) {
                const QString sTyped = sText.left(n);
                oTime.start();
                for (const auto& oEntry : aEntries)
                    nFound += oEntry.sCaption.contains(sTyped, Qt::CaseInsensitive) ||
                              oEntry.sPath.contains(sTyped, Qt::CaseInsensitive);
                oScan.Add(oTime);
                oTime.start();
                oModel.SetTyped(sTyped);
                oSearch.Add(oTime);
                oTime.start();
                oDialog.Field().setText(sTyped);
                QApplication::processEvents();
                oKey.Add(oTime);
            }
    const double fFloor = oScan.Median();
    std::printf("%d commands, %zu key presses, %zu found by the scan\n", Commands, oScan.aMilliseconds.size(), nFound);
    Print("plain scan for the text", oScan, fFloor);
    Print("search", oSearch, fFloor);
    Print("key press, with the list painted", oKey, fFloor);
}

} // namespace
} // namespace corvane::bench

int main(int argc, char** argv) {
    QApplication oQt(argc, argv);
    corvane::bench::Run();
    return 0;
}
