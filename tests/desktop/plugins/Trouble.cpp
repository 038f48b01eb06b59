// A plug-in that does what a test asks for. Its library is copied under the names of its classes.
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

using namespace corvane;

namespace {

int* volatile pNowhere = nullptr;

// Dies when the environment asks for it at that place; a sanitizer would see it coming and end the program otherwise.
[[gnu::no_sanitize("undefined")]] void DieIf(const char* sPlace) {
    const char* sWanted = std::getenv("TROUBLE");
    if (sWanted && std::string(sWanted) == sPlace)
        *pNowhere = 1;
}

// Runs over the stack when the environment asks for it.
int DieDeep(int nDepth) {
    const char* sWanted = std::getenv("TROUBLE");
    if (!sWanted || std::string(sWanted) != "depth")
        return nDepth;
    volatile char aRoom[4096]{};
    aRoom[static_cast<std::size_t>(nDepth) % sizeof aRoom] = 1;
    return DieDeep(nDepth + 1) + aRoom[0];
}

class TroubleService final : public Automation<TroubleService, IServiceAccess> {
public:
    TroubleService() {
        DieIf("constructor");
        m_oInitialize = m_oServiceBase->InitializeEvent.Subscribe([] { DieIf("event"); });
    }
    Ref<IService> Service() override { return m_oServiceBase; }
    void Start() {
        DieIf("start");
        QTimer::singleShot(0, [] { DieIf("timer"); });
        Singleton::Framework()->NavigationManager()->ExplorerManager()->Populate();
    }
    void OnDie() {
        DieIf("command");
        DieDeep(1);
    }
    void OnHang() {
        const auto oEnd = std::chrono::steady_clock::now() + std::chrono::milliseconds(900);
        while (std::chrono::steady_clock::now() < oEnd) {
        }
    }
    void OnOpen() {
        Open("Sheet", "7");
        if (Singleton::Framework()->ServiceManager()->WindowDefs()->HasKey("Other"))
            Open("Other", "8");
        DieIf("after the other's page");
    }
    void OnPing() { Singleton::Framework()->SetStatus("Ping"); }
    bool RestoreWindow(const std::string& sName, const std::string& sKey) {
        m_sRestored += sName + "/" + sKey + " ";
        Singleton::Framework()->SetStatus(m_sRestored);
        Open(sName, sKey);
        return true;
    }

    static constexpr auto Members =
        MemberTable(Method("Start", &TroubleService::Start), Method("OnDie", &TroubleService::OnDie),
                    Method("OnHang", &TroubleService::OnHang), Method("OnOpen", &TroubleService::OnOpen),
                    Method("OnPing", &TroubleService::OnPing), Method("RestoreWindow", &TroubleService::RestoreWindow));

private:
    static void Open(const std::string& sName, const std::string& sKey) {
        Singleton::Framework()->WindowManager()->OpenWindow(
            sName, nullptr, nullptr, WindowShowModeConstants::cvDefinitionDefault,
            WindowStateConstants::cvDefinitionDefault, MDIWindowTypeConstants::cvDefinitionDefault,
            WindowTypeConstants::cvDefinitionDefault, BusinessContextTypeConstants::cvDefinitionDefault,
            ShowApplyCommandConstants::cvDefinitionDefault, sKey);
    }

    Ref<ServiceBase> m_oServiceBase = New<ServiceBase>();
    Subscription m_oInitialize;
    std::string m_sRestored;
};

class TroublePage final : public IPageAccess, public desktop::IQtPage {
public:
    Ref<IPage> Page() override { return m_oBase; }
    QWidget* NewWidget(QWidget* pParent) override {
        DieIf("page");
        return new QWidget(pParent);
    }

private:
    Ref<PageBase> m_oBase = New<PageBase>();
};

// A second service of the same plug-in, with a page and an item of its own.
class SecondService final : public Automation<SecondService, IServiceAccess> {
public:
    SecondService() {
        DieIf("second constructor");
        m_oInitialize = m_oServiceBase->InitializeEvent.Subscribe([] { DieIf("second event"); });
        m_oTerminate = m_oServiceBase->TerminateEvent.Subscribe([] { DieIf("second end"); });
    }
    Ref<IService> Service() override { return m_oServiceBase; }

    static constexpr auto Members = MemberTable();

private:
    Ref<ServiceBase> m_oServiceBase = New<ServiceBase>();
    Subscription m_oInitialize;
    Subscription m_oTerminate;
};

class SecondPage final : public IPageAccess, public desktop::IQtPage {
public:
    SecondPage() {
        DieIf("second page");
        m_oActivate = m_oBase->ActivateEvent.Subscribe([] { DieIf("second page's event"); });
    }
    Ref<IPage> Page() override { return m_oBase; }
    QWidget* NewWidget(QWidget* pParent) override {
        DieIf("second page's widget");
        return new QWidget(pParent);
    }

private:
    Ref<PageBase> m_oBase = New<PageBase>();
    Subscription m_oActivate;
};

class SecondItem final : public IExplorerItemAccess {
public:
    SecondItem() {
        m_oInitialize = m_oBase->InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>&) {
            DieIf("second item's event");
            m_oBase->NameSilently("SecondRoot");
        });
        m_oName = m_oBase->OnDisplayName.Subscribe([](std::string&) { DieIf("second item's name"); });
    }
    Ref<IExplorerItem> ExplorerItem() override { return m_oBase; }

private:
    Ref<ExplorerItemBase> m_oBase = New<ExplorerItemBase>();
    Subscription m_oInitialize;
    Subscription m_oName;
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
