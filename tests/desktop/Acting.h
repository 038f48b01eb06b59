// An application whose services, explorer item and page do at a named place what a test asks of them, and write down
// that they came there.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Dictionary.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/IQtPage.h"
#include "desktop/application/Application.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <map>

namespace corvane::desktop {

struct Acts {
    std::map<std::string, std::function<void()>> at;
    std::string heard;
    bool isUnsaved = false; // each service has something unsaved

    void Come(const std::string& place) {
        heard += place + " ";
        if (const auto it = at.find(place); it != at.end() && it->second) {
            const auto act = it->second; // the objects may go with what it does
            act();
        }
    }
    std::string Take() { return std::exchange(heard, {}); }
};

class ActingService final : public Automation<ActingService, IServiceAccess> {
public:
    ActingService(Acts& acts, std::string name) : m_acts(acts), m_name(std::move(name)) {
        m_subscriptions.push_back(m_base->InitializeEvent.Subscribe([this] { Come("Initialize"); }));
        m_subscriptions.push_back(m_base->TerminateEvent.Subscribe([this] { Come("Terminate"); }));
        m_subscriptions.push_back(m_base->GetUnsavedItems.Subscribe([this](const Ref<Dictionary>& items, Double&) {
            if (m_acts.isUnsaved)
                items->Add("Draft", Variant(Ref<Object>(New<ServiceBase>())));
            Come("GetUnsavedItems");
        }));
        m_subscriptions.push_back(m_base->SaveEvent.Subscribe([this](const Ref<Object>&) { Come("Save"); }));
        m_subscriptions.push_back(m_base->SaveCompleteEvent.Subscribe([this](bool) { Come("SaveComplete"); }));
    }
    Ref<IService> Service() override { return m_base; }
    void Start() {
        Come("Start");
        if (const auto navigation = Singleton::Framework()->NavigationManager())
            navigation->ExplorerManager()->Populate();
    }
    void OnAct() { Come("OnAct"); }
    bool RestoreWindow(const std::string& name, const std::string& /*key*/) {
        Come("RestoreWindow");
        if (const auto windows = Singleton::Framework()->WindowManager())
            windows->OpenWindow(name, nullptr);
        return true;
    }

    static constexpr auto Members =
        MemberTable(Method("Start", &ActingService::Start), Method("OnAct", &ActingService::OnAct),
                    Method("RestoreWindow", &ActingService::RestoreWindow));

private:
    void Come(const char* place) { m_acts.Come(m_name + "." + place); }

    Acts& m_acts;
    std::string m_name;
    Ref<ServiceBase> m_base = New<ServiceBase>();
    std::vector<Subscription> m_subscriptions;
};

class ActingItem final : public Automation<ActingItem, IExplorerItemAccess> {
public:
    ActingItem(Acts& acts, std::string name) : m_acts(acts), m_name(std::move(name)) {
        m_subscriptions.push_back(
            m_base->InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& children) {
                m_base->NameSilently(m_name);
                if (m_name == "Root")
                    children->Add(New<ActingItem>(m_acts, "Leaf"));
                Come("Initialize");
            }));
        m_subscriptions.push_back(m_base->OnDisplayName.Subscribe([this](std::string&) { Come("DisplayName"); }));
        m_subscriptions.push_back(m_base->OnBeforeRename.Subscribe([this](std::string&) { Come("BeforeRename"); }));
        m_subscriptions.push_back(m_base->OnAfterRename.Subscribe([this](const std::string&) { Come("AfterRename"); }));
    }
    Ref<IExplorerItem> ExplorerItem() override { return m_base; }
    void OnAct() { Come("OnAct"); }

    static constexpr auto Members = MemberTable(Method("OnAct", &ActingItem::OnAct));

private:
    void Come(const char* place) { m_acts.Come(m_name + "." + place); }

    Acts& m_acts;
    std::string m_name;
    Ref<ExplorerItemBase> m_base = New<ExplorerItemBase>();
    std::vector<Subscription> m_subscriptions;
};

// A page with a button, a field and an own event handler.
class ActingPage final : public IPageAccess, public IQtPage {
public:
    explicit ActingPage(Acts& acts) : m_acts(acts) {
        const auto hear = [this](auto& event, const char* place) {
            m_subscriptions.push_back(event.Subscribe([this, place](auto&&...) { Come(place); }));
        };
        hear(m_base->InitializeEvent, "Initialize");
        hear(m_base->TerminateEvent, "Terminate");
        hear(m_base->ActivateEvent, "Activate");
        hear(m_base->DeactivateEvent, "Deactivate");
        hear(m_base->SaveEvent, "Save");
        m_subscriptions.push_back(m_base->SaveEvent.Subscribe([this] { m_isChanged = false; }));
        hear(m_base->ValidateEvent, "Validate");
        hear(m_base->CommandClickEvent, "CommandClick");
    }
    Ref<IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) override {
        Come("NewWidget");
        m_widget = new Widget(*this, parent);
        return m_widget;
    }
    QWidget* FirstFocus() override {
        Come("FirstFocus");
        return m_widget->field;
    }
    bool IsChanged() override {
        Come("IsChanged");
        return m_isChanged;
    }
    Long HelpTopic() override {
        Come("HelpTopic");
        return -1;
    }

