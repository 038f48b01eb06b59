#include "corvane/base/Automation.h"
#include "corvane/base/Dictionary.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "desktop/application/Application.h"
#include "desktop/service/UnsavedDialog.h"
#include "tests/desktop/ApplicationFolder.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
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
        std::vector<std::string> aUnsaved;
        std::set<std::string> setFailing;
        double dblOrder = 2;
        std::string sHeard;
    };
    struct Item final : public virtual Object {
        std::string sName;
    };

    explicit Keeper(State& oState) : m_oState(oState) {
        m_oUnsaved = m_oBase->GetUnsavedItems.Subscribe([this](const Ref<Dictionary>& dctItems, Double& dblOrder) {
            dblOrder = m_oState.dblOrder;
            for (const auto& sName : m_oState.aUnsaved) {
                auto oItem = New<Item>();
                oItem->sName = sName;
                dctItems->Add(sName, Variant(Ref<Object>(oItem)));
            }
        });
        m_oSave = m_oBase->SaveEvent.Subscribe([this](const Ref<Object>& oItem) {
            const std::string sName = oItem.As<Item>()->sName;
            if (m_oState.setFailing.contains(sName))
                Fail(FailureNumber::FileAccess, "the disk is full");
            m_oState.sHeard += "save " + sName + " ";
            std::erase(m_oState.aUnsaved, sName);
        });
        m_oComplete = m_oBase->SaveCompleteEvent.Subscribe(
            [this](bool bCancelled) { m_oState.sHeard += bCancelled ? "cancelled " : "complete "; });
        m_oTerminate = m_oBase->TerminateEvent.Subscribe([this] { m_oState.sHeard += "end"; });
    }
    Ref<IService> Service() override { return m_oBase; }

    static constexpr auto Members = MemberTable(Property("Service", &Keeper::Service));

private:
    State& m_oState;
    Ref<ServiceBase> m_oBase = New<ServiceBase>();
    Subscription m_oUnsaved, m_oSave, m_oComplete, m_oTerminate;
};

class UnsavedWorkTest : public ::testing::Test {
protected:
    UnsavedWorkTest() {
        m_oFolder.Write("late.xml", "<Service Name='Late' ProgID='T.Late' Active='true'/>");
        m_oFolder.Write("early.xml", "<Service Name='Early' ProgID='T.Early' Active='true'/>");
        m_oLate.aUnsaved = {"Draft"};
        m_oLate.dblOrder = 5;
        m_oEarly.aUnsaved = {"Notes", "Figures"};
        ApplicationOptions oOptions{m_oFolder.App(), true};
        oOptions.aClasses = {{"T.Late", [this] { return Ref<Object>(New<Keeper>(m_oLate)); }},
                             {"T.Early", [this] { return Ref<Object>(New<Keeper>(m_oEarly)); }}};
        m_pApplication = std::make_unique<Application>(oOptions);
        EXPECT_TRUE(m_pApplication->Start());
    }
    // Closes the window and acts in the dialogs that come, in turn.
    void CloseAnd(std::vector<std::function<void(QDialog&)>> aActs) {
        std::size_t iNext = 0;
        QTimer oTimer;
        QObject::connect(&oTimer, &QTimer::timeout, [&] {
            if (auto* pDialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()); pDialog) {
                if (iNext < aActs.size())
                    aActs[iNext++](*pDialog);
                else
                    pDialog->reject();
            }
        });
        oTimer.start(5);
        m_pApplication->Window().close();
        EXPECT_EQ(iNext, aActs.size());
    }
    static QPushButton* Button(QDialog& oDialog, QDialogButtonBox::StandardButton eButton) {
        return oDialog.findChild<QDialogButtonBox*>()->button(eButton);
    }
    static std::function<void(QDialog&)> Click(QDialogButtonBox::StandardButton eButton) {
        return [eButton](QDialog& oDialog) { Button(oDialog, eButton)->click(); };
    }

    ApplicationFolder m_oFolder;
    Keeper::State m_oLate;
    Keeper::State m_oEarly;
    std::unique_ptr<Application> m_pApplication;
};

