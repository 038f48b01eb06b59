#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/application/MainWindow.h"
#include "desktop/documents/DocumentBar.h"
#include "desktop/forms/FormWidget.h"
#include "desktop/record/StepRecorder.h"
#include "headless/FormJson.h"
#include "headless/FormPages.h"
#include "headless/Steps.h"
#include "tests/forms/Ui.h"
#include "tests/preview/PreviewFixture.h"

#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabBar>
#include <algorithm>
#include <deque>
#include <fstream>
#include <random>
#include <sstream>

namespace corvane::desktop {
namespace {

// What stand-ins have heard, a line a call.
std::string CallsOf(const std::vector<inspect::RecordedCall>& calls) {
    std::string text;
    for (const auto& call : calls)
        if (call.member != "GetUnsavedItems") // which the desktop asks at the end of the session
            text += call.object + "." + call.member + "\n";
    return text;
}

class RecordTest : public PreviewFixture {
protected:
    // A preview with stand-ins for all, whose steps are kept.
    PreviewWindow& PreviewThatRecords() {
        PreviewOptions options;
        options.standIns = true;
        options.recorder = std::make_shared<StepRecorder>(m_steps);
        return Preview(options);
    }
    // The session at the desktop, with stand-ins for all, whose calls are kept.
    std::unique_ptr<Application> Start() {
        ApplicationOptions options;
        options.folder = m_folder.App();
        options.withDialogs = false;
        options.personal = false;
        options.recorder = m_recorder = std::make_shared<StepRecorder>(m_steps);
        options.objects = [this](Ref<IObjectFactory> real, Ref<PluginFactory> plugins) -> Ref<IObjectFactory> {
            return New<PreviewFactory>(m_record, std::make_shared<inspect::StandInFile>(), std::move(real),
                                       std::move(plugins), true);
        };
        auto application = std::make_unique<Application>(options);
        EXPECT_TRUE(application->Start());
        QApplication::processEvents();
        return application;
    }
    [[nodiscard]] std::string Recorded() const {
        std::ifstream file(m_steps);
        std::string text;
        for (std::string line; std::getline(file, line);)
            text += line.starts_with("# A session") ? "" : line + "\n";
        return text;
    }
    // What the same steps bring about without a display.
    [[nodiscard]] std::string Replayed() const {
        std::ifstream file(m_steps);
        inspect::ModelHost host({m_folder.App(), true, nullptr});
        EXPECT_TRUE(host.Start());
        inspect::TakeAll(host, inspect::ReadSteps(file, m_steps));
        EXPECT_FALSE(host.FirstFailure()) << host.FirstFailure()->Description;
        return CallsOf(host.Recorded().calls);
    }
    // As the preview does: a step of the host's, and what it brings about.
    void OpenAsStep(Application& application, const char* window) const {
        m_recorder->ByHost((QApplication::activeModalWidget() ? "  open " : "open ") + std::string(window));
        ViewState::OpenWindow open;
        open.name = window;
        ViewState::OpenAgain(application, open);
    }
    static void Click(const Application& application, int tab, const char* key, Qt::MouseButton button) {
        QApplication::processEvents();
        ExplorerTree* tree = const_cast<Application&>(application).Window().Explorer().Page(tab)->Tree();
        tree->Sync();
        const QModelIndex index = IndexOf(*tree, key);
        ASSERT_TRUE(index.isValid()) << key;
        QTest::mouseClick(tree->viewport(), button, {}, tree->visualRect(index).center());
    }

