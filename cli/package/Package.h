// Installs an application into a tree of the desktop's form: what a package of a distribution, or an archive, is made
// of.
#pragma once

#include <string>
#include <vector>

namespace corvane::package {

// What the file "about.json" of an application folder says of it: its identity, for the launcher, the desktop entry,
// the window class by which the desktop finds that entry, the metadata, the icon and the man page.
struct About {
    // Files that the application opens, by a double click on one. The texts are on one line.
    struct FileType {
        std::string type;    // "application/x-birds"
        std::string pattern; // "*.birds"
        std::string comment; // what such a file is, as users read it: "List of birds"
    };
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
    std::vector<FileType> files;
};

// Fails with 53 when there is no such file, with 5, saying which, when something is missing, can't be what it is, or is
// still what "corvane new" wrote for the author to replace.
[[nodiscard]] About ReadAbout(const std::string& application);

struct Packed {
    std::vector<std::string> files;    // all that was installed, below the prefix, in order
    std::vector<std::string> problems; // what the desktop's validators say; empty when all is well
    std::vector<std::string> missing;  // validators that aren't installed
};

// What it makes is the same on every machine and at any time when SOURCE_DATE_EPOCH is set, which files aren't younger
// than: no run path leads to a folder of the builder, and the umask doesn't count. Fails as ReadAbout does, and with 75
// when a file can't be written.
[[nodiscard]] Packed Install(const std::string& application, const std::string& prefix);

} // namespace corvane::package
