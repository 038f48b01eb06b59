#include "ImportPages.h"

#include "Files.h"
#include "QtText.h"
#include "Report.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace studies {

using namespace corvane;

namespace {

std::string FirstLines(const std::vector<std::string>& lines) {
    constexpr std::size_t mostShown = 3;
    std::string text;
    for (std::size_t i = 0; i < std::min(mostShown, lines.size()); ++i)
        text += (i > 0 ? "\n" : "") + lines[i];
    if (lines.size() > mostShown)
        text += "\nand " + CountText(lines.size() - mostShown) + " more.";
    return text;
}

} // namespace

// What one step enters may put another in order, or out of it.
void ImportPage::OnInitialize() {
    Keep(Job()->Changed.Subscribe([this] { ValidityChanged(); }));
    Keep(Job()->HasRead.Subscribe([this] {
        if (Widget())
            ShowRead();
        ValidityChanged();
    }));
}

QWidget* ImportFilePage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    m_path = new QLineEdit(Text(Job()->Path()));
    m_found = new QLabel;
    m_found->setWordWrap(true);
    m_problem = new ProblemLabel;
    auto* browse = new QPushButton("&Browse\u2026");
    auto* row = new QHBoxLayout;
    AddLabelled(*row, "F&ile", m_path);
    row->addWidget(browse);
    auto* hint = new QLabel(
        "A text file with a header row and one row for each case; values are separated by commas, semicolons or tabs.");
    hint->setWordWrap(true);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(hint);
    layout->addLayout(row);
    layout->addWidget(m_found);
    layout->addWidget(m_problem);
    layout->addStretch(1);
    QObject::connect(m_path, &QLineEdit::textEdited, page, [this] { Guarded([this] { FollowTyping(); }); });
    QObject::connect(m_path, &QLineEdit::editingFinished, page, [this] { Guarded([this] { TakePath(); }); });
    QObject::connect(browse, &QPushButton::clicked, page, [this] {
        Guarded([this] {
            if (const auto path = AskForDataFile("Import Data")) {
                m_path->setText(Text(*path));
                TakePath();
            }
        });
    });
    return page;
}

QWidget* ImportFilePage::FirstFocus() {
    return m_path;
}

bool ImportFilePage::IsChanged() {
    return !Job()->Path().empty();
}

bool ImportFilePage::IsValid() {
    const Ref<ImportJob> job = Job();
    return !job->Path().empty() && job->Result() && job->Problem().empty();
}

void ImportFilePage::OnActivate() {
    if (Widget())
        TakePath();
}

// A file is taken as soon as its name is whole, so that the wizard can go on; what is wrong is reported at the end.
void ImportFilePage::FollowTyping() {
    if (QFileInfo(m_path->text().trimmed()).isFile())
        return TakePath();
    Job()->SetPath({});
    ShowRead();
}

void ImportFilePage::TakePath() {
    const Ref<ImportJob> job = Job();
    const std::string path = Utf8(m_path->text().trimmed());
    if (path == job->Path())
        job->LookAgain();
    else
        job->SetPath(path);
    ShowRead();
}

void ImportFilePage::ShowRead() {
    const Ref<ImportJob> job = Job();
    const CsvResult* result = job->Path().empty() ? nullptr : job->Result();
    m_found->setText(result             ? Text(SizeText(result->table.rows, result->table.columns.size()))
                     : job->IsReading() ? QString("Reading the file\u2026")
                                        : QString());
    m_problem->Show(job->Path().empty() ? QString() : Text(job->Problem()));
}

