// Analyses in windows: each shows its chart, and its settings are the fields of its form, changed through the document.
#pragma once

#include "Chart.h"
#include "ChartWidget.h"
#include "Choices.h"
#include "ComparisonText.h"
#include "Errors.h"
#include "Files.h"
#include "QtText.h"
#include "Report.h"
#include "Windows.h"
#include "corvane/Jobs.h"
#include "desktop/QtPage.h"
#include "desktop/WholeFile.h"

#include <QClipboard>
#include <QGuiApplication>
#include <functional>

namespace studies {

// What they have in common. Not each form has all the fields.
class AnalysisPage : public corvane::desktop::AnyQtPage {
protected:
    [[nodiscard]] virtual AnalysisKind Kind() const = 0;
    [[nodiscard]] virtual ChartScene Scene() const = 0;
    // What was found, in sentences.
    [[nodiscard]] virtual std::string Findings(const ChartScene& scene) const = 0;
    virtual void OnExport() { // the picture
        ExportAs(Translated("PNG picture") + " (*.png)|*.png|" + Translated("SVG drawing") + " (*.svg)|*.svg",
                 Document()->Name() + ".png",
                 [this](const std::string& path) { DrawingOf(Scene(), exportedSize).Save(path); });
    }
    void OnCopy() { // the picture
        QGuiApplication::clipboard()->setImage(DrawingOf(Scene(), exportedSize).Picture());
        corvane::SetStatus(Translated("The chart has been copied"));
    }
    // Shows settings and figures as they are now.
    virtual void ShowAnalysis() {
        if (!m_chart)
            return; // it has never been in front
        const ChartScene scene = Scene();
        m_result = Findings(scene);
        m_chart->SetScene(scene);
        OwnForm()->Refresh();
    }
    QWidget* FirstFocus() override { return m_chart; }

    [[nodiscard]] corvane::Ref<AnalysisDocument> Document() const { return AboutAs<AnalysisDocument>(); }
    [[nodiscard]] const AnalysisSettings& Settings() const { return Document()->Settings(); }
    // As it was read last: when it is being read again, ShowAnalysis follows.
    [[nodiscard]] const Table& Data() const { return *Document()->Data()->Latest(); }
    [[nodiscard]] const std::string& Result() const { return m_result; }

private:
    static constexpr QSize exportedSize{800, 560};

    void OnInitialize() override {
        Keep(Document()->Changed.Subscribe([this] { Follow(); }));
        FollowSpace();
    }
    // Pages that share a window are kinds of one analysis: the one in front is what would be kept.
    void OnActivate() override {
        Document()->Look(Kind());
        EnableAction("Save", Document()->IsUnsaved());
        OwnWindow()->SetCaption(Document()->Name());
    }
    // Asked about when the window closes.
    [[nodiscard]] bool IsChanged() override { return OwnWindow() && Document()->HasUnsavedResult(); }
    void OnSave() override {
        if (Document()->HasUnsavedResult())
            Document()->Save();
    }
    QWidget* MakeWidget(QWidget* place) override {
        m_chart = new ChartWidget(place);
        ShowAnalysis();
        return m_chart;
    }
    // The chart as a drawing, below what it is about, with what was found.
    bool Print(corvane::desktop::IPrintout& printout) override {
        const ChartScene scene = Scene();
        if (!scene.empty.empty() || scene.y.label.empty())
            return false; // what the form says is all that there is
        printout.AddHeading(Text(Document()->Name()));
        const auto AddColumn = [&](const std::string& label, const std::string& name) {
            if (const Column* column = Data().Find(name))
                printout.AddField(Text(label), Text(column->Label()));
        };
        const AnalysisSettings& settings = Settings();
        if (Kind() == AnalysisKind::Scatter)
            AddColumn("Y", settings.columnY);
        AddColumn(Kind() == AnalysisKind::Scatter ? "X" : Translated("Column"), settings.columnX);
        if (Kind() != AnalysisKind::Bootstrap)
            AddColumn(Translated("Grouped by"), settings.groupColumn);
        if (Kind() != AnalysisKind::Histogram)
            printout.AddField(Text(Translated("Confidence")), Text(ShareText(settings.bootstrap.confidence)));
        DrawingOf(scene, exportedSize).AddTo(printout);
        if (!m_result.empty())
            printout.AddText(Text(m_result));
        return true;
    }
    void Follow() {
        if (!Document()->Exists())
            return; // the window is about to close
        FollowSpace();
        Document()->Data()->WithTable(corvane::Ref<corvane::Object>(this), [this](const SharedTable& table) {
            if (!table || !Document()->Exists())
                return;
            ShowAnalysis();
            EnableAction("Save", Document()->IsUnsaved());
            ValidityChanged();
        });
        OwnWindow()->SetCaption(Document()->Name());
    }
    // Saving may have moved the data into a study.
    void FollowSpace() {
        if (const auto space = Document()->Data()->Space(); space != m_space) {
            m_space = space;
            Keep(space->Changed.Subscribe([this](const std::string&) { Follow(); }));
        }
    }
    void OnSaveAnalysis() { Document()->Save(); }
    void OnTable() { OpenDataWindow(Document()->Data()); }
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem) { // another one of the data, by the item's name
        OpenNewAnalysis(Document()->Data(), actionItem->Name());
    }

