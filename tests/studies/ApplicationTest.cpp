// The assembled application on the control models, driven as a person would.
#include "Csv.h"
#include "Store.h"
#include "Workspace.h"
#include "corvane/base/Automation.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/ModelHost.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

using namespace corvane;
using corvane::inspect::ModelHost;

namespace {

// A file dialog that answers what it has been told.
class Dialog final : public Automation<Dialog> {
public:
    std::string sPath;
    std::string sChoice;
    std::string ShowOpen(const std::string& /*sTitle*/, const std::string& /*sFilter*/,
                         const std::string& /*sFolder*/) {
        return sPath;
    }
    std::string ShowChoice(const std::string& /*sTitle*/, const std::string& sChoices) {
        return sChoices.find(sChoice) == std::string::npos ? "" : sChoice;
    }

    static constexpr auto Members =
        MemberTable(Method("ShowOpen", &Dialog::ShowOpen), Method("ShowChoice", &Dialog::ShowChoice));
};

void AppendTree(std::string& sText, const Node& oNode) {
    sText += oNode.Text();
    if (oNode.Children().empty())
        return;
    sText += "(";
    for (const Node* pChild : oNode.Children()) {
        if (pChild != oNode.Children().front())
            sText += ", ";
        AppendTree(sText, *pChild);
    }
    sText += ")";
}

class StudiesApplication : public testing::Test {
protected:
    StudiesApplication() { ::setenv("XDG_DATA_HOME", m_oFolder.Path().c_str(), 1); }

    void Start() {
        m_pHost = std::make_unique<ModelHost>(inspect::HostOptions{STUDIES_APP, false, nullptr});
        EXPECT_TRUE(m_pHost->Start());
        EXPECT_TRUE(m_pHost->Recorded().aLog.empty());
    }
    // A study with the penguins and a summary, in the file that the application will open.
    static void Prepare() {
        studies::Store oStore(studies::Store::DefaultPath());
        studies::AnalysisSettings oSettings;
        oSettings.sGroupColumn = "species";
        const studies::Id nDataSet =
            oStore.ImportDataSet(oStore.CreateStudy("Penguins"), "penguins.csv", STUDIES_DATA "/penguins.csv",
                                 studies::ReadCsvFile(STUDIES_DATA "/penguins.csv").oTable);
        oStore.AddAnalysis(nDataSet, oSettings.Title("penguins.csv"), oSettings);
    }
    void Import(const std::string& sFile) {
        m_pHost->Do([&] {
            const Variant aPath[] = {std::string(STUDIES_DATA "/") + sFile};
            CorvaneMain::Framework()->ServiceManager()->Services()->Item("Studies")->Invoke("ImportFile", aPath);
        });
    }
    // A host that can ask.
    Ref<Dialog> StartWithDialog() {
        auto oDialog = New<Dialog>();
        m_pHost = std::make_unique<ModelHost>(inspect::HostOptions{STUDIES_APP, false, nullptr});
        m_pHost->MainForm()->AddMember("CommonDialog", oDialog);
        EXPECT_TRUE(m_pHost->Start());
        return oDialog;
    }
    void Restart() {
        m_pHost->Exit();
        m_pHost.reset();
        Start();
    }

    void Click(const std::string& sTool) {
        m_pHost->Do([&] { m_pHost->Bar()->Click(m_pHost->Bar()->Tools()->Item(sTool)); });
    }
    // The first node of that text in the tree that is shown.
    void Choose(const std::string& sText) {
        const Ref<Node> oNode = Find(sText);
        ASSERT_TRUE(oNode) << sText;
        m_pHost->Do([&] { m_pHost->ActiveTree()->ClickNode(oNode); });
    }
    void Open(const std::string& sText) {
        Choose(sText);
        m_pHost->Do([&] { m_pHost->ActiveTree()->DblClick.Raise(); });
    }
    void Type(const std::string& sName) {
        m_pHost->Do([&] { m_pHost->ActiveTree()->CommitLabelEdit(sName); });
    }

