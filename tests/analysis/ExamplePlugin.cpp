#include "corvane/base/PluginExport.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

namespace corvane {

class ExampleService final : public Automation<ExampleService, IServiceAccess> {
public:
    Ref<IService> Service() override { return m_serviceBase; }
    void OnGreet() {
        (void)Singleton::Framework()->WindowManager()->OpenWindow(
            "ExampleWindow", nullptr, nullptr, WindowShowModeConstants::cvDefinitionDefault,
            WindowStateConstants::cvDefinitionDefault, MDIWindowTypeConstants::cvDefinitionDefault,
            WindowTypeConstants::cvDefinitionDefault, BusinessContextTypeConstants::cvDefinitionDefault,
            ShowApplyCommandConstants::cvDefinitionDefault, "");
    }

    // A command hands its action to each of them.
    void OnAction(const Ref<ActionItem>&) {}
    void OnAny(const Variant&) {}
    void OnCount(Long) {}
    void OnText(const std::string&) {}
    void OnPage(const Ref<IPage>&) {}

    static constexpr auto Members =
        MemberTable(Method("OnGreet", &ExampleService::OnGreet), Method("OnAction", &ExampleService::OnAction),
                    Method("OnAny", &ExampleService::OnAny), Method("OnCount", &ExampleService::OnCount),
                    Method("OnText", &ExampleService::OnText), Method("OnPage", &ExampleService::OnPage));

private:
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
};

class StartService final : public Automation<StartService, IServiceAccess> {
public:
    Ref<IService> Service() override { return m_serviceBase; }
    void Start() {}

    static constexpr auto Members = MemberTable(Method("Start", &StartService::Start));

private:
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
};

class Plots final : public Automation<Plots> {
public:
    void Open() {}
    static constexpr auto Members = MemberTable(Method("Open", &Plots::Open));
};

class PlotPage final : public Automation<PlotPage, IPageAccess> {
public:
    Ref<IPage> Page() override { return m_pageBase; }
    void Draw() {}
    std::string Title() const { return {}; }
    Long Size() const { return 0; }
    static constexpr auto Members = MemberTable(Method("Draw", &PlotPage::Draw), Property("Title", &PlotPage::Title),
                                                Property("Size", &PlotPage::Size));

private:
    Ref<PageBase> m_pageBase = New<PageBase>();
};

} // namespace corvane

CORVANE_PLUGIN(Class<corvane::ExampleService>("ExampleSvc.ExampleService"),
               Class<corvane::StartService>("ExampleSvc.StartService"), Class<corvane::Plots>("ExampleSvc.Plots"),
               Class<corvane::PlotPage>("ExampleSvc.PlotPage"))
