#include "desktop/record/StepRecorder.h"

#include "corvane/base/Failure.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/Window.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace corvane::desktop {

namespace {

// As the steps name it: by its key, or without one by the name of its definition.
std::string NameOf(const Window& window) {
    const bool hasKey = window.Key() != std::to_string(window.ObjectKey());
    return hasKey ? window.Key() : std::string(window.WindowDef()->Name());
}

const char* CommandOf(const Window& window, StandardCommandConstants command) {
    const WindowTypeConstants type = window.WindowType();
    switch (command) {
    case StandardCommandConstants::cvHelp:
        return "Help";
    case StandardCommandConstants::cvOK:
        return type == WindowTypeConstants::cvWizard       ? "Finish"
               : type == WindowTypeConstants::cvSaveDialog ? "Save"
                                                           : "OK";
    case StandardCommandConstants::cvCancel:
        return "Cancel";
    case StandardCommandConstants::cvApply:
        return type == WindowTypeConstants::cvSaveDialog ? "SaveAs" : "Apply";
    case StandardCommandConstants::cvPrevious:
        return "Previous";
    case StandardCommandConstants::cvNext:
        return "Next";
    }
    return "";
}

std::string LineOf(const WindowStep& step) {
    const std::string name = NameOf(step.window);
    switch (step.what) {
    case WindowStep::What::Command:
        return "command " + name + " " + CommandOf(step.window, static_cast<StandardCommandConstants>(step.which));
    case WindowStep::What::Page:
        return "page " + name + " " + std::to_string(step.which);
    case WindowStep::What::Close:
        return "close " + name;
    case WindowStep::What::Activate:
        return "activate " + name;
    case WindowStep::What::Field:
        return step.verb + " " + name + " " + std::to_string(step.which) + " " + step.rest;
    }
    return {};
}

} // namespace

StepRecorder::StepRecorder(std::string file, bool goesOn)
    : m_filePath(std::move(file)), m_goesOn(goesOn), m_file(m_filePath, goesOn ? std::ios::app : std::ios::trunc) {
    if (!m_file)
        Fail(FailureNumber::FileAccess, "The file \"" + m_filePath + "\" can't be written");
    if (!m_goesOn)
        Write("# A session at the desktop. To take it again: corvane inspect APP --steps FILE");
}

StepRecorder::~StepRecorder() {
    WriteTyped();
}

// Before whatever comes next.
void StepRecorder::WriteTyped() {
    m_typedField.clear();
    if (const std::string typed = std::exchange(m_typed, {}); !typed.empty())
        Write(typed);
}

void StepRecorder::Write(const std::string& line) {
    WriteTyped();
    if (!m_file)
        return;
    std::string text = line; // one line, whatever names hold
    std::replace(text.begin(), text.end(), '\n', ' ');
    m_file << text << std::endl;
    if (!m_file)
        std::fprintf(stderr, "corvane-desktop: warning: the file \"%s\" can't be written any more\n",
                     m_filePath.c_str());
}

void StepRecorder::Comment(const std::string& text) {
    Write("# " + text);
}

bool StepRecorder::TakeEntry() {
    const long entry = m_models.entry ? m_models.entry() : 0;
    return entry == 0 || std::exchange(m_taken, entry) != entry;
}

void StepRecorder::Step(const std::string& line) {
    if (TakeEntry() && !m_held)
        Write(line);
}

void StepRecorder::Follow(Models models) {
    Leave();
    m_models = std::move(models);
    m_taken = 0;
    m_exits = m_rightButton = false;
    const auto hold = [this](Subscription subscription) { m_subscriptions.push_back(std::move(subscription)); };
    hold(m_models.activeBar->ToolClick.Subscribe([this](const Ref<Tool>& tool) { Bar_ToolClick(*tool); }));
    hold(m_models.activeBar->BandClose.Subscribe([this](const Ref<Band>& band) { Step("closeband " + band->Name()); }));
    hold(m_models.mainForm->OnQueryUnload.Subscribe([this](bool&) { m_exits = TakeEntry(); }));
    hold(m_models.mainForm->Changed.Subscribe([this](Form::Change change) {
        if (change == Form::Change::Unloaded && m_exits && !m_held)
            Write("exit");
    }));
    for (const auto& control : m_models.panelForm->Controls())
        if (const auto tabs = control.TryAs<TabStrip>())
            hold(tabs->Click.Subscribe(
                [this, tabsStrip = tabs.Get()](Long) { Step("tab " + std::to_string(tabsStrip->Tab())); }));
    hold(m_models.panelForm->ControlAdded.Subscribe([this](const Ref<Object>& control) {
        if (const auto tree = control.TryAs<TreeView>())
            FollowTree(tree);
    }));
}

void StepRecorder::Leave() {
    WriteTyped();
    m_subscriptions.clear();
    m_models = {};
    m_selection = nullptr;
    m_selected.clear();
}

// Of files that are dropped on an item there may be many steps in one entry.
void StepRecorder::Note(const std::string& step) {
    if (!step.starts_with("takefile "))
        Step(step);
    else if (!m_held)
        Write(step);
}

