#include "forms/FormModel.h"

#include "corvane/base/Text.h"

#include <algorithm>

namespace corvane::forms {

// What of a field was shown before a change, and raises what is shown otherwise after it.
class FormModel::Watch {
public:
    Watch(FormModel& model, std::size_t field)
        : m_model(model), m_field(field), m_text(model.Text(field)), m_problem(model.ProblemOf(field)),
          m_isShown(model.IsProblemShown(field)), m_isChanged(model.IsChanged()) {}
    void End(bool isOther = false) {
        m_model.Count(m_field);
        if (isOther || m_model.Text(m_field) != m_text)
            m_model.Raise(FormChange::Value, m_field);
        if (m_model.ProblemOf(m_field) != m_problem || m_model.IsProblemShown(m_field) != m_isShown)
            m_model.Raise(FormChange::Problem, m_field);
        if (m_model.IsChanged() != m_isChanged)
            m_model.Raise(FormChange::Changed);
    }

private:
    FormModel& m_model;
    std::size_t m_field;
    std::string m_text;
    Problem m_problem;
    bool m_isShown;
    bool m_isChanged;
};

class FormModel::Act {
public:
    Act(FormModel& model, std::size_t field) : m_model(&model), m_before(std::exchange(model.m_acting, field)) {}
    ~Act() { m_model->m_acting = m_before; }
    Act(const Act&) = delete;
    Act& operator=(const Act&) = delete;

private:
    Ref<FormModel> m_model; // whatever comes of the act
    std::size_t m_before;
};

FormModel::FormModel(std::shared_ptr<const FormDef> def) : m_def(std::move(def)), m_fields(m_def->fields.size()) {
    AddNode(m_def->root);
    m_inside.resize(m_nodes.size());
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const FieldDef& field = Field(i);
        m_fields[i].value = m_fields[i].saved = field.value;
        m_fields[i].checking = CheckValue(field, Choices(i), field.value);
        m_inside[field.node].push_back(i);
    }
    CountAll();
}

void FormModel::Count(std::size_t field) {
    FieldState& state = m_fields[field];
    const auto Follow = [](bool& counted, bool now, std::size_t& count) {
        if (counted != now)
            count = now ? count + 1 : count - 1;
        counted = now;
    };
    Follow(state.isCountedWrong, static_cast<bool>(ProblemOf(field)), m_wrong);
    Follow(state.isCountedChanged, IsEntered(Field(field).kind) && IsChanged(field), m_changed);
}

void FormModel::CountAll() {
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        Count(i);
}

// What is hidden or disabled counts for nothing.
void FormModel::RaiseState(std::size_t node) {
    for (std::size_t i = node; i < m_nodes[node].end; ++i)
        for (const std::size_t field : m_inside[i])
            Count(field);
    Notice.Raise({.what = FormChange::State, .node = node});
}

void FormModel::AddNode(const FormNode& node) {
    const bool isCheckable = node.kind == NodeKind::Group && node.field != none;
    m_nodes.push_back({node.name, node.parent, 0, isCheckable ? node.field : none, node.enabled, node.visible});
    for (const FormNode& child : node.children)
        AddNode(child);
    m_nodes[node.index].end = m_nodes.size();
}

std::optional<std::size_t> FormModel::Find(std::string_view name) const {
    const FieldDef* field = m_def->Find(name);
    return field ? std::optional(static_cast<std::size_t>(field - m_def->fields.data())) : std::nullopt;
}

std::string FormModel::Text(std::size_t field) const {
    const FieldState& state = m_fields[field];
    return state.typed ? *state.typed : WriteValue(state.value);
}

const std::vector<FormChoice>& FormModel::Choices(std::size_t field) const {
    return m_fields[field].choices ? *m_fields[field].choices : Field(field).choices;
}

std::string FormModel::Label(std::size_t field) const {
    return m_fields[field].label.value_or(Field(field).label.text);
}

bool FormModel::IsEnabled(std::size_t field) const {
    const std::size_t own = Field(field).node;
    for (std::size_t node = own; node != none; node = m_nodes[node].parent) {
        const std::size_t box = m_nodes[node].field; // a group follows its own field
        if (!m_nodes[node].enabled || (node != own && box != none && m_fields[box].value == Variant(false)))
            return false;
    }
    return true;
}

bool FormModel::IsVisible(std::size_t field) const {
    for (std::size_t node = Field(field).node; node != none; node = m_nodes[node].parent)
        if (!m_nodes[node].visible)
            return false;
    return true;
}

