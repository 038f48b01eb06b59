#include "desktop/service/ProgressControl.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr int nProgressSteps = 1000;
constexpr qint64 nFrame = 40;           // milliseconds between two looks at the events
constexpr qint64 nEstimateAfter = 2000; // before that an estimate would jump about
constexpr qint64 nIgnoredAfter = 5000;

// While it lives, only what paints, the button's own events and Esc, which presses it, reach anybody. Input to the rest
// of the shell is dropped: it is disabled. Timers fire again by themselves, and a socket is still ready afterwards.
class OnlyPaintAndCancel final : public QObject {
public:
    explicit OnlyPaintAndCancel(QPushButton* pCancel) : m_pCancel(pCancel) {
        QCoreApplication::instance()->installEventFilter(this);
    }
    ~OnlyPaintAndCancel() override { QCoreApplication::instance()->removeEventFilter(this); }

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override {
        switch (pEvent->type()) {
        case QEvent::KeyPress:
            if (static_cast<QKeyEvent*>(pEvent)->key() == Qt::Key_Escape && pWatched->isWindowType() &&
                m_pCancel->isVisible()) {
                m_pCancel->click();
                return true;
            }
            return !IsForCancel(pWatched);
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyRelease:
            return !IsForCancel(pWatched);
        case QEvent::Timer:
        case QEvent::SockAct:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::Close:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::DragEnter:
        case QEvent::Drop:
        case QEvent::InputMethod:
            pEvent->ignore();
            return true;
        default:
            return false;
        }
    }

private:
    // Input comes to the window first, which hands it to the widget.
    [[nodiscard]] bool IsForCancel(const QObject* pWatched) const {
        return pWatched == m_pCancel || (pWatched->isWindowType() && m_pCancel->isVisible());
    }

    QPushButton* m_pCancel;
};

} // namespace

QWidget* ProgressControl::Widget() {
    if (!std::exchange(m_bMade, true))
        Make();
    return m_pWidget;
}

void ProgressControl::Make() {
    m_pWidget = new QWidget;
    m_pText = new QLabel;
    m_pBar = new QProgressBar;
    m_pTimeLeft = new QLabel;
    m_pCancel = new QPushButton(tr("Cancel"));
    auto* pLayout = new QHBoxLayout(m_pWidget);
    pLayout->setContentsMargins(2, 0, 2, 0);
    pLayout->addWidget(m_pText, 2);
    pLayout->addWidget(m_pBar, 3);
    pLayout->addWidget(m_pTimeLeft);
    pLayout->addWidget(m_pCancel);
    m_pText->setTextFormat(Qt::PlainText);
    m_pText->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_pBar->setRange(0, nProgressSteps);
    m_pBar->setAccessibleName(tr("Progress"));
    m_pTimeLeft->hide();
    m_pCancel->setVisible(m_bCancel);
    QObject::connect(m_pCancel, &QPushButton::clicked, m_pWidget, [this] {
        m_bWasCanceled = true;
        m_oCancelled.start();
        m_pCancel->setEnabled(false);
        Draw();
    });
    Draw();
}

ProgressControl::~ProgressControl() {
    if (m_pWidget && !m_pWidget->parentWidget())
        delete m_pWidget;
}

void ProgressControl::SetCancel(bool bCancel) {
    m_bCancel = bCancel;
    if (!m_pWidget)
        return;
    m_pCancel->setVisible(bCancel);
    m_pCancel->setEnabled(true);
}

bool ProgressControl::WasCanceled() {
    LetThrough();
    if (m_bWasCanceled)
        m_oCancelled.invalidate(); // it knows now
    return m_bWasCanceled;
}

void ProgressControl::SetWasCanceled(bool bWasCanceled) {
    m_bWasCanceled = bWasCanceled;
    m_oCancelled.invalidate();
}

void ProgressControl::SetMax(Double dblMax) {
    m_dblMax = dblMax;
    Draw();
}

void ProgressControl::SetValue(Double dblValue) {
    m_dblValue = dblValue;
    if (dblValue == 0) {
        m_oRunning.start();
        m_oPassed.start();
        Draw();
        return;
    }
    LetThrough();
}

Long ProgressControl::Pixels() const {
    return m_pWidget ? m_pBar->width() : 0;
}

void ProgressControl::Draw() {
    if (!m_pWidget)
        return;
    const Double dblShare = m_dblMax > 0 ? qBound(0.0, m_dblValue / m_dblMax, 1.0) : 0.0;
    m_pBar->setValue(static_cast<int>(dblShare * nProgressSteps));
    m_pBar->setFormat(tr("%1 %").arg(static_cast<int>(dblShare * 100)));
    QString sText = m_oSources.fnStatus ? m_oSources.fnStatus() : QString();
    if (m_oCancelled.isValid() && m_oCancelled.hasExpired(nIgnoredAfter)) {
        const QString sService = m_oSources.fnService ? m_oSources.fnService() : QString();
        sText = sService.isEmpty() ? tr("The operation isn't responding to Cancel")
                                   : tr("%1 isn't responding to Cancel").arg(sService);
    } else if (m_bWasCanceled) {
        sText = tr("Cancelling…");
    }
    m_pText->setText(sText);
    m_pText->setToolTip(sText);
    const QString sTimeLeft = TimeLeft();
    m_pTimeLeft->setText(sTimeLeft);
    m_pTimeLeft->setVisible(!sTimeLeft.isEmpty());
}

QString ProgressControl::TimeLeft() const {
    if (!m_oRunning.isValid() || !m_oRunning.hasExpired(nEstimateAfter) || m_dblValue <= 0 || m_dblValue >= m_dblMax ||
        m_bWasCanceled)
        return {};
    const auto nSeconds = static_cast<qint64>(
        static_cast<Double>(m_oRunning.elapsed()) / 1000 * (m_dblMax - m_dblValue) / m_dblValue + 0.5);
    if (nSeconds < 60)
        return tr("about %1 s left").arg(qMax<qint64>(nSeconds, 1));
    return tr("about %1 min left").arg((nSeconds + 30) / 60);
}

// At most once a frame, so that work may call as often as it likes.
void ProgressControl::LetThrough() {
    if (m_bLettingThrough || !m_pWidget || !m_pWidget->isVisible() || !m_oPassed.hasExpired(nFrame))
        return;
    m_bLettingThrough = true;
    Draw();
    {
        const OnlyPaintAndCancel oFilter(m_pCancel);
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    m_oPassed.start();
    m_bLettingThrough = false;
}

} // namespace corvane::desktop
