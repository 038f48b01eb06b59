// Prints what is on screen, after a preview; into a PDF file where there is no printer.
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
        QWidget* widget = nullptr; // a null pointer when there is none
        QString title;
    };
    struct Host {
        std::function<QWidget*()> mainWindow;
        std::function<Window(Long)> windowOf; // by a form's handle
        // Asks for the file to print to, where there is no printer or no dialog; empty for none.
        std::function<QString()> file;
        bool withDialogs = true;
        std::function<bool()> hasPrinters = {}; // without it the system's are asked for
    };

    explicit ScreenPrinter(Host host) : m_host(std::move(host)) {}

    // Fails with 91 when the window isn't there, with 75 when the file can't be written.
    void PrintWindow(Long mode, Long hwnd) override;

private:
    void Print(QPrinter& printer, const QString& title, const std::function<void(QPrinter*)>& paint);
    bool PrintToFile(QPrinter& printer, const std::function<void(QPrinter*)>& paint); // false without a file

    Host m_host;
};

// Draws a widget onto one page, as large as fits, below a line with the title and the time.
void PaintWidget(QPrinter& printer, QWidget& widget, const QString& title);

} // namespace corvane::desktop
