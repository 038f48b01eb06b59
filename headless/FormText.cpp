#include "corvane/base/Text.h"
#include "forms/FormPicture.h"
#include "headless/FormPages.h"

#include <algorithm>

namespace corvane::inspect {

namespace {

constexpr std::size_t rowsShown = 20;

class FormWriter {
public:
    explicit FormWriter(const forms::FormModel& form) : m_form(form) {}

    void Write(const forms::FormNode& node, int depth) {
        if (!m_form.IsNodeVisible(node.index))
            return Add(depth, "(" + (node.name.empty() ? "part" : node.name) + " is hidden)");
        switch (node.kind) {
        case forms::NodeKind::Label:
            if (node.labelled == forms::none && !node.text.IsEmpty())
                Add(depth, node.text.text);
            return;
        case forms::NodeKind::Separator:
            return Add(depth, "----");
        case forms::NodeKind::Place:
            return Add(depth, "<" + node.name + ">");
        case forms::NodeKind::Radio:
            return WriteRadio(node, depth);
        case forms::NodeKind::Field:
            return WriteField(node.field, depth);
        case forms::NodeKind::Group:
        case forms::NodeKind::Tab:
            if (node.field != forms::none)
                WriteField(node.field, depth);
            else
                Add(depth, "[" + forms::PlainText(node.text.text) + "]");
            return WriteChildren(node, depth + 1);
        default:
            return WriteChildren(node, depth);
        }
    }
    [[nodiscard]] std::vector<std::string> Lines() { return std::move(m_lines); }

private:
    void Add(int depth, const std::string& text) {
        m_lines.push_back(std::string(static_cast<std::size_t>(depth) * 2, ' ') + text);
    }
    void WriteChildren(const forms::FormNode& node, int depth) {
        for (const forms::FormNode& child : node.children)
            Write(child, depth);
    }
    [[nodiscard]] std::string Called(std::size_t field) const {
        const std::string label = forms::PlainText(m_form.Label(field));
        return label.empty() ? forms::CallOf(m_form.Field(field)) : label;
    }
    // What is to be said of a field beside its value.
    [[nodiscard]] std::string StateOf(std::size_t field) const {
        std::string words;
        const auto Say = [&](bool says, const std::string& word) {
            if (says)
                words += (words.empty() ? "" : ", ") + word;
        };
        Say(m_form.Field(field).required, "required");
        Say(m_form.IsReadOnly(field) && forms::IsEntered(m_form.Field(field).kind), "read-only");
        Say(!m_form.IsEnabled(field), "disabled");
        Say(m_form.IsChanged(field), "changed");
        const std::string problem = m_form.ProblemOf(field).Text();
        return (words.empty() ? "" : "  (" + words + ")") + (problem.empty() ? "" : "  ! " + problem);
    }
    void WriteRadio(const forms::FormNode& node, int depth) {
        const forms::FormChoice& choice = m_form.Field(node.field).choices[node.choice];
        const bool isChosen = m_form.Value(node.field) == Variant(choice.value);
        Add(depth, (isChosen ? "(x) " : "( ) ") + forms::PlainText(choice.label.text) +
                       (node.choice == 0 ? StateOf(node.field) : std::string()));
    }
    void WriteField(std::size_t field, int depth) {
        const forms::FieldDef& def = m_form.Field(field);
        const std::string called = Called(field);
        if (def.kind == forms::FieldKind::Button)
            return Add(depth, "[ " + called + " ]" + StateOf(field));
        if (def.kind == forms::FieldKind::Boolean) {
            const std::string value = m_form.Value(field) == Variant(true) ? "[x] " : "[ ] ";
            return Add(depth, value + called + StateOf(field));
        }
        if (def.kind == forms::FieldKind::Table || def.kind == forms::FieldKind::Tree)
            return WriteRows(field, depth, called);
        std::string text = forms::WithoutPicture(m_form.Text(field));
        if (def.look == forms::FieldLook::Password)
            text = text.empty() ? "" : "********";
        std::replace(text.begin(), text.end(), '\n', '|');
        const std::string unit = def.unit.IsEmpty() ? "" : (def.unit.text.front() == ' ' ? "" : " ") + def.unit.text;
        const std::string colon = called.ends_with(':') ? " " : ": ";
        Add(depth, called + colon + text + (text.empty() ? "" : unit) + StateOf(field));
    }
    void WriteRows(std::size_t field, int depth, const std::string& called) {
        const std::vector<forms::ColumnDef>& columns = m_form.Columns(field);
        Add(depth, called + StateOf(field));
        std::string titles;
        for (const forms::ColumnDef& column : columns)
            titles += (titles.empty() ? "" : " | ") + column.title.text;
        if (!titles.empty())
            Add(depth + 1, titles);
        const std::size_t count = m_form.RowCount(field);
        for (std::size_t row = 0; row < std::min(count, rowsShown); ++row) {
            std::string cells;
            for (std::size_t column = 0; column < columns.size(); ++column)
                cells += (column == 0 ? "" : " | ") + m_form.CellText(field, row, column);
            Add(depth + 1 + m_form.Depth(field, row), cells + (m_form.SelectedRow(field) == row ? "  (selected)" : ""));
        }
        if (count > rowsShown)
            Add(depth + 1, "and " + std::to_string(count - rowsShown) + " more rows");
    }

    const forms::FormModel& m_form;
    std::vector<std::string> m_lines;
};

} // namespace

std::vector<std::string> FormLines(const forms::FormModel& form) {
    FormWriter writer(form);
    writer.Write(form.Def().root, 0);
    return writer.Lines();
}

} // namespace corvane::inspect
