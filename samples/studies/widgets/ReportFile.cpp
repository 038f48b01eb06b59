#include "ReportFile.h"

#include "ChartWidget.h"
#include "Errors.h"
#include "QtText.h"
#include "corvane/author/Jobs.h"
#include "desktop/WholeFile.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFontMetrics>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

namespace studies {

using namespace corvane;

namespace {

constexpr QSize pictureSize(620, 420);

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

void DrawPage(const QTextDocument& document, int page, QPainter& painter) {
    const QSizeF size = document.pageSize();
    const QRectF part(QPointF(0, page * size.height()), size);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = part;
    context.palette.setColor(QPalette::Text, Qt::black); // on paper, whatever the theme
    painter.save();
    painter.translate(0, -part.top());
    painter.setClipRect(part);
    document.documentLayout()->draw(&painter, context);
    painter.restore();
}

std::string Pdf(const DrawnReport& drawn) {
    constexpr int resolution = 144; // dots an inch of text and pictures alike
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(18, 18, 18, 18), QPageLayout::Millimeter);
    writer.setResolution(resolution);
    writer.setTitle(Text(drawn.report.title));
    QTextDocument document;
    document.documentLayout()->setPaintDevice(&writer);
    FillDocument(document, drawn);
    const QRect sheet(QPoint(), writer.pageLayout().paintRectPixels(resolution).size());
    const int footer = 2 * QFontMetrics(document.defaultFont(), &writer).height();
    document.setPageSize(sheet.size().shrunkBy({0, 0, 0, footer}));
    KeepTogether(document);
    QPainter painter(&writer);
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0)
            writer.newPage();
        DrawPage(document, page, painter);
        painter.setPen(Qt::darkGray);
        painter.drawText(sheet, Qt::AlignBottom | Qt::AlignLeft, Text(drawn.report.title + ", " + drawn.report.date));
        painter.drawText(
            sheet, Qt::AlignBottom | Qt::AlignRight,
            Text(Translated("Page %1 of %2", {std::to_string(page + 1), std::to_string(document.pageCount())})));
    }
    painter.end();
    return bytes.toStdString();
}

// Pictures stand in the file itself, so that it can be handed on alone.
std::string Html(const DrawnReport& drawn) {
    QString html = Text(drawn.report.html);
    for (std::size_t i = 0; i < drawn.pictures.size(); ++i) {
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        drawn.pictures[i].save(&buffer, "PNG");
        html.replace("src=\"" + Text(drawn.report.pictures[i].name) + "\"",
                     "src=\"data:image/png;base64," + QString::fromLatin1(png.toBase64()) + "\"");
    }
    return Utf8(html);
}

} // namespace

// Pictures are resources of the document, under the names that the report gives them.
void FillDocument(QTextDocument& document, const DrawnReport& drawn) {
    for (std::size_t i = 0; i < drawn.pictures.size(); ++i)
        document.addResource(QTextDocument::ImageResource, QUrl(Text(drawn.report.pictures[i].name)),
                             drawn.pictures[i]);
    document.setHtml(Text(drawn.report.html));
}

DrawnReport DrawReport(StudyReport report, const JobProgress& progress) {
    DrawnReport drawn{std::move(report), {}};
    for (const StudyReport::Picture& picture : drawn.report.pictures) {
        progress.StopIfCancelled();
        drawn.pictures.push_back(DrawingOf(picture.scene, pictureSize).Picture());
    }
    return drawn;
}

void SaveReport(const DrawnReport& report, const std::string& path) {
    corvane::desktop::WriteWholeFile(path,
                                     Text(path).endsWith(".pdf", Qt::CaseInsensitive) ? Pdf(report) : Html(report));
}

} // namespace studies
