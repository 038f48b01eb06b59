// Asks what becomes of the jobs of a window that is to close.
#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace corvane::desktop {

struct JobQuestion {
    QString window;
    QStringList jobs;       // their titles
    bool canCancel = false; // all of them
    QWidget* over = nullptr;
};
enum class JobAnswer { KeepOpen, CloseLater, CancelJobs, LeaveRunning };

[[nodiscard]] JobAnswer AskInBox(const JobQuestion& question);

} // namespace corvane::desktop
