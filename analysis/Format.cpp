#include "analysis/Format.h"

#include "corvane/services/DefinitionEnums.h"

#include <algorithm>
#include <array>

namespace corvane::check {

namespace {

using enum ValueKind;
using enum Need;

constexpr std::array<std::string_view, 2> aSeparators{"Before", "After"};
constexpr std::array<std::string_view, 3> aItemTypes{"Folder", "FolderChild", "Default"};
constexpr std::array<std::string_view, 4> aWindowTypes{"Window", "Wizard", "Dialog", "SaveDialog"};
constexpr std::array<std::string_view, 3> aWindowStates{"Normal", "Minimized", "Maximized"};

constexpr auto aActionItem = std::to_array<AttributeFormat>({{"Name", Text, Name},
                                                             {"Action"},
                                                             {"Visible", Boolean},
                                                             {"Enabled", Boolean},
                                                             {"Checked", Boolean},
                                                             {"Description"},
                                                             {"PassActionItemParam", Boolean},
                                                             {"Image"},
                                                             {"ImageDisabled"},
                                                             {"ImagePressed"}});
constexpr auto aMenuItem = std::to_array<AttributeFormat>({{"Type", Word, Required, MenuTypeWords},
                                                           {"ActionItem", Text, Required},
                                                           {"PositionOrder", Number, Required},
                                                           {"Caption"},
                                                           {"Tip"},
                                                           {"Path"},
                                                           {"ShortCutKey"},
                                                           {"Separator", Word, Optional, aSeparators}});
constexpr auto aExplorerItem = std::to_array<AttributeFormat>({{"Name", Text, Name},
                                                               {"DisplayName"},
                                                               {"ProgID"},
                                                               {"Type", Word, Required, aItemTypes},
                                                               {"Parent"},
                                                               {"PositionOrder", Number},
                                                               {"DefaultAction"},
                                                               {"CanRename", Boolean},
                                                               {"Image"}});
constexpr auto aWindow = std::to_array<AttributeFormat>({{"Name", Text, Name},
                                                         {"PageWidth", WholeNumber},
                                                         {"PageHeight", WholeNumber},
                                                         {"DefPageWidth", WholeNumber},
                                                         {"DefPageHeight", WholeNumber},
                                                         {"Type", Word, Required, aWindowTypes},
                                                         {"Caption"},
                                                         {"IsMDIChild", Boolean},
                                                         {"State", Word, Required, aWindowStates},
                                                         {"IsModal", Boolean},
                                                         {"IsNewBusinessContext", Boolean},
                                                         {"IsApplyCommandShown", Boolean}});
constexpr auto aPage = std::to_array<AttributeFormat>({{"PageProgID", Text, Name},
                                                       {"Caption"},
                                                       {"IsOptional", Boolean, Required},
                                                       {"IsResizable", Boolean, Required},
                                                       {"PositionOrder", Number},
                                                       {"HelpContextID", WholeNumber},
                                                       {"HideExplorer", Boolean}});
constexpr auto aService = std::to_array<AttributeFormat>(
    {{"Name", Text, Name}, {"ProgID"}, {"IsStartService", Boolean}, {"Active", Boolean}});

constexpr std::array aActionItems{ElementFormat{"ActionItem", aActionItem, {}}};
constexpr std::array aMenus{ElementFormat{"MenuItem", aMenuItem, {}}};
constexpr std::array aCommands{ElementFormat{"ActionItems", {}, aActionItems}, ElementFormat{"Menus", {}, aMenus}};
constexpr std::array aExplorerItems{ElementFormat{"ExplorerItem", aExplorerItem, aCommands}};
constexpr std::array aPages{ElementFormat{"Page", aPage, aCommands}};
constexpr std::array aWindows{ElementFormat{"Window", aWindow, aPages}};
constexpr std::array aGroups{ElementFormat{"ActionItems", {}, aActionItems}, ElementFormat{"Menus", {}, aMenus},
                             ElementFormat{"ExplorerItems", {}, aExplorerItems}, ElementFormat{"Windows", {}, aWindows},
                             ElementFormat{"Preferences", {}, aPages}};
constexpr ElementFormat oService{"Service", aService, aGroups};

} // namespace

const AttributeFormat* ElementFormat::Attribute(std::string_view sAttribute) const {
    const auto it = std::find_if(aAttributes.begin(), aAttributes.end(),
                                 [&](const AttributeFormat& o) { return o.sName == sAttribute; });
    return it == aAttributes.end() ? nullptr : &*it;
}

const ElementFormat* ElementFormat::Child(std::string_view sElement) const {
    const auto it =
        std::find_if(aChildren.begin(), aChildren.end(), [&](const ElementFormat& o) { return o.sName == sElement; });
    return it == aChildren.end() ? nullptr : &*it;
}

const ElementFormat& ServiceFormat() {
    return oService;
}

} // namespace corvane::check
