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
    // Whether a value is being typed, which a change of the data would replace.
    [[nodiscard]] bool IsEditing() const { return state() == EditingState; }

Q_SIGNALS:
    void EditingEnded();

protected:
    bool event(QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    DataTableModel* m_model = nullptr;
};

} // namespace studies
