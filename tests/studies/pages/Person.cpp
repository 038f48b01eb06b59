#include "Person.h"

#include "Csv.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMdiSubWindow>
#include <sstream>

namespace studies {

using namespace corvane;

Person::~Person() {
    QTimer oAnswer;
    QObject::connect(&oAnswer, &QTimer::timeout, &oAnswer, [] {
        if (const QWidget* pQuestion = QApplication::activeModalWidget())
            Button(*pQuestion, "Discard")->click();
    });
    oAnswer.start(10);
    m_pApplication.reset();
}

void Person::Start(bool bWithStudy) {
    if (bWithStudy) {
        Store oStore(Store::DefaultPath());
        (void)oStore.ImportDataSet(oStore.CreateStudy("Penguins"), "penguins.csv", STUDIES_DATA "/penguins.csv",
                                   ReadCsvFile(STUDIES_DATA "/penguins.csv").oTable);
    }
    m_pApplication = std::make_unique<desktop::Application>(desktop::ApplicationOptions{STUDIES_APP, true});
    ASSERT_TRUE(m_pApplication->Start());
    Turn();
}

void Person::Turn(int nMilliseconds) {
    QElapsedTimer oClock;
    oClock.start();
    do
        QApplication::processEvents();
    while (oClock.elapsed() < nMilliseconds);
}

void Person::ChooseAndAct(const std::string& sTool, const std::function<void(QWidget& oWindow)>& fnAct) {
    bool bActed = false;
    QTimer oWait;
    QObject::connect(&oWait, &QTimer::timeout, &oWait, [&] {
        QWidget* pWindow = QApplication::activeModalWidget();
        if (!pWindow || bActed)
            return;
        bActed = true;
        fnAct(*pWindow);
        // What is still open ends, so that a failed test doesn't wait for ever.
        while (QWidget* pLeft = QApplication::activeModalWidget()) {
            ADD_FAILURE() << "still open: " << pLeft->windowTitle().toStdString();
            pLeft->close();
            if (pLeft == QApplication::activeModalWidget())
                std::abort();
        }
    });
    oWait.start(10);
    Choose(sTool);
    EXPECT_TRUE(bActed) << "no window has come up";
}

Ref<TreeView> Person::Tree() const {
    for (const auto& oControl : m_pApplication->Panel()->Controls())
        if (const auto tvwTree = oControl.TryAs<TreeView>(); tvwTree && tvwTree->GetNodes()->HasKey("Studies"))
            return tvwTree;
    return nullptr;
}

void Person::ClickItem(const std::string& sText) {
    std::vector<Node*> aNodes = Tree()->GetNodes()->Roots();
    for (std::size_t i = 0; i < aNodes.size(); ++i) {
        if (aNodes[i]->Text() == sText) {
            m_pApplication->Failures().Guard([&] { Tree()->ClickNode(Ref<Node>(aNodes[i])); });
            Turn();
            return;
        }
        aNodes.insert(aNodes.end(), aNodes[i]->Children().begin(), aNodes[i]->Children().end());
    }
    ADD_FAILURE() << "the explorer has no " << sText;
}

void Person::OpenItem(const std::string& sText) {
    ClickItem(sText);
    m_pApplication->Failures().Guard([&] { Tree()->DblClick.Raise(); });
    Turn();
}

bool Person::IsIn(const QWidget& oWidget, const QString& sWindow) {
    for (const QWidget* p = &oWidget; p; p = p->parentWidget())
        if (p->windowTitle().remove("[*]") == sWindow) // the mark of what is changed
            return true;
    return false;
}

bool Person::IsNamed(const QWidget& oWidget, const QString& sName) {
    if (oWidget.accessibleName().startsWith(sName))
        return true;
    for (const auto* pLabel : oWidget.parentWidget()->findChildren<QLabel*>())
        if (pLabel->buddy() == &oWidget && pLabel->text().remove('&').startsWith(sName))
            return true;
    return false;
}

QAbstractButton* Person::Button(const QWidget& oWindow, const QString& sText) {
    for (auto* pButton : oWindow.findChildren<QAbstractButton*>())
        if (QString(pButton->text()).remove('&').startsWith(sText) && pButton->isVisible())
            return pButton;
    ADD_FAILURE() << "there is no button " << sText.toStdString();
    return nullptr;
}

std::string Person::Status() const {
    return m_pApplication->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
}

std::string Person::Write(const std::string& sName, const std::string& sText) const {
    std::ofstream(m_oFolder.Path(sName)) << sText;
    return m_oFolder.Path(sName);
}

std::string Person::Read(const std::string& sPath) {
    std::ifstream oFile(sPath, std::ios::binary);
    std::stringstream oText;
    oText << oFile.rdbuf();
    return oText.str();
}

Table Person::DataOnDisk(const std::string& sName) {
    Store oStore(Store::DefaultPath());
    for (const Study& oStudy : oStore.Studies())
        for (const DataSet& oDataSet : oStore.DataSets(oStudy.nId))
            if (oDataSet.sName == sName)
                return oStore.ReadDataSet(oDataSet.nId);
    return {};
}

} // namespace studies
