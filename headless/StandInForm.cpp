#include "corvane/base/KeyedCollection.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Platform.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/IWindowForm.h"
#include "corvane/windows/IWindowFormController.h"
#include "corvane/windows/Window.h"
#include "headless/FormPages.h"

#include <algorithm>
#include <optional>

namespace corvane::inspect {

namespace {

// In the place of a page whose form can't be read.
class EmptyPage final : public IPageAccess {
public:
    Ref<IPage> Page() override { return m_base; }
    std::string_view TypeName() const override { return "EmptyPage"; }

private:
    Ref<PageBase> m_base = New<PageBase>();
};

class StandInForm final : public Form, public IWindowForm {
public:
    StandInForm(MdiForm* mainForm, bool mdiChild, bool reportsDeactivate, const ModalLoopFunction& modalLoop,
                forms::FormOptions formOptions)
        : Form(mainForm, mdiChild), m_reportsDeactivate(reportsDeactivate), m_formOptions(std::move(formOptions)) {
        // Before the window's own subscription, so that the pages go first.
        m_beforeUnload = OnUnload.Subscribe([this](bool&) { EndPages(); });
        m_changed = Changed.Subscribe([this](Change change) {
            if (change == Change::Unloaded)
                ExitWindow();
        });
        m_modalLoop = ModalLoop.Subscribe([this, modalLoop] {
            modalLoop(*this);
            Unload();
        });
    }

    void Initialize(const Ref<IWindowFormController>& windowFormController, bool isApplyCommandShown) override;

    [[nodiscard]] Long MinWindowWidth(Long pageWidth) override { return pageWidth; }
    [[nodiscard]] Long MinWindowHeight(Long pageHeight) override { return pageHeight; }
    [[nodiscard]] Long NonPageWidth() override { return 0; }
    [[nodiscard]] Long NonPageHeight() override { return 0; }
    [[nodiscard]] Long ActivePageIndex() override { return m_activePageIndex; }
    void SetActivePageIndex(Long index) override;
    [[nodiscard]] bool IsCommandEnabled(StandardCommandConstants /*command*/) override { return true; }
    void SetIsCommandEnabled(StandardCommandConstants /*command*/, bool /*enabled*/) override {}
    void ClickCommand(StandardCommandConstants command) override;
    void PageValidityChanged(const Ref<IPage>& /*page*/) override {}
    [[nodiscard]] bool CanBeSaved() override { return false; }
    void Save() override {}

    std::string_view TypeName() const override { return "StandInForm"; }
    [[nodiscard]] const Ref<IWindowFormController>& Controller() const { return m_controller; }
    [[nodiscard]] const std::vector<ShownPage>& Shown() const { return m_shown; }

private:
    [[nodiscard]] Long FrontPage() const;
    [[nodiscard]] Ref<IPage> Page(Long index) const;
    [[nodiscard]] bool IsPassable(Long index) const;
    [[nodiscard]] bool NotifyAndValidatePages(StandardCommandConstants command) const;
    void Step(Long by, StandardCommandConstants command);
    void Finish(bool saves, bool closes);
    void ComeToFront();
    void EndPages();
    void ExitWindow();

    Ref<IWindowFormController> m_controller;
    [[nodiscard]] ShownPage Make(const Ref<PageDef>& pageDef) const;

