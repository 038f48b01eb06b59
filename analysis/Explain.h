// Where an entry, a bar, a window or an explorer item of an application comes from.
#pragma once

#include <string>
#include <vector>

namespace corvane::check {

struct Explanation {
    std::string text;                 // empty when there is nothing of that name
    std::vector<std::string> nearest; // then, what may have been meant
};

// item is a key ("File.Open"), the name of a tool ("Tool.Standard.Open"), of an action, of a bar ("File",
// "Toolbars.Standard", "Context.Study"), a window, an explorer item or a service; or of a form ("Forms/Svc.Page") or
// its field ("Forms/Svc.Page.Title"). Fails as Check does.
[[nodiscard]] Explanation Explain(const std::string& application, const std::string& item);

} // namespace corvane::check
