#include "corvane/base/Text.h"
#include "forms/FormReading.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace corvane::forms {

namespace {

void Number(FormNode& node, std::size_t parent, std::size_t& next) {
    node.index = next++;
    node.parent = parent;
    for (FormNode& child : node.children)
        Number(child, node.index, next);
}

// The first field in a part of a form that is to be labelled from outside.
std::size_t FirstUnlabelled(const FormNode& node, const FormDef& form) {
    if (node.kind == NodeKind::Group || node.kind == NodeKind::Tabs)
        return none;
    if (node.kind == NodeKind::Field && form.fields[node.field].label.IsEmpty())
        return node.field;
    for (const FormNode& child : node.children)
        if (const std::size_t field = FirstUnlabelled(child, form); field != none)
            return field;
    return none;
}

void Label(FormNode& label, std::size_t field, FormDef& form) {
    if (field == none || label.labelled != none || label.text.IsEmpty())
        return;
    label.labelled = field;
    if (form.fields[field].label.IsEmpty())
        form.fields[field].label = label.text;
}

void LabelByName(FormNode& node, FormDef& form) {
    if (node.kind == NodeKind::Label && !node.buddy.empty())
        if (const FieldDef* field = form.Find(node.buddy))
            Label(node, static_cast<std::size_t>(field - form.fields.data()), form);
    for (FormNode& child : node.children)
        LabelByName(child, form);
}

// The nearest neighbour to the right in the same row of a grid or form, or the next one of a row.
void LabelByPlace(FormNode& node, FormDef& form) {
    const bool isInRows = node.layout != LayoutKind::Column && node.layout != LayoutKind::None;
    std::map<std::pair<int, int>, const FormNode*> cells; // by row and column
    if (isInRows)
        for (const FormNode& child : node.children)
            cells.try_emplace({child.cell.row, child.cell.column}, &child);
    for (FormNode& child : node.children) {
        LabelByPlace(child, form);
        if (!isInRows || child.kind != NodeKind::Label || child.labelled != none)
            continue;
        const auto nearest = cells.upper_bound({child.cell.row, child.cell.column});
        if (nearest != cells.end() && nearest->first.first == child.cell.row)
            Label(child, FirstUnlabelled(*nearest->second, form), form);
    }
}

void FieldsIn(const FormNode& node, std::vector<std::size_t>& fields) {
    if (node.field != none && (fields.empty() || fields.back() != node.field))
        fields.push_back(node.field);
    for (const FormNode& child : node.children)
        FieldsIn(child, fields);
}

// The fields as one reads the form: row by row, whatever the order in the file.
void FieldsAsRead(const FormNode& node, std::vector<std::size_t>& fields) {
    if (node.field != none)
        fields.push_back(node.field);
    std::vector<const FormNode*> children;
    for (const FormNode& child : node.children)
        children.push_back(&child);
    std::stable_sort(children.begin(), children.end(), [](const FormNode* left, const FormNode* right) {
        return std::pair(left->cell.row, left->cell.column) < std::pair(right->cell.row, right->cell.column);
    });
    for (const FormNode* child : children)
        FieldsAsRead(*child, fields);
}

// A group around a single field without a label gives it its title.
void LabelByGroup(FormNode& node, FormDef& form) {
    for (FormNode& child : node.children)
        LabelByGroup(child, form);
    if ((node.kind != NodeKind::Group && node.kind != NodeKind::Tab) || node.field != none || node.text.IsEmpty())
        return;
    std::vector<std::size_t> fields;
    FieldsIn(node, fields);
    if (fields.size() == 1 && form.fields[fields.front()].label.IsEmpty())
        form.fields[fields.front()].label = node.text;
}

} // namespace

void ConnectNodes(FormDef& form, const std::vector<std::pair<std::string, FormPlace>>& tabStops, Problems& problems) {
    std::size_t next = 0;
    Number(form.root, none, next);
    ForEachNode(form.root, [&](const FormNode& node) {
        if (node.field != none && node.kind != NodeKind::Radio)
            form.fields[node.field].node = node.index;
    });
    ForEachNode(form.root, [&](const FormNode& node) { // of a group of radio buttons the first
        if (node.kind == NodeKind::Radio && node.choice == 0)
            form.fields[node.field].node = node.index;
    });
    LabelByName(form.root, form);
    LabelByPlace(form.root, form);
    LabelByGroup(form.root, form);

    std::vector<bool> isOrdered(form.fields.size());
    const auto Add = [&](std::size_t field) {
        if (!isOrdered[field])
            form.tabOrder.push_back(field);
        isOrdered[field] = true;
    };
    std::set<std::string> radios; // their names are those of buttons, not of fields
    ForEachNode(form.root, [&](const FormNode& node) {
        if (node.kind == NodeKind::Radio || node.kind == NodeKind::Tabs || node.kind == NodeKind::Place ||
            node.kind == NodeKind::Scroll || node.kind == NodeKind::Box) // also what a form doesn't know
            radios.insert(node.name);
    });
    for (const auto& [name, at] : tabStops) {
        const FieldDef* field = form.Find(name);
        if (field)
            Add(static_cast<std::size_t>(field - form.fields.data()));
        else if (!radios.contains(name))
            problems.Add(FormFault::BadTabOrder, at,
                         "the tab stop " + QuotedName(name) + " is none of the form's fields",
                         "Set the tab order again in Designer.");
    }
    form.tabStops = form.tabOrder.size();
    std::vector<std::size_t> fields;
    FieldsAsRead(form.root, fields);
    for (const std::size_t field : fields)
        Add(field);
}

} // namespace corvane::forms
