#include "tests/windows_host/HostFixture.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "desktop/windows/WindowBody.h"
#include "tests/support/FreeWindows.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <sstream>

namespace corvane::desktop {

namespace {

constexpr const char* schema = R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"><xs:element name="Service">
<xs:complexType><xs:sequence><xs:any minOccurs="0" maxOccurs="unbounded" processContents="skip"/></xs:sequence>
<xs:anyAttribute processContents="skip"/></xs:complexType></xs:element></xs:schema>)";

constexpr const char* shell = R"(<Service Name="Shell" ProgID="Corvane.Framework" Active="true"><ActionItems>
<ActionItem Name="Navigation" Action="ViewNavigation" PassActionItemParam="true" Checked="false"/>
<ActionItem Name="Window"/><ActionItem Name="CloseAll" Action="WindowAction" PassActionItemParam="true"/>
</ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="Window" PositionOrder="1" Caption="#Window"/>
<MenuItem Type="MenuItem" ActionItem="CloseAll" Path="Window" PositionOrder="1" Caption="C#lose All"/>
</Menus><Windows>%</Windows></Service>)";

class PageWidget final : public QWidget {
public:
    PageWidget(QWidget* parent, std::shared_ptr<Heard> heard) : QWidget(parent), m_heard(std::move(heard)) {
        ++m_heard->widgets;
    }
    ~PageWidget() override { --m_heard->widgets; }

private:
    std::shared_ptr<Heard> m_heard;
};

// Makes the test's pages; "None" can't be made, and "Plain" has no widget.
class PageFactory final : public IObjectFactory {
public:
    using Make = std::function<Ref<Object>(const std::string&)>;
    PageFactory(Ref<IObjectFactory> real, Make make) : m_real(std::move(real)), m_make(std::move(make)) {}
    Ref<Object> Create(std::string_view progID) override {
        return progID.starts_with("T.") ? m_make(std::string(progID.substr(2))) : m_real->Create(progID);
    }

private:
    Ref<IObjectFactory> m_real;
    Make m_make;
};

class PlainPage final : public IPageAccess {
public:
    Ref<IPage> Page() override { return m_base; }

private:
    Ref<PageBase> m_base = New<PageBase>();
};

} // namespace

TestPage::TestPage(std::string pageName, std::string failsInEvent, std::shared_ptr<Heard> heard)
    : failsIn(std::move(failsInEvent)), m_name(std::move(pageName)), m_heard(std::move(heard)) {
    ++m_heard->pages;
    const auto hear = [this](auto& event, const char* eventName) {
        m_subscriptions.push_back(event.Subscribe([this, eventName](auto&&...) { Hear(eventName); }));
    };
    hear(m_base->InitializeEvent, "Initialize");
    hear(m_base->TerminateEvent, "Terminate");
    hear(m_base->ActivateEvent, "Activate");
    hear(m_base->DeactivateEvent, "Deactivate");
    hear(m_base->SaveEvent, "Save");
    m_subscriptions.push_back(m_base->SaveEvent.Subscribe([this] { m_text = "old"; }));
    m_subscriptions.push_back(m_base->CommandClickEvent.Subscribe([this](StandardCommandConstants command) {
        m_heard->Add(m_name + ".Click" + std::to_string(static_cast<Long>(command)));
        if (failsIn == "CommandClick")
            Fail(1001, "The page can't");
    }));
    m_subscriptions.push_back(m_base->ValidateEvent.Subscribe([this](bool& isValid) {
        if (failsIn == "Validate")
            Fail(1001, "The page can't");
        isValid = !m_text.empty();
    }));
}

TestPage::~TestPage() {
    --m_heard->pages;
}

void TestPage::Hear(const std::string& event) {
    m_heard->Add(m_name + "." + event);
    if (failsIn == event)
        Fail(1001, "The page can't");
}

QWidget* TestPage::NewWidget(QWidget* parent) {
    m_heard->Add(m_name + ".NewWidget");
    if (failsIn == "NewWidget")
        throw std::runtime_error("The page can't draw");
    auto* widget = new PageWidget(parent, m_heard);
    m_edit = new QLineEdit(QString::fromStdString(m_text));
    auto* layout = new QVBoxLayout(widget);
    layout->addWidget(m_edit);
    if (m_name == "Find") {
        auto* button = new QPushButton("Find", widget);
        button->setDefault(true);
        QObject::connect(button, &QPushButton::clicked, widget, [this] { m_heard->Add("found"); });
        layout->addWidget(button);
    }
    QObject::connect(m_edit, &QLineEdit::textChanged, widget, [this](const QString& text) {
        m_text = text.toStdString();
        m_base->ValidityChanged();
    });
    return widget;
}

QWidget* TestPage::FirstFocus() {
    return m_edit;
}

