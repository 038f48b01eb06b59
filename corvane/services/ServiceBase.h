// The base that a service embeds: the library calls this object, and it notifies the service by its events.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/IActionsProvider.h"
#include "corvane/services/IService.h"
#include "corvane/windows/IWindowExitHandler.h"

namespace corvane {

class __attribute__((visibility("default"))) ServiceBase final : public IService,
                                                                 public IActionsProvider,
                                                                 public IWindowExitHandler {
public:
    // The service's live actions by name; nothing until the menus are built.
    [[nodiscard]] Ref<ActionItemCollection> ActionItems() const override;

    Event<> InitializeEvent;
    Event<> TerminateEvent;
    // Fill the dictionary with what isn't saved yet; the order comes in as 2, the rank of a service that says nothing.
    Event<const Ref<Dictionary>&, Double&> GetUnsavedItems;
    Event<const Ref<Object>&> SaveEvent;
    Event<const Ref<KeyedCollection<Ref<Object>>>&> GetReportContextTypes;
    Event<Long, const Ref<Dictionary>&> GetReportContexts;
    Event<const Ref<Window>&, bool> OnExitEvent; // the window, and whether it was cancelled
    Event<bool> SaveCompleteEvent;               // whether the saving was cancelled

    // As IService.
    void Initialize() override;
    void Terminate() override;
    // What comes in as dblOrder has no effect.
    Ref<Dictionary> UnsavedItems(Double& dblOrder) override;
    void Save(const Ref<Object>& oUnsavedItem) override;
    Ref<KeyedCollection<Ref<Object>>> ReportContextTypes() override;
    Ref<Dictionary> ReportContexts(Long lReportContextTypeID) override;
    void SaveComplete(bool bWasCancelled) override;

    // As IActionsProvider and IWindowExitHandler.
    void Initialize(const Ref<ActionItemCollection>& oActionItems) override;
    void OnExit(const Ref<Window>& oWindow, bool bWasCancelled) override;

    std::string_view TypeName() const override { return "ServiceBase"; }

private:
    Ref<ActionItemCollection> m_colActionItems;
};

} // namespace corvane
