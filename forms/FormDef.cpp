#include "forms/FormDef.h"

#include "corvane/base/Text.h"

#include <algorithm>
#include <array>

namespace corvane::forms {

namespace {

constexpr auto kindWords = std::to_array<std::string_view>(
    {"text", "multiline", "integer", "number", "boolean", "choice", "choices", "date", "time", "datetime", "file",
     "folder", "color", "button", "table", "tree", "shown", "progress"});

using Visit = std::function<void(const std::string& key, FormText& text)>;

void VisitField(FieldDef& field, const std::string& form, const Visit& visit) {
    const std::string key = "Form " + form + "/" + field.name + "/";
    visit(key + "label", field.label);
    visit(key + "tip", field.tip);
    visit(key + "placeholder", field.placeholder);
    visit(key + "special", field.special);
    visit(key + "unit", field.unit);
    visit(key + "accessibleName", field.accessibleName);
    visit(key + "wanted", field.wanted);
    for (FormChoice& choice : field.choices)
        visit(key + "choice " + choice.value, choice.label);
    for (ColumnDef& column : field.columns) {
        visit(key + "column " + column.name, column.title);
        for (FormChoice& choice : column.choices)
            visit(key + "column " + column.name + "/choice " + choice.value, choice.label);
    }
}

// The texts of nodes that aren't those of a field.
void VisitNode(FormNode& node, const FormDef& form, const std::string& formName, const Visit& visit) {
    const std::string key = "Form " + formName + "/" + node.name + "/";
    const bool isFieldsOwn = node.field != none || node.labelled != none;
    if (!isFieldsOwn)
        visit(key + "text", node.text);
    if (node.field == none)
        visit(key + "tip", node.tip);
    for (FormNode& child : node.children)
        VisitNode(child, form, formName, visit);
}

// A text that labels a field is shown by its node, too.
void ShareLabels(FormNode& node, const FormDef& form) {
    if (node.labelled != none)
        node.text = form.fields[node.labelled].label;
    else if (node.kind == NodeKind::Radio)
        node.text = form.fields[node.field].choices[node.choice].label;
    else if (node.field != none)
        node.text = form.fields[node.field].label;
    for (FormNode& child : node.children)
        ShareLabels(child, form);
}

std::string BareName(const std::string& file) {
    const std::size_t slash = file.find_last_of('/');
    const std::string name = file.substr(slash == std::string::npos ? 0 : slash + 1);
    const std::size_t point = name.rfind('.');
    return point == std::string::npos || !EqualText(name.substr(point), ".ui") ? name : name.substr(0, point);
}

void VisitTexts(FormDef& form, const Visit& visit) {
    const std::string name = BareName(form.file);
    VisitNode(form.root, form, name, visit);
    for (FieldDef& field : form.fields)
        VisitField(field, name, visit);
}

} // namespace

const FieldDef* FormDef::Find(std::string_view fieldName) const {
    const auto it = names.find(fieldName);
    return it == names.end() ? nullptr : &fields[it->second];
}

void ForEachNode(const FormNode& node, const std::function<void(const FormNode&)>& visit) {
    visit(node);
    for (const FormNode& child : node.children)
        ForEachNode(child, visit);
}

std::string_view WordOf(FieldKind kind) {
    return kindWords[static_cast<std::size_t>(kind)];
}

std::optional<FieldKind> KindOf(std::string_view word) {
    for (std::size_t i = 0; i < kindWords.size(); ++i)
        if (EqualText(kindWords[i], word))
            return static_cast<FieldKind>(i);
    return std::nullopt;
}

bool IsEntered(FieldKind kind) {
    switch (kind) {
    case FieldKind::Button:
    case FieldKind::Table:
    case FieldKind::Tree:
    case FieldKind::Shown:
    case FieldKind::Progress:
        return false;
    default:
        return true;
    }
}

bool IsFreeText(FieldKind kind) {
    return kind == FieldKind::Text || kind == FieldKind::Multiline || kind == FieldKind::File ||
           kind == FieldKind::Folder || kind == FieldKind::Shown;
}

std::string PlainText(std::string_view label) {
    std::string text;
    for (std::size_t i = 0; i < label.size(); ++i)
        if (label[i] != '&' || (++i < label.size()))
            text += label[i];
    return text;
}

std::string CallOf(const FieldDef& field) {
    std::string text = PlainText(field.label.text);
    if (text.empty())
        text = field.accessibleName.text;
    while (!text.empty() && (text.back() == ':' || text.back() == ' '))
        text.pop_back();
    return text.empty() ? field.name : text;
}

std::vector<FormMessage> TextsOf(const FormDef& form) {
    std::vector<FormMessage> messages;
    FormDef copy = form; // what visits may also change
    VisitTexts(copy, [&](const std::string& key, const FormText& text) {
        if (text.translated && text.text.find_first_not_of(" \t\r\n") != std::string::npos)
            messages.push_back({key, text.text, text.at});
    });
    std::stable_sort(messages.begin(), messages.end(), [](const FormMessage& left, const FormMessage& right) {
        return std::pair(left.at.line, left.at.column) < std::pair(right.at.line, right.at.column);
    });
    return messages;
}

void TranslateForm(FormDef& form,
                   const std::function<const std::string*(const std::string& key, const std::string& text)>& find) {
    VisitTexts(form, [&](const std::string& key, FormText& text) {
        if (const std::string* translation = text.translated && !text.IsEmpty() ? find(key, text.text) : nullptr)
            text.text = *translation;
    });
    ShareLabels(form.root, form);
}

} // namespace corvane::forms
