// What users do in the explorer beyond the library: several items, drops, and files from elsewhere.
#include "corvane/menus/ActionItem.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/Welcome.h"
#include "desktop/bars/BarRenderer.h"
#include "desktop/commands/CommandList.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/platform/HostParts.h"
#include "desktop/record/StepRecorder.h"
#include "desktop/style/QtText.h"
#include "desktop/translation/ShownText.h"

#include <QFileInfo>

namespace corvane::desktop {

namespace {

struct ItemTexts {
    Q_DECLARE_TR_FUNCTIONS(ItemTexts)
};

} // namespace

void Application::SetUpItems() {
    BarRenderer& bars = m_window->Bars();
    bars.SetWhyNot([this](const Tool& tool) { return WhyNotSeveral(tool); });
    QObject::connect(&bars, &BarRenderer::Refused, &bars,
                     [this](const QString& why) { m_messageBox->ShowInformation(why.toStdString(), m_identity.name); });
    m_selectionChanged = m_items->Selected()->Changed.Subscribe([this] { m_window->Bars().RedrawStates(); });
    m_window->SetFiles([this] { return TakesFiles(); }, [this](const QStringList& files) { OpenDropped(files); });
}

// Once the library is initialized.
void Application::FollowItems() {
    m_mainForm->AddMember("SelectedItems", m_items->Selected());
    m_items->Follow(m_mainForm);
    if (!m_recorder)
        return;
    m_recorder->FollowSelection(m_items->Selected());
    m_itemsStepped = m_items->Stepped.Subscribe([this](const std::string& step) { m_recorder->Note(step); });
}

QString Application::WhyNotSeveral(const Tool& tool) const {
    if (!m_items->Selected()->IsSeveral())
        return {};
    const auto action = tool.Master().TagVariant().TryAs<ActionItem>();
    if (!action || !m_items->IsForOneOnly(action->ActionsProviderObj(), action->Name()))
        return {};
    return ItemTexts::tr("“%1” is for one item, and %n are selected.", "",
                         static_cast<int>(m_items->Selected()->Nodes().size()))
        .arg(PlainCaption(tool));
}

// By the service that opens files, or by the command that asks for one.
bool Application::TakesFiles() const {
    return !HasEnded() && !IsModalFormOpen() && (!m_welcome->OpenCommand().empty() || !FileServices().empty());
}

void Application::OpenDropped(const QStringList& files) {
    QStringList refused;
    for (const QString& file : files) {
        if (!TakesFiles())
            return;
        if (!OpenFile(file.toStdString(), m_welcome->OpenCommand()))
            refused << QFileInfo(file).fileName();
    }
    if (!refused.empty() && !HasEnded())
        m_messageBox->ShowInformation(ItemTexts::tr("Nothing here opens %1.")
                                          .arg(refused.mid(0, 5).join(", ") + (refused.size() > 5 ? ", …" : ""))
                                          .toStdString(),
                                      m_identity.name);
}

} // namespace corvane::desktop
