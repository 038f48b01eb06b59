#include "desktop/platform/FileDialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

namespace corvane::desktop {

namespace {

struct Files {
    Q_DECLARE_TR_FUNCTIONS(Files)
};

// "csv" of "Data files (*.csv *.txt)"; nothing where the filter doesn't name one ending.
QString SuffixOf(const QString& filter) {
    const QString pattern = filter.section('(', -1).section(')', 0, 0).section(' ', 0, 0);
    const QString suffix = pattern.startsWith("*.") ? pattern.mid(2) : QString();
    return suffix.contains('*') || suffix.contains('?') ? QString() : suffix;
}

bool MayReplace(QWidget* parent, const QString& title, const QFileInfo& file) {
    QMessageBox box(QMessageBox::Warning, title, Files::tr("“%1” is there already.").arg(file.fileName()),
                    QMessageBox::NoButton, parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(Files::tr("Replacing it in the folder “%1” overwrites what it holds.")
                               .arg(QDir::toNativeSeparators(file.path())));
    const QPushButton* replace = box.addButton(Files::tr("&Replace"), QMessageBox::DestructiveRole);
    QPushButton* other = box.addButton(Files::tr("Choose &Another Name"), QMessageBox::RejectRole);
    box.setDefaultButton(other);
    box.setEscapeButton(other);
    box.exec();
    return box.clickedButton() == replace;
}

} // namespace

QStringList FiltersOf(const QString& filter) {
    const QStringList parts = filter.split('|');
    QStringList filters;
    bool hasAll = false;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = QString(parts[i + 1]).replace(';', ' ').simplified();
        filters.append(QString("%1 (%2)").arg(parts[i].section('(', 0, 0).trimmed(), patterns));
        hasAll = hasAll || patterns == "*" || patterns == "*.*";
    }
    if (!hasAll)
        filters.append(Files::tr("All files") + " (*)");
    return filters;
}

QString FileDialogs::FolderFor(const QString& purpose, const QString& otherwise) {
    if (!m_folders)
        m_folders = m_file.Read();
    const QString remembered = (*m_folders)[purpose].toString();
    for (const QString& folder : {remembered, otherwise})
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    return QDir::homePath();
}

void FileDialogs::Remember(const QString& purpose, const QString& folder) {
    (*m_folders)[purpose] = folder;
    m_file.Write(*m_folders);
}

QString FileDialogs::AskOpen(QWidget* parent, const QString& title, const QString& filter, const QString& folder) {
    QString path = QFileDialog::getOpenFileName(parent, title, FolderFor(title, folder), FiltersOf(filter).join(";;"));
    if (!path.isEmpty())
        Remember(title, QFileInfo(path).absolutePath());
    return path;
}

QString FileDialogs::AskFolder(QWidget* parent, const QString& title, const QString& folder) {
    QString chosen = QFileDialog::getExistingDirectory(parent, title, FolderFor(title, folder));
    if (!chosen.isEmpty())
        Remember(title, QFileInfo(chosen).absoluteFilePath());
    return chosen;
}

// The question is the host's own: the toolkit's comes before it completes the name by the filter's ending.
QString FileDialogs::AskSave(QWidget* parent, const QString& title, const QString& filter, const QString& path) {
    const QFileInfo proposed(path);
    QFileDialog dialog(parent, title, FolderFor(title, proposed.isAbsolute() ? proposed.path() : QString()));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = FiltersOf(filter);
    dialog.setNameFilters(filters);
    const auto itNamed = std::find_if(filters.begin(), filters.end(), [&](const QString& each) {
        return !proposed.suffix().isEmpty() && SuffixOf(each) == proposed.suffix();
    });
    if (itNamed != filters.end())
        dialog.selectNameFilter(*itNamed);
    dialog.selectFile(proposed.fileName());
    const auto complete = [&dialog](const QString& chosen) { dialog.setDefaultSuffix(SuffixOf(chosen)); };
    complete(dialog.selectedNameFilter());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, complete);
    while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
        QString chosen = dialog.selectedFiles().first();
        Remember(title, QFileInfo(chosen).absolutePath());
        if (!QFileInfo::exists(chosen) || MayReplace(parent, title, QFileInfo(chosen)))
            return chosen;
    }
    return {};
}

} // namespace corvane::desktop
