// Who has the commands that the active explorer item and the page in front share: the one that the person is in. The
// library gives them to what becomes active last, and says nothing when the person goes back to what is active already.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Ref.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/TreeView.h"

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
    using GuardFunction = std::function<void(const std::function<void()>&)>;

    // Once the library is initialised. It ends with the main form.
    CommandOwner(const Ref<MdiForm>& frmMain, PartFunction fnPartOf, GuardFunction fnGuard);

private:
    void HearExplorer();
    void HearWindows();
    void End();
    void GoTo(Part ePart);
    [[nodiscard]] bool IsIn(Part ePart) const;
    // At the end of the turn: many items may come at once, and a page that goes may have a successor.
    void GiveSoon() {
        if (!m_oSoon.isActive())
            m_oSoon.start();
    }
    void Give();
    void GiveToItem();
    void GiveToPage();

    PartFunction m_fnPartOf;
    GuardFunction m_fnGuard;
    Ref<Object> m_oItem; // the active one, or nothing
    Ref<Node> m_oNode;   // its node, which may go without a word
    Ref<TreeView> m_oTree;
    Ref<Object> m_oPage; // the one in front in the active window, or nothing
    Part m_eOwner = Part::Nowhere;
    QTimer m_oSoon;
    std::vector<Subscription> m_aSubscriptions;
};

} // namespace corvane::desktop
