// Measures how long an application of many definition files takes to start and how much memory that needs, against
// the same files only read and validated, and against a program that builds the same menus by hand. Each start is a
// process of its own. Of Corvane come the models alone, a main window over them, and the whole application as
// corvane-desktop starts it for a person who has used it before. The services' classes are the program's own: to load
// plug-ins is the system's work. Prints medians: "wall" from the process's making to its end, "CPU" user and system
// time together, "memory" the most that was resident; and their ratios to the program by hand.

#include "bench/startup/Starts.h"

#include <QApplication>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace corvane::bench {
namespace {

struct Variant {
    const char* sName;
    const char* sTitle;
    void (*fnStart)(const Job&);
    bool bWithToolkit;
};

enum Which : std::size_t { Nothing, Empty, Xml, Plain, Models, Window, Whole, Session };
constexpr std::array aVariants{
    Variant{"nothing", "process alone", &StartNothing, false},
    Variant{"empty", "empty Qt window", &ShowEmptyWindow, true},
    Variant{"xml", "libxml2 alone", &ParseAndValidate, false},
    Variant{"plain", "Qt by hand", &ShowPlainWindow, true},
    Variant{"models", "Corvane, models", &StartModels, false},
    Variant{"window", "Corvane, window", &ShowCorvaneWindow, true},
    Variant{"whole", "Corvane, whole", &ShowWholeApplication, true},
    Variant{"session", "an earlier session", &KeepSession, true},
};

struct Measure {
    double dblWall = 0; // in milliseconds
    double dblCpu = 0;
    double dblMemory = 0; // in MiB
};

double Milliseconds(const timeval& oTime) {
    return static_cast<double>(oTime.tv_sec) * 1e3 + static_cast<double>(oTime.tv_usec) / 1e3;
}

Measure RunChild(const char* sProgram, const Variant& oVariant, const Job& oJob) {
    const std::string sServices = std::to_string(oJob.oSize.nServices);
    const std::string sActions = std::to_string(oJob.oSize.nActions);
    const auto oBegin = std::chrono::steady_clock::now();
    const pid_t nChild = ::fork();
    if (nChild < 0)
        throw std::runtime_error("can't start a process");
    if (nChild == 0) {
        ::execl(sProgram, sProgram, "--child", oVariant.sName, oJob.sFolder.c_str(), sServices.c_str(),
                sActions.c_str(), nullptr);
        std::_Exit(127);
    }
    int nStatus = 0;
    rusage oUsage{};
    if (::wait4(nChild, &nStatus, 0, &oUsage) != nChild)
        throw std::runtime_error("a process got lost");
    const std::chrono::duration<double, std::milli> oWall = std::chrono::steady_clock::now() - oBegin;
    if (!WIFEXITED(nStatus) || WEXITSTATUS(nStatus) != 0)
        throw std::runtime_error(std::string(oVariant.sTitle) + " failed at " + oJob.oSize.Text());
    return {oWall.count(), Milliseconds(oUsage.ru_utime) + Milliseconds(oUsage.ru_stime),
            static_cast<double>(oUsage.ru_maxrss) / 1024};
}

double Median(const std::vector<Measure>& aRuns, double Measure::*pMember) {
    std::vector<double> aValues;
    for (const auto& oRun : aRuns)
        aValues.push_back(oRun.*pMember);
    std::sort(aValues.begin(), aValues.end());
    const std::size_t iMiddle = aValues.size() / 2;
    return aValues.size() % 2 ? aValues[iMiddle] : (aValues[iMiddle - 1] + aValues[iMiddle]) / 2;
}

using Medians = std::array<std::optional<Measure>, aVariants.size()>;

// The variants take turns, so that a busy moment of the machine doesn't fall on one of them alone. What comes first
// only warms the caches.
Medians MeasureSize(const char* sProgram, const Job& oJob, const std::vector<Which>& aWhich, int nRuns) {
    std::array<std::vector<Measure>, aVariants.size()> aRuns;
    for (int iRun = -1; iRun < nRuns; ++iRun)
        for (const Which eWhich : aWhich) {
            const Measure oMeasure = RunChild(sProgram, aVariants[eWhich], oJob);
            if (iRun >= 0)
                aRuns[eWhich].push_back(oMeasure);
        }
    Medians aMedians;
    for (const Which eWhich : aWhich)
        aMedians[eWhich] = Measure{Median(aRuns[eWhich], &Measure::dblWall), Median(aRuns[eWhich], &Measure::dblCpu),
                                   Median(aRuns[eWhich], &Measure::dblMemory)};
    return aMedians;
}

void PrintTable(const Size& oSize, const Medians& aMedians) {
    std::printf("\n%s: %zu entries\n", oSize.Text().c_str(), oSize.Entries());
    std::printf("  %-16s %9s %9s %9s   %s\n", "", "wall ms", "CPU ms", "mem MiB",
                aMedians[Plain] ? "to Qt by hand: wall, CPU, memory" : "");
    for (std::size_t i = 0; i < aVariants.size(); ++i) {
        if (!aMedians[i])
            continue;
        const Measure& oIt = *aMedians[i];
        std::printf("  %-16s %9.1f %9.1f %9.1f", aVariants[i].sTitle, oIt.dblWall, oIt.dblCpu, oIt.dblMemory);
        if (aMedians[Plain])
            std::printf("   %18.2f %6.2f %6.2f", oIt.dblWall / aMedians[Plain]->dblWall,
                        oIt.dblCpu / aMedians[Plain]->dblCpu, oIt.dblMemory / aMedians[Plain]->dblMemory);
        std::printf("\n");
    }
}

// How much longer the models take than libxml2 alone takes to read and validate the same files; the process itself is
// neither's. It may be less than nothing: of plain files the library lets libxml2 build no tree.
void PrintShares(const Size& oSize, const Medians& aMedians) {
    const auto Share = [&](double Measure::*pMember) {
        const double dblXml = (*aMedians[Xml]).*pMember;
        return ((*aMedians[Models]).*pMember - dblXml) / (dblXml - (*aMedians[Nothing]).*pMember);
    };
    const auto PerEntry = [&](double Measure::*pMember) {
        return ((*aMedians[Models]).*pMember - (*aMedians[Nothing]).*pMember) * 1e3 /
               static_cast<double>(oSize.Entries());
    };
    std::printf(
        "  models beyond libxml2 alone, to libxml2: wall %.2f, CPU %.2f; models an entry: wall %.2f us, CPU %.2f us\n",
        Share(&Measure::dblWall), Share(&Measure::dblCpu), PerEntry(&Measure::dblWall), PerEntry(&Measure::dblCpu));
}

// What a start writes or remembers stays in the folder too, and no display is needed. On a screen smaller than the
// windows an earlier session would make Corvane's smaller than the others.
void SetEnvironment(const std::filesystem::path& oFolder) {
    const std::string sScreen = (oFolder / "screen.json").string();
    std::ofstream(sScreen) << R"({"screens": [{"name": "Screen", "x": 0, "y": 0, "width": 1920, "height": 1080,
        "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    ::setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + sScreen).c_str(), 1);
    ::setenv("QT_LOGGING_RULES", "default.warning=false", 1); // the offscreen platform says what it doesn't do
    ::setenv("XDG_RUNTIME_DIR", oFolder.c_str(), 1);
    for (const char* sName : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        ::setenv(sName, (oFolder / sName).c_str(), 1);
}

void MeasureAll(const char* sProgram, int nRuns) {
    const TemporaryFolder oFolder;
    SetEnvironment(oFolder.Path());
    std::printf("Medians of %d runs\n", nRuns);
    const std::vector<Which> aAll{Nothing, Empty, Xml, Plain, Models, Window, Whole};
    const std::vector<Which> aModels{Nothing, Xml, Models};
    const std::array<std::pair<Size, const std::vector<Which>*>, 4> aSizes{
        {{{20, 20}, &aAll}, {{200, 50}, &aAll}, {{1000, 10}, &aAll}, {{1000, 100}, &aModels}}};
    for (const auto& [oSize, pWhich] : aSizes) {
        const Job oJob{WriteApplication(oFolder.Path(), oSize).string(), oSize};
        if (pWhich == &aAll)
            (void)RunChild(sProgram, aVariants[Session], oJob);
        const Medians aMedians = MeasureSize(sProgram, oJob, *pWhich, nRuns);
        PrintTable(oSize, aMedians);
        PrintShares(oSize, aMedians);
        std::fflush(stdout);
    }
}

int RunVariant(int argc, char** argv) {
    const auto it = std::find_if(aVariants.begin(), aVariants.end(),
                                 [&](const Variant& o) { return std::strcmp(o.sName, argv[2]) == 0; });
    if (it == aVariants.end())
        return 2;
    const Job oJob{argv[3], {std::atoi(argv[4]), std::atoi(argv[5])}};
    std::optional<QApplication> oQt;
    if (it->bWithToolkit)
        oQt.emplace(argc, argv);
    it->fnStart(oJob);
    std::_Exit(0);
}

} // namespace
} // namespace corvane::bench

int main(int argc, char** argv) {
    try {
        if (argc == 6 && std::strcmp(argv[1], "--child") == 0)
            return corvane::bench::RunVariant(argc, argv);
        int nRuns = 5;
        if (argc == 3 && std::strcmp(argv[1], "--runs") == 0)
            nRuns = std::atoi(argv[2]);
        else if (argc != 1)
            nRuns = 0;
        if (nRuns < 1) {
            std::fputs("usage: bench_startup [--runs COUNT]\n", stderr);
            return 2;
        }
        corvane::bench::MeasureAll("/proc/self/exe", nRuns);
        return 0;
    } catch (const std::exception& oFailure) {
        std::fprintf(stderr, "bench_startup: %s\n", oFailure.what());
        return 1;
    } catch (...) {
        std::fputs("bench_startup: a start failed\n", stderr);
        return 1;
    }
}
