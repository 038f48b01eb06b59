#include "Windows.h"

#include "Errors.h"
#include "Report.h"
#include "Shell.h"
#include "Statistics.h"
#include "StudyContexts.h"
#include "corvane/base/Text.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/windows/WindowManager.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace studies {

using namespace corvane;

namespace {

// A window with several pages is opened hidden, so that the right one comes up at once.
Ref<Window> OpenHidden(const std::string& sWindow, const Ref<Object>& oAbout,
                       const Ref<IWindowExitHandler>& oExitHandler, const std::string& sKey) {
    return CorvaneMain::Framework()->WindowManager()->OpenWindow(
        sWindow, oAbout, oExitHandler, WindowShowModeConstants::cvDefinitionDefault,
        WindowStateConstants::cvDefinitionDefault, MDIWindowTypeConstants::cvDefinitionDefault,
        WindowTypeConstants::cvDefinitionDefault, BusinessContextTypeConstants::cvDefinitionDefault,
        ShowApplyCommandConstants::cvDefinitionDefault, sKey, true);
}

// Windows are found again by these and the number in the store behind them, also at the next start.
const std::string sDataKey = "data ";
const std::string sAnalysisKey = "analysis ";
const std::string sReportKey = "report ";

// The number in a key that begins so; 0 for another key.
Id NumberIn(const std::string& sKey, const std::string& sBegin) {
    Id nNumber = 0;
    if (sKey.compare(0, sBegin.size(), sBegin) == 0)
        std::from_chars(sKey.data() + sBegin.size(), sKey.data() + sKey.size(), nNumber);
    return nNumber;
}

struct Place {
    const char* sWindow;
    Long lPage;
};

Place PlaceOf(AnalysisKind eKind) {
    switch (eKind) {
    case AnalysisKind::Histogram:
        return {"Chart", 0};
    case AnalysisKind::Scatter:
        return {"Chart", 1};
    case AnalysisKind::Comparison:
        return {"Comparison", 0};
    case AnalysisKind::Bootstrap:
        return {"Comparison", 1};
    case AnalysisKind::Summary:
        break;
    }
    return {"Summary", 0};
}

Ref<Window> OpenDocument(const Ref<AnalysisDocument>& oDocument) {
    const Place oPlace = PlaceOf(oDocument->Settings().eKind);
    const std::string sKey =
        oDocument->Number() == 0 ? std::string() : sAnalysisKey + std::to_string(oDocument->Number());
    Ref<Window> oWindow = OpenHidden(oPlace.sWindow, oDocument, nullptr, sKey);
    oWindow->SetCaption(oDocument->Name());
    if (oPlace.lPage != 0)
        oWindow->SetActivePageIndex(oPlace.lPage);
    oWindow->Show();
    return oWindow;
}

// Loops go over a copy: what is done to one window may end others.
std::vector<Ref<Window>> OpenWindows() {
    std::vector<Ref<Window>> aWindows;
    for (const Ref<Window>& oWindow : *CorvaneMain::Framework()->WindowManager()->Windows())
        aWindows.push_back(oWindow);
    return aWindows;
}

std::string ReportCaption(const StudyContext& oStudy) {
    return "Report on " + oStudy.Space()->GetStore().StudyOf(oStudy.Number()).sName;
}

void CheckColumns(const Table& oTable, AnalysisKind eKind) {
    const auto nNumeric = std::count_if(oTable.aColumns.begin(), oTable.aColumns.end(),
                                        [](const Column& oColumn) { return oColumn.IsNumeric(); });
    if (eKind != AnalysisKind::Summary && nNumeric == 0)
        FailWith("The data have no column of numbers.");
    if (eKind == AnalysisKind::Scatter && nNumeric < 2)
        FailWith("A scatter plot needs two columns of numbers; the data have one.");
    if (eKind == AnalysisKind::Comparison && GroupColumns(oTable).empty())
        FailWith("The data have no column to group by.");
}

} // namespace

Ref<Window> OpenDataWindow(const Ref<DataSetContext>& oData, const Ref<IWindowExitHandler>& oExitHandler) {
    const std::string sKey = (oData->Space()->Keeps() ? sDataKey : "file ") + std::to_string(oData->Number());
    const Ref<Window> oWindow = OpenHidden("Data", oData, oExitHandler, sKey);
    oWindow->SetCaption(oData->Info().sName);
    oWindow->Show();
    return oWindow;
}

Ref<Window> OpenNewAnalysis(const Ref<DataSetContext>& oData, AnalysisKind eKind) {
    const Table& oTable = oData->Data();
    CheckColumns(oTable, eKind);
    Ref<Window> oWindow = OpenDocument(New<AnalysisDocument>(oData, FirstSettings(oTable, eKind, ReadPreferences())));
    if (eKind == AnalysisKind::Summary)
        ShowStatus("Summary of " + oData->Info().sName + ": " + LineText(Summarize(oTable)));
    return oWindow;
}

