#include "desktop/printing/Printout.h"

#include "desktop/printing/Sheets.h"
#include "desktop/printing/TablePart.h"
#include "desktop/printing/WidgetContent.h"

#include <QAbstractTextDocumentLayout>
#include <QDateTime>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLocale>
#include <QPaintEngine>
#include <QPrinter>
#include <QTextBlock>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

namespace corvane::desktop {

namespace {

constexpr double textPoints = 10;
constexpr double headPoints = 9;
constexpr std::size_t previewedSheets = 100; // each is kept as a drawing, which takes time and memory

QFont FontOf(double points) {
    QFont font = QGuiApplication::font();
    font.setPointSizeF(points);
    return font;
}

Paper PaperOf(QPrinter& printer) {
    const QFont font(FontOf(textPoints), &printer);
    return {font, &printer, QFontMetricsF(font, &printer).lineSpacing(), printer.logicalDpiX() / 96.0};
}

double HeadHeight(QPrinter& printer) {
    return 2.5 * QFontMetricsF(FontOf(headPoints), &printer).lineSpacing();
}

class PicturePart final : public PrintoutPart {
public:
    PicturePart(const QSizeF& size, std::function<void(QPainter&, const QRectF&)> draw)
        : m_size(size.expandedTo({1, 1})), m_draw(std::move(draw)) {}

    void LayOut(Sheets& sheets, const Paper& paper) const override {
        // Not larger than twice what it is on screen: a line of controls isn't a poster.
        QSizeF size = m_size * 2 * paper.scale;
        if (size.width() > sheets.Width() || size.height() > sheets.Height())
            size = m_size.scaled(sheets.Width(), sheets.Height(), Qt::KeepAspectRatio);
        // Rather somewhat smaller than behind a sheet that is half empty.
        if (size.height() > sheets.Left() && size.height() * 0.6 < sheets.Left())
            size = size.scaled(sheets.Width(), sheets.Left(), Qt::KeepAspectRatio);
        sheets.Add(size.height(), [draw = m_draw, size](QPainter& painter) { draw(painter, QRectF({}, size)); });
        sheets.Skip(paper.line / 2);
    }
    [[nodiscard]] bool IsWide(const Paper& paper, double width) const override {
        return m_size.width() > 1.2 * m_size.height() && m_size.width() * paper.scale > width * 0.6;
    }

private:
    QSizeF m_size;
    std::function<void(QPainter&, const QRectF&)> m_draw;
};

class TextPart final : public PrintoutPart {
public:
    // Space is what is left free behind it, in lines. A heading stays with what follows.
    TextPart(std::unique_ptr<QTextDocument> document, double space, bool isHeading = false)
        : m_document(std::move(document)), m_space(space), m_isHeading(isHeading) {}

    void LayOut(Sheets& sheets, const Paper& paper) const override {
        m_document->documentLayout()->setPaintDevice(paper.device);
        m_document->setPageSize({sheets.Width(), -1}); // without an end
        const double height = m_document->size().height();
        const double kept = m_isHeading ? 4 * paper.line : 0;
        if (sheets.Left() < std::min(height + kept, 2 * paper.line + kept))
            sheets.StartSheet();
        for (double top = 0; top < height;) {
            double bottom = height;
            if (height - top > sheets.Left()) {
                bottom = CutAbove(top + sheets.Left());
                if (bottom <= top && !sheets.IsSheetEmpty()) {
                    sheets.StartSheet();
                    continue;
                }
                if (bottom <= top) // higher than a sheet
                    bottom = top + sheets.Left();
            }
            sheets.Add(bottom - top, [document = m_document.get(), top, bottom](QPainter& painter) {
                painter.translate(0, -top);
                QAbstractTextDocumentLayout::PaintContext context;
                context.palette.setColor(QPalette::Text, Qt::black);
                const QRectF slice(0, top, document->size().width(), bottom - top);
                painter.setClipRect(slice);
                context.clip = slice.adjusted(0, 0.5, 0, -0.5); // the lines beside it would be drawn for nothing
                document->documentLayout()->draw(&painter, context);
            });
            top = bottom;
            if (top < height)
                sheets.StartSheet();
        }
        sheets.Skip(m_space * paper.line);
    }

private:
    // The lowest place above that one where no line is cut.
    [[nodiscard]] double CutAbove(double place) const {
        double cut = place;
        for (bool isCut = true; isCut;) {
            isCut = false;
            for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
                const QRectF whole = m_document->documentLayout()->blockBoundingRect(block);
                if (whole.bottom() <= cut || whole.top() >= cut)
                    continue;
                for (int i = 0; i < block.layout()->lineCount(); ++i) {
                    const QRectF line = block.layout()->lineAt(i).rect().translated(whole.topLeft());
                    if (line.top() < cut - 0.5 && line.bottom() > cut + 0.5) {
                        cut = line.top();
                        isCut = true;
                    }
                }
            }
        }
        return cut;
    }

