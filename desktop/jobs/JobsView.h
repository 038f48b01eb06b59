// The view "Jobs": all that run or wait, and those that have ended since it was closed last.
#pragma once

#include "jobs/Manager.h"

#include <QDialog>
#include <map>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace corvane::desktop {

class JobsDialog final : public QDialog {
    Q_OBJECT
public:
    // Ended jobs count as seen once it is closed.
    JobsDialog(Ref<jobs::Manager> jobs, QWidget* parent);
    ~JobsDialog() override;

    void Update();

private:
    void SetUpList();
    void SetUpButtons();
    void Fill(QTreeWidgetItem& item, const jobs::Job& job);
    [[nodiscard]] Ref<jobs::Job> Current() const; // nothing when none is selected
    void ShowCurrent();
    void CancelSelected();

    Ref<jobs::Manager> m_jobs;
    QTreeWidget* m_list;
    QLabel* m_empty;
    QPlainTextEdit* m_details;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_clear = nullptr;
    std::map<Ref<jobs::Job>, QTreeWidgetItem*, bool (*)(const Ref<jobs::Job>&, const Ref<jobs::Job>&)> m_items;
};

} // namespace corvane::desktop
