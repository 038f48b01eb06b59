// What is measured in the explorer of a running application.
#pragma once

namespace corvane::bench {

// Prints medians and ratios.
void CompareItems();

} // namespace corvane::bench
