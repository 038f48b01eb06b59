// What the explorer shows: a folder, and the items in it.
#pragma once

#include "corvane/Explorer.h"

#include <string>
#include <vector>

class @Name@Item final : public corvane::ExplorerItem<@Name@Item> {
public:
    using ExplorerItem::ExplorerItem;

    void OnOpen();

    static constexpr auto Members = corvane::Methods<&@Name@Item::OnOpen>();
};

class @Name@Folder final : public corvane::ExplorerItem<@Name@Folder> {
public:
    // The names of the items that there are.
    static std::vector<std::string>& Names();

private:
    void OnInitialize() override;
};
