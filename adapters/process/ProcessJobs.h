// The jobs of one process, by the numbers that it has given them.
#pragma once

#include "adapters/process/ProcessJob.h"
#include "corvane/base/Ref.h"

#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace corvane {

class ProcessJobs {
public:
    // Shows work of the process as a job. Fails with 5 for a number that isn't greater than those before.
    void Start(LongLong number, JobOptions options, std::string procedure, const Ref<Process>& process,
               std::shared_ptr<const Waker> waker);
    // The application's end of the job has gone: one that hasn't begun never will. False when the process has ended it.
    bool Forget(LongLong number, const std::shared_ptr<ProcessJob>& job);
    // What the process is to be told.
    void SendWishes(const std::function<void(const nlohmann::json& message)>& send);
    [[nodiscard]] bool HasWishes() const;
    // What the process reports; false for a job that it hasn't started. Throws json::exception for a wrong message.
    bool Receive(const nlohmann::json& message);
    // With that failure, or cancelled.
    void EndAll(const std::optional<Failure>& failure);
    [[nodiscard]] bool IsEmpty() const { return m_jobs.empty(); }

private:
    std::map<LongLong, std::shared_ptr<ProcessJob>> m_jobs;
    LongLong m_last = 0;
};

} // namespace corvane
