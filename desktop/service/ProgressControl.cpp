#include "desktop/service/ProgressControl.h"

#include "desktop/service/OnlyPaint.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr int progressSteps = 1000;
constexpr qint64 frame = 40;           // milliseconds between two looks at the events
constexpr qint64 estimateAfter = 2000; // before that an estimate would jump about
constexpr qint64 ignoredAfter = 5000;

} // namespace

QWidget* ProgressControl::Widget() {
    if (!std::exchange(m_made, true))
        Make();
    return m_widget;
}

void ProgressControl::Make() {
    m_widget = new QWidget;
    m_text = new QLabel;
    m_bar = new QProgressBar;
    m_timeLeft = new QLabel;
    m_cancel = new QPushButton(tr("Cancel"));
    auto* layout = new QHBoxLayout(m_widget);
    layout->setContentsMargins(2, 0, 2, 0);
    layout->addWidget(m_text, 2);
    layout->addWidget(m_bar, 3);
    layout->addWidget(m_timeLeft);
    layout->addWidget(m_cancel);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_bar->setRange(0, progressSteps);
    m_bar->setAccessibleName(tr("Progress"));
    m_timeLeft->hide();
    m_cancel->setVisible(m_canCancel);
    QObject::connect(m_cancel, &QPushButton::clicked, m_widget, [this] {
        m_wasCanceled = true;
        m_cancelled.start();
        m_cancel->setEnabled(false);
        Draw();
    });
    Draw();
}

ProgressControl::~ProgressControl() {
    if (m_widget && !m_widget->parentWidget())
        delete m_widget;
}

void ProgressControl::SetCancel(bool cancel) {
    m_canCancel = cancel;
    if (!m_widget)
        return;
    m_cancel->setVisible(cancel);
    m_cancel->setEnabled(true);
}

bool ProgressControl::WasCanceled() {
    LetThrough();
    if (m_wasCanceled)
        m_cancelled.invalidate(); // it knows now
    return m_wasCanceled;
}

void ProgressControl::SetWasCanceled(bool wasCanceled) {
    m_wasCanceled = wasCanceled;
    m_cancelled.invalidate();
    if (!wasCanceled && m_sources.begins)
        m_sources.begins();
}

void ProgressControl::SetMax(Double max) {
    m_max = max;
    Draw();
}

void ProgressControl::SetValue(Double value) {
    m_value = value;
    if (value == 0) {
        m_running.start();
        m_passed.start();
        Draw();
        return;
    }
    LetThrough();
}

Long ProgressControl::Pixels() const {
    return m_widget ? m_bar->width() : 0;
}

void ProgressControl::Draw() {
    if (!m_widget)
        return;
    const Double share = m_max > 0 ? qBound(0.0, m_value / m_max, 1.0) : 0.0;
    m_bar->setValue(static_cast<int>(share * progressSteps));
    m_bar->setFormat(tr("%1 %").arg(static_cast<int>(share * 100)));
    QString text = m_sources.status ? m_sources.status() : QString();
    if (m_cancelled.isValid() && m_cancelled.hasExpired(ignoredAfter)) {
        const QString service = m_sources.service ? m_sources.service() : QString();
        text = service.isEmpty() ? tr("The operation isn't responding to Cancel")
                                 : tr("%1 isn't responding to Cancel").arg(service);
    } else if (m_wasCanceled) {
        text = tr("Cancelling…");
    }
    m_text->setText(text);
    m_text->setToolTip(text);
    const QString timeLeft = TimeLeft();
    m_timeLeft->setText(timeLeft);
    m_timeLeft->setVisible(!timeLeft.isEmpty());
}

QString ProgressControl::TimeLeft() const {
    if (!m_running.isValid() || !m_running.hasExpired(estimateAfter) || m_value <= 0 || m_value >= m_max ||
        m_wasCanceled)
        return {};
    const qint64 seconds = qRound64(static_cast<Double>(m_running.elapsed()) / 1000 * (m_max - m_value) / m_value);
    if (seconds < 60)
        return tr("about %1 s left").arg(qMax<qint64>(seconds, 1));
    return tr("about %1 min left").arg((seconds + 30) / 60);
}

// At most once a frame, so that work may call as often as it likes.
void ProgressControl::LetThrough() {
    if (m_lettingThrough || !m_widget || !m_widget->isVisible() || !m_passed.hasExpired(frame))
        return;
    m_lettingThrough = true;
    Draw();
    {
        const OnlyPaint filter({m_cancel});
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    m_passed.start();
    m_lettingThrough = false;
}

} // namespace corvane::desktop
