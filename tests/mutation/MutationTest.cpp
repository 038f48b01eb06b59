// What the library rejects, fails or drops in silence is named at its place; what it takes without loss raises nothing.
// By default some hundred mutants of each application are tried, of each kind at least one. With CORVANE_ALL_MUTANTS=N
// in the environment it is N of each kind in each file, and with CORVANE_ALL_MUTANTS=all every one.
#include "analysis/Application.h"
#include "analysis/Check.h"
#include "analysis/Print.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ServiceManager.h"
#include "headless/ModelHost.h"
#include "tests/mutation/Mutations.h"
#include "tests/mutation/Outcome.h"
#include "tests/mutation/SoundApplications.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

namespace corvane::mutation {

namespace {

using check::Finding;
using check::Severity;

class Folder {
public:
    explicit Folder(const SoundApplication& application) {
        for (const auto& [path, text] : application.files)
            Write(path, text);
        std::filesystem::copy_file(CORVANE_SOURCE "/packaging/schema/Service.xdr",
                                   m_folder.Path("Services/Service.xdr"));
    }
    void Write(const std::string& path, const std::string& text) { (void)m_folder.Write(path, text); }
    void Remove(const std::string& path) { std::filesystem::remove(m_folder.Path(path)); }
    [[nodiscard]] const std::string& Path() const { return m_folder.Path(); }

private:
    test::TemporaryFolder m_folder;
};

bool IsError(const Finding& finding) {
    return check::TextOf(finding.rule).severity == Severity::Error;
}

std::vector<Finding> WithoutNotes(std::vector<Finding> findings) {
    std::erase_if(findings,
                  [](const Finding& finding) { return check::TextOf(finding.rule).severity == Severity::Note; });
    return findings;
}

// What has been seen of a family of mutants.
struct Counts {
    int tried = 0;
    int rejected = 0; // the library says so, or fails
    int dropped = 0;  // it drops something in silence
    int missed = 0;
    int falseAlarms = 0;
};

std::map<std::string, Counts>& AllCounts() {
    static std::map<std::string, Counts> all;
    return all;
}

class Judge {
public:
    Judge(Folder& folder, const SoundApplication& application)
        : m_folder(folder), m_name(application.name), m_base(Run(folder.Path())) {}

    [[nodiscard]] const Outcome& Base() const { return m_base; }

    void Try(const Mutant& mutant, const std::string& original) {
        m_folder.Write(mutant.file, mutant.text);
        if (!mutant.movedTo.empty()) {
            m_folder.Write(mutant.movedTo, mutant.text);
            m_folder.Remove(mutant.file);
        }
        const auto findings = check::Check({m_folder.Path(), false, {}});
        const Outcome outcome = IsEndless(findings) ? Outcome() : Run(m_folder.Path());
        if (!mutant.movedTo.empty())
            m_folder.Remove(mutant.movedTo);
        m_folder.Write(mutant.file, original);
        Counts& counts = AllCounts()[mutant.family];
        ++counts.tried;
        const std::string fault = FaultOf(mutant, findings, outcome, counts);
        constexpr int shownOfEach = 2;
        if (!fault.empty() && ++m_shown[fault + mutant.kind] <= shownOfEach)
            m_report += fault + ": " + mutant.kind + " at " + m_name + "/" + mutant.file + ":" +
                        std::to_string(mutant.line) +
                        "\n  the library: " + (outcome.failure.empty() ? "no failure" : outcome.failure) +
                        Lost(outcome) + "\n" + check::AsText(findings, false);
    }

    [[nodiscard]] const std::string& Report() const { return m_report; }

private:
    // What calls itself until the stack is used up can't be tried.
    static bool IsEndless(const std::vector<Finding>& findings) {
        return std::any_of(findings.begin(), findings.end(),
                           [](const auto& finding) { return finding.rule == check::Rule::StartServiceFramework; });
    }

    // Whether a finding, or a second place of one, is on the spoilt line or on one that the element goes on to.
    static bool IsAt(const Finding& finding, const Mutant& mutant) {
        constexpr Long longestElement = 3;
        const auto Is = [&](const check::Place& place) {
            if (!mutant.movedTo.empty())
                return place.file.ends_with(mutant.movedTo);
            if (mutant.line == 0)
                return true; // what is gone is missed somewhere else
            return place.file.ends_with(mutant.file) && place.at.line >= mutant.line &&
                   place.at.line <= mutant.line + longestElement;
        };
        return Is(finding.place) || std::any_of(finding.notes.begin(), finding.notes.end(),
                                                [&](const auto& note) { return Is(note.place); });
    }

    // What is nowhere to be seen now, and was there, or isn't there at all, before.
    [[nodiscard]] std::string Lost(const Outcome& outcome) const {
        std::string lost;
        for (const std::string& each : outcome.unreached)
            if (!m_base.unreached.contains(each))
                lost += ", lost is " + each;
        return lost;
    }

