// How far the printing of many sheets is, with Cancel, once it takes longer than a moment.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QString>
#include <cstddef>
#include <memory>

class QDialog;
class QLabel;
class QProgressBar;
class QWidget;

namespace corvane::desktop {

class OnlyPaint;

class PrintProgress final {
    Q_DECLARE_TR_FUNCTIONS(PrintProgress)
public:
    PrintProgress(QString title, QWidget* parent);
    ~PrintProgress();
    PrintProgress(const PrintProgress&) = delete;
    PrintProgress& operator=(const PrintProgress&) = delete;

    // As Printout::Watch: sheet of all, or 0 for all while they are laid out. Nothing but painting and Cancel gets
    // through meanwhile. False once the user has cancelled.
    [[nodiscard]] bool Show(std::size_t sheet, std::size_t all);

private:
    void Open();

    QString m_title;
    QWidget* m_parent;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceTurn;
    std::unique_ptr<QDialog> m_dialog;
    QLabel* m_text = nullptr;
    QProgressBar* m_bar = nullptr;
    std::unique_ptr<OnlyPaint> m_only;
    bool m_isCancelled = false;
};

} // namespace corvane::desktop
