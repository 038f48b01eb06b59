#include "desktop/state/StateFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

namespace corvane::desktop {

namespace {

// What was damaged before stays, too, as far as that goes. The ending that it got; empty when it couldn't be moved.
QString MoveAside(const QString& path) {
    constexpr int mostKept = 9;
    QString ending = ".broken";
    for (int n = 2; n <= mostKept && QFile::exists(path + ending); ++n)
        ending = QString(".broken-%1").arg(n);
    QFile::remove(path + ending);
    return QFile::rename(path, path + ending) ? ending : QString();
}

} // namespace

void StateFile::Note(const QString& what) {
    if (m_note)
        m_note(QString("The file \"%1\" %2").arg(m_path, what));
}

// A program that was killed while it wrote has left its half behind. One of this hour may be another program's that
// writes now.
void StateFile::RemoveLeftOvers() const {
    const QFileInfo info(m_path);
    const QString begin = info.fileName() + '.';
    // Without a filter of names, which would be made a regular expression at each start.
    for (const QString& name : info.dir().entryList(QDir::Files | QDir::NoSymLinks, QDir::Unsorted)) {
        if (!name.startsWith(begin) || name.size() != begin.size() + 6 || name.endsWith(".broken"))
            continue;
        const QFileInfo left(info.dir(), name);
        if (left.lastModified() < QDateTime::currentDateTime().addSecs(-3600))
            QFile::remove(left.filePath());
    }
}

QJsonObject StateFile::Read() {
    if (m_path.isEmpty())
        return {};
    RemoveLeftOvers();
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (file.exists())
            Note("can't be read, so what it kept isn't used: " + file.errorString());
        return {};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (document.isObject())
        return document.object();
    file.close();
    const QString aside = MoveAside(m_path);
    Note(QString("is damaged at byte %1 (%2), so what it kept isn't used%3")
             .arg(error.offset)
             .arg(error.errorString(), aside.isEmpty() ? QString() : "; it lies beside as \"" + aside + "\""));
    return {};
}

bool StateFile::Write(const QJsonObject& state) {
    if (m_path.isEmpty())
        return false;
    QDir().mkpath(QFileInfo(m_path).path());
    QSaveFile file(m_path); // writes beside it, syncs and renames
    const QByteArray bytes = QJsonDocument(state).toJson();
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    if (!std::exchange(m_writeNoted, true)) // once is enough for a state that is written again and again
        Note("can't be written: " + file.errorString());
    return false;
}

} // namespace corvane::desktop
