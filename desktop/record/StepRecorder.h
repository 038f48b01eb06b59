// Writes down what a user does at the desktop as steps that `corvane inspect --steps` takes, a line as soon as it is
// done. What code does, also in answer to the user, isn't written: it happens again when the steps are taken.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "desktop/windows/WindowHost.h"
#include "items/Selection.h"

#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace corvane::desktop {

class StepRecorder final {
public:
    struct Models {
        Ref<MdiForm> mainForm;
        Ref<ActiveBar> activeBar;
        Ref<PanelForm> panelForm;
        std::function<long()> entry; // FailurePresenter::Entry
    };

    // Begins the file again, or goes on with it. Fails with 75 when it can't be written.
    explicit StepRecorder(std::string file, bool goesOn = false);
    ~StepRecorder();
    StepRecorder(const StepRecorder&) = delete;
    StepRecorder& operator=(const StepRecorder&) = delete;
    [[nodiscard]] bool GoesOn() const { return m_goesOn; }

    // From here on those models are followed. To be called before the library is loaded, so that a step is written
    // before what it brings about.
    void Follow(Models models);
    // NoOne is followed any more.
    void Leave();
    // A step that none of the models shows.
    void Note(const std::string& step);
    // The nodes that are selected beside each other, of the models' trees.
    void FollowSelection(const Ref<items::Selection>& selection);
    // Nothing is written while it is held: what happens is the host's doing.
    void SetHeld(bool held) { m_held = held; }

    // The user does something to a window.
    void OnWindow(const WindowStep& step, const std::function<void()>& work);
    // What runs in the library now, up to the end of this entry, is no one's doing.
    void NotByUser() { (void)TakeEntry(); }
    // A step that the host takes in a user's name.
    void ByHost(const std::string& step) { Write(step); }
    // To a question of the code that the latest step runs.
    void Answer(const std::string& text) {
        if (!m_held)
            Write("  answer " + text);
    }
    void Comment(const std::string& text);

private:
    void FollowTree(const Ref<TreeView>& tree);
    void Bar_ToolClick(const Tool& tool);
    void Tree_NodeClick(const TreeView& tree, const Node& node);
    void Tree_MouseUp(Long button, Long shift);
    void Selection_Changed();
    // True once an entry: for what comes first, which is the user's doing.
    [[nodiscard]] bool TakeEntry();
    void Step(const std::string& line);
    void Write(const std::string& line);
    void HoldTyped(const WindowStep& step, const std::string& line);
    void WriteTyped();

    std::string m_filePath;
    bool m_goesOn;
    std::ofstream m_file;
    Models m_models;
    long m_taken = 0; // the entry in which the latest step was taken
    bool m_held = false;
    bool m_rightButton = false; // is pressed on a tree
    bool m_menuAsked = false;   // since then
    bool m_exits = false;
    Ref<items::Selection> m_selection;
    std::vector<Ref<Node>> m_selected; // several, when it changed last
    std::string m_typed;               // the step of what is being typed, until the next step
    std::string m_typedField;          // where
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane::desktop
