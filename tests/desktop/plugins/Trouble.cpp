// A plug-in that does what a test asks for. Its library is copied under the names of its classes.
#include "corvane/Jobs.h"
#include "corvane/author/Host.h"
#include "corvane/base/Automation.h"
#include "corvane/base/PluginExport.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/IQtPage.h"

#include <QTimer>
#include <QWidget>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

using namespace corvane;

namespace {

int* volatile nowhere = nullptr;

bool IsWanted(const char* place) {
    const char* wanted = std::getenv("TROUBLE");
    return wanted && std::string(wanted) == place;
}

// Dies when the environment asks for it at that place; a sanitizer would see it coming and end the program otherwise.
__attribute__((no_sanitize("undefined"))) void DieIf(const char* place) {
    if (IsWanted(place))
        *nowhere = 1;
}

void ThrowIf(const char* place) {
    if (IsWanted(place))
        throw 42;
}

// Runs over the stack when the environment asks for it.
int DieDeep(int depth) {
    const char* wanted = std::getenv("TROUBLE");
    if (!wanted || std::string(wanted) != "depth")
        return depth;
    volatile char room[4096]{};
    room[static_cast<std::size_t>(depth) % sizeof room] = 1;
    return DieDeep(depth + 1) + room[0];
}

class TroubleService final : public Automation<TroubleService, IServiceAccess> {
public:
    TroubleService() {
        DieIf("constructor");
        m_initialize = m_serviceBase->InitializeEvent.Subscribe([] { DieIf("event"); });
    }
    Ref<IService> Service() override { return m_serviceBase; }
    void Start() {
        DieIf("start");
        QTimer::singleShot(0, [] {
            DieIf("timer");
            ThrowIf("timer throws");
        });
        Singleton::Framework()->NavigationManager()->ExplorerManager()->Populate();
    }
    void OnDie() {
        DieIf("command");
        DieDeep(1);
        if (!IsWanted("second job"))
            return;
        StartJob({.title = "Dies", .owner = FindService("Second")}, [] { DieIf("second job"); });
        while (true) // until the program dies elsewhere
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    void OnHang() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(900);
        while (std::chrono::steady_clock::now() < end) {
        }
    }
    void OnOpen() {
        Open("Sheet", "7");
        if (Singleton::Framework()->ServiceManager()->WindowDefs()->HasKey("Other"))
            Open("Other", "8");
        DieIf("after the other's page");
    }
    void OnPing() { Singleton::Framework()->SetStatus("Ping"); }
    bool RestoreWindow(const std::string& name, const std::string& key) {
        m_restored += name + "/" + key + " ";
        Singleton::Framework()->SetStatus(m_restored);
        Open(name, key);
        return true;
    }

    static constexpr auto Members =
        MemberTable(Method("Start", &TroubleService::Start), Method("OnDie", &TroubleService::OnDie),
                    Method("OnHang", &TroubleService::OnHang), Method("OnOpen", &TroubleService::OnOpen),
                    Method("OnPing", &TroubleService::OnPing), Method("RestoreWindow", &TroubleService::RestoreWindow));

private:
    static void Open(const std::string& name, const std::string& key) {
        Singleton::Framework()->WindowManager()->OpenWindow(
            name, nullptr, nullptr, WindowShowModeConstants::cvDefinitionDefault,
            WindowStateConstants::cvDefinitionDefault, MDIWindowTypeConstants::cvDefinitionDefault,
            WindowTypeConstants::cvDefinitionDefault, BusinessContextTypeConstants::cvDefinitionDefault,
            ShowApplyCommandConstants::cvDefinitionDefault, key);
    }

    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
    Subscription m_initialize;
    std::string m_restored;
};

class TroublePage final : public IPageAccess, public desktop::IQtPage {
public:
    Ref<IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) override {
        DieIf("page");
        return new QWidget(parent);
    }

private:
    Ref<PageBase> m_base = New<PageBase>();
};

// A second service of the same plug-in, with a page and an item of its own.
class SecondService final : public Automation<SecondService, IServiceAccess> {
public:
    SecondService() {
        DieIf("second constructor");
        m_initialize = m_serviceBase->InitializeEvent.Subscribe([] { DieIf("second event"); });
        m_terminate = m_serviceBase->TerminateEvent.Subscribe([] { DieIf("second end"); });
    }
    Ref<IService> Service() override { return m_serviceBase; }

    static constexpr auto Members = MemberTable();

private:
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
    Subscription m_initialize;
    Subscription m_terminate;
};

class SecondPage final : public IPageAccess, public desktop::IQtPage {
public:
    SecondPage() {
        DieIf("second page");
        m_activate = m_base->ActivateEvent.Subscribe([] { DieIf("second page's event"); });
    }
    Ref<IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) override {
        DieIf("second page's widget");
        return new QWidget(parent);
    }

private:
    Ref<PageBase> m_base = New<PageBase>();
    Subscription m_activate;
};

class SecondItem final : public IExplorerItemAccess {
public:
    SecondItem() {
        m_initialize = m_base->InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>&) {
            DieIf("second item's event");
            m_base->NameSilently("SecondRoot");
        });
        m_name = m_base->OnDisplayName.Subscribe([](std::string&) { DieIf("second item's name"); });
    }
    Ref<IExplorerItem> ExplorerItem() override { return m_base; }

private:
    Ref<ExplorerItemBase> m_base = New<ExplorerItemBase>();
    Subscription m_initialize;
    Subscription m_name;
};

} // namespace

CORVANE_PLUGIN(
    Class<TroublePage>("T0.Page"), Class<SecondService>("T0.Second"), Class<SecondPage>("T0.SecondPage"),
    Class<SecondItem>("T0.SecondItem"), Class<TroubleService>("T0.Service"), Class<TroubleService>("T1.Service"),
    Class<TroubleService>("T2.Service"), Class<TroubleService>("T3.Service"), Class<TroubleService>("T4.Service"),
    Class<TroubleService>("T5.Service"), Class<TroubleService>("T6.Service"), Class<TroubleService>("T7.Service"),
    Class<TroubleService>("T8.Service"), Class<TroubleService>("T9.Service"), Class<TroubleService>("T10.Service"),
    Class<TroubleService>("T11.Service"), Class<TroubleService>("T12.Service"), Class<TroubleService>("T13.Service"),
    Class<TroubleService>("T14.Service"), Class<TroubleService>("T15.Service"), Class<TroubleService>("T16.Service"),
    Class<TroubleService>("T17.Service"), Class<TroubleService>("T18.Service"), Class<TroubleService>("T19.Service"))
