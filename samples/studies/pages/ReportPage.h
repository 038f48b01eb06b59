// The report on a study: all its data sets and analyses with their figures and pictures, to read, print and hand on.
#pragma once

#include "StudyContexts.h"
#include "StudyReport.h"
#include "desktop/QtPage.h"

class QTextBrowser;
class QTextDocument;

namespace studies {

class ReportPage final : public corvane::desktop::QtPage<ReportPage, StudyContext> {
public:
    QWidget* FirstFocus() override;

    void OnExport(); // as HTML or PDF
    void OnCopy();

    static constexpr auto Members = corvane::Methods<&ReportPage::OnExport, &ReportPage::OnCopy>();

protected:
    void OnInitialize() override;
    QWidget* MakeWidget(QWidget* parent) override;

private:
    void Write();

    QPointer<QTextBrowser> m_view;
    StudyReport m_report;
};

// What ReportPage does for a file, by the ending of its name. Fails when it can't be written.
void SaveReport(const StudyReport& report, const QString& path);

} // namespace studies
