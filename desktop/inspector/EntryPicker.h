// Ctrl+Alt+click on an entry of a menu, a toolbar or the explorer asks about it instead of choosing it.
#pragma once

#include "corvane/platform/controls/TreeView.h"
#include "desktop/bars/BarActions.h"

#include <QObject>
#include <functional>

class QAction;

namespace corvane::desktop {

class EntryPicker final : public QObject {
    Q_OBJECT
public:
    using ToolFunction = std::function<void(const Ref<Tool>&)>;
    using NodeFunction = std::function<void(const Ref<Node>&)>;

    // Both are called in a turn of their own, once open menus have closed.
    EntryPicker(const BarActions& oActions, ToolFunction fnTool, NodeFunction fnNode, QObject* pParent);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    bool Pick(QObject* pWatched, const QPoint& oPoint);
    static void CloseMenus();

    const BarActions& m_oActions;
    ToolFunction m_fnTool;
    NodeFunction m_fnNode;
    bool m_bPicked = false; // the release belongs to it as well
};

} // namespace corvane::desktop
