// The names of attributes in definition files as small numbers, so that to find one compares no letters.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvane::check {

namespace names {

inline constexpr auto known = std::to_array<std::string_view>({"Name",
                                                               "ProgID",
                                                               "IsStartService",
                                                               "Active",
                                                               "Action",
                                                               "Visible",
                                                               "Enabled",
                                                               "Checked",
                                                               "Description",
                                                               "PassActionItemParam",
                                                               "Image",
                                                               "ImageDisabled",
                                                               "ImagePressed",
                                                               "Type",
                                                               "ActionItem",
                                                               "PositionOrder",
                                                               "Caption",
                                                               "Tip",
                                                               "Path",
                                                               "ShortCutKey",
                                                               "Separator",
                                                               "DisplayName",
                                                               "Parent",
                                                               "DefaultAction",
                                                               "CanRename",
                                                               "PageWidth",
                                                               "PageHeight",
                                                               "DefPageWidth",
                                                               "DefPageHeight",
                                                               "State",
                                                               "IsMDIChild",
                                                               "IsModal",
                                                               "IsNewBusinessContext",
                                                               "IsApplyCommandShown",
                                                               "PageProgID",
                                                               "IsOptional",
                                                               "IsResizable",
                                                               "HelpContextID",
                                                               "HideExplorer"});

inline constexpr std::size_t slots = 128;

// Such that no two of the known names have the same.
constexpr std::size_t SlotOf(std::string_view name) {
    constexpr std::size_t weightOfFirst = 9;
    constexpr std::size_t weightOfLast = 26;
    return (name.size() + weightOfFirst * static_cast<unsigned char>(name.front()) +
            weightOfLast * static_cast<unsigned char>(name.back())) %
           slots;
}

// The numbers of the names by their slots, from 1; 0 where none is.
inline constexpr auto numbers = [] {
    std::array<std::uint8_t, slots> table{};
    for (std::size_t i = 0; i < known.size(); ++i)
        table[SlotOf(known[i])] = static_cast<std::uint8_t>(i + 1);
    return table;
}();

static_assert(
    [] {
        for (std::size_t i = 0; i < known.size(); ++i)
            if (numbers[SlotOf(known[i])] != i + 1)
                return false;
        return true;
    }(),
    "two names have one slot: choose other weights");

} // namespace names

// From 1; 0 for a name that isn't one of the format's.
constexpr std::uint8_t NumberOfName(std::string_view name) {
    if (name.empty())
        return 0;
    const std::uint8_t number = names::numbers[names::SlotOf(name)];
    return number != 0 && names::known[number - 1U] == name ? number : std::uint8_t{0};
}

// What an attribute is looked for by. Of a literal the number is known when the program is compiled.
struct AttributeName {
    template <std::size_t N>
    consteval AttributeName(const char (&literal)[N]) : text(literal, N - 1), number(NumberOfName(text)) {}
    template <std::same_as<const char*> T>
    constexpr AttributeName(const T& name) : text(name), number(NumberOfName(text)) {}
    constexpr AttributeName(std::string_view name) : text(name), number(NumberOfName(text)) {}
    // The number is known already.
    constexpr AttributeName(std::string_view name, std::uint8_t itsNumber) : text(name), number(itsNumber) {}
    AttributeName(const std::string& name) : text(name), number(NumberOfName(text)) {}

    constexpr operator std::string_view() const { return text; }
    friend constexpr bool operator==(const AttributeName& name, std::string_view other) { return name.text == other; }

    std::string_view text;
    std::uint8_t number;
};

} // namespace corvane::check
