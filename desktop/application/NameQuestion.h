// Asks an explorer item about its new name while that is typed: a member NameProblem of its class takes the name and
// returns what is wrong with it, or an empty text.
#pragma once

#include "corvane/platform/controls/MdiForm.h"

#include <QObject>
#include <functional>
#include <vector>

namespace corvane::desktop {

class ExplorerPanel;

class NameQuestion final : public QObject {
    Q_OBJECT
public:
    using GuardFunction = std::function<void(const std::function<void()>&)>;

    // Once the library is initialized; the panel owns it. It lets go of the items when the main form unloads.
    NameQuestion(ExplorerPanel& panel, MdiForm& mainForm, GuardFunction guard);

private:
    void Ask(const QString& name, QString& problem) const;

    GuardFunction m_guard;
    Ref<Object> m_item; // the active one, which is what a label belongs to while it is edited
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane::desktop
