#include "ExportPage.h"

#include "Csv.h"
#include "Errors.h"
#include "QtText.h"
#include "Report.h"
#include "Shell.h"
#include "Workspace.h"

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
    const char* sName;
    const char* sEnding;
    CsvStyle oStyle;
};

constexpr std::array<Format, 3> aFormats{{{"Commas between values, decimal points", ".csv", {',', '.'}},
                                          {"Semicolons between values, decimal commas", ".csv", {';', ','}},
                                          {"Tabs between values, decimal points", ".tsv", {'\t', '.'}}}};

} // namespace

void ExportPage::OnInitialize() {
    Keep(Base()->CommandClickEvent.Subscribe([this](StandardCommandConstants eCommand) { OnCommand(eCommand); }));
}

QWidget* ExportPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    m_pFormat = new QComboBox;
    for (const Format& oFormat : aFormats)
        m_pFormat->addItem(oFormat.sName);
    const QString sDocuments = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString sFolder = QDir(sDocuments).exists() ? sDocuments : QDir::homePath();
    const QString sName = QFileInfo(Text(About<DataSetContext>()->Info().sName)).completeBaseName();
    m_pPath = new QLineEdit(QDir(sFolder).filePath(sName + ".csv"));
    m_pProblem = new ProblemLabel;
    auto* pBrowse = new QPushButton("&Browse\u2026");
    auto* pRow = new QHBoxLayout;
    pRow->addWidget(m_pPath, 1);
    pRow->addWidget(pBrowse);
    const DataSet oDataSet = About<DataSetContext>()->Info();
    const std::size_t nColumns = About<DataSetContext>()->Space()->GetStore().Columns(oDataSet.nId).size();
    auto* pForm = new QFormLayout(pPage);
    pForm->addRow("Contents", new QLabel(Text(SizeText(static_cast<std::size_t>(oDataSet.nRows), nColumns))));
    pForm->addRow("&Format", m_pFormat);
    pForm->addRow("File", pRow);
    pForm->addRow(QString(), m_pProblem);
    QObject::connect(m_pPath, &QLineEdit::textChanged, pPage, [this] {
        Guarded([this] {
            ShowRemark();
            Reconsider();
        });
    });
    QObject::connect(m_pFormat, &QComboBox::currentIndexChanged, pPage, [this](int i) {
        const QFileInfo oFile(m_pPath->text());
        m_pPath->setText(
            oFile.dir().filePath(oFile.completeBaseName() + aFormats[static_cast<std::size_t>(i)].sEnding));
    });
    QObject::connect(pBrowse, &QPushButton::clicked, pPage, [this] { Guarded([this] { (void)AskForPath(); }); });
    ShowRemark();
    return pPage;
}

QWidget* ExportPage::FirstFocus() {
    return m_pPath;
}

std::string ExportPage::Problem() const {
    if (!m_pPath)
        return {};
    const QFileInfo oFile(m_pPath->text());
    if (m_pPath->text().trimmed().isEmpty())
        return "Choose a file.";
    if (oFile.isDir())
        return "This is a folder.";
    if (!oFile.isAbsolute() || !oFile.dir().exists())
        return "There is no folder “" + Utf8(oFile.dir().path()) + "”.";
    if (oFile.exists())
        return {};
    return QFileInfo(oFile.dir().path()).isWritable() ? std::string() : "That folder isn't writable.";
}

void ExportPage::ShowRemark() {
    const std::string sProblem = Problem();
    const bool bReplaces = sProblem.empty() && QFileInfo::exists(m_pPath->text().trimmed());
    m_pProblem->Show(bReplaces ? QString("The file exists and will be replaced.") : Text(sProblem));
}

// False when the person thinks better of it.
bool ExportPage::AskForPath() {
    const std::string sPath = AskForSavePath("Export", "Text (*.csv *.tsv)|*.csv *.tsv", Utf8(m_pPath->text()));
    if (!sPath.empty())
        m_pPath->setText(Text(sPath));
    return !sPath.empty();
}

// "Save As" asks for another file before the form saves. A page that isn't valid then holds the form back, for as long
// as the command runs.
void ExportPage::OnCommand(StandardCommandConstants eCommand) {
    if (eCommand != StandardCommandConstants::cvSaveAs || !m_pPath || AskForPath())
        return;
    m_bThoughtBetter = true;
    QTimer::singleShot(0, m_pPath, [this] {
        m_bThoughtBetter = false;
        Guarded([this] { Reconsider(); });
    });
}

void ExportPage::OnSave() {
    const Ref<DataSetContext> oData = About<DataSetContext>();
    const auto iFormat = static_cast<std::size_t>(std::max(0, m_pFormat->currentIndex()));
    // The file is there whole or not at all.
    QSaveFile oFile(m_pPath->text().trimmed());
    const QByteArray sText = QByteArray::fromStdString(WriteCsv(oData->Data(), aFormats[iFormat].oStyle));
    if (!oFile.open(QIODevice::WriteOnly) || oFile.write(sText) != sText.size() || !oFile.commit())
        FailWith("The file “" + Utf8(oFile.fileName()) + "” can't be written: " + Utf8(oFile.errorString()) + ".");
    ShowStatus(oData->Info().sName + " has been exported to " + Utf8(oFile.fileName()));
}

} // namespace studies
