// Measures how long the command palette takes for a key press among 5,000 commands, painting included, and compares the
// search in it with a plain scan for the typed text in the same run. Prints medians and the worst in milliseconds.

#include "bench/Times.h"
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
    const QStringList verbs{"Open",   "Save",      "Import",  "Export", "Delete",
                            "Rename", "Summarize", "Compare", "Print",  "Show"};
    const QStringList things{"Study", "Data Set", "Analysis", "Report", "Table",
                             "Chart", "Sample",   "Group",    "Filter", "Note"};
    std::vector<desktop::PaletteEntry> entries;
    for (int i = 0; i < Commands; ++i)
        entries.push_back({nullptr, QString("%1 %2 %3").arg(verbs[i % 10], things[i / 10 % 10]).arg(i / 100),
                           QString("Menu %1 › Part %2").arg(i % 25).arg(i / 25 % 20), i % 7 == 0 ? "Ctrl+K" : "",
                           QString("Service %1").arg(i % 40), i % 3 == 0 ? "disabled by its service" : "", ""});
    return entries;
}

struct Times {
    std::vector<double> milliseconds;
    void Add(const QElapsedTimer& time) { milliseconds.push_back(static_cast<double>(time.nsecsElapsed()) / 1e6); }
    [[nodiscard]] double Typical() const { return Median(milliseconds); }
    double Worst() { return *std::max_element(milliseconds.begin(), milliseconds.end()); }
};

void Print(const char* what, Times& times, double floor) {
    std::printf("%-46s median %7.3f ms  worst %7.3f ms  ratio %6.2f\n", what, times.Typical(), times.Worst(),
                times.Typical() / floor);
}

void Run() {
    const std::vector<desktop::PaletteEntry> entries = Entries();
    desktop::PaletteModel model(entries);
    desktop::PaletteDialog dialog(entries, {}, {}, nullptr);
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);
    dialog.resize(640, 440);
    dialog.show();
    QApplication::processEvents();
    Times scan;
    Times search;
    Times key;
    QElapsedTimer time;
    std::size_t found = 0;
    for (int i = 0; i < Rounds; ++i)
        for (const QString& text : {QString("sum an 3"), QString("opstudy"), QString("print"), QString("zq")})
            for (qsizetype n = 1; n <= text.size(); ++n) {
                const QString typed = text.left(n);
                time.start();
                for (const auto& entry : entries)
                    found += entry.caption.contains(typed, Qt::CaseInsensitive) ||
                             entry.path.contains(typed, Qt::CaseInsensitive);
                scan.Add(time);
                time.start();
                model.SetTyped(typed);
                search.Add(time);
                time.start();
                dialog.Field().setText(typed);
                QApplication::processEvents();
                key.Add(time);
            }
    const double floor = scan.Typical();
    std::printf("%d commands, %zu key presses, %zu found by the scan\n", Commands, scan.milliseconds.size(), found);
    Print("plain scan for the text", scan, floor);
    Print("search", search, floor);
    Print("key press, with the list painted", key, floor);
}

} // namespace
} // namespace corvane::bench

int main(int argc, char** argv) {
    QApplication qt(argc, argv);
    corvane::bench::Run();
    return 0;
}
