// Pages: what reaches them, what the manager makes of the forms' reports, and the base that they embed.
#include "corvane/menus/ActionItem.h"
#include "tests/windows/WindowsTest.h"

#include <map>

namespace corvane {
namespace {

using testing::NumberOf;
using testing::TestPage;
using testing::WindowsTest;

const char* const sPage = "<Page PageProgID='P.A' Caption='a' IsOptional='false' IsResizable='true'/>";

TEST_F(WindowsTest, ListenersHearActivationsOneAtATime) {
    struct Case {
        const char* sReports; // + activate, - deactivate, x terminate
        const char* sHeard;
    };
    const std::vector<Case> aCases{
        {"+a +a", "+a"},
        {"+a +b", "+a -a +b"},
        {"+a -b -a -a", "+a -a"},
        {"-a", ""},
        {"+a +b -a -b +a", "+a -a +b -b +a"},
        {"+a -a xa", "+a -a xa"},
        {"+a xb", "+a xb"},
        // A page that is dropped without being deactivated stays the active one.
        {"+a xa +b", "+a -a xa -a +b"},
        {"+a xa -a", "+a -a xa -a"},
    };
    for (const auto& [sReports, sExpected] : aCases) {
        const auto oManager = New<WindowManager>();
        std::string sHeard;
        const auto Hear = [&](const char* sSign) {
            return [&, sSign](const Ref<Object>& oPageObj) {
                sHeard += (sHeard.empty() ? "" : " ") + (sSign + NameOf(oPageObj));
            };
        };
        const Subscription aSubscriptions[] = {oManager->PageActivateEvent.Subscribe(Hear("+")),
                                               oManager->PageDeactivateEvent.Subscribe(Hear("-")),
                                               oManager->PageTerminateEvent.Subscribe(Hear("x"))};
        std::map<char, Ref<Object>> mapPages{{'a', New<TestPage>("a", m_oHeard)}, {'b', New<TestPage>("b", m_oHeard)}};
        for (const char* p = sReports; *p; p += p[2] ? 3 : 2) {
            const auto& oPage = mapPages.at(p[1]);
            if (*p == '+')
                oManager->PageActivate(oPage);
            else if (*p == '-')
                oManager->PageDeactivate(oPage);
            else
                oManager->PageTerminate(oPage);
        }
        EXPECT_EQ(sHeard, sExpected) << sReports;
    }
}

TEST_F(WindowsTest, AFormForgetsAPageOfWhichItCantReportTheEnd) {
    const auto a = New<TestPage>("a", m_oHeard);
    const auto b = New<TestPage>("b", m_oHeard);
    Manager().PageActivate(a);
    const auto oFails = Manager().PageDeactivateEvent.Subscribe([](const Ref<Object>&) { Fail(77); });
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(NumberOf([&] { Manager().PageDeactivate(a); }), 77);
    Manager().ForgetPage(b); // isn't the active one
    EXPECT_EQ(NumberOf([&] { Manager().PageTerminate(a); }), 77);
    Manager().ForgetPage(a);
    EXPECT_EQ(NumberOf([&] { Manager().PageTerminate(a); }), 0);
    EXPECT_EQ(NumberOf([&] { Manager().PageActivate(b); }), 0);
}

TEST_F(WindowsTest, EveryListenerHearsOfTheSamePageThatIsGivenUp) {
    const auto a = New<TestPage>("a", m_oHeard);
    const auto b = New<TestPage>("b", m_oHeard);
    Manager().PageActivate(a);
    // The first listener makes the manager forget the page.
    const auto oFirst = Manager().PageDeactivateEvent.Subscribe([&](const Ref<Object>& oPageObj) {
        if (std::exchange(m_oHeard->sLine, "told").empty())
            Manager().PageDeactivate(oPageObj);
    });
    std::string sHeard;
    const auto oSecond =
        Manager().PageDeactivateEvent.Subscribe([&](const Ref<Object>& oPageObj) { sHeard += NameOf(oPageObj) + " "; });
    Manager().PageActivate(b);
    EXPECT_EQ(sHeard, "a a ");
}

TEST_F(WindowsTest, APageLivesWhileItShowsNothingButItsBase) {
    struct Foreign final : IPage {
        void Initialize(const Ref<Window>&, const Ref<corvane::PageDef>&, const Ref<Object>&,
                        const Ref<Object>&) override {}
        void Terminate(const Ref<Object>&) override {}
        bool IsValid() override { return true; }
        void Activate() override {}
        void Deactivate() override {}
        void Save() override {}
        Ref<corvane::PageDef> PageDef() const override { return nullptr; }
        void CommandClick(StandardCommandConstants) override {}
    };
    const auto oPage = New<TestPage>("a", m_oHeard);
    EXPECT_TRUE(Manager().IsPageAlive(oPage));
    EXPECT_FALSE(Manager().IsPageAlive(nullptr));
    EXPECT_FALSE(Manager().IsPageAlive(oPage->oBase)); // no IPageAccess
    oPage->oPage = New<Foreign>();
    EXPECT_FALSE(Manager().IsPageAlive(oPage));
    oPage->oPage = nullptr;
    EXPECT_TRUE(Manager().IsPageAlive(oPage));
    EXPECT_EQ(m_oUtilities->TakeLines(), std::vector<std::string>{});
}

TEST_F(WindowsTest, ABaseAnswersUntilItsTerminateIsOver) {
    Define("Edit", "", sPage);
    const auto oWindow = OpenHidden("Edit");
    const auto oPage = LastForm().aPages.front();
    const auto& oBase = oPage->oBase;
    const auto State = [&] {
        return std::string(oBase->Window() == oWindow ? "window " : "") +
               (oBase->PageDef() && oBase->PageDef()->Caption() == "a" ? "definition " : "") +
               (oBase->BusinessContext() == m_oContext ? "context " : "") + (oBase->ActionItems() ? "actions" : "");
    };
    oBase->Initialize(New<ActionItemCollection>());
    EXPECT_EQ(State(), "window definition context actions");
    std::string sInTerminate;
    const auto oTerminate = oBase->TerminateEvent.Subscribe(
        [&](const Ref<Object>& oPositions) { sInTerminate = State() + (oPositions ? " positions" : ""); });
    LastForm().Unload();
    EXPECT_EQ(sInTerminate, "window definition context actions");
    EXPECT_TRUE(!oBase->Window() && !oBase->PageDef() && !oBase->BusinessContext() && !oBase->ActionItems());
    EXPECT_EQ(NumberOf([&] { oBase->ValidityChanged(); }), FailureNumber::ObjectNotSet);
    EXPECT_EQ(m_oUtilities->TakeLines(), std::vector<std::string>{"PageBase.ValidityChanged 91"});
}

TEST_F(WindowsTest, ValidityFlowsFromThePageToTheForm) {
    Define("Edit", "", sPage);
    OpenHidden("Edit");
    const auto oBase = LastForm().aPages.front()->oBase;
    bool bValid = false;
    EXPECT_TRUE(oBase->IsValid()); // no one says otherwise
    m_oHeard->Take();
    const auto oValidate = oBase->ValidateEvent.Subscribe([&](bool& bIsValid) {
        EXPECT_TRUE(bIsValid); // again each time
        bIsValid = bValid;
    });
    oBase->ValidityChanged();
    bValid = true;
    oBase->ValidityChanged();
    EXPECT_EQ(m_oHeard->Take(), "invalid valid");
}

TEST_F(WindowsTest, AFailingPageFailsTheReport) {
    Define("Edit", "", sPage);
    struct Case {
        const char* sEvent;
        void (Window::*fnReport)(const Ref<Object>&);
        const char* sReport;
    };
    const std::vector<Case> aCases{{"Activate", &Window::PageActivate, "PageActivate"},
                                   {"Deactivate", &Window::PageDeactivate, "PageDeactivate"},
                                   {"Terminate", &Window::PageTerminate, "PageTerminate"}};
    const auto oWindow = OpenHidden("Edit");
    const auto oPage = LastForm().aPages.front();
    for (const auto& [sEvent, fnReportOfCase, sReport] : aCases) {
        const auto fnReport = fnReportOfCase;
        oPage->sFailsIn = sEvent;
        EXPECT_EQ(NumberOf([&] { (oWindow.Get()->*fnReport)(oPage); }), 1001);
        EXPECT_EQ(m_oUtilities->TakeLines(),
                  (std::vector<std::string>{std::string("PageBase.IPage_") + sEvent + " 1001",
                                            std::string("Window.IWindowFormController_") + sReport + " 1001"}));
    }
    oPage->sFailsIn.clear();
    EXPECT_EQ(NumberOf([&] { oWindow->PageActivate(oPage->oBase); }), FailureNumber::TypeMismatch);
    EXPECT_EQ(m_oUtilities->TakeLines(),
              (std::vector<std::string>{
                  "CorvaneMain.QueryPage 13 (Class: \"PageBase\" has not implemented the IPageAccess interface.)",
                  "Window.IWindowFormController_PageActivate 13"}));
}

} // namespace
} // namespace corvane
