#include "StudyService.h"

#include "EditedText.h"
#include "Errors.h"
#include "Report.h"
#include "StudyContexts.h"
#include "Windows.h"
#include "corvane/author/Host.h"
#include "corvane/base/PluginExport.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Platform.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

#include <algorithm>
#include <optional>

namespace studies {

using namespace corvane;

namespace {

std::string Quoted(const std::string& name) {
    return Translated("“%1”", {name});
}

// What is in a study, as "2 data sets, 1 analysis"; "" for nothing.
std::string ContentsText(std::size_t dataSets, std::size_t analyses) {
    std::string text = dataSets == 0 ? std::string() : Translated(dataSets, "%1 data set", "%1 data sets");
    if (analyses > 0)
        text += (text.empty() ? "" : ", ") + Translated(analyses, "%1 analysis", "%1 analyses");
    return text;
}

std::string ChoiceOf(const Deleted& item) {
    const std::string name = Quoted(item.name);
    const std::string time = ShownTime(item.time);
    if (item.kind == "study")
        return Translated("%1, study deleted on %2", {name, time});
    return item.kind == "analysis" ? Translated("%1, analysis deleted on %2", {name, time})
                                   : Translated("%1, data set deleted on %2", {name, time});
}

} // namespace

Ref<StudyService> TheStudyService() {
    return ServiceNamed<StudyService>("Studies");
}

void StudyService::OnInitialize() {
    const auto explorer = Explorer();
    Keep(explorer->OnActive.Subscribe([this](const Ref<Object>& item) { m_active = item; }));
    Keep(explorer->OnInactive.Subscribe([this](const Ref<Object>& item) { OnInactive(item); }));
    Keep(explorer->onRemove.Subscribe([this](const Ref<Object>& item) { OnInactive(item); }));
    const auto windows = Singleton::Framework()->WindowManager();
    Keep(windows->WindowActivateEvent.Subscribe([this](const Ref<Window>& window) { OnWindowActive(window); }));
    Keep(windows->WindowTerminateEvent.Subscribe([this](const Ref<Window>& window) {
        if (!window->IsModal())
            OnWindowActive(nullptr);
    }));
    try {
        m_workspace = New<Workspace>(Store::DefaultPath(), true);
        Keep(m_workspace->Changed.Subscribe([this](const std::string& status) { OnChanged(status); }));
        m_shown = TheStore().Contents();
        m_look = CurrentPlatform().oTimers->NewTimer();
        m_look->SetInterval(1000);
        Keep(m_look->Tick.Subscribe([this] { ShowChangesOfOthers(); }));
        m_look->SetEnabled(true);
    } catch (const Failure& failure) {
        // The rest of the application works without studies.
        m_storeProblem = failure.Description;
        for (const char* action : {"NewStudy", "Import", "Report"})
            Action(action)->SetEnabled(false);
    }
}

void StudyService::OnTerminate() {
    m_active = nullptr;
    m_items.clear();
    m_importing.clear();
    if (m_look)
        m_look->SetEnabled(false);
    if (m_workspace)
        m_workspace->Close();
}

// What was said of one window doesn't stay below another. A window that a dialog covered for a while is the same.
void StudyService::OnWindowActive(const Ref<Window>& window) {
    if ((window && window->IsModal()) || window.Get() == m_lastActive)
        return;
    m_lastActive = window.Get();
    SetStatus("");
}

void StudyService::OnInactive(const Ref<Object>& item) {
    if (m_active == item)
        m_active = nullptr;
}

void StudyService::Start() {
    Singleton::Framework()->NavigationManager()->SetCaption("Studies");
    Build([] { Explorer()->Populate(); });
    if (!m_workspace) {
        SetStatus(Translated("The studies aren't available: %1", {m_storeProblem}));
        ShowMessage(m_storeProblem, "Studies");
        return;
    }
    const std::size_t studies = TheStore().Studies().size();
    SetStatus(Translated(studies, "%1 study", "%1 studies"));
    ShowWhatCanBeUndone();
    if (TheStore().IsShared())
        ShowMessage(Translated("Studies is open in another window already, on the same studies. Each window shows what "
                               "the other changes."),
                    "Studies");
}

void StudyService::OnNewStudy() {
    const Study study = TheStore().StudyOf(TheStore().CreateStudy(TheStore().FreeName(Translated("Study"))));
    m_workspace->Tell(Translated("%1 has been created", {Quoted(study.name)}));
    const StorePlace place('s', study.id);
    if (Select(place))
        Explorer()->StartRename(m_items.at(place));
}

void StudyService::OnImport() {
    AskForImport(ActiveStudy());
}

void StudyService::AskForImport(Id studyId) {
    const auto job = New<ImportJob>(m_workspace, studyId);
    OpenWindow("Import", job, {.caption = Translated("Import Data")});
    job->WhenImported([this, job = job.Get()] { OpenImported(job->dataSetId); });
}

void StudyService::ImportFile(const std::string& path) {
    Import(path, ActiveStudy(), &StudyService::ShowImported);
}

void StudyService::ImportAndOpen(const std::string& path) {
    Import(path, ActiveStudy(), &StudyService::OpenImported);
}

// Without asking: what the wizard proposes.
void StudyService::Import(const std::string& path, Id studyId, void (StudyService::*then)(Id dataSetId)) {
    const auto importing = New<ImportJob>(m_workspace, studyId);
    importing->SetPath(path);
    m_importing.push_back(importing);
    importing->WhenRead([this, then, job = importing.Get()] {
        const Ref<ImportJob> self(job);
        std::erase(m_importing, self);
        job->Run();
        job->WhenImported([this, then, job] { (this->*then)(job->dataSetId); });
    });
}

void StudyService::Duplicate(Id studyId) {
    const Study copy = TheStore().StudyOf(TheStore().DuplicateStudy(studyId));
    m_workspace->Tell(Translated("%1 has been created", {Quoted(copy.name)}));
    Select({'s', copy.id});
}

void StudyService::DeleteSelected(const StoreItem& item) {
    std::vector<StorePlace> places;
    for (const Ref<Object>& selected : SelectedItems())
        if (const Ref<StoreItem> other = selected.TryAs<StoreItem>(); other && m_shown.contains(other->Place()))
            places.push_back(other->Place());
    if (places.size() < 2)
        places = {item.Place()};
    if (!WantsDeletion(places))
        return;
    const std::string name = Quoted(TheStore().Contents().at(places.front()).name);
    TheStore().Delete(places);
    m_workspace->Tell(places.size() == 1 ? Translated("%1 has been deleted; Undo restores it", {name})
                                         : Translated("%1 items have been deleted; Undo restores them",
                                                      {std::to_string(places.size())}));
}

// Asks when a study goes with something in it.
bool StudyService::WantsDeletion(const std::vector<StorePlace>& places) {
    std::size_t dataSets = 0;
    std::size_t analyses = 0;
    for (const auto& [kind, id] : places) {
        dataSets += kind == 's' ? TheStore().DataSets(id).size() : 0;
        analyses += kind == 's' ? TheStore().Analyses(id).size() : 0;
    }
    const std::string contents = ContentsText(dataSets, analyses);
    if (contents.empty())
        return true;
    const std::string days = std::to_string(DaysInBin);
    return Ask(places.size() == 1
                   ? Translated("Delete %1 with %2?\nEdit > Restore Deleted brings it back within %3 days.",
                                {Quoted(TheStore().StudyOf(places.front().second).name), contents, days})
                   : Translated("Delete %1 items, and in the studies %2?\nEdit > Restore Deleted brings them back "
                                "within %3 days.",
                                {std::to_string(places.size()), contents, days}),
               {Translated("Delete")}, Translated("Delete"))
        .has_value();
}

void StudyService::OnPreferenceChanged(const std::string& service, const std::string&, const std::string&) {
    if (service == "Studies")
        TellAllWindows(Translated("The preferences have been changed"));
}

bool StudyService::RestoreWindow(const std::string&, const std::string& key) {
    return m_workspace && OpenByKey(m_workspace, key);
}

void StudyService::OnReport() {
    const std::vector<Study> studies = TheStore().Studies();
    if (studies.empty())
        FailWith(Translated("There is no study to report on. Create one, or import a file."));
    if (const Id active = ActiveStudy(); active != 0)
        return OpenReport(m_workspace, active);
    std::vector<std::string> names;
    for (const Study& study : studies)
        names.push_back(study.name);
    const std::optional<std::string> name =
        names.size() == 1 ? names.front()
                          : Ask(Translated("Which study shall be reported on?"), names, Translated("Report"));
    for (const Study& study : studies)
        if (name && study.name == *name)
            OpenReport(m_workspace, study.id);
}

void StudyService::OnUndo() {
    const std::string label = TheStore().UndoLabel();
    TheStore().Undo();
    m_workspace->Tell(Translated("Undone: %1", {label}));
}

void StudyService::OnRedo() {
    const std::string label = TheStore().RedoLabel();
    TheStore().Redo();
    m_workspace->Tell(Translated("Redone: %1", {label}));
}

void StudyService::OnRestore() {
    const std::vector<Deleted> items = TheStore().DeletedItems();
    if (items.empty())
        return SetStatus(Translated("Nothing has been deleted within the last %1 days", {std::to_string(DaysInBin)}));
    std::vector<std::string> choices;
    const auto placeOf = [&](const std::string& choice) { return std::find(choices.begin(), choices.end(), choice); };
    for (const Deleted& item : items)
        choices.push_back(
            FreeText(ChoiceOf(item), [&](const std::string& choice) { return placeOf(choice) != choices.end(); }));
    const std::optional<std::string> chosen =
        Ask(Translated("What shall be restored?"), choices, Translated("Restore Deleted"));
    if (!chosen)
        return;
    const Deleted& item = items[static_cast<std::size_t>(placeOf(*chosen) - choices.begin())];
    TheStore().Restore(item.id);
    m_workspace->Tell(Translated("%1 has been restored", {Quoted(item.name)}));
    Select({item.kind.front(), item.itemId}); // whose kinds begin with the letters of places
}

void StudyService::OnRefresh() {
    if (m_workspace)
        m_workspace->ShowChangesOfOthers();
    if (!ShowsAll())
        Rebuild();
}

// Not while a label is open, which would go with the explorer that it is in.
void StudyService::ShowChangesOfOthers() {
    const Ref<corvane::TreeView> tree = Explorer()->TreeView();
    if (!tree || !tree->IsEditingLabel())
        m_workspace->ShowChangesOfOthers();
}

void StudyService::Tell(const std::string& what) {
    m_shown = TheStore().Contents();
    m_workspace->Tell(what);
}

void StudyService::OnChanged(const std::string& status) {
    const StoreContents contents = TheStore().Contents();
    m_lastChange = status;
    if (!Follow(contents))
        Rebuild();
    m_shown = contents;
    WindowsFollow();
    ShowWhatCanBeUndone();
    SetStatus(status);
}

// Whether the explorer shows the studies as they are, also where a label was edited.
bool StudyService::ShowsAll() const {
    const Ref<corvane::TreeView> tree = Explorer()->TreeView();
    return m_workspace && tree && EqualText(tree->Tag(), "Studies") && TheStore().Contents() == m_shown &&
           std::all_of(m_shown.begin(), m_shown.end(), [&](const auto& shown) {
               const auto item = m_items.find(shown.first);
               const Ref<Node> node = item == m_items.end() ? nullptr : tree->GetNodes()->Find(item->second->NodeKey());
               return node && node->Text() == shown.second.name;
           });
}

void StudyService::OnUnsaved(Dictionary& items, Double& order) {
    order = 1;
    for (const Ref<AnalysisDocument>& document : UnsavedAnalyses())
        items.Add(FreeText(document->Name(), [&](const std::string& name) { return items.Exists(name); }), document);
}

void StudyService::OnSave(const Ref<Object>& item) {
    item.As<AnalysisDocument>()->Save();
}

void StudyService::ShowWhatCanBeUndone() {
    Action("Restore")->SetEnabled(!TheStore().DeletedItems().empty());
    const auto Show = [this](const char* actionName, const std::string& label, const std::string& caption) {
        const Ref<ActionItem> action = Action(actionName);
        action->SetEnabled(!label.empty());
        action->SetCaption("Edit", label.empty() ? "&" + std::string(actionName) : caption);
    };
    const std::string undo = TheStore().UndoLabel();
    const std::string redo = TheStore().RedoLabel();
    Show("Undo", undo, Translated("&Undo %1", {undo}));
    Show("Redo", redo, Translated("&Redo %1", {redo}));
}

} // namespace studies

CORVANE_PLUGIN(Class<studies::StudyService>("StudiesSvc.StudyService"),
               Class<studies::StudiesRoot>("StudiesSvc.StudiesRoot"),
               Class<studies::DataSetsFolder>("StudiesSvc.DataSetsFolder"),
               Class<studies::AnalysesFolder>("StudiesSvc.AnalysesFolder"))
