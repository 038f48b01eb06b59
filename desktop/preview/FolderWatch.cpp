#include "desktop/preview/FolderWatch.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <sys/stat.h>

namespace corvane::desktop {

namespace {

// An editor that saves in several writes is done within this; a user doesn't notice it.
constexpr int restMilliseconds = 120;
constexpr int atMostMilliseconds = 1000;
constexpr int pollMilliseconds = 1500;

// Folders are looked through with all that is in them.
const QStringList& Watched() {
    static const QStringList names{"Services", "Forms", "Images", "plugins", "QRZ.INI", "standins.json"};
    return names;
}

// What editors leave beside a file while they save it, and interpreters beside a program.
bool IsPassing(const QString& name) {
    return name.endsWith('~') || name.startsWith('.') || name.endsWith(".swp") || name.endsWith(".tmp") ||
           name.endsWith(".pyc");
}

} // namespace

FolderWatch::FolderWatch(const QString& folder, QObject* parent)
    : QObject(parent), m_folder(QDir::cleanPath(QFileInfo(folder).absoluteFilePath())) {
    m_rest.setSingleShot(true);
    m_rest.setInterval(restMilliseconds);
    m_atMost.setSingleShot(true);
    m_atMost.setInterval(atMostMilliseconds);
    m_poll.setInterval(pollMilliseconds);
    connect(&m_rest, &QTimer::timeout, this, &FolderWatch::Look);
    connect(&m_atMost, &QTimer::timeout, this, &FolderWatch::Look);
    connect(&m_poll, &QTimer::timeout, this, &FolderWatch::Look);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FolderWatch::Stirred);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FolderWatch::Stirred);
    WatchAll();
    m_told = Take();
}

QString FolderWatch::PrintOf(const QString& path) {
    struct ::stat stat {};
    if (::stat(QFile::encodeName(path).constData(), &stat) != 0)
        return {};
    return QString("%1.%2 %3 %4").arg(stat.st_mtim.tv_sec).arg(stat.st_mtim.tv_nsec).arg(stat.st_size).arg(stat.st_ino);
}

bool FolderWatch::FolderExists() const {
    return QFileInfo(m_folder + "/Services").isDir();
}

void FolderWatch::Stirred() {
    m_rest.start();
    if (!m_atMost.isActive())
        m_atMost.start();
}

// Watching comes before looking, so that nothing falls between the two.
void FolderWatch::Look() {
    m_rest.stop();
    m_atMost.stop();
    WatchAll();
    Print now = Take();
    if (now == m_told)
        return;
    m_changed.clear();
    for (auto it = now.begin(); it != now.end(); ++it)
        if (m_told.value(it.key()) != it.value())
            m_changed << it.key();
    for (auto it = m_told.begin(); it != m_told.end(); ++it)
        if (!now.contains(it.key()))
            m_changed << it.key();
    m_told = std::move(now);
    Q_EMIT Changed();
}

FolderWatch::Print FolderWatch::Take() const {
    Print print;
    const auto add = [&](const QString& path) {
        if (!IsPassing(QFileInfo(path).fileName()))
            print.insert(path, PrintOf(path));
    };
    for (const QFileInfo& entry : QDir(m_folder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        if (!Watched().contains(entry.fileName(), Qt::CaseInsensitive))
            continue;
        if (!entry.isDir()) {
            add(entry.filePath());
            continue;
        }
        print.insert(entry.filePath(), "folder");
        QDirIterator files(entry.filePath(), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            add(files.next());
    }
    return print;
}

// The folders, each file in them, and what is above: a folder that has gone comes back there.
void FolderWatch::WatchAll() {
    QStringList paths;
    QString above = QFileInfo(m_folder).path();
    while (!QFileInfo(above).isDir() && above != QFileInfo(above).path())
        above = QFileInfo(above).path();
    paths << above;
    if (QFileInfo(m_folder).isDir())
        paths << m_folder;
    for (const QFileInfo& entry : QDir(m_folder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        if (!Watched().contains(entry.fileName(), Qt::CaseInsensitive))
            continue;
        paths << entry.filePath();
        if (!entry.isDir())
            continue;
        QDirIterator files(entry.filePath(), QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            paths << files.next();
    }
    // A file that was replaced, or a folder that came back, is another than the one that is being watched.
    const QStringList before = m_watcher.files() + m_watcher.directories();
    const QSet<QString> now(paths.begin(), paths.end());
    QStringList gone;
    for (const QString& path : before)
        if (!now.contains(path))
            gone << path;
    if (!gone.isEmpty())
        m_watcher.removePaths(gone);
    const QSet<QString> known(before.begin(), before.end());
    QStringList newItems;
    for (const QString& path : paths)
        if (!known.contains(path))
            newItems << path;
    const QStringList failed = newItems.isEmpty() ? QStringList() : m_watcher.addPaths(newItems);
    bool unwatched = false;
    for (const QString& path : failed)
        unwatched |= QFileInfo::exists(path);
    if (unwatched)
        m_poll.start();
    else
        m_poll.stop();
}

} // namespace corvane::desktop

#include "moc_FolderWatch.cpp"
