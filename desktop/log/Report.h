// What helps those who look after an application: versions, definitions and the log, as a text without what says who
// the user is.
#pragma once

#include <QString>
#include <QStringList>

namespace corvane::desktop {

struct ReportParts {
    QString name;
    QString folder;       // of the application
    QStringList leftOut;  // services that weren't started
    QStringList logLines; // the latest last
};

[[nodiscard]] QString ReportText(const ReportParts& parts);

// The user's home folder, their name and the machine's name give way to "~", "user" and "host".
[[nodiscard]] QString WithoutUserData(QString text);

} // namespace corvane::desktop
