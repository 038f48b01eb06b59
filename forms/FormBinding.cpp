#include "forms/FormBinding.h"

#include "adapters/common/Recoverable.h"
#include "corvane/author/Translation.h"
#include "corvane/base/Text.h"
#include "corvane/platform/Entering.h"

#include <charconv>
#include <unordered_map>

namespace corvane::forms {

namespace {

constexpr int deepestTree = 100;
constexpr std::size_t mostTreeRows = 100000;

using Members = std::unordered_map<std::string, MemberInfo, TextHash, TextEqual>;

bool CanBeRead(const Members& members, const std::string& name, const MemberInfo** found = nullptr) {
    const auto it = members.find(name);
    if (it == members.end())
        return false;
    if (found)
        *found = &it->second;
    return it->second.What == MemberInfo::Kind::Property ||
           (it->second.ParameterCount == 0 && it->second.Result.What != ValueType::Nothing);
}

bool CanBeCalled(const Members& members, const std::string& name) {
    const auto it = members.find(name);
    return it != members.end() && it->second.What == MemberInfo::Kind::Method && it->second.ParameterCount == 0;
}

bool IsNumber(ValueType type) {
    return type == ValueType::Int32 || type == ValueType::Int64 || type == ValueType::Enumeration;
}

// In a catch block: why a property has refused a value.
Problem RefusalOf(ValueType type) {
    const Failure failure = CurrentFailure();
    if (failure.Number == FailureNumber::TypeMismatch || failure.Number == FailureNumber::Overflow)
        return {ProblemKind::NotConvertible, {std::string(WordsOf(type))}};
    return {ProblemKind::Own, {failure.Description}};
}

// A text in which no letter is marked as the mnemonic, as PlainText takes it.
std::string Unmarked(std::string_view text) {
    std::string label;
    for (const char c : text)
        label += c == '&' ? std::string("&&") : std::string(1, c);
    return label;
}

std::vector<std::string> CellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::size_t begin = 0;
    for (std::size_t tab = line.find('\t'); tab != std::string::npos; tab = line.find('\t', begin)) {
        cells.push_back(line.substr(begin, tab - begin));
        begin = tab + 1;
    }
    cells.push_back(line.substr(begin));
    return cells;
}

bool IsFigure(const std::string& cell) {
    const std::string plain = PlainNumber(cell).value_or("");
    Double value = 0;
    const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    return error == std::errc() && end == plain.data() + plain.size();
}

// Whether the column has numbers, and beside them nothing but signs for none.
bool HasFigures(const std::vector<std::vector<std::string>>& lines, std::size_t column) {
    bool has = false;
    for (const std::vector<std::string>& line : lines) {
        if (IsFigure(line[column]))
            has = true;
        else if (!line[column].empty() && line[column] != "-" && line[column] != "–")
            return false;
    }
    return has;
}

FieldDef CellDef(const ColumnDef& column) {
    FieldDef field;
    field.kind = column.kind;
    field.decimals = column.decimals;
    return field;
}

} // namespace

std::string_view WordsOf(ValueType type) {
    switch (type) {
    case ValueType::Boolean:
        return "true or false";
    case ValueType::Int32:
    case ValueType::Int64:
    case ValueType::Enumeration:
        return "a whole number";
    case ValueType::Float32:
    case ValueType::Float64:
        return "a number";
    default:
        return "another value";
    }
}

FormBinding::FormBinding(FormModel& model, Ref<Object> object, bool answersAll)
    : m_model(model), m_object(std::move(object)), m_answersAll(answersAll), m_bound(model.Count()) {
    Members members;
    for (const MemberInfo& member : m_object->MembersByName())
        members.emplace(std::string(member.Name), member);
    for (std::size_t i = 0; i < m_bound.size(); ++i) {
        const std::string& name = Name(i);
        if (name.empty() || m_model.Find(name) != i)
            continue; // a second field of the name is bound to nothing
        Bound& bound = m_bound[i];
        const MemberInfo* member = nullptr;
        const FieldKind kind = m_model.Field(i).kind;
        bound.reads = kind != FieldKind::Button && CanBeRead(members, name, &member);
        if (bound.reads) {
            bound.writes = member->CanWrite;
            bound.type = member->Result.What;
            if (!bound.writes && IsEntered(kind))
                m_model.SetReadOnly(i);
        }
        bound.choices = CanBeRead(members, name + "Choices");
        bound.problem = CanBeRead(members, name + "Problem");
        bound.enabled = CanBeRead(members, name + "Enabled");
        bound.visible = CanBeRead(members, name + "Visible");
        bound.changed = CanBeCalled(members, "On" + name + "Changed");
        const MemberInfo* row = nullptr;
        bound.row = CanBeRead(members, name + "Row", &row);
        bound.rowWrites = bound.row && row->CanWrite;
        bound.rowChanged = CanBeCalled(members, "On" + name + "RowChanged");
        if (bound.enabled || bound.visible)
            bound.nodes = m_model.NodesNamed(name);
        if (bound.choices || bound.problem || bound.enabled || bound.visible ||
            (bound.reads && (kind == FieldKind::Shown || kind == FieldKind::Progress)))
            m_derived.push_back(i);
    }
}

