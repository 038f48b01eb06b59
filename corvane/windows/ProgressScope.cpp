#include "corvane/windows/ProgressScope.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/MenuManager.h"

namespace corvane {

namespace {

// Nothing without an explorer, and once the application has ended.
Ref<TreeView> ActiveTree() {
    const Ref<Framework> oFramework = CorvaneMain::Framework();
    const Ref<NavigationManager> oNavigation = oFramework ? oFramework->NavigationManager() : nullptr;
    return oNavigation ? oNavigation->ExplorerManager()->TreeView() : nullptr;
}

// The item to which a click on the tool goes; nothing for a tool without one.
Ref<ActionItem> OwnerOf(const Tool& oTool) {
    return oTool.TagVariant().TryAs<ActionItem>();
}

template <class Step>
void Try(Step fnStep) noexcept {
    try {
        fnStep();
    } catch (...) {
        // The next step is taken all the same.
    }
}

} // namespace

ProgressScope::ProgressScope(Double dMax, bool bCancel)
    : m_oBar(CorvaneMain::Framework()->CVProgressBar()),
      m_oActiveBar(CorvaneMain::Framework()->NavigationManager()->MenuManager()->ActiveBar()),
      m_bIsInner(m_oBar->Visible()) {
    if (m_bIsInner) {
        m_dMax = m_oBar->Max();
        m_dValue = m_oBar->Value();
        m_bCancel = m_oBar->Cancel();
        m_bWasCanceled = m_oBar->WasCanceled();
    } else {
        Note();
    }
    try {
        Show(dMax, bCancel);
    } catch (...) {
        if (!m_bIsInner) {
            Try([this] { Hide(); });
            Try([this] { PutBack(); });
        }
        throw;
    }
}

ProgressScope::~ProgressScope() {
    if (m_bIsInner) {
        Try([this] { m_oBar->SetWasCanceled(m_oBar->WasCanceled() || m_bWasCanceled); });
        Try([this] { m_oBar->SetCancel(m_bCancel); });
        Try([this] { m_oBar->SetMax(m_dMax); });
        Try([this] { m_oBar->SetValue(m_dValue); });
        return;
    }
    Try([this] { Hide(); });
    Try([this] { PutBack(); });
}

void ProgressScope::Note() {
    for (const auto& oBand : m_oActiveBar->Bands()->All())
        for (const auto& oTool : oBand->Tools()->All()) {
            const Ref<ActionItem> oOwner = OwnerOf(*oTool);
            m_aCommands.push_back({oTool, oOwner, oTool->Enabled(), oOwner && oOwner->Enabled()});
        }
    if (const Ref<TreeView> tvw = ActiveTree())
        m_bTreeEnabled = tvw->Enabled();
}

// The bar's own Show and Hide want a tree; without one these are its steps.
void ProgressScope::Show(Double dMax, bool bCancel) {
    if (ActiveTree()) {
        m_oBar->Show(dMax, bCancel);
        return;
    }
    for (const auto& oCommand : m_aCommands)
        oCommand.oTool->SetEnabled(false);
    m_oBar->SetCancel(bCancel);
    m_oBar->SetWasCanceled(false);
    m_oBar->SetMax(dMax);
    m_oBar->SetValue(0);
    m_oBar->SetVisible(true);
}

void ProgressScope::Hide() {
    if (ActiveTree()) {
        m_oBar->Hide();
        return;
    }
    for (const auto& oCommand : m_aCommands)
        oCommand.oTool->SetEnabled(true);
    m_oBar->SetVisible(false);
    m_oBar->SetValue(0);
}

// A command is as it was, unless its owner has said otherwise meanwhile or it has another owner now.
void ProgressScope::PutBack() const {
    for (const auto& oCommand : m_aCommands) {
        const Ref<ActionItem> oOwner = OwnerOf(*oCommand.oTool);
        const bool bIsAsNoted = !oOwner || (oOwner == oCommand.oOwner && oOwner->Enabled() == oCommand.bByOwner);
        oCommand.oTool->SetEnabled(bIsAsNoted ? oCommand.bEnabled : oOwner->Enabled());
    }
    if (const Ref<TreeView> tvw = ActiveTree())
        tvw->SetEnabled(m_bTreeEnabled);
}

} // namespace corvane
