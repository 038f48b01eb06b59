#include "PropertyPages.h"

#include "Errors.h"
#include "QtText.h"
#include "Report.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QVBoxLayout>
#include <utility>

namespace studies {

using namespace corvane;

QWidget* NamePage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    m_name = new QLineEdit(Text(m_nameText));
    m_notes = new QPlainTextEdit(Text(m_notesText));
    m_notes->setTabChangesFocus(true);
    QSizePolicy whatIsLeft(QSizePolicy::Expanding, QSizePolicy::Ignored);
    whatIsLeft.setVerticalStretch(1);
    m_notes->setSizePolicy(whatIsLeft);
    m_notes->setMinimumHeight(4 * m_notes->fontMetrics().lineSpacing());
    m_problem = new ProblemLabel;
    auto* form = new QFormLayout(page);
    form->addRow("&Name", m_name);
    form->addRow(QString(), m_problem);
    for (const auto& [caption, shownText] : Facts()) {
        auto* text = new QLabel(shownText);
        text->setWordWrap(true);
        text->setTextFormat(Qt::PlainText);
        text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        form->addRow(caption, text);
    }
    form->addRow("N&otes", m_notes);
    const auto OnChange = [this] {
        Guarded([this] {
            m_problem->Show(Text(Problem()));
            ValidityChanged();
        });
    };
    QObject::connect(m_name, &QLineEdit::textChanged, page, OnChange);
    QObject::connect(m_notes, &QPlainTextEdit::textChanged, page, OnChange);
    return page;
}

QWidget* NamePage::FirstFocus() {
    m_name->selectAll();
    return m_name;
}

std::string NamePage::Name() const {
    return m_name ? Utf8(m_name->text().trimmed()) : m_nameText;
}

std::string NamePage::Notes() const {
    return m_notes ? Utf8(m_notes->toPlainText()) : m_notesText;
}

std::string NamePage::Problem() {
    return Name() == m_nameText ? std::string() : NameProblem(Name());
}

bool NamePage::IsChanged() {
    return Name() != m_nameText || Notes() != m_notesText;
}

namespace {

std::string Merged(std::string& read, const std::string& typed, const std::string& stored, const std::string& what) {
    if (typed == read)
        return stored;
    if (stored == std::exchange(read, stored) || stored == typed)
        return typed;
    FailWith("The " + what + " has been changed in another window of Studies, to “" + stored +
             "”. OK replaces it; Cancel keeps it.");
}

} // namespace

std::string NamePage::NameOver(const std::string& stored) {
    return Merged(m_nameText, Name(), stored, "name");
}

std::string NamePage::NotesOver(const std::string& stored) {
    return Merged(m_notesText, Notes(), stored, "text of the notes");
}

void StudyPropertiesPage::OnInitialize() {
    const Study study = About()->Space()->GetStore().StudyOf(About()->Number());
    m_nameText = study.name;
    m_notesText = study.notes;
}

std::string StudyPropertiesPage::NameProblem(const std::string& name) {
    return About()->Space()->GetStore().NameProblem(name, About()->Number());
}

std::vector<std::pair<QString, QString>> StudyPropertiesPage::Facts() {
    Store& store = About()->Space()->GetStore();
    const std::size_t dataSets = store.DataSets(About()->Number()).size();
    const std::size_t analyses = store.Analyses(About()->Number()).size();
    return {{"Data sets", Text(CountText(dataSets))}, {"Analyses", Text(CountText(analyses))}};
}

void StudyPropertiesPage::OnSave() {
    if (!IsChanged())
        return;
    const Ref<StudyContext> study = About();
    Store& store = study->Space()->GetStore();
    const Study stored = store.StudyOf(study->Number());
    const std::string name = NameOver(stored.name);
    const std::string notes = NotesOver(stored.notes);
    store.SetStudyProperties(study->Number(), name, notes);
    m_nameText = name;
    m_notesText = notes;
    study->Space()->Tell("“" + m_nameText + "” has been changed");
}

