#include "ComparisonPages.h"

#include "ChartWidget.h"
#include "ComparisonText.h"
#include "Errors.h"
#include "QtText.h"
#include "Report.h"
#include "Statistics.h"
#include "corvane/Jobs.h"
#include "corvane/author/Host.h"

#include <QFile>
#include <QFormLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace studies {

using namespace corvane;

namespace {

std::vector<std::string> GroupsOf(const Table& table, const std::string& columnName) {
    const Column* column = table.Find(columnName);
    return column ? ValuesOf(*column) : std::vector<std::string>();
}

} // namespace

QWidget* ComparisonPage::MakeWidget(QWidget* parent) {
    m_result = new ResultLabel;
    QWidget* page = ChartPage::MakeWidget(parent);
    static_cast<QBoxLayout*>(page->layout())->addWidget(m_result);
    return page;
}

void ComparisonPage::AddControls(QBoxLayout& row) {
    m_column = new QComboBox;
    m_group = new QComboBox;
    m_first = new QComboBox;
    m_second = new QComboBox;
    AddLabelled(row, "&Column", m_column);
    AddLabelled(row, "Group &by", m_group);
    AddLabelled(row, "Gr&oups", m_first);
    AddLabelled(row, "a&nd", m_second);
    Bind(m_column, &AnalysisSettings::columnX);
    Bind(m_first, &AnalysisSettings::firstGroup);
    Bind(m_second, &AnalysisSettings::secondGroup);
    QObject::connect(m_group, &QComboBox::currentIndexChanged, m_group, [this] {
        Guarded([this] {
            ChangeSettings([this](AnalysisSettings& settings) {
                settings.groupColumn = Chosen(*m_group);
                ChooseGroups(Data(), settings);
            });
        });
    });
}

void ComparisonPage::ShowSettings() {
    const AnalysisSettings& settings = Document()->Settings();
    FillColumns(*m_column, Data().columns, true);
    Choose(*m_column, settings.columnX);
    FillColumns(*m_group, DividingColumns(Data()), false);
    Choose(*m_group, settings.groupColumn);
    const std::vector<std::string> groups = GroupsOf(Data(), settings.groupColumn);
    FillTexts(*m_first, groups);
    Choose(*m_first, settings.firstGroup);
    FillTexts(*m_second, groups);
    Choose(*m_second, settings.secondGroup);
}

void ComparisonPage::ShowAnalysis() {
    ChartPage::ShowAnalysis();
    // Where there is no chart, it says why; once is enough.
    m_result->setText(Scene().empty.empty()
                          ? Text(ComparisonText(Data(), Document()->Settings(), ReadPreferences().decimals))
                          : QString());
}

ChartScene ComparisonPage::Scene() const {
    return ComparisonScene(Data(), Document()->Settings());
}

QWidget* BootstrapPage::FirstFocus() {
    return m_run;
}

QWidget* BootstrapPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    m_column = new QComboBox;
    m_figure = new QComboBox;
    for (const BootstrapFigure figure : {BootstrapFigure::Mean, BootstrapFigure::Median, BootstrapFigure::Deviation})
        m_figure->addItem(Text(NameOf(figure)), Text(NameOf(figure)));
    m_resamples = new QSpinBox;
    m_resamples->setRange(100, 100000);
    m_resamples->setSingleStep(100);
    m_resamples->setGroupSeparatorShown(true);
    m_seed = new QSpinBox;
    m_seed->setRange(0, 999999);
    m_seed->setToolTip("The same seed gives the same result again");
    m_run = new QPushButton("&Run");
    m_run->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    m_resultLabel = new ResultLabel;
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->addRow("&Column", m_column);
    form->addRow("Stat&istic", m_figure);
    form->addRow("Resam&ples", m_resamples);
    form->addRow("&Seed", m_seed);
    form->addRow(QString(), m_run);
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(form);
    layout->addSpacing(page->fontMetrics().height());
    layout->addWidget(m_resultLabel);
    m_chart = new ChartWidget;
    layout->addWidget(m_chart, 1);
    layout->addStretch();
    Bind(m_column, &AnalysisSettings::columnX);
    const auto OnChange = [this] {
        Guarded([this] {
            ChangeSettings([this](AnalysisSettings& settings) {
                settings.bootstrap.figure = BootstrapFigureOf(Chosen(*m_figure));
                settings.bootstrap.resamples = m_resamples->value();
                settings.bootstrap.seed = static_cast<std::uint64_t>(m_seed->value());
            });
        });
    };
    QObject::connect(m_figure, &QComboBox::currentIndexChanged, page, OnChange);
    QObject::connect(m_resamples, &QSpinBox::valueChanged, page, OnChange);
    QObject::connect(m_seed, &QSpinBox::valueChanged, page, OnChange);
    QObject::connect(m_run, &QPushButton::clicked, page, [this] { Guarded([this] { Run(); }); });
    ShowAnalysis();
    return page;
}

