// The contents of the explorer: a folder, and the items in it.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/IExplorerItemAccess.h"

#include <string>

class @Name@Item final : public corvane::Automation<@Name@Item, corvane::IExplorerItemAccess> {
public:
    explicit @Name@Item(const std::string& name) { m_base->NameSilently(name); }

    corvane::Ref<corvane::IExplorerItem> ExplorerItem() override { return m_base; }
    [[nodiscard]] std::string Name() const { return m_base->Name(); }
    void OnOpen();

    static constexpr auto Members = corvane::MemberTable(corvane::Method("OnOpen", &@Name@Item::OnOpen));

private:
    corvane::Ref<corvane::ExplorerItemBase> m_base = corvane::New<corvane::ExplorerItemBase>();
};

class @Name@Folder final : public corvane::Automation<@Name@Folder, corvane::IExplorerItemAccess> {
public:
    @Name@Folder();
    ~@Name@Folder() override;

    corvane::Ref<corvane::IExplorerItem> ExplorerItem() override { return m_base; }
    // Adds an item to the folder in the explorer, and returns its name.
    static std::string AddItem();

    static constexpr auto Members = corvane::MemberTable();

private:
    static @Name@Folder* s_shown; // the library makes it

    corvane::Ref<corvane::ExplorerItemBase> m_base = corvane::New<corvane::ExplorerItemBase>();
    corvane::Subscription m_initialize;
    int m_items = 0;
};
