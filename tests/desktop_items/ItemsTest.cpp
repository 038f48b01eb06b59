// Several items, drops and lazy folders in a running application: what users do, and what the items' classes hear.
#include "corvane/Explorer.h"
#include "corvane/Service.h"
#include "corvane/core/CorvaneMain.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/explorer/ExplorerPage.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/explorer/ExplorerTree.h"
#include "desktop/platform/HostParts.h"
#include "desktop/record/StepRecorder.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QMimeData>
#include <QTest>
#include <QUrl>

using namespace corvane;
using namespace corvane::desktop;

namespace {

std::string heard;
bool failsToLoad = false;

std::string Names(const std::vector<Ref<Object>>& items) {
    std::string names;
    for (const auto& item : items)
        names += " " + CorvaneMain::QueryExplorerItem(item)->Name();
    return names;
}

class Bird final : public ExplorerItem<Bird> {
public:
    using ExplorerItem::ExplorerItem;
    bool TakesSeveral(const std::string& action) { return action == "Delete"; }
    void OnDelete() { heard += "delete" + Names(SelectedItems()) + ";"; }
    void OnRename() { heard += "rename;"; }

    static constexpr auto Members = Methods<&Bird::OnDelete, &Bird::OnRename, &Bird::TakesSeveral>();
};

class Nest final : public ExplorerItem<Nest> {
public:
    using ExplorerItem::ExplorerItem;
    std::string CanDrop(const Ref<Dropped>& dropped) { return dropped->Count() > 2 ? "A nest has room for two." : ""; }
    void Drop(const Ref<Dropped>& dropped) {
        heard += (dropped->Copies() ? "copy" : "drop") + Names(dropped->Items());
        for (const std::string& file : dropped->Files())
            heard += " " + file;
        heard += ";";
        if (dropped->Count() == 2)
            Fail(5, "The branch breaks");
    }

    static constexpr auto Members = Methods<&Nest::CanDrop, &Nest::Drop>();
};

class Wood final : public ExplorerItem<Wood> {
public:
    using ExplorerItem::ExplorerItem;
    void LazyChildren(const Ref<NewChildren>& children) {
        heard += "load;";
        children->Add(New<Bird>("Owl"), "Bird");
        children->Add(New<Wood>("Deep wood"), "Grove");
        if (failsToLoad)
            children->Add(New<Bird>("Owl"), "Bird"); // its name is taken
    }

    static constexpr auto Members = Methods<&Wood::LazyChildren>();
};

class Aviary final : public ExplorerItem<Aviary> {
    void OnInitialize() override {
        for (const char* name : {"Wren", "Robin", "Finch"})
            AddChild(New<Bird>(name));
    }
};

class Birds final : public Service<Birds> {
public:
    void Start() { Explorer()->Populate(); }
    bool OpenFile(const std::string& path) {
        heard += "open " + path + ";";
        return path != "/no.csv";
    }

    static constexpr auto Members = Methods<&Birds::Start, &Birds::OpenFile>();
};

constexpr const char* birds = R"(<ExplorerItems>
<ExplorerItem Name="Aviary" ProgID="T.Aviary" Type="Folder" PositionOrder="1"/>
<ExplorerItem Name="Bird" Type="Default" Parent="Aviary"><ActionItems>
<ActionItem Name="Delete" Action="OnDelete"/><ActionItem Name="Rename" Action="OnRename"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Delete" Path="File" PositionOrder="1" Caption="Delete"/>
<MenuItem Type="MenuItem" ActionItem="Rename" Path="File" PositionOrder="2" Caption="Rename"/></Menus></ExplorerItem>
<ExplorerItem Name="Nest" ProgID="T.Nest" Type="Folder" Parent="Aviary" PositionOrder="2"/>
<ExplorerItem Name="Wood" ProgID="T.Wood" Type="Folder" Parent="Aviary" PositionOrder="3"/>
<ExplorerItem Name="Grove" Type="FolderChild" Parent="Wood"/></ExplorerItems>)";

