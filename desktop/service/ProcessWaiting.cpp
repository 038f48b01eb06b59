#include "desktop/service/ProcessWaiting.h"

#include "desktop/service/OnlyPaint.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSocketNotifier>

namespace corvane::desktop {

namespace {

class WaitNotifier final : public ProcessMonitor::Listening {
public:
    WaitNotifier(int descriptor, const std::function<void()>& onReadable)
        : m_notifier(new QSocketNotifier(descriptor, QSocketNotifier::Read)) {
        QObject::connect(m_notifier, &QSocketNotifier::activated, m_notifier, [onReadable] { onReadable(); });
    }
    // It may be called from by now.
    ~WaitNotifier() override {
        m_notifier->setEnabled(false);
        m_notifier->deleteLater();
    }

private:
    QSocketNotifier* m_notifier;
};

} // namespace

std::unique_ptr<ProcessMonitor::Listening> ProcessWaiting::Listen(int descriptor, std::function<void()> onReadable) {
    return std::make_unique<WaitNotifier>(descriptor,
                                          [this, onReadable = std::move(onReadable)] { m_guard(onReadable); });
}

bool ProcessWaiting::KeepsWaiting(std::string_view service, int milliseconds) {
    if (!m_asks || !m_window)
        return LoggingMonitor::KeepsWaiting(service, milliseconds);
    if (!m_isToWait) {
        if (!m_bar)
            Make();
        Say(service, milliseconds);
    }
    const OnlyPaint only({m_wait, m_stop});
    QCoreApplication::processEvents();
    return !m_isToStop;
}

void ProcessWaiting::WaitingEnds(std::string_view /*service*/) {
    delete m_bar;
    m_isToStop = m_isToWait = false;
}

void ProcessWaiting::Make() {
    auto* bar = new QFrame(m_window);
    m_bar = bar;
    bar->setFrameShape(QFrame::StyledPanel);
    bar->setAutoFillBackground(true);
    m_text = new QLabel;
    m_text->setTextFormat(Qt::PlainText);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_wait = new QPushButton(tr("&Wait"));
    m_wait->setToolTip(tr("Hides this message until the service has answered"));
    m_stop = new QPushButton(tr("&Stop"));
    m_stop->setToolTip(tr("Ends the service; its next command starts it again"));
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_wait);
    layout->addWidget(m_stop);
    QObject::connect(m_wait, &QPushButton::clicked, bar, [this] {
        m_isToWait = true;
        m_bar->hide();
    });
    QObject::connect(m_stop, &QPushButton::clicked, bar, [this] { m_isToStop = true; });
    bar->show();
    bar->raise();
}

void ProcessWaiting::Say(std::string_view service, int milliseconds) {
    constexpr int second = 1000;
    const QString name = QString::fromUtf8(service.data(), static_cast<qsizetype>(service.size()));
    m_text->setText(tr("“%1” hasn't answered for %2 s.").arg(name).arg(milliseconds / second));
    const int height = m_bar->sizeHint().height(); // the window may have another size by now
    m_bar->setGeometry(0, m_window->height() - height, m_window->width(), height);
}

} // namespace corvane::desktop
