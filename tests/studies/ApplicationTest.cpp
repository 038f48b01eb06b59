// The assembled application.
#include "tests/studies/StudiesApplication.h"

namespace {

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
