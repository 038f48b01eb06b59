// The assembled application on the control models, driven as a user would.
#include "Csv.h"
#include "Store.h"
#include "Workspace.h"
#include "corvane/author/Host.h"
#include "corvane/base/Automation.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/ModelHost.h"
#include "headless/Steps.h"
#include "jobs/Manager.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

using namespace corvane;
using corvane::inspect::ModelHost;

namespace {

void AppendTree(std::string& text, const Node& node) {
    text += node.Text();
    if (node.Children().empty())
        return;
    text += "(";
    for (const Node* child : node.Children()) {
        if (child != node.Children().front())
            text += ", ";
        AppendTree(text, *child);
    }
    text += ")";
}

class StudiesApplication : public testing::Test {
protected:
    StudiesApplication() { ::setenv("XDG_DATA_HOME", m_folder.Path().c_str(), 1); }

    void Start() {
        m_host = std::make_unique<ModelHost>(inspect::HostOptions{STUDIES_APP, false, nullptr});
        EXPECT_TRUE(m_host->Start());
        EXPECT_TRUE(m_host->Recorded().log.empty());
    }
    // A study with the penguins and a summary, in the file that the application will open.
    static void Prepare() {
        studies::Store store(studies::Store::DefaultPath());
        studies::AnalysisSettings settings;
        settings.groupColumn = "species";
        const studies::Id dataSet =
            store.ImportDataSet(store.CreateStudy("Penguins"), "penguins.csv", STUDIES_DATA "/penguins.csv",
                                studies::ReadCsvFile(STUDIES_DATA "/penguins.csv").table);
        store.AddAnalysis(dataSet, settings.Title("penguins.csv"), settings);
    }
    void Import(const std::string& file) {
        m_host->Do([&] { CallByName(FindService("Studies"), "ImportFile", std::string(STUDIES_DATA "/") + file); });
    }
    // So large that reading and writing it are jobs.
    std::string LargeFile() const {
        std::string path = m_folder.Path("big.csv");
        std::ofstream file(path);
        file << "a";
        for (int i = 0; i < 19; ++i)
            file << ",b" << i;
        for (int i = 0; i < 27000; ++i)
            file << "\n" << i << ",1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19";
        return path;
    }
    void Restart() {
        m_host->Exit();
        m_host.reset();
        Start();
    }

    void Take(const std::string& steps) {
        std::istringstream lines(steps);
        inspect::TakeAll(*m_host, inspect::ReadSteps(lines, "steps"));
    }
    void Click(const std::string& tool) {
        m_host->Do([&] { m_host->Bar()->Click(m_host->Bar()->Tools()->Item(tool)); });
    }
    // The first node of that text in the tree that is shown.
    void Choose(const std::string& text) {
        const Ref<Node> node = Find(text);
        ASSERT_TRUE(node) << text;
        m_host->Do([&] { m_host->ActiveTree()->ClickNode(node); });
    }
    void Open(const std::string& text) {
        Choose(text);
        m_host->Do([&] { m_host->ActiveTree()->DblClick.Raise(); });
    }
    // What the explorer's active item says of a name.
    [[nodiscard]] std::string NameProblem(const std::string& name) {
        std::string problem;
        m_host->Do([&] {
            const Ref<Object> active = ToObject(CallByName(FindService("Studies"), "ActiveItem"));
            problem = ToText(CallByName(active, "NameProblem", name));
        });
        return problem;
    }
    // What is to be answered when Restore asks.
    static std::string RestoreChoice(const std::string& name, const std::string& kind) {
        studies::Store store(studies::Store::DefaultPath());
        for (const studies::Deleted& item : store.DeletedItems()) {
            if (item.name != name)
                continue;
            const auto time = static_cast<std::time_t>(item.time);
            std::array<char, 32> text{};
            (void)std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", std::localtime(&time));
            return "“" + name + "”, " + kind + " deleted on " + text.data();
        }
        return {};
    }
    void Type(const std::string& name) {
        m_host->Do([&] { m_host->ActiveTree()->CommitLabelEdit(name); });
    }

