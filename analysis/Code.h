// What can be read out of the files of plug-ins without loading them: the names that their code holds.
#pragma once

#include "analysis/Findings.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::check {

class Code {
public:
    // The plug-ins in the application's folder "plugins". They are read when they are asked about for the first time.
    explicit Code(std::string application) : m_application(std::move(application)) {}

    struct Library {
        std::string name; // the part of a ProgID before the point
        std::string path;
        std::string bytes;
    };
    [[nodiscard]] const std::vector<Library>& Libraries() const;
    // Whether there is any plug-in.
    [[nodiscard]] bool IsThere() const { return !Libraries().empty(); }
    // Whether the code of any holds the text, such as the name of a function of the library that it calls.
    [[nodiscard]] bool Holds(std::string_view text) const;
    // Whether any is linked to a function of that name, or part of one, as the linker writes it; a source in Python
    // that holds the text is believed to be.
    [[nodiscard]] bool Links(std::string_view name) const;
    [[nodiscard]] static bool Holds(const Library& library, std::string_view text);
    // All texts in it between two zero bytes that could be names: letters, digits, points and underscores.
    [[nodiscard]] static std::set<std::string> Names(const Library& library);
    // Where the text is in the sources of a service in a process; of a library its file alone.
    [[nodiscard]] static Place PlaceOf(const Library& library, std::string_view text);

private:
    std::string m_application;
    mutable std::vector<Library> m_libraries;
    mutable bool m_isRead = false;
};

} // namespace corvane::check
