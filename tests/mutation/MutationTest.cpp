// What the library rejects, fails or drops in silence is named at its place; what it takes without loss raises nothing.
#include "analysis/Application.h"
#include "analysis/Check.h"
#include "analysis/Print.h"
#include "tests/mutation/Mutations.h"
#include "tests/mutation/Outcome.h"
#include "tests/mutation/SoundApplications.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <map>

namespace corvane::mutation {

namespace {

class Folder {
public:
    explicit Folder(const SoundApplication& application) {
        for (const auto& [path, text] : application.files)
            (void)m_folder.Write(path, text);
        std::filesystem::copy_file(CORVANE_SOURCE "/packaging/schema/Service.xdr",
                                   m_folder.Path("Services/Service.xdr"));
    }
    void Write(const std::string& path, const std::string& text) { (void)m_folder.Write(path, text); }
    [[nodiscard]] const std::string& Path() const { return m_folder.Path(); }

private:
    test::TemporaryFolder m_folder;
};

std::vector<check::Finding> WithoutNotes(std::vector<check::Finding> findings) {
    std::erase_if(findings, [](const check::Finding& finding) {
        return check::TextOf(finding.rule).severity == check::Severity::Note;
    });
    return findings;
}

class Judge {
public:
    Judge(Folder& folder, const SoundApplication& application)
        : m_folder(folder), m_name(application.name), m_base(Run(folder.Path())) {}

    void Try(const Mutant& mutant, const std::string& original) {
        m_folder.Write(mutant.file, mutant.text);
        const auto findings = check::Check({m_folder.Path(), false, {}});
        const Outcome outcome = IsEndless(findings) ? Outcome() : Run(m_folder.Path());
        m_folder.Write(mutant.file, original);
        ++Count(mutant.kind).tried;
        const std::string fault = FaultOf(mutant, findings, outcome);
        if (fault.empty())
            return;
        ++Count(mutant.kind).faults;
        if (Count(mutant.kind).faults <= 2)
            m_report += fault + ": " + mutant.kind + " at " + m_name + "/" + mutant.file + ":" +
                        std::to_string(mutant.line) + "\n" + check::AsText(findings, false);
    }

    [[nodiscard]] const std::string& Report() const { return m_report; }

    struct Counts {
        int tried = 0;
        int faults = 0;
    };
    static std::map<std::string, Counts>& All() {
        static std::map<std::string, Counts> all;
        return all;
    }

private:
    static Counts& Count(const std::string& kind) { return All()[kind]; }

    // The root object as its own start service calls itself until the stack is used up.
    static bool IsEndless(const std::vector<check::Finding>& findings) {
        return std::any_of(findings.begin(), findings.end(),
                           [](const auto& finding) { return finding.rule == check::Rule::StartServiceFramework; });
    }

    // Whether a finding, or a second place of one, is on the spoilt line or on one that the element goes on to.
    static bool IsAt(const check::Finding& finding, const Mutant& mutant) {
        constexpr Long longestElement = 2;
        const auto Is = [&](const check::Place& place) {
            return place.file.ends_with(mutant.file) && place.at.line >= mutant.line &&
                   place.at.line <= mutant.line + longestElement;
        };
        return Is(finding.place) || std::any_of(finding.notes.begin(), finding.notes.end(),
                                                [&](const auto& note) { return Is(note.place); });
    }

    [[nodiscard]] std::string FaultOf(const Mutant& mutant, const std::vector<check::Finding>& findings,
                                      const Outcome& outcome) const {
        const auto serious = WithoutNotes(findings);
        const bool isNamed = std::any_of(findings.begin(), findings.end(),
                                         [&](const check::Finding& finding) { return IsAt(finding, mutant); });
        const bool isRejected = !outcome.isStarted || !outcome.isFilled || outcome.hasMessage;
        const bool isError = std::any_of(findings.begin(), findings.end(), [](const auto& finding) {
            return check::TextOf(finding.rule).severity == check::Severity::Error;
        });
        if (mutant.expected == Expected::Silent)
            return serious.empty() ? "" : "false alarm";
        if (isRejected && !isError)
            return "rejected by the library, and no error";
        if (!isRejected && isError && outcome.unreached == m_base.unreached && outcome.document == m_base.document)
            return "an error that has no effect";
        const bool isLost = outcome.unreached != m_base.unreached;
        const bool isIdle = mutant.adds && outcome.document == m_base.document;
        if (mutant.expected == Expected::Named || isRejected || isLost || isIdle)
            return isNamed      ? ""
                   : isRejected ? "missed, rejected"
                   : isLost     ? "missed, lost"
                   : isIdle     ? "missed, idle"
                                : "missed";
        return serious.empty() ? "" : "judged harmless by the library";
    }

    Folder& m_folder;
    std::string m_name;
    Outcome m_base;
    std::string m_report;
};

class Mutations : public ::testing::TestWithParam<SoundApplication> {};

} // namespace

TEST_P(Mutations, AreNamedAtTheirPlaceOrRaiseNothing) {
    const SoundApplication& application = GetParam();
    Folder folder(application);
    EXPECT_EQ(check::AsText(WithoutNotes(check::Check({folder.Path(), false, {}})), false), "");
    Judge judge(folder, application);
    int count = 0;
    check::Model model;
    check::Report report;
    check::ReadApplication(model, folder.Path(), report);
    for (const auto& file : model.files)
        ForEachMutant(*file, "Services/" + file->name, [&](const Mutant& mutant) {
            judge.Try(mutant, file->bytes);
            ++count;
        });
    std::printf("%s: %d mutants\n", application.name.c_str(), count);
    EXPECT_GT(count, 100);
    EXPECT_EQ(judge.Report(), "");
}

INSTANTIATE_TEST_SUITE_P(All, Mutations, ::testing::ValuesIn(SoundApplications()),
                         [](const auto& each) { return each.param.name; });

} // namespace corvane::mutation
