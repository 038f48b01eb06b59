#include "desktop/application/CommandStates.h"

#include "desktop/application/MainWindow.h"
#include "desktop/documents/Documents.h"
#include "desktop/service/HostService.h"
#include "desktop/windows/WindowForm.h"

namespace corvane::desktop {

CommandStates::CommandStates(MainWindow& window) : m_window(window) {
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &CommandStates::Update);
    connect(&window.OpenDocuments(), &Documents::ActsChanged, this, &CommandStates::Schedule);
    connect(&window.OpenDocuments(), &Documents::Changed, this, &CommandStates::Schedule);
}

CommandStates::~CommandStates() = default;

void CommandStates::SetService(Ref<HostService> service) {
    m_service = std::move(service);
    Schedule();
}

void CommandStates::Schedule() {
    if (!m_soon.isActive())
        m_soon.start();
}

void CommandStates::Update() {
    m_soon.stop();
    if (m_window.HasEnded())
        return;
    if (m_service)
        UpdateActions();
    Q_EMIT Updated();
}

void CommandStates::UpdateActions() {
    const auto form = m_window.ActiveForm();
    const Documents::Acts acts = m_window.OpenDocuments().PossibleActs();
    m_service->Enable("Save", form && form->OffersSave());
    m_service->Enable("Close", m_window.OpenDocuments().Active() != nullptr);
    m_service->Enable("SplitRight", acts.split);
    m_service->Enable("SplitBelow", acts.split);
    m_service->Enable("MoveToNextGroup", acts.moveToNextGroup);
    m_service->Enable("GoToNextGroup", acts.goToNextGroup);
    m_service->Enable("OwnWindow", acts.moveToOwnWindow);
    m_service->Enable("Dock", acts.dock);
    m_service->Enable("Pin", acts.pin);
    m_service->Enable("CloseOthers", acts.closeOthers);
}

} // namespace corvane::desktop

#include "moc_CommandStates.cpp"