void DataSetPropertiesPage::OnInitialize() {
    const DataSet dataSet = About()->Info();
    m_nameText = dataSet.name;
    m_notesText = dataSet.notes;
}

std::string DataSetPropertiesPage::NameProblem(const std::string& name) {
    const DataSet dataSet = About()->Info();
    return About()->Space()->GetStore().DataSetNameProblem(name, dataSet.studyId, dataSet.id);
}

std::vector<std::pair<QString, QString>> DataSetPropertiesPage::Facts() {
    const DataSet dataSet = About()->Info();
    const std::size_t columns = About()->Space()->GetStore().Columns(dataSet.id).size();
    return {{"Source", Text(dataSet.source)},
            {"Size", Text(SizeText(static_cast<std::size_t>(dataSet.rows), columns))}};
}

void DataSetPropertiesPage::OnSave() {
    if (!IsChanged())
        return;
    const Ref<DataSetContext> data = About();
    const DataSet stored = data->Info();
    const std::string name = NameOver(stored.name);
    const std::string notes = NotesOver(stored.notes);
    data->Space()->GetStore().SetDataSetProperties(data->Number(), {name, notes, {}});
    m_nameText = name;
    m_notesText = notes;
    data->Space()->Tell("“" + m_nameText + "” has been changed");
}

QWidget* UnitsPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    const std::vector<Column> columns = About()->Space()->GetStore().Columns(About()->Number());
    m_table = new QTableWidget(static_cast<int>(columns.size()), 3);
    m_table->setAccessibleName("Columns");
    m_table->setTabKeyNavigation(false); // the arrows go from cell to cell, Tab to the commands
    m_table->setHorizontalHeaderLabels({"Column", "Type", "Unit"});
    m_table->verticalHeader()->hide();
    m_table->setAlternatingRowColors(true);
    m_units.clear();
    for (int i = 0; i < m_table->rowCount(); ++i) {
        const Column& column = columns[static_cast<std::size_t>(i)];
        m_units.push_back(column.unit);
        const auto Set = [&](int columnIndex, const QString& text, bool editable) {
            auto* item = new QTableWidgetItem(text);
            if (!editable)
                item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            m_table->setItem(i, columnIndex, item);
        };
        Set(0, Text(column.name), false);
        Set(1, Text(NameOf(column.type)), false);
        Set(2, Text(column.unit), column.IsNumeric());
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setStretchLastSection(true);
    auto* hint = new QLabel("Units are shown on the axes of charts. Double-click a unit to change it.");
    hint->setWordWrap(true);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(m_table, 1);
    layout->addWidget(hint);
    QObject::connect(m_table, &QTableWidget::itemChanged, page, [this] { Guarded([this] { ValidityChanged(); }); });
    return page;
}

std::vector<std::string> UnitsPage::Units() const {
    if (!m_table)
        return m_units;
    std::vector<std::string> units;
    for (int i = 0; i < m_table->rowCount(); ++i)
        units.push_back(Utf8(m_table->item(i, 2)->text().trimmed()));
    return units;
}

bool UnitsPage::IsChanged() {
    return Units() != m_units;
}

void UnitsPage::OnSave() {
    if (!IsChanged())
        return;
    const Ref<DataSetContext> data = About();
    const DataSet dataSet = data->Info();
    Store& store = data->Space()->GetStore();
    std::vector<std::string> units = Units();
    const std::vector<Column> stored = store.Columns(dataSet.id);
    for (std::size_t i = 0; i < units.size() && i < stored.size(); ++i)
        units[i] = Merged(m_units[i], units[i], stored[i].unit, "unit of “" + stored[i].name + "”");
    store.SetDataSetProperties(dataSet.id, {dataSet.name, dataSet.notes, units});
    m_units = Units();
    data->Space()->Tell("The units of “" + dataSet.name + "” have been changed");
}

} // namespace studies
