// The assembled application on the control models, driven as a person would.
#include "Store.h"
#include "TemporaryFolder.h"
#include "cli/inspect/ModelHost.h"
#include "corvane/base/Automation.h"

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

    TemporaryFolder m_oFolder;
    std::unique_ptr<ModelHost> m_pHost;
};

TEST_F(StudiesApplication, MenusComeFromTheDefinitions) {
    Start();
    EXPECT_EQ(Entries("Main"), "&File|&Edit|&View|&Data|&Window|&Help");
    EXPECT_EQ(Entries("File"), "&New Study|&Open Data File\u2026|&Import\u2026|-|E&xit");
    EXPECT_EQ(Entries("Edit"), "&Undo|&Redo|-|Re&name|Du&plicate|&Delete");
    EXPECT_EQ(Entries("View"), "&Explorer|&Status Bar|-|&Refresh|Toolbars");
    EXPECT_EQ(Entries("Help"), "About Studies");
    EXPECT_EQ(Entries("Toolbars.Standard"), "New|Open|Import|Undo|Redo|Delete");
    EXPECT_EQ(Entries("Context.Study"), "&Properties*|&Import\u2026|-|Re&name|D&uplicate|&Delete");
    EXPECT_EQ(Entries("Context.LibraryFile"), "&Open*|&Import into Study");
    EXPECT_EQ(m_pHost->MainForm()->Caption(), "Studies");
    EXPECT_EQ(Status(), "0 studies");
}

TEST_F(StudiesApplication, DataAreOpenedAndSummarized) {
    Start();
    EXPECT_FALSE(IsOffered("Data.Summary"));
    Click("File.Open");
    EXPECT_EQ(Status(), "penguins.csv: 344 rows, 7 columns");
    Click("Data.Summary");
    EXPECT_EQ(Status(), "Summary of penguins.csv: bill_length_mm 43.92 \u00b1 5.46, bill_depth_mm 17.15 \u00b1 1.975, "
                        "flipper_length_mm 200.9 \u00b1 14.06, body_mass_g 4202 \u00b1 802");
    EXPECT_EQ(LastMessage().substr(0, 31), "Summary of penguins.csv\nNumbers");
    Click("Data.SummaryByGroup");
    EXPECT_EQ(Status(), "Summary of penguins.csv by species: 3 groups");
}

TEST_F(StudiesApplication, TheDialogOfTheHostIsAsked) {
    const Ref<Dialog> oDialog = StartWithDialog();
    Click("File.Open");
    EXPECT_EQ(Status(), "0 studies") << "an empty answer is a change of mind";
    oDialog->sPath = m_oFolder.Path("bad.csv");
    std::ofstream(oDialog->sPath) << "a,b\n1,2\n3\n";
    Click("File.Open");
    EXPECT_EQ(Failures(), "bad.csv: Line 3: 1 field where the first row has 2.");
    EXPECT_FALSE(IsOffered("Data.Summary"));
    oDialog->sPath = std::string(STUDIES_APP) + "/Data/penguins.csv";
    oDialog->sChoice = "island";
    Click("File.Open");
    Click("Data.SummaryByGroup");
    EXPECT_EQ(Status(), "Summary of penguins.csv by island: 3 groups");
}

TEST_F(StudiesApplication, StudiesAreMadeRenamedCopiedDeletedAndUndone) {
    Start();
    EXPECT_EQ(Tree(), "Studies");
    Click("File.NewStudy");
    Type("Penguins"); // the label is open for the name
    EXPECT_EQ(Tree(), "Studies(Penguins(Data sets, Analyses))");
    EXPECT_EQ(Status(), "\"Study 1\" is now \"Penguins\"");
    Click("File.Import");
    Choose("penguins.csv");
    Click("Context.DataSet.SummaryByGroup");
    const std::string sFull = "Penguins(Data sets(penguins.csv), Analyses(Summary of penguins.csv by species))";
    EXPECT_EQ(Tree(), "Studies(" + sFull + ")");

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
    Click("Edit.Delete");
    EXPECT_EQ(Tree(), "Studies(Penguins(Data sets, Analyses), Copy of " + sFull + ")");
    EXPECT_EQ(Failures(), "");

    Restart();
    EXPECT_EQ(Tree(), "Studies(Penguins(Data sets, Analyses), Copy of " + sFull + ")");
    EXPECT_EQ(Status(), "2 studies");
    Open("Summary of penguins.csv by species");
    EXPECT_EQ(LastMessage().substr(0, 61), "Summary of penguins.csv by species\nspecies: Adelie (152 rows)");
    Open("penguins.csv");
    EXPECT_EQ(Status(), "penguins.csv: 344 rows, 7 columns");
}

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
        EXPECT_EQ(Tree(), "Studies(One(Data sets, Analyses), Two(Data sets, Analyses))");
    }
    EXPECT_EQ(m_pHost->Recorded().aLog.back().oFailure.Description, "A study needs a name.");
    Click("Edit.Undo");
    EXPECT_EQ(Tree(), "Studies(One(Data sets, Analyses), Study 1(Data sets, Analyses))")
        << "what was refused is no step";
}

// An item that is added takes over the tools of its kind, also while another is active.
TEST_F(StudiesApplication, CommandsGoToTheChosenStudyAfterAnotherHasBeenAdded) {
    Start();
    Click("File.NewStudy");
    Type("One");
    m_pHost->Do([&] { m_pHost->Tabs()->ChooseTab(1); }); // from here a new study isn't chosen
    Click("File.NewStudy");
    Click("Edit.Delete");
    m_pHost->Do([&] { m_pHost->Tabs()->ChooseTab(0); });
    EXPECT_EQ(Tree(), "Studies(Study 1(Data sets, Analyses))");
}

TEST_F(StudiesApplication, LibraryFilesAreOpenedAndImported) {
    Start();
    m_pHost->Do([&] { m_pHost->Tabs()->ChooseTab(1); });
    EXPECT_EQ(Tree(), "Library(gentoo.csv, penguins.csv)");
    Open("gentoo.csv");
    EXPECT_EQ(Status(), "gentoo.csv: 124 rows, 6 columns");
    Click("Context.LibraryFile.Import");
    EXPECT_EQ(Status(), "gentoo.csv imported into \"Study 1\": 124 rows, 6 columns");
    m_pHost->Do([&] { m_pHost->Tabs()->ChooseTab(0); });
    EXPECT_EQ(Tree(), "Studies(Study 1(Data sets(gentoo.csv), Analyses))");
    EXPECT_EQ(Failures(), "");
}

TEST_F(StudiesApplication, ADamagedFileLeavesTheRestOfTheApplicationWorking) {
    std::filesystem::create_directories(m_oFolder.Path("corvane/studies"));
    std::ofstream(studies::Store::DefaultPath()) << std::string(4000, 'x');
    Start();
    EXPECT_NE(LastMessage().find("is damaged"), std::string::npos);
    EXPECT_FALSE(IsOffered("File.NewStudy"));
    Click("View.Refresh");
    Click("File.Open");
    EXPECT_EQ(Status(), "penguins.csv: 344 rows, 7 columns");
    EXPECT_EQ(Failures(), "");
}

} // namespace