Variant FormBinding::Ask(const std::string& member, std::span<const Variant> arguments) const {
    const Ref<Object> object = m_object;
    const Entering entering(object);
    return object->Invoke(member, arguments);
}

void FormBinding::Load() {
    const Ref<FormBinding> self(this);
    for (std::size_t i = 0; i < m_bound.size(); ++i)
        Refresh(i);
    m_model.SetSaved();
}

void FormBinding::Refresh() {
    const Ref<FormBinding> self(this);
    for (std::size_t i = 0; i < m_bound.size(); ++i) {
        if (!m_bound[i].isPending)
            Refresh(i);
        else if (m_object)
            ReadState(i);
    }
}

void FormBinding::Refresh(std::size_t field) {
    if (!m_object)
        return;
    ReadChoices(field); // before the value, which has to be one of them
    ReadValue(field);
    ReadRows(field);
    ReadState(field);
}

void FormBinding::WriteAgain() {
    const Ref<FormBinding> self(this);
    std::vector<std::pair<std::string, Variant>> values;
    for (std::size_t i = 0; i < m_bound.size(); ++i)
        if (m_model.IsChanged(i) && m_bound[i].writes)
            values.emplace_back(Name(i), Passed(i, m_model.Value(i)));
    const auto recoverable = m_object.TryAs<Recoverable>();
    if (recoverable && !values.empty())
        recoverable->PutAll(values);
    for (std::size_t i = 0; i < m_bound.size(); ++i)
        if (!m_model.IsChanged(i))
            Refresh(i);
}

void FormBinding::ReadValue(std::size_t field) {
    const FieldKind kind = m_model.Field(field).kind;
    Bound& bound = m_bound[field];
    if (!bound.reads || !m_object || kind == FieldKind::Table || kind == FieldKind::Tree)
        return;
    Problem problem;
    const auto value = ConvertValue(m_model.Field(field), m_model.Choices(field), Ask(Name(field)), problem);
    bound.isPending = false;
    if (value)
        m_model.ShowValue(field, *value);
    if (problem || bound.isRefused)
        m_model.ShowProblem(field, problem);
    bound.isRefused = static_cast<bool>(problem);
}

// Texts with "\n" between, or an object with Count and Item, from 1. Behind a "\t" stands what is shown for a value;
// for an empty one it is the form's own text if nothing stands there.
void FormBinding::ReadChoices(std::size_t field) {
    if (!m_bound[field].choices || !m_object)
        return;
    const Variant answer = Ask(Name(field) + "Choices");
    std::vector<std::string> values;
    if (answer.IsObject()) {
        if (const Ref<Object> list = ToObject(answer)) {
            const Long count = ToLong(list->Invoke("Count", {}));
            for (Long i = 1; i <= count; ++i) {
                const Variant index(i);
                values.push_back(ToText(list->Invoke("Item", std::span(&index, 1))));
            }
        }
    } else {
        values = LinesOf(answer);
    }
    std::vector<FormChoice> choices;
    for (const std::string& value : values) {
        const std::size_t tab = value.find('\t');
        const std::string shown = tab == std::string::npos ? value : value.substr(tab + 1);
        const std::string label = shown.empty() ? m_model.Field(field).placeholder.text : shown;
        choices.push_back({value.substr(0, tab), {Unmarked(label), {}, false}});
    }
    m_model.ShowChoices(field, std::move(choices));
}

