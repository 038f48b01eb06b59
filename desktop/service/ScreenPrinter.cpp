#include "desktop/service/ScreenPrinter.h"

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

constexpr Long lDesktop = 0;
constexpr int nDotsPerInch = 300; // a window is printed as one picture, which with more becomes a file of megabytes
constexpr Long lChildForm = 2;

// Prints the heading and returns what is left of the page, in the printer's dots.
QRectF PaintHeading(QPrinter& oPrinter, QPainter& oPainter, const QString& sTitle) {
    const QRectF oPage = oPainter.viewport();
    const double dblLine = oPrinter.resolution() / 5.0;
    QFont oFont = oPainter.font();
    oFont.setPointSizeF(9);
    oPainter.setFont(oFont);
    const QString sTime = QLocale().toString(QDateTime::currentDateTime(), QLocale::ShortFormat);
    const QRectF oHeading(oPage.left(), oPage.top(), oPage.width(), dblLine);
    const double dblTime = oPainter.fontMetrics().horizontalAdvance(sTime) + dblLine / 2;
    oPainter.drawText(oHeading, Qt::AlignRight | Qt::AlignTop, sTime);
    oPainter.drawText(
        oHeading, Qt::AlignLeft | Qt::AlignTop,
        oPainter.fontMetrics().elidedText(sTitle, Qt::ElideMiddle, static_cast<int>(oPage.width() - dblTime)));
    return oPage.adjusted(0, dblLine * 1.5, 0, 0);
}

void PaintFitted(QPrinter& oPrinter, const QString& sTitle, const QSizeF& oSize,
                 const std::function<void(QPainter&)>& fnDraw) {
    QPainter oPainter(&oPrinter);
    const QRectF oFree = PaintHeading(oPrinter, oPainter, sTitle);
    const double dblScale = std::min(oFree.width() / oSize.width(), oFree.height() / oSize.height());
    oPainter.translate(oFree.left() + (oFree.width() - oSize.width() * dblScale) / 2, oFree.top());
    oPainter.scale(dblScale, dblScale);
    fnDraw(oPainter);
}

} // namespace

void PaintWidget(QPrinter& oPrinter, QWidget& oWidget, const QString& sTitle) {
    PaintFitted(oPrinter, sTitle, oWidget.size(), [&](QPainter& oPainter) {
        oWidget.render(&oPainter, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    });
}

void ScreenPrinter::PrintWindow(Long lMode, Long lHwnd) {
    QPrinter oPrinter(QPrinter::HighResolution);
    oPrinter.setResolution(nDotsPerInch);
    oPrinter.setPageOrientation(QPageLayout::Landscape);
    if (lMode == lDesktop) {
        const QPixmap oScreen = QGuiApplication::primaryScreen()->grabWindow(0);
        if (oScreen.isNull())
            Fail(FailureNumber::ObjectNotSet, tr("The screen can't be captured here").toStdString());
        const QString sTitle = tr("Desktop");
        Print(oPrinter, sTitle, [&](QPrinter* pPrinter) {
            PaintFitted(*pPrinter, sTitle, oScreen.size(),
                        [&](QPainter& oPainter) { oPainter.drawPixmap(0, 0, oScreen); });
        });
        return;
    }
    QWidget* pMain = m_oHost.fnMainWindow();
    const Window oWindow =
        lMode == lChildForm ? m_oHost.fnWindowOf(lHwnd) : Window{pMain, pMain ? pMain->windowTitle() : QString()};
    if (!oWindow.pWidget)
        Fail(FailureNumber::ObjectNotSet, tr("There is no window to print").toStdString());
    Print(oPrinter, oWindow.sTitle,
          [&](QPrinter* pPrinter) { PaintWidget(*pPrinter, *oWindow.pWidget, oWindow.sTitle); });
}

void ScreenPrinter::Print(QPrinter& oPrinter, const QString& sTitle, const std::function<void(QPrinter*)>& fnPaint) {
    oPrinter.setDocName(sTitle);
    if (m_oHost.bWithDialogs) {
        if (QPrinterInfo::availablePrinterNames().isEmpty())
            oPrinter.setOutputFormat(QPrinter::PdfFormat); // the preview then asks for a file
        QPrintPreviewDialog oPreview(&oPrinter, m_oHost.fnMainWindow());
        oPreview.setWindowTitle(tr("Print Preview: %1").arg(sTitle));
        oPreview.resize(QSize(900, 760).boundedTo(oPreview.screen()->availableSize() * 9 / 10)); // its own is a strip
        QObject::connect(&oPreview, &QPrintPreviewDialog::paintRequested, &oPreview, fnPaint);
        oPreview.exec();
        return;
    }
    const QString sFile = m_oHost.fnFile ? m_oHost.fnFile() : QString();
    if (sFile.isEmpty())
        return;
    oPrinter.setOutputFormat(QPrinter::PdfFormat);
    oPrinter.setOutputFileName(sFile);
    fnPaint(&oPrinter);
    if (oPrinter.printerState() == QPrinter::Error || !QFile::exists(sFile))
        Fail(FailureNumber::FileAccess, tr("“%1” can't be written").arg(sFile).toStdString());
}

} // namespace corvane::desktop
