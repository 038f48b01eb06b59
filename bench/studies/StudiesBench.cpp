// Measures Studies: its work on 200,000 rows as jobs on all processors, beside numpy and pandas on the same file in the
// same run (compare.py), and the application with 10,000 studies.

#include "Bootstrap.h"
#include "Csv.h"
#include "RowView.h"
#include "Store.h"
#include "SummaryRows.h"
#include "corvane/author/Jobs.h"
#include "corvane/core/CorvaneMain.h"
#include "headless/ModelHost.h"
#include "jobs/Manager.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>

namespace studies::bench {
namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(const std::function<void()>& work) {
    const auto begin = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

double Best(int runs, const std::function<void()>& work) {
    double best = Milliseconds(work);
    while (--runs > 0)
        best = std::min(best, Milliseconds(work));
    return best;
}

// As the application does, with its thread pool.
using Work = std::function<void(corvane::JobProgress&)>;
double BestJob(int runs, const Work& work) {
    const auto jobs = corvane::New<corvane::jobs::Manager>(corvane::jobs::Host());
    const double best = Best(runs, [&] {
        jobs->Start(
            {.title = "Bench"},
            std::make_unique<corvane::detail::WorkTask<Work, corvane::detail::NoDone>>(work, corvane::detail::NoDone{}),
            "");
        jobs->RunToEnd();
    });
    (void)jobs->Stop(std::chrono::hours(1));
    return best;
}

// 19 columns of numbers and one of text.
Table MakeTable() {
    constexpr std::size_t rows = 200'000;
    std::mt19937_64 random(42);
    std::normal_distribution<double> normal(40, 7);
    Table table;
    table.rows = rows;
    for (int i = 0; i < 19; ++i) {
        Column column{"n" + std::to_string(i), ColumnType::Number, {}, {}};
        for (std::size_t row = 0; row < rows; ++row)
            column.numbers.push_back(std::round(normal(random) * 1e4) / 1e4);
        table.columns.push_back(std::move(column));
    }
    Column label{"label", ColumnType::Text, {}, {}};
    for (std::size_t row = 0; row < rows; ++row)
        label.texts.push_back("specimen " + std::to_string(random() % rows));
    table.columns.push_back(std::move(label));
    return table;
}

std::map<std::string, double> Compared(const std::string& path) {
    std::map<std::string, double> found;
    const std::string command = "/usr/bin/python3 " STUDIES_COMPARE " " + path;
    FILE* pipe = ::popen(command.c_str(), "r");
    std::array<char, 64> name{};
    double value = 0;
    while (pipe && std::fscanf(pipe, "%63s %lf", name.data(), &value) == 2)
        found[name.data()] = value;
    if (pipe)
        ::pclose(pipe);
    return found;
}

void Print(const std::string& what, double ours, const std::map<std::string, double>& others, const std::string& name) {
    std::printf("%-34s %9.1f ms", what.c_str(), ours);
    if (const auto it = others.find(name); it != others.end())
        std::printf("   %s %9.1f ms   ratio %5.2f", name.c_str(), it->second, ours / it->second);
    std::printf("\n");
}

void MeasureTable(const std::filesystem::path& folder) {
    const Table table = MakeTable();
    const std::string path = (folder / "bench.csv").string();
    std::ofstream(path) << WriteCsv(table);
    const auto others = Compared(path);
    const std::vector<double>& values = table.columns[0].numbers;
    for (const auto& [figure, resamples] : {std::pair(BootstrapFigure::Mean, 1000), {BootstrapFigure::Median, 100}}) {
        BootstrapOptions options;
        options.figure = figure;
        options.resamples = resamples;
        const double ours =
            BestJob(1, [&](corvane::JobProgress& progress) { (void)RunBootstrap(values, options, progress); });
        Print("bootstrap, " + std::to_string(resamples) + " x " + std::string(NameOf(figure)), ours, others,
              std::string(NameOf(figure)));
    }
    Table numbers = table;
    numbers.columns.pop_back();
    Print("summary of the numbers", BestJob(3, [&](auto& progress) { (void)RowsOfSummary(numbers, "", 2, progress); }),
          others, "describe");
    const auto rows = [&](const RowView& view) {
        return BestJob(3, [&, view](corvane::JobProgress& progress) { (void)RowsOf(table, view, progress); });
    };
    Print("sort by number", rows({1, false, -1, ""}), others, "sort-number");
    Print("sort by text", rows({19, false, -1, ""}), others, "sort-text");
    for (const char* filter : {"4", "43", "43.1", "43.15", "specimen 19", "zz"})
        Print("filter any column, \"" + std::string(filter) + "\"", rows({-1, false, -1, filter}), others, "");
    Print("filter a column, \"> 50\"", rows({-1, false, 2, "> 50"}), others, "");
    Print("read the file", BestJob(1, [&](auto& progress) { (void)ReadCsvFile(path, {}, progress); }), others, "");
    const std::string store = (folder / "bench.sqlite").string();
    const Id id = Store(store).ReserveDataSet();
    Print("write it into the store", BestJob(1, [&](auto& progress) { WriteDataTable(store, id, table, progress); }),
          others, "");
}

void MeasureStudies(const std::filesystem::path& folder) {
    constexpr int studies = 10'000;
    ::setenv("XDG_DATA_HOME", folder.c_str(), 1);
    {
        Store store(Store::DefaultPath());
        Database database(Store::DefaultPath());
        Transaction transaction(database);
        Statement insert(database, "INSERT INTO studies(name, name_key) VALUES(?,?)");
        for (int i = 1; i <= studies; ++i) {
            const std::string number = std::to_string(i);
            insert.Bind("Study " + number).Bind("study " + number).Run();
        }
        transaction.Commit();
    }
    std::unique_ptr<corvane::inspect::ModelHost> host;
    const auto print = [](const char* what, double time) {
        Print(std::string("10,000 studies, ") + what, time, {}, "");
    };
    print("start", Milliseconds([&] {
              host = std::make_unique<corvane::inspect::ModelHost>(
                  corvane::inspect::HostOptions{STUDIES_APP, false, nullptr});
              (void)host->Start();
          }));
    const auto click = [&](const char* tool) {
        return Milliseconds([&] { host->Do([&] { host->Bar()->Click(host->Bar()->Tools()->Item(tool)); }); });
    };
    for (int round = 0; round < 3; ++round) {
        print("New", click("File.NewStudy"));
        host->Do([&] { host->ActiveTree()->CommitLabelEdit("Named " + std::to_string(round)); });
        print("Undo the name", click("Edit.Undo"));
        print("Undo New", click("Edit.Undo"));
        print("Refresh", click("View.Refresh"));
    }
    if (host->FirstFailure())
        std::printf("failed: %s\n", host->FirstFailure()->Description.c_str());
    std::fflush(stdout);
    std::filesystem::remove_all(folder);
    std::_Exit(0); // what the end takes is of no interest here
}

} // namespace
} // namespace studies::bench

int main() {
    const auto folder = std::filesystem::temp_directory_path() / ("studies-bench-" + std::to_string(::rand()));
    std::filesystem::create_directories(folder);
    studies::bench::MeasureTable(folder);
    studies::bench::MeasureStudies(folder);
    return 0;
}
