#include "desktop/session/RecentFiles.h"

#include <QJsonArray>

namespace corvane::desktop {

RecentFiles::RecentFiles(StateFile file) : m_file(std::move(file)) {
    for (const auto& path : m_file.Read()["files"].toArray())
        if (path.isString() && m_paths.size() < MostFiles)
            m_paths.push_back(path.toString().toStdString());
}

void RecentFiles::Add(const std::string& path) {
    std::erase(m_paths, path);
    m_paths.insert(m_paths.begin(), path);
    if (m_paths.size() > MostFiles)
        m_paths.pop_back();
    Save();
}

void RecentFiles::Remove(const std::string& path) {
    if (std::erase(m_paths, path) > 0)
        Save();
}

void RecentFiles::Clear() {
    m_paths.clear();
    Save();
}

std::string RecentFiles::Item(Long position) const {
    if (position < 1 || position > Count())
        Fail(FailureNumber::Subscript,
             "There is no file " + std::to_string(position) + " among " + std::to_string(Count()) + " recent files");
    return m_paths[static_cast<std::size_t>(position - 1)];
}

void RecentFiles::Save() {
    QJsonArray paths;
    for (const std::string& path : m_paths)
        paths.append(QString::fromStdString(path));
    m_file.Write({{"files", paths}});
    if (m_onChange)
        m_onChange();
}

} // namespace corvane::desktop
