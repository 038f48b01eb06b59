// Applications in which nothing is wrong, to be spoilt.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace corvane::mutation {

struct SoundApplication {
    std::string name;
    std::map<std::string, std::string> files; // by path below the application's folder
};

// Studies, an application as "corvane new" writes it, and some that are made of numbers: menus below menus, toolbars,
// explorers and windows of all kinds.
[[nodiscard]] std::vector<SoundApplication> SoundApplications();

// One that is made of the number.
[[nodiscard]] SoundApplication GeneratedApplication(unsigned seed);

} // namespace corvane::mutation
