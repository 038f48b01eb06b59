// The words of definition files as numbers.
#pragma once

#include "corvane/base/Failure.h"

namespace corvane {

enum class MenuType : Long {
    fwMenuTitle = 1,
    fwMenuItem = 2,
    fwToolbarItem = 3,
    fwContextMenuItem = 4,
    fwContextMenuTitle = 5,
};

enum class SeparatorStyle : Long { fwSeparatorNone = 0, fwSeparatorBefore = 1, fwSeparatorAfter = 2 };

enum class ExplorerItemType : Long {
    fwExplorerItemDefault = 1,
    fwExplorerItemFolder = 2,
    fwExplorerItemFolderChild = 3
};

// cvDefinitionDefault never stands in a definition: as an argument it means that the definition decides.
enum class WindowTypeConstants : Long {
    cvDefinitionDefault = -1,
    cvWindow = 0,
    cvWizard = 1,
    cvDialog = 2,
    cvSaveDialog = 3,
};

enum class WindowStateConstants : Long { cvDefinitionDefault = -1, cvNormal = 0, cvMinimized = 1, cvMaximized = 2 };

} // namespace corvane