    [[nodiscard]] Ref<Node> Find(const std::string& sText) const {
        std::vector<Node*> aNodes = m_pHost->ActiveTree()->GetNodes()->Roots();
        for (std::size_t i = 0; i < aNodes.size(); ++i) {
            if (aNodes[i]->Text() == sText)
                return Ref<Node>(aNodes[i]);
            aNodes.insert(aNodes.end(), aNodes[i]->Children().begin(), aNodes[i]->Children().end());
        }
        return nullptr;
    }
    [[nodiscard]] std::string Tree() const {
        std::string sText;
        for (const Node* pRoot : m_pHost->ActiveTree()->GetNodes()->Roots())
            AppendTree(sText, *pRoot);
        return sText;
    }
    [[nodiscard]] std::string Status() const {
        return m_pHost->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
    }
    [[nodiscard]] bool IsOffered(const std::string& sTool) const {
        const Ref<Tool> oTool = m_pHost->Bar()->Tools()->Item(sTool);
        return oTool->Visible() && oTool->Enabled();
    }
    [[nodiscard]] std::string Entries(const std::string& sBand) const {
        std::string sText;
        for (const Ref<Tool>& oTool : m_pHost->Bar()->Bands()->Item(sBand)->Tools()->All())
            sText += (sText.empty() ? "" : "|") + (oTool->Name() == "Separator" ? "-" : oTool->Caption()) +
                     (oTool->IsDefaultItem() ? "*" : "");
        return sText;
    }
    [[nodiscard]] std::string LastMessage() const {
        const auto& aMessages = m_pHost->Recorded().aMessages;
        return aMessages.empty() ? "" : aMessages.back().sTitle + "\n" + aMessages.back().sText;
    }
    [[nodiscard]] std::string Failures() const {
        return m_pHost->FirstFailure() ? m_pHost->FirstFailure()->Description : "";
    }

