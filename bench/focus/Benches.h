// The two measures of this program.
#pragma once

namespace corvane::bench {

void MeasureFocus();
void MeasureCommands();

} // namespace corvane::bench