private:
    class Widget final : public QWidget {
    public:
        Widget(ActingPage& page, QWidget* parent)
            : QWidget(parent), field(new QLineEdit(this)), button(new QPushButton("Press", this)), m_page(page) {
            auto* layout = new QVBoxLayout(this);
            layout->addWidget(field);
            layout->addWidget(button);
            connect(field, &QLineEdit::editingFinished, this, [this] { m_page.Come("editingFinished"); });
            connect(button, &QPushButton::clicked, this, [this] { m_page.Come("clicked"); });
        }
        QLineEdit* const field;
        QPushButton* const button;

    protected:
        void hideEvent(QHideEvent* /*event*/) override { m_page.Come("hidden"); }
        void customEvent(QEvent* /*event*/) override { m_page.Come("event"); }

    private:
        ActingPage& m_page;
    };

    void Come(const char* place) { m_acts.Come(std::string("Page.") + place); }

    Acts& m_acts;
    bool m_isChanged = true; // until it is saved
    QPointer<Widget> m_widget;
    Ref<PageBase> m_base = New<PageBase>();
    std::vector<Subscription> m_subscriptions;
};

class ActingTest : public ::testing::Test {
protected:
    ActingTest() {
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        int titleOrder = 5;
        for (const char* name : {"A", "B", "C"})
            m_folder.Service(name, QString("T.%1").arg(name),
                             QString(R"(<ActionItems><ActionItem Name="Act" Action="OnAct"/>
<ActionItem Name="Off" Action="OnAct" Enabled="false"/><ActionItem Name="Menu%1"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="Menu%1" PositionOrder="%3" Caption="%1"/>
<MenuItem Type="MenuItem" ActionItem="Act" Path="Menu%1" PositionOrder="1" Caption="Act"/>
<MenuItem Type="MenuItem" ActionItem="Off" Path="Menu%1" PositionOrder="2" Caption="Off"/></Menus>%2)")
                                 .arg(name, *name == 'A' ? windowAndItems : "")
                                 .arg(titleOrder++),
                             *name == 'A' ? "IsStartService=\"true\"" : "");
    }
    ~ActingTest() override { m_application.reset(); }

    bool Start(bool withDialogs = false) {
        m_application.reset();
        ApplicationOptions options;
        options.folder = m_folder.App();
        options.withDialogs = withDialogs;
        for (const char* name : {"A", "B", "C"})
            options.classes.emplace_back(std::string("T.") + name,
                                         [this, name] { return Ref<Object>(New<ActingService>(m_acts, name)); });
        options.classes.emplace_back("T.Root", [this] { return Ref<Object>(New<ActingItem>(m_acts, "Root")); });
        options.classes.emplace_back("T.Page", [this] { return Ref<Object>(New<ActingPage>(m_acts)); });
        m_application = std::make_unique<Application>(options);
        const bool isStarted = m_application->Start();
        Turn();
        return isStarted;
    }
    void Turn() {
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void OpenWindow() {
        if (const auto windows = Singleton::Framework()->WindowManager())
            windows->OpenWindow("Sheet", nullptr);
    }
    [[nodiscard]] QString Log() const { return m_folder.Read("corvane/App/errors.log"); }
    template <class W>
    [[nodiscard]] W* InPage() const {
        for (QWidget* widget : QApplication::allWidgets())
            if (auto* found = qobject_cast<W*>(widget); found && found->isVisible() && IsInPage(*found))
                return found;
        return nullptr;
    }

    AppFolder m_folder;
    Acts m_acts;
    std::unique_ptr<Application> m_application;

private:
    static bool IsInPage(const QWidget& widget) {
        return widget.parentWidget() && widget.parentWidget()->findChild<QPushButton*>() &&
               widget.parentWidget()->findChild<QLineEdit*>();
    }
    static constexpr const char* windowAndItems = R"(<ExplorerItems>
<ExplorerItem Name="Root" ProgID="T.Root" Type="Folder" PositionOrder="1"/>
<ExplorerItem Name="Leaf" Type="Default" Parent="Root" CanRename="true" DefaultAction="Act"><ActionItems>
<ActionItem Name="Act" Action="OnAct"/></ActionItems></ExplorerItem></ExplorerItems><Windows>
<Window Name="Sheet" Caption="Sheet" Type="Dialog" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="T.Page" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)";
};

} // namespace corvane::desktop