    [[nodiscard]] Ref<Node> Find(const std::string& text) const {
        std::vector<Node*> nodes = m_host->ActiveTree()->GetNodes()->Roots();
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (nodes[i]->Text() == text)
                return Ref<Node>(nodes[i]);
            nodes.insert(nodes.end(), nodes[i]->Children().begin(), nodes[i]->Children().end());
        }
        return nullptr;
    }
    [[nodiscard]] std::string Selected() const {
        const Ref<Node> node = m_host->ActiveTree()->SelectedItem();
        return node ? node->Text() : "";
    }
    [[nodiscard]] std::string Tree() const {
        std::string text;
        for (const Node* root : m_host->ActiveTree()->GetNodes()->Roots())
            AppendTree(text, *root);
        return text;
    }
    [[nodiscard]] std::string Status() const {
        return m_host->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
    }
    [[nodiscard]] bool IsOffered(const std::string& toolName) const {
        const Ref<Tool> tool = m_host->Bar()->Tools()->Item(toolName);
        return tool->Visible() && tool->Enabled();
    }
    [[nodiscard]] std::string Entries(const std::string& band) const {
        std::string text;
        for (const Ref<Tool>& tool : m_host->Bar()->Bands()->Item(band)->Tools()->All())
            text += (text.empty() ? "" : "|") + (tool->Name() == "Separator" ? "-" : tool->Caption()) +
                    (tool->IsDefaultItem() ? "*" : "");
        return text;
    }
    [[nodiscard]] std::string LastMessage() const {
        const auto& messages = m_host->Recorded().messages;
        return messages.empty() ? "" : messages.back().title + "\n" + messages.back().text;
    }
    [[nodiscard]] std::string Failures() const {
        return m_host->FirstFailure() ? m_host->FirstFailure()->Description : "";
    }

    corvane::test::TemporaryFolder m_folder;
    std::unique_ptr<ModelHost> m_host;
};

TEST_F(StudiesApplication, MenusComeFromTheDefinitions) {
    Start();
    EXPECT_EQ(Entries("Main"), "&File|&Edit|&View|&Data|&Analysis|&Window|&Help");
    EXPECT_EQ(Entries("Context.Study"),
              "&Properties\u2026*|Rep&ort|&Import\u2026|&Export\u2026|-|Re&name|D&uplicate|&Delete");
    EXPECT_EQ(Entries("Context.LibraryFile"), "&Open*|-|&Summary|&Histogram|Scatter &Plot|&Compare Groups|&Bootstrap|"
                                              "&Import into Study");
    EXPECT_EQ(m_host->MainForm()->Caption(), "Studies");
    EXPECT_EQ(Status(), "0 studies");
    EXPECT_FALSE(IsOffered("Analysis.Summary")) << "nothing is chosen";
}

TEST_F(StudiesApplication, TheDialogOfTheHostIsAsked) {
    Start();
    Click("File.Open");
    EXPECT_EQ(Status(), "0 studies") << "without an answer it is cancelled";
    EXPECT_EQ(m_host->Dialogs().TakeUnanswered(), (std::vector<std::string>{"Open Data File"}));
    m_host->Dialogs().AddAnswer(m_folder.Path("bad.csv"));
    std::ofstream(m_folder.Path("bad.csv")) << "a,b\n1,2\n3\n";
    Click("File.Open");
    EXPECT_EQ(Failures(), "bad.csv: Line 3: 1 field where the first row has 2.\nCorrect the file, or import it into a "
                          "study with File > Import, which can leave out rows that can't be read.");
}

