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
std::string NameOf(const Window& oWindow) {
    const bool bHasKey = oWindow.Key() != std::to_string(oWindow.ObjectKey());
    return bHasKey ? oWindow.Key() : std::string(oWindow.WindowDef()->Name());
}

const char* CommandOf(const Window& oWindow, StandardCommandConstants eCommand) {
    const WindowTypeConstants eType = oWindow.WindowType();
    switch (eCommand) {
    case StandardCommandConstants::cvHelp:
        return "Help";
    case StandardCommandConstants::cvOK:
        return eType == WindowTypeConstants::cvWizard       ? "Finish"
               : eType == WindowTypeConstants::cvSaveDialog ? "Save"
                                                            : "OK";
    case StandardCommandConstants::cvCancel:
        return "Cancel";
    case StandardCommandConstants::cvApply:
        return eType == WindowTypeConstants::cvSaveDialog ? "SaveAs" : "Apply";
    case StandardCommandConstants::cvPrevious:
        return "Previous";
    case StandardCommandConstants::cvNext:
        return "Next";
    }
    return "";
}

std::string LineOf(const WindowStep& oStep) {
    const std::string sName = NameOf(oStep.oWindow);
    switch (oStep.eWhat) {
    case WindowStep::What::Command:
        return "command " + sName + " " + CommandOf(oStep.oWindow, static_cast<StandardCommandConstants>(oStep.nWhich));
    case WindowStep::What::Page:
        return "page " + sName + " " + std::to_string(oStep.nWhich);
    case WindowStep::What::Close:
        return "close " + sName;
    case WindowStep::What::Activate:
        return "activate " + sName;
    }
    return {};
}

} // namespace

StepRecorder::StepRecorder(std::string sFile, bool bGoesOn)
    : m_sFile(std::move(sFile)), m_bGoesOn(bGoesOn), m_oFile(m_sFile, bGoesOn ? std::ios::app : std::ios::trunc) {
    if (!m_oFile)
        Fail(FailureNumber::FileAccess, "The file \"" + m_sFile + "\" can't be written");
    if (!m_bGoesOn)
        Write("# A session at the desktop. To take it again: corvane inspect APP --steps FILE");
}

void StepRecorder::Write(const std::string& sLine) {
    if (!m_oFile)
        return;
    std::string sText = sLine; // one line, whatever names hold
    std::replace(sText.begin(), sText.end(), '\n', ' ');
    m_oFile << sText << std::endl;
    if (!m_oFile)
        std::fprintf(stderr, "corvane-desktop: warning: the file \"%s\" can't be written any more\n", m_sFile.c_str());
}

void StepRecorder::Comment(const std::string& sText) {
    Write("# " + sText);
}

bool StepRecorder::TakeEntry() {
    const long lEntry = m_oModels.fnEntry ? m_oModels.fnEntry() : 0;
    return lEntry == 0 || std::exchange(m_lTaken, lEntry) != lEntry;
}

void StepRecorder::Step(const std::string& sLine) {
    if (TakeEntry() && !m_bHeld)
        Write(sLine);
}

void StepRecorder::Follow(Models oModels) {
    Leave();
    m_oModels = std::move(oModels);
    m_lTaken = 0;
    m_bExits = m_bRightButton = false;
    const auto fnHold = [this](Subscription oSubscription) { m_aSubscriptions.push_back(std::move(oSubscription)); };
    fnHold(m_oModels.oActiveBar->ToolClick.Subscribe([this](const Ref<Tool>& oTool) { Bar_ToolClick(*oTool); }));
    fnHold(m_oModels.oActiveBar->BandClose.Subscribe(
        [this](const Ref<Band>& oBand) { Step("closeband " + oBand->Name()); }));
    fnHold(m_oModels.frmMain->OnQueryUnload.Subscribe([this](bool&) { m_bExits = TakeEntry(); }));
    fnHold(m_oModels.frmMain->Changed.Subscribe([this](Form::Change eChange) {
        if (eChange == Form::Change::Unloaded && m_bExits && !m_bHeld)
            Write("exit");
    }));
    for (const auto& oControl : m_oModels.frmPanel->Controls())
        if (const auto oTabs = oControl.TryAs<TabStrip>())
            fnHold(oTabs->Click.Subscribe(
                [this, pTabs = oTabs.Get()](Long) { Step("tab " + std::to_string(pTabs->Tab())); }));
    fnHold(m_oModels.frmPanel->ControlAdded.Subscribe([this](const Ref<Object>& oControl) {
        if (const auto oTree = oControl.TryAs<TreeView>())
            FollowTree(oTree);
    }));
}