    const std::string m_steps = m_folder.Path("steps.txt").toStdString();
    std::shared_ptr<StepRecorder> m_recorder;
    Ref<inspect::Record> m_record = New<inspect::Record>();
};

TEST_F(RecordTest, SessionThroughWidgetsIsTakenAgainWithTheSameCalls) {
    auto application = Start();
    MainWindow& window = application->Window();
    application->Failures().Guard([&] { Singleton::Framework()->NavigationManager()->ExplorerManager()->Populate(); });
    application->Window().Flush();
    Click(*application, 0, "Owls", Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_K, Qt::ControlModifier);
    for (QAction* title : window.menuBar()->actions())
        if (title->text() == "&File") {
            window.menuBar()->setActiveAction(title);
            EntryOf(*title->menu(), "Feed")->trigger();
            title->menu()->close();
        }
    QTimer choose; // from the context menu, while the library waits for it
    QObject::connect(&choose, &QTimer::timeout, [&] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            choose.stop();
            menu->setActiveAction(menu->actions().first());
            QTest::keyClick(menu, Qt::Key_Return);
        }
    });
    choose.start(5);
    Click(*application, 0, "Owls", Qt::RightButton);
    EXPECT_TRUE(Until([&] { return !choose.isActive(); }));
    window.Explorer().TabBar()->setCurrentIndex(1);
    window.ExplorerDock().close();
    EXPECT_TRUE(window.close());
    application.reset();
    EXPECT_EQ(Recorded(), std::string("node 0 Owls\nclick File.Count\nclick File.Feed\ncontextmenu 0 Owls\nclick "
                                      "Context.Owls.Hoot\ntab 1\ncloseband Explorer\nexit\n"));
    const std::string seen = CallsOf(m_record->calls);
    m_record->calls.clear();
    m_folder.Write("steps.txt", QByteArray("populate\n") + m_folder.Read("steps.txt"));
    EXPECT_EQ(Replayed(), seen);
}

// Pages, commands, Escape and the close box of modal windows, one over another too.
TEST_F(RecordTest, WizardsAndDialogsAreLedThroughAgain) {
    Edit("Birds", "<Window Name=\"Ask\"", R"(<Window Name="Guide" Caption="Guide" Type="Wizard" State="Normal"
IsMDIChild="false" IsModal="true"><Page PageProgID="BirdsSvc.First" Caption="One" IsOptional="false" IsResizable="true"/>
<Page PageProgID="BirdsSvc.Second" Caption="Two" IsOptional="false" IsResizable="true"/></Window><Window Name="Ask")");
    auto application = Start();
    const auto press = [](const char* text) {
        return [text](QWidget& modal) {
            for (auto* button : modal.findChildren<QPushButton*>())
                if (button->isVisible() && button->text().remove('&').startsWith(text))
                    return button->click();
            ADD_FAILURE() << "no button " << text;
        };
    };
    std::deque<std::function<void(QWidget&)>> person{press("Next"),
                                                     press("Previous"),
                                                     [&](QWidget&) { EXPECT_TRUE(application->ShowPage(2)); },
                                                     [&](QWidget& modal) {
                                                         QTimer::singleShot(0, &modal,
                                                                            [&] { OpenAsStep(*application, "Ask"); });
                                                     }, // returns when that one is closed
                                                     [](QWidget& modal) { QTest::keyClick(&modal, Qt::Key_Escape); },
                                                     press("Finish"),
                                                     press("OK"),
                                                     press("Cancel"),
                                                     [](QWidget& modal) { modal.close(); }};
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || person.empty())
            return;
        const auto next = person.front();
        person.pop_front();
        next(*modal);
    });
    tick.start(5);
    OpenAsStep(*application, "Guide");
    for (int i = 0; i < 3; ++i)
        OpenAsStep(*application, "Ask");
    tick.stop();
    EXPECT_TRUE(person.empty());
    EXPECT_TRUE(application->Window().close());
    application.reset();
    EXPECT_EQ(Recorded(), "open Guide\n  command Guide Next\n  command Guide Previous\n  page Guide 1\n"
                          "  open Ask\n  close Ask\n  command Guide Finish\n"
                          "open Ask\n  command Ask OK\nopen Ask\n  command Ask Cancel\nopen Ask\n  close Ask\nexit\n");
    // How often pages are asked differs. Without a display no page hears that another window has come over it, and a
    // dialog saves its pages also when nothing has changed.
    const auto toldFunction = [](const std::string& callsText) {
        std::istringstream calls(callsText);
        std::string told;
        for (std::string line; std::getline(calls, line);)
            if (!line.ends_with(".Validate") && line != "BirdsSvc.Page#2.Save" &&
                !(line.starts_with("BirdsSvc.Second#1.") && line.ends_with("ctivate")))
                told += line + "\n";
        return told;
    };
    const std::string seen = toldFunction(CallsOf(m_record->calls));
    m_record->calls.clear();
    EXPECT_NE(seen.find("BirdsSvc.Second#1.Save\n"), std::string::npos) << seen;
    EXPECT_EQ(toldFunction(Replayed()), seen);
}

