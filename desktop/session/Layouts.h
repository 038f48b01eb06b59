// Layouts that a user has named: where docks and toolbars are, which of them are shown, and how the windows' groups
// lie. They are kept in a file, and come from and go to files of their own.
#pragma once

#include "desktop/state/StateFile.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QStringList>
#include <functional>

namespace corvane::desktop {

class Layouts {
    Q_DECLARE_TR_FUNCTIONS(Layouts)
public:
    struct Parts {
        std::function<QJsonObject()> now;               // what is on screen
        std::function<void(const QJsonObject&)> choose; // brings it there again
        std::function<void()> changed;                  // the names
    };

    Layouts(StateFile file, Parts parts);

    // In the order of the alphabet, as users sort it.
    [[nodiscard]] QStringList Names() const;
    [[nodiscard]] bool Has(const QString& name) const;
    // What is on screen, under the name, which isn't empty; one of that name is replaced.
    void Save(const QString& name);
    // Each ignores a name that no layout has.
    void Choose(const QString& name) const;
    void Rename(const QString& name, const QString& newName); // nor when the new one is there
    void Remove(const QString& name);
    // Why it couldn't be done, for the user; empty when it was.
    [[nodiscard]] QString Export(const QString& name, const QString& path) const;
    // Under the name in the file, with a number behind it where that is there already.
    [[nodiscard]] QString Import(const QString& path);

private:
    void Write();
    [[nodiscard]] QString FreeName(const QString& name) const;

    StateFile m_file;
    Parts m_parts;
    QJsonObject m_layouts; // by name
};

} // namespace corvane::desktop