TEST_F(StudiesApplication, StudiesAreMadeRenamedCopiedDeletedAndUndone) {
    Prepare();
    Start();
    const std::string full = "Penguins(Data Sets(penguins.csv), Analyses(Summary of penguins.csv by species))";
    EXPECT_EQ(Tree(), "Studies(" + full + ")");
    Click("File.NewStudy");
    Type("Others"); // the label is open for the name
    EXPECT_EQ(Status(), "“Study 1” is now “Others”");
    Import("gentoo.csv");
    EXPECT_EQ(Status(), "gentoo.csv imported into “Others”: 124 rows, 6 columns");
    EXPECT_EQ(Selected(), "gentoo.csv") << "what comes next is about it";
    const std::string others = "Others(Data Sets(gentoo.csv), Analyses)";
    EXPECT_EQ(Tree(), "Studies(" + full + ", " + others + ")");
    Choose("Penguins"); // what was imported has the commands; the Qt host would have given them back
    Choose("Others");
    Click("Edit.Delete");
    EXPECT_EQ(m_host->Dialogs().TakeUnanswered().size(), 1U);
    EXPECT_NE(Find("Others"), nullptr) << "the question wasn't answered";
    m_host->Dialogs().AddAnswer("Delete");
    Click("Edit.Delete");
    EXPECT_EQ(Selected(), "Penguins") << "there is none behind it";

    Choose("Penguins");
    Click("Edit.Duplicate");
    EXPECT_EQ(Tree(), "Studies(" + full + ", Copy of " + full + ")");
    EXPECT_EQ(Selected(), "Copy of Penguins");
    Choose("Penguins");
    m_host->Dialogs().AddAnswer("Delete");
    Click("Edit.Delete");
    EXPECT_EQ(Tree(), "Studies(Copy of " + full + ")");
    EXPECT_EQ(Selected(), "Copy of Penguins") << "what follows it, which has";
    EXPECT_TRUE(IsOffered("Edit.Duplicate")) << "the commands now";
    EXPECT_EQ(Entries("Edit").substr(0, 18), "&Undo Delete Study");

    Click("Edit.Undo");
    EXPECT_EQ(Tree(), "Studies(" + full + ", Copy of " + full + ")");
    Click("Edit.Redo");
    EXPECT_EQ(Tree(), "Studies(Copy of " + full + ")");
    Click("Edit.Undo");
    EXPECT_TRUE(m_host->Bar()->Tools()->Item("Edit.Delete")->Visible());
    Choose("penguins.csv");
    EXPECT_TRUE(IsOffered("Analysis.Histogram"));
    Click("Edit.Delete");
    EXPECT_EQ(Tree(), "Studies(Penguins(Data Sets, Analyses), Copy of " + full + ")");
    EXPECT_EQ(Selected(), "Data Sets") << "what it was below";
    EXPECT_FALSE(IsOffered("Analysis.Histogram"));
    EXPECT_EQ(Failures(), "");

    Restart();
    EXPECT_EQ(Tree(), "Studies(Penguins(Data Sets, Analyses), Copy of " + full + ")");
    EXPECT_EQ(Status(), "2 studies");
    m_host->Dialogs().AddAnswer(RestoreChoice("penguins.csv", "data set"));
    Click("Edit.Restore");
    EXPECT_EQ(Status(), "“penguins.csv” has been restored");
    EXPECT_EQ(Selected(), "penguins.csv");
    EXPECT_EQ(Tree(), "Studies(" + full + ", Copy of " + full + ")");
    m_host->Dialogs().AddAnswer(RestoreChoice("Others", "study"));
    Click("Edit.Restore");
    EXPECT_EQ(Selected(), "Others");
    EXPECT_FALSE(IsOffered("Edit.Restore")) << "there is nothing more";
    EXPECT_EQ(Failures(), "");
}

