// Shortcuts of two strokes, and entries of menus that users move and add, kept for the next start.
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/custom/CustomizeDialog.h"
#include "desktop/custom/ShortcutsDialog.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

namespace corvane::desktop {
namespace {

constexpr const char* letters = R"(<ActionItems><ActionItem Name="A" Action="OnA"/><ActionItem Name="B" Action="OnB"/>
<ActionItem Name="C" Action="OnC"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="A" Path="File" PositionOrder="1" Caption="A" ShortCutKey="Ctrl+K"/>
<MenuItem Type="MenuItem" ActionItem="B" Path="File" PositionOrder="2" Caption="B"/>
<MenuItem Type="MenuItem" ActionItem="C" Path="File" PositionOrder="3" Caption="C" Separator="Before"/></Menus>)";

class ChordsTest : public ::testing::Test {
protected:
    ChordsTest() {
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Service("Letters", "T.Letters", letters);
        Start();
    }
    ~ChordsTest() override { m_application.reset(); }
    void Start() {
        m_application.reset();
        ApplicationOptions options{m_folder.App(), false};
        options.classes = {{"T.Letters", [] { return Ref<Object>(New<ServiceHolder>()); }}};
        m_application = std::make_unique<Application>(options);
        EXPECT_TRUE(m_application->Start());
        m_click =
            m_application->Bar()->ToolClick.Subscribe([this](const Ref<Tool>& tool) { m_clicked += tool->Name(); });
    }
    [[nodiscard]] const Tool& ToolOf(const char* name) const { return *m_application->Bar()->Tools()->Item(name); }
    PersonalBars& Bars() { return m_application->Personal().Bars(); }
    // What the keys reach one after the other.
    std::string Pressed(std::initializer_list<QKeyCombination> keys) {
        m_clicked.clear();
        for (const QKeyCombination key : keys)
            QTest::keyClick(&m_application->Window(), key.key(), key.keyboardModifiers());
        return m_clicked;
    }
    QStringList Menu(int title = 0) {
        QMenu* menu = m_application->Window().menuBar()->actions().at(title)->menu();
        Q_EMIT menu->aboutToShow();
        QStringList texts;
        for (const QAction* action : menu->actions())
            if (action->isVisible())
                texts << (action->isSeparator() ? "-" : QString(action->text()).remove('&'));
        while (!texts.isEmpty() && (texts.back() == "-" || texts.back().section('\t', 0, 0).size() != 1))
            texts.pop_back(); // the host's own are behind
        return texts;
    }

    class ServiceHolder final : public Automation<ServiceHolder, IServiceAccess> {
    public:
        Ref<IService> Service() override { return m_base; }
        void OnAny() {}
        static constexpr auto Members =
            MemberTable(Method("OnA", &ServiceHolder::OnAny), Method("OnB", &ServiceHolder::OnAny),
                        Method("OnC", &ServiceHolder::OnAny));

    private:
        Ref<ServiceBase> m_base = New<ServiceBase>();
    };

    AppFolder m_folder;
    std::unique_ptr<Application> m_application;
    std::string m_clicked;
    Subscription m_click;
};

TEST_F(ChordsTest, ReachTheirCommandsByTwoStrokesAndNameWhatTheyTakeAway) {
    constexpr QKeyCombination first = Qt::CTRL | Qt::Key_K;
    constexpr QKeyCombination second = Qt::CTRL | Qt::Key_S;
    EXPECT_EQ(Pressed({first}), "File.A");
    {
        ShortcutsDialog dialog(Bars(), *m_application->Bar(), &m_application->Window());
        ASSERT_TRUE(dialog.Select(ToolOf("File.C")));
        dialog.Keys().setKeySequence(QKeySequence(first, second));
        QStringList said;
        for (const auto* label : dialog.findChildren<QLabel*>())
            said << label->text();
        EXPECT_TRUE(said.join('|').contains("Ctrl+K, Ctrl+S begins with the shortcut of File › A (Ctrl+K)"))
            << said.join('|').toStdString();
        for (auto* button : dialog.findChildren<QPushButton*>())
            if (button->text() == "A&ssign")
                button->click();
    }
    for (int time = 0; time < 2; ++time) { // also after the next start
        EXPECT_EQ(Pressed({first, second}), "File.C") << time;
        EXPECT_EQ(Pressed({first, Qt::Key_Escape, first, Qt::Key_X, second}), "") << time;
        EXPECT_TRUE(Menu().contains("C\tCtrl+K, Ctrl+S")) << Menu().join('|').toStdString();
        Start();
    }
    Bars().ResetKeys(ToolOf("File.C"));
    EXPECT_EQ(Pressed({first}), "File.A");
}

TEST_F(ChordsTest, MenuEntriesAreDraggedAddedAndReset) {
    EXPECT_EQ(Menu(), QStringList({"A\tCtrl+K", "B", "-", "C"}));
    {
        CustomizeDialog dialog(Bars(), m_application->Bar(), {}, &m_application->Window());
        ASSERT_TRUE(dialog.SelectBand("File"));
        const auto drag = [&](int from, int to) { // as a drop between two rows
            QAbstractItemModel* model = dialog.Entries().model();
            model->moveRow({}, from, {}, to);
            QApplication::processEvents();
        };
        drag(0, 3); // to the beginning of the second part
        EXPECT_EQ(Menu(), QStringList({"B", "-", "A\tCtrl+K", "C"}));
        dialog.MoveCurrent(1);
        EXPECT_EQ(Menu(), QStringList({"B", "-", "C", "A\tCtrl+K"}));
        ASSERT_TRUE(dialog.SelectBand("View"));
        dialog.AddCommand(m_application->Bar()->Tools()->Item("File.B"));
        dialog.MoveCurrent(-1);
    }
    Start();
    EXPECT_EQ(Menu(), QStringList({"B", "-", "C", "A\tCtrl+K"}));
    QMenu* view = m_application->Window().menuBar()->actions().at(1)->menu();
    Q_EMIT view->aboutToShow();
    m_clicked.clear();
    for (QAction* action : view->actions())
        if (action->text() == "B")
            action->trigger();
    EXPECT_EQ(m_clicked, "File.B");
    Bars().ResetBand(*m_application->Bar()->Bands()->Item("File"));
    EXPECT_EQ(Menu(), QStringList({"A\tCtrl+K", "B", "-", "C"}));
}

} // namespace
} // namespace corvane::desktop
