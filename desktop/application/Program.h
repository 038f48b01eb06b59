// The program corvane-desktop.
#pragma once

namespace corvane::desktop {

// The program whose arguments these are, from its start to its end. Returns its exit code, which help and errors of the
// command line set as well.
int RunDesktop(int argc, char** argv);

} // namespace corvane::desktop
