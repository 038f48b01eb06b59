#include "desktop/preview/FolderWatch.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <sys/stat.h>

namespace corvane::desktop {

namespace {

// An editor that saves in several writes is done within this; a person doesn't notice it.
constexpr int nRestMilliseconds = 120;
constexpr int nAtMostMilliseconds = 1000;
constexpr int nPollMilliseconds = 1500;

// Folders are looked through with all that is in them.
const QStringList& Watched() {
    static const QStringList aNames{"Services", "Images", "plugins", "QRZ.INI", "standins.json"};
    return aNames;
}

// What editors leave beside a file while they save it.
bool IsPassing(const QString& sName) {
    return sName.endsWith('~') || sName.startsWith('.') || sName.endsWith(".swp") || sName.endsWith(".tmp");
}

} // namespace

FolderWatch::FolderWatch(const QString& sFolder, QObject* pParent)
    : QObject(pParent), m_sFolder(QDir::cleanPath(QFileInfo(sFolder).absoluteFilePath())) {
    m_oRest.setSingleShot(true);
    m_oRest.setInterval(nRestMilliseconds);
    m_oAtMost.setSingleShot(true);
    m_oAtMost.setInterval(nAtMostMilliseconds);
    m_oPoll.setInterval(nPollMilliseconds);
    connect(&m_oRest, &QTimer::timeout, this, &FolderWatch::Look);
    connect(&m_oAtMost, &QTimer::timeout, this, &FolderWatch::Look);
    connect(&m_oPoll, &QTimer::timeout, this, &FolderWatch::Look);
    connect(&m_oWatcher, &QFileSystemWatcher::directoryChanged, this, &FolderWatch::Stirred);
    connect(&m_oWatcher, &QFileSystemWatcher::fileChanged, this, &FolderWatch::Stirred);
    WatchAll();
    m_oTold = Take();
}

QString FolderWatch::PrintOf(const QString& sPath) {
    struct ::stat oStat {};
    if (::stat(QFile::encodeName(sPath).constData(), &oStat) != 0)
        return {};
    return QString("%1.%2 %3 %4")
        .arg(oStat.st_mtim.tv_sec)
        .arg(oStat.st_mtim.tv_nsec)
        .arg(oStat.st_size)
        .arg(oStat.st_ino);
}

bool FolderWatch::FolderExists() const {
    return QFileInfo(m_sFolder + "/Services").isDir();
}

void FolderWatch::Stirred() {
    m_oRest.start();
    if (!m_oAtMost.isActive())
        m_oAtMost.start();
}

// Watching comes before looking, so that nothing falls between the two.
void FolderWatch::Look() {
    m_oRest.stop();
    m_oAtMost.stop();
    WatchAll();
    Print oNow = Take();
    if (oNow == m_oTold)
        return;
    m_oTold = std::move(oNow);
    Q_EMIT Changed();
}

FolderWatch::Print FolderWatch::Take() const {
    Print oPrint;
    const auto fnAdd = [&](const QString& sPath) {
        if (!IsPassing(QFileInfo(sPath).fileName()))
            oPrint.insert(sPath, PrintOf(sPath));
    };
    for (const QFileInfo& oEntry : QDir(m_sFolder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        if (!Watched().contains(oEntry.fileName(), Qt::CaseInsensitive))
            continue;
        if (!oEntry.isDir()) {
            fnAdd(oEntry.filePath());
            continue;
        }
        oPrint.insert(oEntry.filePath(), "folder");
        QDirIterator oFiles(oEntry.filePath(), QDir::Files, QDirIterator::Subdirectories);
        while (oFiles.hasNext())
            fnAdd(oFiles.next());
    }
    return oPrint;
}

// The folders, each file in them, and what is above: a folder that has gone comes back there.
void FolderWatch::WatchAll() {
    QStringList aPaths;
    QString sAbove = QFileInfo(m_sFolder).path();
    while (!QFileInfo(sAbove).isDir() && sAbove != QFileInfo(sAbove).path())
        sAbove = QFileInfo(sAbove).path();
    aPaths << sAbove;
    if (QFileInfo(m_sFolder).isDir())
        aPaths << m_sFolder;
    for (const QFileInfo& oEntry : QDir(m_sFolder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        if (!Watched().contains(oEntry.fileName(), Qt::CaseInsensitive))
            continue;
        aPaths << oEntry.filePath();
        if (!oEntry.isDir())
            continue;
        QDirIterator oFiles(oEntry.filePath(), QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot,
                            QDirIterator::Subdirectories);
        while (oFiles.hasNext())
            aPaths << oFiles.next();
    }
    // A file that was replaced, or a folder that came back, is another than the one that is being watched.
    const QStringList aBefore = m_oWatcher.files() + m_oWatcher.directories();
    const QSet<QString> setNow(aPaths.begin(), aPaths.end());
    QStringList aGone;
    for (const QString& sPath : aBefore)
        if (!setNow.contains(sPath))
            aGone << sPath;
    if (!aGone.isEmpty())
        m_oWatcher.removePaths(aGone);
    const QSet<QString> setBefore(aBefore.begin(), aBefore.end());
    QStringList aNew;
    for (const QString& sPath : aPaths)
        if (!setBefore.contains(sPath))
            aNew << sPath;
    const QStringList aFailed = aNew.isEmpty() ? QStringList() : m_oWatcher.addPaths(aNew);
    bool bUnwatched = false;
    for (const QString& sPath : aFailed)
        bUnwatched |= QFileInfo::exists(sPath);
    if (bUnwatched)
        m_oPoll.start();
    else
        m_oPoll.stop();
}

} // namespace corvane::desktop
