// Asks what to do about unsaved work before the application ends.
#pragma once

#include "desktop/service/UnsavedWork.h"

#include <QDialog>

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace corvane::desktop {

class UnsavedDialog final : public QDialog {
    Q_OBJECT
public:
    explicit UnsavedDialog(std::vector<UnsavedGroup> aGroups, QWidget* pParent);

    [[nodiscard]] const ExitAnswer& Answer() const { return m_oAnswer; } // cancelled unless a button said otherwise

private:
    void FillTree();
    void Finish(ExitAnswer::What eWhat);
    [[nodiscard]] std::vector<UnsavedItem> CheckedItems() const;

    std::vector<UnsavedGroup> m_aGroups;
    QTreeWidget* m_pTree;
    QPushButton* m_pSave = nullptr;
    ExitAnswer m_oAnswer;
};

} // namespace corvane::desktop
