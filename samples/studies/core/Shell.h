// What the services of Studies ask of the shell around them.
#pragma once

#include "corvane/base/Ref.h"

#include <optional>
#include <string>
#include <string_view>

namespace studies {

void ShowStatus(const std::string& text);
// Returns when the person has answered.
void ShowMessage(const std::string& text, const std::string& title);

// The path of a folder or file of the application, such as "Data".
[[nodiscard]] std::string AppPath(std::string_view name);
[[nodiscard]] std::string FileNameOf(const std::string& path);

// Asks for a file by the member "ShowOpen" of the host's common dialog, which is called with a title, a filter such as
// "Text (*.csv *.tsv *.txt)|*.csv *.tsv *.txt" and the folder to begin with, and answers with a path or with "".
// Nothing when the person thinks better of it. A host without such a dialog gets the penguins.
[[nodiscard]] std::optional<std::string> AskForDataFile(const std::string& title);
// Asks for one of some texts, given with a line each, by its member "ShowChoice". A host without gets the first.
[[nodiscard]] std::optional<std::string> AskForChoice(const std::string& title, const std::string& choices);

// Asks where to write a file by its member "ShowSave", which is called with a title, a filter as above and a path to
// begin with, in the home folder if a name alone is given; "" when the person thinks better of it, and from a host
// without such a dialog.
[[nodiscard]] std::string AskForSavePath(const std::string& title, const std::string& filter,
                                         const std::string& fileName);

// A service by the name in its definition; nothing when it isn't loaded.
[[nodiscard]] corvane::Ref<corvane::Object> ServiceByName(std::string_view name);

} // namespace studies
