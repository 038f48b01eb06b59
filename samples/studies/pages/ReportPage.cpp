#include "ReportPage.h"

#include "ChartWidget.h"
#include "Errors.h"
#include "Files.h"
#include "QtText.h"
#include "StudyContexts.h"
#include "corvane/author/Host.h"

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
void Fill(QTextDocument& document, const StudyReport& report) {
    for (const StudyReport::Picture& picture : report.pictures)
        document.addResource(QTextDocument::ImageResource, QUrl(Text(picture.name)),
                             ChartPicture(picture.scene, pictureSize));
    document.setHtml(Text(report.html));
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

void SavePdf(const StudyReport& report, const QString& path) {
    constexpr int resolution = 144; // dots an inch of text and pictures alike
    QPdfWriter writer(path);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(18, 18, 18, 18), QPageLayout::Millimeter);
    writer.setResolution(resolution);
    writer.setTitle(Text(report.title));
    QTextDocument document;
    document.documentLayout()->setPaintDevice(&writer);
    Fill(document, report);
    document.setPageSize(writer.pageLayout().paintRectPixels(resolution).size());
    KeepTogether(document);
    document.print(&writer);
}

// Pictures stand in the file itself, so that it can be handed on alone.
QByteArray Html(const StudyReport& report) {
    QString html = Text(report.html);
    for (const StudyReport::Picture& picture : report.pictures) {
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        ChartPicture(picture.scene, pictureSize).save(&buffer, "PNG");
        html.replace("src=\"" + Text(picture.name) + "\"",
                     "src=\"data:image/png;base64," + QString::fromLatin1(png.toBase64()) + "\"");
    }
    return html.toUtf8();
}

} // namespace

void SaveReport(const StudyReport& report, const QString& path) {
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
    m_report = ReportOn(About()->Space()->GetStore(), About()->Number(), ReadPreferences());
    const int scrolled = m_view->verticalScrollBar()->value();
    m_view->document()->clear();
    Fill(*m_view->document(), m_report);
    m_view->moveCursor(QTextCursor::Start); // or the keyboard's focus would show the end
    m_view->verticalScrollBar()->setValue(scrolled);
}

void ReportPage::OnExport() {
    const std::string path =
        AskForSavePath("Export", "HTML page (*.html)|*.html|PDF document (*.pdf)|*.pdf", m_report.title + ".html");
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
