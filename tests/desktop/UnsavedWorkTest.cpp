#include "corvane/base/Automation.h"
#include "corvane/base/Dictionary.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/documents/Documents.h"
#include "desktop/service/UnsavedDialog.h"
#include "tests/desktop/ApplicationFolder.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <gtest/gtest.h>
#include <set>

namespace corvane::desktop {
namespace {

// A service with unsaved items, which writes down what it hears.
class Keeper final : public Automation<Keeper, IServiceAccess> {
public:
    struct State {
        std::vector<std::string> unsaved;
        std::set<std::string> failing;
        double order = 2;
        std::string heard;
    };
    struct Item final : public virtual Object {
        std::string name;
    };

    explicit Keeper(State& state) : m_state(state) {
        m_unsaved = m_base->GetUnsavedItems.Subscribe([this](const Ref<Dictionary>& items, Double& order) {
            order = m_state.order;
            for (const auto& name : m_state.unsaved) {
                auto item = New<Item>();
                item->name = name;
                items->Add(name, Variant(Ref<Object>(item)));
            }
        });
        m_save = m_base->SaveEvent.Subscribe([this](const Ref<Object>& item) {
            const std::string name = item.As<Item>()->name;
            if (m_state.failing.contains(name))
                Fail(FailureNumber::FileAccess, "the disk is full");
            m_state.heard += "save " + name + " ";
            std::erase(m_state.unsaved, name);
        });
        m_complete = m_base->SaveCompleteEvent.Subscribe(
            [this](bool cancelled) { m_state.heard += cancelled ? "cancelled " : "complete "; });
        m_terminate = m_base->TerminateEvent.Subscribe([this] { m_state.heard += "end"; });
    }
    Ref<IService> Service() override { return m_base; }

    static constexpr auto Members = MemberTable(Property("Service", &Keeper::Service));

private:
    State& m_state;
    Ref<ServiceBase> m_base = New<ServiceBase>();
    Subscription m_unsaved, m_save, m_complete, m_terminate;
};

class UnsavedWorkTest : public ::testing::Test {
protected:
    UnsavedWorkTest() {
        m_folder.Write("1-late.xml", "<Service Name='Late' ProgID='T.Late' Active='true'/>");
        m_folder.Write("2-early.xml", "<Service Name='Early' ProgID='T.Early' Active='true'/>");
        m_late.unsaved = {"Draft"};
        m_late.order = 5;
        m_early.unsaved = {"Notes", "Figures"};
        ApplicationOptions options{m_folder.App(), true};
        options.classes = {{"T.Late", [this] { return Ref<Object>(New<Keeper>(m_late)); }},
                           {"T.Early", [this] { return Ref<Object>(New<Keeper>(m_early)); }}};
        m_application = std::make_unique<Application>(options);
        EXPECT_TRUE(m_application->Start());
    }
    // Closes the window and acts in the dialogs that come, in turn.
    void CloseAnd(std::vector<std::function<void(QDialog&)>> acts) {
        std::size_t next = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()); dialog) {
                if (next < acts.size())
                    acts[next++](*dialog);
                else
                    dialog->reject();
            }
        });
        timer.start(5);
        m_application->Window().close();
        EXPECT_EQ(next, acts.size());
    }
    static QPushButton* Button(QDialog& dialog, QDialogButtonBox::StandardButton button) {
        return dialog.findChild<QDialogButtonBox*>()->button(button);
    }
    static std::function<void(QDialog&)> Click(QDialogButtonBox::StandardButton button) {
        return [button](QDialog& dialog) { Button(dialog, button)->click(); };
    }

    ApplicationFolder m_folder;
    Keeper::State m_late;
    Keeper::State m_early;
    std::unique_ptr<Application> m_application;
};

TEST_F(UnsavedWorkTest, IsListedByServiceInTheirOrderAndWhatIsCheckedIsSaved) {
    QString listed;
    CloseAnd({[&](QDialog& dialog) {
        auto* tree = dialog.findChild<QTreeWidget*>();
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            listed += tree->topLevelItem(i)->text(0) + ":";
            for (int k = 0; k < tree->topLevelItem(i)->childCount(); ++k)
                listed += " " + tree->topLevelItem(i)->child(k)->text(0);
            listed += ". ";
        }
        tree->topLevelItem(1)->setCheckState(0, Qt::Unchecked); // the group, and with it its item
        Button(dialog, QDialogButtonBox::Save)->click();
    }});
    EXPECT_EQ(listed, "Early: Notes Figures. Late: Draft. ");
    EXPECT_FALSE(m_application->Window().isVisible());
    EXPECT_EQ(m_early.heard, "save Notes save Figures complete end");
    EXPECT_EQ(m_late.heard, "complete end");
}