void BootstrapPage::ShowAnalysis() {
    const AnalysisSettings& settings = Document()->Settings();
    FillColumns(*m_column, Data().columns, true);
    m_column->setMinimumContentsLength(24); // there is room, and names have units
    Choose(*m_column, settings.columnX);
    Choose(*m_figure, std::string(NameOf(settings.bootstrap.figure)));
    const QSignalBlocker resamplesBlocker(m_resamples);
    const QSignalBlocker seedBlocker(m_seed);
    m_resamples->setValue(settings.bootstrap.resamples);
    m_seed->setValue(static_cast<int>(settings.bootstrap.seed));
    ShowResult();
}

void BootstrapPage::ShowResult() {
    const BootstrapResult* result = Document()->Result();
    const Column* column = Data().Find(Document()->Settings().columnX);
    m_chart->setVisible(result && column);
    if (result && column)
        m_chart->SetScene(BootstrapScene(*result, *column, Document()->Settings()));
    if (result && column)
        m_resultLabel->setText(
            Text(BootstrapText(*result, Document()->Settings(), *column, ReadPreferences().decimals)));
    else
        m_resultLabel->setText(
            "Run resamples the data: it draws as many rows as there are, with replacement, many times. "
            "The variation of the statistic among these samples shows how precise it is.");
}

void BootstrapPage::Run() {
    Document()->Data()->WithTable(Ref<Object>(this), [this](const SharedTable& table) {
        if (table)
            Run(table);
    });
}

void BootstrapPage::Run(const SharedTable& table) {
    const Column* column = table->Find(Document()->Settings().columnX);
    if (m_running || !column || !column->IsNumeric())
        return;
    const AnalysisSettings settings = Document()->Settings();
    SetStatus("Resampling " + CountText(static_cast<std::size_t>(settings.bootstrap.resamples)) + " times");
    StartJob(
        {.title = "Bootstrap of " + SpokenName(column->name), .owner = Ref<Object>(this)},
        [values = NumbersIn(table, column->name), options = settings.bootstrap](JobProgress& progress) {
            return RunBootstrap(*values, options, &progress);
        },
        [this, settings, values = NumbersIn(table, column->name)](JobResult<BootstrapResult>& result) {
            m_running = false;
            if (m_run)
                m_run->setEnabled(true);
            if (result.WasCancelled()) {
                SetStatus("Cancelled; nothing has been changed");
                return;
            }
            Document()->SetResult(result.Value(), settings, values);
            if (Document()->Result()) // the settings may have changed meanwhile
                SetStatus(Utf8(m_resultLabel->text().section('\n', 0, 0)));
        });
    m_running = true;
    m_run->setEnabled(false);
}

void BootstrapPage::OnExport() {
    if (!Document()->Result())
        FailWith("There is nothing to export yet. Choose Run first.");
    const std::string path = AskForFile("Text (*.txt)|*.txt", ".txt");
    if (path.empty())
        return;
    QFile file(Text(path));
    const QByteArray text = (Text(Document()->Name()) + "\n\n" + m_resultLabel->text() + "\n").toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
        FailWith("The file “" + path + "” can't be written.");
    SetStatus("Exported to " + path);
}

} // namespace studies