class ItemsTest : public ::testing::Test {
protected:
    ItemsTest() {
        heard.clear();
        failsToLoad = false;
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Service("Birds", "T.Birds", birds, "IsStartService=\"true\"");
        m_options.folder = m_folder.App();
        m_options.withDialogs = false;
        m_options.personal = false;
        m_options.recorder = std::make_shared<StepRecorder>(m_folder.Path("steps.txt").toStdString());
        m_options.classes = {{"T.Birds", [] { return Ref<Object>(New<Birds>()); }},
                             {"T.Aviary", [] { return Ref<Object>(New<Aviary>()); }},
                             {"T.Nest", [] { return Ref<Object>(New<Nest>()); }},
                             {"T.Wood", [] { return Ref<Object>(New<Wood>()); }}};
        m_application = std::make_unique<Application>(m_options);
        EXPECT_TRUE(m_application->Start());
        Turn();
    }
    ~ItemsTest() override { m_application.reset(); }

    static void Turn() {
        QApplication::processEvents();
        QApplication::processEvents();
    }
    ExplorerTree& View() { return *m_application->Window().Explorer().Page(0)->Tree(); }
    Ref<Node> NodeOf(const char* key) { return View().Tree()->GetNodes()->Find(key); }
    QPoint PointOf(const char* key) { return View().visualRect(View().IndexOf(NodeOf(key).Get())).center(); }
    void Click(const char* key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(View().viewport(), Qt::LeftButton, modifiers, PointOf(key));
        Turn();
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&View(), static_cast<Qt::Key>(key), modifiers);
        Turn();
    }
    // What a file manager would send; true when the drop was accepted.
    static bool DropFiles(QWidget& widget, const QPoint& point, const QStringList& files) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& file : files)
            urls << QUrl::fromLocalFile(file);
        data.setUrls(urls);
        QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &enter);
        QDragMoveEvent move(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        if (enter.isAccepted())
            QApplication::sendEvent(&widget, &move);
        QDropEvent drop(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        if (enter.isAccepted() && move.isAccepted())
            QApplication::sendEvent(&widget, &drop);
        Turn();
        return drop.isAccepted() && enter.isAccepted() && move.isAccepted();
    }
    [[nodiscard]] std::string Message() const {
        const auto& shown = m_application->Messages().Shown();
        return shown.empty() ? "" : shown.back().text.toStdString();
    }
    [[nodiscard]] QString Log() const { return m_folder.Read("corvane/App/errors.log"); }
    static std::string Heard() { return std::exchange(heard, {}); }

    AppFolder m_folder;
    ApplicationOptions m_options;
    std::unique_ptr<Application> m_application;
};

} // namespace

TEST_F(ItemsTest, ACommandTakesAllThatAreSelectedOrSaysThatItIsForOne) {
    Click("Bird.Robin");
    Click("Bird.Wren", Qt::ControlModifier);
    EXPECT_TRUE(m_application->Choose("File.Delete"));
    EXPECT_EQ(Heard(), "delete Wren Robin;");
    EXPECT_FALSE(m_application->Choose("File.Rename"));
    EXPECT_EQ(Message(), "“Rename” is for one item, and 2 are selected.");
    Click("Bird.Robin");
    EXPECT_TRUE(m_application->Choose("File.Rename"));
    EXPECT_TRUE(m_application->Choose("File.Delete"));
    EXPECT_EQ(Heard(), "rename;delete Robin;");
    Click("Aviary", Qt::ControlModifier); // a class that says nothing of it
    EXPECT_FALSE(m_application->Choose("File.Delete"));
}

