// The report on a study: all its data sets and analyses with their figures and pictures, to read, print and hand on.
#pragma once

#include "Errors.h"
#include "Files.h"
#include "QtText.h"
#include "ReportFile.h"
#include "StudyContexts.h"
#include "corvane/author/Jobs.h"
#include "desktop/QtPage.h"

#include <QScrollBar>
#include <QTextBrowser>

namespace studies {

class ReportPage final : public corvane::desktop::QtPage<ReportPage, StudyContext> {
    QPointer<QTextBrowser> m_view;
    DrawnReport m_report;
    corvane::Ref<corvane::IJob> m_job; // that writes the next one
    int m_number = 0;                  // of the latest

    void OnInitialize() override {
        Keep(About()->Space()->Changed.Subscribe([this](const std::string&) {
            if (About()->Exists())
                Write();
        }));
    }
    QWidget* FirstFocus() override { return m_view; }
    QWidget* MakeWidget(QWidget* parent) override {
        m_view = new QTextBrowser(parent);
        m_view->setAccessibleName(Text(Translated("Report")));
        m_view->setOpenLinks(false);
        // As on paper, whatever the theme.
        QPalette paper = m_view->palette();
        paper.setColor(QPalette::Base, Qt::white);
        paper.setColor(QPalette::Text, QColor(0x20, 0x24, 0x28));
        m_view->setPalette(paper);
        Write();
        return m_view;
    }
    void Write() {
        using corvane::JobProgress;
        if (!m_view)
            return;
        if (m_job)
            m_job->Cancel();
        m_job = nullptr;
        Store& store = About()->Space()->GetStore();
        const ReportSubject subject = SubjectOf(store, About()->Number());
        const int number = ++m_number;
        if (IsSmall(subject.values, 1)) {
            const auto Read = [&store](Id dataSetId, JobProgress*) { return store.ReadDataSet(dataSetId); };
            return Show(DrawReport(ReportOn(subject, ReadPreferences(), Read), nullptr));
        }
        if (m_view->document()->isEmpty())
            m_view->setPlainText(Text(Translated("The report is being written…")));
        m_job = corvane::StartJob(
            {.title = Translated("Report on %1", {subject.study.name}), .owner = corvane::Ref<corvane::Object>(this)},
            [subject, preferences = ReadPreferences()](JobProgress& progress) {
                const auto steps = progress.Split({9, 1});
                const auto Read = [&subject](Id id, JobProgress* own) { return ReadDataTable(subject.path, id, *own); };
                return DrawReport(ReportOn(subject, preferences, Read, &steps[0].get()), &steps[1].get());
            },
            [this, number](corvane::JobResult<DrawnReport>& result) {
                if (number != m_number)
                    return;
                m_job = nullptr;
                Show(std::move(result.Value()));
            });
    }
    void Show(DrawnReport report) {
        m_report = std::move(report);
        const int scrolled = m_view->verticalScrollBar()->value();
        m_view->document()->clear();
        FillDocument(*m_view->document(), m_report);
        m_view->moveCursor(QTextCursor::Start); // or the keyboard's focus would show the end
        m_view->verticalScrollBar()->setValue(scrolled);
    }
    // As HTML or PDF.
    void OnExport() {
        if (m_report.report.html.empty())
            FailWith(Translated("There is nothing to export yet. The report is being written."));
        const std::string path = AskForSavePath(Translated("Export"),
                                                Translated("HTML page") + " (*.html)|*.html|" +
                                                    Translated("PDF document") + " (*.pdf)|*.pdf",
                                                m_report.report.title + ".html");
        if (path.empty())
            return;
        SaveReport(m_report, Text(path));
        corvane::SetStatus(Translated("Exported to %1", {path}));
    }
    void OnCopy() {
        if (m_view)
            m_view->copy();
    }

public:
    static constexpr auto Members = corvane::Methods<&ReportPage::OnExport, &ReportPage::OnCopy>();
};

} // namespace studies
