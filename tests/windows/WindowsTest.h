// A loaded library with window definitions, a host's forms that write down what is asked of them, and listeners.
#pragma once

#include "adapters/messages/WindowMessages.h"
#include "adapters/xml/XmlService.h"
#include "corvane/author/Host.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Library.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/IWindowFormFactory.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "tests/support/Failing.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane::testing {

// What everybody of a test has heard, in one line.
struct Heard final : virtual Object {
    void Add(const std::string& sWhat) { sLine += (sLine.empty() ? "" : " ") + sWhat; }
    std::string Take() { return std::exchange(sLine, {}); }
    std::string sLine;
};

class HeardScreen final : public IScreen {
public:
    explicit HeardScreen(Ref<Heard> oHeard) : m_oHeard(std::move(oHeard)) {}
    MousePointer Pointer() const override { return m_ePointer; }
    void SetPointer(MousePointer ePointer) override {
        m_ePointer = ePointer;
        m_oHeard->Add("pointer=" + std::to_string(static_cast<Long>(ePointer)));
    }
    Single TwipsPerPixelX() const override { return fTwipsX; }
    Single TwipsPerPixelY() const override { return fTwipsY; }
    Single fTwipsX = 15;
    Single fTwipsY = 15;

private:
    Ref<Heard> m_oHeard;
    MousePointer m_ePointer = MousePointer::Default;
};

class HeardTimers final : public ITimers {
public:
    struct Timer final : ITimer {
        void SetInterval(Long lMilliseconds) override { lInterval = lMilliseconds; }
        void SetEnabled(bool bOn) override { bEnabled = bOn; }
        Long lInterval = 0;
        bool bEnabled = false;
    };
    explicit HeardTimers(Ref<Heard> oHeard) : m_oHeard(std::move(oHeard)) {}
    Ref<ITimer> NewTimer() override { return aTimers.emplace_back(New<Timer>()); }
    void DoEvents() override { m_oHeard->Add("pump"); }
    // The intervals of the enabled timers.
    std::string Running() const {
        std::string sRunning;
        for (const auto& oTimer : aTimers)
            if (oTimer->bEnabled)
                sRunning += std::to_string(oTimer->lInterval) + " ";
        return sRunning;
    }
    void TickAll() {
        for (const auto& oTimer : std::vector(aTimers))
            if (oTimer->bEnabled)
                oTimer->Tick.Raise();
    }
    std::vector<Ref<Timer>> aTimers;

private:
    Ref<Heard> m_oHeard;
};

// A page's own class, which lets the test hear the events of its base.
class TestPage final : public IPageAccess {
public:
    explicit TestPage(std::string sPageName, Ref<Heard> oHeard) : sName(std::move(sPageName)) {
        const auto Hear = [this, oHeard](auto& oEvent, const std::string& sEvent) {
            m_aSubscriptions.push_back(oEvent.Subscribe([this, oHeard, sEvent](auto&&...) {
                oHeard->Add(sName + "." + sEvent);
                if (sFailsIn == sEvent)
                    Fail(1001, "The page can't");
            }));
        };
        Hear(oBase->InitializeEvent, "Initialize");
        Hear(oBase->TerminateEvent, "Terminate");
        Hear(oBase->ActivateEvent, "Activate");
        Hear(oBase->DeactivateEvent, "Deactivate");
        Hear(oBase->SaveEvent, "Save");
    }
    Ref<IPage> Page() override { return oPage; }

    std::string sName;
    std::string sFailsIn;
    Ref<PageBase> oBase = New<PageBase>();
    Ref<IPage> oPage = oBase;

private:
    std::vector<Subscription> m_aSubscriptions;
};

struct FormHabits {
    enum class Exit { AfterUnload, BeforeUnloadArrives, Never };
    Exit eExit = Exit::AfterUnload;
    bool bCancelled = false;
    bool bRefuses = false;
    bool bFailsInInitialize = false;
    bool bReportsDeactivate = true;
};

