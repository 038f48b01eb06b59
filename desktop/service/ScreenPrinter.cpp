#include "desktop/service/ScreenPrinter.h"

#include <QAction>
#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QPainter>
#include <QPixmap>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr Long desktop = 0;
constexpr int dotsPerInch = 300; // a window is printed as one picture, which with more becomes a file of megabytes
constexpr Long childForm = 2;

// Prints the heading and returns what is left of the page, in the printer's dots.
QRectF PaintHeading(QPrinter& printer, QPainter& painter, const QString& title) {
    const QRectF page = painter.viewport();
    const double line = printer.resolution() / 5.0;
    QFont font = painter.font();
    font.setPointSizeF(9);
    painter.setFont(font);
    const QString time = QLocale().toString(QDateTime::currentDateTime(), QLocale::ShortFormat);
    const QRectF heading(page.left(), page.top(), page.width(), line);
    const double timeValue = painter.fontMetrics().horizontalAdvance(time) + line / 2;
    painter.drawText(heading, Qt::AlignRight | Qt::AlignTop, time);
    painter.drawText(
        heading, Qt::AlignLeft | Qt::AlignTop,
        painter.fontMetrics().elidedText(title, Qt::ElideMiddle, static_cast<int>(page.width() - timeValue)));
    return page.adjusted(0, line * 1.5, 0, 0);
}

void PaintFitted(QPrinter& printer, const QString& title, const QSizeF& size,
                 const std::function<void(QPainter&)>& draw) {
    QPainter painter(&printer);
    const QRectF free = PaintHeading(printer, painter, title);
    const double scale = std::min(free.width() / size.width(), free.height() / size.height());
    painter.translate(free.left() + (free.width() - size.width() * scale) / 2, free.top());
    painter.scale(scale, scale);
    draw(painter);
}

} // namespace

void PaintWidget(QPrinter& printer, QWidget& widget, const QString& title) {
    PaintFitted(printer, title, widget.size(), [&](QPainter& painter) {
        widget.render(&painter, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    });
}

void ScreenPrinter::PrintWindow(Long mode, Long hwnd) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setResolution(dotsPerInch);
    printer.setPageOrientation(QPageLayout::Landscape);
    if (mode == desktop) {
        const QPixmap screen = QGuiApplication::primaryScreen()->grabWindow(0);
        if (screen.isNull())
            Fail(FailureNumber::ObjectNotSet, tr("The screen can't be captured here").toStdString());
        const QString title = tr("Desktop");
        Print(printer, title, [&](QPrinter* target) {
            PaintFitted(*target, title, screen.size(), [&](QPainter& painter) { painter.drawPixmap(0, 0, screen); });
        });
        return;
    }
    QWidget* main = m_host.mainWindow();
    const Window window =
        mode == childForm ? m_host.windowOf(hwnd) : Window{main, main ? main->windowTitle() : QString()};
    if (!window.widget)
        Fail(FailureNumber::ObjectNotSet, tr("There is no window to print").toStdString());
    Print(printer, window.title, [&](QPrinter* target) { PaintWidget(*target, *window.widget, window.title); });
}

void ScreenPrinter::Print(QPrinter& printer, const QString& title, const std::function<void(QPrinter*)>& paint) {
    printer.setDocName(title);
    if (m_host.withDialogs) {
        const bool hasPrinters =
            m_host.hasPrinters ? m_host.hasPrinters() : !QPrinterInfo::availablePrinterNames().isEmpty();
        if (!hasPrinters)
            printer.setOutputFormat(QPrinter::PdfFormat);
        QPrintPreviewDialog preview(&printer, m_host.mainWindow());
        preview.setWindowTitle(tr("Print Preview: %1").arg(title));
        preview.resize(QSize(900, 760).boundedTo(preview.screen()->availableSize() * 9 / 10)); // its own is a strip
        QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, paint);
        // The preview's own question for a file doesn't ask before it replaces one.
        for (QAction* action : preview.findChildren<QAction*>())
            if (!hasPrinters && action->text() == QCoreApplication::translate("QPrintPreviewDialog", "Print")) {
                action->disconnect(&preview);
                // Queued: a failure that unwinds the frames of the action's own trigger leaves their guards behind.
                const auto print = [&] {
                    if (PrintToFile(printer, paint))
                        preview.accept();
                };
                QObject::connect(action, &QAction::triggered, &preview, print, Qt::QueuedConnection);
            }
        preview.exec();
        return;
    }
    (void)PrintToFile(printer, paint);
}

bool ScreenPrinter::PrintToFile(QPrinter& printer, const std::function<void(QPrinter*)>& paint) {
    const QString file = m_host.file ? m_host.file() : QString();
    if (file.isEmpty())
        return false;
    // A file that is there already would be taken for the new one.
    const bool isWritable = QFile(file).open(QIODevice::Append);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    if (isWritable)
        paint(&printer);
    if (!isWritable || printer.printerState() == QPrinter::Error)
        Fail(FailureNumber::FileAccess, tr("“%1” can't be written").arg(file).toStdString());
    return true;
}

} // namespace corvane::desktop
