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
    EntryPicker(const BarActions& actions, ToolFunction tool, NodeFunction node, QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Pick(QObject* watched, const QPoint& point);
    static void CloseMenus();

    const BarActions& m_actions;
    ToolFunction m_tool;
    NodeFunction m_node;
    bool m_picked = false; // the release belongs to it as well
};

} // namespace corvane::desktop
