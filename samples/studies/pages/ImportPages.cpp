#include "ImportPages.h"

#include "QtText.h"
#include "Report.h"
#include "Shell.h"

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

// What one step enters may put another in order, or out of it.
void ImportPage::OnInitialize() {
    Keep(Job()->Changed.Subscribe([this] { Reconsider(); }));
}

QWidget* ImportFilePage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    m_pPath = new QLineEdit(Text(Job()->Path()));
    m_pFound = new QLabel;
    m_pFound->setWordWrap(true);
    m_pProblem = new ProblemLabel;
    auto* pBrowse = new QPushButton("&Browse\u2026");
    auto* pRow = new QHBoxLayout;
    AddLabelled(*pRow, "F&ile", m_pPath);
    pRow->addWidget(pBrowse);
    auto* pHint = new QLabel(
        "A text file with a header row and one row for each case; values are separated by commas, semicolons or tabs.");
    pHint->setWordWrap(true);
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->addWidget(pHint);
    pLayout->addLayout(pRow);
    pLayout->addWidget(m_pFound);
    pLayout->addWidget(m_pProblem);
    pLayout->addStretch(1);
    QObject::connect(m_pPath, &QLineEdit::textEdited, pPage, [this] { Guarded([this] { FollowTyping(); }); });
    QObject::connect(m_pPath, &QLineEdit::editingFinished, pPage, [this] { Guarded([this] { TakePath(); }); });
    QObject::connect(pBrowse, &QPushButton::clicked, pPage, [this] {
        Guarded([this] {
            if (const auto sPath = AskForDataFile("Import Data")) {
                m_pPath->setText(Text(*sPath));
                TakePath();
            }
        });
    });
    return pPage;
}

QWidget* ImportFilePage::FirstFocus() {
    return m_pPath;
}

bool ImportFilePage::IsChanged() {
    return !Job()->Path().empty();
}

bool ImportFilePage::IsValid() {
    const Ref<ImportJob> oJob = Job();
    return !oJob->Path().empty() && oJob->Problem().empty();
}

void ImportFilePage::OnActivate() {
    if (Widget())
        TakePath();
}

// A file is taken as soon as its name is whole, so that the wizard can go on; what is wrong is told at the end.
void ImportFilePage::FollowTyping() {
    if (QFileInfo(m_pPath->text().trimmed()).isFile())
        return TakePath();
    Job()->SetPath({});
    ShowFound();
}

void ImportFilePage::TakePath() {
    const Ref<ImportJob> oJob = Job();
    const std::string sPath = Utf8(m_pPath->text().trimmed());
    if (sPath == oJob->Path())
        oJob->LookAgain();
    else
        oJob->SetPath(sPath);
    ShowFound();
}

void ImportFilePage::ShowFound() {
    const Ref<ImportJob> oJob = Job();
    const CsvResult* pResult = oJob->Path().empty() ? nullptr : oJob->Result();
    m_pFound->setText(pResult ? Text(SizeText(pResult->oTable.nRows, pResult->oTable.aColumns.size())) : QString());
    m_pProblem->Show(oJob->Path().empty() ? QString() : Text(oJob->Problem()));
}

QWidget* ImportFormatPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    m_pDelimiter = new QComboBox;
    for (const auto& [sName, cDelimiter] :
         {std::pair("Detect automatically", '\0'), {"Commas", ','}, {"Semicolons", ';'}, {"Tabs", '\t'}})
        m_pDelimiter->addItem(sName, QChar(cDelimiter));
    m_pPreview = new QTableWidget;
    m_pPreview->setAccessibleName("Preview");
    m_pPreview->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pPreview->setWordWrap(false);
    m_pPreview->setTabKeyNavigation(false); // the arrows go from cell to cell, Tab to the commands
    m_pPreview->verticalHeader()->setDefaultSectionSize(m_pPreview->fontMetrics().height() + 8);
    m_pSize = new QLabel;
    m_pProblem = new ProblemLabel;
    m_pSkip = new QCheckBox("&Leave out these rows");
    auto* pRow = new QHBoxLayout;
    AddLabelled(*pRow, "&Values are separated by", m_pDelimiter);
    pRow->setStretch(1, 0);
    pRow->addStretch(1);
    pRow->addWidget(m_pSize);
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->addLayout(pRow);
    pLayout->addWidget(m_pPreview, 1);
    pLayout->addWidget(m_pProblem);
    pLayout->addWidget(m_pSkip);
    QObject::connect(m_pDelimiter, &QComboBox::currentIndexChanged, pPage, [this] {
        Guarded([this] {
            Job()->SetDelimiter(m_pDelimiter->currentData().toChar().toLatin1());
            ShowFile();
        });
    });
    QObject::connect(m_pSkip, &QCheckBox::toggled, pPage,
                     [this](bool bSkip) { Guarded([&] { Job()->SetSkipsBadRows(bSkip); }); });
    // Who has put the file in order in another program finds it so here.
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, pPage, [this](Qt::ApplicationState eState) {
        if (eState == Qt::ApplicationActive)
            Guarded([this] { LookAgain(); });
    });
    ShowFile();
    return pPage;
}

