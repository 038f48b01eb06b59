// What users read of a job, in their language.
#pragma once

#include "jobs/Manager.h"

#include <QString>

namespace corvane::desktop {

// "Running", "Waiting for “Import” (birds.csv)", "Birds isn't responding to Cancel" and so on.
[[nodiscard]] QString StateText(const jobs::Job& job);
// "42 %", and empty as long as nothing is known.
[[nodiscard]] QString PercentText(const jobs::Job& job);
// "about 12 s left", and empty likewise.
[[nodiscard]] QString TimeLeftText(const jobs::Job& job);
// The item or window and the service, as in "Penguins (Studies)".
[[nodiscard]] QString OwnerText(const jobs::Job& job);
// Everything, a line for each: what is being done, what it has logged, how it failed.
[[nodiscard]] QString DetailsText(const jobs::Job& job);

} // namespace corvane::desktop