Ref<Window> OpenNewAnalysis(const Ref<DataSetContext>& oData, const std::string& sCommand) {
    return OpenNewAnalysis(oData, AnalysisKindOf(FoldText(sCommand)));
}

// A new analysis is known by its window's own key, so an open one is found by what it is about.
Ref<Window> OpenAnalysis(const Ref<Workspace>& oWorkspace, const Analysis& oAnalysis) {
    for (const Ref<Window>& oWindow : OpenWindows()) {
        const Ref<AnalysisDocument> oDocument = oWindow->BusinessContext().TryAs<AnalysisDocument>();
        if (oDocument && oDocument->Data()->Space() == oWorkspace && oDocument->Number() == oAnalysis.nId) {
            oWindow->Show();
            return oWindow;
        }
    }
    return OpenDocument(New<AnalysisDocument>(oWorkspace->DataSet(oAnalysis.nDataSetId), oAnalysis));
}

void OpenReport(const Ref<Workspace>& oWorkspace, Id nStudyId) {
    const auto oStudy = New<StudyContext>(oWorkspace, nStudyId);
    const Ref<Window> oWindow = OpenHidden("Report", oStudy, nullptr, sReportKey + std::to_string(nStudyId));
    oWindow->SetCaption(ReportCaption(*oStudy));
    oWindow->Show();
}

bool OpenByKey(const Ref<Workspace>& oWorkspace, const std::string& sKey) {
    Store& oStore = oWorkspace->GetStore();
    if (const Id nData = NumberIn(sKey, sDataKey); nData != 0 && oStore.HasDataSet(nData))
        OpenDataWindow(oWorkspace->DataSet(nData));
    else if (const Id nAnalysis = NumberIn(sKey, sAnalysisKey); nAnalysis != 0 && oStore.HasAnalysis(nAnalysis))
        OpenAnalysis(oWorkspace, oStore.AnalysisOf(nAnalysis));
    else if (const Id nStudy = NumberIn(sKey, sReportKey);
             nStudy != 0 && New<StudyContext>(oWorkspace, nStudy)->Exists())
        OpenReport(oWorkspace, nStudy);
    else
        return false;
    return true;
}

bool AskInWindow(const std::string& sWindow, const Ref<Object>& oBusinessContext, const std::string& sCaption) {
    const Ref<Window> oWindow = OpenHidden(sWindow, oBusinessContext, nullptr, {});
    oWindow->SetCaption(sCaption);
    oWindow->Show();
    return !oWindow->WasWindowCancelled();
}

void WindowsFollow() {
    for (const Ref<Window>& oWindow : OpenWindows()) {
        const Ref<Object> oAbout = oWindow->BusinessContext();
        if (const Ref<DataSetContext> oData = oAbout.TryAs<DataSetContext>()) {
            if (!oData->Exists())
                oWindow->Terminate();
            else if (!oWindow->IsModal())
                oWindow->SetCaption(oData->Info().sName);
        } else if (const Ref<AnalysisDocument> oDocument = oAbout.TryAs<AnalysisDocument>()) {
            if (!oDocument->Exists()) {
                oWindow->Terminate();
                continue;
            }
            oDocument->FollowStore();
            oWindow->SetCaption(oDocument->Name());
        } else if (const Ref<StudyContext> oStudy = oAbout.TryAs<StudyContext>()) {
            if (!oStudy->Exists())
                oWindow->Terminate();
            else if (!oWindow->IsModal())
                oWindow->SetCaption(ReportCaption(*oStudy));
        }
    }
}

void TellAllWindows(const std::string& sWhat) {
    std::set<Workspace*> aTold;
    for (const Ref<Window>& oWindow : OpenWindows()) {
        const Ref<Object> oAbout = oWindow->BusinessContext();
        Ref<Workspace> oWorkspace;
        if (const Ref<DataSetContext> oData = oAbout.TryAs<DataSetContext>())
            oWorkspace = oData->Space();
        else if (const Ref<AnalysisDocument> oDocument = oAbout.TryAs<AnalysisDocument>())
            oWorkspace = oDocument->Data()->Space();
        else if (const Ref<StudyContext> oStudy = oAbout.TryAs<StudyContext>())
            oWorkspace = oStudy->Space();
        if (oWorkspace && aTold.insert(oWorkspace.Get()).second)
            oWorkspace->Tell(sWhat);
    }
}

std::vector<Ref<AnalysisDocument>> ChangedAnalyses() {
    std::vector<Ref<AnalysisDocument>> aChanged;
    for (const Ref<Window>& oWindow : OpenWindows())
        if (const Ref<AnalysisDocument> oDocument = oWindow->BusinessContext().TryAs<AnalysisDocument>())
            if (oDocument->IsChanged())
                aChanged.push_back(oDocument);
    return aChanged;
}

} // namespace studies