TEST_F(ItemsTest, AreCarriedByKeysToAnItemThatTakesThem) {
    View().setFocus();
    Click("Bird.Robin");
    Key(Qt::Key_M, Qt::ControlModifier);
    EXPECT_TRUE(View().IsCarrying());
    Key(Qt::Key_Up); // birds take nothing
    Key(Qt::Key_Return);
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(View().Tree()->SelectedItem(), NodeOf("Bird.Robin"));
    const auto carry = [&](int key, Qt::KeyboardModifiers modifiers = {}) {
        Key(Qt::Key_M, Qt::ControlModifier);
        while (View().currentIndex() != View().IndexOf(NodeOf("Nest").Get()))
            Key(Qt::Key_Down);
        Key(key, modifiers);
    };
    carry(Qt::Key_Escape);
    EXPECT_EQ(Heard(), "");
    carry(Qt::Key_Return);
    carry(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Heard(), "drop Robin;copy Robin;");

    Click("Bird.Finch", Qt::ControlModifier);
    carry(Qt::Key_Return);
    EXPECT_EQ(Heard(), "drop Robin Finch;");
    EXPECT_TRUE(Log().contains("Nest.Drop")) << Log().toStdString();
    Click("Bird.Wren", Qt::ControlModifier);
    carry(Qt::Key_Return);
    EXPECT_EQ(View().Note(), "A nest has room for two.");
    EXPECT_EQ(Heard(), "");
}

TEST_F(ItemsTest, FilesGoToTheItemOrToTheServiceThatOpensThem) {
    EXPECT_TRUE(DropFiles(*View().viewport(), PointOf("Nest"), {"/a.csv", "/b.csv"}));
    EXPECT_EQ(Heard(), "drop /a.csv /b.csv;");
    EXPECT_TRUE(DropFiles(*View().viewport(), PointOf("Bird.Wren"), {"/a.csv"}));
    EXPECT_TRUE(DropFiles(m_application->Window(), {300, 300}, {"/b.csv", "/no.csv"}));
    EXPECT_EQ(Heard(), "open /a.csv;open /b.csv;open /no.csv;");
    EXPECT_EQ(Message(), "Nothing here opens no.csv.");
    EXPECT_FALSE(DropFiles(m_application->Window(), {300, 300}, {}));
}

TEST_F(ItemsTest, ALazyFolderIsAskedWhenItOpensAndAgainAfterAFailure) {
    EXPECT_EQ(Heard(), "");
    const auto isOpenable = [&](const char* key) {
        return View().model()->hasChildren(View().IndexOf(NodeOf(key).Get()));
    };
    EXPECT_TRUE(isOpenable("Wood"));
    EXPECT_FALSE(NodeOf("Wood")->Expanded());
    Click("Wood");
    failsToLoad = true;
    Key(Qt::Key_Right);
    EXPECT_EQ(Heard(), "load;");
    EXPECT_EQ(NodeOf("Bird.Owl"), nullptr);
    EXPECT_FALSE(NodeOf("Wood")->Expanded());
    EXPECT_TRUE(Log().contains("Wood.LazyChildren")) << Log().toStdString();
    failsToLoad = false;
    Key(Qt::Key_Right);
    EXPECT_EQ(Heard(), "load;");
    EXPECT_NE(NodeOf("Bird.Owl"), nullptr);
    EXPECT_TRUE(NodeOf("Wood")->Expanded());
    EXPECT_TRUE(isOpenable("Deep wood"));
    Key(Qt::Key_Left);
    Key(Qt::Key_Right);
    EXPECT_EQ(Heard(), ""); // once
    for (const char* key : {"Bird.Owl", "Nest", "Deep wood", "Aviary", "Bird.Wren"})
        Click(key, Qt::ControlModifier);
    EXPECT_EQ(Names(SelectedItems()), " Aviary Wren Nest Wood Owl Deep wood");
}

TEST_F(ItemsTest, AreRecordedAsSteps) {
    Click("Wood");
    Key(Qt::Key_Right);
    Click("Bird.Robin");
    Click("Bird.Wren", Qt::ControlModifier);
    (void)m_application->Choose("File.Delete");
    DropFiles(*View().viewport(), PointOf("Nest"), {"/a.csv"});
    DropFiles(m_application->Window(), {300, 300}, {"/b.csv"});
    m_application.reset();
    m_options.recorder.reset();
    const std::string first = Heard();
    EXPECT_NE(first, "");
    EXPECT_EQ(
        m_folder.Read("steps.txt").replace("\n", "|").toStdString(),
        "# A session at the desktop. To take it again: corvane inspect APP --steps FILE|node 0 Wood|expand 0 Wood|"
        "node 0 Bird.Robin|also 0 Bird.Wren|click File.Delete|takefile /a.csv|drop 0 Nest|dropfile /b.csv|exit|");
}
