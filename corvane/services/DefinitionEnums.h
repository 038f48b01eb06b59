// The words of definition files as numbers.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <array>
#include <optional>
#include <string_view>

namespace corvane {

enum class MenuType : Long {
    fwMenuTitle = 1,
    fwMenuItem = 2,
    fwToolbarItem = 3,
    fwContextMenuItem = 4,
    fwContextMenuTitle = 5,
};

// The words of the attribute Type, in the order of the numbers.
inline constexpr std::array<std::string_view, 5> MenuTypeWords{"MenuTitle", "MenuItem", "ToolbarItem",
                                                               "ContextMenuItem", "ContextMenuTitle"};

[[nodiscard]] constexpr std::string_view WordOf(MenuType eType) {
    return MenuTypeWords[static_cast<std::size_t>(eType) - 1];
}

// Nothing for any other word; upper and lower case are the same.
[[nodiscard]] inline std::optional<MenuType> MenuTypeOf(std::string_view sWord) {
    for (std::size_t i = 0; i < MenuTypeWords.size(); ++i)
        if (EqualText(sWord, MenuTypeWords[i]))
            return static_cast<MenuType>(i + 1);
    return {};
}

enum class SeparatorStyle : Long { fwSeparatorNone = 0, fwSeparatorBefore = 1, fwSeparatorAfter = 2 };

enum class ExplorerItemType : Long {
    fwExplorerItemDefault = 1,
    fwExplorerItemFolder = 2,
    fwExplorerItemFolderChild = 3
};

// cvDefinitionDefault never occurs in a definition: as an argument it means that the definition decides.
enum class WindowTypeConstants : Long {
    cvDefinitionDefault = -1,
    cvWindow = 0,
    cvWizard = 1,
    cvDialog = 2,
    cvSaveDialog = 3,
};

enum class WindowStateConstants : Long { cvDefinitionDefault = -1, cvNormal = 0, cvMinimized = 1, cvMaximized = 2 };

} // namespace corvane