    // A field of the form is one of the settings, or of what they hold.
    template <auto... Path>
    [[nodiscard]] auto Get() const {
        return (Settings().*....*Path);
    }
    template <auto... Path>
    void Set(const std::remove_cvref_t<decltype((std::declval<AnalysisSettings&>().*....*Path))>& value) {
        Change([&](AnalysisSettings& settings) { (settings.*....*Path) = value; });
    }
    [[nodiscard]] corvane::Long Seed() const { return static_cast<corvane::Long>(Settings().bootstrap.seed); }
    void SetSeed(corvane::Long seed) {
        Set<&AnalysisSettings::bootstrap, &BootstrapOptions::seed>(static_cast<std::uint64_t>(seed));
    }
    void SetGroup(const std::string& name) {
        Change([&](AnalysisSettings& settings) {
            settings.groupColumn = name;
            if (Kind() == AnalysisKind::Comparison)
                ChooseGroups(Data(), settings);
        });
    }
    void Change(const std::function<void(AnalysisSettings&)>& change) {
        AnalysisSettings settings = Settings();
        change(settings);
        Document()->SetSettings(settings);
    }
    [[nodiscard]] std::string ColumnChoices() const { return studies::ColumnChoices(Data().columns, true); }
    // A comparison is always by a column.
    [[nodiscard]] std::string GroupChoices() {
        return (Kind() == AnalysisKind::Comparison ? "" : noneChoice) +
               m_choices.Dividing(Document()->Data()->Latest());
    }
    [[nodiscard]] std::string ValueChoices() {
        return m_choices.Values(Document()->Data()->Latest(), Settings().groupColumn);
    }

    TableChoices m_choices;
    std::string m_result;
    QPointer<ChartWidget> m_chart;
    corvane::Ref<Workspace> m_space;

public:
    // The table of members, with what a page has beside.
    template <class... Entries>
    static constexpr auto Shared(Entries... more) {
        using Self = AnalysisPage;
        using In = AnalysisSettings;
        using Options = BootstrapOptions;
        using corvane::Property, corvane::Method;
        return corvane::Methods<&Self::OnSaveAnalysis, &Self::OnTable, &Self::OnAnalyse, &Self::OnExport, &Self::Result,
                                &Self::ColumnChoices, &Self::GroupChoices>(
            Property("Column", &Self::Get<&In::columnX>, &Self::Set<&In::columnX>),
            Property("ColumnY", &Self::Get<&In::columnY>, &Self::Set<&In::columnY>),
            Method("ColumnYChoices", &Self::ColumnChoices),
            Property("Group", &Self::Get<&In::groupColumn>, &Self::SetGroup),
            Property("Bins", &Self::Get<&In::bins>, &Self::Set<&In::bins>),
            Property("First", &Self::Get<&In::firstGroup>, &Self::Set<&In::firstGroup>),
            Method("FirstChoices", &Self::ValueChoices),
            Property("Second", &Self::Get<&In::secondGroup>, &Self::Set<&In::secondGroup>),
            Method("SecondChoices", &Self::ValueChoices),
            Property("Figure", &Self::Get<&In::bootstrap, &Options::figure>,
                     &Self::Set<&In::bootstrap, &Options::figure>),
            Property("Resamples", &Self::Get<&In::bootstrap, &Options::resamples>,
                     &Self::Set<&In::bootstrap, &Options::resamples>),
            Property("Seed", &Self::Seed, &Self::SetSeed), more...);
    }
};

