// The base that a page embeds: the library calls this object, and it notifies the page by its events.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/IActionsProvider.h"
#include "corvane/services/PageDef.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/IWindowExitHandler.h"
#include "corvane/windows/Window.h"

namespace corvane {

class __attribute__((visibility("default"))) PageBase final : public IPage,
                                                              public IActionsProvider,
                                                              public IWindowExitHandler {
public:
    // From Initialize to the end of Terminate; nothing before and after.
    [[nodiscard]] Ref<corvane::Window> Window() const { return m_oWindow; }
    [[nodiscard]] Ref<corvane::PageDef> PageDef() const override { return m_oPageDef; }
    [[nodiscard]] Ref<Object> BusinessContext() const { return m_oBusinessContext; }
    // To be called whenever the answer to IsValid may have changed. Fails with 91 outside the page's life.
    void ValidityChanged();

    Event<const Ref<Object>&> InitializeEvent; // the last pane positions: nothing in this version
    Event<const Ref<Object>&> TerminateEvent;  // the current ones, likewise
    Event<bool&> ValidateEvent;                // comes in as true
    Event<> ActivateEvent;
    Event<> DeactivateEvent;
    Event<> SaveEvent;
    Event<StandardCommandConstants> CommandClickEvent;
    Event<const Ref<corvane::Window>&, bool> OnExitEvent; // a window that the page opened; whether it was cancelled

    // As IPage.
    void Initialize(const Ref<corvane::Window>& oWindow, const Ref<corvane::PageDef>& oPageDef,
                    const Ref<Object>& oBusinessContext, const Ref<Object>& oLastPanePositions) override;
    void Terminate(const Ref<Object>& oCurrentPanePositions) override;
    [[nodiscard]] bool IsValid() override;
    void Activate() override;
    void Deactivate() override;
    void Save() override;
    void CommandClick(StandardCommandConstants eCommand) override;

    // As IActionsProvider and IWindowExitHandler.
    void Initialize(const Ref<ActionItemCollection>& oActionItems) override { m_colActionItems = oActionItems; }
    [[nodiscard]] Ref<ActionItemCollection> ActionItems() const override { return m_colActionItems; }
    void OnExit(const Ref<corvane::Window>& oWindow, bool bWasCancelled) override;

    std::string_view TypeName() const override { return "PageBase"; }

private:
    template <class Event>
    void Call(const char* sProcedure, Event fnRaise);

    Ref<corvane::Window> m_oWindow;
    Ref<corvane::PageDef> m_oPageDef;
    Ref<Object> m_oBusinessContext;
    Ref<ActionItemCollection> m_colActionItems;
};

} // namespace corvane