TEST_F(RecordTest, WindowThatIsBroughtToTheFrontIsAgain) {
    Edit("Birds", "<Window Name=\"Ask\"", R"(<Window Name="Other" Caption="Other" Type="Window" State="Normal"
IsMDIChild="true" IsModal="false"><Page PageProgID="BirdsSvc.Other" Caption="One" IsOptional="false" IsResizable="true"/>
</Window><Window Name="Ask")");
    EXPECT_THROW(StepRecorder("/nowhere/steps"), Failure);
    PreviewWindow& preview = PreviewThatRecords();
    preview.OpenWindow("Sheet");
    EXPECT_TRUE(App().ShowPage(2));
    EXPECT_TRUE(App().Choose("File.Count"));
    preview.OpenWindow("Other");
    QApplication::processEvents();
    for (auto* bar : Window().findChildren<DocumentBar*>())
        for (int tab = 0; tab < bar->count(); ++tab)
            if (bar->tabText(tab).startsWith("Sheet"))
                QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
    QApplication::processEvents();
    EXPECT_NE(App().AsText().find("Window Sheet (window, active)"), std::string::npos) << App().AsText();
    preview.OpenWindow("Other"); // is open
    Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Tally\"");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_NE(App().AsText().find("Window Other (window, active)"), std::string::npos) << App().AsText();
    EXPECT_TRUE(App().ClickCommand("close"));
    EXPECT_TRUE(preview.close());
    EXPECT_EQ(Recorded(),
              "populate\nopen Sheet\npage Sheet 1\nclick File.Count\nopen Other\nactivate Sheet\nactivate Other\n"
              "# Here the definitions were changed.\nclose Other\nexit\n");
    m_preview.reset();
    const std::string calls = Replayed();
    const std::size_t again =
        calls.find("BirdsSvc.Other#1.Activate\nBirdsSvc.Page#2.Activate\nBirdsSvc.Other#1.Activate\n");
    EXPECT_NE(again, std::string::npos) << calls;
}

// The reload of the preview closes what is open and opens it again, which no person has done.
TEST_F(RecordTest, WhatAReloadClosesAndOpensIsNoStep) {
    PreviewWindow& preview = PreviewThatRecords();
    int stage = 0;
    QTimer person;
    QObject::connect(&person, &QTimer::timeout, [&] {
        if (stage == 0 && QApplication::activePopupWidget()) {
            Edit("Birds", "Caption=\"#Hoot\"", "Caption=\"#Screech\"");
            stage = 1;
        } else if (stage == 1 && preview.ShownCount() == 2 && QApplication::activePopupWidget()) {
            stage = 2;
            QApplication::activePopupWidget()->close();
        } else if (stage == 2 && QApplication::activeModalWidget()) {
            stage = 3;
            Edit("Birds", "Caption=\"Ask\"", "Caption=\"Ask now\"");
        } else if (stage == 3 && preview.ShownCount() == 3 && QApplication::activeModalWidget()) {
            stage = 4;
            EXPECT_TRUE(App().ClickCommand("ok"));
        }
    });
    person.start(5);
    ClickNode(0, "Owls", Qt::RightButton);
    ASSERT_TRUE(Until([&] { return stage == 2; })) << stage;
    preview.OpenWindow("Ask");
    ASSERT_TRUE(Until([&] { return stage == 4; })) << stage;
    Rest();
    EXPECT_TRUE(preview.close());
    const std::string changed = "# Here the definitions were changed.\n";
    EXPECT_EQ(Recorded(),
              "populate\ncontextmenu 0 Owls\n" + changed + "open Ask\n" + changed + "  command Ask OK\nexit\n");
    m_preview.reset();
    EXPECT_NE(Replayed().find("BirdsSvc.Page#1.Save\n"), std::string::npos);
}

// A field of each kind that is entered, in a form and in two tabs of it.
std::string AllKinds() {
    using forms::Has;
    using forms::Item;
    const auto Choices = [](const std::string& words) {
        return "<item>" + Has("text", "string", words) + "</item><item>" + Has("text", "string", "two words") +
               "</item>";
    };
    return forms::Ui(
        Item(0, "QLineEdit", "Title", Has("required", "bool", "true"), "Title") + Item(1, "QSpinBox", "Count") +
        Item(2, "QDoubleSpinBox", "Mass") + Item(3, "QDateEdit", "Day") + Item(4, "QPlainTextEdit", "Notes") +
        Item(5, "QCheckBox", "Seen") + Item(6, "QComboBox", "Colour", Choices("red")) +
        Item(7, "QComboBox", "Place", Has("editable", "bool", "true") + Choices("here")) +
        Item(8, "QListWidget", "Many", Has("selectionMode", "enum", "MultiSelection") + Choices("a")) +
        Item(9, "QSlider", "Level", Has("orientation", "enum", "Qt::Horizontal")) +
        Item(10, "QLineEdit", "Code", Has("pattern", "string", "[a-z]+")) +
        Item(11, "QLineEdit", "Moment", Has("kind", "string", "datetime")) + Item(12, "QPushButton", "Go") +
        Item(13, "QGroupBox", "More",
             Has("checkable", "bool", "true") +
                 "<layout class=\"QVBoxLayout\"><item><widget class=\"QLineEdit\" name=\"Inner\"/></item></layout>"));
}

