#include "headless/FormJson.h"

#include "forms/FormPicture.h"

#include <algorithm>

namespace corvane::inspect {

namespace {

using Json = nlohmann::json;

Json ValueJson(const Variant& value) {
    if (const auto* boolean = value.Get<bool>())
        return *boolean;
    if (const auto* longLong = value.Get<LongLong>())
        return *longLong;
    if (const auto* number = value.Get<Double>())
        return *number;
    return value.IsEmpty() ? Json(nullptr) : Json(forms::WriteValue(value));
}

Json RowsJson(const forms::FormModel& form, std::size_t field) {
    constexpr std::size_t mostRows = 1000;
    Json rows = Json::array();
    for (std::size_t row = 0; row < std::min(form.RowCount(field), mostRows); ++row) {
        Json cells = Json::array();
        for (std::size_t column = 0; column < form.Columns(field).size(); ++column)
            cells.push_back(form.CellProblem(field, row, column) ? Json(form.CellText(field, row, column))
                                                                 : ValueJson(form.Cell(field, row, column)));
        rows.push_back(std::move(cells));
    }
    return rows;
}

Json FieldJson(const forms::FormModel& form, std::size_t field) {
    const forms::FieldDef& def = form.Field(field);
    Json json{{"name", def.name}, {"kind", forms::WordOf(def.kind)}};
    const auto Add = [&](const char* key, Json value) {
        if (!value.is_null() && value != false && value != "" && value != Json::array())
            json[key] = std::move(value);
    };
    Add("label", forms::PlainText(form.Label(field)));
    const bool isRead = form.Text(field) == forms::WriteValue(form.Value(field));
    if (def.kind == forms::FieldKind::Choices && isRead)
        Add("value", forms::LinesOf(form.Value(field)));
    else if (def.kind != forms::FieldKind::Button)
        Add("value", isRead && def.kind != forms::FieldKind::Shown ? ValueJson(form.Value(field))
                                                                   : Json(forms::WithoutPicture(form.Text(field))));
    if (!form.IsEnabled(field))
        json["enabled"] = false;
    if (!form.IsVisible(field))
        json["visible"] = false;
    Add("required", def.required);
    Add("readOnly", form.IsReadOnly(field));
    Add("problem", form.ProblemOf(field).Text());
    Add("changed", form.IsChanged(field));
    Json choices = Json::array();
    for (const forms::FormChoice& choice : form.Choices(field))
        choices.push_back(choice.value);
    Add("choices", std::move(choices));
    Add("rows", RowsJson(form, field));
    if (form.SelectedRow(field) != forms::none)
        json["row"] = form.SelectedRow(field);
    return json;
}

} // namespace

Json FieldsJson(const forms::FormModel& form) {
    Json fields = Json::array();
    for (std::size_t i = 0; i < form.Count(); ++i)
        fields.push_back(FieldJson(form, i));
    return fields;
}

} // namespace corvane::inspect
