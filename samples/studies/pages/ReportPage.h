// The report on a study: all its data sets and analyses with their figures and pictures, to read, print and hand on.
#pragma once

#include "EditedText.h"
#include "Errors.h"
#include "Files.h"
#include "QtText.h"
#include "ReportFile.h"
#include "StudyContexts.h"
#include "corvane/Jobs.h"
#include "desktop/IPrintout.h"
#include "desktop/QtPage.h"

#include <QScrollBar>
#include <QTextBrowser>

namespace studies {

class ReportPage final : public corvane::desktop::QtPage<ReportPage, StudyContext> {
    QPointer<QTextBrowser> m_view;
    std::vector<ReportSection> m_sections;
    std::set<std::string> m_leftOut; // those that aren't in the report, by their keys
    DrawnReport m_report;
    corvane::LatestJob m_job; // that writes the next one

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
    bool Print(corvane::desktop::IPrintout& printout) override {
        printout.AddDocument(*m_view->document());
        return true;
    }
    // Of the form: the keys of those that are in the report, a line each.
    [[nodiscard]] std::string Sections() const {
        std::string keys;
        for (const ReportSection& section : m_sections)
            keys += m_leftOut.contains(section.key) ? "" : section.key + "\n";
        return keys;
    }
    void SetSections(const std::string& keys) {
        m_leftOut.clear();
        for (const ReportSection& section : m_sections)
            if (("\n" + keys + "\n").find("\n" + section.key + "\n") == std::string::npos)
                m_leftOut.insert(section.key);
        Write();
    }
    [[nodiscard]] std::string SectionsChoices() const {
        std::string choices;
        for (const ReportSection& section : m_sections)
            choices += section.key + "\t" + AsField(section.title) + "\n";
        return choices;
    }
    [[nodiscard]] bool SectionsVisible() const { return m_sections.size() > 1; }
    void Write() {
        using corvane::JobProgress;
        if (!m_view)
            return;
        m_job.Stop();
        ReportSubject subject = SubjectOf(About()->Space()->GetStore(), About()->Number());
        subject.leftOut = m_leftOut;
        m_sections = SectionsOf(subject);
        OwnForm()->Refresh("Sections");
        const bool takesLong = !IsSmall(subject.values, 1);
        if (takesLong && m_view->document()->isEmpty())
            m_view->setPlainText(Text(Translated("The report is being written…")));
        m_job.StartIf(
            takesLong,
            {.title = Translated("Report on %1", {subject.study.name}), .owner = corvane::Ref<corvane::Object>(this)},
            [subject, preferences = ReadPreferences()](JobProgress& progress) {
                const auto steps = progress.Split({9, 1});
                const auto Read = [&subject](Id id, JobProgress& own) { return ReadDataTable(subject.path, id, own); };
                return DrawReport(ReportOn(subject, preferences, Read, steps[0]), steps[1]);
            },
            [this](DrawnReport report) { Show(std::move(report)); });
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
        ExportAs(Translated("HTML page") + " (*.html)|*.html|" + Translated("PDF document") + " (*.pdf)|*.pdf",
                 m_report.report.title + ".html", [this](const std::string& path) { SaveReport(m_report, path); });
    }
    void OnCopy() { m_view ? m_view->copy() : void(); }

public:
    static constexpr auto Members = corvane::Methods<&ReportPage::OnExport, &ReportPage::OnCopy,
                                                     &ReportPage::SectionsChoices, &ReportPage::SectionsVisible>(
        corvane::Property("Sections", &ReportPage::Sections, &ReportPage::SetSections));
};

} // namespace studies
