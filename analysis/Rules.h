// The rules that a check knows, each with a stable name and an example.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace corvane::check {

enum class Rule {
    NotWellFormed,
    NoServiceElement,
    Schema,
    SchemaFile,
    UnknownElement,
    UnknownAttribute,
    Utf8Bytes,
    BadWord,
    BadValue,
    MissingAttribute,
    MissingName,
    NoEffect,
    DuplicateName,
    DuplicateTitle,
    UnknownAction,
    UnknownParent,
    ParentCycle,
    UnknownDefaultAction,
    ReservedName,
    PathWithoutTitle,
    PathWithoutRoot,
    TitleWithoutEntries,
    VanishingEntry,
    SharedPosition,
    DuplicateEntry,
    SharedCommand,
    EntryWithoutProcedure,
    PositionOverflow,
    ToolbarOrder,
    SubmenuOrder,
    ShortcutUnreadable,
    ShortcutClash,
    MnemonicClash,
    InactiveFile,
    MissingFramework,
    MissingNavigation,
    StartServiceFramework,
    SeveralStartServices,
    HelpWithoutAbout,
    MissingWindowList,
    UnreachableItem,
    ModalMdiChild,
    UnreachableWindow,
    MissingImage,
    UnreadableImage,
    BadProgId,
    MissingPlugin,
    UnusablePlugin,
    UnknownClass,
    UnknownMember,
    WrongArguments,
};

// An error keeps a file, an entry or the application from working; a warning is something that works otherwise than
// it was meant.
enum class Severity { Error, Warning };

struct RuleText {
    Rule rule;
    std::string_view name;
    Severity severity;
    std::string_view summary;     // one line
    std::string_view explanation; // some sentences
    // What is found and what isn't: the content of a file of a service "Example", or whole files that begin with
    // "<Service". Empty where no text shows it.
    std::string_view bad;
    std::string_view good;
};

[[nodiscard]] const RuleText& TextOf(Rule rule);
// In order of the enumeration.
[[nodiscard]] std::span<const RuleText> AllRules();
[[nodiscard]] std::optional<Rule> RuleNamed(std::string_view name);

} // namespace corvane::check
