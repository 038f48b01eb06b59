// What the parts of the reader share. Only sources of this folder include it.
#pragma once

#include "forms/FormDef.h"
#include "forms/FormXml.h"

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::forms {

// "name" in quotation marks; what is too long to be read is cut.
[[nodiscard]] std::string QuotedName(std::string_view name);

// The problems of a form as they are found, not without end.
class Problems {
public:
    explicit Problems(FormDef& form) : m_form(form) {}
    void Add(FormFault fault, FormPlace at, std::string text, std::string cure);

private:
    FormDef& m_form;
};

// The properties of a widget or a layout. Each is taken at most once; one that isn't taken is outside of the subset.
class Properties {
public:
    Properties(const XmlElement& owner, std::string what, Problems& problems);

    // The value's element, as <string> or <bool>; a null pointer when the property isn't there.
    [[nodiscard]] const XmlElement* Take(std::string_view name);
    // Of any of its types, as text.
    [[nodiscard]] FormText TakeText(std::string_view name);
    [[nodiscard]] std::optional<bool> TakeBoolean(std::string_view name);
    [[nodiscard]] std::optional<Double> TakeNumber(std::string_view name);
    // A whole number between two; another is a problem and counts as absent.
    [[nodiscard]] std::optional<int> TakeInteger(std::string_view name, int least, int most);
    // The last word of an enumeration, as "Horizontal" of "Qt::Horizontal"; "" when it isn't there.
    [[nodiscard]] std::string TakeWord(std::string_view name);
    // The words of a set, as "AlignLeft" and "AlignTop".
    [[nodiscard]] std::vector<std::string> TakeWords(std::string_view name);
    // The texts of a stringlist, or of a text with commas.
    [[nodiscard]] std::vector<FormText> TakeList(std::string_view name);
    // "2026-11-25", "23:05:10" or both, of a date, time or datetime, or of a text.
    [[nodiscard]] std::string TakeMoment(std::string_view name);
    void Ignore(std::initializer_list<std::string_view> names);
    // Names all that wasn't taken as a problem.
    void End();
    void BadValue(std::string_view name, const std::string& cure);

private:
    struct Entry {
        std::string_view name;
        const XmlElement* property;
        const XmlElement* value; // may be a null pointer
        bool taken = false;
    };

    std::vector<Entry> m_entries;
    std::vector<std::string> m_asked; // names that were asked for
    FormPlace m_at;
    std::string m_what;
    Problems& m_problems;
};

[[nodiscard]] FormText TextOf(const XmlElement& element);

// Reads the widgets and layouts below a form's root.
class WidgetReader {
public:
    WidgetReader(FormDef& form, Problems& problems) : m_form(form), m_problems(problems) {}

    [[nodiscard]] FormNode ReadRoot(const XmlElement& widget);

private:
    [[nodiscard]] FormNode ReadWidget(const XmlElement& widget, const FormNode* group);
    void ReadLayout(const XmlElement& layout, FormNode& node, const FormNode* group);
    void CheckCells(const FormNode& layout);
    void ReadItem(const XmlElement& item, FormNode& parent, const FormNode* group);
    void ReadChildren(const XmlElement& widget, FormNode& node, const FormNode* group);
    void ReadTabs(const XmlElement& widget, FormNode& node);
    void ReadColumns(const XmlElement& widget, Properties& properties, FieldDef& field);
    void ReadChoices(const XmlElement& widget, FieldDef& field);
    void ReadRadio(const XmlElement& widget, FormNode& node, Properties& properties, const FormNode* group);
    void ReadCommon(const XmlElement& widget, FormNode& node, Properties& properties);
    // Fills the field of a widget of that class; false when the class isn't one of a field.
    bool ReadField(const XmlElement& widget, const std::string& className, FormNode& node, Properties& properties);
    void ReadLine(Properties& properties, FieldDef& field);
    void ReadSpin(const std::string& className, FormNode& node, Properties& properties, FieldDef& field);
    void ReadMoment(Properties& properties, FieldDef& field);
    void ReadCombo(const XmlElement& widget, Properties& properties, FieldDef& field);
    void ReadList(const XmlElement& widget, Properties& properties, FieldDef& field);
    void ReadButton(const std::string& className, Properties& properties, FieldDef& field);
    void ReadDefault(Properties& properties, FieldDef& field);
    void AddField(FormNode& node, FieldDef field);
    [[nodiscard]] FieldDef NewField(const FormNode& node) const;
    void UnknownWidget(const XmlElement& widget, const std::string& className);

    FormDef& m_form;
    Problems& m_problems;
    std::map<std::string, std::size_t> m_radios; // by group, the index of the field
};

// Numbers the nodes, finds the label of each field, and the tab order.
void ConnectNodes(FormDef& form, const std::vector<std::pair<std::string, FormPlace>>& tabStops, Problems& problems);

} // namespace corvane::forms
