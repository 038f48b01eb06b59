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
std::optional<std::string> AskDialog(std::string_view sMember, std::span<const Variant> aArguments) {
    try {
        const Ref<Object> oDialog = CorvaneMain::Framework()->WindowManager()->CommonDialog();
        if (oDialog)
            return ToText(oDialog->Invoke(sMember, aArguments));
    } catch (const Failure& oFailure) {
        if (oFailure.Number != FailureNumber::NoSuchMember)
            throw;
    }
    return std::nullopt;
}

std::optional<std::string> UnlessEmpty(std::string sText) {
    return sText.empty() ? std::nullopt : std::optional(std::move(sText));
}

} // namespace

void ShowStatus(const std::string& sText) {
    CorvaneMain::Framework()->SetStatus(sText);
}

void ShowMessage(const std::string& sText, const std::string& sTitle) {
    CurrentPlatform().oMessageBox->ShowInformation(sText, sTitle);
}

std::string AppPath(std::string_view sName) {
    const std::filesystem::path oServices = CurrentPlatform().oUtilities->GetAppFolder("Services");
    return (oServices / ".." / sName).lexically_normal().string();
}

std::string FileNameOf(const std::string& sPath) {
    return std::filesystem::path(sPath).filename().string();
}

std::optional<std::string> AskForDataFile(const std::string& sTitle) {
    const std::array<Variant, 3> aArguments{sTitle, "Text (*.csv *.tsv *.txt)|*.csv *.tsv *.txt", AppPath("Data")};
    const std::optional<std::string> sPath = AskDialog("ShowOpen", aArguments);
    return sPath ? UnlessEmpty(*sPath) : AppPath("Data/penguins.csv");
}

std::optional<std::string> AskForChoice(const std::string& sTitle, const std::string& sChoices) {
    const std::array<Variant, 2> aArguments{sTitle, sChoices};
    const std::optional<std::string> sChoice = AskDialog("ShowChoice", aArguments);
    return UnlessEmpty(sChoice ? *sChoice : sChoices.substr(0, sChoices.find('\n')));
}

std::string AskForSavePath(const std::string& sTitle, const std::string& sFilter, const std::string& sFileName) {
    std::filesystem::path oPath = sFileName;
    if (oPath.is_relative()) {
        // The name of a data set may hold what no file's name can.
        std::string sName = sFileName;
        for (char& c : sName)
            if (c == '/' || c == ':')
                c = '-';
        const char* sHome = std::getenv("HOME");
        oPath = std::filesystem::path(sHome ? sHome : "") / sName;
    }
    const std::array<Variant, 3> aArguments{sTitle, sFilter, oPath.string()};
    return AskDialog("ShowSave", aArguments).value_or("");
}

Ref<Object> ServiceByName(std::string_view sName) {
    const auto& colServices = CorvaneMain::Framework()->ServiceManager()->Services();
    return colServices->HasKey(sName) ? colServices->Item(sName) : nullptr;
}

} // namespace studies
