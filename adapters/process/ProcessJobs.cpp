#include "adapters/process/ProcessJobs.h"

#include "adapters/process/Messages.h"
#include "adapters/process/Process.h"
#include "corvane/author/Jobs.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace corvane {

using nlohmann::json;

void ProcessJobs::Start(LongLong number, JobOptions options, std::string procedure, const Ref<Process>& process,
                        std::shared_ptr<const Waker> waker) {
    if (number <= m_last)
        Fail(FailureNumber::InvalidProcedureCall,
             "The number " + std::to_string(number) + " of a job isn't greater than those before", process->Name());
    m_last = number;
    const auto job = std::make_shared<ProcessJob>(std::move(waker));
    m_jobs.emplace(number, job);
    (void)detail::StartTask(std::move(options), std::make_unique<ProcessTask>(process, number, job),
                            std::move(procedure));
}

bool ProcessJobs::Forget(LongLong number, const std::shared_ptr<ProcessJob>& job) {
    const auto it = m_jobs.find(number);
    if (it == m_jobs.end() || it->second != job)
        return false;
    m_jobs.erase(it);
    return true;
}

void ProcessJobs::SendWishes(const std::function<void(const json& message)>& send) {
    for (const auto& [number, job] : m_jobs)
        for (auto wish = job->TakeWish(); wish != ProcessJob::Wish::None; wish = job->TakeWish())
            send({{"job", number}, {wish == ProcessJob::Wish::Begin ? "begin" : "cancel", true}});
}

bool ProcessJobs::HasWishes() const {
    return std::any_of(m_jobs.begin(), m_jobs.end(), [](const auto& entry) { return entry.second->HasWish(); });
}

bool ProcessJobs::Receive(const json& message) {
    const LongLong number = WholeNumber(message.at("job"));
    if (number > m_last || number < 1)
        return false;
    const auto it = m_jobs.find(number);
    if (it == m_jobs.end())
        return true; // it has been cancelled meanwhile
    ProcessJob::News news;
    if (message.contains("part"))
        news.part = message.at("part").get<Double>();
    if (message.contains("text"))
        news.text = message.at("text").get<std::string>();
    for (const json& line : message.value("log", json::array()))
        news.log.push_back(line.get<std::string>());
    std::optional<Failure> failure;
    if (message.contains("failure"))
        failure = FailureFromJson(message.at("failure"));
    const std::shared_ptr<ProcessJob> job = it->second;
    job->Report(std::move(news));
    if (!message.contains("end"))
        return true;
    m_jobs.erase(it);
    job->End(std::move(failure), message.at("end") == "cancelled");
    return true;
}

void ProcessJobs::EndAll(const std::optional<Failure>& failure) {
    for (const auto& [number, job] : std::exchange(m_jobs, {}))
        job->End(failure, !failure);
    m_last = 0;
}

} // namespace corvane
