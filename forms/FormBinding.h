// Ties a form to its page's object by nothing but names: a field "Title" is the property Title. docs/forms.md has the
// names by which the object can say more. All calls are late-bound, through the class's table of members.
#pragma once

#include "corvane/base/Object.h"
#include "forms/FormModel.h"

#include <cstddef>
#include <string>
#include <vector>

namespace corvane::forms {

class FormBinding final : public virtual Object, public IFormData {
public:
    // With answersAll the object takes any name, without a list of them: values are kept by the model, and what is
    // entered and pressed is passed on. The model outlives the binding.
    FormBinding(FormModel& model, Ref<Object> object, bool answersAll);

    // Shows all that the object says, as what is saved. A failure of the object leaves the function.
    void Load();
    // Without what the user has entered and the object hasn't taken, which stays.
    void Refresh();
    // With it.
    void Refresh(std::size_t field);
    // The object has been made again: it gets what the user has entered since the last save, and says the rest.
    void WriteAgain();
    // The object isn't called any more.
    void End() { m_object = nullptr; }

    // As IFormData.
    [[nodiscard]] Problem Write(std::size_t field, const Variant& value) override;
    void Entered(std::size_t field) override;
    void Left(std::size_t field) override;
    void Press(std::size_t field) override;
    [[nodiscard]] std::size_t RowCount(std::size_t field) override { return m_bound[field].rowCount; }
    [[nodiscard]] Variant Cell(std::size_t field, std::size_t row, std::size_t column) override;
    [[nodiscard]] Problem WriteCell(std::size_t field, std::size_t row, std::size_t column,
                                    const Variant& value) override;
    [[nodiscard]] int Depth(std::size_t field, std::size_t row) override;
    void SelectRow(std::size_t field, std::size_t row) override;

    std::string_view TypeName() const override { return "FormBinding"; }

private:
    struct TreeRow {
        Ref<Object> item;
        int depth;
    };
    // Which members the object has for a field.
    struct Bound {
        bool reads = false;
        bool writes = false;
        ValueType type = ValueType::Any;
        bool choices = false;
        bool problem = false;
        bool enabled = false;
        bool visible = false;
        bool changed = false; // OnTitleChanged
        bool row = false;
        bool rowWrites = false;
        bool rowChanged = false;
        bool isPending = false; // the property doesn't have what was entered last
        bool isRefused = false; // because it has refused it, or can't be shown: the problem is the binding's
        std::vector<std::size_t> nodes = {}; // for enabled and visible
        Ref<Object> rows = {};
        std::vector<std::vector<std::string>> lines = {}; // of a table that is a text, below its titles
        std::size_t rowCount = 0;
        std::vector<TreeRow> treeRows = {};
    };

    [[nodiscard]] Variant Ask(const std::string& member, std::span<const Variant> arguments = {}) const;
    [[nodiscard]] const std::string& Name(std::size_t field) const { return m_model.Field(field).name; }
    void ReadValue(std::size_t field);
    void ReadChoices(std::size_t field);
    void ReadRows(std::size_t field);
    void ReadLines(std::size_t field);
    void ReadState(std::size_t field);
    void ReadDerived();
    void AddTreeRows(Bound& bound, const Ref<Object>& rows, int depth);
    [[nodiscard]] Ref<Object> Row(std::size_t field, std::size_t row) const;
    [[nodiscard]] Variant Passed(std::size_t field, const Variant& value) const;
    [[nodiscard]] bool ShowsAtOnce(std::size_t field) const;

    FormModel& m_model;
    Ref<Object> m_object;
    bool m_answersAll;
    std::vector<Bound> m_bound;
    std::vector<std::size_t> m_derived; // fields whose state is asked for after every entry
    std::size_t m_written = none;
};

// What a property of that type takes, for messages: "a whole number".
[[nodiscard]] std::string_view WordsOf(ValueType type);

} // namespace corvane::forms