Problem FormModel::ProblemOf(std::size_t field) const {
    const FieldState& state = m_fields[field];
    if (!state.reading && !state.checking && !state.own && m_wrongCells.empty())
        return {};
    if (!IsEnabled(field) || !IsVisible(field))
        return {};
    if (state.reading)
        return state.reading;
    if (state.checking && !IsReadOnly(field))
        return state.checking;
    if (state.own)
        return state.own;
    const auto cell = m_wrongCells.lower_bound({field, {0, 0}});
    return cell != m_wrongCells.end() && cell->first.first == field ? cell->second.problem : Problem();
}

bool FormModel::IsChanged(std::size_t field) const {
    const FieldState& state = m_fields[field];
    if (IsEntered(Field(field).kind))
        return !m_def->immediate && (state.typed || !(state.value == state.saved));
    return !m_def->immediate &&
           std::any_of(m_edits.begin(), m_edits.end(), [&](const CellEdit& edit) { return edit.field == field; });
}

std::size_t FormModel::FirstWrong() const {
    for (const std::size_t field : m_def->tabOrder)
        if (ProblemOf(field))
            return field;
    return none;
}

std::size_t FormModel::RowCount(std::size_t field) const {
    return m_data ? m_data->RowCount(field) : 0;
}

Variant FormModel::Cell(std::size_t field, std::size_t row, std::size_t column) const {
    return m_data && row < RowCount(field) && column < Columns(field).size() ? m_data->Cell(field, row, column)
                                                                             : Variant();
}

std::string FormModel::CellText(std::size_t field, std::size_t row, std::size_t column) const {
    const auto wrong = m_wrongCells.find({field, {row, column}});
    return wrong == m_wrongCells.end() ? WriteValue(Cell(field, row, column)) : wrong->second.typed;
}

Problem FormModel::CellProblem(std::size_t field, std::size_t row, std::size_t column) const {
    const auto wrong = m_wrongCells.find({field, {row, column}});
    return wrong == m_wrongCells.end() ? Problem() : wrong->second.problem;
}

bool FormModel::IsCellEditable(std::size_t field, std::size_t column) const {
    const FieldDef& table = Field(field);
    return table.kind == FieldKind::Table && !table.readOnly && column < table.columns.size() &&
           table.columns[column].editable && IsEnabled(field);
}

int FormModel::Depth(std::size_t field, std::size_t row) const {
    return m_data ? m_data->Depth(field, row) : 0;
}

// Empty when it can.
std::string FormModel::WhyNotEntered(std::size_t field, const char* verb) const {
    const std::string name = "the field \"" + Field(field).name + "\" ";
    if (!m_data)
        return name + "belongs to a page that has ended";
    if (!IsVisible(field))
        return name + "is hidden";
    if (!IsEnabled(field))
        return name + "is disabled";
    if (IsReadOnly(field) && IsEntered(Field(field).kind))
        return name + "is read-only";
    return verb ? name + verb : std::string();
}

std::string FormModel::EnterText(std::size_t field, std::string_view text) {
    if (!IsEntered(Field(field).kind))
        return WhyNotEntered(field, "takes no text");
    if (std::string why = WhyNotEntered(field, nullptr); !why.empty())
        return why;
    Problem problem;
    const auto value = ReadValue(Field(field), Choices(field), text, problem);
    if (!value)
        return "\"" + std::string(text) + "\" can't be entered into the field \"" + Field(field).name +
               "\": " + problem.Text();
    Take(field, *value);
    return {};
}

std::string FormModel::Type(std::size_t field, std::string_view text) {
    if (std::string why = WhyNotEntered(field, IsEntered(Field(field).kind) ? nullptr : "takes no text"); !why.empty())
        return why;
    Problem problem;
    if (const auto value = ReadValue(Field(field), Choices(field), text, problem))
        Take(field, *value);
    else
        Keep(field, text, std::move(problem));
    return {};
}

// A value goes on to the page when it can be accepted. What the page says is a problem of the field.
void FormModel::Take(std::size_t field, const Variant& value) {
    const Act act(*this, field);
    FieldState& state = m_fields[field];
    if (!state.typed && state.value == value)
        return;
    Watch watch(*this, field);
    const bool wasTyped = state.typed.has_value();
    state.typed.reset();
    state.reading = {};
    state.value = value;
    state.checking = CheckValue(Field(field), Choices(field), value);
    state.own = {};
    if (!state.checking)
        state.own = m_data->Write(field, value);
    watch.End(wasTyped);
    if (Field(field).look == FieldLook::CheckableGroup)
        RaiseState(Field(field).node);
    if (m_data)
        m_data->Entered(field);
    Raise(FormChange::Done, field);
}

