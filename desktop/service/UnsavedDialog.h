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
    // Jobs by their titles; one of both at least isn't empty.
    UnsavedDialog(std::vector<UnsavedGroup> groups, const std::vector<std::string>& jobs, QWidget* parent);

    [[nodiscard]] const ExitAnswer& Answer() const { return m_answer; } // cancelled unless a button said otherwise

private:
    void FillTree(const std::vector<std::string>& jobs);
    void Finish(ExitAnswer::What what);
    [[nodiscard]] std::vector<UnsavedItem> CheckedItems() const;

    std::vector<UnsavedGroup> m_groups;
    QTreeWidget* m_tree;
    QPushButton* m_save = nullptr;
    ExitAnswer m_answer;
};

} // namespace corvane::desktop
