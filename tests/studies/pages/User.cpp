#include "User.h"

#include "Csv.h"
#include "desktop/application/MainWindow.h"
#include "desktop/explorer/ExplorerPanel.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMdiSubWindow>
#include <QTest>
#include <sstream>

namespace studies {

using namespace corvane;

User::~User() {
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [] {
        if (const QWidget* question = QApplication::activeModalWidget())
            Button(*question, "Discard")->click();
    });
    answer.start(10);
    m_application.reset();
}

void User::Start(bool withStudy) {
    if (withStudy) {
        Store store(Store::DefaultPath());
        (void)store.ImportDataSet(store.CreateStudy("Penguins"), "penguins.csv", STUDIES_DATA "/penguins.csv",
                                  ReadCsvFile(STUDIES_DATA "/penguins.csv").table);
    }
    m_application = std::make_unique<desktop::Application>(desktop::ApplicationOptions{STUDIES_APP, true});
    ASSERT_TRUE(m_application->Start());
    Turn();
}

void User::Turn(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    do
        QApplication::processEvents();
    while (clock.elapsed() < milliseconds);
}

void User::ChooseAndAct(const std::string& tool, const std::function<void(QWidget& window)>& act) {
    bool acted = false;
    QTimer wait;
    QObject::connect(&wait, &QTimer::timeout, &wait, [&] {
        QWidget* window = QApplication::activeModalWidget();
        if (!window || acted)
            return;
        acted = true;
        act(*window);
        // What is still open ends, so that a failed test doesn't wait for ever.
        while (QWidget* left = QApplication::activeModalWidget()) {
            ADD_FAILURE() << "still open: " << left->windowTitle().toStdString();
            left->close();
            if (left == QApplication::activeModalWidget())
                std::abort();
        }
    });
    wait.start(10);
    Choose(tool);
    EXPECT_TRUE(acted) << "no window has come up";
}

Ref<TreeView> User::Tree() const {
    for (const auto& control : m_application->Panel()->Controls())
        if (auto tree = control.TryAs<TreeView>(); tree && tree->GetNodes()->HasKey("Studies"))
            return tree;
    return nullptr;
}

void User::ClickItem(const std::string& text) {
    std::vector<Node*> nodes = Tree()->GetNodes()->Roots();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i]->Text() == text) {
            m_application->Window().activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&m_application->Window()));
            m_application->Window().Explorer().CurrentPage()->Tree()->setFocus(Qt::MouseFocusReason);
            m_application->Failures().Guard([&] { Tree()->ClickNode(Ref<Node>(nodes[i])); });
            Turn();
            return;
        }
        nodes.insert(nodes.end(), nodes[i]->Children().begin(), nodes[i]->Children().end());
    }
    ADD_FAILURE() << "the explorer has no " << text;
}

void User::OpenItem(const std::string& text) {
    ClickItem(text);
    m_application->Failures().Guard([&] { Tree()->DblClick.Raise(); });
    Turn();
}

bool User::IsIn(const QWidget& widget, const QString& window) {
    for (const QWidget* p = &widget; p; p = p->parentWidget())
        if (p->windowTitle().remove("[*]") == window) // the mark of what is changed
            return true;
    return false;
}

bool User::IsNamed(const QWidget& widget, const QString& name) {
    if (widget.accessibleName().startsWith(name))
        return true;
    for (const auto* label : widget.parentWidget()->findChildren<QLabel*>())
        if (label->buddy() == &widget && label->text().remove('&').startsWith(name))
            return true;
    return false;
}

QAbstractButton* User::Button(const QWidget& window, const QString& text) {
    for (auto* button : window.findChildren<QAbstractButton*>())
        if (QString(button->text()).remove('&').startsWith(text) && button->isVisible())
            return button;
    ADD_FAILURE() << "there is no button " << text.toStdString();
    return nullptr;
}

std::string User::Status() const {
    return m_application->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
}

std::string User::Write(const std::string& name, const std::string& text) const {
    std::ofstream(m_folder.Path(name)) << text;
    return m_folder.Path(name);
}

std::string User::Read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

Table User::DataOnDisk(const std::string& name) {
    Store store(Store::DefaultPath());
    for (const Study& study : store.Studies())
        for (const DataSet& dataSet : store.DataSets(study.id))
            if (dataSet.name == name)
                return store.ReadDataSet(dataSet.id);
    return {};
}

} // namespace studies
