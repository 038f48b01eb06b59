// The bar at the bottom of the main window while a service in a process of its own doesn't answer.
#include "desktop/service/ProcessWaiting.h"

#include "adapters/process/ProcessObject.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QWindow>
#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace corvane::desktop {
namespace {

QPushButton* ButtonOf(const ProcessWaiting& waiting, const QString& text) {
    for (auto* button : waiting.Bar()->findChildren<QPushButton*>())
        if (button->text() == text)
            return button;
    return nullptr;
}

TEST(ProcessWaiting, OffersToWaitOrToStop) {
    QWidget window;
    window.resize(400, 300);
    window.show();
    const auto waiting = New<ProcessWaiting>(true);
    waiting->SetParentWindow(&window);
    for (int time = 0; time < 2; ++time) { // the second call that waits, as the first
        EXPECT_FALSE(waiting->Bar());
        EXPECT_TRUE(waiting->KeepsWaiting("Birds", 2000));
        ASSERT_TRUE(waiting->Bar());
        EXPECT_TRUE(waiting->Bar()->isVisible());
        EXPECT_EQ(waiting->Bar()->geometry().bottom(), window.rect().bottom());
        EXPECT_EQ(waiting->Bar()->findChild<QLabel*>()->text(), QStringLiteral("“Birds” hasn't answered for 2 s."));
        EXPECT_TRUE(waiting->KeepsWaiting("Birds", 3100));
        EXPECT_EQ(waiting->Bar()->findChild<QLabel*>()->text(), QStringLiteral("“Birds” hasn't answered for 3 s."));
        ButtonOf(*waiting, "&Stop")->click();
        EXPECT_FALSE(waiting->KeepsWaiting("Birds", 3200));
        waiting->WaitingEnds("Birds");
    }
    EXPECT_TRUE(waiting->KeepsWaiting("Birds", 2000));
    window.resize(500, 350);
    QCoreApplication::postEvent(window.windowHandle(), new QKeyEvent(QEvent::KeyPress, Qt::Key_S, Qt::NoModifier));
    QCoreApplication::postEvent(&window, new QShortcutEvent(Qt::ALT | Qt::Key_W, 1, true)); // a menu has it, too
    EXPECT_TRUE(waiting->KeepsWaiting("Birds", 2100)); // the letter alone stops nothing
    EXPECT_EQ(waiting->Bar()->width(), 500);
    EXPECT_FALSE(waiting->Bar()->isVisible());
    EXPECT_TRUE(waiting->KeepsWaiting("Birds", 600000));
    EXPECT_FALSE(waiting->Bar()->isVisible());
    waiting->WaitingEnds("Birds");
    EXPECT_TRUE(waiting->KeepsWaiting("Birds", 2000));
    EXPECT_TRUE(waiting->Bar()->isVisible());
    waiting->WaitingEnds("Birds");
}

// Presses the button of that text as soon as it is shown.
class PressesWhenShown final : public QObject {
public:
    PressesWhenShown(QString text, std::function<void()> then) : m_text(std::move(text)), m_then(std::move(then)) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* button = qobject_cast<QPushButton*>(watched);
        if (event->type() == QEvent::Show && button && button->text() == m_text)
            QMetaObject::invokeMethod(
                button,
                [this, button] {
                    button->click();
                    m_then();
                },
                Qt::QueuedConnection);
        return false;
    }

private:
    QString m_text;
    std::function<void()> m_then;
};

TEST(ProcessWaiting, StopsAServiceOrWaitsForItsAnswer) {
    QWidget window;
    window.show();
    const auto waiting = New<ProcessWaiting>(true);
    waiting->SetParentWindow(&window);
    const auto process =
        New<Process>(ReadProcessSettings("Birds", CORVANE_AVIARY "/plugins/Birds/plugin.json"), waiting);
    const auto birds = New<ProcessObject>(process, "Birds.Birds");
    const QTemporaryDir folder;
    QFile egg(folder.filePath("egg"));
    for (const char* text : {"&Stop", "&Wait", "&Stop"}) {
        (void)birds->Invoke("Heard", {}); // starts it, which may take its time, too
        const bool stops = std::string(text) == "&Stop";
        const PressesWhenShown presses(text, [&] { EXPECT_TRUE(stops || egg.open(QIODevice::WriteOnly)); });
        std::string outcome;
        try {
            outcome = ToText(birds->Invoke("Brood", std::vector<Variant>{egg.fileName().toStdString()}));
        } catch (const Failure& failure) {
            outcome = failure.Description;
        }
        EXPECT_EQ(outcome, stops
                               ? "The service \"Birds\" was stopped, as it didn't answer while it ran Brood. Its next "
                                 "command starts it again"
                               : "hatched");
        EXPECT_FALSE(waiting->Bar());
        egg.remove();
    }
    process->Stop();
}

TEST(ProcessWaiting, HasALimitWhereNoOneWatches) {
    const auto waiting = New<ProcessWaiting>(false);
    EXPECT_TRUE(waiting->KeepsWaiting("Birds", 59999));
    EXPECT_FALSE(waiting->KeepsWaiting("Birds", 60000));
}

} // namespace
} // namespace corvane::desktop
