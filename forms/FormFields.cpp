#include "corvane/base/Text.h"
#include "forms/FormReading.h"
#include "forms/FormValue.h"

#include <algorithm>

namespace corvane::forms {

namespace {

constexpr int mostWhole = 2147483647;

Variant Empty(FieldKind kind) {
    switch (kind) {
    case FieldKind::Integer:
        return LongLong(0);
    case FieldKind::Number:
    case FieldKind::Progress:
        return Double(0);
    case FieldKind::Boolean:
        return false;
    default:
        return "";
    }
}

// A name for the property of a column: its title without what isn't a letter or a digit.
std::string NameOfTitle(std::string_view title) {
    std::string name;
    bool begins = true;
    for (const char c : title) {
        const bool isSmall = c >= 'a' && c <= 'z';
        if (!isSmall && !(c >= 'A' && c <= 'Z') && !(c >= '0' && c <= '9')) {
            begins = true;
            continue;
        }
        name += begins && isSmall ? static_cast<char>(c - 32) : c;
        begins = false;
    }
    return name;
}

// "Unit:choice:edit" and, behind an "=", choices with "|" between.
ColumnDef ColumnIn(const FormText& written, Problems& problems) {
    ColumnDef column;
    column.at = written.at;
    std::string text = written.text;
    if (const std::size_t equal = text.find('='); equal != std::string::npos) {
        std::string rest = text.substr(equal + 1);
        text.erase(equal);
        for (std::size_t begin = 0; begin <= rest.size();) {
            const std::size_t end = std::min(rest.find('|', begin), rest.size());
            const std::string choice = rest.substr(begin, end - begin);
            column.choices.push_back({choice, {choice, written.at, written.translated}});
            begin = end + 1;
        }
        column.kind = FieldKind::Choice;
    }
    std::size_t begin = 0;
    for (int part = 0; begin <= text.size(); ++part) {
        const std::size_t end = std::min(text.find(':', begin), text.size());
        std::string word = text.substr(begin, end - begin);
        begin = end + 1;
        word.erase(0, word.find_first_not_of(' '));
        word.erase(word.find_last_not_of(' ') + 1);
        const auto kind = KindOf(word);
        if (part == 0)
            column.name = word;
        else if (EqualText(word, "edit"))
            column.editable = true;
        else if (kind && (*kind == FieldKind::Text || *kind == FieldKind::Integer || *kind == FieldKind::Number ||
                          *kind == FieldKind::Boolean || *kind == FieldKind::Choice || *kind == FieldKind::Date))
            column.kind = *kind;
        else
            problems.Add(FormFault::BadValue, written.at, QuotedName(word) + " is none of the words for a column",
                         "Write a kind (text, integer, number, boolean, choice, date) or \"edit\".");
    }
    return column;
}

} // namespace

bool WidgetReader::ReadField(const XmlElement& widget, const std::string& className, FormNode& node,
                             Properties& properties) {
    FieldDef field = NewField(node);
    field.accessibleName = properties.TakeText("accessibleName");
    if (className == "QLineEdit") {
        ReadLine(properties, field);
    } else if (className == "QPlainTextEdit" || className == "QTextEdit") {
        field.kind = FieldKind::Multiline;
        const FormText text = properties.TakeText("plainText");
        field.value = text.text;
        field.hasDefault = !text.IsEmpty();
        field.placeholder = properties.TakeText("placeholderText");
        properties.Ignore({"tabChangesFocus", "lineWrapMode", "acceptRichText", "undoRedoEnabled", "wordWrapMode"});
    } else if (className == "QSpinBox" || className == "QDoubleSpinBox" || className == "QSlider") {
        ReadSpin(className, node, properties, field);
    } else if (className == "QCheckBox") {
        field.kind = FieldKind::Boolean;
        field.label = properties.TakeText("text");
        const auto checked = properties.TakeBoolean("checked");
        field.value = checked.value_or(false);
        field.hasDefault = checked.has_value();
    } else if (className == "QComboBox") {
        ReadCombo(widget, properties, field);
    } else if (className == "QListWidget") {
        ReadList(widget, properties, field);
    } else if (className == "QDateEdit" || className == "QTimeEdit" || className == "QDateTimeEdit") {
        field.kind = className == "QDateEdit"   ? FieldKind::Date
                     : className == "QTimeEdit" ? FieldKind::Time
                                                : FieldKind::DateTime;
        ReadMoment(properties, field);
    } else if (className == "QPushButton" || className == "QToolButton") {
        ReadButton(className, properties, field);
    } else if (className == "QTableWidget" || className == "QTreeWidget") {
        field.kind = className == "QTableWidget" ? FieldKind::Table : FieldKind::Tree;
        ReadColumns(widget, properties, field);
    } else if (className == "QProgressBar") {
        field.kind = FieldKind::Progress;
        field.minimum = properties.TakeNumber("minimum").value_or(0);
        field.maximum = properties.TakeNumber("maximum").value_or(100);
        field.value = properties.TakeNumber("value").value_or(0);
        node.horizontal = properties.TakeWord("orientation") != "Vertical";
        properties.Ignore({"format", "textVisible", "alignment"});
    } else if (className == "QLabel") { // of the kind "shown"
        field.kind = FieldKind::Shown;
        field.value = properties.TakeText("text").text;
        node.wraps = properties.TakeBoolean("wordWrap").value_or(false);
        properties.Ignore({"alignment", "textFormat", "textInteractionFlags", "font"});
    } else {
        return false;
    }
    if (const auto readOnly = properties.TakeBoolean("readOnly"))
        field.readOnly = *readOnly;
    field.required = properties.TakeBoolean("required").value_or(false);
    if (field.unit.IsEmpty())
        field.unit = properties.TakeText("unit");
    if (field.value.IsEmpty() && field.look != FieldLook::Line)
        field.value = Empty(field.kind);
    if (IsEntered(field.kind))
        ReadDefault(properties, field);
    node.kind = NodeKind::Field;
    AddField(node, std::move(field));
    return true;
}

// The dynamic property "default", for what Designer can't say.
void WidgetReader::ReadDefault(Properties& properties, FieldDef& field) {
    const XmlElement* written = properties.Take("default");
    if (!written)
        return;
    field.hasDefault = true;
    const auto number = NumberIn(written->text);
    if (field.kind == FieldKind::Integer || field.kind == FieldKind::Number) {
        if (!number || (field.kind == FieldKind::Integer && (*number < -9e15 || *number > 9e15)))
            return properties.BadValue("default", "Write a number.");
        field.value = field.kind == FieldKind::Integer ? Variant(static_cast<LongLong>(*number)) : Variant(*number);
    } else if (field.kind == FieldKind::Boolean) {
        field.value = EqualText(written->text, "true");
    } else {
        field.value = written->text;
    }
}

void WidgetReader::ReadLine(Properties& properties, FieldDef& field) {
    const FormText word = properties.TakeText("kind");
    if (!word.IsEmpty()) {
        const auto kind = KindOf(word.text);
        if (kind && IsEntered(*kind) && *kind != FieldKind::Choice && *kind != FieldKind::Choices &&
            *kind != FieldKind::Boolean && *kind != FieldKind::Multiline) {
            field.kind = *kind;
            field.look = IsFreeText(*kind) ? FieldLook::Usual : FieldLook::Line;
        } else {
            properties.BadValue("kind", "Write text, integer, number, date, time, datetime, file, folder or color.");
        }
    }
    const FormText text = properties.TakeText("text");
    field.value = text.text;
    field.hasDefault = !text.IsEmpty();
    if (field.kind == FieldKind::Integer || field.kind == FieldKind::Number) {
        const auto number = NumberIn(text.text);
        if (!text.IsEmpty() && !number)
            properties.BadValue("text", "Write a number.");
        field.value = !number ? Variant()
                      : field.kind == FieldKind::Number
                          ? Variant(*number)
                          : Variant(static_cast<LongLong>(std::clamp(*number, -9e15, 9e15)));
        field.minimum = properties.TakeNumber("minimum");
        field.maximum = properties.TakeNumber("maximum");
        field.decimals = properties.TakeInteger("decimals", 0, 15).value_or(field.kind == FieldKind::Number ? 15 : 0);
    }
    field.placeholder = properties.TakeText("placeholderText");
    field.maxLength = properties.TakeInteger("maxLength", 0, mostWhole).value_or(0);
    if (field.maxLength == 32767)
        field.maxLength = 0; // Designer's "any"
    if (properties.TakeWord("echoMode") == "Password")
        field.look = FieldLook::Password;
    const FormText pattern = properties.TakeText("pattern");
    field.pattern = pattern.text;
    if (const std::string fault = FaultOfPattern(field.pattern); !fault.empty())
        m_problems.Add(FormFault::BadPattern, pattern.at,
                       "the pattern of " + QuotedName(field.name) + " can't be used: " + fault,
                       "Write it as a regular expression of ECMAScript, without references back.");
    if (!field.pattern.empty() && !IsFreeText(field.kind))
        m_problems.Add(FormFault::UnknownProperty, pattern.at,
                       "the pattern of " + QuotedName(field.name) + " has no effect, as its kind isn't text",
                       "Take away the pattern or the kind.");
    field.wanted = properties.TakeText("wanted");
    field.filter = properties.TakeText("filter").text;
    field.savesTo = properties.TakeBoolean("save").value_or(false);
    properties.Ignore({"clearButtonEnabled", "alignment"});
}

void WidgetReader::ReadSpin(const std::string& className, FormNode& node, Properties& properties, FieldDef& field) {
    const bool isWhole = className != "QDoubleSpinBox";
    field.kind = isWhole ? FieldKind::Integer : FieldKind::Number;
    field.decimals = isWhole ? 0 : properties.TakeInteger("decimals", 0, 15).value_or(2);
    field.minimum = properties.TakeNumber("minimum").value_or(0);
    field.maximum = properties.TakeNumber("maximum").value_or(isWhole ? 99 : 99.99); // as the widgets have it
    field.step = properties.TakeNumber("singleStep").value_or(1);
    field.unit = properties.TakeText("suffix");
    field.special = className == "QSlider" ? FormText() : properties.TakeText("specialValueText");
    const auto value = properties.TakeNumber("value");
    field.hasDefault = value.has_value();
    const Double number = value.value_or(std::max(0.0, *field.minimum));
    field.value = isWhole ? Variant(static_cast<LongLong>(std::clamp(number, -9e15, 9e15))) : Variant(number);
    if (className == "QSlider") {
        field.look = FieldLook::Slider;
        node.horizontal = properties.TakeWord("orientation") == "Horizontal"; // a slider without it is vertical
        properties.Ignore({"pageStep", "tickPosition", "tickInterval", "tracking"});
    }
    if (*field.minimum > *field.maximum)
        properties.BadValue("minimum", "The minimum has to be at most the maximum.");
    properties.Ignore({"alignment", "accelerated", "correctionMode", "keyboardTracking", "stepType", "buttonSymbols"});
}

void WidgetReader::ReadMoment(Properties& properties, FieldDef& field) {
    for (const char* name : {"date", "time", "dateTime"})
        if (const std::string moment = properties.TakeMoment(name); !moment.empty()) {
            field.value = moment;
            field.hasDefault = true;
        }
    properties.Ignore({"displayFormat", "calendarPopup", "alignment", "currentSection"});
}

void WidgetReader::ReadChoices(const XmlElement& widget, FieldDef& field) {
    for (const XmlElement& item : widget.children) {
        if (item.name != "item")
            continue;
        Properties properties(item, "a choice", m_problems);
        const FormText text = properties.TakeText("text");
        properties.End();
        field.choices.push_back({text.text, text});
    }
}

void WidgetReader::ReadCombo(const XmlElement& widget, Properties& properties, FieldDef& field) {
    field.kind = FieldKind::Choice;
    if (properties.TakeBoolean("editable").value_or(false))
        field.look = FieldLook::EditableCombo;
    field.placeholder = properties.TakeText("placeholderText");
    ReadChoices(widget, field);
    const auto index = properties.TakeInteger("currentIndex", -1, mostWhole);
    const FormText text = properties.TakeText("currentText");
    // Without an index the first one is chosen, as the widget does it.
    const std::size_t chosen = index ? static_cast<std::size_t>(*index) : 0;
    if (index && *index > 0 && chosen >= field.choices.size() && !field.choices.empty())
        properties.BadValue("currentIndex", "Choose one of the entries in Designer.");
    if (!text.IsEmpty())
        field.value = text.text;
    else if (field.look != FieldLook::EditableCombo && chosen < field.choices.size() && field.placeholder.IsEmpty())
        field.value = field.choices[chosen].value;
    field.hasDefault = index.has_value() || !text.IsEmpty();
    properties.Ignore({"insertPolicy", "sizeAdjustPolicy", "minimumContentsLength", "maxVisibleItems"});
}

void WidgetReader::ReadList(const XmlElement& widget, Properties& properties, FieldDef& field) {
    const std::string mode = properties.TakeWord("selectionMode");
    field.kind = mode == "MultiSelection" || mode == "ExtendedSelection" ? FieldKind::Choices : FieldKind::Choice;
    field.look = FieldLook::List;
    ReadChoices(widget, field);
    if (const auto row = properties.TakeInteger("currentRow", -1, mostWhole);
        row && *row >= 0 && static_cast<std::size_t>(*row) < field.choices.size()) {
        field.value = field.choices[static_cast<std::size_t>(*row)].value;
        field.hasDefault = true;
    }
    properties.Ignore({"alternatingRowColors", "sortingEnabled", "uniformItemSizes", "editTriggers"});
}

void WidgetReader::ReadButton(const std::string& className, Properties& properties, FieldDef& field) {
    field.label = properties.TakeText("text");
    field.kind = FieldKind::Button;
    field.look = className == "QToolButton" ? FieldLook::ToolButton : FieldLook::Usual;
    if (properties.TakeBoolean("checkable").value_or(false)) {
        field.kind = FieldKind::Boolean;
        field.look = FieldLook::CheckedButton;
        const auto checked = properties.TakeBoolean("checked");
        field.value = checked.value_or(false);
        field.hasDefault = checked.has_value();
    } else {
        field.isDefault = properties.TakeBoolean("default").value_or(false);
    }
    properties.Ignore({"autoDefault", "flat", "toolButtonStyle", "autoRaise"});
}

void WidgetReader::ReadColumns(const XmlElement& widget, Properties& properties, FieldDef& field) {
    std::vector<FormText> titles;
    for (const XmlElement& child : widget.children) {
        if (child.name == "column") {
            Properties column(child, "a column", m_problems);
            titles.push_back(column.TakeText("text"));
            titles.back().at = child.at;
            column.End();
        } else if (child.name == "row" || child.name == "item") {
            m_problems.Add(FormFault::UnknownElement, child.at,
                           "rows and cells of a form have no effect: they come from the page's object",
                           "Take them away.");
        }
    }
    for (const FormText& written : properties.TakeList("columns"))
        field.columns.push_back(ColumnIn(written, m_problems));
    if (field.columns.size() > titles.size() && !titles.empty())
        m_problems.Add(FormFault::BadValue, field.columns.back().at,
                       "\"columns\" names more columns than the table has", "Name as many as there are titles.");
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (i == field.columns.size()) {
            field.columns.emplace_back();
            field.columns.back().at = titles[i].at;
        }
        if (field.columns[i].name.empty())
            field.columns[i].name = NameOfTitle(titles[i].text);
        field.columns[i].title = titles[i];
    }
    for (ColumnDef& column : field.columns)
        if (column.title.IsEmpty())
            column.title = {column.name, column.at, false};
    const std::string kind = properties.TakeText("kind").text;
    if (field.kind == FieldKind::Table && EqualText(kind, WordOf(FieldKind::Text)))
        field.look = FieldLook::TextTable;
    else if (!kind.empty())
        properties.BadValue("kind", "Write text for a table whose titles and cells are a text, or leave it out.");
    if (properties.TakeWord("selectionMode") == "NoSelection" || field.look == FieldLook::TextTable)
        field.selection = RowSelection::None;
    const std::vector<std::string> triggers = properties.TakeWords("editTriggers");
    field.readOnly = triggers.size() == 1 && triggers.front() == "NoEditTriggers";
    properties.Ignore({"alternatingRowColors", "selectionBehavior", "showGrid", "sortingEnabled", "wordWrap",
                       "cornerButtonEnabled", "rowCount", "columnCount", "rootIsDecorated", "uniformRowHeights",
                       "headerHidden", "textElideMode", "verticalScrollMode", "horizontalHeaderStretchLastSection",
                       "horizontalHeaderVisible", "verticalHeaderVisible", "headerStretchLastSection", "headerVisible",
                       "tabKeyNavigation"});
}

} // namespace corvane::forms
