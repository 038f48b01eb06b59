#include "AnalysisPage.h"

#include "Files.h"
#include "Windows.h"

namespace studies {

using namespace corvane;

void AnalysisPage::OnInitialize() {
    Keep(Document()->Changed.Subscribe([this] { Follow(); }));
    FollowSpace();
}

// Saving may have moved the data into a study.
void AnalysisPage::FollowSpace() {
    if (const auto space = Document()->Data()->Space(); space != m_space) {
        m_space = space;
        Keep(space->Changed.Subscribe([this](const std::string&) { Follow(); }));
    }
}

// Pages that share a window are kinds of one analysis: the one in front is what would be kept.
void AnalysisPage::OnActivate() {
    Document()->Look(Kind());
    EnableAction("Save", Document()->IsUnsaved());
    OwnWindow()->SetCaption(Document()->Name());
}

void AnalysisPage::Follow() {
    if (!Document()->Exists())
        return; // the window is about to close
    FollowSpace();
    Document()->Data()->WithTable(Ref<Object>(this), [this](const SharedTable& table) {
        if (!table || !Document()->Exists())
            return;
        if (Widget())
            ShowAnalysis();
        EnableAction("Save", Document()->IsUnsaved());
        ValidityChanged();
    });
    OwnWindow()->SetCaption(Document()->Name());
}

void AnalysisPage::ChangeSettings(const std::function<void(AnalysisSettings&)>& change) {
    AnalysisSettings settings = Document()->Settings();
    change(settings);
    Document()->SetSettings(settings);
}

void AnalysisPage::Bind(QComboBox* box, std::string AnalysisSettings::*setting) {
    QObject::connect(box, &QComboBox::currentIndexChanged, box, [this, box, setting] {
        Guarded([&] { ChangeSettings([&](AnalysisSettings& settings) { settings.*setting = Chosen(*box); }); });
    });
}

void AnalysisPage::OnSave() {
    if (Document()->HasUnsavedResult())
        Document()->Save();
}

void AnalysisPage::OnSaveAnalysis() {
    Document()->Save();
}

void AnalysisPage::OnTable() {
    OpenDataWindow(Document()->Data());
}

void AnalysisPage::OnAnalyse(const Ref<ActionItem>& actionItem) {
    OpenNewAnalysis(Document()->Data(), actionItem->Name());
}

std::string AnalysisPage::AskForFile(const std::string& filter, const std::string& ending) const {
    return AskForSavePath("Export", filter, Document()->Name() + ending);
}

} // namespace studies
