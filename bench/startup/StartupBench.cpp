// Measures how long an application of many definition files takes to start and how much memory that needs, against
// the same files only read and validated, and against a program that builds the same menus by hand. Each start is a
// process of its own. Of Corvane come the models alone, a main window over them, and the whole application as
// corvane-desktop starts it for a user who has used it before. The services' classes are the program's own: to load
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
    const char* name;
    const char* title;
    void (*start)(const Job&);
    bool withToolkit;
};

enum Which : std::size_t { Nothing, Empty, Xml, Plain, Models, Window, Whole, Session };
constexpr std::array variants{
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
    double wall = 0; // in milliseconds
    double cpu = 0;
    double memory = 0; // in MiB
};

double Milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

Measure RunChild(const char* program, const Variant& variant, const Job& job) {
    const std::string services = std::to_string(job.size.services);
    const std::string actions = std::to_string(job.size.actions);
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child < 0)
        throw std::runtime_error("can't start a process");
    if (child == 0) {
        ::execl(program, program, "--child", variant.name, job.folder.c_str(), services.c_str(), actions.c_str(),
                nullptr);
        std::_Exit(127);
    }
    int status = 0;
    rusage usage{};
    if (::wait4(child, &status, 0, &usage) != child)
        throw std::runtime_error("a process got lost");
    const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - begin;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(std::string(variant.title) + " failed at " + job.size.Text());
    return {wall.count(), Milliseconds(usage.ru_utime) + Milliseconds(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) / 1024};
}

double Median(const std::vector<Measure>& runs, double Measure::*member) {
    std::vector<double> values;
    for (const auto& run : runs)
        values.push_back(run.*member);
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

using Medians = std::array<std::optional<Measure>, variants.size()>;

// The variants take turns, so that a busy moment of the machine doesn't fall on one of them alone. What comes first
// only warms the caches.
Medians MeasureSize(const char* program, const Job& job, const std::vector<Which>& which, int runCount) {
    std::array<std::vector<Measure>, variants.size()> runs;
    for (int run = -1; run < runCount; ++run)
        for (const Which whichKind : which) {
            const Measure measure = RunChild(program, variants[whichKind], job);
            if (run >= 0)
                runs[whichKind].push_back(measure);
        }
    Medians medians;
    for (const Which whichKind : which)
        medians[whichKind] = Measure{Median(runs[whichKind], &Measure::wall), Median(runs[whichKind], &Measure::cpu),
                                     Median(runs[whichKind], &Measure::memory)};
    return medians;
}

void PrintTable(const Size& size, const Medians& medians) {
    std::printf("\n%s: %zu entries\n", size.Text().c_str(), size.Entries());
    std::printf("  %-16s %9s %9s %9s   %s\n", "", "wall ms", "CPU ms", "mem MiB",
                medians[Plain] ? "to Qt by hand: wall, CPU, memory" : "");
    for (std::size_t i = 0; i < variants.size(); ++i) {
        if (!medians[i])
            continue;
        const Measure& it = *medians[i];
        std::printf("  %-16s %9.1f %9.1f %9.1f", variants[i].title, it.wall, it.cpu, it.memory);
        if (medians[Plain])
            std::printf("   %18.2f %6.2f %6.2f", it.wall / medians[Plain]->wall, it.cpu / medians[Plain]->cpu,
                        it.memory / medians[Plain]->memory);
        std::printf("\n");
    }
}

// How much longer the models take than libxml2 alone takes to read and validate the same files; the process itself is
// neither's. It may be less than nothing: of plain files the library lets libxml2 build no tree.
void PrintShares(const Size& size, const Medians& medians) {
    const auto Share = [&](double Measure::*member) {
        const double xml = (*medians[Xml]).*member;
        return ((*medians[Models]).*member - xml) / (xml - (*medians[Nothing]).*member);
    };
    const auto PerEntry = [&](double Measure::*member) {
        return ((*medians[Models]).*member - (*medians[Nothing]).*member) * 1e3 / static_cast<double>(size.Entries());
    };
    std::printf(
        "  models beyond libxml2 alone, to libxml2: wall %.2f, CPU %.2f; models an entry: wall %.2f us, CPU %.2f us\n",
        Share(&Measure::wall), Share(&Measure::cpu), PerEntry(&Measure::wall), PerEntry(&Measure::cpu));
}

// What a start writes or remembers stays in the folder too, and no display is needed. On a screen smaller than the
// windows an earlier session would make Corvane's smaller than the others.
void SetEnvironment(const std::filesystem::path& folder) {
    const std::string screen = (folder / "screen.json").string();
    std::ofstream(screen) << R"({"screens": [{"name": "Screen", "x": 0, "y": 0, "width": 1920, "height": 1080,
        "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    ::setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screen).c_str(), 1);
    ::setenv("QT_LOGGING_RULES", "default.warning=false", 1); // the offscreen platform says what it doesn't do
    ::setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
    for (const char* name : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        ::setenv(name, (folder / name).c_str(), 1);
}

void MeasureAll(const char* program, int runs) {
    const TemporaryFolder folder;
    SetEnvironment(folder.Path());
    std::printf("Medians of %d runs\n", runs);
    const std::vector<Which> all{Nothing, Empty, Xml, Plain, Models, Window, Whole};
    const std::vector<Which> models{Nothing, Xml, Models};
    const std::array<std::pair<Size, const std::vector<Which>*>, 4> sizes{
        {{{20, 20}, &all}, {{200, 50}, &all}, {{1000, 10}, &all}, {{1000, 100}, &models}}};
    for (const auto& [size, which] : sizes) {
        const Job job{WriteApplication(folder.Path(), size).string(), size};
        if (which == &all)
            (void)RunChild(program, variants[Session], job);
        const Medians medians = MeasureSize(program, job, *which, runs);
        PrintTable(size, medians);
        PrintShares(size, medians);
        std::fflush(stdout);
    }
}

int RunVariant(int argc, char** argv) {
    const auto it = std::find_if(variants.begin(), variants.end(),
                                 [&](const Variant& o) { return std::strcmp(o.name, argv[2]) == 0; });
    if (it == variants.end())
        return 2;
    const Job job{argv[3], {std::atoi(argv[4]), std::atoi(argv[5])}};
    std::optional<QApplication> qt;
    if (it->withToolkit)
        qt.emplace(argc, argv);
    it->start(job);
    std::_Exit(0);
}

} // namespace
} // namespace corvane::bench

int main(int argc, char** argv) {
    try {
        if (argc == 6 && std::strcmp(argv[1], "--child") == 0)
            return corvane::bench::RunVariant(argc, argv);
        int runs = 5;
        if (argc == 3 && std::strcmp(argv[1], "--runs") == 0)
            runs = std::atoi(argv[2]);
        else if (argc != 1)
            runs = 0;
        if (runs < 1) {
            std::fputs("usage: bench_startup [--runs COUNT]\n", stderr);
            return 2;
        }
        corvane::bench::MeasureAll("/proc/self/exe", runs);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench_startup: %s\n", failure.what());
        return 1;
    } catch (...) {
        std::fputs("bench_startup: a start failed\n", stderr);
        return 1;
    }
}
