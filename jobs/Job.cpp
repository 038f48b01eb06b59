#include "jobs/Job.h"

#include "corvane/author/Jobs.h"
#include "corvane/core/CorvaneMain.h"
#include "jobs/Manager.h"

namespace corvane::jobs {

namespace {

// What is known of the owner's definition stands in parentheses, as "(service Birds, Services/Birds.xml:2)".
std::string PlaceOfJob(const JobOptions& options, const std::string& procedure, const Owner& owner) {
    std::string place = "in the job \"" + options.title + "\"";
    if (!procedure.empty())
        place += ", started in " + procedure;
    const std::string known = options.owner ? CorvaneMain::PlaceOf(options.owner, procedure) : std::string();
    if (const std::size_t bracket = known.find(" ("); bracket != std::string::npos)
        place += known.substr(bracket);
    else if (!owner.service.empty())
        place += " (service " + owner.service + ")";
    return place;
}

} // namespace

Job::Job(Manager& manager, Number number, JobOptions options, std::unique_ptr<JobTask> task, std::string procedure)
    : m_manager(&manager), m_number(number), m_options(std::move(options)), m_owner(OwnerOf(m_options.owner)),
      m_window(WindowOfOwner(m_options.owner)),
      m_hadNode(manager.m_host.explorer && HasNode(m_options.owner, *manager.m_host.explorer)),
      m_place(PlaceOfJob(m_options, procedure, m_owner)), m_task(std::move(task)),
      m_run(std::make_shared<Run>(*m_task, m_options.title, m_owner.service, *manager.m_pool, manager.m_host.threads)) {
}

JobState Job::State() const {
    return m_end.value_or(m_run->HasBegun() ? JobState::Running : JobState::Waiting);
}

void Job::Cancel() {
    if (CanCancel())
        m_manager->Cancel(*this);
}

bool Job::IgnoresCancel() const {
    return !m_end && m_run->Ignores(std::chrono::seconds(5));
}

std::optional<Clock::duration> Job::TimeLeft() const {
    constexpr std::chrono::seconds settled(2);
    constexpr Double least = 0.01;
    const std::optional<Double> part = Part();
    const Clock::duration elapsed = m_run->Elapsed();
    if (m_end || IsCancelling() || !part || *part < least || *part >= 1 || elapsed < settled)
        return std::nullopt;
    return std::chrono::duration_cast<Clock::duration>(elapsed * ((1 - *part) / *part));
}

std::vector<Obstacle> Job::WaitsFor() const {
    return m_end ? std::vector<Obstacle>() : m_manager->WaitsFor(*this);
}

} // namespace corvane::jobs
