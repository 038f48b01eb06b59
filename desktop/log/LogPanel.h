// The log in a window, and the report that is made of it.
#pragma once

#include "desktop/log/LogView.h"
#include "desktop/log/Report.h"

#include <QDialog>

class QPlainTextEdit;

namespace corvane::desktop {

class LogDialog final : public QDialog {
    Q_OBJECT
public:
    // Asks the user where to save; empty when they cancelled.
    using PathFunction = std::function<QString()>;

    LogDialog(const QString& logFile, ReportParts parts, PathFunction path, QWidget* parent);

    [[nodiscard]] LogView& View() { return *m_view; }
    void ShowReport();

private:
    LogView* m_view;
    ReportParts m_parts;
    PathFunction m_path;
};

// Shows the report before it leaves the program: what the user strikes out isn't saved.
class ReportDialog final : public QDialog {
    Q_OBJECT
public:
    ReportDialog(const QString& text, LogDialog::PathFunction path, QWidget* parent);

    [[nodiscard]] QPlainTextEdit& Preview() { return *m_preview; }
    // False when there is no path or nothing could be written, which has been shown.
    bool Save();

private:
    QPlainTextEdit* m_preview;
    LogDialog::PathFunction m_path;
};

} // namespace corvane::desktop
