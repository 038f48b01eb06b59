// Runs work as a job does, without an application.
#pragma once

#include "corvane/author/Jobs.h"
#include "jobs/Manager.h"

#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <type_traits>

namespace studies {

// What work(JobProgress&) returns; nothing when it was cancelled, which it is as soon as that part is done, from 0
// to 1. 0 threads: the test's own.
template <class Work>
auto RunAsJob(std::size_t threads, Work work, double cancelAt = 2, std::optional<double>* reached = nullptr) {
    using Result = std::invoke_result_t<Work&, corvane::JobProgress&>;
    std::optional<Result> found;
    corvane::jobs::Host host;
    host.mostThreads = threads;
    host.begins = false;
    const auto jobs = corvane::New<corvane::jobs::Manager>(std::move(host));
    const auto done = [&found](Result result) { found = std::move(result); };
    const auto job =
        jobs->Start({.title = "Test"},
                    std::make_unique<corvane::detail::WorkTask<Work, decltype(done)>>(std::move(work), done), "")
            .template As<corvane::jobs::Job>();
    job->CancelAt(cancelAt);
    jobs->RunToEnd();
    if (reached)
        *reached = job->Part();
    EXPECT_EQ(job->State(), cancelAt > 1 ? corvane::JobState::Done : corvane::JobState::Cancelled);
    EXPECT_TRUE(jobs->Stop(std::chrono::hours(1)));
    return found;
}

} // namespace studies
