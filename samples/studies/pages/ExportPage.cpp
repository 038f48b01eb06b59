#include "ExportPage.h"

#include "Csv.h"
#include "Errors.h"
#include "Files.h"
#include "QtText.h"
#include "Report.h"
#include "Workspace.h"
#include "corvane/author/Host.h"

#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTimer>
#include <array>

namespace studies {

using namespace corvane;

namespace {

struct Format {
    const char* name;
    const char* ending;
    CsvStyle style;
};

constexpr std::array<Format, 3> formats{{{"Commas between values, decimal points", ".csv", {',', '.'}},
                                         {"Semicolons between values, decimal commas", ".csv", {';', ','}},
                                         {"Tabs between values, decimal points", ".tsv", {'\t', '.'}}}};

} // namespace

QWidget* ExportPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    m_format = new QComboBox;
    for (const Format& format : formats)
        m_format->addItem(format.name);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString folder = QDir(documents).exists() ? documents : QDir::homePath();
    const QString name = QFileInfo(Text(About()->Info().name)).completeBaseName();
    m_path = new QLineEdit(QDir(folder).filePath(name + ".csv"));
    m_problem = new ProblemLabel;
    auto* browse = new QPushButton("&Browse\u2026");
    auto* row = new QHBoxLayout;
    row->addWidget(m_path, 1);
    row->addWidget(browse);
    const DataSet dataSet = About()->Info();
    const std::size_t columns = About()->Space()->GetStore().Columns(dataSet.id).size();
    auto* form = new QFormLayout(page);
    form->addRow("Contents", new QLabel(Text(SizeText(static_cast<std::size_t>(dataSet.rows), columns))));
    form->addRow("&Format", m_format);
    form->addRow("File", row);
    form->addRow(QString(), m_problem);
    QObject::connect(m_path, &QLineEdit::textChanged, page, [this] {
        Guarded([this] {
            ShowRemark();
            ValidityChanged();
        });
    });
    QObject::connect(m_format, &QComboBox::currentIndexChanged, page, [this](int i) {
        const QFileInfo file(m_path->text());
        m_path->setText(file.dir().filePath(file.completeBaseName() + formats[static_cast<std::size_t>(i)].ending));
    });
    QObject::connect(browse, &QPushButton::clicked, page, [this] { Guarded([this] { (void)AskForPath(); }); });
    ShowRemark();
    return page;
}

QWidget* ExportPage::FirstFocus() {
    return m_path;
}

std::string ExportPage::Problem() const {
    if (!m_path)
        return {};
    const QFileInfo file(m_path->text());
    if (m_path->text().trimmed().isEmpty())
        return "Choose a file.";
    if (file.isDir())
        return "This is a folder.";
    if (!file.isAbsolute() || !file.dir().exists())
        return "There is no folder “" + Utf8(file.dir().path()) + "”.";
    if (file.exists())
        return {};
    return QFileInfo(file.dir().path()).isWritable() ? std::string() : "That folder isn't writable.";
}

void ExportPage::ShowRemark() {
    const std::string problem = Problem();
    const bool replaces = problem.empty() && QFileInfo::exists(m_path->text().trimmed());
    m_problem->Show(replaces ? QString("The file exists and will be replaced.") : Text(problem));
}

// False when the user cancels.
bool ExportPage::AskForPath() {
    const std::string path = AskForSavePath("Export", "Text (*.csv *.tsv)|*.csv *.tsv", Utf8(m_path->text()));
    if (!path.empty())
        m_path->setText(Text(path));
    return !path.empty();
}

// "Save As" asks for another file before the form saves. A page that isn't valid then holds the form back, for as long
// as the command runs.
void ExportPage::OnCommand(StandardCommandConstants command) {
    if (command != StandardCommandConstants::cvSaveAs || !m_path || AskForPath())
        return;
    m_thoughtBetter = true;
    QTimer::singleShot(0, m_path, [this] {
        m_thoughtBetter = false;
        Guarded([this] { ValidityChanged(); });
    });
}

void ExportPage::OnSave() {
    const Ref<DataSetContext> data = About();
    const auto format = static_cast<std::size_t>(std::max(0, m_format->currentIndex()));
    // The file is there whole or not at all.
    QSaveFile file(m_path->text().trimmed());
    const QByteArray text = QByteArray::fromStdString(WriteCsv(data->Data(), formats[format].style));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        FailWith("The file “" + Utf8(file.fileName()) + "” can't be written: " + Utf8(file.errorString()) + ".");
    SetStatus(data->Info().name + " has been exported to " + Utf8(file.fileName()));
}

} // namespace studies
