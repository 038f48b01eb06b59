#include "adapters/process/HostFunctions.h"

#include "adapters/process/ProcessObject.h"
#include "corvane/author/Host.h"
#include "corvane/core/Preferences.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/windows/Window.h"

#include <optional>
#include <sstream>

namespace corvane {

namespace {

Variant OrNothing(std::optional<std::string> answer) {
    return answer ? Variant(std::move(*answer)) : Variant();
}

Ref<Object> BaseOf(const Ref<Object>& owner) {
    return owner ? owner.As<ProcessObject>()->Base() : nullptr;
}

std::vector<std::string> LinesIn(const std::string& text) {
    std::vector<std::string> all;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        all.push_back(line);
    return all;
}

const Ref<IForm>& FormOf(const Ref<Object>& page) {
    return page.As<ProcessObject>()->Form();
}

} // namespace

HostFunctions::HostFunctions() = default;
HostFunctions::~HostFunctions() = default;

Variant HostFunctions::AskOpenFile(const std::string& title, const std::string& filter, const std::string& folder) {
    return OrNothing(corvane::AskOpenFile(title, filter, folder));
}

Variant HostFunctions::AskSaveFile(const std::string& title, const std::string& filter, const std::string& path) {
    return OrNothing(corvane::AskSaveFile(title, filter, path));
}

Variant HostFunctions::AskText(const std::string& question, const std::string& text, const std::string& title) {
    return OrNothing(corvane::AskText(question, text, title));
}

Variant HostFunctions::Ask(const std::string& question, const std::string& choices, const std::string& title) {
    return OrNothing(corvane::Ask(question, LinesIn(choices), title));
}

void HostFunctions::ShowMessage(const std::string& text, const std::string& title) {
    corvane::ShowMessage(text, title);
}

Ref<Window> HostFunctions::OpenWindow(const Ref<Object>& owner, const std::string& window, const Ref<Object>& about,
                                      const std::string& key, const std::string& caption, Long page, bool hidden,
                                      bool later, WindowShowModeConstants mode, WindowStateConstants state,
                                      MDIWindowTypeConstants place, WindowTypeConstants type,
                                      BusinessContextTypeConstants context, ShowApplyCommandConstants apply) {
    const Ref<Object> base = BaseOf(owner);
    return corvane::OpenWindow(window, about,
                               {.key = key,
                                .caption = caption,
                                .page = page,
                                .hidden = hidden,
                                .later = later,
                                .exit = base ? base.As<IWindowExitHandler>() : nullptr,
                                .mode = mode,
                                .state = state,
                                .place = place,
                                .type = type,
                                .context = context,
                                .apply = apply});
}

void HostFunctions::StartJob(const Ref<Object>& owner, LongLong number, const std::string& title, bool canCancel,
                             bool quiet, const std::string& reads, const std::string& writes,
                             const std::string& procedure) {
    if (!owner)
        Fail(FailureNumber::ObjectNotSet, "The job \"" + title + "\" has no owner", "Host");
    owner.As<ProcessObject>()->Owner()->StartJob(number,
                                                 {.title = title,
                                                  .owner = owner,
                                                  .canCancel = canCancel,
                                                  .quiet = quiet,
                                                  .reads = LinesIn(reads),
                                                  .writes = LinesIn(writes)},
                                                 procedure);
}

Ref<ExplorerManager> HostFunctions::Explorer() {
    return corvane::Explorer();
}

std::string HostFunctions::AppPath(const std::string& name) {
    return corvane::AppPath(name);
}

Ref<Object> HostFunctions::FindService(const std::string& name) {
    return corvane::FindService(name);
}

Ref<corvane::Preferences> HostFunctions::Preferences(const std::string& service, const std::string& category) {
    auto preferences = New<corvane::Preferences>();
    preferences->Initialize(service, category);
    return preferences;
}

Ref<ActionItem> HostFunctions::Action(const Ref<Object>& owner, const std::string& name) {
    const Ref<Object> base = BaseOf(owner);
    const auto actions = base ? base.As<IActionsProvider>()->ActionItems() : nullptr;
    if (!actions)
        Fail(FailureNumber::InvalidProcedureCall, "There are no actions yet: \"" + name + "\" is asked for too early",
             "Host");
    return actions->Item(name);
}

void HostFunctions::NameItem(const Ref<Object>& item, const std::string& name) {
    const Ref<Object> base = BaseOf(item);
    const auto itemBase = base ? base.TryAs<ExplorerItemBase>() : nullptr;
    if (itemBase)
        itemBase->NameSilently(name);
}

void HostFunctions::ValidityChanged(const Ref<Object>& page) {
    const Ref<Object> base = BaseOf(page);
    const auto pageBase = base ? base.TryAs<PageBase>() : nullptr;
    if (pageBase && pageBase->Window())
        pageBase->ValidityChanged();
}

void HostFunctions::SetFieldEnabled(const Ref<Object>& page, const std::string& name, bool enabled) {
    FormOf(page)->SetEnabled(name, enabled);
}

void HostFunctions::SetFieldVisible(const Ref<Object>& page, const std::string& name, bool visible) {
    FormOf(page)->SetVisible(name, visible);
}

void HostFunctions::SetFieldProblem(const Ref<Object>& page, const std::string& name, const std::string& text) {
    FormOf(page)->SetProblem(name, text);
}

void HostFunctions::SetFieldLabel(const Ref<Object>& page, const std::string& name, const std::string& text) {
    FormOf(page)->SetLabel(name, text);
}

void HostFunctions::RefreshField(const Ref<Object>& page, const std::string& name) {
    FormOf(page)->Refresh(name);
}

Variant HostFunctions::FieldValue(const Ref<Object>& page, const std::string& name) {
    return FormOf(page)->Value(name);
}

void HostFunctions::SetFieldValue(const Ref<Object>& page, const std::string& name, const Variant& value) {
    FormOf(page)->SetValue(name, value);
}

Long HostFunctions::SelectedRow(const Ref<Object>& page, const std::string& name) {
    return FormOf(page)->SelectedRow(name);
}

void HostFunctions::FocusField(const Ref<Object>& page, const std::string& name) {
    FormOf(page)->Focus(name);
}

} // namespace corvane
