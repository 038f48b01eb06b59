#include "AnalysisPages.h"

#include "ChartWidget.h"
#include "Errors.h"
#include "Files.h"
#include "QtText.h"
#include "Report.h"
#include "WholeFile.h"
#include "Windows.h"
#include "corvane/Jobs.h"
#include "corvane/author/Host.h"
#include "desktop/IPrintout.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <memory>

namespace studies {

using namespace corvane;

namespace {

constexpr QSize exportedSize(800, 560);

} // namespace

void AnalysisPage::OnInitialize() {
    Keep(Document()->Changed.Subscribe([this] { Follow(); }));
    FollowSpace();
}

// Saving may have moved the data into a study.
void AnalysisPage::FollowSpace() {
    if (const auto space = Document()->Data()->Space(); space != m_space) {
        m_space = space;
        Keep(space->Changed.Subscribe([this](const std::string&) { Follow(); }));
    }
}

// Pages that share a window are kinds of one analysis: the one in front is what would be kept.
void AnalysisPage::OnActivate() {
    Document()->Look(Kind());
    EnableAction("Save", Document()->IsUnsaved());
    OwnWindow()->SetCaption(Document()->Name());
}

void AnalysisPage::Follow() {
    if (!Document()->Exists())
        return; // the window is about to close
    FollowSpace();
    Document()->Data()->WithTable(Ref<Object>(this), [this](const SharedTable& table) {
        if (!table || !Document()->Exists())
            return;
        ShowAnalysis();
        EnableAction("Save", Document()->IsUnsaved());
        ValidityChanged();
    });
    OwnWindow()->SetCaption(Document()->Name());
}

void AnalysisPage::ShowAnalysis() {
    if (!m_chart)
        return; // it has never been in front
    const ChartScene scene = Scene();
    m_result = Findings(scene);
    m_chart->SetScene(scene);
    OwnForm()->Refresh();
}

QWidget* AnalysisPage::NewWidget(QWidget* place) {
    m_chart = new ChartWidget(place);
    ShowAnalysis();
    return m_chart;
}

QWidget* AnalysisPage::FirstFocus() {
    return m_chart;
}

bool AnalysisPage::Print(corvane::desktop::IPrintout& printout) {
    const auto scene = std::make_shared<const ChartScene>(Scene());
    if (!scene->empty.empty() || scene->y.label.empty())
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
    printout.AddPicture(exportedSize, [scene](QPainter& painter, const QRectF& area) {
        DrawChart(painter, area, *scene, exportedSize);
    });
    if (!m_result.empty())
        printout.AddText(Text(m_result));
    return true;
}

void AnalysisPage::Change(const std::function<void(AnalysisSettings&)>& change) {
    AnalysisSettings settings = Settings();
    change(settings);
    Document()->SetSettings(settings);
}

void AnalysisPage::SetGroup(const std::string& name) {
    Change([&](AnalysisSettings& settings) {
        settings.groupColumn = name;
        if (Kind() == AnalysisKind::Comparison)
            ChooseGroups(Data(), settings);
    });
}

// A comparison is always by a column.
std::string AnalysisPage::GroupChoices() {
    return (Kind() == AnalysisKind::Comparison ? "" : noneChoice) + m_choices.Dividing(Document()->Data()->Latest());
}

std::string AnalysisPage::ValueChoices() {
    return m_choices.Values(Document()->Data()->Latest(), Settings().groupColumn);
}

void AnalysisPage::OnSave() {
    if (Document()->HasUnsavedResult())
        Document()->Save();
}

void AnalysisPage::OnTable() {
    OpenDataWindow(Document()->Data());
}

void AnalysisPage::OnAnalyse(const Ref<ActionItem>& actionItem) {
    OpenNewAnalysis(Document()->Data(), actionItem->Name());
}

std::string AnalysisPage::AskForFile(const std::string& filter, const std::string& ending) const {
    return AskForSavePath(Translated("Export"), filter, Document()->Name() + ending);
}

void AnalysisPage::OnExport() {
    const std::string path = AskForFile(
        Translated("PNG picture") + " (*.png)|*.png|" + Translated("SVG drawing") + " (*.svg)|*.svg", ".png");
    if (path.empty())
        return;
    SaveChart(Scene(), exportedSize, Text(path));
    SetStatus(Translated("Exported to %1", {path}));
}

void AnalysisPage::OnCopy() {
    QGuiApplication::clipboard()->setImage(ChartPicture(Scene(), exportedSize));
    SetStatus(Translated("The chart has been copied"));
}

ChartScene BootstrapPage::Scene() const {
    const BootstrapResult* result = Document()->Result();
    const Column* column = Data().Find(Settings().columnX);
    return result && column ? BootstrapScene(*result, *column, Settings()) : ChartScene();
}

std::string BootstrapPage::Findings(const ChartScene&) const {
    const BootstrapResult* result = Document()->Result();
    const Column* column = Data().Find(Settings().columnX);
    if (result && column)
        return BootstrapText(*result, Settings(), *column, ReadPreferences().decimals);
    return Translated("Run resamples the data: it draws as many rows as there are, with replacement, many times. The "
                      "variation of the statistic among these samples shows how precise it is.");
}

void BootstrapPage::ShowAnalysis() {
    if (OwnForm()) // a job may come to its end behind the page's
        OwnForm()->SetVisible("Chart", Document()->Result() && Data().Find(Settings().columnX));
    AnalysisPage::ShowAnalysis();
}

void BootstrapPage::Run() {
    Document()->Data()->WithTable(Ref<Object>(this), [this](const SharedTable& table) {
        if (table)
            Start(table);
    });
}

void BootstrapPage::Start(const SharedTable& table) {
    const Column* column = table->Find(Settings().columnX);
    if (m_running || !column || !column->IsNumeric())
        return;
    const AnalysisSettings settings = Settings();
    SetStatus(Translated("Resampling %1 times", {CountText(static_cast<std::size_t>(settings.bootstrap.resamples))}));
    StartJob(
        {.title = Translated("Bootstrap of %1", {SpokenName(column->name)}), .owner = Ref<Object>(this)},
        [values = NumbersIn(table, column->name), options = settings.bootstrap](JobProgress& progress) {
            return RunBootstrap(*values, options, progress);
        },
        [this, settings, values = NumbersIn(table, column->name)](JobResult<BootstrapResult>& result) {
            m_running = false;
            if (OwnForm())
                OwnForm()->Refresh("Run");
            if (result.WasCancelled()) {
                SetStatus(Translated("Cancelled; nothing has been changed"));
                return;
            }
            Document()->SetResult(result.Value(), settings, values);
            if (Document()->Result()) // the settings may have changed meanwhile
                SetStatus(Result().substr(0, Result().find('\n')));
        });
    m_running = true;
    OwnForm()->Refresh("Run");
}

void BootstrapPage::OnExport() {
    if (!Document()->Result())
        FailWith(Translated("There is nothing to export yet. Choose Run first."));
    const std::string path = AskForFile(Translated("Text") + " (*.txt)|*.txt", ".txt");
    if (path.empty())
        return;
    WriteWholeFile(Text(path), QByteArray::fromStdString(Document()->Name() + "\n\n" + Result() + "\n"));
    SetStatus(Translated("Exported to %1", {path}));
}

} // namespace studies
