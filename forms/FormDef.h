// What a form declares: its fields, the tree of its layout, and what is wrong with it. Forms/FormReader makes it of a
// file, and nothing changes it afterwards but TranslateForm; the values live in a FormModel. Without a toolkit.
#pragma once

#include "corvane/base/Text.h"
#include "corvane/base/Variant.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane::forms {

// Counted from 1, in characters of the file; 0 where it isn't known.
struct FormPlace {
    Long line = 0;
    Long column = 0;
};

// What a field holds. The words are those of WordOf and of the property "kind".
enum class FieldKind {
    Text,      // one line
    Multiline, // lines with "\n" between
    Integer,   // a LongLong
    Number,    // a Double
    Boolean,
    Choice,   // the text of one of the choices, "" for none; of an editable one any text
    Choices,  // the texts of those chosen, with "\n" between
    Date,     // "2026-11-25", "" for none
    Time,     // "23:05" or "23:05:10", "" for none
    DateTime, // "2026-11-25T23:05" or with seconds, "" for none
    File,     // the path of a file
    Folder,
    Color,    // "#1f77b4", "" for none
    Button,   // no value
    Table,    // no value; rows come from an object
    Tree,     // the same
    Shown,    // a text that only the page writes
    Progress, // a number that only the page writes
};

// How a field of a kind with several faces looks.
enum class FieldLook {
    Usual,
    Line,           // of a number, date or the like: typed into a line, where it may be left out
    Password,       // of a text
    Slider,         // of an integer; horizontal as the node says
    Radio,          // of a choice: its buttons are nodes of their own
    List,           // of one or several choices
    EditableCombo,  // of a choice
    CheckableGroup, // of a boolean: the node is a Group, and its content is enabled while it is checked
    ToolButton,     // of a button
    CheckedButton,  // of a boolean: a button that stays pressed
    TextTable,      // of a table: a text holds its titles and its cells, which are only shown
};

// A text that users see. One that isn't to be translated is left out of the catalogues.
struct FormText {
    std::string text;
    FormPlace at;
    bool translated = true;

    [[nodiscard]] bool IsEmpty() const { return text.empty(); }
};

// The value is what the page's object gets, the label what is shown for it.
struct FormChoice {
    std::string value;
    FormText label;
};

struct ColumnDef {
    std::string name; // of the property of a row's object
    FormPlace at;
    FormText title;
    FieldKind kind = FieldKind::Text; // Text, Integer, Number, Boolean, Choice or Date
    bool editable = false;
    std::vector<FormChoice> choices; // of a Choice
    int decimals = 2;                // of a Number
    bool hasFigures = false;         // of a Text in a TextTable: all are numbers as users read them
};

enum class RowSelection { None, One };

struct FieldDef {
    std::string name; // of the widget, and of the property or member that it is bound to
    FieldKind kind = FieldKind::Text;
    FieldLook look = FieldLook::Usual;
    FormPlace at;
    FormText label; // with "&" before the letter of the mnemonic; PlainText takes it out
    FormText tip;
    FormText placeholder;
    FormText special;        // of an integer or a number with arrows: shown in place of its minimum
    FormText unit;           // shown behind the value
    FormText accessibleName; // for a field without a label
    FormText wanted;         // what the pattern wants, in words: "two letters and a number"
    std::string pattern;     // that the whole text has to match, "" for any
    Variant value;           // that the form gives it, in the type of the kind
    bool hasDefault = false; // whether the file says so, or it is the kind's own
    std::vector<FormChoice> choices;
    std::optional<Double> minimum;
    std::optional<Double> maximum;
    Double step = 1;
    int decimals = 2;     // of a Number
    Long maxLength = 0;   // in characters, 0 for any
    std::string filter;   // of a file, as AskOpenFile takes it
    bool savesTo = false; // of a file: it needn't exist
    bool required = false;
    bool readOnly = false;
    bool enabled = true;
    bool visible = true;
    bool isDefault = false; // of a button: Return presses it
    std::vector<ColumnDef> columns;
    RowSelection selection = RowSelection::One;
    std::size_t node = 0; // in document order, as FormNode::index
};

enum class NodeKind {
    Box,       // a widget that only holds others, or a layout in a layout
    Group,     // with a title
    Tabs,      // its children are Tab
    Tab,       // with a title
    Scroll,    // a scroll area
    Splitter,  // its children lie side by side, or one below the other
    Label,     // a text; labels a field where labelled says so
    Separator, // a line
    Spacer,    // free space
    Place,     // for a widget that the page's class gives
    Field,     // one of the fields
    Radio,     // a button of a field that is a choice
};

enum class LayoutKind { None, Grid, Form, Row, Column };

