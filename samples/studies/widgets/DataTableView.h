// A table of data that copies, pastes and clears cells by the keys that people know.
#pragma once

#include "DataTableModel.h"

#include <QTableView>

namespace studies {

class DataTableView final : public QTableView {
    Q_OBJECT
public:
    explicit DataTableView(QWidget* parent = nullptr);

    void SetData(DataTableModel* model);
    // What is selected goes to the clipboard; whole columns with their names.
    void Copy();
    void Paste();
    void ClearCells();

Q_SIGNALS:
    void Refused(const QString& problem);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    DataTableModel* m_model = nullptr;
};

} // namespace studies
