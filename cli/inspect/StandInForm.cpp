#include "cli/inspect/StandIns.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/platform/Platform.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/IWindowForm.h"
#include "corvane/windows/IWindowFormController.h"

#include <algorithm>

namespace corvane::inspect {

namespace {

class StandInForm final : public Form, public IWindowForm {
public:
    StandInForm(MdiForm* frmMain, bool bMDIChild, bool bReportsDeactivate)
        : Form(frmMain, bMDIChild), m_bReportsDeactivate(bReportsDeactivate) {
        // Before the window's own subscription, so that the pages go first.
        m_oBeforeUnload = OnUnload.Subscribe([this](bool&) { EndPages(); });
        m_oChanged = Changed.Subscribe([this](Change eChange) {
            if (eChange == Change::Unloaded)
                ExitWindow();
        });
        m_oModalLoop = ModalLoop.Subscribe([this] { Unload(); });
    }

    void Initialize(const Ref<IWindowFormController>& oWindowFormController, bool bIsApplyCommandShown) override;

    [[nodiscard]] Long MinWindowWidth(Long lPageWidth) override { return lPageWidth; }
    [[nodiscard]] Long MinWindowHeight(Long lPageHeight) override { return lPageHeight; }
    [[nodiscard]] Long NonPageWidth() override { return 0; }
    [[nodiscard]] Long NonPageHeight() override { return 0; }
    [[nodiscard]] Long ActivePageIndex() override { return m_lActivePageIndex; }
    void SetActivePageIndex(Long lIndex) override { m_lActivePageIndex = lIndex; }
    [[nodiscard]] bool IsCommandEnabled(StandardCommandConstants /*eCommand*/) override { return true; }
    void SetIsCommandEnabled(StandardCommandConstants /*eCommand*/, bool /*bEnabled*/) override {}
    void ClickCommand(StandardCommandConstants /*eCommand*/) override {}
    void PageValidityChanged(const Ref<IPage>& /*oPage*/) override {}
    [[nodiscard]] bool CanBeSaved() override { return false; }
    void Save() override {}

    std::string_view TypeName() const override { return "StandInForm"; }

private:
    void ComeToFront();
    void EndPages();
    void ExitWindow();

    Ref<IWindowFormController> m_oController;
    std::vector<Ref<Object>> m_aPages; // reported without failure
    bool m_bAllReported = false;
    bool m_bFirstPageWasActive = false;
    bool m_bReportsDeactivate;
    Long m_lActivePageIndex = 0;
    Subscription m_oBeforeUnload;
    Subscription m_oChanged;
    Subscription m_oModalLoop;
    Subscription m_oActivate;
};

void StandInForm::Initialize(const Ref<IWindowFormController>& oWindowFormController, bool /*bIsApplyCommandShown*/) {
    m_oController = oWindowFormController;
    // Behind the window's own subscription, which was made before the form was loaded.
    m_oActivate = OnActivate.Subscribe([this] { ComeToFront(); });
    std::vector<Ref<PageDef>> aPageDefs;
    for (const auto& oPageDef : m_oController->WindowDef()->PageDefs())
        aPageDefs.push_back(oPageDef);
    std::stable_sort(aPageDefs.begin(), aPageDefs.end(),
                     [](const auto& a, const auto& b) { return a->PositionOrder() < b->PositionOrder(); });
    for (const auto& oPageDef : aPageDefs) {
        const Ref<Object> oPageObj = CurrentPlatform().oObjectFactory->Create(oPageDef->PageProgID());
        m_oController->PageInitialize(oPageObj, oPageDef);
        m_aPages.push_back(oPageObj);
    }
    m_bAllReported = true;
}

void StandInForm::ComeToFront() {
    if (!m_bAllReported || m_aPages.empty())
        return;
    m_bFirstPageWasActive = true;
    m_oController->PageActivate(m_aPages.front());
}

void StandInForm::EndPages() {
    if (!m_oController)
        return;
    if (m_bFirstPageWasActive && m_bReportsDeactivate)
        m_oController->PageDeactivate(m_aPages.front());
    for (const auto& oPageObj : m_aPages)
        m_oController->PageTerminate(oPageObj);
    m_aPages.clear();
    m_bFirstPageWasActive = false;
}

void StandInForm::ExitWindow() {
    if (const Ref<IWindowFormController> oController = std::move(m_oController))
        oController->ExitWindow(true);
}

class StandInFormFactory final : public IWindowFormFactory {
public:
    StandInFormFactory(MdiForm* frmMain, bool bReportsDeactivate)
        : m_frmMain(frmMain), m_bReportsDeactivate(bReportsDeactivate) {}
    Ref<IWindowForm> NewWindowForm(WindowTypeConstants /*eWindowType*/, bool bIsMDIChild) override {
        return New<StandInForm>(m_frmMain, bIsMDIChild, m_bReportsDeactivate);
    }

private:
    MdiForm* m_frmMain;
    bool m_bReportsDeactivate;
};

} // namespace

Ref<IWindowFormFactory> NewStandInFormFactory(MdiForm* frmMain, bool bReportsDeactivate) {
    return New<StandInFormFactory>(frmMain, bReportsDeactivate);
}

} // namespace corvane::inspect