TEST_F(UnsavedWorkTest, DiscardEndsAndCancelStays) {
    CloseAnd({Click(QDialogButtonBox::Cancel)});
    EXPECT_TRUE(m_application->Window().isVisible());
    EXPECT_EQ(m_early.heard, "cancelled ");
    CloseAnd({[](QDialog& dialog) {
        auto* tree = dialog.findChild<QTreeWidget*>();
        for (int i = 0; i < tree->topLevelItemCount(); ++i)
            tree->topLevelItem(i)->setCheckState(0, Qt::Unchecked);
        EXPECT_FALSE(Button(dialog, QDialogButtonBox::Save)->isEnabled()) << "nothing is checked";
        Button(dialog, QDialogButtonBox::Discard)->click();
    }});
    EXPECT_FALSE(m_application->Window().isVisible());
    EXPECT_EQ(m_early.heard, "cancelled complete end");
}

TEST_F(UnsavedWorkTest, FailingSaveIsShownKeepsTheApplicationOpenAndTheOthersAreSaved) {
    m_early.failing = {"Notes"};
    QString shown;
    CloseAnd({Click(QDialogButtonBox::Save), [&](QDialog& dialog) {
                  for (const auto* label : dialog.findChildren<QLabel*>())
                      shown += label->text() + "\n";
                  dialog.reject();
              }});
    EXPECT_TRUE(shown.contains("“Notes” couldn't be saved: the disk is full")) << shown.toStdString();
    EXPECT_TRUE(m_application->Window().isVisible());
    EXPECT_EQ(m_early.heard, "save Figures cancelled ");
    EXPECT_EQ(m_late.heard, "save Draft cancelled ");
    m_early.failing.clear();
    CloseAnd({Click(QDialogButtonBox::Save)});
    EXPECT_FALSE(m_application->Window().isVisible());
}

TEST_F(UnsavedWorkTest, NothingUnsavedAsksNobody) {
    m_early.unsaved.clear();
    m_late.unsaved.clear();
    CloseAnd({});
    EXPECT_FALSE(m_application->Window().isVisible());
    EXPECT_EQ(m_early.heard, "end");
}

TEST_F(UnsavedWorkTest, PreferencesAreSearchedAppliedAndKept) {
    m_early.unsaved.clear();
    m_late.unsaved.clear();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&timer] {
        QWidget* dialog = QApplication::activeModalWidget();
        auto* pages = dialog ? dialog->findChild<QListWidget*>() : nullptr;
        if (!pages || !pages->isVisible())
            return;
        timer.stop();
        QTest::keyClicks(dialog->findChild<QLineEdit*>(), "toolbar icon");
        EXPECT_FALSE(pages->item(0)->isHidden()) << "found by what stands on the page";
        QTest::keyClicks(dialog->findChild<QLineEdit*>(), " zebra");
        EXPECT_TRUE(pages->item(0)->isHidden());
        const auto boxes = dialog->findChildren<QComboBox*>();
        boxes[1]->setCurrentIndex(boxes[1]->findData(48));
        boxes[2]->setCurrentIndex(boxes[2]->findData(false));
        for (auto* button : dialog->findChildren<QPushButton*>())
            if (button->text() == "OK" || button->text() == "&OK")
                button->click();
    });
    timer.start(5);
    EXPECT_TRUE(m_application->Choose("Tools.Preferences"));
    EXPECT_EQ(m_application->Window().iconSize(), QSize(48, 48));
    EXPECT_FALSE(m_application->Window().OpenDocuments().IsTabbed());
    m_application.reset();
    Application again({m_folder.App(), false});
    EXPECT_TRUE(again.Start());
    EXPECT_EQ(again.Window().iconSize(), QSize(48, 48));
}

} // namespace
} // namespace corvane::desktop
