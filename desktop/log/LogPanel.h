// The log as a view, and the report that is made of it.
#pragma once

#include "desktop/log/LogView.h"
#include "desktop/log/Report.h"

#include <QDialog>

class QPlainTextEdit;

namespace corvane::desktop {

class LogPanel final : public QWidget {
    Q_OBJECT
public:
    // Asks the user where to save; empty when they cancelled.
    using PathFunction = std::function<QString()>;

    LogPanel(const QString& logFile, ReportParts parts, PathFunction path, QWidget* parent = nullptr);

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
    ReportDialog(const QString& text, LogPanel::PathFunction path, QWidget* parent);

    [[nodiscard]] QPlainTextEdit& Preview() { return *m_preview; }
    // False when there is no path or nothing could be written, which has been shown.
    bool Save();

private:
    QPlainTextEdit* m_preview;
    LogPanel::PathFunction m_path;
};

} // namespace corvane::desktop
