// Shows the log: with a filter, to copy from, and to make a report of.
#pragma once

#include "desktop/log/LogModel.h"

#include <QWidget>
#include <functional>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QSortFilterProxyModel;
class QTableView;

namespace corvane::desktop {

class LogView final : public QWidget {
    Q_OBJECT
public:
    explicit LogView(const QString& sLogFile, QWidget* pParent = nullptr);

    [[nodiscard]] QLineEdit& Filter() { return *m_pFilter; }
    [[nodiscard]] QTableView& Table() { return *m_pTable; }
    // The selected lines, or all that the filter shows, as they stand in the file.
    [[nodiscard]] QString Text() const;
    void Copy() const;
    // The latest lines as they stand in the file.
    [[nodiscard]] QStringList LatestLines(int nMost) const;

protected:
    void showEvent(QShowEvent* pEvent) override;
    void timerEvent(QTimerEvent* pEvent) override;

private:
    void Update();
    void ShowLine();

    LogModel* m_pModel;
    QSortFilterProxyModel* m_pShown;
    QLineEdit* m_pFilter;
    QTableView* m_pTable;
    QPlainTextEdit* m_pLine;
    QLabel* m_pState;
};

} // namespace corvane::desktop
