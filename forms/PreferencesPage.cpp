#include "forms/PreferencesPage.h"

#include "adapters/common/Recoverable.h"
#include "corvane/base/Automation.h"
#include "corvane/base/Text.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Preferences.h"
#include "corvane/platform/Entering.h"
#include "corvane/services/ServiceManager.h"

#include <algorithm>
#include <array>

namespace corvane::forms {

namespace {

constexpr std::string_view restore = "RestoreDefaults";

Ref<Preferences> StoreOf(const FormDef& form, const std::string& progID) {
    auto store = New<Preferences>();
    store->Initialize(ServiceOfPreferences(form, progID), CategoryOfPreferences(form));
    return store;
}

bool IsStored(const FieldDef& field) {
    return IsEntered(field.kind) && !field.readOnly && !field.name.empty();
}

} // namespace

std::string ServiceOfPreferences(const FormDef& form, std::string_view progID) {
    return form.service.empty() ? std::string(progID.substr(0, progID.find('.'))) : form.service;
}

std::string CategoryOfPreferences(const FormDef& form) {
    return form.category.empty() ? "Default" : form.category;
}

void PreferencesPage::Load(FormModel& model) {
    m_model = &model;
    const Ref<Preferences> store = StoreOf(model.Def(), m_progID);
    for (std::size_t i = 0; i < model.Count(); ++i) {
        const FieldDef& field = model.Field(i);
        if (!IsStored(field))
            continue;
        Problem problem;
        const auto value = ReadValue(field, model.Choices(i), store->GetValue(field.name, field.value), problem);
        // What another version has stored and can't be accepted any more is as if it weren't there.
        const bool isGood = value && !CheckValue(field, model.Choices(i), *value);
        model.ShowValue(i, isGood ? *value : field.value);
    }
    model.SetSaved();
}

void PreferencesPage::Save(const FormModel& model) const {
    const Ref<Preferences> store = StoreOf(model.Def(), m_progID);
    std::vector<std::string> changed;
    for (std::size_t i = 0; i < model.Count(); ++i) {
        if (!IsStored(model.Field(i)) || !model.IsChanged(i))
            continue;
        store->SetValue(model.Field(i).name, model.Value(i));
        changed.push_back(model.Field(i).name);
    }
    const Ref<Framework> framework = CorvaneMain::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (changed.empty() || !manager)
        return;
    std::vector<Ref<Object>> listeners;
    for (const auto& service : manager->Services()) {
        const auto recoverable = service.TryAs<Recoverable>();
        const bool readsLater = recoverable && recoverable->IsIdle(); // when it starts
        if (!readsLater && service->HasMember("OnPreferenceChanged") &&
            std::find(listeners.begin(), listeners.end(), service) == listeners.end())
            listeners.push_back(service); // once, though one object may serve under several names
    }
    for (const std::string& name : changed) {
        for (const auto& listener : listeners) {
            const std::array<Variant, 3> arguments{store->Service(), store->Category(), name};
            const Entering entering(listener);
            (void)listener->Invoke("OnPreferenceChanged", arguments);
        }
    }
}

void PreferencesPage::Press(std::size_t field) {
    const std::string& name = m_model->Field(field).name;
    if (!EqualText(name, restore))
        FailNoSuchMember(*this, name);
    m_model->RestoreDefaults();
}

} // namespace corvane::forms
