#include "desktop/documents/Documents.h"

#include "corvane/base/Automation.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/IQtPage.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/documents/WindowSwitcher.h"
#include "desktop/jobs/DesktopJobs.h"
#include "desktop/platform/HostParts.h"
#include "desktop/session/Layouts.h"
#include "desktop/style/ViewDock.h"
#include "desktop/windows/WindowForm.h"
#include "tests/desktop/AppFolder.h"
#include "tests/support/FreeWindows.h"

#include <QApplication>
#include <QLineEdit>
#include <QMdiArea>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <set>

namespace corvane::desktop {
namespace {

Ref<Window> OpenSheet(const std::string& key, const std::string& name = "Sheet") {
    auto window = Singleton::Framework()->WindowManager()->OpenWindow(
        name, nullptr, nullptr, WindowShowModeConstants::cvDefinitionDefault, WindowStateConstants::cvDefinitionDefault,
        MDIWindowTypeConstants::cvDefinitionDefault, WindowTypeConstants::cvDefinitionDefault,
        BusinessContextTypeConstants::cvDefinitionDefault, ShowApplyCommandConstants::cvDefinitionDefault, key);
    window->SetCaption("Sheet " + key);
    return window;
}

class ShelfService final : public Automation<ShelfService, IServiceAccess> {
public:
    Ref<IService> Service() override { return m_base; }
    bool RestoreWindow(const std::string& /*name*/, const std::string& key) {
        if (key != "gone")
            OpenSheet(key);
        return true;
    }
    void Start() {}
    static constexpr auto Members =
        MemberTable(Method("Start", &ShelfService::Start), Method("RestoreWindow", &ShelfService::RestoreWindow));

private:
    Ref<ServiceBase> m_base = New<ServiceBase>();
};

// A field that counts as changed while something is in it.
class FieldPage final : public IPageAccess, public IQtPage {
public:
    Ref<IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) override {
        m_field = new QLineEdit(parent);
        QObject::connect(m_field, &QLineEdit::textChanged, m_field, [this] { m_base->ValidityChanged(); });
        return m_field;
    }
    QWidget* FirstFocus() override { return m_field; }
    bool IsChanged() override { return m_field && !m_field->text().isEmpty(); }

private:
    QPointer<QLineEdit> m_field;
    Ref<PageBase> m_base = New<PageBase>();
};

class DocumentsTest : public ::testing::Test {
protected:
    DocumentsTest() {
        m_folder.Service("Shelf", "T.Shelf", R"(<Windows>
<Window Name="Sheet" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="T.Page" Caption="P" IsOptional="false" IsResizable="true"/></Window>
<Window Name="Tool" Caption="Tool" Type="Dialog" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="T.Page" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)",
                         "IsStartService=\"true\"");
    }
    ~DocumentsTest() override { m_application.reset(); }

