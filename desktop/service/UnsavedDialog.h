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
    explicit UnsavedDialog(std::vector<UnsavedGroup> groups, QWidget* parent);

    [[nodiscard]] const ExitAnswer& Answer() const { return m_answer; } // cancelled unless a button said otherwise

private:
    void FillTree();
    void Finish(ExitAnswer::What what);
    [[nodiscard]] std::vector<UnsavedItem> CheckedItems() const;

    std::vector<UnsavedGroup> m_groups;
    QTreeWidget* m_tree;
    QPushButton* m_save = nullptr;
    ExitAnswer m_answer;
};

} // namespace corvane::desktop