void FormBinding::ReadRows(std::size_t field) {
    const FieldKind kind = m_model.Field(field).kind;
    Bound& bound = m_bound[field];
    if (!m_object || (kind != FieldKind::Table && kind != FieldKind::Tree))
        return;
    if (m_model.Field(field).look == FieldLook::TextTable)
        return ReadLines(field);
    if (bound.reads) {
        bound.rows = ToObject(Ask(Name(field)));
        bound.treeRows.clear();
        if (kind == FieldKind::Tree) {
            AddTreeRows(bound, bound.rows, 0);
            bound.rowCount = bound.treeRows.size();
        } else {
            const Long count = bound.rows ? ToLong(bound.rows->Invoke("Count", {})) : 0;
            bound.rowCount = count > 0 ? static_cast<std::size_t>(count) : 0;
        }
    }
    m_model.ShowRows(field);
    if (bound.row && m_object) {
        const Long row = ToLong(Ask(Name(field) + "Row"));
        const bool isRow = row >= 1 && static_cast<std::size_t>(row) <= bound.rowCount;
        m_model.ShowSelection(field, isRow ? static_cast<std::size_t>(row) - 1 : none);
    }
}

// The titles, then a line for each row, with tabs between the cells.
void FormBinding::ReadLines(std::size_t field) {
    Bound& bound = m_bound[field];
    std::vector<std::string> lines = bound.reads ? LinesOf(Ask(Name(field))) : std::vector<std::string>();
    const std::vector<std::string> titles = lines.empty() ? std::vector<std::string>() : CellsOf(lines.front());
    bound.lines.clear();
    for (std::size_t i = 1; i < lines.size(); ++i) {
        bound.lines.push_back(CellsOf(lines[i]));
        bound.lines.back().resize(titles.size());
    }
    bound.rowCount = bound.lines.size();
    std::vector<ColumnDef> columns(titles.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        columns[i].name = titles[i];
        columns[i].title = {titles[i], {}, false};
        columns[i].hasFigures = HasFigures(bound.lines, i);
    }
    m_model.ShowRows(field, std::move(columns));
}

void FormBinding::AddTreeRows(Bound& bound, const Ref<Object>& rows, int depth) {
    if (!rows || depth > deepestTree)
        return;
    const Entering entering(rows);
    const Long count = ToLong(rows->Invoke("Count", {}));
    for (Long i = 1; i <= count && bound.treeRows.size() < mostTreeRows; ++i) {
        const Variant index(i);
        const Ref<Object> item = ToObject(rows->Invoke("Item", std::span(&index, 1)));
        if (!item)
            continue;
        bound.treeRows.push_back({item, depth});
        if (item->HasMember("Children"))
            AddTreeRows(bound, ToObject(item->Invoke("Children", {})), depth + 1);
    }
}

void FormBinding::ReadState(std::size_t field) {
    const Bound& bound = m_bound[field];
    if (bound.enabled && m_object) {
        const bool isEnabled = ToBoolean(Ask(Name(field) + "Enabled"));
        for (const std::size_t node : bound.nodes)
            m_model.EnableNode(node, isEnabled);
    }
    if (bound.visible && m_object) {
        const bool isVisible = ToBoolean(Ask(Name(field) + "Visible"));
        for (const std::size_t node : bound.nodes)
            m_model.ShowNode(node, isVisible);
    }
    if (bound.problem && m_object && !bound.isRefused) {
        std::string text = ToText(Ask(Name(field) + "Problem"));
        m_model.ShowProblem(field, text.empty() ? Problem() : Problem{ProblemKind::Own, {std::move(text)}});
    }
}

// What the object computes of its other properties.
void FormBinding::ReadDerived() {
    for (const std::size_t field : m_derived) {
        const FieldKind kind = m_model.Field(field).kind;
        ReadChoices(field);
        if (kind == FieldKind::Shown || kind == FieldKind::Progress)
            ReadValue(field);
        ReadState(field);
    }
}

// A text that is being typed stays as it is until the field is left, even if the property trims it.
bool FormBinding::ShowsAtOnce(std::size_t field) const {
    const FieldDef& def = m_model.Field(field);
    return def.kind == FieldKind::Boolean || def.kind == FieldKind::Choices ||
           (def.kind == FieldKind::Choice && def.look != FieldLook::EditableCombo);
}

