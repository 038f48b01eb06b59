// How a document writes jobs.
#pragma once

#include "jobs/Manager.h"

namespace corvane::inspect {

[[nodiscard]] inline const char* StateName(JobState state) {
    switch (state) {
    case JobState::Waiting:
        return "waiting";
    case JobState::Running:
        return "running";
    case JobState::Done:
        return "done";
    case JobState::Failed:
        return "failed";
    case JobState::Cancelled:
        break;
    }
    return "cancelled";
}

} // namespace corvane::inspect