    std::string FaultOf(const Mutant& mutant, const std::vector<Finding>& findings, const Outcome& outcome,
                        Counts& counts) const {
        const auto serious = WithoutNotes(findings);
        const bool isNamed = std::any_of(findings.begin(), findings.end(),
                                         [&](const Finding& finding) { return IsAt(finding, mutant); });
        const bool isRejected = !outcome.isStarted || !outcome.isFilled || !outcome.failure.empty();
        const bool isLost = !isRejected && !Lost(outcome).empty();
        const bool isIdle = !isRejected && mutant.adds && outcome.document == m_base.document;
        const bool isSame = !isRejected && outcome.document == m_base.document && outcome.shown == m_base.shown;
        counts.rejected += isRejected ? 1 : 0;
        counts.dropped += isLost || isIdle ? 1 : 0;
        const auto Missed = [&](const char* how) {
            ++counts.missed;
            return std::string("missed, ") + how;
        };
        const auto FalseAlarm = [&](const char* why) {
            ++counts.falseAlarms;
            return std::string("false alarm, ") + why;
        };
        if (isRejected && std::none_of(findings.begin(), findings.end(), IsError))
            return Missed("an error for the library");
        if (isRejected || isLost || isIdle || mutant.expected == Expected::Named)
            return isNamed      ? ""
                   : isRejected ? Missed("rejected")
                   : isLost     ? Missed("lost")
                   : isIdle     ? Missed("without effect")
                                : Missed("a mistake all the same");
        if (mutant.expected == Expected::Silent)
            return serious.empty() ? "" : FalseAlarm("it is sound");
        if (std::any_of(findings.begin(), findings.end(), IsError))
            return FalseAlarm("an error that the library doesn't make");
        // What has been written without effect may be named, and nothing else.
        return isSame && !serious.empty() && !isNamed ? FalseAlarm("nothing has changed") : "";
    }

    Folder& m_folder;
    std::string m_name;
    Outcome m_base;
    std::string m_report;
    std::map<std::string, int> m_shown;
};

// Those that are to be tried, in an order that is the same each time.
std::vector<std::size_t> Sample(const std::vector<Mutant>& mutants) {
    std::vector<std::size_t> order(mutants.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    const char* wanted = std::getenv("CORVANE_ALL_MUTANTS");
    if (wanted && std::string(wanted) == "all")
        return order;
    std::mt19937 random(16);
    for (std::size_t i = order.size(); i > 1; --i)
        std::swap(order[i - 1], order[random() % i]);
    if (wanted) {
        std::map<std::pair<std::string, std::string>, int> tried;
        std::erase_if(order, [&](std::size_t i) {
            return ++tried[{mutants[i].file, mutants[i].kind}] > std::max(1, std::atoi(wanted));
        });
        return order;
    }
    std::set<std::string> kinds;
    std::stable_partition(order.begin(), order.end(),
                          [&](std::size_t i) { return kinds.insert(mutants[i].kind).second; });
    constexpr std::size_t most = 100;
    order.resize(std::min(order.size(), most));
    return order;
}

class Mutations : public ::testing::TestWithParam<SoundApplication> {
public:
    static void TearDownTestSuite() {
        Counts sum;
        std::printf("%-34s %7s %8s %7s %6s %12s\n", "family", "mutants", "rejected", "dropped", "missed",
                    "false alarms");
        const auto Print = [](const std::string& name, const Counts& counts) {
            std::printf("%-34s %7d %8d %7d %6d %12d\n", name.c_str(), counts.tried, counts.rejected, counts.dropped,
                        counts.missed, counts.falseAlarms);
        };
        for (const auto& [name, counts] : AllCounts()) {
            Print(name, counts);
            sum.tried += counts.tried;
            sum.rejected += counts.rejected;
            sum.dropped += counts.dropped;
            sum.missed += counts.missed;
            sum.falseAlarms += counts.falseAlarms;
        }
        Print("all", sum);
    }
};

} // namespace

TEST_P(Mutations, AreNamedAtTheirPlaceOrRaiseNothing) {
    const SoundApplication& application = GetParam();
    Folder folder(application);
    EXPECT_EQ(check::AsText(WithoutNotes(check::Check({folder.Path(), false, {}})), false), "");
    Judge judge(folder, application);
    ASSERT_EQ(judge.Base().failure, "");
    EXPECT_EQ(judge.Base().unreached, std::set<std::string>());
    check::Model model;
    check::Report report;
    check::ReadApplication(model, folder.Path(), report);
    std::vector<Mutant> mutants;
    std::vector<const check::File*> files;
    for (const auto& file : model.files)
        ForEachMutant(*file, "Services/" + file->name, [&](const Mutant& mutant) {
            mutants.push_back(mutant);
            files.push_back(file.get());
        });
    EXPECT_GT(mutants.size(), 300U);
    for (const std::size_t i : Sample(mutants))
        judge.Try(mutants[i], files[i]->bytes);
    EXPECT_TRUE(judge.Report().empty()) << judge.Report();
}

// Thousands of starts in one process need that each lets go of what it has made.
TEST(Starts, LetGoOfTheirTools) {
    const Folder folder(GeneratedApplication(1));
    Ref<ActionItemDef> definition;
    {
        inspect::ModelHost host({folder.Path(), true, nullptr});
        ASSERT_TRUE(host.Start());
        definition =
            CorvaneMain::Framework()->ServiceManager()->ServiceDefs()->Item("S1")->ActionItemDefs()->Item("Do11");
        ASSERT_TRUE(definition->Tool());
    }
    EXPECT_FALSE(definition->Tool());
}

INSTANTIATE_TEST_SUITE_P(All, Mutations, ::testing::ValuesIn(SoundApplications()),
                         [](const auto& each) { return each.param.name; });

} // namespace corvane::mutation
