#include "StudiesPage.h"

#include "Shell.h"
#include "corvane/platform/Handlers.h"

#include <QApplication>

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
    QObject::connect(qApp, &QApplication::focusChanged, m_pWidget, [this](QWidget* pFrom, QWidget* pTo) {
        if (pTo && m_pWidget->isAncestorOf(pTo) && !(pFrom && m_pWidget->isAncestorOf(pFrom)))
            Guarded([this] { TakeCommands(); });
    });
    return m_pWidget;
}

// The library gives commands to what comes to the front. A page that is in front already, while the person was in the
// explorer, asks for them when the keyboard comes back to it.
void StudiesPage::TakeCommands() const {
    const Ref<Object> oStudies = ServiceByName("Studies");
    if (IsAlive() && oStudies)
        oStudies->Invoke("PageTakesCommands", {});
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