// The file is shared with a store of another program.
TEST_F(StudiesApplication, AnotherWindowOnTheSameStudiesIsReportedAndFollowed) {
    Prepare();
    auto other = std::make_unique<studies::Store>(studies::Store::DefaultPath());
    Start();
    EXPECT_NE(LastMessage().find("Studies is open in another window already"), std::string::npos);
    Choose("Penguins");
    other->RenameStudy(other->Studies()[0].id, "Birds");
    other->CreateStudy("More");
    m_host->Timers().TickAll();
    EXPECT_EQ(Tree(),
              "Studies(Birds(Data Sets(penguins.csv), Analyses(Summary of penguins.csv by species)), More(Data Sets, "
              "Analyses))");
    EXPECT_EQ(Status(), "Changes that were made in another window of Studies are shown");

    Choose("More");
    Click("Edit.Rename");
    other->RenameStudy(other->Studies()[1].id, "Else");
    m_host->Timers().TickAll();
    EXPECT_TRUE(m_host->ActiveTree()->IsEditingLabel()) << "what is being typed isn't taken away";
    EXPECT_EQ(NameProblem("Mine"), "The study is called “Else” by now, by another window of Studies.");
    m_host->ActiveTree()->CancelLabelEdit();
    other->Delete({{'s', other->Studies()[1].id}});
    m_host->Timers().TickAll();
    EXPECT_EQ(Selected(), "Birds");
    other.reset();
    Restart();
    EXPECT_EQ(LastMessage(), "") << "alone again";
    EXPECT_EQ(Failures(), "");
}

#ifdef STUDIES_WITH_PAGES

class StudiesWindows : public StudiesApplication {
protected:
    [[nodiscard]] static Ref<KeyedCollection<Ref<Window>>> Windows() {
        return CorvaneMain::Framework()->WindowManager()->Windows();
    }
    [[nodiscard]] static std::string Captions() {
        std::string text;
        for (const Ref<Window>& window : *Windows())
            text += (text.empty() ? "" : "|") + window->Caption();
        return text;
    }
};

