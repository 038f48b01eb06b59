// A table of data that copies, pastes and clears cells by the keys that people know.
#pragma once

#include "DataTableModel.h"

#include <QTableView>

namespace studies {

class DataTableView final : public QTableView {
    Q_OBJECT
public:
    explicit DataTableView(QWidget* pParent = nullptr);

    void SetData(DataTableModel* pModel);
    // What is selected goes to the clipboard; whole columns with their names.
    void Copy();
    void Paste();
    void ClearCells();

Q_SIGNALS:
    void Refused(const QString& sProblem);

protected:
    bool event(QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    DataTableModel* m_pModel = nullptr;
};

} // namespace studies
