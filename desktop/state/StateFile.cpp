#include "desktop/state/StateFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

namespace corvane::desktop {

void StateFile::Note(const QString& sWhat) {
    if (m_fnNote)
        m_fnNote(QString("The file \"%1\" %2").arg(m_sPath, sWhat));
}

// A program that was killed while it wrote has left its half behind. One of this hour may be another program's that
// writes now.
void StateFile::RemoveLeftOvers() const {
    const QFileInfo oInfo(m_sPath);
    const QString sBegin = oInfo.fileName() + '.';
    // Without a filter of names, which would be made a regular expression at each start.
    for (const QString& sName : oInfo.dir().entryList(QDir::Files | QDir::NoSymLinks, QDir::Unsorted)) {
        if (!sName.startsWith(sBegin) || sName.size() != sBegin.size() + 6 || sName.endsWith(".broken"))
            continue;
        const QFileInfo oLeft(oInfo.dir(), sName);
        if (oLeft.lastModified() < QDateTime::currentDateTime().addSecs(-3600))
            QFile::remove(oLeft.filePath());
    }
}

QJsonObject StateFile::Read() {
    if (m_sPath.isEmpty())
        return {};
    RemoveLeftOvers();
    QFile oFile(m_sPath);
    if (!oFile.open(QIODevice::ReadOnly)) {
        if (oFile.exists())
            Note("can't be read, so what it kept isn't used: " + oFile.errorString());
        return {};
    }
    QJsonParseError oError;
    const QJsonDocument oDocument = QJsonDocument::fromJson(oFile.readAll(), &oError);
    if (oDocument.isObject())
        return oDocument.object();
    oFile.close();
    const QString sBroken = m_sPath + ".broken";
    QFile::remove(sBroken);
    const bool bMoved = QFile::rename(m_sPath, sBroken);
    Note(QString("is damaged at byte %1 (%2), so what it kept isn't used%3")
             .arg(oError.offset)
             .arg(oError.errorString(), bMoved ? "; it lies beside as \".broken\"" : ""));
    return {};
}

bool StateFile::Write(const QJsonObject& oState) {
    if (m_sPath.isEmpty())
        return false;
    QDir().mkpath(QFileInfo(m_sPath).path());
    QSaveFile oFile(m_sPath); // writes beside it, syncs and renames
    const QByteArray aBytes = QJsonDocument(oState).toJson();
    if (oFile.open(QIODevice::WriteOnly) && oFile.write(aBytes) == aBytes.size() && oFile.commit())
        return true;
    if (!std::exchange(m_bWriteNoted, true)) // once is enough for a state that is written again and again
        Note("can't be written: " + oFile.errorString());
    return false;
}

} // namespace corvane::desktop