void FormModel::Keep(std::size_t field, std::string_view text, Problem problem) {
    const Act act(*this, field);
    Watch watch(*this, field);
    m_fields[field].typed = text;
    m_fields[field].reading = std::move(problem);
    watch.End();
    if (m_data)
        m_data->Entered(field);
    Raise(FormChange::Done, field);
}

std::string FormModel::Press(std::size_t field) {
    const Act act(*this, field);
    if (std::string why = WhyNotEntered(field, Field(field).kind == FieldKind::Button ? nullptr : "isn't a button");
        !why.empty())
        return why;
    m_data->Press(field);
    Raise(FormChange::Done, field);
    return {};
}

std::string FormModel::EnterCell(std::size_t field, std::size_t row, std::size_t column, std::string_view text) {
    const Act act(*this, field);
    const FieldDef& table = Field(field);
    if (std::string why = WhyNotEntered(field, table.kind == FieldKind::Table ? nullptr : "isn't a table");
        !why.empty())
        return why;
    const std::string place =
        "row " + std::to_string(row) + ", column " + std::to_string(column) + " of \"" + table.name + "\"";
    if (row >= RowCount(field) || column >= table.columns.size())
        return "there is no " + place;
    if (!IsCellEditable(field, column))
        return place + " can't be edited";
    FieldDef cell;
    cell.kind = table.columns[column].kind;
    cell.decimals = table.columns[column].decimals;
    Problem problem;
    const auto value = ReadValue(cell, table.columns[column].choices, text, problem);
    if (!value)
        return "\"" + std::string(text) + "\" can't be entered into " + place + ": " + problem.Text();
    Watch watch(*this, field);
    const Variant before = Cell(field, row, column);
    if (Problem refused = m_data->WriteCell(field, row, column, *value)) {
        m_wrongCells[{field, {row, column}}] = {std::string(text), std::move(refused)};
    } else {
        m_wrongCells.erase({field, {row, column}});
        if (!(before == *value))
            m_edits.push_back({field, row, column, before});
    }
    m_fields[field].isVisited = true;
    Raise(FormChange::Cell, field);
    watch.End();
    if (m_data)
        m_data->Entered(field);
    Raise(FormChange::Done, field, row, column);
    return {};
}

std::string FormModel::SelectRow(std::size_t field, std::size_t row) {
    const Act act(*this, field);
    const FieldKind kind = Field(field).kind;
    const bool hasRows = kind == FieldKind::Table || kind == FieldKind::Tree;
    if (std::string why = WhyNotEntered(field, hasRows ? nullptr : "has no rows"); !why.empty())
        return why;
    if (row != none && row >= RowCount(field))
        return "there is no row " + std::to_string(row) + " of \"" + Field(field).name + "\"";
    if (Field(field).selection == RowSelection::None)
        return "no row of \"" + Field(field).name + "\" can be selected";
    if (m_fields[field].row == row)
        return {};
    m_fields[field].row = row;
    Raise(FormChange::Selection, field);
    if (m_data)
        m_data->SelectRow(field, row);
    Raise(FormChange::Done, field, row);
    return {};
}

void FormModel::Visit(std::size_t field) {
    if (m_fields[field].isVisited)
        return;
    Watch watch(*this, field);
    m_fields[field].isVisited = true;
    watch.End();
}

void FormModel::Leave(std::size_t field) {
    const Ref<FormModel> self(this);
    Visit(field);
    if (m_data)
        m_data->Left(field);
}

void FormModel::ShowProblems() {
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        Visit(i);
}

void FormModel::SetSaved() {
    const bool wasChanged = IsChanged();
    for (FieldState& state : m_fields)
        state.saved = state.value;
    m_edits.clear();
    CountAll();
    if (IsChanged() != wasChanged)
        Raise(FormChange::Changed);
}

void FormModel::Revert() {
    const Ref<FormModel> self(this);
    const std::vector<CellEdit> edits = std::exchange(m_edits, {});
    m_wrongCells.clear();
    std::set<std::size_t> tables;
    for (auto edit = edits.rbegin(); edit != edits.rend() && m_data; ++edit) {
        if (edit->row < RowCount(edit->field) && !m_data->WriteCell(edit->field, edit->row, edit->column, edit->before))
            tables.insert(edit->field);
    }
    for (const std::size_t table : tables)
        Raise(FormChange::Cell, table);
    for (std::size_t i = 0; i < m_fields.size() && m_data; ++i) {
        if (IsEntered(Field(i).kind) && IsChanged(i)) {
            const Variant saved = m_fields[i].saved;
            Take(i, saved);
        }
    }
    CountAll();
    Raise(FormChange::Changed);
}

