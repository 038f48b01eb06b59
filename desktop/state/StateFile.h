// A JSON file of what the desktop keeps for one user and one application. It is replaced whole or not at all, and a
// file that can't be read or written costs nothing but what would be in it.
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
    StateFile(QString path, NoteFunction note) : m_path(std::move(path)), m_note(std::move(note)) {}

    [[nodiscard]] const QString& Path() const { return m_path; }
    // An empty object when there is no file or it can't be read. What isn't a JSON object is put aside under the name
    // with
    // ".broken" behind it.
    [[nodiscard]] QJsonObject Read();
    // On disk when the call returns. False when it can't be; a file that was there stays as it was.
    bool Write(const QJsonObject& state);

private:
    void Note(const QString& what);
    void RemoveLeftOvers() const;

    QString m_path;
    NoteFunction m_note;
    bool m_writeNoted = false;
};

} // namespace corvane::desktop
