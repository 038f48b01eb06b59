// A rule's severity follows from what the library does with its example: an error is a failure that the user sees or
// that stops the start, now or when the thing is used; a warning and a note are none.
#include "adapters/common/Pattern.h"
#include "analysis/Rules.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/IActionsProvider.h"
#include "corvane/services/IService.h"
#include "corvane/services/ServiceManager.h"
#include "headless/Steps.h"
#include "tests/analysis/CheckedFolder.h"
#include "tests/support/Application.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <ostream>
#include <sstream>

namespace corvane::testing {

namespace {

using check::Rule;

// Rules whose examples need what is in a plug-in.
bool IsOfPlugins(Rule rule) {
    using enum Rule;
    constexpr std::array rules{MissingPlugin,  UnusablePlugin,  UnknownClass, UnknownMember,
                               WrongArguments, NoServiceAccess, BadProgId};
    return std::find(rules.begin(), rules.end(), rule) != rules.end();
}

// Without an end are a root object that starts itself, and an item that is below itself when something is added there.
bool HasNoEnd(Rule rule) {
    return rule == Rule::StartServiceFramework || rule == Rule::ParentCycle;
}

// All that a user can do: fill the explorer, open every item, choose every command, open every window.
void UseAll(inspect::ModelHost& host) {
    std::string steps = "populate\n";
    for (const auto& tool : host.Bar()->Tools()->All())
        if (!EqualText(tool->Name(), "File.Exit"))
            steps += "click " + tool->Name() + "\n";
    const auto services = CorvaneMain::Framework()->ServiceManager();
    for (const auto& item : services->ExplorerItemDefs())
        steps += "node 0 " + item->Name() + "\ndblclick\n";
    for (const auto& window : services->WindowDefs())
        steps += "open " + window->Name() + "\n";
    std::istringstream stream(steps);
    inspect::TakeAll(host, inspect::ReadSteps(stream, "steps"));
}

// Of services alone, as a class without a display has no items and pages.
void CallAll(inspect::ModelHost& host) {
    for (const auto& service : CorvaneMain::Framework()->ServiceManager()->Services())
        host.Do([&] {
            const auto provider = CorvaneMain::QueryService(service).TryAs<IActionsProvider>();
            if (!provider || service.TryAs<Framework>())
                return;
            for (const auto& action : provider->ActionItems())
                action->OnAction();
        });
    host.Do([] { CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Populate(); });
}

struct Behaviour {
    bool starts = false;
    bool leavesOutFile = false;
    bool fails = false; // at the start or in use

    friend bool operator==(const Behaviour&, const Behaviour&) = default;
    friend void PrintTo(const Behaviour& behaviour, std::ostream* stream) {
        *stream << (behaviour.starts ? "starts" : "doesn't start")
                << (behaviour.leavesOutFile ? ", a file is left out" : "") << (behaviour.fails ? ", fails" : "");
    }
};

Behaviour BehaviourOf(const CheckedFolder& folder, bool onStubs) {
    inspect::ModelHost host({folder.Path(), onStubs, nullptr});
    Behaviour behaviour;
    behaviour.starts = host.Start();
    if (behaviour.starts && onStubs)
        UseAll(host);
    else if (behaviour.starts)
        CallAll(host);
    for (const auto& entry : host.Recorded().log) {
        behaviour.leavesOutFile |= entry.shown && entry.procedure == "LoadServices";
        behaviour.fails |= entry.shown;
    }
    behaviour.fails |= host.FirstFailure().has_value();
    return behaviour;
}

} // namespace

TEST(Severity, IsWhatTheLibraryDoesWithTheExample) {
    int errors = 0;
    for (const check::RuleText& rule : check::AllRules()) {
        if (rule.bad.empty() || HasNoEnd(rule.rule))
            continue;
        const bool isOfPlugins = IsOfPlugins(rule.rule);
        for (const std::string_view example : {rule.bad, rule.good}) {
            CheckedFolder folder;
            folder.WriteExample(example);
            folder.Write("standins.json", R"({"objects": {"ExampleSvc.Plots": {"children":
[{"name": "a"}, {"name": "b"}]}}})");
            if (isOfPlugins)
                folder.AddPlugins();
            const bool isError = rule.severity == check::Severity::Error && example == rule.bad;
            errors += isError ? 1 : 0;
            const Behaviour behaviour = BehaviourOf(folder, !isOfPlugins);
            if (isOfPlugins) {
                EXPECT_TRUE(behaviour.fails || !isError) << rule.name << "\n" << example;
                continue;
            }
            Behaviour expected{true, false, isError};
            if (isError)
                expected = {!check::StopsTheStart(rule.rule), check::LeavesOutTheFile(rule.rule), true};
            EXPECT_EQ(behaviour, expected) << rule.name << "\n" << example;
        }
    }
    EXPECT_GT(errors, 20);
}