TEST_F(StudiesWindows, OneOpensForEachDataSetAndAnalysis) {
    Prepare();
    Start();
    Open("penguins.csv");
    Open("penguins.csv");
    EXPECT_EQ(Captions(), "penguins.csv");
    Open("Summary of penguins.csv by species");
    Open("Summary of penguins.csv by species");
    EXPECT_EQ(Captions(), "penguins.csv|Summary of penguins.csv by species");
    Choose("penguins.csv");
    Click("Analysis.Histogram");
    Click("Analysis.Comparison");
    EXPECT_EQ(Captions(), "penguins.csv|Summary of penguins.csv by species|Histogram of penguins.csv: bill length|"
                          "Comparison of penguins.csv: bill length, Adelie and Chinstrap");
    Click("Analysis.Summary");
    EXPECT_EQ(Status().find("Summary of penguins.csv: bill length 43.92"), 0U) << Status();
    Click("Analysis.Report");
    EXPECT_EQ(Status(), "") << "what was said of one window doesn't stay below another";
    EXPECT_NE(Captions().find("|Report on Penguins"), std::string::npos);
    Choose("Penguins");
    m_host->Dialogs().AddAnswer("Delete");
    Click("Edit.Delete");
    EXPECT_EQ(Captions(), "") << "what a window is about has gone";
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesWindows, OpenAgainByTheirKeysUnlessWhatTheyAreAboutHasGone) {
    Prepare();
    Start();
    Open("penguins.csv");
    Open("Summary of penguins.csv by species");
    Click("Analysis.Report");
    std::vector<std::pair<std::string, std::string>> open;
    for (const Ref<Window>& window : *Windows())
        open.emplace_back(window->WindowDef()->Name(), window->Key());
    const std::string captions = Captions();
    Restart();
    const auto restore = [](const std::string& name, const std::string& key) {
        return ToBoolean(CallByName(FindService("Studies"), "RestoreWindow", name, key));
    };
    for (const auto& [name, key] : open)
        EXPECT_TRUE(restore(name, key)) << key;
    EXPECT_EQ(Captions(), captions);
    for (const char* key : {"data 99", "analysis 99", "report 99", "data ", "data x", "file 1", ""})
        EXPECT_FALSE(restore("Data", key)) << key;
    EXPECT_EQ(Captions(), captions);
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesApplication, WhatUndoBringsBackIsInItsPlaceAndTheRestStays) {
    Prepare();
    Start();
    for (int i = 0; i < 2; ++i) {
        Choose("Penguins");
        Import("gentoo.csv");
    }
    const Ref<Node> study = Find("Penguins");
    const std::string tree = Tree();
    EXPECT_NE(tree.find("(penguins.csv, gentoo.csv, gentoo.csv 2)"), std::string::npos) << tree;
    Choose("gentoo.csv");
    Click("Edit.Delete");
    EXPECT_EQ(Selected(), "gentoo.csv 2");
    Click("Edit.Undo");
    EXPECT_EQ(Tree(), tree);
    EXPECT_EQ(Selected(), "gentoo.csv 2") << "though it was added again, behind the other";
    Choose("Penguins");
    Click("Edit.Rename");
    Type("Birds");
    Choose("gentoo.csv");
    Click("Edit.Undo");
    EXPECT_EQ(Tree(), tree);
    EXPECT_TRUE(Find("Penguins") == study) << "with all that a user has opened";
    EXPECT_EQ(Selected(), "gentoo.csv");
    Choose("Penguins");
    m_host->Dialogs().AddAnswer("Delete");
    Click("Edit.Delete"); // the study knows the name
    EXPECT_EQ(Tree(), "Studies");
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesApplication, SeveralItemsAreDeletedAndMovedAtOnce) {
    Prepare();
    Start();
    Choose("Penguins");
    Import("gentoo.csv");
    Click("File.NewStudy");
    Type("Others");
    const std::string tree = Tree();
    const std::string moved = "Studies(Penguins(Data Sets, Analyses), Others(Data Sets(penguins.csv, gentoo.csv), "
                              "Analyses(Summary of penguins.csv by species)))";
    Choose("penguins.csv");
    Take("also 0 DataSet.#2\ndrop 0 Others\n");
    EXPECT_EQ(Tree(), moved) << "with its analyses";
    EXPECT_EQ(Status(), "2 data sets have been moved into “Others”");
    EXPECT_EQ(Entries("Edit").substr(0, 22), "&Undo Move 2 Data Sets");
    Click("Edit.Undo");
    EXPECT_EQ(Tree(), tree);
    Choose("penguins.csv");
    Take("dropcopy 0 Others\ntakefile " STUDIES_DATA "/gentoo.csv\ndrop 0 Others\n");
    EXPECT_NE(Tree().find("Others(Data Sets(penguins.csv, gentoo.csv), Analyses(Summary"), std::string::npos) << Tree();
    Take("node 0 DataSet.#1\ndrop 0 Penguins\nnode 0 Penguins\ndrop 0 Others\n"); // neither is taken
    const std::string before = Tree();
    Take("node 0 DataSet.#2\nalso 0 DataSet.#1\nalso 0 Analysis.#1\nalso 0 Others\n");
    Click("Edit.Delete");
    EXPECT_EQ(m_host->Dialogs().TakeUnanswered().size(), 1U) << "the study has something in it";
    m_host->Dialogs().AddAnswer("Delete");
    Click("Edit.Delete");
    EXPECT_EQ(Tree(), "Studies(Penguins(Data Sets, Analyses))");
    Click("Edit.Undo");
    EXPECT_EQ(Tree(), before) << "as one step";
    Click("Edit.Redo");
    Restart();
    m_host->Dialogs().AddAnswer(RestoreChoice("penguins.csv", "data set"));
    Click("Edit.Restore");
    EXPECT_EQ(Tree(), "Studies(Penguins(Data Sets(penguins.csv), Analyses(Summary of penguins.csv by species)))");
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesApplication, AStudyIsSentAndOpenedTwice) {
    Prepare();
    Start();
    Choose("Penguins");
    const std::string path = m_folder.Path("sent.study");
    m_host->Dialogs().AddAnswer(m_folder.Path("sent")); // the ending is added
    Click("File.Export");
    EXPECT_EQ(Status(), "Penguins has been exported to " + path);
    m_host->Dialogs().AddAnswer(m_folder.Path("sent"));
    Click("File.Export");
    EXPECT_EQ(m_host->Dialogs().TakeUnanswered().size(), 1U) << "it isn't replaced without a question";
    const auto open = [&](const std::string& answer) {
        if (!answer.empty())
            m_host->Dialogs().AddAnswer(answer);
        Take("dropfile " + path);
    };
    const std::string one = "(Data Sets(penguins.csv), Analyses(Summary of penguins.csv by species))";
    Click("File.NewStudy");
    Type("New");
    open("");
    EXPECT_EQ(Selected(), "New") << "the question wasn't answered";
    open("Show the Study");
    EXPECT_EQ(Selected(), "Penguins");
    open("Open as Another");
    EXPECT_EQ(Status(), "“Penguins 2” has been opened from sent.study");
    EXPECT_EQ(Selected(), "Penguins 2");
    EXPECT_EQ(Tree(), "Studies(Penguins" + one + ", New(Data Sets, Analyses), Penguins 2" + one + ")");
    Click("Edit.Undo");
    EXPECT_EQ(Find("Penguins 2"), nullptr);
    EXPECT_EQ(Failures(), "");
    std::ofstream(path) << "no study";
    open("");
    EXPECT_EQ(Failures(), "“sent.study” isn't a study, or is damaged. Ask for it to be sent again.");
}

