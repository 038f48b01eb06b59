// The display that a program of the host draws on, chosen before the toolkit looks for one.
#pragma once

namespace corvane::desktop {

// Whether only a text is asked for, by --help or -h: no display is needed for that.
[[nodiscard]] bool IsHelpWanted(int argumentCount, char** arguments);

// A run that ends by itself (--quit) draws offscreen, unless the environment or an option of the toolkit names a
// platform. While a DisplayWatch lives, a display that can't be reached ends the program with the
// exit code 3 and one line that says so.
void ChooseDisplay(int argumentCount, char** arguments);

class DisplayWatch final {
public:
    explicit DisplayWatch(const char* program);
    ~DisplayWatch();
    DisplayWatch(const DisplayWatch&) = delete;
    DisplayWatch& operator=(const DisplayWatch&) = delete;
};

} // namespace corvane::desktop
