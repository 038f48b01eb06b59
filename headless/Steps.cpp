#include "headless/Steps.h"

#include "adapters/common/Nearest.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/platform/Entering.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/Expectation.h"
#include "headless/FormPages.h"
#include "headless/PreferencesWindow.h"
#include "items/Items.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <string_view>

namespace corvane::inspect {

namespace {

// The first field, and what is behind its blank.
std::pair<std::string, std::string> Split(const std::string& text) {
    const std::size_t blank = text.find(' ');
    if (blank == std::string::npos)
        return {text, {}};
    return {text.substr(0, blank), text.substr(blank + 1)};
}

Ref<ExplorerManager> Explorer() {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

// The tree of a tab given as text; nothing when there is none.
Ref<TreeView> TreeOf(const ModelHost& host, const std::string& tabText) {
    const std::optional<Double> tab = NumberIn(tabText);
    for (const auto& tvw : host.Trees())
        if (tab && tvw->Container() == *tab)
            return tvw;
    return nullptr;
}

void Click(const ModelHost& host, const std::string& toolName) {
    if (const Ref<Tool> tool = host.Bar()->Tools()->Find(toolName))
        host.Bar()->Click(tool);
}

void ClickNode(const ModelHost& host, const std::string& rest) {
    const auto [tab, key] = Split(rest);
    const Ref<TreeView> tvw = TreeOf(host, tab);
    if (!tvw || tvw->Container() != host.Tabs()->Tab())
        return;
    if (const Ref<Node> nod = tvw->GetNodes()->Find(key)) {
        host.ExplorerItems().Selected()->SetOne();
        tvw->ClickNode(nod);
    }
}

// The node of "TAB KEY"; nothing unless the tab is current.
std::pair<Ref<TreeView>, Ref<Node>> NodeIn(const ModelHost& host, const std::string& rest) {
    const auto [tab, key] = Split(rest);
    const Ref<TreeView> tvw = TreeOf(host, tab);
    if (!tvw || tvw->Container() != host.Tabs()->Tab())
        return {};
    return {tvw, tvw->GetNodes()->Find(key)};
}

// Ctrl and a click: one more is selected, or one less.
void AlsoNode(const ModelHost& host, const std::string& rest) {
    const auto [tvw, node] = NodeIn(host, rest);
    if (!node)
        return;
    const auto selection = host.ExplorerItems().Selected();
    if (!selection->IsSeveral() || !selection->Has(*node)) {
        selection->Add(tvw, node);
        tvw->ClickNode(node);
        return;
    }
    const bool wasActive = tvw->SelectedItem() == node;
    const std::vector<Ref<Node>> nodes = selection->Nodes();
    if (wasActive)
        tvw->ClickNode(nodes.front() == node ? nodes[1] : nodes.front());
    selection->Remove(node);
}

void ExpandNode(const ModelHost& host, const std::string& rest) {
    if (const auto [tvw, node] = NodeIn(host, rest); node) {
        host.ExplorerItems().Settle();
        node->SetExpanded(false);
        node->SetExpanded(true);
    }
}

// What is selected, or the files that have been taken, on a node. Returns why it is refused, empty when it isn't.
std::string DropOnNode(ModelHost& host, const std::string& rest, bool copies) {
    const auto [tvw, node] = NodeIn(host, rest);
    if (!node)
        return {};
    items::Items& items = host.ExplorerItems();
    std::vector<std::string> files = host.TakeFiles();
    const auto dropped = files.empty() ? items.DroppedOf(items.Selected()->Nodes(), copies)
                                       : New<Dropped>(std::vector<Ref<Object>>(), std::move(files), copies);
    const items::DropAnswer answer = items.Drop(tvw, node, dropped);
    return answer.accepts || answer.failed
               ? std::string()
               : "\"" + node->Key() + "\" doesn't take what is dropped" + (answer.why.empty() ? "" : ": " + answer.why);
}

// A file is dropped on the window: the first service that opens it gets it. As above.
std::string DropFile(const std::string& path) {
    constexpr const char* openFile = "OpenFile";
    for (const auto& service : CorvaneMain::Framework()->ServiceManager()->Services()) {
        if (!service->HasMember(openFile))
            continue;
        const Entering entering(service);
        const Variant answer = service->Invoke(openFile, std::array<Variant, 1>{path});
        if (answer.IsEmpty() || ToBoolean(answer))
            return {};
    }
    return "no service opens \"" + path + "\"";
}

void SelectNode(const ModelHost& host, const std::string& rest) {
    const auto [tab, key] = Split(rest);
    const Ref<TreeView> tvw = TreeOf(host, tab);
    if (!tvw)
        return;
    if (key.empty())
        tvw->SetSelectedItem(nullptr);
    else if (const Ref<Node> nod = tvw->GetNodes()->Find(key))
        tvw->SetSelectedItem(nod);
}

void Rename(const ModelHost& host, const std::string& text) {
    const Ref<TreeView> tvw = host.ActiveTree();
    if (!tvw)
        return;
    tvw->StartLabelEdit();
    tvw->CommitLabelEdit(text); // nothing when the edit was cancelled
}

void ChangeTab(const ModelHost& host, const std::string& tabText) {
    const std::optional<Double> tab = NumberIn(tabText);
    if (tab && *tab >= 0 && *tab < host.Tabs()->Tabs())
        host.Tabs()->ChooseTab(static_cast<Long>(*tab));
}

void CloseBand(const ModelHost& host, const std::string& bandName) {
    if (const Ref<Band> band = host.Bar()->Bands()->Find(bandName))
        host.Bar()->Close(band);
}

void OpenWindow(const std::string& rest) {
    const auto [window, key] = Split(rest);
    if (EqualText(window, preferencesWindow))
        DefinePreferencesWindow();
    using enum WindowStateConstants;
    (void)CorvaneMain::Framework()->WindowManager()->OpenWindow(
        window, nullptr, nullptr, WindowShowModeConstants::cvDefinitionDefault, cvDefinitionDefault,
        MDIWindowTypeConstants::cvDefinitionDefault, WindowTypeConstants::cvDefinitionDefault,
        BusinessContextTypeConstants::cvDefinitionDefault, ShowApplyCommandConstants::cvDefinitionDefault, key);
}

// By its key, or without one by the name of its definition.
Ref<Window> WindowOf(const std::string& key) {
    for (const auto& window : CorvaneMain::Framework()->WindowManager()->Windows()) {
        const bool hasKey = window->Key() != std::to_string(window->ObjectKey());
        if (EqualText(hasKey ? window->Key() : window->WindowDef()->Name(), key))
            return window;
    }
    Fail(FailureNumber::InvalidProcedureCall, "There is no open window \"" + key + "\"", "Steps");
}

// The form of the window of that key; nothing when it shows itself otherwise.
Ref<Form> FormOf(const ModelHost& host, const std::string& key) {
    const Ref<Window> window = WindowOf(key);
    for (const auto& form : host.MainForm()->Forms())
        if (IsFormOf(form, window))
            return form;
    return nullptr;
}

void CloseWindow(const ModelHost& host, const std::string& key) {
    if (const Ref<Form> form = FormOf(host, key))
        form->Unload();
}

void ActivateWindow(const ModelHost& host, const std::string& key) {
    if (const Ref<Form> form = FormOf(host, key))
        form->Activate();
}

// Keys may hold blanks; the last field doesn't.
std::pair<std::string, std::string> SplitLast(const std::string& text) {
    const std::size_t blank = text.rfind(' ');
    return {text.substr(0, blank), text.substr(blank + 1)};
}

void ShowPage(const ModelHost& /*host*/, const std::string& rest) {
    const auto [key, index] = SplitLast(rest);
    const Ref<Window> window = WindowOf(key);
    const Long indexCount = ToLong(index);
    if (indexCount < 0 || indexCount >= window->WindowDef()->PageDefs()->Count())
        Fail(FailureNumber::Subscript, "The window \"" + key + "\" has no page " + index, "Steps");
    window->SetActivePageIndex(indexCount);
}

void ClickCommand(const ModelHost& /*host*/, const std::string& rest) {
    static const std::map<std::string, StandardCommandConstants, std::less<>> commands{
        {"help", StandardCommandConstants::cvHelp},         {"ok", StandardCommandConstants::cvOK},
        {"cancel", StandardCommandConstants::cvCancel},     {"apply", StandardCommandConstants::cvApply},
        {"previous", StandardCommandConstants::cvPrevious}, {"next", StandardCommandConstants::cvNext},
        {"finish", StandardCommandConstants::cvFinish},     {"save", StandardCommandConstants::cvSave},
        {"saveas", StandardCommandConstants::cvSaveAs}};
    const auto [key, command] = SplitLast(rest);
    const auto it = commands.find(FoldText(command));
    if (it == commands.end())
        Fail(FailureNumber::InvalidProcedureCall, "There is no command \"" + command + "\" of windows", "Steps");
    WindowOf(key)->ClickCommand(it->second);
}

// What a user does for the menu of a node: the click on it makes its item the active one.
void AskForMenu(const ModelHost& host, const std::string& rest) {
    const auto [tvw, node] = NodeIn(host, rest);
    const auto selection = host.ExplorerItems().Selected();
    if (node && selection->IsSeveral() && selection->Has(*node))
        tvw->ClickNode(node); // the others stay
    else
        ClickNode(host, rest);
    if (node && node->IsInTree())
        tvw->MouseUp.Raise(MouseButton::RightButton, ShiftState::NoShift, 0, 0);
}

void Resize(const ModelHost& host, const std::string& rest) {
    const auto [width, height] = Split(rest);
    host.Tabs()->SetBounds(0, ToSingle(width), ToSingle(height));
    host.Panel()->Resize.Raise();
}

struct JobToCancel {
    std::string title;
    std::optional<Double> part; // that is done by then
};

// "Import" or "Import at 40%".
JobToCancel JobIn(const std::string& rest) {
    constexpr std::string_view at = " at ";
    const std::size_t place = rest.rfind(at);
    if (place == std::string::npos || !rest.ends_with('%'))
        return {rest, {}};
    const std::size_t begin = place + at.size();
    const std::optional<Double> percent = NumberIn(rest.substr(begin, rest.size() - begin - 1));
    if (!percent || *percent < 0 || *percent > 100)
        return {rest, {}};
    return {rest.substr(0, place), *percent / 100};
}

// Jobs wait at this step for the next one, so that it can be cancelled.
bool KeepsJobsWaiting(const Step& step) {
    return step.verb == "cancel";
}

struct Verb {
    int fieldCount; // that it needs
    std::function<void(ModelHost&, const std::string&)> act;
    const char* fields = ""; // for the message when one is missing
};

const std::map<std::string, Verb, std::less<>>& Verbs() {
    static const std::map<std::string, Verb, std::less<>> verbs{
        {"populate", {0, [](ModelHost&, const std::string&) { Explorer()->Populate(); }}},
        {"clear", {0, [](ModelHost&, const std::string&) { Explorer()->Clear(); }}},
        {"refresh", {0, [](ModelHost&, const std::string&) { Explorer()->Refresh(); }}},
        {"show", {0, [](ModelHost&, const std::string&) { Explorer()->Show(); }}},
        {"hide", {0, [](ModelHost&, const std::string&) { Explorer()->Hide(); }}},
        {"click", {1, Click, "TOOL"}},
        {"node", {2, ClickNode, "TAB KEY"}},
        {"select", {1, SelectNode, "TAB KEY"}},
        {"also", {2, AlsoNode, "TAB KEY"}},
        {"expand", {2, ExpandNode, "TAB KEY"}},
        {"takefile", {1, [](ModelHost& host, const std::string& rest) { host.TakeFile(rest); }, "PATH"}},
        {"treeclick",
         {0,
          [](ModelHost& host, const std::string&) {
              if (const auto tvw = host.ActiveTree())
                  tvw->Click.Raise();
          }}},
        {"dblclick",
         {0,
          [](ModelHost& host, const std::string&) {
              if (const auto tvw = host.ActiveTree())
                  tvw->DblClick.Raise();
          }}},
        {"rightclick",
         {0,
          [](ModelHost& host, const std::string&) {
              if (const auto tvw = host.ActiveTree())
                  tvw->MouseUp.Raise(MouseButton::RightButton, ShiftState::NoShift, 0, 0);
          }}},
        {"tab", {1, ChangeTab, "N"}},
        {"rename", {0, Rename}},
        {"closeband", {1, CloseBand, "NAME"}},
        {"open", {1, [](ModelHost&, const std::string& rest) { OpenWindow(rest); }, "WINDOW"}},
        {"resize", {2, Resize, "WIDTH HEIGHT"}},
        {"activate", {1, ActivateWindow, "KEY"}},
        {"close", {1, CloseWindow, "KEY"}},
        {"page", {2, ShowPage, "KEY INDEX"}},
        {"command", {2, ClickCommand, "KEY COMMAND"}},
        {"contextmenu", {2, AskForMenu, "TAB KEY"}},
        // Take does these, which may be refused.
        {"drop", {2, [](ModelHost&, const std::string&) {}, "TAB KEY"}},
        {"dropcopy", {2, [](ModelHost&, const std::string&) {}, "TAB KEY"}},
        {"dropfile", {1, [](ModelHost&, const std::string&) {}, "PATH"}},
        {"set", {4, [](ModelHost&, const std::string&) {}, "KEY PAGE FIELD VALUE"}},
        {"press", {3, [](ModelHost&, const std::string&) {}, "KEY PAGE BUTTON"}},
        {"cell", {6, [](ModelHost&, const std::string&) {}, "KEY PAGE TABLE ROW COLUMN VALUE"}},
        {"row", {4, [](ModelHost&, const std::string&) {}, "KEY PAGE TABLE ROW"}},
        {"answer", {0, [](ModelHost& host, const std::string& rest) { host.Dialogs().AddAnswer(rest); }}},
        {"wait", {0, [](ModelHost& host, const std::string&) { host.Wait(); }}},
        {"cancel", {1, [](ModelHost&, const std::string&) {}, "JOB"}},        // Take does it
        {"expect", {2, [](ModelHost&, const std::string&) {}, "PATH VALUE"}}, // Take looks at it
        {"exit", {0, [](ModelHost& host, const std::string&) { host.Exit(); }}},
    };
    return verbs;
}

std::vector<std::string> VerbNames() {
    std::vector<std::string> names;
    for (const auto& [name, verb] : Verbs())
        names.push_back(name);
    return names;
}

std::string DidYouMean(const std::vector<std::string>& names, const std::string& written) {
    const auto nearest = Nearest(names, written);
    return nearest ? "; did you mean \"" + *nearest + "\"?" : std::string();
}

// What a step is about that isn't there, so that nothing happens; empty when it is.
std::string Missing(const ModelHost& host, const Step& step) {
    if (step.verb == "click") {
        if (host.Bar()->Tools()->Find(step.rest))
            return {};
        std::vector<std::string> names;
        for (const auto& tool : host.Bar()->Tools()->All())
            names.push_back(tool->Name());
        return "there is no tool \"" + step.rest + "\"" + DidYouMean(names, step.rest);
    }
    static const std::set<std::string, std::less<>> ofNodes{"node",   "contextmenu", "also",
                                                            "expand", "drop",        "dropcopy"};
    if (!ofNodes.contains(step.verb))
        return {};
    const auto [tab, key] = Split(step.rest);
    const Ref<TreeView> tvw = TreeOf(host, tab);
    if (!tvw)
        return "there is no tab " + tab;
    if (!tvw->GetNodes()->Find(key))
        return "there is no node \"" + key + "\" in the tree of tab " + tab;
    return tvw->Container() == host.Tabs()->Tab() ? std::string() : "the tab " + tab + " isn't the current one";
}

void NoteUnanswered(const ModelHost& host, const Step& step) {
    for (const std::string& question : host.Dialogs().TakeUnanswered())
        if (!step.file.empty())
            host.Recorded().missed.push_back(step.file + ":" + std::to_string(step.line) + ": note: \"" + question +
                                             "\" was asked and cancelled: answer it by the step \"answer TEXT\"");
}

void CheckStep(const std::string& verb, const std::string& line, const std::string& file, int lineNumber) {
    const std::string where = file + ":" + std::to_string(lineNumber) + ": ";
    const auto it = Verbs().find(verb);
    if (it == Verbs().end())
        Fail(FailureNumber::InvalidProcedureCall,
             where + "there is no step \"" + verb + "\"" + DidYouMean(VerbNames(), verb));
    // The last field may be empty behind its blank.
    if (std::count(line.begin(), line.end(), ' ') < it->second.fieldCount)
        Fail(FailureNumber::InvalidProcedureCall, where + "the step \"" + verb + "\" lacks a field: write it as in \"" +
                                                      verb + " " + it->second.fields + "\"");
}

} // namespace

std::vector<Step> ReadSteps(std::istream& stream, const std::string& file) {
    std::vector<Step> steps;
    std::string line;
    for (int lineCount = 1; std::getline(stream, line); ++lineCount) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
        line.erase(0, indent);
        if (line.empty() || line.front() == '#')
            continue;
        auto [verb, rest] = Split(line);
        CheckStep(verb, line, file, lineCount);
        steps.push_back({std::move(verb), std::move(rest), lineCount, file, indent > 0});
    }
    return steps;
}

void Take(ModelHost& host, const Step& step) {
    if (step.verb == "expect") {
        if (const std::string unmet = Unmet(host, step.rest); !unmet.empty())
            host.Recorded().unmet.push_back(step.file + ":" + std::to_string(step.line) + ": error: " + unmet);
        return;
    }
    if (step.verb == "cancel") {
        const auto [title, part] = JobIn(step.rest);
        if (!host.CancelJob(title, part) && !step.file.empty())
            host.Recorded().missed.push_back(step.file + ":" + std::to_string(step.line) + ": note: no job \"" + title +
                                             "\" waits to be run that can be cancelled: \"cancel\" comes right "
                                             "behind the step that starts it");
        return;
    }
    const auto& verb = Verbs().at(step.verb);
    if (!step.file.empty())
        if (const std::string missing = Missing(host, step); !missing.empty())
            host.Recorded().missed.push_back(step.file + ":" + std::to_string(step.line) + ": note: " + missing);
    std::string refused;
    host.Do([&] {
        if (IsFormStep(step.verb))
            refused = TakeFormStep(host, step.verb, step.rest);
        else if (step.verb == "dropfile")
            refused = DropFile(step.rest);
        else if (step.verb == "drop" || step.verb == "dropcopy")
            refused = DropOnNode(host, step.rest, step.verb == "dropcopy");
        else
            verb.act(host, step.rest);
    });
    if (!refused.empty() && !step.file.empty())
        host.Recorded().missed.push_back(step.file + ":" + std::to_string(step.line) + ": note: " + refused);
    NoteUnanswered(host, step);
}

void TakeAll(ModelHost& host, const std::vector<Step>& steps) {
    const struct End {
        ModelHost& host;
        ~End() {
            host.SetModalLoop({});
            host.Dialogs().SetBeforeQuestion({});
        }
    } end{host};
    auto nextPosition = steps.begin();
    const auto next = [&] {
        const Step& step = *nextPosition++;
        if (!host.HasExited() || step.verb == "expect")
            Take(host, step);
        if (nextPosition == steps.end() || !KeepsJobsWaiting(*nextPosition)) {
            host.RunJobs();
            NoteUnanswered(host, step);
        }
    };
    host.SetModalLoop([&](const Form& frm) {
        while (frm.IsLoaded() && frm.Visible() && nextPosition != steps.end() && nextPosition->inModal)
            next();
    });
    // The answer to a question is the indented step below the one that brings it about.
    host.Dialogs().SetBeforeQuestion([&] {
        if (nextPosition != steps.end() && nextPosition->inModal && nextPosition->verb == "answer")
            next();
    });
    while (nextPosition != steps.end())
        next();
}

} // namespace corvane::inspect