TEST_F(StudiesWindows, FilesAreShownOnceWithoutAStudy) {
    Start();
    m_host->Dialogs().AddAnswer(STUDIES_APP "/Data/penguins.csv");
    Click("File.Open");
    EXPECT_EQ(Status(), "penguins.csv: 344 rows, 7 columns");
    m_host->Do([&] { m_host->Tabs()->ChooseTab(1); });
    EXPECT_EQ(Tree(), "Library(gentoo.csv, penguins.csv)");
    Open("gentoo.csv");
    Open("penguins.csv");
    EXPECT_EQ(Captions(), "penguins.csv|gentoo.csv");
    Click("Analysis.Histogram"); // of the file that was chosen last
    EXPECT_EQ(Captions(), "penguins.csv|gentoo.csv|Histogram of penguins.csv: bill length");
    EXPECT_FALSE(IsOffered("File.Save")) << "there is no study to keep it in";
    // A result that took time is worth one; two of the same file go into the same.
    const auto file = Windows()->Item(1)->BusinessContext().As<studies::DataSetContext>();
    for (const std::string column : {"bill_length_mm", "body_mass_g"}) {
        if (column == "body_mass_g") {
            Open("penguins.csv");
            Click("Analysis.Histogram");
        }
        const auto document = Windows()->Item(Windows()->Count())->BusinessContext().As<studies::AnalysisDocument>();
        studies::AnalysisSettings settings = document->Settings();
        settings.columnX = column;
        m_host->Do([&] { document->SetSettings(settings); });
        m_host->Do([&] { document->SetResult({}, settings, studies::NumbersIn(file->Shared(), column)); });
        EXPECT_TRUE(IsOffered("File.Save"));
        Click("File.Save");
        EXPECT_FALSE(document->IsUnsaved());
    }
    m_host->Do([&] { m_host->Tabs()->ChooseTab(0); });
    EXPECT_EQ(Tree(), "Studies(Study 1(Data Sets(penguins.csv), Analyses(Histogram of penguins.csv: bill length, "
                      "Histogram of penguins.csv: body mass)))");
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesWindows, LibraryFilesAreImported) {
    Start();
    m_host->Do([&] { m_host->Tabs()->ChooseTab(1); });
    Choose("gentoo.csv");
    Click("Context.LibraryFile.Import");
    EXPECT_EQ(Status(), "gentoo.csv imported into “Study 1”: 124 rows, 6 columns");
    EXPECT_EQ(Windows()->Count(), 1) << "the data are open";
    Click("Context.LibraryFile.Import");
    m_host->Do([&] { m_host->Tabs()->ChooseTab(0); });
    EXPECT_EQ(Tree(), "Studies(Study 1(Data Sets(gentoo.csv), Analyses), Study 2(Data Sets(gentoo.csv), Analyses))");
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesWindows, ResultsThatTookTimeAreUnsavedUntilTheyAreSaved) {
    Prepare();
    Start();
    Choose("penguins.csv");
    Click("Analysis.Histogram");
    const Ref<IService> service = CorvaneMain::QueryService(FindService("Studies"));
    Double order = 0;
    EXPECT_EQ(service->UnsavedItems(order)->Count(), 0) << "as it came, it is one click away";
    const auto document = Windows()->Item(1)->BusinessContext().As<studies::AnalysisDocument>();
    studies::AnalysisSettings settings = document->Settings();
    settings.columnX = "body_mass_g";
    m_host->Do([&] { document->SetSettings(settings); });
    EXPECT_EQ(service->UnsavedItems(order)->Count(), 0) << "another click away";
    EXPECT_TRUE(IsOffered("File.Save"));
    const auto values = studies::NumbersIn(document->Data()->Shared(), "body_mass_g");
    m_host->Do([&] { document->SetResult({342, 4201.8, 43, {4117, 4286}}, settings, values); });
    const Ref<Dictionary> unsaved = service->UnsavedItems(order);
    ASSERT_EQ(unsaved->Keys(), (std::vector<std::string>{"Histogram of penguins.csv: body mass"}));
    m_host->Do([&] { service->Save(ToObject(unsaved->Item(unsaved->Keys()[0]))); });
    EXPECT_EQ(service->UnsavedItems(order)->Count(), 0);
    EXPECT_NE(Find("Histogram of penguins.csv: body mass"), nullptr);

    settings.bins = 7;
    m_host->Do([&] { document->SetSettings(settings); });
    m_host->Do([&] { document->Save(); });
    Click("Edit.Undo");
    EXPECT_EQ(document->Settings().bins, 0) << "the open window follows";
    EXPECT_FALSE(document->IsChanged());
    ASSERT_TRUE(document->Result()) << "with its result";

    // In two windows of Studies: what is saved second is kept beside what is saved first.
    {
        studies::Store other(studies::Store::DefaultPath());
        settings.bins = 9;
        other.ChangeAnalysis(document->Number(), "Theirs", settings);
    }
    settings.bins = 8;
    m_host->Do([&] { document->SetSettings(settings); });
    m_host->Timers().TickAll();
    EXPECT_EQ(document->Settings().bins, 8);
    m_host->Do([&] { document->Save(); });
    EXPECT_NE(Find("Theirs"), nullptr);
    EXPECT_NE(Find(document->Name()), nullptr);

    // Deleted under a window that would lose a result, it is a new one.
    m_host->Do([&] { document->SetResult({342, 4201.8, 43, {4117, 4286}}, settings, values); });
    m_host->Do([&] {
        document->Data()->Space()->GetStore().Delete({{'a', document->Number()}});
        document->Data()->Space()->Tell("");
    });
    EXPECT_EQ(Captions(), "Histogram of penguins.csv: body mass");
    EXPECT_EQ(document->Number(), 0);
    m_host->Do([&] { document->Save(); });
    Restart();
    Open("Histogram of penguins.csv: body mass");
    EXPECT_EQ(Captions(), "Histogram of penguins.csv: body mass");
    EXPECT_TRUE(Windows()->Item(1)->BusinessContext().As<studies::AnalysisDocument>()->Result());
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesWindows, AnAnalysisOfALargeFileIsSavedByAJob) {
    Start();
    m_host->Dialogs().AddAnswer(LargeFile());
    Click("File.Open");
    m_host->RunJobs();
    Click("Analysis.Histogram");
    const auto document = Windows()->Item(Windows()->Count())->BusinessContext().As<studies::AnalysisDocument>();
    const auto values = studies::NumbersIn(document->Data()->Shared(), "a");
    m_host->Do([&] { document->SetResult({}, document->Settings(), values); });
    for (const bool isCancelled : {true, false}) {
        m_host->Do([&] { document->Save(); });
        m_host->Do([&] { document->Save(); }); // once more, while it is on its way
        EXPECT_EQ(Tree(), "Studies");
        EXPECT_TRUE(document->IsUnsaved());
        if (isCancelled)
            m_host->Jobs()->Active().front()->Cancel();
        m_host->RunJobs();
    }
    EXPECT_FALSE(document->IsUnsaved());
    EXPECT_EQ(Tree(), "Studies(Study 1(Data Sets(big.csv), Analyses(Histogram of big.csv: a)))");
    EXPECT_EQ(Failures(), "");
}