void StepRecorder::Leave() {
    m_aSubscriptions.clear();
    m_oModels = {};
}

void StepRecorder::FollowTree(const Ref<TreeView>& oTree) {
    const auto fnHold = [this](Subscription oSubscription) { m_aSubscriptions.push_back(std::move(oSubscription)); };
    const TreeView* pTree = oTree.Get();
    fnHold(oTree->MouseDown.Subscribe([this](Long lButton, Long, Single, Single) {
        m_bRightButton = lButton == RightButton;
        m_bMenuAsked = false;
    }));
    fnHold(oTree->NodeClick.Subscribe([this, pTree](const Ref<Node>& oNode) { Tree_NodeClick(*pTree, *oNode); }));
    fnHold(
        oTree->MouseUp.Subscribe([this](Long lButton, Long lShift, Single, Single) { Tree_MouseUp(lButton, lShift); }));
    fnHold(oTree->Click.Subscribe([this] { Step("treeclick"); })); // on a node NodeClick has come first
    fnHold(oTree->DblClick.Subscribe([this] { Step("dblclick"); }));
    fnHold(oTree->AfterLabelEdit.Subscribe([this](bool&, std::string& sText) { Step("rename " + sText); }));
}

// What the host itself offers isn't there when the steps are taken.
void StepRecorder::Bar_ToolClick(const Tool& oTool) {
    const auto oItem = oTool.TagVariant().TryAs<ActionItem>();
    const Ref<Object> oProvider = oItem ? oItem->ActionsProviderObj() : nullptr;
    const bool bIsHosts = oProvider && oProvider->TypeName() == "HostService";
    Step(bIsHosts ? "# of the desktop itself: click " + oTool.Name() : "click " + oTool.Name());
}

void StepRecorder::Tree_NodeClick(const TreeView& oTree, const Node& oNode) {
    const std::string sRest = " " + std::to_string(oTree.Container()) + " " + oNode.Key();
    m_bMenuAsked = m_bRightButton;
    Step((m_bRightButton ? "contextmenu" : "node") + sRest);
}

void StepRecorder::Tree_MouseUp(Long lButton, Long lShift) {
    const bool bAsked = std::exchange(m_bMenuAsked, false);
    m_bRightButton = false;
    if (lButton == RightButton && lShift == NoShift && !bAsked)
        Step("rightclick");
}

// Whether a window is closed may depend on an answer. A window of the host isn't there when the steps are taken.
void StepRecorder::OnWindow(const WindowStep& oStep, const std::function<void()>& fnDo) {
    const bool bIsFirst = TakeEntry() && !m_bHeld;
    const bool bIsHosts = oStep.oWindow.WindowDef()->Name() == WindowHost::ListedWindow;
    const std::string sLine = (bIsHosts                  ? "# of the desktop itself: "
                               : oStep.oWindow.IsModal() ? "  "
                                                         : "") +
                              LineOf(oStep);
    const bool bMayBeRefused = oStep.eWhat == WindowStep::What::Close ||
                               (oStep.eWhat == WindowStep::What::Command &&
                                oStep.nWhich == static_cast<int>(StandardCommandConstants::cvCancel));
    if (bIsFirst && !bMayBeRefused)
        Write(sLine);
    fnDo();
    if (bIsFirst && bMayBeRefused && oStep.fnHasEnded())
        Write(sLine);
}

} // namespace corvane::desktop
