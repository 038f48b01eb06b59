// Writes down what a person does at the desktop as steps that `corvane inspect --steps` takes, a line as soon as it is
// done. What code does, also in answer to the person, isn't written: it happens again when the steps are taken.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "desktop/windows/WindowHost.h"

#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace corvane::desktop {

class StepRecorder final {
public:
    struct Models {
        Ref<MdiForm> frmMain;
        Ref<ActiveBar> oActiveBar;
        Ref<PanelForm> frmPanel;
        std::function<long()> fnEntry; // FailurePresenter::Entry
    };

    // Begins the file anew, or goes on with it. Fails with 75 when it can't be written.
    explicit StepRecorder(std::string sFile, bool bGoesOn = false);
    [[nodiscard]] bool GoesOn() const { return m_bGoesOn; }

    // From here on those models are followed. To be called before the library is loaded, so that a step is written
    // before what it brings about.
    void Follow(Models oModels);
    // Nobody is followed any more.
    void Leave();
    // Nothing is written while it is held: what happens is the host's doing.
    void SetHeld(bool bHeld) { m_bHeld = bHeld; }

    // A person does something to a window.
    void OnWindow(const WindowStep& oStep, const std::function<void()>& fnDo);
    // What runs in the library now, up to the end of this entry, is nobody's doing.
    void NotByPerson() { (void)TakeEntry(); }
    // A step that the host takes in a person's name.
    void ByHost(const std::string& sStep) { Write(sStep); }
    void Comment(const std::string& sText);

private:
    void FollowTree(const Ref<TreeView>& oTree);
    void Bar_ToolClick(const Tool& oTool);
    void Tree_NodeClick(const TreeView& oTree, const Node& oNode);
    void Tree_MouseUp(Long lButton, Long lShift);
    // True once an entry: for what comes first, which is the person's doing.
    [[nodiscard]] bool TakeEntry();
    void Step(const std::string& sLine);
    void Write(const std::string& sLine);

    std::string m_sFile;
    bool m_bGoesOn;
    std::ofstream m_oFile;
    Models m_oModels;
    long m_lTaken = 0; // the entry in which the latest step was taken
    bool m_bHeld = false;
    bool m_bRightButton = false; // is pressed on a tree
    bool m_bMenuAsked = false;   // since then
    bool m_bExits = false;
    std::vector<Subscription> m_aSubscriptions;
};

} // namespace corvane::desktop
