#include "desktop/preview/LoadedPlugins.h"

#include "desktop/preview/FolderWatch.h"

#include <QFile>
#include <QFileInfo>
#include <dlfcn.h>

namespace corvane::desktop {

namespace {

// By its path; the file may be another by now.
bool IsLoaded(const QString& path) {
    void* library = ::dlopen(QFile::encodeName(path).constData(), RTLD_LAZY | RTLD_NOLOAD);
    if (library)
        ::dlclose(library);
    return library != nullptr;
}

} // namespace

void LoadedPlugins::Note(const QString& path) {
    if (!m_prints.contains(path) || !IsLoaded(path)) // else it was loaded from the file that was noted
        m_prints[path] = FolderWatch::PrintOf(path);
}

QStringList LoadedPlugins::Rebuilt() const {
    QStringList names;
    for (auto it = m_prints.begin(); it != m_prints.end(); ++it) {
        const QString now = FolderWatch::PrintOf(it.key());
        if (!now.isEmpty() && now != it.value() && IsLoaded(it.key()))
            names << QFileInfo(it.key()).baseName().mid(3); // without "lib"
    }
    return names;
}

} // namespace corvane::desktop
