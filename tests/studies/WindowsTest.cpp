// The windows of the assembled application, which its pages are needed for.
#include "tests/studies/StudiesApplication.h"

#ifdef STUDIES_WITH_PAGES

namespace {

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

} // namespace

#endif
