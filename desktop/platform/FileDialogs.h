// The one way in which the host asks for a file to read or to write, or for a folder: it remembers a folder for each
// purpose, offers all files beside those of a filter, and asks before a file is replaced.
#pragma once

#include "desktop/state/StateFile.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <optional>

class QWidget;

namespace corvane::desktop {

// "Data files (*.csv;*.txt)|*.csv;*.txt|All files|*" as the toolkit's dialogs take it, with all files at the end where
// the filter leaves them out.
[[nodiscard]] QStringList FiltersOf(const QString& filter);

class FileDialogs {
public:
    // The file keeps the folders for the next start.
    explicit FileDialogs(StateFile file) : m_file(std::move(file)) {}

    // The title is the purpose. All answer with nothing when the user cancels. The folder, or that of the path, is
    // where the first dialog of a purpose begins.
    [[nodiscard]] QString AskOpen(QWidget* parent, const QString& title, const QString& filter, const QString& folder);
    [[nodiscard]] QString AskSave(QWidget* parent, const QString& title, const QString& filter, const QString& path);
    [[nodiscard]] QString AskFolder(QWidget* parent, const QString& title, const QString& folder);

private:
    [[nodiscard]] QString FolderFor(const QString& purpose, const QString& otherwise);
    void Remember(const QString& purpose, const QString& folder);

    StateFile m_file;
    std::optional<QJsonObject> m_folders; // by purpose, once they have been read
};

} // namespace corvane::desktop
