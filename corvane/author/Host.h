// What services, explorer items and pages ask of the application around them: files, answers, windows, one another.
// After the root's Initialize, so not in constructors: 91 before.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/base/Variant.h"
#include "corvane/windows/IWindowExitHandler.h"
#include "corvane/windows/WindowEnums.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class ExplorerManager;
class Window;

// The questions. They return when the user has answered, with nothing when that was "Cancel". A host without a display
// has answers given beforehand, and cancels when there are none left. They fail with 438 in a host that has no such
// dialog: its main form has no "CommonDialog", or that has no member of the name in parentheses.

// The path of a file (ShowOpen). The filter is written in pairs of a text and a pattern, like
// "Data files (*.csv)|*.csv|All files|*"; the folder is where the dialog begins.
[[nodiscard, gnu::visibility("default")]] std::optional<std::string>
AskOpenFile(const std::string& sTitle, const std::string& sFilter = {}, const std::string& sFolder = {});
// The path of a file to be written, which need not be there (ShowSave); sPath is what the dialog suggests.
[[nodiscard, gnu::visibility("default")]] std::optional<std::string>
AskSaveFile(const std::string& sTitle, const std::string& sFilter = {}, const std::string& sPath = {});
// A line of text (AskText), with sText to begin with; nothing also for an empty one.
[[nodiscard, gnu::visibility("default")]] std::optional<std::string>
AskText(const std::string& sQuestion, const std::string& sText = {}, const std::string& sTitle = {});
// One of the choices (Ask): the host offers "Cancel" beside them, and the first is the one that Return takes. Fails
// with 5 for no choice, for one that is empty or has several lines, and for an answer that isn't among them.
[[nodiscard, gnu::visibility("default")]] std::optional<std::string>
Ask(const std::string& sQuestion, const std::vector<std::string>& aChoices, const std::string& sTitle = {});
// Returns when the user has read it. Without a title that is the application's name, here and above.
[[gnu::visibility("default")]] void ShowMessage(const std::string& sText, const std::string& sTitle = {});
// In the status line.
[[gnu::visibility("default")]] void SetStatus(const std::string& sText);

// How a window is opened. What is left out is as the definition says.
struct WindowOptions {
    std::string key = {};     // a second window of that key isn't opened, the open one is shown; "" for none
    std::string caption = {}; // "" for the definition's
    Long page = -1;      // that comes to the front, from 0; -1 for the first, or of an open window the one in front
    bool hidden = false; // Window::Show shows it
    bool later = false;  // the call returns first, and the window is shown a moment later
    Ref<IWindowExitHandler> exit = {}; // is notified of the window's end
    WindowShowModeConstants mode = WindowShowModeConstants::cvDefinitionDefault;
    WindowStateConstants state = WindowStateConstants::cvDefinitionDefault;
    MDIWindowTypeConstants place = MDIWindowTypeConstants::cvDefinitionDefault;
    WindowTypeConstants type = WindowTypeConstants::cvDefinitionDefault;
    BusinessContextTypeConstants context = BusinessContextTypeConstants::cvDefinitionDefault;
    ShowApplyCommandConstants apply = ShowApplyCommandConstants::cvDefinitionDefault;
};

// WindowManager::OpenWindow, as in OpenWindow("Data", oData, {.key = sKey, .caption = sName}). A modal window has ended
// when the call returns; WasWindowCancelled of the result says how.
[[gnu::visibility("default")]] Ref<Window> OpenWindow(const std::string& sWindow, const Ref<Object>& oAbout = nullptr,
                                                      const WindowOptions& oOptions = {});

[[nodiscard, gnu::visibility("default")]] Ref<ExplorerManager> Explorer();

// The path of a file or folder of the application, such as "Images/open.svg".
[[nodiscard, gnu::visibility("default")]] std::string AppPath(std::string_view sName);

// Another service's own object by the name in its definition; nothing when it isn't loaded.
[[nodiscard, gnu::visibility("default")]] Ref<Object> FindService(std::string_view sName);
// The same, of a class that the caller knows. Fails with 5 when it isn't loaded and with 13 for one of another class.
[[noreturn, gnu::visibility("default")]] void FailNoSuchService(std::string_view sName);
template <class T = Object>
[[nodiscard]] Ref<T> ServiceNamed(std::string_view sName) {
    const Ref<Object> oService = FindService(sName);
    if (!oService)
        FailNoSuchService(sName);
    return oService.As<T>();
}

// Calls a member by name, as in CallByName(FindService("Studies"), "ImportFile", sPath): no class need be known.
template <class... Arguments>
Variant CallByName(const Ref<Object>& oObject, std::string_view sMember, const Arguments&... vArguments) {
    const std::array<Variant, sizeof...(Arguments)> aArguments{Variant(vArguments)...};
    return oObject->Invoke(sMember, aArguments);
}

} // namespace corvane
