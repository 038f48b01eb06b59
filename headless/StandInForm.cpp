#include "corvane/base/KeyedCollection.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Platform.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/IWindowForm.h"
#include "corvane/windows/IWindowFormController.h"
#include "corvane/windows/Window.h"
#include "headless/StandIns.h"

#include <algorithm>
#include <optional>

namespace corvane::inspect {

namespace {

class StandInForm final : public Form, public IWindowForm {
public:
    StandInForm(MdiForm* frmMain, bool bMDIChild, bool bReportsDeactivate, const ModalLoopFunction& fnModalLoop)
        : Form(frmMain, bMDIChild), m_bReportsDeactivate(bReportsDeactivate) {
        // Before the window's own subscription, so that the pages go first.
        m_oBeforeUnload = OnUnload.Subscribe([this](bool&) { EndPages(); });
        m_oChanged = Changed.Subscribe([this](Change eChange) {
            if (eChange == Change::Unloaded)
                ExitWindow();
        });
        m_oModalLoop = ModalLoop.Subscribe([this, fnModalLoop] {
            fnModalLoop(*this);
            Unload();
        });
    }

    void Initialize(const Ref<IWindowFormController>& oWindowFormController, bool bIsApplyCommandShown) override;

    [[nodiscard]] Long MinWindowWidth(Long lPageWidth) override { return lPageWidth; }
    [[nodiscard]] Long MinWindowHeight(Long lPageHeight) override { return lPageHeight; }
    [[nodiscard]] Long NonPageWidth() override { return 0; }
    [[nodiscard]] Long NonPageHeight() override { return 0; }
    [[nodiscard]] Long ActivePageIndex() override { return m_lActivePageIndex; }
    void SetActivePageIndex(Long lIndex) override;
    [[nodiscard]] bool IsCommandEnabled(StandardCommandConstants /*eCommand*/) override { return true; }
    void SetIsCommandEnabled(StandardCommandConstants /*eCommand*/, bool /*bEnabled*/) override {}
    void ClickCommand(StandardCommandConstants eCommand) override;
    void PageValidityChanged(const Ref<IPage>& /*oPage*/) override {}
    [[nodiscard]] bool CanBeSaved() override { return false; }
    void Save() override {}

    std::string_view TypeName() const override { return "StandInForm"; }
    [[nodiscard]] const Ref<IWindowFormController>& Controller() const { return m_oController; }

private:
    [[nodiscard]] Long FrontPage() const;
    [[nodiscard]] Ref<IPage> Page(Long lIndex) const;
    [[nodiscard]] bool IsPassable(Long lIndex) const;
    [[nodiscard]] bool TellAndAskPages(StandardCommandConstants eCommand) const;
    void Step(Long lBy, StandardCommandConstants eCommand);
    void Finish(bool bSaves, bool bCloses);
    void ComeToFront();
    void EndPages();
    void ExitWindow();

