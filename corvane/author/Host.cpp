#include "corvane/author/Host.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

#include <algorithm>
#include <filesystem>
#include <span>

namespace corvane {

namespace {

// A member that isn't there is the host's lack only if it is the dialog's own.
[[noreturn]] void FailNoDialog(std::string_view sMember) {
    Fail(FailureNumber::NoSuchMember,
         "The host can't ask: its main form has no \"CommonDialog\" with a member \"" + std::string(sMember) + "\"",
         "Host");
}

std::optional<std::string> AskDialog(std::string_view sMember, std::initializer_list<Variant> aArguments) {
    std::string sAnswer;
    try {
        const Ref<MdiForm> frmMain = Singleton::Framework()->WindowManager()->MainForm();
        const Ref<Object> oDialog = ToObject(frmMain->Invoke("CommonDialog", {}));
        sAnswer = ToText(oDialog->Invoke(sMember, std::span(aArguments.begin(), aArguments.size())));
    } catch (const Failure& oFailure) {
        if (oFailure.Number == FailureNumber::NoSuchMember)
            FailNoDialog(sMember);
        throw;
    }
    return sAnswer.empty() ? std::nullopt : std::optional(std::move(sAnswer));
}

std::string TitleOr(const std::string& sTitle) {
    return sTitle.empty() ? CurrentPlatform().oUtilities->AppName() : sTitle;
}

std::string JoinChoices(const std::vector<std::string>& aChoices) {
    std::string sChoices;
    for (const std::string& sChoice : aChoices) {
        if (sChoice.empty() || sChoice.find('\n') != std::string::npos)
            Fail(FailureNumber::InvalidProcedureCall,
                 "\"" + sChoice + "\" can't be a choice: it isn't one line of text", "Host");
        sChoices += (sChoices.empty() ? "" : "\n") + sChoice;
    }
    if (sChoices.empty())
        Fail(FailureNumber::InvalidProcedureCall, "A question needs a choice", "Host");
    return sChoices;
}

} // namespace

std::optional<std::string> AskOpenFile(const std::string& sTitle, const std::string& sFilter,
                                       const std::string& sFolder) {
    return AskDialog("ShowOpen", {sTitle, sFilter, sFolder});
}

std::optional<std::string> AskSaveFile(const std::string& sTitle, const std::string& sFilter,
                                       const std::string& sPath) {
    return AskDialog("ShowSave", {sTitle, sFilter, sPath});
}

std::optional<std::string> AskText(const std::string& sQuestion, const std::string& sText, const std::string& sTitle) {
    return AskDialog("AskText", {TitleOr(sTitle), sQuestion, sText});
}

std::optional<std::string> Ask(const std::string& sQuestion, const std::vector<std::string>& aChoices,
                               const std::string& sTitle) {
    auto oChoice = AskDialog("Ask", {TitleOr(sTitle), sQuestion, JoinChoices(aChoices)});
    if (oChoice && std::find(aChoices.begin(), aChoices.end(), *oChoice) == aChoices.end())
        Fail(FailureNumber::InvalidProcedureCall,
             "\"" + *oChoice + "\" isn't one of the answers to \"" + sQuestion + "\"", "Host");
    return oChoice;
}

void ShowMessage(const std::string& sText, const std::string& sTitle) {
    CurrentPlatform().oMessageBox->ShowInformation(sText, TitleOr(sTitle));
}

void SetStatus(const std::string& sText) {
    Singleton::Framework()->SetStatus(sText);
}

Ref<Window> OpenWindow(const std::string& sWindow, const Ref<Object>& oAbout, const WindowOptions& oOptions) {
    const Ref<WindowManager> oManager = Singleton::Framework()->WindowManager();
    const auto Open = [&](const std::string& sKey, bool bHide) {
        return oManager->OpenWindow(sWindow, oAbout, oOptions.exit, oOptions.mode, oOptions.state, oOptions.place,
                                    oOptions.type, oOptions.context, oOptions.apply, sKey, bHide, oOptions.later);
    };
    if (oOptions.caption.empty() && oOptions.page < 0)
        return Open(oOptions.key, oOptions.hidden);
    // Nothing of it is seen before it is as it shall be, and a modal one takes no caption afterwards.
    Ref<Window> oWindow = Open(oOptions.key, true);
    const auto IsOpen = [&] { return static_cast<bool>(oWindow->WindowDef()); }; // until a page has ended it
    if (!oOptions.caption.empty() && IsOpen())
        oWindow->SetCaption(oOptions.caption);
    if (oOptions.page >= 0 && IsOpen())
        oWindow->SetActivePageIndex(oOptions.page);
    if (!oOptions.hidden && IsOpen())
        (void)Open(oWindow->Key(), false);
    return oWindow;
}

Ref<ExplorerManager> Explorer() {
    return Singleton::Framework()->NavigationManager()->ExplorerManager();
}

std::string AppPath(std::string_view sName) {
    const std::filesystem::path oServices = CurrentPlatform().oUtilities->GetAppFolder("Services");
    return (oServices / ".." / sName).lexically_normal().string();
}

Ref<Object> FindService(std::string_view sName) {
    const auto& colServices = Singleton::Framework()->ServiceManager()->Services();
    return colServices->HasKey(sName) ? colServices->Item(sName) : nullptr;
}

void FailNoSuchService(std::string_view sName) {
    Fail(FailureNumber::InvalidProcedureCall, "The service \"" + std::string(sName) + "\" isn't loaded", "Host");
}

} // namespace corvane
