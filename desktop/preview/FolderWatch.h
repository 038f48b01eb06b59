// Follows the files of an application folder that say what it looks like: definitions, pictures, QRZ.INI, stand-ins and
// which plug-ins there are. However many files change at once, and however an editor saves, it reports so once, when
// the folder has come to rest.
#pragma once

#include <QFileSystemWatcher>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace corvane::desktop {

class FolderWatch final : public QObject {
    Q_OBJECT
public:
    // The folder may be missing; it is followed as soon as it is there.
    explicit FolderWatch(const QString& folder, QObject* parent = nullptr);

    [[nodiscard]] bool FolderExists() const;
    // What distinguishes one state of a file from another: its time, size and number; empty when it isn't there.
    [[nodiscard]] static QString PrintOf(const QString& path);
    // Nothing has stirred since it looked.
    [[nodiscard]] bool IsAtRest() const { return !m_rest.isActive() && !m_atMost.isActive(); }
    // The files that have come, changed or gone, for the last Changed.
    [[nodiscard]] const QStringList& ChangedFiles() const { return m_changed; }
    // Looks now instead of when the folder has come to rest; says Changed if something has changed.
    void Look();

Q_SIGNALS:
    void Changed();

private:
    // What distinguishes one state of the folder from another, by file.
    using Print = QMap<QString, QString>;

    [[nodiscard]] Print Take() const;
    void WatchAll();
    void Stirred();

    QString m_folder;
    QFileSystemWatcher m_watcher;
    QTimer m_rest;   // runs since the last stir
    QTimer m_atMost; // runs since the first one
    QTimer m_poll;   // where the system can't watch
    Print m_told;
    QStringList m_changed;
};

} // namespace corvane::desktop
