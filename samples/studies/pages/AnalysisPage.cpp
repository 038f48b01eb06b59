#include "AnalysisPage.h"

#include "Shell.h"
#include "Windows.h"

namespace studies {

using namespace corvane;

void AnalysisPage::OnInitialize() {
    Keep(Document()->Changed.Subscribe([this] { Follow(); }));
    Keep(Document()->Data()->Space()->Changed.Subscribe([this](const std::string&) { Follow(); }));
}

// Pages that share a window are kinds of one analysis: the one in front is what would be kept.
void AnalysisPage::OnActivate() {
    Document()->Look(Kind());
    EnableAction("Save", Document()->IsUnsaved());
    Base()->Window()->SetCaption(Document()->Name());
}

void AnalysisPage::Follow() {
    if (!Document()->Exists())
        return; // the window is about to close
    if (Widget())
        ShowAnalysis();
    EnableAction("Save", Document()->IsUnsaved());
    Base()->Window()->SetCaption(Document()->Name());
    Reconsider();
}

void AnalysisPage::ChangeSettings(const std::function<void(AnalysisSettings&)>& fnChange) {
    AnalysisSettings oSettings = Document()->Settings();
    fnChange(oSettings);
    Document()->SetSettings(oSettings);
}

void AnalysisPage::Bind(QComboBox* pBox, std::string AnalysisSettings::*pSetting) {
    QObject::connect(pBox, &QComboBox::currentIndexChanged, pBox, [this, pBox, pSetting] {
        Guarded([&] { ChangeSettings([&](AnalysisSettings& oSettings) { oSettings.*pSetting = Chosen(*pBox); }); });
    });
}

void AnalysisPage::OnSave() {
    if (Document()->IsChanged())
        Document()->Save();
}

void AnalysisPage::OnSaveAnalysis() {
    Document()->Save();
}

void AnalysisPage::OnTable() {
    OpenDataWindow(Document()->Data());
}

void AnalysisPage::OnAnalyse(const Ref<ActionItem>& oActionItem) {
    OpenNewAnalysis(Document()->Data(), oActionItem->Name());
}

std::string AnalysisPage::AskForFile(const std::string& sFilter, const std::string& sEnding) const {
    return AskForSavePath("Export", sFilter, Document()->Name() + sEnding);
}

} // namespace studies
