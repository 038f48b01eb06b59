#include "desktop/session/RecentFiles.h"

#include <QJsonArray>

namespace corvane::desktop {

RecentFiles::RecentFiles(StateFile oFile) : m_oFile(std::move(oFile)) {
    for (const auto& oPath : m_oFile.Read()["files"].toArray())
        if (oPath.isString() && m_aPaths.size() < MostFiles)
            m_aPaths.push_back(oPath.toString().toStdString());
}

void RecentFiles::Add(const std::string& sPath) {
    std::erase(m_aPaths, sPath);
    m_aPaths.insert(m_aPaths.begin(), sPath);
    if (m_aPaths.size() > MostFiles)
        m_aPaths.pop_back();
    Keep();
}

void RecentFiles::Remove(const std::string& sPath) {
    if (std::erase(m_aPaths, sPath) > 0)
        Keep();
}

void RecentFiles::Clear() {
    m_aPaths.clear();
    Keep();
}

std::string RecentFiles::Item(Long lPosition) const {
    if (lPosition < 1 || lPosition > Count())
        Fail(FailureNumber::Subscript,
             "There is no file " + std::to_string(lPosition) + " among " + std::to_string(Count()) + " recent files");
    return m_aPaths[static_cast<std::size_t>(lPosition - 1)];
}

void RecentFiles::Keep() {
    QJsonArray aPaths;
    for (const std::string& sPath : m_aPaths)
        aPaths.append(QString::fromStdString(sPath));
    m_oFile.Write({{"files", aPaths}});
}

} // namespace corvane::desktop
