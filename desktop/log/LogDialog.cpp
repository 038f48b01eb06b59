#include "desktop/log/LogDialog.h"

#include "desktop/style/DialogSize.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

constexpr int nReportLines = 200;

} // namespace

LogDialog::LogDialog(const QString& sLogFile, ReportParts oParts, PathFunction fnPath, QWidget* pParent)
    : QDialog(pParent), m_pView(new LogView(sLogFile)), m_oParts(std::move(oParts)), m_fnPath(std::move(fnPath)) {
    setWindowTitle(tr("Log"));
    ResizeWithin(*this, {860, 520});
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* pCopy = pButtons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    auto* pReport = pButtons->addButton(tr("Save &Report…"), QDialogButtonBox::ActionRole);
    connect(pCopy, &QPushButton::clicked, m_pView, &LogView::Copy);
    connect(pReport, &QPushButton::clicked, this, &LogDialog::ShowReport);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(m_pView, 1);
    pLayout->addWidget(pButtons);
}

void LogDialog::ShowReport() {
    ReportParts oParts = m_oParts;
    oParts.aLogLines = m_pView->LatestLines(nReportLines);
    ReportDialog oDialog(ReportText(oParts), m_fnPath, this);
    oDialog.exec();
}

ReportDialog::ReportDialog(const QString& sText, LogDialog::PathFunction fnPath, QWidget* pParent)
    : QDialog(pParent), m_pPreview(new QPlainTextEdit), m_fnPath(std::move(fnPath)) {
    setWindowTitle(tr("Save Report"));
    ResizeWithin(*this, {760, 560});
    auto* pHint = new QLabel(
        tr("This is the complete report; nothing is sent. Your home folder, your name and the computer's name have "
           "been removed, but the log may contain names of your files and data. Delete what others shouldn't read."));
    pHint->setWordWrap(true);
    m_pPreview->setPlainText(sText);
    m_pPreview->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_pPreview->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_pPreview->setAccessibleName(tr("Report"));
    pHint->setBuddy(m_pPreview);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    auto* pCopy = pButtons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    connect(pCopy, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(m_pPreview->toPlainText()); });
    connect(pButtons, &QDialogButtonBox::accepted, this, [this] {
        if (Save())
            accept();
    });
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(pHint);
    pLayout->addWidget(m_pPreview, 1);
    pLayout->addWidget(pButtons);
}

bool ReportDialog::Save() {
    const QString sPath = m_fnPath();
    if (sPath.isEmpty())
        return false;
    QSaveFile oFile(sPath);
    if (oFile.open(QIODevice::WriteOnly) && oFile.write(m_pPreview->toPlainText().toUtf8()) >= 0 && oFile.commit())
        return true;
    QMessageBox::warning(this, windowTitle(), tr("%1 can't be written: %2").arg(sPath, oFile.errorString()));
    return false;
}

} // namespace corvane::desktop
