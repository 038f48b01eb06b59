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

    CheckedFolder& Write(const std::string& sPath, std::string_view sBytes);
    // An example of a rule: the content of a service "Example", or files that begin with "<Service".
    CheckedFolder& WriteExample(std::string_view sExample);
    CheckedFolder& Remove(const std::string& sPath);
    // The plug-in "ExampleSvc", and a file "BrokenSvc" that is none.
    CheckedFolder& AddPlugins();

    [[nodiscard]] const std::string& Path() const { return m_oFolder.Path(); }
    [[nodiscard]] std::vector<check::Finding> Check(bool bPlugins = false) const {
        return check::Check({Path(), bPlugins});
    }
    // The findings as text, one a line, paths below the folder.
    [[nodiscard]] std::string Text(bool bPlugins = false) const;

private:
    test::TemporaryFolder m_oFolder;
};

} // namespace corvane::testing