QWidget* ImportFormatPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    m_delimiter = new QComboBox;
    for (const auto& [name, delimiter] :
         {std::pair("Detect automatically", '\0'), {"Commas", ','}, {"Semicolons", ';'}, {"Tabs", '\t'}})
        m_delimiter->addItem(name, QChar(delimiter));
    m_preview = new QTableWidget;
    m_preview->setAccessibleName("Preview");
    m_preview->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_preview->setWordWrap(false);
    m_preview->setTabKeyNavigation(false); // the arrows go from cell to cell, Tab to the commands
    m_preview->verticalHeader()->setDefaultSectionSize(m_preview->fontMetrics().height() + 8);
    m_size = new QLabel;
    m_kept = new QLabel;
    m_kept->setWordWrap(true);
    m_kept->setTextFormat(Qt::PlainText);
    m_problem = new ProblemLabel;
    m_skip = new QCheckBox("&Leave out these rows");
    auto* row = new QHBoxLayout;
    AddLabelled(*row, "&Values are separated by", m_delimiter);
    row->setStretch(1, 0);
    row->addStretch(1);
    row->addWidget(m_size);
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(row);
    layout->addWidget(m_preview, 1);
    layout->addWidget(m_kept);
    layout->addWidget(m_problem);
    layout->addWidget(m_skip);
    QObject::connect(m_delimiter, &QComboBox::currentIndexChanged, page, [this] {
        Guarded([this] {
            Job()->SetDelimiter(m_delimiter->currentData().toChar().toLatin1());
            ShowRead();
        });
    });
    QObject::connect(m_skip, &QCheckBox::toggled, page,
                     [this](bool skip) { Guarded([&] { Job()->SetSkipsBadRows(skip); }); });
    // Who has put the file in order in another program finds it so here.
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, page, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            Guarded([this] { LookAgain(); });
    });
    ShowRead();
    return page;
}

void ImportFormatPage::OnActivate() {
    if (Widget())
        LookAgain();
}

void ImportFormatPage::LookAgain() {
    if (!Job()->Path().empty())
        Job()->LookAgain();
    ShowRead();
}

bool ImportFormatPage::IsValid() {
    const CsvResult* result = Job()->Path().empty() ? nullptr : Job()->Result();
    return result && Job()->Problem().empty() && (result->skipped.empty() || Job()->SkipsBadRows());
}

void ImportFormatPage::ShowRead() {
    const CsvResult* result = Job()->Path().empty() ? nullptr : Job()->Result();
    m_preview->clear();
    m_size->setText(Job()->IsReading() ? QString("Reading the file\u2026") : QString());
    m_skip->hide();
    m_problem->Show(Text(Job()->Problem()));
    m_kept->setVisible(result && !result->keptAsText.empty());
    if (result) {
        m_kept->setText(Text(FirstLines(result->keptAsText)));
        m_size->setText(Text(SizeText(result->table.rows, result->table.columns.size())));
        ShowTypes(result->table);
        ShowRows(result->table);
        if (Job()->Problem().empty())
            ShowSkipped(result->skipped);
    }
}

// The first row of the preview says how each column is read; a column of numbers can be made one of text.
void ImportFormatPage::ShowTypes(const Table& table) {
    m_preview->setColumnCount(static_cast<int>(table.columns.size()));
    m_preview->setRowCount(1);
    m_preview->setVerticalHeaderItem(0, new QTableWidgetItem("Type"));
    for (int i = 0; i < m_preview->columnCount(); ++i) {
        const Column& column = table.columns[static_cast<std::size_t>(i)];
        auto* name = new QTableWidgetItem(Text(column.name));
        name->setTextAlignment(Qt::AlignVCenter | (column.IsNumeric() ? Qt::AlignRight : Qt::AlignLeft));
        m_preview->setHorizontalHeaderItem(i, name);
        auto* type = new QComboBox;
        type->setAccessibleName("Type of " + Text(column.name));
        if (column.IsNumeric())
            type->addItem(Text(NameOf(column.type)));
        type->addItem("text");
        type->setEnabled(column.IsNumeric());
        type->setCurrentIndex(column.IsNumeric() && Job()->IsText(static_cast<std::size_t>(i)) ? 1 : 0);
        QObject::connect(type, &QComboBox::currentIndexChanged, m_preview, [this, i](int typeIndex) {
            Guarded([&] {
                Job()->SetText(static_cast<std::size_t>(i), typeIndex == 1);
                for (int row = 1; row < m_preview->rowCount(); ++row)
                    m_preview->item(row, i)->setTextAlignment(Qt::AlignVCenter |
                                                              (typeIndex == 1 ? Qt::AlignLeft : Qt::AlignRight));
            });
        });
        m_preview->setCellWidget(0, i, type);
    }
    m_preview->setRowHeight(0, m_preview->cellWidget(0, 0)->sizeHint().height());
}

