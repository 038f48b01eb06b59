#include "desktop/service/ScreenPrinter.h"

#include "desktop/printing/Printout.h"
#include "desktop/printing/WidgetContent.h"
#include "desktop/service/PrintProgress.h"

#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QScreen>
#include <QWidget>
#include <exception>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr Long desktop = 0;
constexpr int dotsPerInch = 300; // a widget is printed as one picture, which with more becomes a file of megabytes
constexpr Long childForm = 2;
constexpr qsizetype longestFileName = 80; // characters, of a file

// By which the user finds it again.
QString FileNameOf(QString title) {
    static const QRegularExpression forbidden("[/\\\\:*?\"<>|\\s]+"); // on some file system
    return title.replace(forbidden, " ").left(longestFileName).trimmed() + ".pdf";
}

} // namespace

void ScreenPrinter::PrintWindow(Long mode, Long hwnd) {
    if (mode == desktop) {
        const QPixmap screen = QGuiApplication::primaryScreen()->grabWindow(0);
        if (screen.isNull())
            Fail(FailureNumber::ObjectNotSet, tr("The screen can't be captured here").toStdString());
        Print(tr("Desktop"), [&](IPrintout& printout) {
            printout.AddPicture(screen.size(), [&](QPainter& painter, const QRectF& target) {
                painter.drawPixmap(target, screen, screen.rect());
            });
        });
        return;
    }
    if (mode == childForm) {
        const Window window = m_host.windowOf(hwnd);
        if (!window.print)
            Fail(FailureNumber::ObjectNotSet, tr("There is no window to print").toStdString());
        Print(window.title, window.print);
        return;
    }
    QWidget* main = m_host.mainWindow();
    if (!main)
        Fail(FailureNumber::ObjectNotSet, tr("There is no window to print").toStdString());
    Print(main->windowTitle(), [&](IPrintout& printout) { AddWidgetPicture(*main, main->rect(), printout); });
}

void ScreenPrinter::Print(const QString& title, const Content& content) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setResolution(dotsPerInch);
    printer.setDocName(title);
    {
        Printout printout;
        content(printout);
        printout.ChooseOrientation(printer);
    }
    if (!m_host.withDialogs) {
        (void)PrintToFile(printer, title, content);
        return;
    }
    const bool hasPrinters =
        m_host.hasPrinters ? m_host.hasPrinters() : !QPrinterInfo::availablePrinterNames().isEmpty();
    if (!hasPrinters)
        printer.setOutputFormat(QPrinter::PdfFormat);
    ShowPreview(printer, title, content, hasPrinters);
}

void ScreenPrinter::ShowPreview(QPrinter& printer, const QString& title, const Content& content, bool hasPrinters) {
    QPrintPreviewDialog preview(&printer, m_host.mainWindow());
    preview.setWindowTitle(tr("Print Preview: %1").arg(title));
    preview.resize(QSize(900, 760).boundedTo(preview.screen()->availableSize() * 9 / 10)); // its own is a strip
    // What fails while the toolkit draws is kept until it has drawn.
    std::exception_ptr failure;
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter* target) {
        try {
            Paint(*target, title, content);
        } catch (...) {
            failure = std::current_exception();
            preview.reject();
        }
    });
    for (QAction* action : preview.findChildren<QAction*>()) {
        if (action->text() != QCoreApplication::translate("QPrintPreviewDialog", "Print"))
            continue;
        action->setShortcut(QKeySequence::Print); // Enter zooms
        // The preview's own question for a file doesn't ask before it replaces one.
        if (!hasPrinters) {
            action->disconnect(&preview);
            // Queued: a failure that unwinds the frames of the action's own trigger leaves their guards behind.
            const auto print = [&] {
                if (PrintToFile(printer, title, content))
                    preview.accept();
            };
            QObject::connect(action, &QAction::triggered, &preview, print, Qt::QueuedConnection);
        }
    }
    preview.exec();
    if (failure)
        std::rethrow_exception(failure);
}

void ScreenPrinter::Paint(QPrinter& printer, const QString& title, const Content& content) {
    Printout printout;
    content(printout);
    if (!m_host.withDialogs) {
        printout.Paint(printer, title);
        return;
    }
    QWidget* modal = QApplication::activeModalWidget();
    PrintProgress progress(title, modal ? modal : m_host.mainWindow());
    printout.Paint(printer, title, [&](std::size_t sheet, std::size_t all) { return progress.Show(sheet, all); });
}

bool ScreenPrinter::PrintToFile(QPrinter& printer, const QString& title, const Content& content) {
    const QString file = m_host.file ? m_host.file(FileNameOf(title)) : QString();
    if (file.isEmpty())
        return false;
    // A file that is there already would be taken for the new one.
    const bool isWritable = QFile(file).open(QIODevice::Append);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    if (isWritable)
        Paint(printer, title, content);
    if (!isWritable || printer.printerState() == QPrinter::Error)
        Fail(FailureNumber::FileAccess, tr("“%1” can't be written").arg(file).toStdString());
    return true;
}

} // namespace corvane::desktop