void FormModel::RestoreDefault(std::size_t field) {
    if (m_data && IsEntered(Field(field).kind) && !IsReadOnly(field))
        Take(field, Field(field).value);
}

void FormModel::RestoreDefaults() {
    const Ref<FormModel> self(this);
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        RestoreDefault(i);
}

void FormModel::ShowValue(std::size_t field, const Variant& value) {
    FieldState& state = m_fields[field];
    if (!state.typed && state.value == value)
        return;
    Watch watch(*this, field);
    const bool wasTyped = state.typed.has_value();
    state.typed.reset();
    state.reading = {};
    state.value = value;
    state.checking = CheckValue(Field(field), Choices(field), value);
    if (state.checking.kind == ProblemKind::Decimals)
        state.checking = {}; // the page may know it better than the user can enter it
    watch.End(wasTyped);
    if (Field(field).look == FieldLook::CheckableGroup)
        RaiseState(Field(field).node);
}

void FormModel::ShowChoices(std::size_t field, std::vector<FormChoice> choices) {
    const auto isSame = [](const FormChoice& left, const FormChoice& right) {
        return left.value == right.value && left.label.text == right.label.text;
    };
    const auto& before = Choices(field);
    if (std::equal(before.begin(), before.end(), choices.begin(), choices.end(), isSame))
        return;
    Watch watch(*this, field);
    m_fields[field].choices = std::move(choices);
    m_fields[field].checking = CheckValue(Field(field), Choices(field), m_fields[field].value);
    Raise(FormChange::Choices, field);
    watch.End();
}

void FormModel::ShowProblem(std::size_t field, Problem problem) {
    FieldState& state = m_fields[field];
    if (state.own == problem)
        return;
    Watch watch(*this, field);
    if (problem && !state.own && m_acting != none && m_acting != field)
        state.isVisited = true;
    state.own = std::move(problem);
    watch.End();
}

void FormModel::ShowProblemAtOnce(std::size_t field, Problem problem) {
    if (problem)
        Visit(field);
    ShowProblem(field, std::move(problem));
}

void FormModel::ShowLabel(std::size_t field, const std::string& label) {
    if (Label(field) == label)
        return;
    m_fields[field].label = label;
    Raise(FormChange::Label, field);
}

const std::vector<ColumnDef>& FormModel::Columns(std::size_t field) const {
    return m_fields[field].columns ? *m_fields[field].columns : Field(field).columns;
}

void FormModel::ShowRows(std::size_t field, std::optional<std::vector<ColumnDef>> columns) {
    Watch watch(*this, field);
    if (columns)
        m_fields[field].columns = std::move(columns);
    std::erase_if(m_wrongCells, [&](const auto& cell) { return cell.first.first == field; });
    std::erase_if(m_edits, [&](const CellEdit& edit) { return edit.row >= RowCount(field) && edit.field == field; });
    if (m_fields[field].row != none && m_fields[field].row >= RowCount(field))
        m_fields[field].row = none;
    Raise(FormChange::Rows, field);
    watch.End();
}

void FormModel::ShowSelection(std::size_t field, std::size_t row) {
    if (m_fields[field].row == row)
        return;
    m_fields[field].row = row;
    Raise(FormChange::Selection, field);
}

void FormModel::EnableNode(std::size_t node, bool enabled) {
    if (m_nodes[node].enabled == enabled)
        return;
    m_nodes[node].enabled = enabled;
    RaiseState(node);
}

void FormModel::ShowNode(std::size_t node, bool visible) {
    if (m_nodes[node].visible == visible)
        return;
    m_nodes[node].visible = visible;
    RaiseState(node);
}

std::vector<std::size_t> FormModel::NodesNamed(std::string_view name) const {
    std::vector<std::size_t> nodes;
    const auto field = Find(name);
    const bool isRadio = field && Field(*field).look == FieldLook::Radio;
    ForEachNode(m_def->root, [&](const FormNode& node) {
        const bool isNamed = !node.name.empty() && EqualText(node.name, name);
        const bool isItsRadio = isRadio && node.kind == NodeKind::Radio && node.field == *field;
        const bool isItsLabel = field && node.kind == NodeKind::Label && node.labelled == *field; // taken along
        if (isNamed || isItsRadio || isItsLabel)
            nodes.push_back(node.index);
    });
    return nodes;
}

} // namespace corvane::forms