TEST_F(UnsavedWorkTest, IsListedByServiceInTheirOrderAndWhatIsCheckedIsSaved) {
    QString sListed;
    CloseAnd({[&](QDialog& oDialog) {
        auto* pTree = oDialog.findChild<QTreeWidget*>();
        for (int i = 0; i < pTree->topLevelItemCount(); ++i) {
            sListed += pTree->topLevelItem(i)->text(0) + ":";
            for (int k = 0; k < pTree->topLevelItem(i)->childCount(); ++k)
                sListed += " " + pTree->topLevelItem(i)->child(k)->text(0);
            sListed += ". ";
        }
        pTree->topLevelItem(1)->setCheckState(0, Qt::Unchecked); // the group, and with it its item
        Button(oDialog, QDialogButtonBox::Save)->click();
    }});
    EXPECT_EQ(sListed, "Early: Notes Figures. Late: Draft. ");
    EXPECT_FALSE(m_pApplication->Window().isVisible());
    EXPECT_EQ(m_oEarly.sHeard, "save Notes save Figures complete end");
    EXPECT_EQ(m_oLate.sHeard, "complete end");
}

TEST_F(UnsavedWorkTest, DiscardEndsAndCancelStays) {
    CloseAnd({Click(QDialogButtonBox::Cancel)});
    EXPECT_TRUE(m_pApplication->Window().isVisible());
    EXPECT_EQ(m_oEarly.sHeard, "cancelled ");
    CloseAnd({[](QDialog& oDialog) {
        auto* pTree = oDialog.findChild<QTreeWidget*>();
        for (int i = 0; i < pTree->topLevelItemCount(); ++i)
            pTree->topLevelItem(i)->setCheckState(0, Qt::Unchecked);
        EXPECT_FALSE(Button(oDialog, QDialogButtonBox::Save)->isEnabled()) << "nothing is checked";
        Button(oDialog, QDialogButtonBox::Discard)->click();
    }});
    EXPECT_FALSE(m_pApplication->Window().isVisible());
    EXPECT_EQ(m_oEarly.sHeard, "cancelled complete end");
}

TEST_F(UnsavedWorkTest, FailingSaveIsShownKeepsTheApplicationOpenAndTheOthersAreSaved) {
    m_oEarly.setFailing = {"Notes"};
    QString sShown;
    CloseAnd({Click(QDialogButtonBox::Save), [&](QDialog& oDialog) {
                  for (const auto* pLabel : oDialog.findChildren<QLabel*>())
                      sShown += pLabel->text() + "\n";
                  oDialog.reject();
              }});
    EXPECT_TRUE(sShown.contains("“Notes” couldn't be saved: the disk is full")) << sShown.toStdString();
    EXPECT_TRUE(m_pApplication->Window().isVisible());
    EXPECT_EQ(m_oEarly.sHeard, "save Figures cancelled ");
    EXPECT_EQ(m_oLate.sHeard, "save Draft cancelled ");
    m_oEarly.setFailing.clear();
    CloseAnd({Click(QDialogButtonBox::Save)});
    EXPECT_FALSE(m_pApplication->Window().isVisible());
}

TEST_F(UnsavedWorkTest, NothingUnsavedAsksNobody) {
    m_oEarly.aUnsaved.clear();
    m_oLate.aUnsaved.clear();
    CloseAnd({});
    EXPECT_FALSE(m_pApplication->Window().isVisible());
    EXPECT_EQ(m_oEarly.sHeard, "end");
}

TEST_F(UnsavedWorkTest, PreferencesAreSearchedAppliedAndKept) {
    m_oEarly.aUnsaved.clear();
    m_oLate.aUnsaved.clear();
    QTimer::singleShot(200, [] {
        QWidget* pDialog = QApplication::activeModalWidget();
        ASSERT_TRUE(pDialog);
        auto* pPages = pDialog->findChild<QListWidget*>();
        QTest::keyClicks(pDialog->findChild<QLineEdit*>(), "toolbars icons");
        EXPECT_FALSE(pPages->item(0)->isHidden()) << "found by what stands on the page";
        QTest::keyClicks(pDialog->findChild<QLineEdit*>(), " zebra");
        EXPECT_TRUE(pPages->item(0)->isHidden());
        const auto aBoxes = pDialog->findChildren<QComboBox*>();
        aBoxes[1]->setCurrentIndex(aBoxes[1]->findData(48));
        aBoxes[2]->setCurrentIndex(aBoxes[2]->findData(true));
        for (auto* pButton : pDialog->findChildren<QPushButton*>())
            if (pButton->text() == "OK" || pButton->text() == "&OK")
                pButton->click();
    });
    EXPECT_TRUE(m_pApplication->Choose("Tools.Preferences"));
    EXPECT_EQ(m_pApplication->Window().iconSize(), QSize(48, 48));
    EXPECT_EQ(m_pApplication->Window().Area().viewMode(), QMdiArea::TabbedView);
    m_pApplication.reset();
    Application oAgain({m_oFolder.App(), false});
    EXPECT_TRUE(oAgain.Start());
    EXPECT_EQ(oAgain.Window().iconSize(), QSize(48, 48));
}

} // namespace
} // namespace corvane::desktop