#endif

TEST_F(StudiesApplication, LargeDataAreReadAndImportedByJobs) {
    Start();
    m_host->Do([&] { CallByName(FindService("Studies"), "ImportFile", LargeFile()); });
    EXPECT_EQ(Status(), "0 studies");
    EXPECT_EQ(m_host->Jobs()->Active().front()->Title(), "Read big.csv");
    m_host->RunJobs();
    EXPECT_EQ(Status(), "big.csv imported into “Study 1”: 27,000 rows, 20 columns");
    EXPECT_EQ(Selected(), "big.csv");
    m_host->Timers().TickAll();
    EXPECT_EQ(Status(), "big.csv imported into “Study 1”: 27,000 rows, 20 columns") << "no one else has changed it";

    Click("Analysis.Histogram"); // reads them first
    Click("File.NewStudy");      // and others can be written meanwhile
    m_host->RunJobs();
    EXPECT_NE(Tree().find("Study 2"), std::string::npos) << Tree();
    Click("Edit.Undo");
    Click("Edit.Undo");
    EXPECT_EQ(Tree().find("big.csv"), std::string::npos) << Tree();
    std::string ended;
    for (const auto& job : m_host->Jobs()->Ended())
        ended += job->Title() + "|";
    EXPECT_EQ(ended, "Read big.csv|Import big.csv|Read big.csv|");
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesApplication, NamesThatAreRefusedLeaveStudyAndFileAsTheyWere) {
    Start();
    Click("File.NewStudy");
    Type("One");
    Click("File.NewStudy");
    Type("Two");
    const struct {
        const char* name;
        const char* message;
    } cases[] = {
        {"one", "Rename\none already exists"},
        {"Studies", "Rename\nStudies already exists"}, // the root's name, which the store doesn't know
    };
    for (const auto& testCase : cases) {
        Click("Edit.Rename");
        Type(testCase.name);
        EXPECT_EQ(LastMessage(), testCase.message);
        EXPECT_EQ(Tree(), "Studies(One(Data Sets, Analyses), Two(Data Sets, Analyses))");
    }
    // A host with an editor asks while the name is typed.
    EXPECT_EQ(NameProblem(""), "A study needs a name.");
    EXPECT_EQ(NameProblem("one"), "There is a study “one” already.");
    EXPECT_EQ(NameProblem("Studies"), "The explorer has an entry “Studies” already.");
    EXPECT_EQ(NameProblem("Two") + NameProblem("two") + NameProblem("Three"), "");
    std::string longest;
    for (int i = 0; i < 120; ++i)
        longest += "\u00C4";
    EXPECT_EQ(NameProblem(longest), "");
    EXPECT_EQ(NameProblem(longest + "x"), "A study's name has at most 120 letters.");
    EXPECT_EQ(Failures(), "");
    EXPECT_TRUE(m_host->Recorded().log.empty());
    Click("Edit.Undo");
    EXPECT_EQ(Tree(), "Studies(One(Data Sets, Analyses), Study 1(Data Sets, Analyses))")
        << "what was refused isn't a step";
}

TEST_F(StudiesApplication, ADamagedFileLeavesTheRestOfTheApplicationWorking) {
    std::filesystem::create_directories(m_folder.Path("corvane/studies"));
    std::ofstream(studies::Store::DefaultPath()) << std::string(4000, 'x');
    Start();
    EXPECT_NE(LastMessage().find("is damaged"), std::string::npos);
    EXPECT_FALSE(IsOffered("File.NewStudy"));
    Click("View.Refresh");
    m_host->Do([&] { m_host->Tabs()->ChooseTab(1); });
    Choose("gentoo.csv");
    EXPECT_TRUE(IsOffered("Analysis.Summary"));
    EXPECT_EQ(Failures(), "");
}

} // namespace
