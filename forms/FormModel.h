// A form that is shown: the values of its fields and what can be done with them. A host draws it and passes on what the
// user does; a FormBinding ties it to the page's object. The model decides what is valid, changed, enabled and visible,
// so that every host does the same.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Ref.h"
#include "forms/FormValue.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::forms {

// What of a form has changed, for those who draw it.
enum class FormChange {
    Value,     // or the text, of a field
    Problem,   // of a field, or whether it is to be shown
    State,     // enabled or visible, of a part of the form with all in it; field is none
    Choices,   // of a field
    Rows,      // of a table or tree: all of them
    Cell,      // the rows of a table keep their number
    Selection, // of a table or tree
    Changed,   // of the form: whether there is something to save
    Focus,     // the page wants the keyboard in that field
    Label,     // of a field: the page has given it another text
    Done,      // an act of the user, with all that has come of it: an entry, a button, a cell, a row
};

struct FormNotice {
    FormChange what;
    std::size_t field = none;  // index of the field; none for the whole form
    std::size_t row = none;    // of Done: the cell's, or the row that was selected
    std::size_t column = none; // of Done: the cell's
    std::size_t node = none;   // of State: index of the part
};

// What is behind a form. The model calls it; rows and columns are from 0. A failure is one of the program, and leaves
// the model's function.
class IFormData {
public:
    virtual ~IFormData() = default;

    // Takes a value that can be accepted, in the type of the field's kind. Returns why it won't be taken.
    [[nodiscard]] virtual Problem Write(std::size_t field, const Variant& value) = 0;
    // After a value was written, and after one that can't be accepted was entered.
    virtual void Entered(std::size_t field) = 0;
    // The user has left the field: what the page has made of the value may be shown now.
    virtual void Left(std::size_t field) = 0;
    virtual void Press(std::size_t field) = 0;
    [[nodiscard]] virtual std::size_t RowCount(std::size_t field) = 0;
    [[nodiscard]] virtual Variant Cell(std::size_t field, std::size_t row, std::size_t column) = 0;
    [[nodiscard]] virtual Problem WriteCell(std::size_t field, std::size_t row, std::size_t column,
                                            const Variant& value) = 0;
    // Of a tree, how deep the row lies, from 0.
    [[nodiscard]] virtual int Depth(std::size_t field, std::size_t row) = 0;
    // none when no row is selected.
    virtual void SelectRow(std::size_t field, std::size_t row) = 0;
};

class FormModel final : public virtual Object {
public:
    explicit FormModel(std::shared_ptr<const FormDef> def);

    [[nodiscard]] const FormDef& Def() const { return *m_def; }
    [[nodiscard]] std::size_t Count() const { return m_fields.size(); }
    [[nodiscard]] const FieldDef& Field(std::size_t field) const { return m_def->fields[field]; }
    [[nodiscard]] std::optional<std::size_t> Find(std::string_view name) const;
    // The data has to outlive the model, or to be taken away by a null pointer; nothing can be entered then.
    void SetData(IFormData* data) { m_data = data; }

    // What is shown.
    [[nodiscard]] const Variant& Value(std::size_t field) const { return m_fields[field].value; }
    // As the user would type it, or has typed it: also what is no value.
    [[nodiscard]] std::string Text(std::size_t field) const;
    [[nodiscard]] const std::vector<FormChoice>& Choices(std::size_t field) const;
    [[nodiscard]] const std::vector<ColumnDef>& Columns(std::size_t field) const; // of a table or tree
    [[nodiscard]] std::string Label(std::size_t field) const;                     // with its mnemonic
    // Of the field and of all that it lies in.
    [[nodiscard]] bool IsEnabled(std::size_t field) const;
    [[nodiscard]] bool IsVisible(std::size_t field) const;
    // By the form, or because the page can't be given a value.
    [[nodiscard]] bool IsReadOnly(std::size_t field) const {
        return Field(field).readOnly || m_fields[field].isReadOnly;
    }
    // Of a node itself, by its index.
    [[nodiscard]] bool IsNodeEnabled(std::size_t node) const { return m_nodes[node].enabled; }
    [[nodiscard]] bool IsNodeVisible(std::size_t node) const { return m_nodes[node].visible; }
    // Why the value can't be accepted; none for a field that is hidden or disabled.
    [[nodiscard]] Problem ProblemOf(std::size_t field) const;
    // Once the field was left, or a command was tried.
    [[nodiscard]] bool IsProblemShown(std::size_t field) const { return m_fields[field].isVisited && ProblemOf(field); }
    [[nodiscard]] bool IsChanged(std::size_t field) const;
    [[nodiscard]] std::size_t RowCount(std::size_t field) const;
    [[nodiscard]] Variant Cell(std::size_t field, std::size_t row, std::size_t column) const;
    [[nodiscard]] std::string CellText(std::size_t field, std::size_t row, std::size_t column) const;
    [[nodiscard]] Problem CellProblem(std::size_t field, std::size_t row, std::size_t column) const;
    [[nodiscard]] bool IsCellEditable(std::size_t field, std::size_t column) const;
    [[nodiscard]] int Depth(std::size_t field, std::size_t row) const;
    [[nodiscard]] std::size_t SelectedRow(std::size_t field) const { return m_fields[field].row; } // none for none

