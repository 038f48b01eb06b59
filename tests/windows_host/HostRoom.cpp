#include "tests/windows_host/HostRoom.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <sstream>

namespace corvane::desktop {

namespace {

constexpr const char* sSchema = R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"><xs:element name="Service">
<xs:complexType><xs:sequence><xs:any minOccurs="0" maxOccurs="unbounded" processContents="skip"/></xs:sequence>
<xs:anyAttribute processContents="skip"/></xs:complexType></xs:element></xs:schema>)";

constexpr const char* sShell = R"(<Service Name="Shell" ProgID="Corvane.Framework" Active="true"><ActionItems>
<ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="true" Checked="false"/>
<ActionItem Name="Window"/><ActionItem Name="CloseAll" Action="WindowAction" PassActionItemParam="true"/>
</ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="Window" PositionOrder="1" Caption="#Window"/>
<MenuItem Type="MenuItem" ActionItem="CloseAll" Path="Window" PositionOrder="1" Caption="C#lose All"/>
</Menus><Windows>%</Windows></Service>)";

class PageWidget final : public QWidget {
public:
    PageWidget(QWidget* pParent, std::shared_ptr<Heard> pHeard) : QWidget(pParent), m_pHeard(std::move(pHeard)) {
        ++m_pHeard->nWidgets;
    }
    ~PageWidget() override { --m_pHeard->nWidgets; }

private:
    std::shared_ptr<Heard> m_pHeard;
};

// Makes the test's pages; "None" can't be made, and "Plain" has no widget.
class PageFactory final : public IObjectFactory {
public:
    using Make = std::function<Ref<Object>(const std::string&)>;
    PageFactory(Ref<IObjectFactory> oReal, Make fnMake) : m_oReal(std::move(oReal)), m_fnMake(std::move(fnMake)) {}
    Ref<Object> Create(std::string_view sProgID) override {
        return sProgID.starts_with("T.") ? m_fnMake(std::string(sProgID.substr(2))) : m_oReal->Create(sProgID);
    }

private:
    Ref<IObjectFactory> m_oReal;
    Make m_fnMake;
};

class PlainPage final : public IPageAccess {
public:
    Ref<IPage> Page() override { return m_oBase; }

private:
    Ref<PageBase> m_oBase = New<PageBase>();
};

} // namespace

TestPage::TestPage(std::string sPageName, std::string sFailsInEvent, std::shared_ptr<Heard> pHeard)
    : sFailsIn(std::move(sFailsInEvent)), m_sName(std::move(sPageName)), m_pHeard(std::move(pHeard)) {
    ++m_pHeard->nPages;
    const auto fnHear = [this](auto& oEvent, const char* sEvent) {
        m_aSubscriptions.push_back(oEvent.Subscribe([this, sEvent](auto&&...) { Hear(sEvent); }));
    };
    fnHear(m_oBase->InitializeEvent, "Initialize");
    fnHear(m_oBase->TerminateEvent, "Terminate");
    fnHear(m_oBase->ActivateEvent, "Activate");
    fnHear(m_oBase->DeactivateEvent, "Deactivate");
    fnHear(m_oBase->SaveEvent, "Save");
    m_aSubscriptions.push_back(m_oBase->SaveEvent.Subscribe([this] { m_sText = "old"; }));
    m_aSubscriptions.push_back(m_oBase->CommandClickEvent.Subscribe([this](StandardCommandConstants eCommand) {
        m_pHeard->Add(m_sName + ".Click" + std::to_string(static_cast<Long>(eCommand)));
        if (sFailsIn == "CommandClick")
            Fail(1001, "The page can't");
    }));
    m_aSubscriptions.push_back(m_oBase->ValidateEvent.Subscribe([this](bool& bIsValid) {
        if (sFailsIn == "Validate")
            Fail(1001, "The page can't");
        bIsValid = !m_sText.empty();
    }));
}

TestPage::~TestPage() {
    --m_pHeard->nPages;
}

void TestPage::Hear(const std::string& sEvent) {
    m_pHeard->Add(m_sName + "." + sEvent);
    if (sFailsIn == sEvent)
        Fail(1001, "The page can't");
}

QWidget* TestPage::NewWidget(QWidget* pParent) {
    m_pHeard->Add(m_sName + ".NewWidget");
    if (sFailsIn == "NewWidget")
        throw std::runtime_error("The page can't draw");
    auto* pWidget = new PageWidget(pParent, m_pHeard);
    m_pEdit = new QLineEdit(QString::fromStdString(m_sText));
    (new QVBoxLayout(pWidget))->addWidget(m_pEdit);
    QObject::connect(m_pEdit, &QLineEdit::textChanged, pWidget, [this](const QString& sText) {
        m_sText = sText.toStdString();
        m_oBase->ValidityChanged();
    });
    return pWidget;
}

QWidget* TestPage::FirstFocus() {
    return m_pEdit;
}

void TestPage::Enter(const std::string& sText) {
    if (m_pEdit) {
        m_pEdit->setText(QString::fromStdString(sText));
    } else { // it changes before it has been seen
        m_sText = sText;
        m_oBase->ValidityChanged();
    }
}

