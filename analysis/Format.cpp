#include "analysis/Format.h"

#include "corvane/services/DefinitionEnums.h"

#include <algorithm>
#include <array>

namespace corvane::check {

namespace {

using enum ValueKind;
using enum Need;

constexpr std::array<std::string_view, 2> separators{"Before", "After"};
constexpr std::array<std::string_view, 3> itemTypes{"Folder", "FolderChild", "Default"};
constexpr std::array<std::string_view, 4> windowTypes{"Window", "Wizard", "Dialog", "SaveDialog"};
constexpr std::array<std::string_view, 3> windowStates{"Normal", "Minimized", "Maximized"};

constexpr auto actionItem = std::to_array<AttributeFormat>({{"Name", Text, Name},
                                                            {"Action"},
                                                            {"Visible", Boolean},
                                                            {"Enabled", Boolean},
                                                            {"Checked", Boolean},
                                                            {"Description"},
                                                            {"PassActionItemParam", Boolean},
                                                            {"Image"},
                                                            {"ImageDisabled"},
                                                            {"ImagePressed"}});
constexpr auto menuItem = std::to_array<AttributeFormat>({{"Type", Word, Required, MenuTypeWords},
                                                          {"ActionItem", Text, Required},
                                                          {"PositionOrder", Number, Required},
                                                          {"Caption"},
                                                          {"Tip"},
                                                          {"Path"},
                                                          {"ShortCutKey"},
                                                          {"Separator", Word, Optional, separators}});
constexpr auto explorerItem = std::to_array<AttributeFormat>({{"Name", Text, Name},
                                                              {"DisplayName"},
                                                              {"ProgID"},
                                                              {"Type", Word, Required, itemTypes},
                                                              {"Parent"},
                                                              {"PositionOrder", Number},
                                                              {"DefaultAction"},
                                                              {"CanRename", Boolean},
                                                              {"Image"}});
constexpr auto windowFormat = std::to_array<AttributeFormat>({{"Name", Text, Name},
                                                              {"PageWidth", WholeNumber},
                                                              {"PageHeight", WholeNumber},
                                                              {"DefPageWidth", WholeNumber},
                                                              {"DefPageHeight", WholeNumber},
                                                              {"Type", Word, Required, windowTypes},
                                                              {"Caption"},
                                                              {"IsMDIChild", Boolean},
                                                              {"State", Word, Required, windowStates},
                                                              {"IsModal", Boolean},
                                                              {"IsNewBusinessContext", Boolean},
                                                              {"IsApplyCommandShown", Boolean}});
constexpr auto pageFormat = std::to_array<AttributeFormat>({{"PageProgID", Text, Name},
                                                            {"Caption"},
                                                            {"IsOptional", Boolean, Required},
                                                            {"IsResizable", Boolean, Required},
                                                            {"PositionOrder", Number},
                                                            {"HelpContextID", WholeNumber},
                                                            {"HideExplorer", Boolean}});
constexpr auto servicesFormat = std::to_array<AttributeFormat>(
    {{"Name", Text, Name}, {"ProgID"}, {"IsStartService", Boolean}, {"Active", Boolean}});

constexpr std::array actionItems{ElementFormat{"ActionItem", actionItem, {}}};
constexpr std::array menus{ElementFormat{"MenuItem", menuItem, {}}};
constexpr std::array commands{ElementFormat{"ActionItems", {}, actionItems}, ElementFormat{"Menus", {}, menus}};
constexpr std::array explorerItems{ElementFormat{"ExplorerItem", explorerItem, commands}};
constexpr std::array pagesFormat{ElementFormat{"Page", pageFormat, commands}};
constexpr std::array windowsFormat{ElementFormat{"Window", windowFormat, pagesFormat}};
constexpr std::array groups{ElementFormat{"ActionItems", {}, actionItems}, ElementFormat{"Menus", {}, menus},
                            ElementFormat{"ExplorerItems", {}, explorerItems},
                            ElementFormat{"Windows", {}, windowsFormat}, ElementFormat{"Preferences", {}, pagesFormat}};
constexpr ElementFormat serviceFormat{"Service", servicesFormat, groups};

} // namespace

const AttributeFormat* ElementFormat::Attribute(const AttributeName& attribute) const {
    const auto it = std::find_if(attributes.begin(), attributes.end(), [&](const AttributeFormat& o) {
        return attribute.number != 0 && o.name.number == attribute.number; // they all have one
    });
    return it == attributes.end() ? nullptr : &*it;
}

const ElementFormat* ElementFormat::Child(std::string_view element) const {
    const auto it =
        std::find_if(children.begin(), children.end(), [&](const ElementFormat& o) { return o.name == element; });
    return it == children.end() ? nullptr : &*it;
}

const ElementFormat& ServiceFormat() {
    return serviceFormat;
}

} // namespace corvane::check