    corvane::test::TemporaryFolder m_oFolder;
    std::unique_ptr<ModelHost> m_pHost;
};

TEST_F(StudiesApplication, MenusComeFromTheDefinitions) {
    Start();
    EXPECT_EQ(Entries("Main"), "&File|&Edit|&View|&Data|&Analysis|&Window|&Help");
    EXPECT_EQ(Entries("File"), "&New Study|&Open Data File\u2026|&Import\u2026|&Save Analysis|&Export\u2026|-|&Print "
                               "Window\u2026|Print A&ll\u2026|-|E&xit");
    EXPECT_EQ(Entries("Edit"), "&Undo|&Redo|-|&Copy|-|Re&name|Du&plicate|&Delete");
    EXPECT_EQ(Entries("View"), "&Explorer|&Status Bar|-|&Refresh|Toolbars");
    EXPECT_EQ(Entries("Analysis"), "&Summary|&Histogram|Scatter &Plot|&Compare Groups|&Bootstrap|-|Rep&ort");
    EXPECT_EQ(Entries("Help"), "About Studies");
    EXPECT_EQ(Entries("Toolbars.Standard"), "New|Open|Import|Save|Undo|Redo|Delete");
    EXPECT_EQ(Entries("Context.Study"), "&Properties\u2026*|Rep&ort|&Import\u2026|-|Re&name|D&uplicate|&Delete");
    EXPECT_EQ(Entries("Context.LibraryFile"), "&Open*|-|&Summary|&Histogram|Scatter &Plot|&Compare Groups|&Bootstrap|"
                                              "&Import into Study");
    EXPECT_EQ(m_pHost->MainForm()->Caption(), "Studies");
    EXPECT_EQ(Status(), "0 studies");
    EXPECT_FALSE(IsOffered("Analysis.Summary")) << "nothing is chosen";
}

TEST_F(StudiesApplication, TheDialogOfTheHostIsAsked) {
    const Ref<Dialog> oDialog = StartWithDialog();
    Click("File.Open");
    EXPECT_EQ(Status(), "0 studies") << "an empty answer is a change of mind";
    oDialog->sPath = m_oFolder.Path("bad.csv");
    std::ofstream(oDialog->sPath) << "a,b\n1,2\n3\n";
    Click("File.Open");
    EXPECT_EQ(Failures(), "bad.csv: Line 3: 1 field where the first row has 2.\nCorrect the file, or bring it into a "
                          "study by File > Import, which can leave out what can't be read.");
}

TEST_F(StudiesApplication, StudiesAreMadeRenamedCopiedDeletedAndUndone) {
    Prepare();
    Start();
    const std::string sFull = "Penguins(Data Sets(penguins.csv), Analyses(Summary of penguins.csv by species))";
    EXPECT_EQ(Tree(), "Studies(" + sFull + ")");
    Click("File.NewStudy");
    Type("Others"); // the label is open for the name
    EXPECT_EQ(Status(), "“Study 1” is now “Others”");
    Import("gentoo.csv");
    EXPECT_EQ(Status(), "gentoo.csv imported into “Others”: 124 rows, 6 columns");
    EXPECT_EQ(m_pHost->ActiveTree()->SelectedItem()->Text(), "gentoo.csv") << "what comes next is about it";
    const std::string sOthers = "Others(Data Sets(gentoo.csv), Analyses)";
    EXPECT_EQ(Tree(), "Studies(" + sFull + ", " + sOthers + ")");
    Choose("Penguins"); // what was imported has the commands; the Qt host would have given them back
    Choose("Others");
    Click("Edit.Delete");

    Choose("Penguins");
    Click("Edit.Duplicate");
    EXPECT_EQ(Tree(), "Studies(" + sFull + ", Copy of " + sFull + ")");
    EXPECT_EQ(m_pHost->ActiveTree()->SelectedItem()->Text(), "Copy of Penguins");
    Choose("Penguins");
    Click("Edit.Delete");
    EXPECT_EQ(Tree(), "Studies(Copy of " + sFull + ")");
    EXPECT_FALSE(IsOffered("Edit.Delete")) << "nothing is chosen any more";
    EXPECT_EQ(Entries("Edit").substr(0, 18), "&Undo Delete Study");

    Click("Edit.Undo");
    EXPECT_EQ(Tree(), "Studies(" + sFull + ", Copy of " + sFull + ")");
    Click("Edit.Redo");
    EXPECT_EQ(Tree(), "Studies(Copy of " + sFull + ")");
    Click("Edit.Undo");
    EXPECT_TRUE(m_pHost->Bar()->Tools()->Item("Edit.Delete")->Visible());
    Choose("penguins.csv");
    EXPECT_TRUE(IsOffered("Analysis.Histogram"));
    Click("Edit.Delete");
    EXPECT_EQ(Tree(), "Studies(Penguins(Data Sets, Analyses), Copy of " + sFull + ")");
    EXPECT_FALSE(IsOffered("Analysis.Histogram"));
    EXPECT_EQ(Failures(), "");

    Restart();
    EXPECT_EQ(Tree(), "Studies(Penguins(Data Sets, Analyses), Copy of " + sFull + ")");
    EXPECT_EQ(Status(), "2 studies");
}

#ifdef STUDIES_WITH_PAGES

class StudiesWindows : public StudiesApplication {
protected:
    [[nodiscard]] static Ref<KeyedCollection<Ref<Window>>> Windows() {
        return CorvaneMain::Framework()->WindowManager()->Windows();
    }
    [[nodiscard]] static std::string Captions() {
        std::string sText;
        for (const Ref<Window>& oWindow : *Windows())
            sText += (sText.empty() ? "" : "|") + oWindow->Caption();
        return sText;
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
    std::vector<std::pair<std::string, std::string>> aOpen;
    for (const Ref<Window>& oWindow : *Windows())
        aOpen.emplace_back(oWindow->WindowDef()->Name(), oWindow->Key());
    const std::string sCaptions = Captions();
    Restart();
    const auto fnRestore = [&](const std::string& sName, const std::string& sKey) {
        const Variant aArguments[] = {sName, sKey};
        return ToBoolean(CorvaneMain::Framework()->ServiceManager()->Services()->Item("Studies")->Invoke(
            "RestoreWindow", aArguments));
    };
    for (const auto& [sName, sKey] : aOpen)
        EXPECT_TRUE(fnRestore(sName, sKey)) << sKey;
    EXPECT_EQ(Captions(), sCaptions);
    for (const char* sKey : {"data 99", "analysis 99", "report 99", "data ", "data x", "file 1", ""})
        EXPECT_FALSE(fnRestore("Data", sKey)) << sKey;
    EXPECT_EQ(Captions(), sCaptions);
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesApplication, AChosenItemStaysChosenWhenTheExplorerIsMadeAnew) {
    Prepare();
    Start();
    Choose("Summary of penguins.csv by species");
    Click("View.Refresh");
    EXPECT_EQ(m_pHost->ActiveTree()->SelectedItem()->Text(), "Summary of penguins.csv by species");
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesWindows, FilesAreShownOnceWithoutAStudy) {
    Start();
    Click("File.Open");
    EXPECT_EQ(Status(), "penguins.csv: 344 rows, 7 columns");
    m_pHost->Do([&] { m_pHost->Tabs()->ChooseTab(1); });
    EXPECT_EQ(Tree(), "Library(gentoo.csv, penguins.csv)");
    Open("gentoo.csv");
    Open("penguins.csv");
    EXPECT_EQ(Captions(), "penguins.csv|gentoo.csv");
    Click("Analysis.Histogram"); // of the file that was chosen last
    EXPECT_EQ(Captions(), "penguins.csv|gentoo.csv|Histogram of penguins.csv: bill length");
    EXPECT_FALSE(IsOffered("File.Save")) << "there is no study to keep it in";
    m_pHost->Do([&] { m_pHost->Tabs()->ChooseTab(0); });
    EXPECT_EQ(Tree(), "Studies");
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesWindows, ChangedAnalysesAreUnsavedUntilTheyAreSaved) {
    Prepare();
    Start();
    Choose("penguins.csv");
    Click("Analysis.Histogram");
    const Ref<IService> oService =
        CorvaneMain::QueryService(CorvaneMain::Framework()->ServiceManager()->Services()->Item("Studies"));
    Double dblOrder = 0;
    EXPECT_EQ(oService->UnsavedItems(dblOrder)->Count(), 0) << "as it came, it is one click away";
    const auto oDocument = Windows()->Item(1)->BusinessContext().As<studies::AnalysisDocument>();
    studies::AnalysisSettings oSettings = oDocument->Settings();
    oSettings.sColumnX = "body_mass_g";
    m_pHost->Do([&] { oDocument->SetSettings(oSettings); });
    const Ref<Dictionary> dctUnsaved = oService->UnsavedItems(dblOrder);
    ASSERT_EQ(dctUnsaved->Keys(), (std::vector<std::string>{"Histogram of penguins.csv: body mass"}));
    m_pHost->Do([&] { oService->Save(ToObject(dctUnsaved->Item(dctUnsaved->Keys()[0]))); });
    EXPECT_EQ(oService->UnsavedItems(dblOrder)->Count(), 0);
    EXPECT_NE(Find("Histogram of penguins.csv: body mass"), nullptr);

    oSettings.nBins = 7;
    m_pHost->Do([&] { oDocument->SetSettings(oSettings); });
    m_pHost->Do([&] { oDocument->Save(); });
    Click("Edit.Undo");
    EXPECT_EQ(oDocument->Settings().nBins, 0) << "the open window follows";
    EXPECT_FALSE(oDocument->IsChanged());
    Restart();
    Open("Histogram of penguins.csv: body mass");
    EXPECT_EQ(Captions(), "Histogram of penguins.csv: body mass");
    EXPECT_EQ(Failures(), "");
}

#endif

TEST_F(StudiesApplication, NamesThatAreRefusedLeaveStudyAndFileAsTheyWere) {
    Start();
    Click("File.NewStudy");
    Type("One");
    Click("File.NewStudy");
    Type("Two");
    const struct {
        const char* sName;
        const char* sMessage;
    } aCases[] = {
        {"one", "Rename\none already exists"},
        {"Studies", "Rename\nStudies already exists"}, // the root's name, which the store doesn't know
        {"", "Rename\nStudies already exists"},        // told as a failure instead of a message
    };
    for (const auto& oCase : aCases) {
        Click("Edit.Rename");
        Type(oCase.sName);
        EXPECT_EQ(LastMessage(), oCase.sMessage);
        EXPECT_EQ(Tree(), "Studies(One(Data Sets, Analyses), Two(Data Sets, Analyses))");
    }
    EXPECT_EQ(m_pHost->Recorded().aLog.back().oFailure.Description, "A study needs a name.");
    Click("Edit.Undo");
    EXPECT_EQ(Tree(), "Studies(One(Data Sets, Analyses), Study 1(Data Sets, Analyses))")
        << "what was refused is no step";
}

TEST_F(StudiesApplication, LibraryFilesAreImported) {
    Start();
    m_pHost->Do([&] { m_pHost->Tabs()->ChooseTab(1); });
    Choose("gentoo.csv");
    Click("Context.LibraryFile.Import");
    EXPECT_EQ(Status(), "gentoo.csv imported into “Study 1”: 124 rows, 6 columns");
    Click("Context.LibraryFile.Import");
    m_pHost->Do([&] { m_pHost->Tabs()->ChooseTab(0); });
    EXPECT_EQ(Tree(), "Studies(Study 1(Data Sets(gentoo.csv), Analyses), Study 2(Data Sets(gentoo.csv), Analyses))");
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesApplication, ADamagedFileLeavesTheRestOfTheApplicationWorking) {
    std::filesystem::create_directories(m_oFolder.Path("corvane/studies"));
    std::ofstream(studies::Store::DefaultPath()) << std::string(4000, 'x');
    Start();
    EXPECT_NE(LastMessage().find("is damaged"), std::string::npos);
    EXPECT_FALSE(IsOffered("File.NewStudy"));
    Click("View.Refresh");
    m_pHost->Do([&] { m_pHost->Tabs()->ChooseTab(1); });
    Choose("gentoo.csv");
    EXPECT_TRUE(IsOffered("Analysis.Summary"));
    EXPECT_EQ(Failures(), "");
}

} // namespace
