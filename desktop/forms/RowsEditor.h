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
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FitColumns();
    void Copy() const;
    [[nodiscard]] QHeaderView* Header() const;
    [[nodiscard]] bool IsText() const { return Def().look == forms::FieldLook::TextTable; }

    QPointer<RowsModel> m_rows;
    QPointer<QAbstractItemView> m_view;
    bool m_isFitted = false;
};

} // namespace corvane::desktop
