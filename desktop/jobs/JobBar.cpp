#include "desktop/jobs/JobBar.h"

#include "desktop/jobs/JobTexts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int steps = 1000;
constexpr qint64 shownAfter = 300; // milliseconds: what is over by then would only flicker
constexpr int textCharacters = 44;
constexpr int stateCharacters = 40;
constexpr int leastCharacters = 12; // of the title

} // namespace

JobBar::JobBar(Ref<jobs::Manager> jobs, QWidget* parent)
    : QWidget(parent), m_jobs(std::move(jobs)), m_text(new QLabel), m_bar(new QProgressBar), m_timeLeft(new QLabel),
      m_cancel(new QPushButton(tr("Cancel"))), m_more(new QPushButton) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 0, 2, 0);
    for (QWidget* widget :
         {static_cast<QWidget*>(m_text), static_cast<QWidget*>(m_bar), static_cast<QWidget*>(m_timeLeft),
          static_cast<QWidget*>(m_cancel), static_cast<QWidget*>(m_more)})
        layout->addWidget(widget);
    m_text->setTextFormat(Qt::PlainText);
    m_timeLeft->setTextFormat(Qt::PlainText);
    m_bar->setFixedWidth(fontMetrics().averageCharWidth() * 20);
    m_more->setFlat(true);
    m_more->setToolTip(tr("Shows all jobs"));
    connect(m_cancel, &QPushButton::clicked, this, [this] {
        if (m_shown)
            m_shown->Cancel();
        Update();
    });
    connect(m_more, &QPushButton::clicked, this, &JobBar::ViewWanted);
    hide();
}

void JobBar::Update() {
    auto jobs = m_jobs->Active();
    std::erase_if(jobs, [](const Ref<jobs::Job>& job) { return job->IsQuiet(); });
    if (jobs.empty()) {
        m_since.invalidate();
        m_shown = nullptr;
        hide();
        return;
    }
    if (!m_since.isValid())
        m_since.start();
    if (!m_since.hasExpired(shownAfter))
        return;
    const auto running =
        std::find_if(jobs.begin(), jobs.end(), [](const auto& job) { return job->State() == JobState::Running; });
    m_shown = running == jobs.end() ? jobs.front() : *running;
    Show(*m_shown, jobs.size() - 1);
}

void JobBar::Show(const jobs::Job& job, std::size_t more) {
    const QString title = QString::fromStdString(job.Title());
    const QString state = StateText(job);
    const bool isPlain = job.State() == JobState::Running && !job.IsCancelling();
    const int character = fontMetrics().averageCharWidth();
    // What it does now is worth more than the whole title.
    const QString behind =
        isPlain ? QString() : fontMetrics().elidedText(" – " + state, Qt::ElideMiddle, character * stateCharacters);
    const int room = character * textCharacters - fontMetrics().horizontalAdvance(behind);
    m_text->setText(fontMetrics().elidedText(title, Qt::ElideMiddle, std::max(room, character * leastCharacters)) +
                    behind);
    m_text->setToolTip(DetailsText(job));
    const auto part = job.Part();
    m_bar->setRange(0, part ? steps : 0); // without a range it only shows that something is done
    m_bar->setValue(static_cast<int>(part.value_or(0) * steps));
    m_bar->setFormat(PercentText(job));
    m_bar->setAccessibleName(tr("Progress of %1").arg(title));
    m_timeLeft->setText(TimeLeftText(job));
    m_timeLeft->setVisible(!m_timeLeft->text().isEmpty());
    m_cancel->setVisible(job.CanCancel());
    m_cancel->setEnabled(!job.IsCancelling());
    m_cancel->setAccessibleName(tr("Cancel %1").arg(title));
    m_more->setText(more == 0 ? tr("Jobs…") : tr("and %n more", nullptr, static_cast<int>(more)));
    m_more->setAccessibleName(tr("Jobs"));
    show();
}

} // namespace corvane::desktop

#include "moc_JobBar.cpp"