void ImportFormatPage::OnActivate() {
    if (Widget())
        LookAgain();
}

void ImportFormatPage::LookAgain() {
    if (!Job()->Path().empty())
        Job()->LookAgain();
    ShowFile();
}

bool ImportFormatPage::IsValid() {
    const CsvResult* pResult = Job()->Path().empty() ? nullptr : Job()->Result();
    return pResult && Job()->Problem().empty() && (pResult->aSkipped.empty() || Job()->SkipsBadRows());
}

void ImportFormatPage::ShowFile() {
    const CsvResult* pResult = Job()->Path().empty() ? nullptr : Job()->Result();
    m_pPreview->clear();
    m_pSize->clear();
    m_pSkip->hide();
    m_pProblem->Show(Text(Job()->Problem()));
    if (pResult) {
        m_pSize->setText(Text(SizeText(pResult->oTable.nRows, pResult->oTable.aColumns.size())));
        ShowTypes(pResult->oTable);
        ShowRows(pResult->oTable);
        if (Job()->Problem().empty())
            ShowSkipped(pResult->aSkipped);
    }
}

// The first row of the preview says how each column is read; a column of numbers can be made one of text.
void ImportFormatPage::ShowTypes(const Table& oTable) {
    m_pPreview->setColumnCount(static_cast<int>(oTable.aColumns.size()));
    m_pPreview->setRowCount(1);
    m_pPreview->setVerticalHeaderItem(0, new QTableWidgetItem("Type"));
    for (int i = 0; i < m_pPreview->columnCount(); ++i) {
        const Column& oColumn = oTable.aColumns[static_cast<std::size_t>(i)];
        auto* pName = new QTableWidgetItem(Text(oColumn.sName));
        pName->setTextAlignment(Qt::AlignVCenter | (oColumn.IsNumeric() ? Qt::AlignRight : Qt::AlignLeft));
        m_pPreview->setHorizontalHeaderItem(i, pName);
        auto* pType = new QComboBox;
        pType->setAccessibleName("Type of " + Text(oColumn.sName));
        if (oColumn.IsNumeric())
            pType->addItem(Text(NameOf(oColumn.eType)));
        pType->addItem("text");
        pType->setEnabled(oColumn.IsNumeric());
        pType->setCurrentIndex(oColumn.IsNumeric() && Job()->IsText(static_cast<std::size_t>(i)) ? 1 : 0);
        QObject::connect(pType, &QComboBox::currentIndexChanged, m_pPreview, [this, i](int iType) {
            Guarded([&] {
                Job()->SetText(static_cast<std::size_t>(i), iType == 1);
                for (int iRow = 1; iRow < m_pPreview->rowCount(); ++iRow)
                    m_pPreview->item(iRow, i)->setTextAlignment(Qt::AlignVCenter |
                                                                (iType == 1 ? Qt::AlignLeft : Qt::AlignRight));
            });
        });
        m_pPreview->setCellWidget(0, i, pType);
    }
    m_pPreview->setRowHeight(0, m_pPreview->cellWidget(0, 0)->sizeHint().height());
}

void ImportFormatPage::ShowRows(const Table& oTable) {
    constexpr std::size_t nMostRows = 50;
    const auto nRows = static_cast<int>(std::min(nMostRows, oTable.nRows));
    m_pPreview->setRowCount(1 + nRows);
    for (int iRow = 0; iRow < nRows; ++iRow) {
        m_pPreview->setVerticalHeaderItem(iRow + 1, new QTableWidgetItem(QString::number(iRow + 1)));
        for (int i = 0; i < m_pPreview->columnCount(); ++i) {
            const auto iColumn = static_cast<std::size_t>(i);
            const Column& oColumn = oTable.aColumns[iColumn];
            auto* pItem = new QTableWidgetItem(Text(oColumn.Text(static_cast<std::size_t>(iRow))));
            const bool bRight = oColumn.IsNumeric() && !Job()->IsText(iColumn);
            pItem->setTextAlignment(Qt::AlignVCenter | (bRight ? Qt::AlignRight : Qt::AlignLeft));
            m_pPreview->setItem(iRow + 1, i, pItem);
        }
    }
    m_pPreview->resizeColumnsToContents();
    const int nWidest = m_pPreview->fontMetrics().averageCharWidth() * 30;
    for (int i = 0; i < m_pPreview->columnCount(); ++i)
        m_pPreview->setColumnWidth(i, std::min(nWidest, std::max(m_pPreview->columnWidth(i),
                                                                 m_pPreview->cellWidget(0, i)->sizeHint().width())));
}

