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
    // Asks the person where to save; empty when they thought better of it.
    using PathFunction = std::function<QString()>;

    LogDialog(const QString& sLogFile, ReportParts oParts, PathFunction fnPath, QWidget* pParent);

    [[nodiscard]] LogView& View() { return *m_pView; }
    void ShowReport();

private:
    LogView* m_pView;
    ReportParts m_oParts;
    PathFunction m_fnPath;
};

// Shows the report before it leaves the program: what the person strikes out isn't saved.
class ReportDialog final : public QDialog {
    Q_OBJECT
public:
    ReportDialog(const QString& sText, LogDialog::PathFunction fnPath, QWidget* pParent);

    [[nodiscard]] QPlainTextEdit& Preview() { return *m_pPreview; }
    // False when there is no path or nothing could be written, which has been shown.
    bool Save();

private:
    QPlainTextEdit* m_pPreview;
    LogDialog::PathFunction m_fnPath;
};

} // namespace corvane::desktop
