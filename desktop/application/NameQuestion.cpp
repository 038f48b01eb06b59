#include "desktop/application/NameQuestion.h"

#include "corvane/author/Host.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/platform/Entering.h"
#include "desktop/explorer/ExplorerPanel.h"

namespace corvane::desktop {

NameQuestion::NameQuestion(ExplorerPanel& panel, MdiForm& mainForm, GuardFunction guard)
    : QObject(&panel), m_guard(std::move(guard)) {
    const Ref<ExplorerManager> explorer = Explorer();
    const auto Forget = [this](const Ref<Object>& item) {
        if (m_item == item)
            m_item = nullptr;
    };
    m_subscriptions.push_back(explorer->OnActive.Subscribe([this](const Ref<Object>& item) { m_item = item; }));
    m_subscriptions.push_back(explorer->OnInactive.Subscribe(Forget));
    m_subscriptions.push_back(explorer->onRemove.Subscribe(Forget));
    m_subscriptions.push_back(mainForm.OnUnload.Subscribe([this](bool&) {
        m_item = nullptr;
        m_subscriptions.clear();
    }));
    connect(&panel, &ExplorerPanel::NameTyped, this, &NameQuestion::Ask);
}

void NameQuestion::Ask(const QString& name, QString& problem) const {
    m_guard([&] {
        if (!m_item || !m_item->HasMember("NameProblem"))
            return;
        const Entering entering(m_item);
        problem = QString::fromStdString(ToText(CallByName(m_item, "NameProblem", name.toStdString())));
    });
}

} // namespace corvane::desktop

#include "moc_NameQuestion.cpp"
