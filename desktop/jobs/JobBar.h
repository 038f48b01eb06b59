// The first running job in the status bar: what it does, how far it is, a button to cancel it, and how many more there
// are. It is hidden while no job has run for a moment.
#pragma once

#include "jobs/Manager.h"

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace corvane::desktop {

class JobBar final : public QWidget {
    Q_OBJECT
public:
    explicit JobBar(Ref<jobs::Manager> jobs, QWidget* parent = nullptr);

    // Shows how things are now.
    void Update();

Q_SIGNALS:
    void ViewWanted();

private:
    void Show(const jobs::Job& job, std::size_t more);

    Ref<jobs::Manager> m_jobs;
    Ref<jobs::Job> m_shown;
    QLabel* m_text;
    QProgressBar* m_bar;
    QLabel* m_timeLeft;
    QPushButton* m_cancel;
    QPushButton* m_more;
    QElapsedTimer m_since; // there are jobs to be shown; invalid while there are none
};

} // namespace corvane::desktop
