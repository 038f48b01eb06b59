// What the pages about one analysis have in common: they show its settings, change them, and keep them in the study.
#pragma once

#include "PageParts.h"
#include "Workspace.h"
#include "desktop/QtPage.h"

#include <functional>

namespace studies {

class AnalysisPage : public corvane::desktop::AnyQtPage {
public:
    // Asked about when the window closes.
    [[nodiscard]] bool IsChanged() override { return OwnWindow() && Document()->HasUnsavedResult(); }

    void OnSaveAnalysis();
    void OnTable();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // another one of the data, by the item's name

protected:
    [[nodiscard]] virtual AnalysisKind Kind() const = 0;
    void OnInitialize() override;
    void OnActivate() override;
    void OnSave() override;
    // Shows settings and figures as they are now; the widget is there.
    virtual void ShowAnalysis() = 0;

    [[nodiscard]] corvane::Ref<AnalysisDocument> Document() const { return AboutAs<AnalysisDocument>(); }
    // As it was read last: when it is being read again, ShowAnalysis follows.
    [[nodiscard]] const Table& Data() const { return *Document()->Data()->Latest(); }
    // Changes a copy of the settings and hands it to the document.
    void ChangeSettings(const std::function<void(AnalysisSettings&)>& change);
    // A control's choice of that setting goes into the document.
    void Bind(QComboBox* box, std::string AnalysisSettings::*setting);
    // Asks for a file; "" when the user cancels. The filters are those of the host's file dialog.
    [[nodiscard]] std::string AskForFile(const std::string& filter, const std::string& ending) const;

private:
    void Follow();
    void FollowSpace();

    corvane::Ref<Workspace> m_space;
};

} // namespace studies
