// Installs an application into a tree of the desktop's form: what a package of a distribution, or an archive, is made
// of.
#pragma once

#include <string>
#include <vector>

namespace corvane::package {

// What the file "about.json" of an application folder says of it.
struct About {
    std::string id; // "org.example.Birds"
    std::string name;
    std::string summary;
    std::string description;
    std::string version = "0.1.0";
    std::string license;
    std::string developer;
    std::string homepage;
    std::string categories = "Utility;";
    std::string icon; // an SVG file in Images
    std::string date; // of this version, as 2030-01-31
};

// Fails with 53 when there is no such file, with 5, saying which, when something is missing or can't be what it is.
[[nodiscard]] About ReadAbout(const std::string& application);

struct Packed {
    std::vector<std::string> files;    // below the prefix, those of the application itself left out
    std::vector<std::string> problems; // what the desktop's validators say; empty when all is well
    std::vector<std::string> missing;  // validators that aren't installed
};

// Fails as ReadAbout does, and with 75 when a file can't be written.
[[nodiscard]] Packed Install(const std::string& application, const std::string& prefix);

} // namespace corvane::package