void ImportFormatPage::ShowSkipped(const std::vector<std::string>& aSkipped) {
    constexpr std::size_t nMostShown = 3;
    if (aSkipped.empty())
        return;
    std::string sProblem =
        aSkipped.size() == 1 ? "A row can't be read:" : CountText(aSkipped.size()) + " rows can't be read:";
    for (std::size_t i = 0; i < std::min(nMostShown, aSkipped.size()); ++i)
        sProblem += "\n" + aSkipped[i];
    if (aSkipped.size() > nMostShown)
        sProblem += "\nand " + CountText(aSkipped.size() - nMostShown) + " more.";
    m_pProblem->Show(Text(sProblem));
    const QSignalBlocker oBlocker(m_pSkip);
    m_pSkip->setText(aSkipped.size() == 1 ? "&Leave out this row" : "&Leave out these rows");
    m_pSkip->setChecked(Job()->SkipsBadRows());
    m_pSkip->show();
}

QWidget* ImportTargetPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    const Ref<ImportJob> oJob = Job();
    m_pStudy = new QComboBox;
    for (const Study& oStudy : oJob->Space()->GetStore().Studies())
        m_pStudy->addItem(Text(oStudy.sName), static_cast<qlonglong>(oStudy.nId));
    m_pStudy->addItem("New study", qlonglong{0});
    m_pNewStudy = new QLineEdit;
    m_pNewStudyLabel = new QLabel("N&ame");
    m_pNewStudyLabel->setBuddy(m_pNewStudy);
    m_pName = new QLineEdit;
    m_pProblem = new ProblemLabel;
    auto* pForm = new QFormLayout(pPage);
    pForm->addRow("&Into", m_pStudy);
    pForm->addRow(m_pNewStudyLabel, m_pNewStudy);
    pForm->addRow("&Data set", m_pName);
    pForm->addRow(QString(), m_pProblem);
    ShowTarget();
    const auto OnChange = [this] { Guarded([this] { TakeTarget(); }); };
    QObject::connect(m_pStudy, &QComboBox::currentIndexChanged, pPage, OnChange);
    QObject::connect(m_pNewStudy, &QLineEdit::textChanged, pPage, OnChange);
    QObject::connect(m_pName, &QLineEdit::textChanged, pPage, OnChange);
    return pPage;
}

QWidget* ImportTargetPage::FirstFocus() {
    return m_pName;
}

void ImportTargetPage::OnActivate() {
    if (Widget())
        ShowTarget();
}

void ImportTargetPage::ShowTarget() {
    const Ref<ImportJob> oJob = Job();
    const QSignalBlocker aBlockers[] = {QSignalBlocker(m_pStudy), QSignalBlocker(m_pNewStudy), QSignalBlocker(m_pName)};
    m_pStudy->setCurrentIndex(m_pStudy->findData(static_cast<qlonglong>(oJob->nStudyId)));
    m_pNewStudy->setText(Text(oJob->sNewStudyName));
    m_pName->setText(Text(oJob->sName));
    m_pNewStudy->setVisible(oJob->nStudyId == 0);
    m_pNewStudyLabel->setVisible(oJob->nStudyId == 0);
    m_pProblem->Show(Text(oJob->TargetProblem()));
}

void ImportTargetPage::TakeTarget() {
    const Ref<ImportJob> oJob = Job();
    oJob->nStudyId = m_pStudy->currentData().toLongLong();
    oJob->sNewStudyName = Utf8(m_pNewStudy->text().trimmed());
    oJob->sName = Utf8(m_pName->text().trimmed());
    m_pNewStudy->setVisible(oJob->nStudyId == 0);
    m_pNewStudyLabel->setVisible(oJob->nStudyId == 0);
    m_pProblem->Show(Text(oJob->TargetProblem()));
    Reconsider();
}

void ImportTargetPage::OnSave() {
    Job()->Run();
}

} // namespace studies
