#include "Shell.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/WindowManager.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <span>

namespace studies {

using namespace corvane;

namespace {

// What the dialog's member answers; nothing when the host has no such dialog or member.
std::optional<std::string> AskDialog(std::string_view member, std::span<const Variant> arguments) {
    try {
        const Ref<Object> dialog = CorvaneMain::Framework()->WindowManager()->CommonDialog();
        if (dialog)
            return ToText(dialog->Invoke(member, arguments));
    } catch (const Failure& failure) {
        if (failure.Number != FailureNumber::NoSuchMember)
            throw;
    }
    return std::nullopt;
}

std::optional<std::string> UnlessEmpty(std::string text) {
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

} // namespace

void ShowStatus(const std::string& text) {
    CorvaneMain::Framework()->SetStatus(text);
}

void ShowMessage(const std::string& text, const std::string& title) {
    CurrentPlatform().oMessageBox->ShowInformation(text, title);
}

std::string AppPath(std::string_view name) {
    const std::filesystem::path services = CurrentPlatform().oUtilities->GetAppFolder("Services");
    return (services / ".." / name).lexically_normal().string();
}

std::string FileNameOf(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

std::optional<std::string> AskForDataFile(const std::string& title) {
    const std::array<Variant, 3> arguments{title, "Text (*.csv *.tsv *.txt)|*.csv *.tsv *.txt", AppPath("Data")};
    const std::optional<std::string> path = AskDialog("ShowOpen", arguments);
    return path ? UnlessEmpty(*path) : AppPath("Data/penguins.csv");
}

std::optional<std::string> AskForChoice(const std::string& title, const std::string& choices) {
    const std::array<Variant, 2> arguments{title, choices};
    const std::optional<std::string> choice = AskDialog("ShowChoice", arguments);
    return UnlessEmpty(choice ? *choice : choices.substr(0, choices.find('\n')));
}

std::string AskForSavePath(const std::string& title, const std::string& filter, const std::string& fileName) {
    std::filesystem::path path = fileName;
    if (path.is_relative()) {
        // The name of a data set may hold what no file's name can.
        std::string name = fileName;
        for (char& c : name)
            if (c == '/' || c == ':')
                c = '-';
        const char* home = std::getenv("HOME");
        path = std::filesystem::path(home ? home : "") / name;
    }
    const std::array<Variant, 3> arguments{title, filter, path.string()};
    return AskDialog("ShowSave", arguments).value_or("");
}

Ref<Object> ServiceByName(std::string_view name) {
    const auto& services = CorvaneMain::Framework()->ServiceManager()->Services();
    return services->HasKey(name) ? services->Item(name) : nullptr;
}

} // namespace studies
