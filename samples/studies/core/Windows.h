// The windows of Studies: how they are opened, so that there is one for each data set and analysis, and how they
// follow what they are about.
#pragma once

#include "Workspace.h"
#include "corvane/windows/Window.h"

namespace studies {

// The data set's table. Opening it again shows the open one.
corvane::Ref<corvane::Window> OpenDataWindow(const corvane::Ref<DataSetContext>& data);
// A new analysis of that kind, with its first settings. Fails when the data have no columns for it. Large data are read
// first, by a job, after which the window opens.
void OpenNewAnalysis(const corvane::Ref<DataSetContext>& data, AnalysisKind kind);
// The same for an analysis by the name of its command: "Summary", "Histogram" and so on.
void OpenNewAnalysis(const corvane::Ref<DataSetContext>& data, const std::string& command);
// An analysis of the store. Opening it again shows the open one. Large data are read first, likewise.
void OpenAnalysis(const corvane::Ref<Workspace>& workspace, const Analysis& analysis);
// The report on a study; there is one for each.
void OpenReport(const corvane::Ref<Workspace>& workspace, Id studyId);
// The window of that key, as it was open once. False when it isn't about anything in the store, or that has gone.
bool OpenByKey(const corvane::Ref<Workspace>& workspace, const std::string& key);

// All windows take the names of what they are about; those close whose data set or analysis is gone.
void WindowsFollow();
// For what concerns all windows, such as the preferences: each shows its figures again.
void TellAllWindows(const std::string& what);
// The analyses in open windows whose results would be lost with them.
[[nodiscard]] std::vector<corvane::Ref<AnalysisDocument>> UnsavedAnalyses();

} // namespace studies
