// A page whose service has lost its process: it says why, keeps what has been entered, and can be closed or started
// again.
#include "corvane/author/Host.h"
#include "corvane/base/Automation.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/platform/controls/TreeView.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

class LostPage : public ::testing::Test {
protected:
    LostPage() {
        ApplicationOptions options;
        options.folder = CORVANE_AVIARY;
        options.withDialogs = false;
        options.personal = false;
        m_application = std::make_unique<Application>(options);
        EXPECT_TRUE(m_application->Start());
        m_application->ByHost([] { Explorer()->Populate(); });
        Turn();
    }

    static void Turn() {
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // Opens the page of the blackbird as the user does.
    void Open() {
        m_application->ByHost([this] {
            for (const auto& control : m_application->Panel()->Controls())
                if (const auto tree = control.TryAs<TreeView>(); tree && !tree->GetNodes()->Roots().empty())
                    tree->ClickNode(Ref<Node>(tree->GetNodes()->Roots().front()->Children().front()));
        });
        EXPECT_TRUE(m_application->Choose("File.Open"));
        Turn();
    }
    void Die() {
        m_application->ByHost([] { CallByName(FindService("Birds"), "OnDie"); });
        Turn();
    }
    [[nodiscard]] std::string Heard() {
        std::string heard;
        m_application->ByHost([&heard] { heard = ToText(CallByName(FindService("Birds"), "Heard")); });
        return heard;
    }
    [[nodiscard]] QFrame* Bar() const {
        auto* bar = m_application->Window().findChild<QFrame*>("LostBar");
        return bar && bar->isVisible() ? bar : nullptr;
    }
    [[nodiscard]] QString Said() const {
        QString said;
        for (const auto* label : Bar()->findChildren<QLabel*>())
            said += label->text();
        return said;
    }
    [[nodiscard]] QLineEdit* Note() const { return m_application->Window().findChild<QLineEdit*>("Note"); }

    std::unique_ptr<Application> m_application;
};

TEST_F(LostPage, IsStartedAgainWithWhatHasBeenEntered) {
    Open();
    ASSERT_TRUE(Note());
    EXPECT_FALSE(Bar());
    for (const char* text : {"shy", " and quick"}) { // the second death, too
        QTest::keyClicks(Note(), text);
        const QString entered = Note()->text();
        Die();
        ASSERT_TRUE(Bar());
        EXPECT_TRUE(Said().startsWith("The service \"Birds\" was killed by signal 6 (Aborted) (so tired)"));
        EXPECT_EQ(Note()->text(), entered);
        EXPECT_TRUE(Note()->isEnabled());
        Bar()->findChild<QPushButton*>()->click();
        Turn();
        EXPECT_FALSE(Bar());
        EXPECT_EQ(Note()->text(), entered);
    }
    EXPECT_TRUE(m_application->ClickCommand("ok"));
    EXPECT_NE(Heard().find("Save:Blackbird:noneshy and quick"), std::string::npos);
}

TEST_F(LostPage, ClosesWithoutItsService) {
    Open();
    Die();
    ASSERT_TRUE(Bar());
    const int failures = m_application->Failures().ShownCount();
    EXPECT_TRUE(m_application->ClickCommand("close"));
    Turn();
    EXPECT_FALSE(Note());
    EXPECT_EQ(m_application->Failures().ShownCount(), failures);
    Open(); // its item is found again in the new process
    ASSERT_TRUE(Note());
    EXPECT_EQ(Note()->text(), "none");
    EXPECT_FALSE(Bar());
}

} // namespace
} // namespace corvane::desktop
