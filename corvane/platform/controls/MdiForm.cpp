#include "corvane/platform/controls/MdiForm.h"

#include "corvane/base/Automation.h"

namespace corvane {

MdiForm::~MdiForm() {
    for (Form* pForm : m_setMade)
        pForm->Detach(Badge<MdiForm>{});
}

Ref<Form> MdiForm::ActiveForm() const {
    if (!m_bHidesActive)
        for (auto it = m_aForms.rbegin(); it != m_aForms.rend(); ++it)
            if ((*it)->MDIChild() && !(*it)->IsUnloading() && m_mapPlaces.at(*it).bWasActive)
                return Ref<Form>(*it);
    return nullptr;
}

Ref<Form> MdiForm::ForegroundForm() const {
    return Ref<Form>(m_pForeground);
}

std::vector<Ref<Form>> MdiForm::Forms() const {
    std::vector<Ref<Form>> aForms;
    for (Form* pForm : m_aForms)
        aForms.emplace_back(pForm);
    return aForms;
}

void MdiForm::Arrange(Arrangement eHow) {
    Arranged.Raise(eHow);
}

void MdiForm::AddMember(std::string_view sName, Ref<Object> oMember) {
    m_colMembers->Add(std::move(oMember), sName);
}

Variant MdiForm::Invoke(std::string_view sName, std::span<const Variant> aArguments) {
    if (!m_colMembers->HasKey(sName))
        return Form::Invoke(sName, aArguments);
    if (!aArguments.empty())
        FailArgumentCount(*this, sName, 0, aArguments.size());
    return m_colMembers->Item(sName);
}

void MdiForm::FormMade(Form& oForm) {
    m_setMade.insert(&oForm);
}

void MdiForm::FormLoaded(const Ref<Form>& oForm) {
    // A form that has been loaded but never shown is behind all others.
    m_mapPlaces[oForm.Get()] = {m_aForms.insert(m_aForms.begin(), oForm.Get()), false};
    ChildLoaded.Raise(oForm);
}

void MdiForm::FormActivated(const Ref<Form>& oForm) {
    if (m_pForeground == oForm.Get())
        return;
    const Ref<MdiForm> oSelf(this);
    const Ref<Form> oPrevious(m_pForeground);
    TakeOut(*oForm);
    m_mapPlaces[oForm.Get()] = {m_aForms.insert(m_aForms.end(), oForm.Get()), true};
    m_pForeground = oForm.Get();
    if (oPrevious)
        oPrevious->OnDeactivate.Raise();
    if (m_pForeground == oForm.Get())
        oForm->OnActivate.Raise();
}

void MdiForm::TakeOut(Form& oForm) {
    const auto it = m_mapPlaces.find(&oForm);
    if (it == m_mapPlaces.end())
        return;
    m_aForms.erase(it->second.it);
    m_mapPlaces.erase(it);
}

void MdiForm::FormUnloaded(Form& oForm) {
    TakeOut(oForm);
    if (m_pForeground == &oForm)
        m_pForeground = nullptr;
}

void MdiForm::Forget(Form& oForm) {
    FormUnloaded(oForm);
    m_setMade.erase(&oForm);
}

} // namespace corvane
