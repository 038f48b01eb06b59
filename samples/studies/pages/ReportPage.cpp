#include "ReportPage.h"

#include "ChartWidget.h"
#include "Errors.h"
#include "Files.h"
#include "QtText.h"
#include "StudyContexts.h"
#include "corvane/author/Host.h"
#include "corvane/author/Jobs.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>

namespace studies {

using namespace corvane;

namespace {

constexpr QSize pictureSize(620, 420);

// Pictures are resources of the document, under the names that the report gives them.
void Fill(QTextDocument& document, const DrawnReport& drawn) {
    for (std::size_t i = 0; i < drawn.pictures.size(); ++i)
        document.addResource(QTextDocument::ImageResource, QUrl(Text(drawn.report.pictures[i].name)),
                             drawn.pictures[i]);
    document.setHtml(Text(drawn.report.html));
}

DrawnReport Drawn(StudyReport report, const JobProgress* progress) {
    DrawnReport drawn{std::move(report), {}};
    for (const StudyReport::Picture& picture : drawn.report.pictures) {
        if (progress)
            progress->StopIfCancelled();
        drawn.pictures.push_back(ChartPicture(picture.scene, pictureSize));
    }
    return drawn;
}

bool IsOnOnePage(const QTextDocument& document, const QTextBlock& first, const QTextBlock& last) {
    const auto page = [&](qreal y) { return static_cast<int>(y / document.pageSize().height()); };
    const auto* layout = document.documentLayout();
    // A line that doesn't fit stands on the next page, though its block begins on this one.
    return page(layout->blockBoundingRect(first).top()) == page(layout->blockBoundingRect(last).bottom() - 1);
}

void BeginPage(QTextDocument& document, const QTextBlock& block, bool begins) {
    QTextBlockFormat format = block.blockFormat();
    format.setPageBreakPolicy(begins ? QTextFormat::PageBreak_AlwaysBefore : QTextFormat::PageBreak_Auto);
    QTextCursor(block).setBlockFormat(format);
    document.markContentsDirty(0, document.characterCount()); // pages behind it would stay as they were
}

// What stands below a heading goes to the next page as a whole. What is longer than a page is divided, but not just
// behind its heading.
void KeepTogether(QTextDocument& document) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0)
            continue;
        QTextBlock last = block;
        while (last.next().isValid() && last.next().blockFormat().headingLevel() == 0)
            last = last.next();
        if (last == block || IsOnOnePage(document, block, last))
            continue;
        const bool isCut = !IsOnOnePage(document, block, block.next());
        BeginPage(document, block, true);
        if (!isCut && !IsOnOnePage(document, block, last))
            BeginPage(document, block, false);
    }
}

void SavePdf(const DrawnReport& drawn, const QString& path) {
    constexpr int resolution = 144; // dots an inch of text and pictures alike
    QPdfWriter writer(path);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(18, 18, 18, 18), QPageLayout::Millimeter);
    writer.setResolution(resolution);
    writer.setTitle(Text(drawn.report.title));
    QTextDocument document;
    document.documentLayout()->setPaintDevice(&writer);
    Fill(document, drawn);
    document.setPageSize(writer.pageLayout().paintRectPixels(resolution).size());
    KeepTogether(document);
    document.print(&writer);
}

// Pictures stand in the file itself, so that it can be handed on alone.
QByteArray Html(const DrawnReport& drawn) {
    QString html = Text(drawn.report.html);
    for (std::size_t i = 0; i < drawn.pictures.size(); ++i) {
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        drawn.pictures[i].save(&buffer, "PNG");
        html.replace("src=\"" + Text(drawn.report.pictures[i].name) + "\"",
                     "src=\"data:image/png;base64," + QString::fromLatin1(png.toBase64()) + "\"");
    }
    return html.toUtf8();
}

} // namespace

void SaveReport(const DrawnReport& report, const QString& path) {
    if (path.endsWith(".pdf", Qt::CaseInsensitive)) {
        QSaveFile probe(path); // the writer itself doesn't say why it couldn't
        if (!probe.open(QIODevice::WriteOnly))
            FailWith("The file “" + Utf8(path) + "” can't be written: " + Utf8(probe.errorString()) + ".");
        probe.cancelWriting();
        SavePdf(report, path);
        return;
    }
    QSaveFile file(path);
    const QByteArray html = Html(report);
    if (!file.open(QIODevice::WriteOnly) || file.write(html) != html.size() || !file.commit())
        FailWith("The file “" + Utf8(path) + "” can't be written: " + Utf8(file.errorString()) + ".");
}

void ReportPage::OnInitialize() {
    Keep(About()->Space()->Changed.Subscribe([this](const std::string&) {
        if (About()->Exists())
            Write();
    }));
}

QWidget* ReportPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    m_view = new QTextBrowser;
    m_view->setAccessibleName("Report");
    m_view->setOpenLinks(false);
    // As on paper, whatever the theme.
    QPalette paper = m_view->palette();
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Text, QColor(0x20, 0x24, 0x28));
    m_view->setPalette(paper);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(m_view);
    Write();
    return page;
}

QWidget* ReportPage::FirstFocus() {
    return m_view;
}

void ReportPage::Write() {
    if (!m_view)
        return;
    if (m_job)
        m_job->Cancel();
    m_job = nullptr;
    Store& store = About()->Space()->GetStore();
    const ReportSubject subject = SubjectOf(store, About()->Number());
    const int number = ++m_number;
    if (IsSmall(subject.values, 1)) {
        Show(Drawn(ReportOn(subject, ReadPreferences(),
                            [&store](Id dataSetId, JobProgress*) { return store.ReadDataSet(dataSetId); }),
                   nullptr));
        return;
    }
    if (m_view->document()->isEmpty())
        m_view->setPlainText("The report is being written\u2026");
    m_job = StartJob(
        {.title = "Report on " + subject.study.name, .owner = Ref<Object>(this)},
        [subject, preferences = ReadPreferences()](JobProgress& progress) {
            const auto steps = progress.Split({9, 1});
            return Drawn(
                ReportOn(
                    subject, preferences,
                    [&subject](Id dataSetId, JobProgress* own) { return ReadDataTable(subject.path, dataSetId, *own); },
                    &steps[0].get()),
                &steps[1].get());
        },
        [this, number](JobResult<DrawnReport>& result) {
            if (number != m_number)
                return;
            m_job = nullptr;
            Show(std::move(result.Value()));
        });
}

void ReportPage::Show(DrawnReport report) {
    m_report = std::move(report);
    const int scrolled = m_view->verticalScrollBar()->value();
    m_view->document()->clear();
    Fill(*m_view->document(), m_report);
    m_view->moveCursor(QTextCursor::Start); // or the keyboard's focus would show the end
    m_view->verticalScrollBar()->setValue(scrolled);
}

void ReportPage::OnExport() {
    if (m_report.report.html.empty())
        FailWith("There is nothing to export yet. The report is being written.");
    const std::string path = AskForSavePath("Export", "HTML page (*.html)|*.html|PDF document (*.pdf)|*.pdf",
                                            m_report.report.title + ".html");
    if (path.empty())
        return;
    SaveReport(m_report, Text(path));
    SetStatus("Exported to " + path);
}

void ReportPage::OnCopy() {
    if (m_view)
        m_view->copy();
}

} // namespace studies
