#include "forms/FormPage.h"

#include "adapters/common/Recoverable.h"
#include "corvane/author/Page.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/IClassFinder.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"
#include "forms/FormReader.h"

namespace corvane::forms {

namespace {

Ref<Object> ObjectOf(const Ref<PageDef>& pageDef) {
    const Ref<IObjectFactory> factory = CurrentPlatform().oObjectFactory;
    const std::string& progID = pageDef->PageProgID();
    if (IsOfPreferences(pageDef))
        if (const auto finder = factory.TryAs<IClassFinder>(); finder && !finder->HasClass(progID))
            return New<PreferencesPage>(progID);
    return factory->Create(progID);
}

} // namespace

std::string WhyUnreadable(const FormDef& form) {
    if (form.readable)
        return {};
    const FormProblem& problem = form.problems.front();
    std::string place = form.file;
    if (problem.at.line > 0)
        place += ":" + std::to_string(problem.at.line) + ":" + std::to_string(problem.at.column);
    return place + ": " + problem.text + ". " + problem.cure;
}

bool IsOfPreferences(const Ref<PageDef>& pageDef) {
    const Ref<Framework> framework = CorvaneMain::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (!manager)
        return false;
    for (const auto& preference : manager->PreferencePageDefs())
        if (preference == pageDef)
            return true;
    return false;
}

std::shared_ptr<const FormDef> FormPage::Read(const FormOptions& options, const Ref<PageDef>& pageDef) {
    const std::string path = FormPathOf(options.application, pageDef->PageProgID());
    if (path.empty())
        return nullptr;
    auto def = std::make_shared<FormDef>(ReadFormFile(path));
    if (options.translate)
        TranslateForm(*def, options.translate);
    return def;
}

Ref<FormPage> FormPage::OpenRead(const FormOptions& options, const Ref<PageDef>& pageDef,
                                 std::shared_ptr<const FormDef> def) {
    return New<FormPage>(std::move(def), ObjectOf(pageDef), options.answersAll);
}

Ref<FormPage> FormPage::Open(const FormOptions& options, const Ref<PageDef>& pageDef) {
    std::shared_ptr<const FormDef> def = Read(options, pageDef);
    if (!def)
        return nullptr;
    if (!def->readable)
        Fail(FailureNumber::InvalidProcedureCall, WhyUnreadable(*def), "Reading the form");
    return OpenRead(options, pageDef, std::move(def));
}

FormPage::FormPage(std::shared_ptr<const FormDef> def, Ref<Object> pageObj, bool answersAll)
    : m_model(New<FormModel>(std::move(def))), m_pageObj(std::move(pageObj)),
      m_base(CorvaneMain::QueryPage(m_pageObj).As<PageBase>()), m_preferences(m_pageObj.TryAs<PreferencesPage>()),
      m_answersAll(answersAll) {
    if (!m_base)
        Fail(FailureNumber::ObjectNotSet, std::string(m_pageObj->TypeName()) + " hands out no page",
             "Opening the form");
    if (m_preferences) {
        m_model->SetData(m_preferences.Get());
    } else {
        m_binding = New<FormBinding>(*m_model, m_pageObj, answersAll);
        m_model->SetData(m_binding.Get());
    }
    // The page's own handlers have been subscribed before, so that the form follows what they do.
    m_events.push_back(m_base->InitializeEvent.Subscribe([this](const Ref<Object>&) { Load(); }));
    m_events.push_back(
        m_base->ValidateEvent.Subscribe([this](bool& isValid) { isValid = isValid && m_model->IsValid(); }));
    m_events.push_back(m_base->SaveEvent.Subscribe([this] { Saved(); }));
    m_events.push_back(
        m_base->CommandClickEvent.Subscribe([this](StandardCommandConstants command) { TryCommand(command); }));
    m_events.push_back(m_base->TerminateEvent.Subscribe([this](const Ref<Object>&) { End(); }));
    m_events.push_back(m_model->Notice.Subscribe(
        [this](const FormNotice& notice) { FollowValidity(notice.what == FormChange::Done); }));
    if (const auto recoverable = m_pageObj.TryAs<Recoverable>(); recoverable && m_binding)
        m_events.push_back(recoverable->Recovered.Subscribe([this] { m_binding->WriteAgain(); }));
    if (const auto user = m_pageObj.TryAs<IFormUser>())
        user->UseForm(Ref<IForm>(this));
}

FormPage::~FormPage() {
    m_model->SetData(nullptr); // a host may still draw it
}

bool FormPage::IsValid() const {
    if (m_answersAll) // a stub notes down that it is asked
        return m_model->IsValid();
    try {
        const Entering entering(m_pageObj);
        return m_base->IsValid();
    } catch (const Failure&) {
        return false;
    }
}

bool FormPage::IsChanged() const {
    const auto page = m_pageObj.TryAs<AnyPage>();
    return m_model->IsChanged() || (page && page->IsChanged());
}

void FormPage::Load() {
    if (m_preferences)
        m_preferences->Load(*m_model);
    else
        m_binding->Load();
    m_wasValid = m_model->IsValid();
    m_wasChanged = m_model->IsChanged();
}

void FormPage::Saved() {
    if (m_preferences) {
        m_preferences->Save(*m_model);
        m_model->SetSaved();
    } else {
        m_binding->Load();
    }
}

// A command that goes on wants all in order: the problems are shown, and the keyboard goes to the first one.
void FormPage::TryCommand(StandardCommandConstants command) {
    if (command == StandardCommandConstants::cvCancel || command == StandardCommandConstants::cvHelp ||
        command == StandardCommandConstants::cvPrevious)
        return;
    m_model->ShowProblems();
    if (const std::size_t wrong = m_model->FirstWrong(); wrong != none)
        m_model->AskFocus(wrong);
}

// After an act of the user the page's class may answer otherwise, whatever the form says.
void FormPage::FollowValidity(bool isDone) {
    const bool isValid = m_model->IsValid();
    const bool isChanged = m_model->IsChanged();
    if (!isDone && isValid == m_wasValid && isChanged == m_wasChanged)
        return;
    m_wasValid = isValid;
    m_wasChanged = isChanged;
    if (m_base->Window())
        m_base->ValidityChanged();
}

void FormPage::End() {
    m_model->SetData(nullptr);
    if (m_binding)
        m_binding->End();
    const Ref<Object> pageObj = m_pageObj;
    if (const auto user = pageObj.TryAs<IFormUser>())
        user->UseForm(nullptr);
}

std::size_t FormPage::FieldOf(const std::string& name) const {
    if (const auto field = m_model->Find(name))
        return *field;
    Fail(FailureNumber::InvalidProcedureCall, "The form " + m_model->Def().file + " has no field \"" + name + "\"",
         "Form");
}

std::vector<std::size_t> FormPage::NodesOf(const std::string& name) const {
    std::vector<std::size_t> nodes = m_model->NodesNamed(name);
    if (nodes.empty())
        Fail(FailureNumber::InvalidProcedureCall, "The form " + m_model->Def().file + " has no part \"" + name + "\"",
             "Form");
    return nodes;
}

void FormPage::SetEnabled(const std::string& name, bool enabled) {
    for (const std::size_t node : NodesOf(name))
        m_model->EnableNode(node, enabled);
}

void FormPage::SetVisible(const std::string& name, bool visible) {
    for (const std::size_t node : NodesOf(name))
        m_model->ShowNode(node, visible);
}

void FormPage::SetProblem(const std::string& name, const std::string& text) {
    m_model->ShowProblemAtOnce(FieldOf(name), text.empty() ? Problem() : Problem{ProblemKind::Own, {text}});
}

void FormPage::SetLabel(const std::string& name, const std::string& text) {
    m_model->ShowLabel(FieldOf(name), text);
}

void FormPage::Refresh(const std::string& name) {
    if (!name.empty()) {
        const std::size_t field = FieldOf(name);
        if (m_binding)
            m_binding->Refresh(field);
    } else if (m_binding) {
        m_binding->Refresh();
    }
}

Variant FormPage::Value(const std::string& name) {
    return m_model->Value(FieldOf(name));
}

void FormPage::SetValue(const std::string& name, const Variant& value) {
    const std::size_t field = FieldOf(name);
    Problem problem;
    const auto converted = ConvertValue(m_model->Field(field), m_model->Choices(field), value, problem);
    if (!converted)
        Fail(FailureNumber::TypeMismatch, "The field \"" + name + "\": " + problem.Text(), "Form");
    m_model->ShowValue(field, *converted);
}

Long FormPage::SelectedRow(const std::string& name) {
    const std::size_t row = m_model->SelectedRow(FieldOf(name));
    return row == none ? 0 : static_cast<Long>(row + 1);
}

void FormPage::Focus(const std::string& name) {
    m_model->AskFocus(FieldOf(name));
}

} // namespace corvane::forms
