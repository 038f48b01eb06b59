// What a process asks of the application beyond the root object: what the author's layer offers in C++, by name.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/windows/WindowEnums.h"

#include <string>

namespace corvane {

class ActionItem;
class ExplorerManager;
class Preferences;
class Window;

class HostFunctions final : public Automation<HostFunctions> {
public:
    HostFunctions();
    ~HostFunctions() override;

    // The questions return nothing when the user cancels.
    [[nodiscard]] Variant AskOpenFile(const std::string& title, const std::string& filter, const std::string& folder);
    [[nodiscard]] Variant AskSaveFile(const std::string& title, const std::string& filter, const std::string& path);
    [[nodiscard]] Variant AskText(const std::string& question, const std::string& text, const std::string& title);
    // The choices are separated by line feeds.
    [[nodiscard]] Variant Ask(const std::string& question, const std::string& choices, const std::string& title);
    void ShowMessage(const std::string& text, const std::string& title);
    // The options are those of WindowOptions, -1 and "" for what the definition says. owner, one of the process's own
    // objects or nothing, is notified of the window's end.
    [[nodiscard]] Ref<Window> OpenWindow(const Ref<Object>& owner, const std::string& window, const Ref<Object>& about,
                                         const std::string& key, const std::string& caption, Long page, bool hidden,
                                         bool later, WindowShowModeConstants mode, WindowStateConstants state,
                                         MDIWindowTypeConstants place, WindowTypeConstants type,
                                         BusinessContextTypeConstants context, ShowApplyCommandConstants apply);
    [[nodiscard]] Ref<ExplorerManager> Explorer();
    [[nodiscard]] std::string AppPath(const std::string& name);
    [[nodiscard]] Ref<Object> FindService(const std::string& name);
    [[nodiscard]] Ref<corvane::Preferences> Preferences(const std::string& service, const std::string& category);
    // One of the actions of an object of the process. Fails with 5 when it has none of that name.
    [[nodiscard]] Ref<ActionItem> Action(const Ref<Object>& owner, const std::string& name);
    // The explorer item's name, without a word to the item.
    void NameItem(const Ref<Object>& item, const std::string& name);
    // The commands of the page's window follow what the page says now.
    void ValidityChanged(const Ref<Object>& page);
    // The form of the page, as IForm does; 91 for a page without one.
    void SetFieldEnabled(const Ref<Object>& page, const std::string& name, bool enabled);
    void SetFieldVisible(const Ref<Object>& page, const std::string& name, bool visible);
    void SetFieldProblem(const Ref<Object>& page, const std::string& name, const std::string& text);
    void SetFieldLabel(const Ref<Object>& page, const std::string& name, const std::string& text);
    void RefreshField(const Ref<Object>& page, const std::string& name);
    [[nodiscard]] Variant FieldValue(const Ref<Object>& page, const std::string& name);
    void SetFieldValue(const Ref<Object>& page, const std::string& name, const Variant& value);
    [[nodiscard]] Long SelectedRow(const Ref<Object>& page, const std::string& name);
    // Shows work of the process as a job of the owner, as JobOptions says; number is the process's own, and greater
    // than those before. Keys are separated by line feeds. procedure starts it, as in "Birds.OnImport".
    void StartJob(const Ref<Object>& owner, LongLong number, const std::string& title, bool canCancel, bool quiet,
                  const std::string& reads, const std::string& writes, const std::string& procedure);
    void FocusField(const Ref<Object>& page, const std::string& name);

    std::string_view TypeName() const override { return "Host"; }

    static constexpr auto Members = MemberTable(
        Method("AskOpenFile", &HostFunctions::AskOpenFile), Method("AskSaveFile", &HostFunctions::AskSaveFile),
        Method("AskText", &HostFunctions::AskText), Method("Ask", &HostFunctions::Ask),
        Method("ShowMessage", &HostFunctions::ShowMessage), Method("OpenWindow", &HostFunctions::OpenWindow),
        Property("Explorer", &HostFunctions::Explorer), Method("AppPath", &HostFunctions::AppPath),
        Method("FindService", &HostFunctions::FindService), Method("Preferences", &HostFunctions::Preferences),
        Method("Action", &HostFunctions::Action), Method("NameItem", &HostFunctions::NameItem),
        Method("ValidityChanged", &HostFunctions::ValidityChanged),
        Method("SetFieldEnabled", &HostFunctions::SetFieldEnabled),
        Method("SetFieldVisible", &HostFunctions::SetFieldVisible),
        Method("SetFieldProblem", &HostFunctions::SetFieldProblem),
        Method("SetFieldLabel", &HostFunctions::SetFieldLabel), Method("RefreshField", &HostFunctions::RefreshField),
        Method("FieldValue", &HostFunctions::FieldValue), Method("SetFieldValue", &HostFunctions::SetFieldValue),
        Method("StartJob", &HostFunctions::StartJob), Method("SelectedRow", &HostFunctions::SelectedRow),
        Method("FocusField", &HostFunctions::FocusField));
};

} // namespace corvane
