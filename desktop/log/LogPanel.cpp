#include "desktop/log/LogPanel.h"

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
#include <QTableView>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

constexpr int reportLines = 200;

} // namespace

LogPanel::LogPanel(const QString& logFile, ReportParts parts, PathFunction path, QWidget* parent)
    : QWidget(parent), m_view(new LogView(logFile)), m_parts(std::move(parts)), m_path(std::move(path)) {
    auto* copy = new QPushButton(tr("&Copy"));
    auto* report = new QPushButton(tr("Save &Report…"));
    connect(copy, &QPushButton::clicked, m_view, &LogView::Copy);
    connect(report, &QPushButton::clicked, this, &LogPanel::ShowReport);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(copy);
    buttons->addWidget(report);
    buttons->addStretch(1);
    auto* all = new QHBoxLayout(this);
    all->setContentsMargins(6, 6, 6, 6);
    all->addWidget(m_view, 1);
    all->addLayout(buttons);
    setFocusProxy(&m_view->Table());
}

void LogPanel::ShowReport() {
    ReportParts parts = m_parts;
    parts.logLines = m_view->LatestLines(reportLines);
    ReportDialog dialog(ReportText(parts), m_path, this);
    dialog.exec();
}

ReportDialog::ReportDialog(const QString& text, LogPanel::PathFunction path, QWidget* parent)
    : QDialog(parent), m_preview(new QPlainTextEdit), m_path(std::move(path)) {
    setWindowTitle(tr("Save Report"));
    ResizeWithin(*this, {760, 560});
    auto* hint = new QLabel(
        tr("This is the complete report; nothing is sent. Your home folder, your name and the computer's name have "
           "been removed, but the log may contain names of your files and data. Delete what others shouldn't read."));
    hint->setWordWrap(true);
    m_preview->setPlainText(text);
    m_preview->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_preview->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_preview->setAccessibleName(tr("Report"));
    hint->setBuddy(m_preview);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    auto* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(m_preview->toPlainText()); });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (Save())
            accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addWidget(m_preview, 1);
    layout->addWidget(buttons);
}

bool ReportDialog::Save() {
    const QString path = m_path();
    if (path.isEmpty())
        return false;
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(m_preview->toPlainText().toUtf8()) >= 0 && file.commit())
        return true;
    QMessageBox::warning(this, windowTitle(), tr("%1 can't be written: %2").arg(path, file.errorString()));
    return false;
}

} // namespace corvane::desktop

#include "moc_LogPanel.cpp"