void ImportFormatPage::ShowRows(const Table& table) {
    constexpr std::size_t mostRows = 50;
    const auto rows = static_cast<int>(std::min(mostRows, table.rows));
    m_preview->setRowCount(1 + rows);
    for (int row = 0; row < rows; ++row) {
        m_preview->setVerticalHeaderItem(row + 1, new QTableWidgetItem(QString::number(row + 1)));
        for (int i = 0; i < m_preview->columnCount(); ++i) {
            const auto columnIndex = static_cast<std::size_t>(i);
            const Column& column = table.columns[columnIndex];
            auto* item = new QTableWidgetItem(Text(column.Text(static_cast<std::size_t>(row))));
            const bool right = column.IsNumeric() && !Job()->IsText(columnIndex);
            item->setTextAlignment(Qt::AlignVCenter | (right ? Qt::AlignRight : Qt::AlignLeft));
            m_preview->setItem(row + 1, i, item);
        }
    }
    m_preview->resizeColumnsToContents();
    const int widest = m_preview->fontMetrics().averageCharWidth() * 30;
    for (int i = 0; i < m_preview->columnCount(); ++i)
        m_preview->setColumnWidth(
            i, std::min(widest, std::max(m_preview->columnWidth(i), m_preview->cellWidget(0, i)->sizeHint().width())));
}

void ImportFormatPage::ShowSkipped(const std::vector<std::string>& skipped) {
    if (skipped.empty())
        return;
    m_problem->Show(
        Text((skipped.size() == 1 ? "A row can't be read:" : CountText(skipped.size()) + " rows can't be read:") +
             "\n" + FirstLines(skipped)));
    const QSignalBlocker blocker(m_skip);
    m_skip->setText(skipped.size() == 1 ? "&Leave out this row" : "&Leave out these rows");
    m_skip->setChecked(Job()->SkipsBadRows());
    m_skip->show();
}

QWidget* ImportTargetPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    const Ref<ImportJob> job = Job();
    m_study = new QComboBox;
    for (const Study& study : job->Space()->GetStore().Studies())
        m_study->addItem(Text(study.name), static_cast<qlonglong>(study.id));
    m_study->addItem("New study", qlonglong{0});
    m_newStudy = new QLineEdit;
    m_newStudyLabel = new QLabel("N&ame");
    m_newStudyLabel->setBuddy(m_newStudy);
    m_name = new QLineEdit;
    m_problem = new ProblemLabel;
    auto* form = new QFormLayout(page);
    form->addRow("&Into", m_study);
    form->addRow(m_newStudyLabel, m_newStudy);
    form->addRow("&Data set", m_name);
    form->addRow(QString(), m_problem);
    ShowTarget();
    const auto OnChange = [this] { Guarded([this] { TakeTarget(); }); };
    QObject::connect(m_study, &QComboBox::currentIndexChanged, page, OnChange);
    QObject::connect(m_newStudy, &QLineEdit::textChanged, page, OnChange);
    QObject::connect(m_name, &QLineEdit::textChanged, page, OnChange);
    return page;
}

QWidget* ImportTargetPage::FirstFocus() {
    return m_name;
}

void ImportTargetPage::OnActivate() {
    if (Widget())
        ShowTarget();
}

void ImportTargetPage::ShowTarget() {
    const Ref<ImportJob> job = Job();
    const QSignalBlocker blockers[] = {QSignalBlocker(m_study), QSignalBlocker(m_newStudy), QSignalBlocker(m_name)};
    m_study->setCurrentIndex(m_study->findData(static_cast<qlonglong>(job->studyId)));
    m_newStudy->setText(Text(job->newStudyName));
    m_name->setText(Text(job->name));
    m_newStudy->setVisible(job->studyId == 0);
    m_newStudyLabel->setVisible(job->studyId == 0);
    m_problem->Show(Text(job->TargetProblem()));
}

void ImportTargetPage::TakeTarget() {
    const Ref<ImportJob> job = Job();
    job->studyId = m_study->currentData().toLongLong();
    job->newStudyName = Utf8(m_newStudy->text().trimmed());
    job->name = Utf8(m_name->text().trimmed());
    m_newStudy->setVisible(job->studyId == 0);
    m_newStudyLabel->setVisible(job->studyId == 0);
    m_problem->Show(Text(job->TargetProblem()));
    ValidityChanged();
}

void ImportTargetPage::OnSave() {
    Job()->Run();
}

} // namespace studies