// An enumeration gets the index of the choice.
Variant FormBinding::Passed(std::size_t field, const Variant& value) const {
    if (m_model.Field(field).kind != FieldKind::Choice || !IsNumber(m_bound[field].type))
        return value;
    const auto& choices = m_model.Choices(field);
    for (std::size_t i = 0; i < choices.size(); ++i)
        if (Variant(choices[i].value) == value)
            return static_cast<Long>(i);
    return Long{-1};
}

Problem FormBinding::Write(std::size_t field, const Variant& value) {
    Bound& bound = m_bound[field];
    m_written = field;
    bound.isPending = bound.isRefused = false;
    if (!m_object || (!bound.writes && !m_answersAll))
        return {};
    const Variant passed = Passed(field, value);
    const Ref<Object> object = m_object;
    try {
        const Entering entering(object);
        object->Put(Name(field), passed);
    } catch (...) {
        bound.isRefused = true;
        m_written = none;
        return RefusalOf(bound.type);
    }
    return {};
}

void FormBinding::Entered(std::size_t field) {
    const Ref<FormBinding> self(this);
    const bool isWritten = std::exchange(m_written, none) == field;
    m_bound[field].isPending = !isWritten;
    if (!m_object)
        return;
    if (isWritten && m_bound[field].changed) {
        (void)Ask("On" + Name(field) + "Changed");
        return Refresh();
    }
    if (isWritten && ShowsAtOnce(field))
        ReadValue(field);
    ReadDerived();
}

void FormBinding::Left(std::size_t field) {
    const Ref<FormBinding> self(this);
    if (m_object && IsEntered(m_model.Field(field).kind) && !m_bound[field].isPending)
        ReadValue(field);
    if (m_object)
        ReadState(field);
}

void FormBinding::Press(std::size_t field) {
    const Ref<FormBinding> self(this);
    if (!m_object)
        return;
    (void)Ask(Name(field));
    Refresh();
}

Ref<Object> FormBinding::Row(std::size_t field, std::size_t row) const {
    const Bound& bound = m_bound[field];
    if (m_model.Field(field).kind == FieldKind::Tree)
        return bound.treeRows.at(row).item;
    const Variant index(static_cast<Long>(row + 1));
    return ToObject(bound.rows->Invoke("Item", std::span(&index, 1)));
}

Variant FormBinding::Cell(std::size_t field, std::size_t row, std::size_t column) {
    if (row >= m_bound[field].rowCount)
        return {};
    if (!m_bound[field].lines.empty())
        return m_bound[field].lines[row][column];
    const ColumnDef& def = m_model.Field(field).columns[column];
    const Ref<Object> item = Row(field, row);
    const Entering entering(item);
    const Variant answer = item->Invoke(def.name, {});
    Problem problem;
    const auto value = ConvertValue(CellDef(def), def.choices, answer, problem);
    return value ? *value : answer.IsObject() ? Variant() : Variant(ToText(answer));
}

Problem FormBinding::WriteCell(std::size_t field, std::size_t row, std::size_t column, const Variant& value) {
    const ColumnDef& def = m_model.Field(field).columns[column];
    ValueType type = ValueType::Any;
    m_written = field;
    try {
        const Ref<Object> item = Row(field, row);
        for (const MemberInfo& member : item->MembersByName())
            if (EqualText(member.Name, def.name))
                type = member.Result.What;
        const Entering entering(item);
        item->Put(def.name, value);
    } catch (...) {
        m_written = none;
        return RefusalOf(type);
    }
    return {};
}

int FormBinding::Depth(std::size_t field, std::size_t row) {
    const auto& rows = m_bound[field].treeRows;
    return row < rows.size() ? rows[row].depth : 0;
}

void FormBinding::SelectRow(std::size_t field, std::size_t row) {
    const Ref<FormBinding> self(this);
    const Bound& bound = m_bound[field];
    const Ref<Object> object = m_object;
    if (!object)
        return;
    if (bound.rowWrites || m_answersAll) {
        const Entering entering(object);
        object->Put(Name(field) + "Row", Variant(row == none ? Long(0) : static_cast<Long>(row + 1)));
    }
    if (bound.rowChanged && m_object) {
        (void)Ask("On" + Name(field) + "RowChanged");
        return Refresh();
    }
    ReadDerived();
}

} // namespace corvane::forms
