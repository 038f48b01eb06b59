// The report on a study: all its data sets and analyses with their figures and pictures, to read, print and hand on.
#pragma once

#include "Errors.h"
#include "Files.h"
#include "QtText.h"
#include "ReportFile.h"
#include "StudyContexts.h"
#include "corvane/author/Jobs.h"
#include "desktop/QtPage.h"

#include <QListWidget>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextBrowser>
#include <algorithm>
#include <set>

namespace studies {

class ReportPage final : public corvane::desktop::QtPage<ReportPage, StudyContext> {
    QPointer<QTextBrowser> m_view;
    QPointer<QListWidget> m_sections; // what is checked is in the report
    std::set<std::string> m_leftOut;
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
        auto* parts = new QSplitter(parent);
        m_sections = new QListWidget(parts);
        m_sections->setAccessibleName(Text(Translated("Sections of the report")));
        m_sections->setSpacing(2);
        m_sections->setTextElideMode(Qt::ElideMiddle);
        m_sections->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        QObject::connect(m_sections, &QListWidget::itemChanged, m_sections, [this] { ChooseSections(); });
        m_view = new QTextBrowser(parts);
        parts->setStretchFactor(1, 1);
        parts->setSizes({180, 620});
        parts->setChildrenCollapsible(true);
        m_view->setAccessibleName(Text(Translated("Report")));
        m_view->setOpenLinks(false);
        // As on paper, whatever the theme.
        QPalette paper = m_view->palette();
        paper.setColor(QPalette::Base, Qt::white);
        paper.setColor(QPalette::Text, QColor(0x20, 0x24, 0x28));
        m_view->setPalette(paper);
        Write();
        return parts;
    }
    // The sections as they are, with the checks as they were.
    void ShowSections(const ReportSubject& subject) {
        const QSignalBlocker silent(m_sections);
        const int current = m_sections->currentRow();
        m_sections->clear();
        for (const ReportSection& section : SectionsOf(subject)) {
            auto* item = new QListWidgetItem(Text(section.title), m_sections);
            item->setToolTip(item->text());
            item->setData(Qt::UserRole, Text(section.key));
            item->setCheckState(m_leftOut.contains(section.key) ? Qt::Unchecked : Qt::Checked);
        }
        m_sections->setVisible(m_sections->count() > 1);
        m_sections->setCurrentRow(std::min(std::max(current, 0), m_sections->count() - 1));
    }
    void ChooseSections() {
        m_leftOut.clear();
        for (int row = 0; row < m_sections->count(); ++row)
            if (const QListWidgetItem* item = m_sections->item(row); item->checkState() == Qt::Unchecked)
                m_leftOut.insert(Utf8(item->data(Qt::UserRole).toString()));
        Write(false);
    }
    void Write(bool sections = true) {
        using corvane::JobProgress;
        if (!m_view)
            return;
        if (m_job)
            m_job->Cancel();
        m_job = nullptr;
        Store& store = About()->Space()->GetStore();
        ReportSubject subject = SubjectOf(store, About()->Number());
        subject.leftOut = m_leftOut;
        if (sections)
            ShowSections(subject);
        const int number = ++m_number;
        if (IsSmall(subject.values, 1)) {
            const auto Read = [&store](Id dataSetId, JobProgress&) { return store.ReadDataSet(dataSetId); };
            return Show(DrawReport(ReportOn(subject, ReadPreferences(), Read), nullptr));
        }
        if (m_view->document()->isEmpty())
            m_view->setPlainText(Text(Translated("The report is being written…")));
        m_job = corvane::StartJob(
            {.title = Translated("Report on %1", {subject.study.name}), .owner = corvane::Ref<corvane::Object>(this)},
            [subject, preferences = ReadPreferences()](JobProgress& progress) {
                const auto steps = progress.Split({9, 1});
                const auto Read = [&subject](Id id, JobProgress& own) { return ReadDataTable(subject.path, id, own); };
                return DrawReport(ReportOn(subject, preferences, Read, steps[0]), &steps[1].get());
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