// Of rules that no text of one file shows: an example, and a file that is written besides or, without bytes, removed.
TEST(Severity, IsWhatTheLibraryDoesWithTheFolder) {
    const std::string entry = R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet" Visible="False"/></ActionItems>
<Menus><MenuItem Type="ToolbarItem" ActionItem="Greet" Path="B" PositionOrder="10" Caption="Greet" Tip="Hello"/></Menus>)";
    const std::string page = R"(<Windows><Window Name="ExampleWindow" Type="Dialog" State="Normal" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)";
    std::stringstream schema;
    schema << std::ifstream(CORVANE_SOURCE "/packaging/schema/Service.xdr").rdbuf();
    const std::string form = R"(<ui version="4.0"><widget class="QWidget" name="P"><layout class="QVBoxLayout"><item>
<widget class="QTableWidget" name="A"/></item></layout></widget></ui>)";
    struct Row {
        Rule rule;
        std::string example;
        const char* path;
        std::string bytes;
    };
    for (const Row& row : {
             Row{Rule::Schema, entry, "Services/Service.xdr", ReplaceForm(schema.str(), "\"Tip\"", "\"Hint\"")},
             Row{Rule::SchemaFile, entry, "Services/Service.xdr", ""},
             Row{Rule::UnreadFile, entry, "Services/More.xml.txt", "<Service Name=\"M\"/>"},
             Row{Rule::SameFileName, entry, "Images/FOLDER.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>"},
             Row{Rule::HiddenAction, entry, "plugins/libExampleSvc.so", "no plug-in"},
             Row{Rule::Welcome, entry, "welcome.xml", R"(<Welcome><Step Command="File.Nothing" Text="Go"/></Welcome>)"},
             Row{Rule::FormIdle, page, "Forms/ExampleSvc.PlotPage.ui", form},
             Row{Rule::FormLabel, page, "Forms/ExampleSvc.PlotPage.ui", form},
         }) {
        CheckedFolder folder;
        folder.WriteExample(row.example);
        (void)(row.bytes.empty() ? folder.Remove(row.path) : folder.Write(row.path, row.bytes));
        const auto findings = folder.Check();
        EXPECT_TRUE(std::any_of(findings.begin(), findings.end(), [&](const auto& each) {
            return each.rule == row.rule;
        })) << folder.Text();
        const bool isError = check::TextOf(row.rule).severity == check::Severity::Error;
        const Behaviour expected{!isError || !check::StopsTheStart(row.rule),
                                 isError && check::LeavesOutTheFile(row.rule), isError};
        EXPECT_EQ(BehaviourOf(folder, true), expected) << check::TextOf(row.rule).name;
    }
    CheckedFolder folder;
    // Here no host brings a root object, so nothing starts without one.
    folder.Write("Services/Base.xml", R"(<Service Name="Base" ProgID="Corvane.Framework"/>)");
    EXPECT_NE(folder.Text().find("[framework-left-out]"), std::string::npos) << folder.Text();
    EXPECT_EQ(BehaviourOf(folder, true), (Behaviour{false, false, true}));
}

} // namespace corvane::testing