// Where a node lies in its parent's layout. In a Row or Column by its order alone. In a Form layout column 0 is for
// labels, 1 for fields, and two columns are both.
struct GridCell {
    int row = 0;
    int column = 0;
    int rowSpan = 1;
    int columnSpan = 1;
};

inline constexpr std::size_t none = static_cast<std::size_t>(-1);

// Sizes are pixels at 96 dots per inch; 0 is no limit.
struct FormNode {
    NodeKind kind = NodeKind::Box;
    LayoutKind layout = LayoutKind::None; // of its children
    std::size_t index = 0;                // in document order, from 0 for the root
    std::size_t parent = none;            // likewise; none for the root
    std::string name;                     // "" for a layout
    FormPlace at;
    FormText text; // of a Label, Radio, or the title of a Group or Tab
    FormText tip;
    GridCell cell;
    std::string alignment;  // words of "left right hcenter top bottom vcenter", with blanks between
    bool horizontal = true; // of a Splitter, Separator, Spacer, and a slider's or progress's field
    bool expanding = false; // of a Spacer: it takes what is left
    bool isNative = true;   // false for a layout in a layout, which has no widget
    bool bold = false;      // of a Label: a heading
    bool wraps = false;     // of a Label
    bool enabled = true;
    bool visible = true;
    std::size_t field = none;    // of a Field, a Radio, and a Group that can be checked: index of the field
    std::size_t choice = none;   // of a Radio: index of its choice
    std::size_t labelled = none; // of a Label: index of the field
    std::string buddy;           // of a Label: the name of the widget that it says itself to label
    int minimumWidth = 0, minimumHeight = 0, maximumWidth = 0, maximumHeight = 0;
    std::optional<int> margin;      // around its children, else the style's
    std::optional<int> spacing;     // between them
    std::vector<int> stretch;       // of its children in a Row, Column or Splitter
    std::vector<int> rowStretch;    // of a Grid
    std::vector<int> columnStretch; // likewise
    std::vector<FormNode> children;
};

enum class FormFault {
    NotReadable,     // no form comes of the file
    UnknownWidget,   // a widget or layout outside of the subset
    UnknownProperty, // it has no effect
    UnknownElement,  // likewise, as signals and slots
    BadValue,        // of a property
    BadPattern,
    DuplicateName, // two fields of one name
    MissingName,
    BadTabOrder,   // a tab stop that is none of the fields
    OutsideLayout, // a widget without a layout around it
    SharedCell,    // a widget in the cell of another one
};

struct FormProblem {
    FormFault fault;
    FormPlace at;
    std::string text; // what is wrong
    std::string cure; // what to do
};

struct FormDef {
    std::string file;      // as it was given, for messages
    std::string name;      // of the root widget
    bool readable = false; // false when no form has come of the file: the first problem says why
    FormNode root;
    std::vector<FieldDef> fields;      // in document order
    std::vector<std::size_t> tabOrder; // indices of fields: the file's tab stops, then the others row by row
    std::size_t tabStops = 0;          // how many of these the file itself has ordered
    std::vector<FormProblem> problems;
    bool immediate = false; // entries take effect at once, as the settings of a chart: nothing of them is to be saved
    std::unordered_map<std::string, std::size_t, TextHash, TextEqual> names; // the first field of each name
    std::string service;                                                     // of preferences, where the form says so
    std::string category;                                                    // likewise

    // Names don't distinguish case. A null pointer when there is none.
    [[nodiscard]] const FieldDef* Find(std::string_view fieldName) const;
};

// Calls the function with every node, a parent before its children.
void ForEachNode(const FormNode& node, const std::function<void(const FormNode&)>& visit);

[[nodiscard]] std::string_view WordOf(FieldKind kind);
[[nodiscard]] std::optional<FieldKind> KindOf(std::string_view word); // without regard to case

// Whether a field of that kind has a value that users enter.
[[nodiscard]] bool IsEntered(FieldKind kind);
// Whether it holds a text of any form: what a text of the user is, it takes as it is.
[[nodiscard]] bool IsFreeText(FieldKind kind);

// The text without its mnemonic mark: "&" goes, "&&" becomes one.
[[nodiscard]] std::string PlainText(std::string_view label);
// What a field is called in messages: its label, its accessible name, or its name.
[[nodiscard]] std::string CallOf(const FieldDef& field);

// The texts of a form that users see, each with a key that holds names alone: "Form NAME/FIELD/label". NAME is that of
// the file, without its folder and its ending.
struct FormMessage {
    std::string key;
    std::string text;
    FormPlace at;
};
[[nodiscard]] std::vector<FormMessage> TextsOf(const FormDef& form);
// Replaces them by what the function says for a key and a text; a null pointer leaves the text. Values don't change.
void TranslateForm(FormDef& form,
                   const std::function<const std::string*(const std::string& key, const std::string& text)>& find);

} // namespace corvane::forms