HostRoom::HostRoom() {
    qputenv("XDG_STATE_HOME", m_oFolder.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", m_oFolder.path().toUtf8());
    QDir(m_oFolder.path()).mkpath("App/Services");
    QDir(m_oFolder.path()).mkpath("App/Images");
}

HostRoom::~HostRoom() {
    End();
}

void HostRoom::Define(const std::string& sName, const std::string& sAttributes, const std::string& sPages) {
    m_sWindows += "<Window Name='" + sName + "' Caption='" + sName + "' State='Normal' PageWidth='3000' " +
                  "PageHeight='1500' DefPageWidth='4500' DefPageHeight='3000' " + sAttributes + ">";
    std::istringstream oPages(sPages);
    int nOrder = 0;
    for (std::string sPage; oPages >> sPage;) {
        const auto fnTake = [&sPage](char cSign) {
            const bool bHas = !sPage.empty() && sPage.back() == cSign;
            if (bHas)
                sPage.pop_back();
            return bHas ? "true" : "false";
        };
        const bool bResizable = std::string(fnTake('#')) == "false";
        const std::string sOptional = fnTake('?');
        const bool bHasHelp = std::string(fnTake('!')) == "true";
        m_sWindows += "<Page PageProgID='T." + sPage + "' Caption='" + sPage + "' IsOptional='" + sOptional +
                      (bHasHelp ? "' HelpContextID='7" : "") + "' IsResizable='" + (bResizable ? "true" : "false") +
                      "' PositionOrder='" + std::to_string(++nOrder) + "'/>";
    }
    m_sWindows += "</Window>";
}

void HostRoom::Start() {
    const auto fnWrite = [this](const char* sName, const std::string& sText) {
        QFile oFile(m_oFolder.path() + "/App/Services/" + sName);
        ASSERT_TRUE(oFile.open(QIODevice::WriteOnly));
        oFile.write(sText.data(), static_cast<qint64>(sText.size()));
    };
    std::string sXml = sShell;
    sXml.replace(sXml.find('%'), 1, m_sWindows);
    fnWrite("Service.xdr", sSchema);
    fnWrite("shell.xml", sXml);
    m_pApplication =
        std::make_unique<Application>(ApplicationOptions{(m_oFolder.path() + "/App").toStdString(), false});
    Platform oPlatform = CurrentPlatform();
    oPlatform.oObjectFactory = New<PageFactory>(oPlatform.oObjectFactory, [this](const std::string& sName) {
        if (sName == "None")
            Fail(FailureNumber::CannotCreateObject, "There is no class T.None");
        if (sName == "Plain")
            return Ref<Object>(New<PlainPage>());
        const auto iPoint = sName.find('.');
        const std::string sFailsIn = iPoint == std::string::npos ? "" : sName.substr(iPoint + 1);
        auto oPage = New<TestPage>(sName.substr(0, iPoint), sFailsIn, m_pHeard);
        m_mapPages[sName.substr(0, iPoint)] = oPage.Get();
        return Ref<Object>(oPage);
    });
    SetCurrentPlatform(oPlatform);
    m_oLoaded = m_pApplication->MainForm()->ChildLoaded.Subscribe(
        [this](const Ref<Form>& oForm) { m_aForms.push_back(oForm.As<WindowForm>()); });
    ASSERT_TRUE(m_pApplication->Start());
    Turn();
}

void HostRoom::End() {
    m_aForms.clear();
    m_pApplication.reset();
}

Ref<Window> HostRoom::Open(const std::string& sName, const std::string& sKey, bool bHide, bool bAsync) {
    return Manager().OpenWindow(sName, New<ExitHandler>(m_pHeard), New<ExitHandler>(m_pHeard),
                                WindowShowModeConstants::cvDefinitionDefault, WindowStateConstants::cvDefinitionDefault,
                                MDIWindowTypeConstants::cvDefinitionDefault, WindowTypeConstants::cvDefinitionDefault,
                                BusinessContextTypeConstants::cvDefinitionDefault,
                                ShowApplyCommandConstants::cvDefinitionDefault, sKey, bHide, bAsync);
}

WindowManager& HostRoom::Manager() const {
    return *CorvaneMain::Framework()->WindowManager();
}

TestPage& HostRoom::Page(const std::string& sName) const {
    return *m_mapPages.at(sName);
}

QPushButton* HostRoom::Button(StandardCommandConstants eCommand) const {
    return LastForm()->Body()->Commands().Button(eCommand);
}

std::string HostRoom::Commands() const {
    WindowBody* pBody = LastForm()->Body();
    if (!pBody || !pBody->AreCommandsShown())
        return {};
    std::string sText;
    for (const auto eCommand : pBody->Commands().Commands()) {
        const QPushButton* pButton = pBody->Commands().Button(eCommand);
        EXPECT_EQ(pButton->isEnabled(), LastForm()->IsCommandEnabled(eCommand)) << "the button and the command differ";
        sText += (sText.empty() ? "" : " ") + std::string(pButton->isEnabled() ? "" : "-") +
                 pButton->text().remove('&').toStdString() + (pButton->isDefault() ? "*" : "");
    }
    return sText;
}

void HostRoom::Turn() {
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace corvane::desktop
