// Prints what stands on screen, after a preview; into a PDF file where there is no printer.
#pragma once

#include "corvane/platform/IScreenPrinter.h"

#include <QCoreApplication>
#include <QString>
#include <functional>

class QPrinter;
class QWidget;

namespace corvane::desktop {

class ScreenPrinter final : public IScreenPrinter {
    Q_DECLARE_TR_FUNCTIONS(ScreenPrinter)
public:
    struct Window {
        QWidget* pWidget = nullptr; // a null pointer when there is none
        QString sTitle;
    };
    struct Host {
        std::function<QWidget*()> fnMainWindow;
        std::function<Window(Long)> fnWindowOf; // by a form's handle
        // The file for a print that nobody watches; empty for none. Without it the preview asks.
        std::function<QString()> fnFile;
        bool bWithDialogs = true;
    };

    explicit ScreenPrinter(Host oHost) : m_oHost(std::move(oHost)) {}

    // Fails with 91 when the window isn't there, with 75 when the file can't be written.
    void PrintWindow(Long lMode, Long lHwnd) override;

private:
    void Print(QPrinter& oPrinter, const QString& sTitle, const std::function<void(QPrinter*)>& fnPaint);

    Host m_oHost;
};

// Draws a widget onto one page, as large as fits, below a line with the title and the time.
void PaintWidget(QPrinter& oPrinter, QWidget& oWidget, const QString& sTitle);

} // namespace corvane::desktop