    // What the user does. Each returns why it can't be done, in words for a developer, or "" when it was.
    // A text that is no value of the field's kind is refused by EnterText; Type keeps it, as a problem.
    std::string EnterText(std::size_t field, std::string_view text);
    std::string Type(std::size_t field, std::string_view text);
    std::string Press(std::size_t field);
    std::string EnterCell(std::size_t field, std::size_t row, std::size_t column, std::string_view text);
    std::string SelectRow(std::size_t field, std::size_t row);
    // The field was left, or its entry ended: its problem is shown from now on.
    void Leave(std::size_t field);
    // A command was tried: all problems are shown.
    void ShowProblems();

    [[nodiscard]] bool IsValid() const { return m_wrong == 0; }
    // Always false of a form whose entries take effect at once.
    [[nodiscard]] bool IsChanged() const {
        return !m_def->immediate && (m_changed > 0 || !m_edits.empty() || !m_wrongCells.empty());
    }
    // The first field with a problem, in the tab order; none when the form is valid.
    [[nodiscard]] std::size_t FirstWrong() const;
    // The values are saved: nothing is changed any more.
    void SetSaved();
    // Back to what was saved.
    void Revert();
    // Back to what the form declares: one field, or all.
    void RestoreDefault(std::size_t field);
    void RestoreDefaults();

    // What the page does; nothing is written back to it.
    void ShowValue(std::size_t field, const Variant& value); // of the field's own type
    void ShowChoices(std::size_t field, std::vector<FormChoice> choices);
    // Of the page; none takes it back. One that comes of an act on another field is shown at once, as the user may be
    // done with this one.
    void ShowProblem(std::size_t field, Problem problem);
    void ShowProblemAtOnce(std::size_t field, Problem problem);
    void ShowLabel(std::size_t field, const std::string& label);
    // Rows are others now, and so are the columns if they are given.
    void ShowRows(std::size_t field, std::optional<std::vector<ColumnDef>> columns = {});
    void ShowSelection(std::size_t field, std::size_t row);
    void SetReadOnly(std::size_t field) { m_fields[field].isReadOnly = true; }
    void EnableNode(std::size_t node, bool enabled);
    void ShowNode(std::size_t node, bool visible);
    // The nodes of that name: the field's own, all buttons of a choice, a group, a tab. Empty when there is none.
    [[nodiscard]] std::vector<std::size_t> NodesNamed(std::string_view name) const;
    void AskFocus(std::size_t field) { Raise(FormChange::Focus, field); }

    Event<const FormNotice&> Notice;

    std::string_view TypeName() const override { return "FormModel"; }

private:
    struct FieldState {
        Variant value;
        Variant saved;
        std::optional<std::string> typed; // that is no value
        Problem reading;                  // of what was typed
        Problem checking;                 // of the value
        Problem own;                      // of the page
        std::optional<std::vector<FormChoice>> choices;
        std::optional<std::vector<ColumnDef>> columns;
        std::optional<std::string> label;
        std::size_t row = none;
        bool isReadOnly = false;
        bool isVisited = false;
        bool isCountedWrong = false;
        bool isCountedChanged = false;
    };
    struct NodeState {
        std::string_view name;
        std::size_t parent = none;
        std::size_t end = 0;      // behind the last node in it
        std::size_t field = none; // of a group that can be checked: its content follows it
        bool enabled = true;
        bool visible = true;
    };
    struct CellEdit {
        std::size_t field;
        std::size_t row;
        std::size_t column;
        Variant before;
    };
    using CellPlace = std::pair<std::size_t, std::pair<std::size_t, std::size_t>>;
    struct WrongCell {
        std::string typed;
        Problem problem;
    };

    void Raise(FormChange what, std::size_t field = none, std::size_t row = none, std::size_t column = none) {
        Notice.Raise({what, field, row, column});
    }
    // Raises what has come of a change of a field.
    class Watch;
    // What the user does to a field.
    class Act;
    [[nodiscard]] std::string WhyNotEntered(std::size_t field, const char* verb) const;
    void Take(std::size_t field, const Variant& value);
    void Visit(std::size_t field);
    void Keep(std::size_t field, std::string_view text, Problem problem);
    void AddNode(const FormNode& node);
    void Count(std::size_t field);
    void CountAll();
    void RaiseState(std::size_t node);

    std::shared_ptr<const FormDef> m_def;
    IFormData* m_data = nullptr;
    std::vector<FieldState> m_fields;
    std::vector<NodeState> m_nodes; // by index
    std::vector<CellEdit> m_edits;  // since the last save
    std::map<CellPlace, WrongCell> m_wrongCells;
    std::vector<std::vector<std::size_t>> m_inside; // the fields that a node itself shows, by its index
    std::size_t m_acting = none;                    // the field of the act that is being done
    std::size_t m_wrong = 0; // fields with a problem, and those with a change: asked for after every entry
    std::size_t m_changed = 0;
};

} // namespace corvane::forms
