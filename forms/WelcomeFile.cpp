#include "forms/WelcomeFile.h"

#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "forms/FormXml.h"

#include <algorithm>

namespace corvane::forms {

namespace {

const std::vector<std::string> elements{"Step", "Sample", "Empty"};
const std::vector<std::string> rootAttributes{"Text", "Window", "Open"};
const std::vector<std::string> stepAttributes{"Command", "Text"};
const std::vector<std::string> sampleAttributes{"Command", "File", "Text"};
const std::vector<std::string> emptyAttributes{"Tab", "Command", "Text"};

std::string InQuotes(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

std::string Instead(const std::vector<std::string>& names, std::string_view written) {
    const auto nearest = Nearest(names, written);
    return nearest ? "write " + InQuotes(*nearest) : "remove it";
}

void CheckAttributes(const XmlElement& element, const std::vector<std::string>& known, WelcomeDef& welcome) {
    for (const auto& [name, value] : element.attributes)
        if (std::find(known.begin(), known.end(), name) == known.end())
            welcome.problems.push_back({element.at,
                                        element.name + " has no attribute " + InQuotes(name) + ", so it does nothing",
                                        Instead(known, name)});
}

// A file of the page is one of the application's.
bool LeavesTheFolder(std::string_view file) {
    return file.starts_with('/') || file.starts_with('\\') || file == ".." || file.starts_with("../") ||
           file.find("/..") != std::string_view::npos || file.find('\\') != std::string_view::npos;
}

void AddEntry(const XmlElement& element, WelcomeDef& welcome) {
    const bool isStep = element.name == "Step";
    const bool isEmpty = element.name == "Empty";
    CheckAttributes(element, isStep ? stepAttributes : isEmpty ? emptyAttributes : sampleAttributes, welcome);
    WelcomeEntry entry{std::string(element.Attribute("Command")),
                       std::string(element.Attribute(isEmpty  ? "Tab"
                                                     : isStep ? ""
                                                              : "File")),
                       std::string(element.Attribute("Text")), element.at};
    const auto omit = [&](const std::string& text, const std::string& cure) {
        welcome.problems.push_back({element.at, text + ", so it isn't shown", cure});
    };
    if (entry.text.empty())
        return omit("a " + element.name + " has no Text", "write what it is for, as in Text=\"Import a table\"");
    if (isEmpty && entry.file.empty())
        return omit("the " + element.name + " " + InQuotes(entry.text) + " has no Tab",
                    "write the name of a tab of the explorer");
    if (entry.command.empty() && entry.file.empty())
        return omit("the " + element.name + " " + InQuotes(entry.text) + " does nothing",
                    isStep ? "write its Command, as in Command=\"File.Import\"" : "write its File or its Command");
    if (LeavesTheFolder(entry.file))
        return omit("the file " + InQuotes(entry.file) + " isn't below the application's folder",
                    "write a path like \"Data/sample.csv\"");
    (isStep ? welcome.steps : isEmpty ? welcome.empties : welcome.samples).push_back(std::move(entry));
}

} // namespace

WelcomeDef ReadWelcome(std::string_view bytes) {
    WelcomeDef welcome;
    XmlFault fault;
    const XmlElement root = ReadXml(bytes, fault);
    if (!fault.text.empty()) {
        welcome.problems.push_back(
            {fault.at, fault.text + ", so the start page has nothing of it", "correct the file"});
        return welcome;
    }
    welcome.at = root.at;
    if (root.name != "Welcome") {
        welcome.problems.push_back({root.at, "the root element is " + InQuotes(root.name) + " and not \"Welcome\"",
                                    "write <Welcome> around the steps and samples"});
        return welcome;
    }
    CheckAttributes(root, rootAttributes, welcome);
    welcome.text = root.Attribute("Text");
    welcome.window = root.Attribute("Window");
    welcome.open = root.Attribute("Open");
    for (const XmlElement& element : root.children) {
        if (std::find(elements.begin(), elements.end(), element.name) != elements.end())
            AddEntry(element, welcome);
        else
            welcome.problems.push_back({element.at,
                                        "Welcome has no element " + InQuotes(element.name) + ", so it isn't shown",
                                        Instead(elements, element.name)});
    }
    return welcome;
}

std::string WelcomePathOf(const std::string& application) {
    return FindPath(JoinPath(application, "welcome.xml")).value_or("");
}

std::string WelcomeKey(std::string_view entry) {
    return "Form welcome.xml/" + std::string(entry);
}

std::vector<std::pair<std::string, WelcomeEntry>> WelcomeTexts(const WelcomeDef& welcome) {
    std::vector<std::pair<std::string, WelcomeEntry>> texts;
    if (!welcome.text.empty())
        texts.push_back({"Text", {{}, {}, welcome.text, welcome.at}});
    for (const auto* entries : {&welcome.steps, &welcome.samples, &welcome.empties})
        for (const WelcomeEntry& entry : *entries)
            texts.emplace_back(entry.file.empty() ? entry.command : entry.file, entry);
    return texts;
}

} // namespace corvane::forms
