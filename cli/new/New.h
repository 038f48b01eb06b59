// Writes new applications, and new services into them, from templates.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane::scaffold {

// In which services are written.
enum class Language { Cpp, Python };

// Writes a complete application into the folder, which must not exist or be empty; its last part is the application's
// name. Without names there is one service, named after the application. Returns the paths that were written. Fails
// with 5 for a name that can't be one, or when something is there already, with 75 when a file can't be written.
std::vector<std::string> NewApplication(const std::string& folderPath, std::vector<std::string> services,
                                        const std::string& version, Language language);

// Adds a service to the application in whose source folder this is called. Fails likewise, and with 76 when the folder
// is none.
std::vector<std::string> NewService(const std::string& folder, const std::string& name, Language language);

// Adds a window with a page, and the page's form, to a service of the application in whose source folder this is
// called; without a service there has to be a single one. The definition and the list of classes get what is new, and
// nothing is written unless all can be. Fails as NewService does.
std::vector<std::string> NewPage(const std::string& folder, const std::string& name, const std::string& service);

// A file of a template, its tokens between at signs.
struct Template {
    std::string_view path; // "service/app/Services/@Name@.xml"
    std::string_view text;
};
[[nodiscard]] const std::vector<Template>& Templates();

} // namespace corvane::scaffold
