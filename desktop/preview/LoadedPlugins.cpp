#include "desktop/preview/LoadedPlugins.h"

#include "desktop/preview/FolderWatch.h"

#include <QFile>
#include <QFileInfo>
#include <dlfcn.h>

namespace corvane::desktop {

namespace {

// By its path; the file may be another by now.
bool IsLoaded(const QString& sPath) {
    void* pLibrary = ::dlopen(QFile::encodeName(sPath).constData(), RTLD_LAZY | RTLD_NOLOAD);
    if (pLibrary)
        ::dlclose(pLibrary);
    return pLibrary != nullptr;
}

} // namespace

void LoadedPlugins::Note(const QString& sPath) {
    if (!m_mapPrints.contains(sPath) || !IsLoaded(sPath)) // else it was loaded from the file that was noted
        m_mapPrints[sPath] = FolderWatch::PrintOf(sPath);
}

QStringList LoadedPlugins::BuiltAnew() const {
    QStringList aNames;
    for (auto it = m_mapPrints.begin(); it != m_mapPrints.end(); ++it) {
        const QString sNow = FolderWatch::PrintOf(it.key());
        if (!sNow.isEmpty() && sNow != it.value() && IsLoaded(it.key()))
            aNames << QFileInfo(it.key()).baseName().mid(3); // without "lib"
    }
    return aNames;
}

} // namespace corvane::desktop
