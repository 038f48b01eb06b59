// A JSON file of what the desktop keeps for one user and one application. It is replaced whole or not at all, and a
// file that can't be read or written costs nothing but what would stand in it.
#pragma once

#include <QJsonObject>
#include <QString>
#include <functional>

namespace corvane::desktop {

class StateFile {
public:
    // Told what went wrong with which file.
    using NoteFunction = std::function<void(const QString&)>;

    // Nothing is kept under an empty path.
    StateFile(QString sPath, NoteFunction fnNote) : m_sPath(std::move(sPath)), m_fnNote(std::move(fnNote)) {}

    [[nodiscard]] const QString& Path() const { return m_sPath; }
    // An empty object when there is no file or it can't be read. What is no JSON object is put aside under the name
    // with
    // ".broken" behind it.
    [[nodiscard]] QJsonObject Read();
    // On disk when the call returns. False when it can't be; a file that was there stays as it was.
    bool Write(const QJsonObject& oState);

private:
    void Note(const QString& sWhat);
    void RemoveLeftOvers() const;

    QString m_sPath;
    NoteFunction m_fnNote;
    bool m_bWriteNoted = false;
};

} // namespace corvane::desktop
