// An application folder that checks clean, to be spoilt by a test.
#pragma once

#include "analysis/Check.h"
#include "tests/support/TemporaryFolder.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane::testing {

class CheckedFolder {
public:
    // Holds the schema, a file "Base.xml" of the root object with the menus File and View, and two images,
    // "folder.svg" and "broken.png", the latter of which is none.
    CheckedFolder();

    CheckedFolder& Write(const std::string& path, std::string_view bytes);
    // An example of a rule: the content of a service "Example", or files that begin with "<Service".
    CheckedFolder& WriteExample(std::string_view example);
    CheckedFolder& Remove(const std::string& path);
    // The plug-in "ExampleSvc", and a file "BrokenSvc" that is none.
    CheckedFolder& AddPlugins();

    [[nodiscard]] const std::string& Path() const { return m_folder.Path(); }
    [[nodiscard]] std::vector<check::Finding> Check(bool plugins = false) const {
        return check::Check({Path(), plugins});
    }
    // The findings as text, one a line, paths below the folder.
    [[nodiscard]] std::string Text(bool plugins = false) const;

private:
    test::TemporaryFolder m_folder;
};

} // namespace corvane::testing
