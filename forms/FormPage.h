// A page whose inside is a form: its object, its model, and what ties them to the window. A host makes one for each
// page that has a form, reports the object to the library as that of any page, and draws the model.
#pragma once

#include "corvane/services/PageDef.h"
#include "corvane/windows/IForm.h"
#include "corvane/windows/PageBase.h"
#include "forms/FormBinding.h"
#include "forms/PreferencesPage.h"

#include <functional>
#include <string>

namespace corvane::forms {

struct FormOptions {
    std::string application; // the folder
    bool answersAll = false; // the factory makes stubs, which take any name
    // The translation of a text by its key, or a null pointer.
    std::function<const std::string*(const std::string& key, const std::string& text)> translate = {};
};

class FormPage final : public IForm {
public:
    // The form of that page with its object, by the platform's factory; nothing when the application has no form for
    // it. A page of the preferences needs no class. Fails with 5 and the place in the file when no form comes of it,
    // and as the factory does.
    [[nodiscard]] static Ref<FormPage> Open(const FormOptions& options, const Ref<PageDef>& pageDef);
    // In two steps: the form, a null pointer when there is none; and the page of one that is readable.
    [[nodiscard]] static std::shared_ptr<const FormDef> Read(const FormOptions& options, const Ref<PageDef>& pageDef);
    [[nodiscard]] static Ref<FormPage> OpenRead(const FormOptions& options, const Ref<PageDef>& pageDef,
                                                std::shared_ptr<const FormDef> def);
    FormPage(std::shared_ptr<const FormDef> def, Ref<Object> pageObj, bool answersAll);
    ~FormPage() override;

    [[nodiscard]] const Ref<Object>& PageObj() const { return m_pageObj; }
    [[nodiscard]] const Ref<FormModel>& Model() const { return m_model; }
    // Of the form and of the page's class. A class that fails to say isn't valid.
    [[nodiscard]] bool IsValid() const;
    [[nodiscard]] bool IsChanged() const;

    // As IForm.
    void SetEnabled(const std::string& name, bool enabled) override;
    void SetVisible(const std::string& name, bool visible) override;
    void SetProblem(const std::string& name, const std::string& text) override;
    void SetLabel(const std::string& name, const std::string& text) override;
    void Refresh(const std::string& name) override;
    [[nodiscard]] Variant Value(const std::string& name) override;
    void SetValue(const std::string& name, const Variant& value) override;
    [[nodiscard]] Long SelectedRow(const std::string& name) override;
    void Focus(const std::string& name) override;

    std::string_view TypeName() const override { return "FormPage"; }

private:
    [[nodiscard]] std::size_t FieldOf(const std::string& name) const;
    [[nodiscard]] std::vector<std::size_t> NodesOf(const std::string& name) const;
    void Load();
    void Saved();
    void TryCommand(StandardCommandConstants command);
    void FollowValidity(bool isDone);
    void End();

    Ref<FormModel> m_model;
    Ref<Object> m_pageObj;
    Ref<PageBase> m_base;
    Ref<FormBinding> m_binding;         // one of these two
    Ref<PreferencesPage> m_preferences; // the page's object itself
    bool m_answersAll;
    bool m_wasValid = true;
    bool m_wasChanged = false;
    std::vector<Subscription> m_events;
};

// Why no form comes of a file, with the place in it; "" for one that is readable.
[[nodiscard]] std::string WhyUnreadable(const FormDef& form);

// Whether the page is one of the preferences, by the records of the running application.
[[nodiscard]] bool IsOfPreferences(const Ref<PageDef>& pageDef);

} // namespace corvane::forms
