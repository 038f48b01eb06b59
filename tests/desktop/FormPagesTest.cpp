// Forms in the windows of a running application: bound to a page's class, with a place, recorded.
#include "corvane/Page.h"
#include "desktop/record/StepRecorder.h"
#include "desktop/windows/FailureView.h"
#include "tests/desktop/Acting.h"
#include "tests/forms/Ui.h"

#include <QLabel>
#include <QTableView>
#include <QTest>

using namespace corvane;
using namespace corvane::desktop;
using corvane::forms::Has;
using corvane::forms::Item;
using corvane::forms::Ui;

namespace {

std::string saved;

class Sample final : public Automation<Sample> {
    std::string m_name = "a";

public:
    static constexpr auto Members = Fields<&Sample::m_name>();
};

class DetailsPage final : public Page<DetailsPage> {
    std::string m_title;
    std::string m_notes;
    Ref<Rows> m_samples = New<Rows>();

public:
    DetailsPage() {
        for (int i = 0; i < 3; ++i)
            m_samples->Add(New<Sample>());
    }
    void Import() { m_title = "imported"; }
    [[nodiscard]] std::string TitleProblem() const { return m_title == "taken" ? "There is one." : ""; }
    void OnSave() override { saved = m_title; }

    static constexpr auto Members =
        Fields<&DetailsPage::m_title, &DetailsPage::m_notes, &DetailsPage::m_samples, &DetailsPage::Import>(
            Property("TitleProblem", &DetailsPage::TitleProblem));
};

constexpr const char* windows = R"(<Windows>
<Window Name="Details" Caption="Details" Type="Dialog" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="T.Details" Caption="Details" IsOptional="false" IsResizable="true" PositionOrder="1"/>
<Page PageProgID="T.Broken" Caption="Broken" IsOptional="true" IsResizable="true" PositionOrder="2"/></Window>
<Window Name="Own" Caption="Own" Type="Dialog" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="T.Page" Caption="Own" IsOptional="false" IsResizable="true"/></Window></Windows>)";

class FormPages : public ::testing::Test {
protected:
    FormPages() {
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Service("A", "T.A", windows, "IsStartService=\"true\"");
        Form("T.Details", forms::Item(0, "QLineEdit", "Title", Has("required", "bool", "true"), "Title:") +
                              forms::Item(1, "QPushButton", "Import", Has("text", "string", "Import")) +
                              forms::Item(2, "QLineEdit", "Notes") +
                              forms::Item(3, "QTableWidget", "Samples",
                                          "<property name=\"columns\" stdset=\"0\"><string>name</string></property>"));
        m_folder.Write("App/Forms/T.Broken.ui", "<ui version=\"4.0\">\n<widget");
        Form("T.Page",
             forms::Item(0, "QWidget", "Chart", "<property name=\"place\" stdset=\"0\"><bool>true</bool></property>"));
        ApplicationOptions options;
        options.folder = m_folder.App();
        options.withDialogs = false;
        options.personal = false;
        options.recorder = std::make_shared<StepRecorder>(m_folder.Path("steps.txt").toStdString());
        options.classes.emplace_back("T.A", [this] { return Ref<Object>(New<ActingService>(m_acts, "A")); });
        options.classes.emplace_back("T.Details", [] { return Ref<Object>(New<DetailsPage>()); });
        options.classes.emplace_back("T.Page", [this] { return Ref<Object>(New<ActingPage>(m_acts)); });
        m_application = std::make_unique<Application>(options);
        EXPECT_TRUE(m_application->Start());
        Turn();
    }

    void Form(const char* progID, const std::string& items) const {
        m_folder.Write(QString("App/Forms/%1.ui").arg(progID), QByteArray::fromStdString(Ui(items)));
    }
    static void Turn() {
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void Open(const char* window) const {
        m_application->ByHost([&] { Singleton::Framework()->WindowManager()->OpenWindow(window, nullptr); });
        Turn();
    }
    template <class W>
    [[nodiscard]] static W* Shown(const char* name) {
        for (QWidget* widget : QApplication::allWidgets())
            if (auto* found = qobject_cast<W*>(widget);
                found && found->isVisible() && (!*name || found->objectName() == name))
                return found;
        return nullptr;
    }

    AppFolder m_folder;
    Acts m_acts;
    std::unique_ptr<Application> m_application;
};

} // namespace

TEST_F(FormPages, AFormIsEnteredSavedAndRecorded) {
    for (const char* title : {"Sleep", " two  words "}) { // the second time, too
        Open("Details");
        auto* line = Shown<QLineEdit>("Title");
        ASSERT_TRUE(line);
        EXPECT_FALSE(m_application->ClickCommand("ok")) << "a title is required";
        QTest::keyClicks(line, "taken");
        EXPECT_FALSE(m_application->ClickCommand("ok"));
        Shown<QPushButton>("Import")->click();
        EXPECT_EQ(line->text(), "imported");
        line->selectAll();
        QTest::keyClicks(line, title);
        QTest::keyClicks(Shown<QLineEdit>("Notes"), "n"); // each field's last text is a step
        EXPECT_TRUE(m_application->ClickCommand("ok"));
        Turn();
        EXPECT_EQ(saved, title);
        EXPECT_FALSE(Shown<QLineEdit>("Title"));
    }
    m_application.reset();
    const QByteArray steps = m_folder.Read("steps.txt");
    for (const char* step : {"set Details 0 Title taken\npress Details 0 Import\nset Details 0 Title Sleep\n"
                             "set Details 0 Notes n\n",
                             "set Details 0 Title \" two  words \"\n"})
        EXPECT_TRUE(steps.contains(step)) << steps.constData();
}

TEST_F(FormPages, AFormThatCantBeReadSaysWhyAndTheOtherPagesWork) {
    Open("Details");
    EXPECT_TRUE(m_application->ShowPage(2));
    Turn();
    const auto* view = Shown<FailureView>("");
    ASSERT_TRUE(view);
    bool saysWhere = false;
    for (const auto* label : view->findChildren<QLabel*>())
        saysWhere |= label->text().contains("T.Broken.ui");
    EXPECT_TRUE(saysWhere);
    EXPECT_TRUE(m_application->ShowPage(1));
    QTest::keyClicks(Shown<QLineEdit>("Title"), "x");
    EXPECT_TRUE(m_application->ClickCommand("ok"));
    EXPECT_EQ(saved, "x");
}

TEST_F(FormPages, AClassFillsThePlaceOfItsForm) {
    Open("Own");
    EXPECT_TRUE(m_acts.Take().find("Page.NewWidget ") != std::string::npos);
    auto* place = Shown<QWidget>("Chart");
    ASSERT_TRUE(place);
    EXPECT_TRUE(place->findChild<QPushButton*>());
    EXPECT_TRUE(place->findChild<QLineEdit*>()->isVisible());
}

TEST_F(FormPages, ARowThatIsNotSelectedAnyMoreIsRecorded) {
    Open("Details");
    auto* table = Shown<QTableView>("Samples");
    ASSERT_TRUE(table);
    const QPoint second = table->visualRect(table->model()->index(1, 0)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, second);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::ControlModifier, second);
    EXPECT_TRUE(table->selectionModel()->selectedRows().isEmpty());
    m_application.reset();
    EXPECT_TRUE(m_folder.Read("steps.txt").contains("row Details 0 Samples 1\nrow Details 0 Samples none\n"))
        << m_folder.Read("steps.txt").constData();
}
