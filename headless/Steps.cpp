#include "headless/Steps.h"

#include "adapters/common/Nearest.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/Expectation.h"

#include <algorithm>
#include <map>

namespace corvane::inspect {

namespace {

// The first field, and what stands behind its blank.
std::pair<std::string, std::string> Split(const std::string& sText) {
    const std::size_t iBlank = sText.find(' ');
    if (iBlank == std::string::npos)
        return {sText, {}};
    return {sText.substr(0, iBlank), sText.substr(iBlank + 1)};
}

Ref<ExplorerManager> Explorer() {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

// The tree of a tab given as text; nothing when there is none.
Ref<TreeView> TreeOf(const ModelHost& oHost, const std::string& sTab) {
    const std::optional<Double> oTab = NumberIn(sTab);
    for (const auto& tvw : oHost.Trees())
        if (oTab && tvw->Container() == *oTab)
            return tvw;
    return nullptr;
}

void Click(const ModelHost& oHost, const std::string& sTool) {
    if (const Ref<Tool> oTool = oHost.Bar()->Tools()->Find(sTool))
        oHost.Bar()->Click(oTool);
}

void ClickNode(const ModelHost& oHost, const std::string& sRest) {
    const auto [sTab, sKey] = Split(sRest);
    const Ref<TreeView> tvw = TreeOf(oHost, sTab);
    if (!tvw || tvw->Container() != oHost.Tabs()->Tab())
        return;
    if (const Ref<Node> nod = tvw->GetNodes()->Find(sKey))
        tvw->ClickNode(nod);
}

void SelectNode(const ModelHost& oHost, const std::string& sRest) {
    const auto [sTab, sKey] = Split(sRest);
    const Ref<TreeView> tvw = TreeOf(oHost, sTab);
    if (!tvw)
        return;
    if (sKey.empty())
        tvw->SetSelectedItem(nullptr);
    else if (const Ref<Node> nod = tvw->GetNodes()->Find(sKey))
        tvw->SetSelectedItem(nod);
}

void Rename(const ModelHost& oHost, const std::string& sText) {
    const Ref<TreeView> tvw = oHost.ActiveTree();
    if (!tvw)
        return;
    tvw->StartLabelEdit();
    tvw->CommitLabelEdit(sText); // nothing when the edit was cancelled
}

void ChangeTab(const ModelHost& oHost, const std::string& sTab) {
    const std::optional<Double> oTab = NumberIn(sTab);
    if (oTab && *oTab >= 0 && *oTab < oHost.Tabs()->Tabs())
        oHost.Tabs()->ChooseTab(static_cast<Long>(*oTab));
}

void CloseBand(const ModelHost& oHost, const std::string& sBand) {
    if (const Ref<Band> oBand = oHost.Bar()->Bands()->Find(sBand))
        oHost.Bar()->Close(oBand);
}

void OpenWindow(const std::string& sRest) {
    const auto [sWindow, sKey] = Split(sRest);
    using enum WindowStateConstants;
    (void)CorvaneMain::Framework()->WindowManager()->OpenWindow(
        sWindow, nullptr, nullptr, WindowShowModeConstants::cvDefinitionDefault, cvDefinitionDefault,
        MDIWindowTypeConstants::cvDefinitionDefault, WindowTypeConstants::cvDefinitionDefault,
        BusinessContextTypeConstants::cvDefinitionDefault, ShowApplyCommandConstants::cvDefinitionDefault, sKey);
}

// By its key, or without one by the name of its definition.
Ref<Window> WindowOf(const std::string& sKey) {
    for (const auto& oWindow : CorvaneMain::Framework()->WindowManager()->Windows()) {
        const bool bHasKey = oWindow->Key() != std::to_string(oWindow->ObjectKey());
        if (EqualText(bHasKey ? oWindow->Key() : oWindow->WindowDef()->Name(), sKey))
            return oWindow;
    }
    Fail(FailureNumber::InvalidProcedureCall, "There is no open window \"" + sKey + "\"", "Steps");
}

// The form of the window of that key; nothing when it shows itself otherwise.
Ref<Form> FormOf(const ModelHost& oHost, const std::string& sKey) {
    const Ref<Window> oWindow = WindowOf(sKey);
    for (const auto& oForm : oHost.MainForm()->Forms())
        if (IsFormOf(oForm, oWindow))
            return oForm;
    return nullptr;
}

void CloseWindow(const ModelHost& oHost, const std::string& sKey) {
    if (const Ref<Form> oForm = FormOf(oHost, sKey))
        oForm->Unload();
}

void ActivateWindow(const ModelHost& oHost, const std::string& sKey) {
    if (const Ref<Form> oForm = FormOf(oHost, sKey))
        oForm->Activate();
}

// Keys may hold blanks; the last field doesn't.
std::pair<std::string, std::string> SplitLast(const std::string& sText) {
    const std::size_t iBlank = sText.rfind(' ');
    return {sText.substr(0, iBlank), sText.substr(iBlank + 1)};
}

void ShowPage(const ModelHost& /*oHost*/, const std::string& sRest) {
    const auto [sKey, sIndex] = SplitLast(sRest);
    const Ref<Window> oWindow = WindowOf(sKey);
    const Long lIndex = ToLong(sIndex);
    if (lIndex < 0 || lIndex >= oWindow->WindowDef()->PageDefs()->Count())
        Fail(FailureNumber::Subscript, "The window \"" + sKey + "\" has no page " + sIndex, "Steps");
    oWindow->SetActivePageIndex(lIndex);
}

void ClickCommand(const ModelHost& /*oHost*/, const std::string& sRest) {
    static const std::map<std::string, StandardCommandConstants, std::less<>> mapCommands{
        {"help", StandardCommandConstants::cvHelp},         {"ok", StandardCommandConstants::cvOK},
        {"cancel", StandardCommandConstants::cvCancel},     {"apply", StandardCommandConstants::cvApply},
        {"previous", StandardCommandConstants::cvPrevious}, {"next", StandardCommandConstants::cvNext},
        {"finish", StandardCommandConstants::cvFinish},     {"save", StandardCommandConstants::cvSave},
        {"saveas", StandardCommandConstants::cvSaveAs}};
    const auto [sKey, sCommand] = SplitLast(sRest);
    const auto it = mapCommands.find(FoldText(sCommand));
    if (it == mapCommands.end())
        Fail(FailureNumber::InvalidProcedureCall, "There is no command \"" + sCommand + "\" of windows", "Steps");
    WindowOf(sKey)->ClickCommand(it->second);
}

// What a person does for the menu of a node: the click on it makes its item the active one.
void AskForMenu(const ModelHost& oHost, const std::string& sRest) {
    ClickNode(oHost, sRest);
    const Ref<TreeView> tvw = TreeOf(oHost, Split(sRest).first);
    if (tvw && tvw->Container() == oHost.Tabs()->Tab() && tvw->GetNodes()->Find(Split(sRest).second))
        tvw->MouseUp.Raise(MouseButton::RightButton, ShiftState::NoShift, 0, 0);
}

void Resize(const ModelHost& oHost, const std::string& sRest) {
    const auto [sWidth, sHeight] = Split(sRest);
    oHost.Tabs()->SetBounds(0, ToSingle(sWidth), ToSingle(sHeight));
    oHost.Panel()->Resize.Raise();
}

struct Verb {
    int nFields; // that it needs
    std::function<void(ModelHost&, const std::string&)> fnAct;
    const char* sFields = ""; // as somebody is told who has left one out
};

const std::map<std::string, Verb, std::less<>>& Verbs() {
    static const std::map<std::string, Verb, std::less<>> mapVerbs{
        {"populate", {0, [](ModelHost&, const std::string&) { Explorer()->Populate(); }}},
        {"clear", {0, [](ModelHost&, const std::string&) { Explorer()->Clear(); }}},
        {"refresh", {0, [](ModelHost&, const std::string&) { Explorer()->Refresh(); }}},
        {"show", {0, [](ModelHost&, const std::string&) { Explorer()->Show(); }}},
        {"hide", {0, [](ModelHost&, const std::string&) { Explorer()->Hide(); }}},
        {"click", {1, Click, "TOOL"}},
        {"node", {2, ClickNode, "TAB KEY"}},
        {"select", {1, SelectNode, "TAB KEY"}},
        {"treeclick",
         {0,
          [](ModelHost& oHost, const std::string&) {
              if (const auto tvw = oHost.ActiveTree())
                  tvw->Click.Raise();
          }}},
        {"dblclick",
         {0,
          [](ModelHost& oHost, const std::string&) {
              if (const auto tvw = oHost.ActiveTree())
                  tvw->DblClick.Raise();
          }}},
        {"rightclick",
         {0,
          [](ModelHost& oHost, const std::string&) {
              if (const auto tvw = oHost.ActiveTree())
                  tvw->MouseUp.Raise(MouseButton::RightButton, ShiftState::NoShift, 0, 0);
          }}},
        {"tab", {1, ChangeTab, "N"}},
        {"rename", {0, Rename}},
        {"closeband", {1, CloseBand, "NAME"}},
        {"open", {1, [](ModelHost&, const std::string& sRest) { OpenWindow(sRest); }, "WINDOW"}},
        {"resize", {2, Resize, "WIDTH HEIGHT"}},
        {"activate", {1, ActivateWindow, "KEY"}},
        {"close", {1, CloseWindow, "KEY"}},
        {"page", {2, ShowPage, "KEY INDEX"}},
        {"command", {2, ClickCommand, "KEY COMMAND"}},
        {"contextmenu", {2, AskForMenu, "TAB KEY"}},
        {"expect", {2, [](ModelHost&, const std::string&) {}, "PATH VALUE"}}, // Take looks at it
        {"exit", {0, [](ModelHost& oHost, const std::string&) { oHost.Exit(); }}},
    };
    return mapVerbs;
}

std::vector<std::string> VerbNames() {
    std::vector<std::string> aNames;
    for (const auto& [sName, oVerb] : Verbs())
        aNames.push_back(sName);
    return aNames;
}

std::string DidYouMean(const std::vector<std::string>& aNames, const std::string& sWritten) {
    const auto oNearest = Nearest(aNames, sWritten);
    return oNearest ? "; did you mean \"" + *oNearest + "\"?" : std::string();
}

// What a step is about that isn't there, so that nothing happens; empty when it is.
std::string Missing(const ModelHost& oHost, const Step& oStep) {
    if (oStep.sVerb == "click") {
        if (oHost.Bar()->Tools()->Find(oStep.sRest))
            return {};
        std::vector<std::string> aNames;
        for (const auto& oTool : oHost.Bar()->Tools()->All())
            aNames.push_back(oTool->Name());
        return "there is no tool \"" + oStep.sRest + "\"" + DidYouMean(aNames, oStep.sRest);
    }
    if (oStep.sVerb != "node" && oStep.sVerb != "contextmenu")
        return {};
    const auto [sTab, sKey] = Split(oStep.sRest);
    const Ref<TreeView> tvw = TreeOf(oHost, sTab);
    if (!tvw)
        return "there is no tab " + sTab;
    if (!tvw->GetNodes()->Find(sKey))
        return "there is no node \"" + sKey + "\" in the tree of tab " + sTab;
    return tvw->Container() == oHost.Tabs()->Tab() ? std::string() : "the tab " + sTab + " isn't the current one";
}

} // namespace

std::vector<Step> ReadSteps(std::istream& oStream, const std::string& sFile) {
    std::vector<Step> aSteps;
    std::string sLine;
    for (int nLine = 1; std::getline(oStream, sLine); ++nLine) {
        if (!sLine.empty() && sLine.back() == '\r')
            sLine.pop_back();
        const std::size_t nIndent = std::min(sLine.find_first_not_of(' '), sLine.size());
        sLine.erase(0, nIndent);
        if (sLine.empty() || sLine.front() == '#')
            continue;
        auto [sVerb, sRest] = Split(sLine);
        const auto it = Verbs().find(sVerb);
        const std::string sWhere = sFile + ":" + std::to_string(nLine) + ": ";
        if (it == Verbs().end())
            Fail(FailureNumber::InvalidProcedureCall,
                 sWhere + "there is no step \"" + sVerb + "\"" + DidYouMean(VerbNames(), sVerb));
        // The last field may be empty behind its blank.
        const bool bComplete = it->second.nFields == 0 || (it->second.nFields == 1 && sLine.size() > sVerb.size()) ||
                               (it->second.nFields == 2 && sRest.find(' ') != std::string::npos);
        if (!bComplete)
            Fail(FailureNumber::InvalidProcedureCall, sWhere + "the step \"" + sVerb +
                                                          "\" lacks a field: write it as in \"" + sVerb + " " +
                                                          it->second.sFields + "\"");
        aSteps.push_back({std::move(sVerb), std::move(sRest), nLine, sFile, nIndent > 0});
    }
    return aSteps;
}

void Take(ModelHost& oHost, const Step& oStep) {
    if (oStep.sVerb == "expect") {
        if (const std::string sUnmet = Unmet(oHost, oStep.sRest); !sUnmet.empty())
            oHost.Recorded().aUnmet.push_back(oStep.sFile + ":" + std::to_string(oStep.nLine) + ": error: " + sUnmet);
        return;
    }
    const auto& oVerb = Verbs().at(oStep.sVerb);
    if (!oStep.sFile.empty())
        if (const std::string sMissing = Missing(oHost, oStep); !sMissing.empty())
            oHost.Recorded().aMissed.push_back(oStep.sFile + ":" + std::to_string(oStep.nLine) + ": note: " + sMissing);
    oHost.Do([&] { oVerb.fnAct(oHost, oStep.sRest); });
}

void TakeAll(ModelHost& oHost, const std::vector<Step>& aSteps) {
    const struct End {
        ModelHost& oHost;
        ~End() { oHost.SetModalLoop({}); }
    } oEnd{oHost};
    auto itNext = aSteps.begin();
    const auto fnNext = [&] {
        const Step& oStep = *itNext++;
        if (!oHost.HasExited() || oStep.sVerb == "expect")
            Take(oHost, oStep);
    };
    oHost.SetModalLoop([&](const Form& frm) {
        while (frm.IsLoaded() && frm.Visible() && itNext != aSteps.end() && itNext->bInModal)
            fnNext();
    });
    while (itNext != aSteps.end())
        fnNext();
}

} // namespace corvane::inspect
