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
    StrayBlank,
    NoEffect,
    DuplicateName,
    DuplicateTitle,
    UnknownAction,
    UnknownParent,
    ParentCycle,
    UnknownDefaultAction,
    TwoChildKinds,
    NoObject,
    ReservedName,
    NameOfHost,
    NameCollision,
    SimilarName,
    SharedClass,
    PathWithoutTitle,
    PathWithoutRoot,
    TitleWithoutEntries,
    RedeclaredTitle,
    VanishingEntry,
    SharedPosition,
    NoOrder,
    DuplicateEntry,
    SharedCommand,
    EntryWithoutProcedure,
    UnusedAction,
    HiddenAction,
    RootCommand,
    PositionOverflow,
    ToolbarOrder,
    SubmenuOrder,
    ShortcutUnreadable,
    ForeignShortcut,
    TakenKey,
    ShortcutClash,
    MnemonicClash,
    SameCaption,
    BadMnemonic,
    MissingCaption,
    TipRepeatsCaption,
    InactiveFile,
    UnreadFile,
    UnreadableFile,
    SameFileName,
    MissingFramework,
    FrameworkLeftOut,
    MissingNavigation,
    StartServiceFramework,
    SeveralStartServices,
    HelpWithoutAbout,
    MissingWindowList,
    UnreachableItem,
    ModalMdiChild,
    WindowWithoutPages,
    UnreachableWindow,
    MissingImage,
    UnreadableImage,
    BadProgId,
    MissingPlugin,
    UnusablePlugin,
    UnknownClass,
    UnknownMember,
    WrongArguments,
    NoServiceAccess,
    StartNeverCalled,
    ChildrenNeverAdded,
    UnknownNameInCode,
    FormUnreadable,
    FormUnknown,
    FormBadValue,
    FormName,
    FormLabel,
    FormMnemonic,
    FormTabOrder,
    FormLayout,
    FormDefault,
    FormRequired,
    FormIdle,
    FormUnused,
    FormMember,
    FormType,
    FormPlace,
    FormText,
    Welcome,
    ProgressWithoutExplorer,
};

enum class Severity {
    Error,   // the file is left out, the start fails, or the thing fails whenever it is used
    Warning, // it goes on in silence, but not as it was meant
    Note,    // it works as it was meant, and could be written better
};

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
// Whether a host that brings a file of the root object can't start an application with such an error either.
[[nodiscard]] bool StopsTheStart(Rule rule);
// Whether the library leaves out the whole file, with a message, and goes on with the others.
[[nodiscard]] bool LeavesOutTheFile(Rule rule);
// In order of the enumeration.
[[nodiscard]] std::span<const RuleText> AllRules();
[[nodiscard]] std::optional<Rule> RuleNamed(std::string_view name);

} // namespace corvane::check
