#include "StudiesPage.h"

#include "corvane/platform/Handlers.h"

namespace studies {

using namespace corvane;

StudiesPage::StudiesPage() {
    m_life.push_back(m_base->InitializeEvent.Subscribe([this](const Ref<Object>&) { OnInitialize(); }));
    m_life.push_back(m_base->TerminateEvent.Subscribe([this](const Ref<Object>&) {
        m_subscriptions.clear();
        OnTerminate();
    }));
    m_life.push_back(m_base->ActivateEvent.Subscribe([this] { OnActivate(); }));
    m_life.push_back(m_base->SaveEvent.Subscribe([this] { OnSave(); }));
    m_life.push_back(m_base->ValidateEvent.Subscribe([this](bool& valid) { valid = valid && IsValid(); }));
}

QWidget* StudiesPage::NewWidget(QWidget* parent) {
    m_widget = MakeWidget(parent);
    return m_widget;
}

void StudiesPage::EnableAction(const char* name, bool enabled) {
    if (const auto actionItems = m_base->ActionItems(); actionItems && actionItems->HasKey(name))
        actionItems->Item(name)->SetEnabled(enabled);
}

void StudiesPage::Reconsider() {
    if (IsAlive())
        m_base->ValidityChanged();
}

void StudiesPage::Guarded(const std::function<void()>& act) const {
    try {
        act();
    } catch (...) {
        Report("StudiesPage", "Guarded");
    }
}

} // namespace studies