template <AnalysisKind kind, ChartScene (*scene)(const Table& table, const AnalysisSettings& settings)>
class ChartPage final : public corvane::Page<ChartPage<kind, scene>, AnalysisDocument, AnalysisPage> {
    [[nodiscard]] AnalysisKind Kind() const override { return kind; }
    [[nodiscard]] ChartScene Scene() const override { return scene(this->Data(), this->Settings()); }
    // Where there is no chart, it says why; once is enough.
    [[nodiscard]] std::string Findings(const ChartScene& drawn) const override {
        if (kind != AnalysisKind::Comparison || !drawn.empty.empty())
            return {};
        return ComparisonText(this->Data(), this->Settings(), ReadPreferences().decimals);
    }

public:
    static constexpr auto Members = AnalysisPage::Shared(corvane::Method("OnCopy", &ChartPage::OnCopy));
};
using HistogramPage = ChartPage<AnalysisKind::Histogram, HistogramScene>;
using ScatterPage = ChartPage<AnalysisKind::Scatter, ScatterScene>;
using ComparisonPage = ChartPage<AnalysisKind::Comparison, ComparisonScene>;

// Its chart is that of the resamples.
class BootstrapPage final : public corvane::Page<BootstrapPage, AnalysisDocument, AnalysisPage> {
    corvane::LatestJob m_job;

    [[nodiscard]] AnalysisKind Kind() const override { return AnalysisKind::Bootstrap; }
    [[nodiscard]] ChartScene Scene() const override {
        const BootstrapResult* result = Document()->Result();
        const Column* column = Data().Find(Settings().columnX);
        return result && column ? BootstrapScene(*result, *column, Settings()) : ChartScene();
    }
    [[nodiscard]] std::string Findings(const ChartScene&) const override {
        const BootstrapResult* result = Document()->Result();
        const Column* column = Data().Find(Settings().columnX);
        if (result && column)
            return BootstrapText(*result, Settings(), *column, ReadPreferences().decimals);
        return Translated("Run resamples the data: it draws as many rows as there are, with replacement, many times. "
                          "The variation of the statistic among these samples shows how precise it is.");
    }
    QWidget* FirstFocus() override { return nullptr; } // the first field
    void ShowAnalysis() override {
        if (OwnForm()) // a job may come to its end behind the page's
            OwnForm()->SetVisible("Chart", Document()->Result() && Data().Find(Settings().columnX));
        AnalysisPage::ShowAnalysis();
    }
    void OnExport() override { // the figures, as text
        if (!Document()->Result())
            FailWith(Translated("There is nothing to export yet. Choose Run first."));
        ExportAs(Translated("Text") + " (*.txt)|*.txt", Document()->Name() + ".txt", [this](const std::string& path) {
            corvane::desktop::WriteWholeFile(path, Document()->Name() + "\n\n" + Result() + "\n");
        });
    }
    void Run() {
        Document()->Data()->WithTable(corvane::Ref<corvane::Object>(this), [this](const SharedTable& table) {
            if (table)
                Start(table);
        });
    }
    void Start(const SharedTable& table) {
        const Column* column = table->Find(Settings().columnX);
        if (m_job.IsActive() || !column || !column->IsNumeric())
            return;
        const AnalysisSettings settings = Settings();
        const auto values = NumbersIn(table, column->name);
        corvane::SetStatus(
            Translated("Resampling %1 times", {CountText(static_cast<std::size_t>(settings.bootstrap.resamples))}));
        m_job.Start(
            {.title = Translated("Bootstrap of %1", {SpokenName(column->name)}),
             .owner = corvane::Ref<corvane::Object>(this)},
            [values, options = settings.bootstrap](corvane::JobProgress& progress) {
                return RunBootstrap(*values, options, progress);
            },
            [this, settings, values](corvane::JobResult<BootstrapResult>& result) {
                if (OwnForm())
                    OwnForm()->Refresh("Run");
                if (result.WasCancelled())
                    return corvane::SetStatus(Translated("Cancelled; nothing has been changed"));
                Document()->SetResult(result.Value(), settings, values);
                if (Document()->Result()) // the settings may have changed meanwhile
                    corvane::SetStatus(Result().substr(0, Result().find('\n')));
            });
        OwnForm()->Refresh("Run");
    }
    [[nodiscard]] bool RunEnabled() const { return !m_job.IsActive(); }

public:
    static constexpr auto Members =
        Shared(corvane::Method("Run", &BootstrapPage::Run), corvane::Method("RunEnabled", &BootstrapPage::RunEnabled));
};

} // namespace studies
