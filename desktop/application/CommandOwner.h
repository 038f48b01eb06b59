// Who has the commands that the active explorer item and the page in front share: the one that the user is in. The
// library gives them to what becomes active last, and says nothing when the user goes back to what is active already.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Ref.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/TreeView.h"
#include "desktop/guard/Guard.h"

#include <QObject>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

namespace corvane::desktop {

class CommandOwner final : public QObject {
    Q_OBJECT
public:
    enum class Part { Nowhere, Explorer, Window };
    using PartFunction = std::function<Part(const QWidget*)>; // Window is the active one

    // Once the library is initialized. It ends with the main form.
    CommandOwner(const Ref<MdiForm>& mainForm, PartFunction partOf, Guard guard);

private:
    void SubscribeToExplorer();
    void SubscribeToWindows();
    void End();
    void GoTo(Part part);
    [[nodiscard]] bool IsIn(Part part) const;
    // At the end of the turn: many items may come at once, and a page that goes may have a successor.
    void GiveSoon() {
        if (!m_soon.isActive())
            m_soon.start();
    }
    void Give();
    void GiveToItem();
    void GiveToPage();

    PartFunction m_partOf;
    Guard m_guard;
    Ref<Object> m_item; // the active one, or nothing
    Ref<Node> m_node;   // its node, which may go silently
    Ref<TreeView> m_tree;
    Ref<Object> m_page; // the one in front in the active window, or nothing
    Part m_owner = Part::Nowhere;
    QTimer m_soon;
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane::desktop