    std::unique_ptr<QTextDocument> m_document;
    double m_space;
    bool m_isHeading;
};

class SheetBreak final : public PrintoutPart {
public:
    void LayOut(Sheets& sheets, const Paper& /*paper*/) const override { sheets.StartSheet(); }
};

std::unique_ptr<QTextDocument> NewDocument(const QString& text, double points, bool isBold) {
    auto document = std::make_unique<QTextDocument>();
    QFont font = FontOf(points);
    font.setBold(isBold);
    document->setDefaultFont(font);
    document->setDocumentMargin(0);
    document->setPlainText(text);
    return document;
}

void PaintHead(QPainter& painter, const QRectF& page, const QString& title) {
    painter.setFont(FontOf(headPoints));
    painter.setPen(Qt::black);
    const QFontMetricsF metrics = painter.fontMetrics();
    const QString time = QLocale().toString(QDateTime::currentDateTime(), QLocale::ShortFormat);
    const double free = page.width() - metrics.horizontalAdvance(time) - 2 * metrics.averageCharWidth();
    painter.drawText(page, Qt::AlignRight | Qt::AlignTop, time);
    painter.drawText(page, Qt::AlignLeft | Qt::AlignTop, metrics.elidedText(title, Qt::ElideMiddle, free));
}

} // namespace

Printout::Printout() = default;
Printout::~Printout() = default;

void Printout::AddHeading(const QString& text) {
    if (!text.isEmpty())
        Add(std::make_unique<TextPart>(NewDocument(text, 1.2 * textPoints, true), 0.3, true));
}

void Printout::AddText(const QString& text) {
    if (!text.isEmpty())
        Add(std::make_unique<TextPart>(NewDocument(text, textPoints, false), 0.5));
}

void Printout::AddDocument(const QTextDocument& document) {
    if (document.isEmpty())
        return;
    std::unique_ptr<QTextDocument> copy(document.clone());
    copy->setDefaultFont(FontOf(textPoints));
    copy->setDocumentMargin(0);
    Add(std::make_unique<TextPart>(std::move(copy), 0.5));
}

void Printout::AddField(const QString& label, const QString& value) {
    auto document = NewDocument(label.isEmpty() || label.endsWith(':') ? label : label + ':', textPoints, false);
    QTextCursor cursor(document.get());
    cursor.movePosition(QTextCursor::End);
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    cursor.insertText(value.contains('\n') ? "\n" + value : " " + value, format);
    Add(std::make_unique<TextPart>(std::move(document), 0.2));
}

void Printout::AddTable(const QAbstractItemModel& model) {
    Add(std::make_unique<TablePart>(model));
}

void Printout::AddPicture(const QSizeF& size, const std::function<void(QPainter&, const QRectF&)>& draw) {
    Add(std::make_unique<PicturePart>(size, draw));
}

void Printout::AddWidget(QWidget& widget) {
    AddContent(widget, *this);
}

void Printout::StartSheet() {
    Add(std::make_unique<SheetBreak>());
}

void Printout::ChooseOrientation(QPrinter& printer) const {
    printer.setPageOrientation(QPageLayout::Portrait);
    const Paper paper = PaperOf(printer);
    const double width = printer.pageRect(QPrinter::DevicePixel).width();
    if (std::any_of(m_parts.begin(), m_parts.end(), [&](const auto& part) { return part->IsWide(paper, width); }))
        printer.setPageOrientation(QPageLayout::Landscape);
}

// Whether all of it has been laid out.
bool Printout::LayOut(Sheets& sheets, const Paper& paper) const {
    for (const auto& part : m_parts) {
        if (sheets.IsFull())
            return false;
        part->LayOut(sheets, paper);
    }
    return !sheets.IsFull();
}

std::size_t Printout::Paint(QPrinter& printer, const QString& title, const Watch& watch) const {
    QPainter painter;
    if (!painter.begin(&printer))
        return 0; // the printer knows why
    const QRectF page = painter.viewport();
    const double head = HeadHeight(printer);
    const QRectF content = page.adjusted(0, head, 0, -head);
    const bool isPreview = printer.paintEngine()->type() == QPaintEngine::Picture;
    Sheets sheets(content.width(), content.height(),
                  isPreview ? previewedSheets : std::numeric_limits<std::size_t>::max(),
                  [&](std::size_t sheet) { return !watch || watch(sheet, 0); });
    const Paper paper = PaperOf(printer);
    const bool isWhole = LayOut(sheets, paper);
    if (sheets.IsStopped()) {
        printer.abort();
        return 0;
    }
    const auto count = static_cast<int>(sheets.Count());
    const int first = isPreview || printer.fromPage() == 0 ? 1 : printer.fromPage();
    int last = isPreview || printer.toPage() == 0 ? count : std::min(printer.toPage(), count);
    if (isPreview)
        last = std::min(last, static_cast<int>(previewedSheets));
    for (int sheet = first; sheet <= last; ++sheet) {
        if (watch && !watch(static_cast<std::size_t>(sheet - first) + 1, static_cast<std::size_t>(last - first) + 1)) {
            printer.abort();
            return 0;
        }
        if (sheet > first)
            printer.newPage();
        PaintHead(painter, page, title);
        painter.drawText(page, Qt::AlignRight | Qt::AlignBottom,
                         isWhole ? tr("Page %1 of %2").arg(sheet).arg(count) : tr("Page %1").arg(sheet));
        painter.drawText(page, Qt::AlignLeft | Qt::AlignBottom, QGuiApplication::applicationDisplayName());
        painter.save();
        painter.translate(content.topLeft());
        painter.setFont(paper.font);
        sheets.Paint(painter, static_cast<std::size_t>(sheet - 1));
        painter.restore();
    }
    return sheets.Count();
}

} // namespace corvane::desktop
