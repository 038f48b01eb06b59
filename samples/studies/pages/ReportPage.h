// The report on a study: all its data sets and analyses with their figures and pictures, to read, print and hand on.
#pragma once

#include "StudyContexts.h"
#include "StudyReport.h"
#include "corvane/platform/IJobs.h"
#include "desktop/QtPage.h"

#include <QImage>

class QTextBrowser;
class QTextDocument;

namespace studies {

struct DrawnReport {
    StudyReport report;
    std::vector<QImage> pictures; // in order of those of the report
};

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
    void Show(DrawnReport report);

    QPointer<QTextBrowser> m_view;
    DrawnReport m_report;
    corvane::Ref<corvane::IJob> m_job; // that writes the next one
    int m_number = 0;                  // of the latest
};

// What ReportPage does for a file, by the ending of its name. Fails when it can't be written.
void SaveReport(const DrawnReport& report, const QString& path);

} // namespace studies