    Ref<IWindowFormController> m_oController;
    std::vector<Ref<Object>> m_aPages; // reported without failure
    bool m_bAllReported = false;
    std::optional<std::size_t> m_oActivePage; // that was reported last
    bool m_bReportsDeactivate;
    bool m_bCancelled = true;
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
    m_oActivePage = static_cast<std::size_t>(FrontPage());
    m_oController->PageActivate(m_aPages[*m_oActivePage]);
}

// The page of the index, if it is one.
Long StandInForm::FrontPage() const {
    return m_lActivePageIndex >= 0 && static_cast<std::size_t>(m_lActivePageIndex) < m_aPages.size()
               ? m_lActivePageIndex
               : 0;
}

void StandInForm::SetActivePageIndex(Long lIndex) {
    m_lActivePageIndex = lIndex;
    const auto iPage = static_cast<std::size_t>(FrontPage());
    if (!m_oActivePage || *m_oActivePage == iPage || !m_oController)
        return; // not shown yet
    m_oController->PageDeactivate(m_aPages[*m_oActivePage]);
    m_oActivePage = iPage;
    m_oController->PageActivate(m_aPages[iPage]);
}

Ref<IPage> StandInForm::Page(Long lIndex) const {
    return CorvaneMain::QueryPage(m_aPages[static_cast<std::size_t>(lIndex)]);
}

// Valid, or to be left out.
bool StandInForm::IsPassable(Long lIndex) const {
    const Ref<IPage> oPage = Page(lIndex);
    return oPage->IsValid() || oPage->PageDef()->IsOptional();
}

void StandInForm::ClickCommand(StandardCommandConstants eCommand) {
    const Ref<Form> oSelf(this);
    if (!m_oController || m_aPages.empty())
        return;
    switch (eCommand) {
    case StandardCommandConstants::cvHelp:
        return;
    case StandardCommandConstants::cvCancel:
        (void)TellAndAskPages(eCommand);
        return Finish(false, true);
    case StandardCommandConstants::cvPrevious:
        return Step(-1, eCommand);
    case StandardCommandConstants::cvNext:
        return Step(1, eCommand);
    case StandardCommandConstants::cvApply: // or Save As
        if (TellAndAskPages(eCommand))
            Finish(true, m_oController->WindowDef()->WindowType() == WindowTypeConstants::cvSaveDialog);
        return;
    case StandardCommandConstants::cvOK: // or Finish or Save
        if (TellAndAskPages(eCommand))
            Finish(true, true);
        return;
    }
}

// Whether the window is still there and all pages let it go on.
bool StandInForm::TellAndAskPages(StandardCommandConstants eCommand) const {
    const auto nPages = static_cast<Long>(m_aPages.size());
    for (Long lIndex = 0; lIndex < nPages && m_oController; ++lIndex)
        Page(lIndex)->CommandClick(eCommand);
    for (Long lIndex = 0; lIndex < nPages && m_oController; ++lIndex)
        if (!IsPassable(lIndex))
            return false;
    return !!m_oController;
}

void StandInForm::Step(Long lBy, StandardCommandConstants eCommand) {
    const Long lFrom = FrontPage();
    Page(lFrom)->CommandClick(eCommand);
    const bool bStays = m_oController && FrontPage() == lFrom; // else the page has done it itself
    const Long lTo = lFrom + lBy;
    if (bStays && lTo >= 0 && static_cast<std::size_t>(lTo) < m_aPages.size() && (lBy < 0 || IsPassable(lFrom)))
        SetActivePageIndex(lTo);
}

void StandInForm::Finish(bool bSaves, bool bCloses) {
    for (std::size_t iPage = 0; bSaves && iPage < m_aPages.size(); ++iPage)
        if (const Ref<IPage> oPage = Page(static_cast<Long>(iPage)); oPage->IsValid())
            oPage->Save();
    if (!bCloses || !m_oController)
        return;
    m_bCancelled = !bSaves;
    Unload();
}

void StandInForm::EndPages() {
    if (!m_oController)
        return;
    if (m_oActivePage && m_bReportsDeactivate)
        m_oController->PageDeactivate(m_aPages[*m_oActivePage]);
    for (const auto& oPageObj : m_aPages)
        m_oController->PageTerminate(oPageObj);
    m_aPages.clear();
    m_oActivePage = std::nullopt;
}

void StandInForm::ExitWindow() {
    if (const Ref<IWindowFormController> oController = std::move(m_oController))
        oController->ExitWindow(m_bCancelled);
}

class StandInFormFactory final : public IWindowFormFactory {
public:
    StandInFormFactory(MdiForm* frmMain, bool bReportsDeactivate, ModalLoopFunction fnModalLoop)
        : m_frmMain(frmMain), m_bReportsDeactivate(bReportsDeactivate), m_fnModalLoop(std::move(fnModalLoop)) {}
    Ref<IWindowForm> NewWindowForm(WindowTypeConstants /*eWindowType*/, bool bIsMDIChild) override {
        return New<StandInForm>(m_frmMain, bIsMDIChild, m_bReportsDeactivate, m_fnModalLoop);
    }

private:
    MdiForm* m_frmMain;
    bool m_bReportsDeactivate;
    ModalLoopFunction m_fnModalLoop;
};

} // namespace

bool IsFormOf(const Ref<Form>& oForm, const Ref<Window>& oWindow) {
    const auto oStandIn = oForm.TryAs<StandInForm>();
    return oStandIn && oStandIn->Controller() == oWindow;
}

Ref<IWindowFormFactory> NewStandInFormFactory(MdiForm* frmMain, bool bReportsDeactivate,
                                              ModalLoopFunction fnModalLoop) {
    return New<StandInFormFactory>(frmMain, bReportsDeactivate, std::move(fnModalLoop));
}

} // namespace corvane::inspect