// One thing that a user does to a form in front, or to the window around it.
void ActInForm(Application& application, std::mt19937& random) {
    const auto Any = [&](std::size_t count) { return static_cast<int>(random() % count); };
    static const QStringList texts{"12",  "1.5",   "abc", "",          "2026-02-30",       "2026-02-28",
                                   " x ", "\"q\"", "[1]", "two words", "2026-02-28 18:30", "999999",
                                   "-3"};
    QList<QWidget*> fields;
    for (auto* form : application.Window().findChildren<FormWidget*>())
        for (QWidget* widget : form->findChildren<QWidget*>())
            if (widget->isVisible() && widget->isEnabled() && form->Model().Find(widget->objectName().toStdString()))
                fields.append(widget);
    ASSERT_FALSE(fields.isEmpty());
    QWidget* field = fields[Any(static_cast<std::size_t>(fields.size()))];
    field->setFocus();
    auto* box = qobject_cast<QComboBox*>(field);
    auto* line = qobject_cast<QLineEdit*>(field) ? qobject_cast<QLineEdit*>(field) : field->findChild<QLineEdit*>();
    if (Any(8) == 0) {
        EXPECT_TRUE(application.ShowPage(1 + Any(2)));
    } else if (box && (!box->isEditable() || Any(2) == 0)) {
        box->setCurrentIndex(Any(static_cast<std::size_t>(box->count())));
    } else if (auto* button = qobject_cast<QAbstractButton*>(field)) {
        button->click();
    } else if (auto* group = qobject_cast<QGroupBox*>(field)) {
        group->setChecked(!group->isChecked());
    } else if (auto* list = qobject_cast<QListWidget*>(field)) {
        QListWidgetItem* item = list->item(Any(2));
        item->setCheckState(item->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    } else if (auto* slider = qobject_cast<QSlider*>(field)) {
        slider->setValue(Any(100));
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field)) {
        QTest::keyClicks(lines, texts[Any(13)]);
        QTest::keyClick(lines, Qt::Key_Return);
    } else if (line) {
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, texts[Any(13)]);
    }
    if (Any(3) == 0 && QApplication::focusWidget())
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
}

TEST_F(RecordTest, RandomSessionsInFormsAreTakenAgain) {
    m_folder.Write("App/Forms/BirdsSvc.Page.ui", QByteArray::fromStdString(AllKinds()));
    for (unsigned seed = 1; seed <= 20; ++seed) {
        std::mt19937 random(seed);
        auto application = Start();
        OpenAsStep(*application, "Sheet");
        QApplication::processEvents();
        for (int act = 0; act < 40; ++act)
            ActInForm(*application, random);
        for (const int page : {2, 1}) // each has its form on screen
            EXPECT_TRUE(application->ShowPage(page));
        std::vector<std::string> shown;
        for (const auto* form : application->Window().findChildren<FormWidget*>())
            shown.push_back(inspect::FieldsJson(form->Model()).dump(1));
        std::sort(shown.begin(), shown.end());
        m_recorder->Leave(); // what the end of the desktop brings about is no step
        std::ifstream file(m_steps);
        inspect::ModelHost host({m_folder.App(), true, nullptr});
        ASSERT_TRUE(host.Start());
        inspect::TakeAll(host, inspect::ReadSteps(file, m_steps));
        std::vector<std::string> again;
        for (const auto& window : Singleton::Framework()->WindowManager()->Windows())
            for (const inspect::ShownPage& page : inspect::PagesOf(host, window))
                again.push_back(inspect::FieldsJson(*page.form->Model()).dump(1));
        std::sort(again.begin(), again.end());
        EXPECT_EQ(again, shown) << "seed " << seed << "\n" << Recorded();
    }
}

} // namespace
} // namespace corvane::desktop
