#include "StudiesPage.h"

#include "corvane/platform/Handlers.h"

namespace studies {

using namespace corvane;

StudiesPage::StudiesPage() {
    m_aLife.push_back(m_oBase->InitializeEvent.Subscribe([this](const Ref<Object>&) { OnInitialize(); }));
    m_aLife.push_back(m_oBase->TerminateEvent.Subscribe([this](const Ref<Object>&) {
        m_aSubscriptions.clear();
        OnTerminate();
    }));
    m_aLife.push_back(m_oBase->ActivateEvent.Subscribe([this] { OnActivate(); }));
    m_aLife.push_back(m_oBase->SaveEvent.Subscribe([this] { OnSave(); }));
    m_aLife.push_back(m_oBase->ValidateEvent.Subscribe([this](bool& bValid) { bValid = bValid && IsValid(); }));
}

QWidget* StudiesPage::NewWidget(QWidget* pParent) {
    m_pWidget = MakeWidget(pParent);
    return m_pWidget;
}

void StudiesPage::EnableAction(const char* sName, bool bEnabled) {
    if (const auto colActionItems = m_oBase->ActionItems(); colActionItems && colActionItems->HasKey(sName))
        colActionItems->Item(sName)->SetEnabled(bEnabled);
}

void StudiesPage::Reconsider() {
    if (IsAlive())
        m_oBase->ValidityChanged();
}

void StudiesPage::Guarded(const std::function<void()>& fnAct) const {
    try {
        fnAct();
    } catch (...) {
        Report("StudiesPage", "Guarded");
    }
}

} // namespace studies