    std::vector<Ref<Object>> m_pages; // reported without failure
    std::vector<ShownPage> m_shown;   // the same ones
    bool m_allReported = false;
    std::optional<std::size_t> m_activePage; // that was reported last
    bool m_reportsDeactivate;
    forms::FormOptions m_formOptions;
    bool m_cancelled = true;
    Long m_activePageIndex = 0;
    Subscription m_beforeUnload;
    Subscription m_changed;
    Subscription m_modalLoop;
    Subscription m_activate;
};

void StandInForm::Initialize(const Ref<IWindowFormController>& windowFormController, bool /*isApplyCommandShown*/) {
    m_controller = windowFormController;
    // Behind the window's own subscription, which was made before the form was loaded.
    m_activate = OnActivate.Subscribe([this] { ComeToFront(); });
    std::vector<Ref<PageDef>> pageDefs;
    for (const auto& pageDef : m_controller->WindowDef()->PageDefs())
        pageDefs.push_back(pageDef);
    std::stable_sort(pageDefs.begin(), pageDefs.end(),
                     [](const auto& a, const auto& b) { return a->PositionOrder() < b->PositionOrder(); });
    for (const auto& pageDef : pageDefs) {
        const ShownPage shown = Make(pageDef);
        m_controller->PageInitialize(shown.pageObj, pageDef);
        m_pages.push_back(shown.pageObj);
        m_shown.push_back(shown);
    }
    m_allReported = true;
}

ShownPage StandInForm::Make(const Ref<PageDef>& pageDef) const {
    ShownPage page{pageDef, nullptr, nullptr, {}};
    const auto def = forms::FormPage::Read(m_formOptions, pageDef);
    if (!def) {
        page.pageObj = CurrentPlatform().oObjectFactory->Create(pageDef->PageProgID());
    } else if (!def->readable) {
        page.problem = forms::WhyUnreadable(*def);
        page.pageObj = New<EmptyPage>();
    } else {
        page.form = forms::FormPage::OpenRead(m_formOptions, pageDef, def);
        page.pageObj = page.form->PageObj();
    }
    return page;
}

void StandInForm::ComeToFront() {
    if (!m_allReported || m_pages.empty())
        return;
    m_activePage = static_cast<std::size_t>(FrontPage());
    m_controller->PageActivate(m_pages[*m_activePage]);
}

// The page of the index, if it is one.
Long StandInForm::FrontPage() const {
    return m_activePageIndex >= 0 && static_cast<std::size_t>(m_activePageIndex) < m_pages.size() ? m_activePageIndex
                                                                                                  : 0;
}

void StandInForm::SetActivePageIndex(Long index) {
    m_activePageIndex = index;
    const auto page = static_cast<std::size_t>(FrontPage());
    if (!m_activePage || *m_activePage == page || !m_controller)
        return; // not shown yet
    m_controller->PageDeactivate(m_pages[*m_activePage]);
    m_activePage = page;
    m_controller->PageActivate(m_pages[page]);
}

Ref<IPage> StandInForm::Page(Long index) const {
    return CorvaneMain::QueryPage(m_pages[static_cast<std::size_t>(index)]);
}

// Valid, or to be left out.
bool StandInForm::IsPassable(Long index) const {
    const Ref<IPage> page = Page(index);
    const auto& form = m_shown[static_cast<std::size_t>(index)].form;
    return page->IsValid() || (page->PageDef()->IsOptional() && !(form && form->IsChanged()));
}

void StandInForm::ClickCommand(StandardCommandConstants command) {
    const Ref<Form> self(this);
    if (!m_controller || m_pages.empty())
        return;
    switch (command) {
    case StandardCommandConstants::cvHelp:
        return;
    case StandardCommandConstants::cvCancel:
        (void)NotifyAndValidatePages(command);
        return Finish(false, true);
    case StandardCommandConstants::cvPrevious:
        return Step(-1, command);
    case StandardCommandConstants::cvNext:
        return Step(1, command);
    case StandardCommandConstants::cvApply: // or Save As
        if (NotifyAndValidatePages(command))
            Finish(true, m_controller->WindowDef()->WindowType() == WindowTypeConstants::cvSaveDialog);
        return;
    case StandardCommandConstants::cvOK: // or Finish or Save
        if (NotifyAndValidatePages(command))
            Finish(true, true);
        return;
    }
}

// Whether the window is still there and all pages let it go on.
bool StandInForm::NotifyAndValidatePages(StandardCommandConstants command) const {
    const auto pages = static_cast<Long>(m_pages.size());
    for (Long index = 0; index < pages && m_controller; ++index)
        Page(index)->CommandClick(command);
    for (Long index = 0; index < pages && m_controller; ++index)
        if (!IsPassable(index))
            return false;
    return !!m_controller;
}

void StandInForm::Step(Long by, StandardCommandConstants command) {
    const Long from = FrontPage();
    Page(from)->CommandClick(command);
    const bool stays = m_controller && FrontPage() == from; // else the page has done it itself
    const Long to = from + by;
    if (stays && to >= 0 && static_cast<std::size_t>(to) < m_pages.size() && (by < 0 || IsPassable(from)))
        SetActivePageIndex(to);
}

void StandInForm::Finish(bool saves, bool closes) {
    for (std::size_t pageIndex = 0; saves && pageIndex < m_pages.size(); ++pageIndex)
        if (const Ref<IPage> page = Page(static_cast<Long>(pageIndex)); page->IsValid())
            page->Save();
    if (!closes || !m_controller)
        return;
    m_cancelled = !saves;
    Unload();
}

void StandInForm::EndPages() {
    if (!m_controller)
        return;
    if (m_activePage && m_reportsDeactivate)
        m_controller->PageDeactivate(m_pages[*m_activePage]);
    for (const auto& pageObj : m_pages)
        m_controller->PageTerminate(pageObj);
    m_pages.clear();
    m_shown.clear();
    m_activePage = std::nullopt;
}

void StandInForm::ExitWindow() {
    if (const Ref<IWindowFormController> controller = std::move(m_controller))
        controller->ExitWindow(m_cancelled);
}

class StandInFormFactory final : public IWindowFormFactory {
public:
    StandInFormFactory(MdiForm* mainForm, bool reportsDeactivate, ModalLoopFunction modalLoop,
                       forms::FormOptions formOptions)
        : m_mainForm(mainForm), m_reportsDeactivate(reportsDeactivate), m_modalLoop(std::move(modalLoop)),
          m_formOptions(std::move(formOptions)) {}
    Ref<IWindowForm> NewWindowForm(WindowTypeConstants /*windowType*/, bool isMDIChild) override {
        return New<StandInForm>(m_mainForm, isMDIChild, m_reportsDeactivate, m_modalLoop, m_formOptions);
    }

private:
    MdiForm* m_mainForm;
    bool m_reportsDeactivate;
    ModalLoopFunction m_modalLoop;
    forms::FormOptions m_formOptions;
};

} // namespace

bool IsFormOf(const Ref<Form>& form, const Ref<Window>& window) {
    const auto standIn = form.TryAs<StandInForm>();
    return standIn && standIn->Controller() == window;
}

std::vector<ShownPage> PagesOf(const ModelHost& host, const Ref<Window>& window) {
    for (const auto& form : host.MainForm()->Forms())
        if (const auto standIn = form.TryAs<StandInForm>(); standIn && standIn->Controller() == window)
            return standIn->Shown();
    return {};
}

Ref<IWindowFormFactory> NewStandInFormFactory(MdiForm* mainForm, bool reportsDeactivate, ModalLoopFunction modalLoop,
                                              const std::string& applicationFolder, bool standIns) {
    return New<StandInFormFactory>(mainForm, reportsDeactivate, std::move(modalLoop),
                                   forms::FormOptions{applicationFolder, standIns});
}

} // namespace corvane::inspect
