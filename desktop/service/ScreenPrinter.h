// Prints a window's content or what is on screen, after a preview; into a PDF file where there is no printer.
#pragma once

#include "corvane/platform/IScreenPrinter.h"
#include "desktop/IPrintout.h"

#include <QCoreApplication>
#include <QString>
#include <functional>

class QPrinter;
class QWidget;

namespace corvane::desktop {

class ScreenPrinter final : public IScreenPrinter {
    Q_DECLARE_TR_FUNCTIONS(ScreenPrinter)
public:
    using Content = std::function<void(IPrintout&)>;
    struct Window {
        QString title;
        Content print; // adds what the window shows; none when there is no window
    };
    struct Host {
        std::function<QWidget*()> mainWindow;
        std::function<Window(Long)> windowOf; // by a form's handle
        // Asks for the file to print to, where there is no printer or no dialog, and proposes the name; empty for none.
        std::function<QString(const QString& name)> file;
        bool withDialogs = true;
        std::function<bool()> hasPrinters = {}; // without it the system's are asked for
    };

    explicit ScreenPrinter(Host host) : m_host(std::move(host)) {}

    // Fails with 91 when the window isn't there, with 75 when the file can't be written, and as a page that can't print
    // itself does.
    void PrintWindow(Long mode, Long hwnd) override;

private:
    void Print(const QString& title, const Content& content);
    void ShowPreview(QPrinter& printer, const QString& title, const Content& content, bool hasPrinters);
    void Paint(QPrinter& printer, const QString& title, const Content& content);
    bool PrintToFile(QPrinter& printer, const QString& title, const Content& content); // false without a file

    Host m_host;
};

} // namespace corvane::desktop