void TestPage::Enter(const std::string& text) {
    if (m_edit) {
        m_edit->setText(QString::fromStdString(text));
    } else { // it changes before it has been seen
        m_text = text;
        m_base->ValidityChanged();
    }
}

HostFixture::HostFixture() {
    qputenv("XDG_STATE_HOME", m_folder.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
    QDir(m_folder.path()).mkpath("App/Services");
    QDir(m_folder.path()).mkpath("App/Images");
    // Free ones show the most of their frames; the run "InTabs" takes those tests that say the same of tabs.
    ChooseFreeWindows(qEnvironmentVariableIsEmpty("CORVANE_TEST_TABS"));
}

HostFixture::~HostFixture() {
    End();
}

void HostFixture::Define(const std::string& name, const std::string& attributes, const std::string& pagesText) {
    m_windows += "<Window Name='" + name + "' Caption='" + name + "' State='Normal' PageWidth='3000' " +
                 "PageHeight='1500' DefPageWidth='4500' DefPageHeight='3000' " + attributes + ">";
    std::istringstream pages(pagesText);
    int order = 0;
    for (std::string page; pages >> page;) {
        const auto take = [&page](char sign) {
            const bool has = !page.empty() && page.back() == sign;
            if (has)
                page.pop_back();
            return has ? "true" : "false";
        };
        const bool resizable = std::string(take('#')) == "false";
        const std::string optional = take('?');
        const bool hasHelp = std::string(take('!')) == "true";
        m_windows += "<Page PageProgID='T." + page + "' Caption='" + page + "' IsOptional='" + optional +
                     (hasHelp ? "' HelpContextID='7" : "") + "' IsResizable='" + (resizable ? "true" : "false") +
                     "' PositionOrder='" + std::to_string(++order) + "'/>";
    }
    m_windows += "</Window>";
}

void HostFixture::Start() {
    const auto write = [this](const char* name, const std::string& text) {
        QFile file(m_folder.path() + "/App/Services/" + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
    };
    std::string xml = shell;
    xml.replace(xml.find('%'), 1, m_windows);
    write("Service.xdr", schema);
    write("shell.xml", xml);
    m_application = std::make_unique<Application>(ApplicationOptions{(m_folder.path() + "/App").toStdString(), false});
    Platform platform = CurrentPlatform();
    platform.oObjectFactory = New<PageFactory>(platform.oObjectFactory, [this](const std::string& name) {
        if (name == "None")
            Fail(FailureNumber::CannotCreateObject, "There is no class T.None");
        if (name == "Plain")
            return Ref<Object>(New<PlainPage>());
        const auto point = name.find('.');
        const std::string failsIn = point == std::string::npos ? "" : name.substr(point + 1);
        auto page = New<TestPage>(name.substr(0, point), failsIn, m_heard);
        m_pages[name.substr(0, point)] = page.Get();
        return Ref<Object>(page);
    });
    SetCurrentPlatform(platform);
    m_loaded = m_application->MainForm()->ChildLoaded.Subscribe(
        [this](const Ref<Form>& form) { m_forms.push_back(form.As<WindowForm>()); });
    ASSERT_TRUE(m_application->Start());
    Turn();
}

void HostFixture::End() {
    m_forms.clear();
    m_application.reset();
}

Ref<Window> HostFixture::Open(const std::string& name, const std::string& key, bool hide, bool async) {
    return Manager().OpenWindow(name, New<ExitHandler>(m_heard), New<ExitHandler>(m_heard),
                                WindowShowModeConstants::cvDefinitionDefault, WindowStateConstants::cvDefinitionDefault,
                                MDIWindowTypeConstants::cvDefinitionDefault, WindowTypeConstants::cvDefinitionDefault,
                                BusinessContextTypeConstants::cvDefinitionDefault,
                                ShowApplyCommandConstants::cvDefinitionDefault, key, hide, async);
}

WindowManager& HostFixture::Manager() const {
    return *CorvaneMain::Framework()->WindowManager();
}

TestPage& HostFixture::Page(const std::string& name) const {
    return *m_pages.at(name);
}

QPushButton* HostFixture::Button(StandardCommandConstants command) const {
    return LastForm()->Body()->Commands().Button(command);
}

std::string HostFixture::Commands() const {
    WindowBody* body = LastForm()->Body();
    if (!body || !body->AreCommandsShown())
        return {};
    std::string text;
    for (const auto command : body->Commands().Commands()) {
        const QPushButton* button = body->Commands().Button(command);
        EXPECT_EQ(button->isEnabled(), LastForm()->IsCommandEnabled(command)) << "the button and the command differ";
        text += (text.empty() ? "" : " ") + std::string(button->isEnabled() ? "" : "-") +
                button->text().remove('&').toStdString() + (button->isDefault() ? "*" : "");
    }
    return text;
}

void HostFixture::Turn() {
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace corvane::desktop
