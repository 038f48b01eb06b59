// Shows the log: with a filter, to copy from, and to make a report of.
#pragma once

#include "desktop/log/LogModel.h"

#include <QWidget>
#include <functional>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QSortFilterProxyModel;
class QSplitter;
class QTableView;

namespace corvane::desktop {

class LogView final : public QWidget {
    Q_OBJECT
public:
    explicit LogView(const QString& logFile, QWidget* parent = nullptr);

    [[nodiscard]] QLineEdit& Filter() { return *m_filter; }
    [[nodiscard]] QTableView& Table() { return *m_table; }
    // The selected lines, or all that the filter shows, as they are in the file.
    [[nodiscard]] QString Text() const;
    void Copy() const;
    // The latest lines as they are in the file.
    [[nodiscard]] QStringList LatestLines(int most) const;

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void Update();
    void ShowLine();

    LogModel* m_model;
    QSortFilterProxyModel* m_shown;
    QLineEdit* m_filter;
    QTableView* m_table;
    QPlainTextEdit* m_line;
    QSplitter* m_halves;
    QLabel* m_state;
};

} // namespace corvane::desktop
