// Installs an application into a tree of the desktop's form: what a package of a distribution, or an archive, is made
// of.
#pragma once

#include <string>
#include <vector>

namespace corvane::package {

// What the file "about.json" of an application folder says of it.
struct About {
    std::string sId; // "org.example.Birds"
    std::string sName;
    std::string sSummary;
    std::string sDescription;
    std::string sVersion = "0.1.0";
    std::string sLicense;
    std::string sDeveloper;
    std::string sHomepage;
    std::string sCategories = "Utility;";
    std::string sIcon; // an SVG file in Images
    std::string sDate; // of this version, as 2030-01-31
};

// Fails with 53 when there is no such file, with 5, saying which, when something is missing or can't be what it is.
[[nodiscard]] About ReadAbout(const std::string& sApplication);

struct Packed {
    std::vector<std::string> aFiles;    // below the prefix, those of the application itself left out
    std::vector<std::string> aProblems; // what the desktop's validators say; empty when all is well
    std::vector<std::string> aMissing;  // validators that aren't installed
};

// Fails as ReadAbout does, and with 75 when a file can't be written.
[[nodiscard]] Packed Install(const std::string& sApplication, const std::string& sPrefix);

} // namespace corvane::package
