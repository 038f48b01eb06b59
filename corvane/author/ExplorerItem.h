// An explorer item in short: `class Study final : public ExplorerItem<Study>`, with those of the functions below that
// it needs and the procedures of its commands, listed by Methods<…>().
#pragma once

#include "corvane/author/Client.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/IExplorerItemAccess.h"

#include <concepts>
#include <string>
#include <utility>

namespace corvane {

// What all items have, whatever their class: also the base of what several kinds share.
class __attribute__((visibility("default"))) AnyExplorerItem : public IExplorerItemAccess, protected Client {
public:
    Ref<IExplorerItem> ExplorerItem() override { return m_oBase; }
    [[nodiscard]] std::string Name() const { return m_oBase->Name(); }

protected:
    AnyExplorerItem();
    ~AnyExplorerItem() override;

    // The item joins the explorer, or does so again: it settles its name, if it has none yet, and adds its children.
    // An item that is left without a name gets that of its definition, as folders need it.
    virtual void OnInitialize() {}
    virtual void OnDisplayName(std::string& /*sText*/) {}  // replace the text that is shown
    virtual void OnBeforeRename(std::string& /*sText*/) {} // replace the text that is edited
    virtual void OnAfterRename(const std::string& /*sName*/) {
    } // the user has renamed it, or a refusal has renamed it back
    virtual void OnExit(const Ref<Window>& /*oWindow*/, bool /*bWasCancelled*/) {} // a window that it opened

    // No event is raised, and the explorer doesn't show it by itself.
    void SetName(std::string sName) { m_oBase->NameSilently(std::move(sName)); }
    // In OnInitialize.
    void AddChild(const Ref<Object>& oItem) { m_oBase->Children()->Add(oItem); }
    [[nodiscard]] const Ref<ExplorerItemBase>& Base() const { return m_oBase; }

    // Which of the functions a class has of its own; there may be many items, and most have none.
    struct Own {
        bool bInitialize;
        bool bDisplayName;
        bool bBeforeRename;
        bool bAfterRename;
        bool bExit;
    };
    void Subscribe(const Own& oOwn);

private:
    [[nodiscard]] Ref<Object> BaseObject() const override { return m_oBase; }

    Ref<ExplorerItemBase> m_oBase = New<ExplorerItemBase>();
    std::vector<Subscription> m_aEvents;
};

// Whether a class has the function for itself; one that can't be seen from here is its own, too.
#define CORVANE_DETAIL_OWNS(Function, ...)                                                                             \
    !requires {                                                                                                        \
        requires Inherits<__VA_ARGS__>(&T::Function);                                                                  \
    }

// Part is AnyExplorerItem or derives from it.
template <class T, class Part = AnyExplorerItem>
class ExplorerItem : public Automation<T, Part> {
public:
    static constexpr auto Members = MemberTable(); // of an item without procedures

    // `using ExplorerItem::ExplorerItem;` takes it over.
    explicit ExplorerItem(std::string sName = {}) {
        this->SetName(std::move(sName));
        this->Subscribe({CORVANE_DETAIL_OWNS(OnInitialize, void()) || this->Name().empty(),
                         CORVANE_DETAIL_OWNS(OnDisplayName, void(std::string&)),
                         CORVANE_DETAIL_OWNS(OnBeforeRename, void(std::string&)),
                         CORVANE_DETAIL_OWNS(OnAfterRename, void(const std::string&)),
                         CORVANE_DETAIL_OWNS(OnExit, void(const Ref<Window>&, bool))});
    }

private:
    template <class F, class Owner>
    static constexpr bool Inherits(F Owner::*) {
        return std::same_as<Owner, AnyExplorerItem>;
    }
};

#undef CORVANE_DETAIL_OWNS

} // namespace corvane
