// The view "Jobs": all that run or wait, and those that have ended since it was closed last.
#pragma once

#include "jobs/Manager.h"

#include <QWidget>
#include <map>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QSplitter;
class QTreeWidget;
class QTreeWidgetItem;

namespace corvane::desktop {

class JobsView final : public QWidget {
    Q_OBJECT
public:
    // Ended jobs count as seen once it goes.
    explicit JobsView(Ref<jobs::Manager> jobs, QWidget* parent = nullptr);
    ~JobsView() override;

    void Update();

protected:
    void resizeEvent(QResizeEvent* event) override;

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
    QSplitter* m_halves;
    QPlainTextEdit* m_details;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_clear = nullptr;
    std::map<Ref<jobs::Job>, QTreeWidgetItem*, bool (*)(const Ref<jobs::Job>&, const Ref<jobs::Job>&)> m_items;
};

} // namespace corvane::desktop