    void Start() {
        m_application.reset();
        ApplicationOptions options;
        options.folder = m_folder.App();
        options.withDialogs = false;
        options.classes.emplace_back("T.Shelf", [] { return Ref<Object>(New<ShelfService>()); });
        options.classes.emplace_back("T.Page", [] { return Ref<Object>(New<FieldPage>()); });
        m_application = std::make_unique<Application>(options);
        ASSERT_TRUE(m_application->Start());
        m_application->Window().setGeometry(0, 0, 700, 560);
        Turn();
    }
    void Open(const std::string& keys) {
        for (const char key : keys)
            OpenSheet(std::string(1, key));
        Turn();
    }
    static void Turn() {
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    [[nodiscard]] Documents& All() const { return m_application->Window().OpenDocuments(); }
    [[nodiscard]] Ref<WindowForm> Sheet(char key) const {
        for (const auto& form : m_application->MainForm()->Forms())
            if (auto sheet = form.TryAs<WindowForm>(); sheet && sheet->ShownWindow()->Key() == std::string(1, key))
                return sheet;
        return nullptr;
    }
    [[nodiscard]] static std::string KeyOf(const WindowFrame& frame, const std::vector<Ref<Form>>& forms) {
        for (const auto& form : forms)
            if (const auto sheet = form.TryAs<WindowForm>(); sheet && sheet->Frame() == frame.Widget())
                return sheet->ShownWindow()->Key();
        return "?";
    }
    [[nodiscard]] std::vector<TabGroup*> Groups() const {
        std::vector<TabGroup*> groups;
        for (TabGroup* group : m_application->Window().Area().findChildren<TabGroup*>())
            if (group->isVisible())
                groups.push_back(group);
        const auto corner = [](const TabGroup* group) { return group->mapToGlobal(QPoint()); };
        std::sort(groups.begin(), groups.end(), [&](const TabGroup* a, const TabGroup* b) {
            return std::pair(corner(a).y(), corner(a).x()) < std::pair(corner(b).y(), corner(b).x());
        });
        return groups;
    }
    // The groups by rows: their tabs in order, the one in front in brackets, a pinned one with a dot, and "own:" what
    // is outside. Every window in a tab has to lie in its group.
    [[nodiscard]] std::string Look() const {
        std::string look;
        const auto forms = m_application->MainForm()->Forms();
        for (const TabGroup* group : Groups()) {
            look += look.empty() ? "" : " | ";
            for (const auto& entry : group->Entries()) {
                const std::string key = KeyOf(*entry.frame, forms) + (entry.isPinned ? "." : "");
                look += entry.frame == group->Front() ? "[" + key + "]" : entry.isShown ? key : "";
                const QRect room(group->mapToGlobal(QPoint()), group->size());
                const QWidget& window = *entry.frame->Widget();
                EXPECT_TRUE(room.contains(QRect(window.mapToGlobal(QPoint()), window.size()))) << key;
                EXPECT_EQ(window.width(), room.width()) << key;
            }
        }
        for (const auto& form : forms)
            if (const auto sheet = form.TryAs<WindowForm>(); sheet && sheet->Frame() && sheet->Frame()->isWindow())
                look += " own:" + sheet->ShownWindow()->Key();
        return look;
    }
    [[nodiscard]] std::string Active() const {
        const auto form = m_application->MainForm()->ActiveForm().TryAs<WindowForm>();
        return form ? form->ShownWindow()->Key() : "";
    }
    [[nodiscard]] DocumentBar& BarOf(char key) const {
        for (TabGroup* group : Groups())
            for (const auto& entry : group->Entries())
                if (entry.frame->Widget() == Sheet(key)->Frame())
                    return group->Bar();
        return *Sheet(key)->Frame()->findChild<DocumentBar*>(); // a window of its own
    }
    [[nodiscard]] QRect TabOf(char key) const {
        const DocumentBar& bar = BarOf(key);
        for (int tab = 0; tab < bar.count(); ++tab)
            if (bar.tabToolTip(tab).contains(QString("Sheet ") + key))
                return bar.tabRect(tab);
        return bar.tabRect(0);
    }
    static void Send(QWidget& widget, QEvent::Type type, const QPoint& global, Qt::MouseButton button) {
        const bool isRelease = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, widget.mapFromGlobal(global), global, type == QEvent::MouseMove ? Qt::NoButton : button,
                          isRelease ? Qt::MouseButtons() : Qt::MouseButtons(button), Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
    void Drag(char key, const QPoint& global, bool cancels = false) {
        DocumentBar& bar = BarOf(key);
        const QPoint from = bar.mapToGlobal(TabOf(key).center());
        Send(bar, QEvent::MouseButtonPress, from, Qt::LeftButton);
        Send(bar, QEvent::MouseMove, (from + global) / 2, Qt::LeftButton);
        Send(bar, QEvent::MouseMove, global, Qt::LeftButton);
        if (cancels)
            QTest::keyClick(&bar, Qt::Key_Escape);
        Send(bar, QEvent::MouseButtonRelease, global, Qt::LeftButton);
        Turn();
    }
    // A place in the group of that window, in hundredths of its size.
    [[nodiscard]] QPoint In(char key, int x, int y) const {
        const QWidget& window = *Sheet(key)->Frame();
        return window.mapToGlobal(QPoint(window.width() * x / 100, window.height() * y / 100));
    }
    void Choose(const std::string& command) {
        EXPECT_TRUE(m_application->Choose(command)) << command;
        Turn();
    }

    AppFolder m_folder;
    std::unique_ptr<Application> m_application;
};

TEST_F(DocumentsTest, TabsAreTheDefaultAndFollowTheirWindows) {
    Start();
    Open("ABC");
    EXPECT_EQ(Look(), "AB[C]");
    Sheet('A')->Activate();
    EXPECT_EQ(Look(), "[A]BC");
    QLineEdit* field = Sheet('A')->Frame()->findChild<QLineEdit*>();
    field->setText("x");
    EXPECT_EQ(BarOf('A').tabText(0), "Sheet A*");
    m_application->Dialogs().AddAnswer("Stay");
    QTest::mouseClick(&BarOf('A'), Qt::MiddleButton, {}, TabOf('A').center());
    EXPECT_EQ(Look(), "[A]BC") << "it asked, and stayed";
    Sheet('C')->Hide();
    EXPECT_EQ(Look(), "[A]B");
    Sheet('C')->Show(ShowMode::Modeless, nullptr);
    EXPECT_EQ(Look(), "AB[C]");
    QTest::mouseClick(&BarOf('C'), Qt::MiddleButton, {}, TabOf('C').center());
    Turn();
    EXPECT_EQ(Look(), "[A]B") << "the one used before, not the neighbour";
    EXPECT_EQ(Active(), "A");
    OpenSheet("D", "Tool");
    EXPECT_EQ(Look(), "[A]B") << "a dialog stays one";
    Sheet('B')->Activate();
    const auto children = m_application->Window().Area().viewport()->children();
    EXPECT_GT(children.indexOf(Sheet('D')->Frame()), children.indexOf(Sheet('B')->Frame())) << "above the tabs";
}

TEST_F(DocumentsTest, TabsAreDraggedWithinABarToGroupsAndSidesAndOut) {
    Start();
    Open("ABC");
    Drag('C', BarOf('A').mapToGlobal(QPoint(3, 5)));
    EXPECT_EQ(Look(), "[C]AB");
    Drag('C', In('C', 90, 50));
    EXPECT_EQ(Look(), "A[B] | [C]");
    Drag('A', In('C', 50, 95));
    EXPECT_EQ(Look(), "[B] | [C] | [A]");
    EXPECT_GT(In('A', 0, 0).y(), In('C', 0, 99).y());
    EXPECT_EQ(Active(), "A");
    Drag('A', In('B', 5, 50), true);
    EXPECT_EQ(Look(), "[B] | [C] | [A]") << "Esc";
    Drag('A', In('B', 50, 50));
    EXPECT_EQ(Look(), "B[A] | [C]");
    Drag('C', BarOf('B').mapToGlobal(TabOf('B').topRight() + QPoint(1, 5)));
    EXPECT_EQ(Look(), "B[C]A");

    QLineEdit* field = Sheet('C')->Frame()->findChild<QLineEdit*>();
    field->setText("kept");
    Drag('C', m_application->Window().frameGeometry().bottomRight() + QPoint(200, 40));
    EXPECT_EQ(Look(), "B[A] own:C");
    EXPECT_EQ(Active(), "C");
    EXPECT_EQ(Sheet('C')->Frame()->findChild<QLineEdit*>(), field);
    EXPECT_EQ(field->text(), "kept");
    EXPECT_TRUE(field->isVisible());
    Drag('A', m_application->Window().frameGeometry().bottomRight() + QPoint(200, 40));
    Drag('B', m_application->Window().frameGeometry().bottomRight() + QPoint(200, 40));
    EXPECT_EQ(Groups().size(), 0U);
    Drag('C', m_application->Window().Area().mapToGlobal(QPoint(200, 200)));
    EXPECT_EQ(Groups().size(), 1U) << "back into an empty area";
    EXPECT_TRUE(field->isVisible());
    m_application->Dialogs().AddAnswer("Discard");
    Sheet('C')->RequestClose();
    Sheet('A')->Frame()->close();
    Turn();
    EXPECT_EQ(Active(), "B");
}

TEST_F(DocumentsTest, CommandsDoWithoutAMouseAndMouseAndCommandsSparePinnedTabs) {
    Start();
    Open("ABCD");
    Choose("Window.SplitRight");
    EXPECT_EQ(Look(), "AB[C] | [D]");
    Choose("Window.GoToNextGroup");
    EXPECT_EQ(Active(), "C");
    Choose("Window.SplitBelow");
    EXPECT_EQ(Look(), "A[B] | [D] | [C]");
    Choose("Window.MoveToNextGroup");
    EXPECT_EQ(Look(), "A[B] | D[C]") << "the empty group is gone";
    Choose("Window.OwnWindow");
    EXPECT_EQ(Look(), "A[B] | [D] own:C");
    Choose("Window.Dock");
    Choose("Window.Pin");
    const std::string docked = Look();
    EXPECT_TRUE(docked.find("[C.]") != std::string::npos) << docked;
    m_application->MainForm()->Arrange(Arrangement::TileVertical);
    Turn();
    EXPECT_EQ(Groups().size(), 4U);
    m_application->MainForm()->Arrange(Arrangement::Cascade);
    Turn();
    EXPECT_EQ(Look().substr(0, 4), "[C.]") << Look();
    Sheet('B')->Activate();
    Choose("Window.CloseOthers");
    EXPECT_EQ(Look(), "C.[B]");
    for (const Arrangement how : {Arrangement::TileVertical, Arrangement::TileHorizontal, Arrangement::Cascade}) {
        m_application->MainForm()->Arrange(how);
        Turn();
        std::set<int> lefts; // of the groups: two where they are side by side
        for (const TabGroup* group : Groups())
            lefts.insert(group->mapToGlobal(QPoint()).x());
        EXPECT_EQ(lefts.size(), how == Arrangement::TileVertical ? 2U : 1U);
        EXPECT_EQ(Groups().size(), how == Arrangement::Cascade ? 1U : 2U);
    }
    Open("EF");
    const auto key = [&](Qt::Key pressed) {
        QTest::keyClick(m_application->Window().windowHandle(), pressed, Qt::ControlModifier);
        return Active();
    };
    EXPECT_EQ(key(Qt::Key_Tab), "E") << "Ctrl is let go at once: the one used before";
    EXPECT_EQ(key(Qt::Key_Tab), "F");
    std::string chosen;
    std::vector<WindowSwitcher::Entry> entries;
    for (const char* name : {"1", "2", "3"})
        entries.push_back({name, {}, [&chosen, name] { chosen += name; }});
    QWindow* const window = m_application->Window().windowHandle();
    new WindowSwitcher(entries, 1, m_application->Window(), true);
    QTest::keyPress(window, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(chosen, "") << "nothing while Ctrl is held";
    QTest::keyRelease(window, Qt::Key_Tab, Qt::ControlModifier); // and Ctrl's
    EXPECT_EQ(chosen, "3");
    new WindowSwitcher(entries, -1, m_application->Window(), true);
    QTest::keyClick(window, Qt::Key_Escape, Qt::ControlModifier);
    EXPECT_EQ(chosen, "3");
}

TEST_F(DocumentsTest, GroupsPinsAndOwnWindowsComeBackAndWhatIsDamagedCostsNothing) {
    Start();
    Open("ABCD");
    Choose("Window.Pin");
    Drag('A', In('D', 95, 50));
    Drag('B', In('A', 50, 95));
    Sheet('C')->Activate();
    Choose("Window.OwnWindow");
    const std::string look = Look();
    EXPECT_EQ(look, "[D.] | [A] | [B] own:C");
    const int width = Groups().front()->width();
    m_application->Window().close();
    Start();
    EXPECT_EQ(Look(), look);
    EXPECT_NEAR(Groups().front()->width(), width, 8);
    EXPECT_EQ(Active(), "C");
    m_application->Window().close();
    for (const char* groups :
         {R"([])", R"({"parts":[]})", R"({"parts":[{"parts":[{}],"sizes":["x"]},{"tabs":[9,-1,1,1]}]})",
          R"({"split":1,"parts":[{"tabs":[0,1],"front":7,"pinned":3}]})"}) {
        m_folder.Write("corvane/App/session.json",
                       R"({"version":1,"windows":[{"name":"Sheet","key":"A"},{"name":"Sheet","key":"B"},
                           {"name":"Sheet","key":"gone"}],"groups":)" +
                           QByteArray(groups) + "}");
        Start();
        EXPECT_EQ(m_application->Failures().ShownCount(), 0) << groups;
        for (const char key : {'A', 'B'})
            EXPECT_TRUE(Sheet(key)->Frame()->isVisible() && !Look().empty()) << groups << key;
    }
}

TEST_F(DocumentsTest, WindowsKeepTheirFreePlacesAndStatesWhileTheyAreInTabs) {
    ChooseFreeWindows();
    Start();
    Open("ABC");
    Sheet('A')->Frame()->setGeometry(31, 17, 320, 240);
    const auto place = std::tuple(Sheet('A')->Left(), Sheet('A')->Top(), Sheet('A')->Width(), Sheet('A')->Height());
    m_application->Window().SetTabbedWindows(true);
    Turn();
    EXPECT_EQ(Look(), "AB[C]");
    Choose("Window.OwnWindow");
    Sheet('A')->SetWindowState(FormState::Maximized);
    Sheet('B')->SetWindowState(FormState::Minimized);
    Turn();
    EXPECT_EQ(std::tuple(Sheet('A')->Left(), Sheet('A')->Top(), Sheet('A')->Width(), Sheet('A')->Height()), place);
    Sheet('A')->Activate();
    EXPECT_EQ(Look(), "[A]B own:C");
    m_application->Window().SetTabbedWindows(false);
    Turn();
    EXPECT_EQ(Look(), "");
    EXPECT_TRUE(Sheet('A')->Frame()->isMaximized());
    EXPECT_TRUE(Sheet('B')->Frame()->isMinimized());
    Sheet('A')->SetWindowState(FormState::Normal);
    EXPECT_EQ(Sheet('A')->Frame()->geometry(), QRect(31, 17, 320, 240));
    EXPECT_FALSE(Sheet('C')->Frame()->isWindow());
}

TEST_F(DocumentsTest, ViewsAreDocksAndNamedLayoutsBringThemBackWithTheGroups) {
    Start();
    Open("ABC");
    Drag('C', In('C', 95, 50));
    (void)m_application->Personal().ShowLog();
    (void)m_application->Jobs().ShowView();
    const auto view = [this](const char* name) { return m_application->Window().findChild<ViewDock*>(name); };
    EXPECT_TRUE(m_application->Window().tabifiedDockWidgets(view("Log")).contains(view("Jobs")));
    Layouts& layouts = m_application->Personal().NamedLayouts();
    layouts.Save("Work");
    view("Log")->close();
    view("Jobs")->setFloating(true);
    m_application->Window().addDockWidget(Qt::RightDockWidgetArea, &m_application->Window().ExplorerDock());
    Choose("Window.ResetLayout");
    EXPECT_EQ(Look(), "AB[C]");
    EXPECT_FALSE(view("Jobs")->isFloating());
    EXPECT_EQ(m_application->Window().dockWidgetArea(&m_application->Window().ExplorerDock()), Qt::LeftDockWidgetArea);
    layouts.Choose("Work");
    Turn();
    EXPECT_EQ(Look(), "A[B] | [C]");
    EXPECT_TRUE(view("Log")->IsOpen() && view("Jobs")->IsOpen());
    const QString file = m_folder.Path("a.layout");
    EXPECT_EQ(layouts.Export("Work", file).toStdString(), "");
    for (const char* refused : {"{}", R"({"corvane": "layout", "version": 2, "name": "Later", "layout": {}})"}) {
        m_folder.Write("b.layout", refused);
        EXPECT_NE(layouts.Import(m_folder.Path("b.layout")).toStdString(), "") << refused;
    }
    view("Jobs")->close();
    m_application->Window().close();
    Start();
    EXPECT_TRUE(view("Log")->IsOpen()) << "as the session left it";
    EXPECT_FALSE(view("Jobs") && view("Jobs")->IsOpen());
    Layouts& kept = m_application->Personal().NamedLayouts();
    EXPECT_EQ(kept.Import(file).toStdString(), "");
    EXPECT_EQ(kept.Names().join(' ').toStdString(), "Work Work (2)");
    kept.Rename("Work (2)", "Work");
    kept.Remove("Work");
    EXPECT_EQ(kept.Names().join(' ').toStdString(), "Work (2)");
    m_application->Window().SetTabbedWindows(false);
    for (const char* command : {"SplitRight", "MoveToNextGroup", "OwnWindow", "Pin", "CloseOthers", "Dock"})
        EXPECT_FALSE(m_application->Choose(std::string("Window.") + command)) << "nothing comes of it: " << command;
}

} // namespace
} // namespace corvane::desktop
