// A table or tree of a form.
#pragma once

#include "desktop/forms/FieldEditor.h"

class QAbstractItemView;
class QHeaderView;

namespace corvane::desktop {

class RowsModel;

class RowsEditor final : public FieldEditor {
    Q_OBJECT
public:
    RowsEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent);

    void ShowRows() override;
    void ShowCells() override;
    void ShowSelection() override;

protected:
    void ShowValue() override {}

private:
    void FitColumns();
    [[nodiscard]] QHeaderView* Header() const;

    QPointer<RowsModel> m_rows;
    QPointer<QAbstractItemView> m_view;
    bool m_isFitted = false;
};

} // namespace corvane::desktop
