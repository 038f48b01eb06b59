// Plug-ins that the program has loaded, and which of them have been rebuilt since: a library that is loaded stays
// so, so that the new one is used by another run only.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace corvane::desktop {

class LoadedPlugins {
public:
    // Notes the file as it is now. To be called before it may be loaded.
    void Note(const QString& path);
    // The names of libraries that are loaded and have another file now.
    [[nodiscard]] QStringList Rebuilt() const;

private:
    QMap<QString, QString> m_prints; // by path: the file as it was when it was loaded
};

} // namespace corvane::desktop
