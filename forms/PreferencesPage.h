// The page of a form among the preferences that has no class of its own: its values are those of Preferences.
#pragma once

#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "forms/FormModel.h"

#include <string>

namespace corvane::forms {

// The values are stored under a service, a category and the names of the fields, as Preferences reads them. The service
// is what the form names, or the ProgID before its first point; the category what the form names, or "Default". When
// they are saved, every service that has a member OnPreferenceChanged gets the names of service, category and value.
class PreferencesPage final : public IPageAccess, public IFormData {
public:
    explicit PreferencesPage(std::string progID) : m_progID(std::move(progID)) {}

    Ref<IPage> Page() override { return m_base; }
    // The values as they are stored, or those of the form.
    void Load(FormModel& model);
    // Stores those that were changed. The model isn't saved before it returns.
    void Save(const FormModel& model) const;

    // As IFormData.
    [[nodiscard]] Problem Write(std::size_t /*field*/, const Variant& /*value*/) override { return {}; }
    void Entered(std::size_t /*field*/) override {}
    void Left(std::size_t /*field*/) override {}
    // A button "RestoreDefaults" does that; any other one fails with 438.
    void Press(std::size_t field) override;
    [[nodiscard]] std::size_t RowCount(std::size_t /*field*/) override { return 0; }
    [[nodiscard]] Variant Cell(std::size_t /*field*/, std::size_t /*row*/, std::size_t /*column*/) override {
        return {};
    }
    [[nodiscard]] Problem WriteCell(std::size_t /*field*/, std::size_t /*row*/, std::size_t /*column*/,
                                    const Variant& /*value*/) override {
        return {};
    }
    [[nodiscard]] int Depth(std::size_t /*field*/, std::size_t /*row*/) override { return 0; }
    void SelectRow(std::size_t /*field*/, std::size_t /*row*/) override {}

    std::string_view TypeName() const override { return "PreferencesPage"; }

private:
    std::string m_progID;
    Ref<PageBase> m_base = New<PageBase>();
    FormModel* m_model = nullptr; // from Load on
};

// Where a form without a class keeps its values.
[[nodiscard]] std::string ServiceOfPreferences(const FormDef& form, std::string_view progID);
[[nodiscard]] std::string CategoryOfPreferences(const FormDef& form);

} // namespace corvane::forms
