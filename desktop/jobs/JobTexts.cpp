#include "desktop/jobs/JobTexts.h"

#include <QCoreApplication>
#include <QStringList>

namespace corvane::desktop {

namespace {

struct Jobs {
    Q_DECLARE_TR_FUNCTIONS(Jobs)
};

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

QString StateText(const jobs::Job& job) {
    switch (job.State()) {
    case JobState::Done:
        return Jobs::tr("Finished");
    case JobState::Failed:
        return Jobs::tr("Failed");
    case JobState::Cancelled:
        return Jobs::tr("Cancelled");
    case JobState::Waiting:
    case JobState::Running:
        break;
    }
    if (job.IgnoresCancel())
        return Jobs::tr("%1 isn't responding to Cancel")
            .arg(Text(job.BelongsTo().service.empty() ? job.Title() : job.BelongsTo().service));
    if (job.IsCancelling())
        return Jobs::tr("Cancelling…");
    if (job.State() == JobState::Running)
        return Jobs::tr("Running");
    const auto obstacles = job.WaitsFor();
    return obstacles.empty()
               ? Jobs::tr("Waiting")
               : Jobs::tr("Waiting for “%1” (%2)").arg(Text(obstacles.front().title), Text(obstacles.front().key));
}

QString PercentText(const jobs::Job& job) {
    const auto part = job.Part();
    return part ? Jobs::tr("%1 %").arg(static_cast<int>(*part * 100)) : QString();
}

QString TimeLeftText(const jobs::Job& job) {
    const auto left = job.TimeLeft();
    if (!left)
        return {};
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*left).count();
    return seconds < 60 ? Jobs::tr("about %1 s left").arg(std::max<qint64>(seconds, 1))
                        : Jobs::tr("about %1 min left").arg((seconds + 30) / 60);
}

QString OwnerText(const jobs::Job& job) {
    const jobs::Owner& owner = job.BelongsTo();
    if (owner.name.empty() || owner.service.empty())
        return Text(owner.name + owner.service);
    return Jobs::tr("%1 (%2)", "an item or window, and its service").arg(Text(owner.name), Text(owner.service));
}

QString DetailsText(const jobs::Job& job) {
    QStringList lines{Text(job.Title()), StateText(job)};
    if (const QString owner = OwnerText(job); !owner.isEmpty())
        lines.append(Jobs::tr("Belongs to: %1").arg(owner));
    if (const std::string text = job.Text(); !text.empty() && !job.HasEnded())
        lines.append(Text(text));
    if (const QString left = TimeLeftText(job); !left.isEmpty())
        lines.append(left);
    const auto obstacles = job.WaitsFor();
    for (std::size_t i = 1; i < obstacles.size(); ++i)
        lines.append(Jobs::tr("Also waiting for “%1” (%2)").arg(Text(obstacles[i].title), Text(obstacles[i].key)));
    if (!job.HasEnded() && !job.CanCancel())
        lines.append(Jobs::tr("This job can't be cancelled."));
    if (const auto& failure = job.Error()) {
        lines.append(Text(failure->Description));
        lines.append(Text(failure->Context));
    }
    for (const std::string& line : job.LogLines())
        lines.append(Text(line));
    lines.removeAll(QString());
    return lines.join('\n');
}

} // namespace corvane::desktop