void StepRecorder::FollowSelection(const Ref<items::Selection>& selection) {
    m_selection = selection;
    m_subscriptions.push_back(selection->Changed.Subscribe([this] { Selection_Changed(); }));
}

// "also" takes a node in, or out again.
void StepRecorder::Selection_Changed() {
    const std::vector<Ref<Node>> nodes = m_selection->IsSeveral() ? m_selection->Nodes() : std::vector<Ref<Node>>();
    const std::string tab = nodes.empty() ? "" : std::to_string(m_selection->Tree()->Container()) + " ";
    std::vector<Ref<Node>> before = std::exchange(m_selected, nodes);
    if (nodes.empty() || m_held)
        return;
    const Ref<Node> one = m_selection->Tree()->SelectedItem();
    if (before.empty() && one)
        before.push_back(one);
    const auto isIn = [](const std::vector<Ref<Node>>& all, const Ref<Node>& node) {
        return std::find(all.begin(), all.end(), node) != all.end();
    };
    for (const Ref<Node>& node : nodes)
        if (!isIn(before, node))
            Write("also " + tab + node->Key());
    for (const Ref<Node>& node : before)
        if (!isIn(nodes, node) && node->IsInTree())
            Write("also " + tab + node->Key());
}

void StepRecorder::FollowTree(const Ref<TreeView>& tree) {
    const auto hold = [this](Subscription subscription) { m_subscriptions.push_back(std::move(subscription)); };
    const TreeView* treeView = tree.Get();
    hold(tree->MouseDown.Subscribe([this](Long button, Long, Single, Single) {
        m_rightButton = button == RightButton;
        m_menuAsked = false;
    }));
    hold(tree->NodeClick.Subscribe([this, treeView](const Ref<Node>& node) { Tree_NodeClick(*treeView, *node); }));
    hold(tree->MouseUp.Subscribe([this](Long button, Long shift, Single, Single) { Tree_MouseUp(button, shift); }));
    hold(tree->Click.Subscribe([this] { Step("treeclick"); })); // on a node NodeClick has come first
    hold(tree->DblClick.Subscribe([this] { Step("dblclick"); }));
    hold(tree->AfterLabelEdit.Subscribe([this](bool&, std::string& text) { Step("rename " + text); }));
}

// What the host itself offers isn't there when the steps are taken.
void StepRecorder::Bar_ToolClick(const Tool& tool) {
    const auto item = tool.TagVariant().TryAs<ActionItem>();
    const Ref<Object> provider = item ? item->ActionsProviderObj() : nullptr;
    if (item && item->Name().starts_with("DesktopRecentFile"))
        return; // the command that opens it, and the answer that it gets, are steps
    const bool isHosts =
        provider && (provider->TypeName() == "HostService" || item->Name().starts_with("DesktopLayout"));
    if (isHosts && (item->Action() == "OnSave" || item->Action() == "OnClose"))
        return; // what it does to a window is a step of the window
    Step(isHosts ? "# of the desktop itself: click " + tool.Name() : "click " + tool.Name());
}

void StepRecorder::Tree_NodeClick(const TreeView& tree, const Node& node) {
    const std::string rest = " " + std::to_string(tree.Container()) + " " + node.Key();
    m_menuAsked = m_rightButton;
    if (m_selection && m_selection->IsSeveral() && !m_rightButton) {
        (void)TakeEntry(); // it is written already
        return;
    }
    Step((m_rightButton ? "contextmenu" : "node") + rest);
}

void StepRecorder::Tree_MouseUp(Long button, Long shift) {
    const bool asked = std::exchange(m_menuAsked, false);
    m_rightButton = false;
    if (button == RightButton && shift == NoShift && !asked)
        Step("rightclick");
}

// Of what is typed into a field one after the other only the last is a step.
void StepRecorder::HoldTyped(const WindowStep& step, const std::string& line) {
    const std::string field = NameOf(step.window) + "\n" + std::to_string(step.which) + "\n" + step.field;
    if (field != m_typedField)
        WriteTyped();
    m_typedField = field;
    m_typed = line;
}

// Whether a window is closed may depend on an answer. A window of the host isn't there when the steps are taken.
void StepRecorder::OnWindow(const WindowStep& step, const std::function<void()>& work) {
    const bool isFirst = TakeEntry() && !m_held;
    const bool isHosts = step.window.WindowDef()->Name() == WindowHost::ListedWindow;
    const std::string line = (isHosts ? "# of the desktop itself: " : step.window.IsModal() ? "  " : "") + LineOf(step);
    const bool mayBeRefused =
        step.what == WindowStep::What::Close ||
        (step.what == WindowStep::What::Command && step.which == static_cast<int>(StandardCommandConstants::cvCancel));
    if (isFirst && step.verb == "set") {
        HoldTyped(step, line);
    } else if (isFirst && !mayBeRefused) {
        Write(line);
    }
    work();
    if (isFirst && mayBeRefused && step.hasEnded())
        Write(line);
}

} // namespace corvane::desktop
