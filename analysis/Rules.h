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
    Rule eRule;
    std::string_view sName;
    Severity eSeverity;
    std::string_view sSummary;     // one line
    std::string_view sExplanation; // some sentences
    // What is found and what isn't: the content of a file of a service "Example", or whole files that begin with
    // "<Service". Empty where no text shows it.
    std::string_view sBad;
    std::string_view sGood;
};

[[nodiscard]] const RuleText& TextOf(Rule eRule);
// In order of the enumeration.
[[nodiscard]] std::span<const RuleText> AllRules();
[[nodiscard]] std::optional<Rule> RuleNamed(std::string_view sName);

} // namespace corvane::check
