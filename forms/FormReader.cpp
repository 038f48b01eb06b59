#include "forms/FormReader.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Text.h"
#include "forms/FormReading.h"

#include <cerrno>
#include <cstring>

namespace corvane::forms {

namespace {

FormDef Unreadable(FormDef form, FormPlace at, std::string text, std::string cure) {
    form.problems.insert(form.problems.begin(), {FormFault::NotReadable, at, std::move(text), std::move(cure)});
    return form;
}

// Elements of the file that say nothing of what a form shows.
constexpr std::string_view silent[] = {"class",          "author",        "comment",      "exportmacro",
                                       "pixmapfunction", "layoutdefault", "resources",    "layoutfunction",
                                       "includes",       "customwidgets", "buttongroups", "designerdata"};

bool IsSilent(std::string_view name) {
    for (const std::string_view word : silent)
        if (word == name)
            return true;
    return false;
}

} // namespace

FormDef ReadForm(std::string_view bytes, const std::string& file) {
    FormDef form;
    form.file = file;
    XmlFault fault;
    const XmlElement ui = ReadXml(bytes, fault);
    if (!fault.text.empty())
        return Unreadable(std::move(form), fault.at, fault.text, "Correct the file, or save it again in Designer.");
    if (ui.name != "ui")
        return Unreadable(std::move(form), ui.at, "the root element is " + QuotedName(ui.name) + " and not \"ui\"",
                          "Save the form as a .ui file of Designer.");
    if (const std::string_view version = ui.Attribute("version"); !version.empty() && !version.starts_with("4."))
        return Unreadable(std::move(form), ui.at,
                          "the form is of version " + std::string(version).substr(0, 20) + " and not 4.0",
                          "Save it again in Designer of Qt 5 or 6.");
    const XmlElement* root = ui.Child("widget");
    if (!root)
        return Unreadable(std::move(form), ui.at, "the form has no widget", "Draw one in Designer.");

    Problems problems(form);
    std::vector<std::pair<std::string, FormPlace>> tabStops;
    for (const XmlElement& child : ui.children) {
        if (&child == root || IsSilent(child.name))
            continue;
        if (child.name == "tabstops") {
            for (const XmlElement& stop : child.children)
                tabStops.emplace_back(stop.text, stop.at);
        } else if ((child.name != "connections" && child.name != "slots") || !child.children.empty()) {
            problems.Add(FormFault::UnknownElement, child.at,
                         "the element " + QuotedName(child.name) + " has no effect in a form",
                         child.name == "connections"
                             ? "Let the page's class do it: a button calls the member of its name."
                             : "Take it away.");
        }
    }
    WidgetReader reader(form, problems);
    form.root = reader.ReadRoot(*root);
    form.name = form.root.name;
    ConnectNodes(form, tabStops, problems);
    form.readable = true;
    return form;
}

FormDef ReadFormFile(const std::string& path) {
    errno = 0;
    const auto found = FindPath(path);
    const auto bytes = found ? ReadBytes(*found) : std::nullopt;
    if (bytes)
        return ReadForm(*bytes, *found);
    FormDef form;
    form.file = path;
    const std::string reason = found ? std::strerror(errno) : "there is no such file";
    return Unreadable(std::move(form), {}, "the file can't be read: " + reason,
                      "Look at its name and its permissions.");
}

std::string FormPathOf(const std::string& application, std::string_view pageProgID) {
    if (pageProgID.empty() || pageProgID.find_first_of("/\\") != std::string_view::npos)
        return {};
    return FindPath(JoinPath(JoinPath(application, "Forms"), std::string(pageProgID) + ".ui")).value_or("");
}

} // namespace corvane::forms
