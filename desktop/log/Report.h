// What helps those who look after an application: versions, definitions and the log, as a text without what tells who
// the person is.
#pragma once

#include <QString>
#include <QStringList>

namespace corvane::desktop {

struct ReportParts {
    QString sName;
    QString sFolder;       // of the application
    QStringList aLeftOut;  // services that weren't started
    QStringList aLogLines; // the latest last
};

[[nodiscard]] QString ReportText(const ReportParts& oParts);

// The person's home folder, their name and the machine's name give way to "~", "user" and "host".
[[nodiscard]] QString WithoutPerson(QString sText);

} // namespace corvane::desktop