// The contract without a form: it adds 100 to a page's width and 200 to its height.
class FormlessWindow : public IWindowForm {
public:
    explicit FormlessWindow(Ref<Heard> oHeard) : m_oHeard(std::move(oHeard)) {}
    void Initialize(const Ref<IWindowFormController>& /*oController*/, bool /*bApply*/) override {}
    Long MinWindowWidth(Long lPageWidth) override {
        m_oHeard->Add("width(" + std::to_string(lPageWidth) + ")");
        return lPageWidth + 100;
    }
    Long MinWindowHeight(Long lPageHeight) override {
        m_oHeard->Add("height(" + std::to_string(lPageHeight) + ")");
        return lPageHeight + 200;
    }
    Long NonPageWidth() override { return 100; }
    Long NonPageHeight() override { return 200; }
    Long ActivePageIndex() override { return m_lIndex; }
    void SetActivePageIndex(Long lIndex) override { m_lIndex = lIndex; }
    bool IsCommandEnabled(StandardCommandConstants eCommand) override { return eCommand == m_eEnabled; }
    void SetIsCommandEnabled(StandardCommandConstants eCommand, bool bEnabled) override {
        m_eEnabled = bEnabled ? eCommand : StandardCommandConstants::cvHelp;
    }
    void ClickCommand(StandardCommandConstants eCommand) override {
        m_oHeard->Add("click(" + std::to_string(static_cast<Long>(eCommand)) + ")");
    }
    void PageValidityChanged(const Ref<IPage>& oPage) override {
        m_oHeard->Add(oPage->IsValid() ? "valid" : "invalid");
    }
    bool CanBeSaved() override { return true; }
    void Save() override { m_oHeard->Add("save"); }

protected:
    Ref<Heard> m_oHeard;
    Long m_lIndex = 0;

private:
    StandardCommandConstants m_eEnabled = StandardCommandConstants::cvOK;
};

// A window form whose pages are named after their definitions.
class TestForm final : public Form, public FormlessWindow {
public:
    TestForm(MdiForm* frmMain, bool bMDIChild, Ref<Heard> oHeard, FormHabits oFormHabits);

    void Initialize(const Ref<IWindowFormController>& oWindowFormController, bool bIsApplyCommandShown) override;
    void ClickCommand(StandardCommandConstants eCommand) override {
        FormlessWindow::ClickCommand(eCommand);
        if (eCommand == StandardCommandConstants::cvCancel)
            Unload();
    }

    // What a form that never reported its end owes its window.
    void ExitWindow();

    FormHabits oHabits;
    std::vector<Ref<TestPage>> aPages;

private:
    void BeforeUnload(bool& bRefused);
    void OnFormChanged(Change eChange);

    Ref<IWindowFormController> m_oController;
    std::vector<Subscription> m_aSubscriptions;
};

class TestFactory final : public IWindowFormFactory {
public:
    TestFactory(MdiForm* frmMain, Ref<Heard> oHeard) : m_frmMain(frmMain), m_oHeard(std::move(oHeard)) {}
    Ref<IWindowForm> NewWindowForm(WindowTypeConstants eWindowType, bool bIsMDIChild) override;

    FormHabits oHabits;
    bool bMakesNoForm = false; // but something else
    std::vector<Ref<TestForm>> aForms;

private:
    MdiForm* m_frmMain;
    Ref<Heard> m_oHeard;
};

class WindowsTest : public ::testing::Test {
protected:
    WindowsTest();
    ~WindowsTest() override;

    // A Window element's attributes and pages; Type, State and the pages' required attributes are added when they are
    // missing.
    void Define(const std::string& sName, const std::string& sAttributes = {}, const std::string& sPages = {});
    [[nodiscard]] WindowManager& Manager() const { return *m_oManager; }
    [[nodiscard]] TestForm& LastForm() const { return *m_oFactory->aForms.back(); }
    // Opens with a key and without showing.
    Ref<Window> OpenHidden(const std::string& sName, const std::string& sKey = {});
    // Adds what the manager tells to what is heard, as "WindowInitialize(key)" and "PageInitialize(name)".
    void Listen();
    [[nodiscard]] std::string NameOf(const Ref<Object>& oPageObj) const;
    void EndLibrary();

    Ref<Heard> m_oHeard = New<Heard>();
    Ref<RecordingUtilities> m_oUtilities = New<RecordingUtilities>();
    Ref<HeardScreen> m_oScreen = New<HeardScreen>(m_oHeard);
    Ref<HeardTimers> m_oTimers = New<HeardTimers>(m_oHeard);
    Ref<WindowMessages> m_oMessages = New<WindowMessages>();
    Ref<XmlService> m_oXml = New<XmlService>();
    std::optional<Library> m_oLibrary;
    Ref<MdiForm> m_frmMain = New<MdiForm>();
    Ref<TestFactory> m_oFactory = New<TestFactory>(m_frmMain.Get(), m_oHeard);
    Ref<WindowManager> m_oManager;
    Ref<Heard> m_oContext = New<Heard>(); // any object
    std::vector<Subscription> m_aSubscriptions;
};

} // namespace corvane::testing
