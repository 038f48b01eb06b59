// What of the session a named layout keeps: all that has a place on screen, but no content.
#include "corvane/menus/ActionItem.h"
#include "desktop/session/Session.h"
#include "desktop/session/WindowPlace.h"
#include "desktop/style/ViewDock.h"

#include <QMainWindow>

namespace corvane::desktop {

namespace {

constexpr int dockVersion = 1; // as the session writes them
constexpr const char* explorerOfLayout = "Explorer";

} // namespace

QJsonArray Session::OpenViews() const {
    QJsonArray names;
    for (const ViewDock* view : ViewDock::AllOf(*m_parts.window))
        if (view->IsOpen())
            names.append(view->objectName());
    return names;
}

void Session::ShowViews(const QJsonArray& names) {
    for (ViewDock* view : ViewDock::AllOf(*m_parts.window))
        if (view->IsOpen() && !names.contains(view->objectName()))
            view->close();
    for (const auto& name : names)
        if (m_parts.showView)
            m_parts.showView(name.toString());
}

QJsonObject Session::Layout() const {
    QJsonObject layout{{"docks", Packed(m_parts.window->saveState(dockVersion))},
                       {"toolbars", Toolbars()},
                       {"views", OpenViews()},
                       {"groups", m_parts.documents->State(m_parts.documents->Frames())}};
    for (const auto& [key, name] : {std::pair("explorer", explorerOfLayout), std::pair("statusBar", "StatusBar")})
        if (const auto band = m_parts.activeBar->Bands()->Find(name))
            layout[key] = band->Visible();
    return layout;
}

void Session::SetLayout(const QJsonObject& layout) {
    RestoreToolbars(layout);
    ShowViews(layout["views"].toArray());
    m_parts.guard([&] {
        const auto band = m_parts.activeBar->Bands()->Find(explorerOfLayout);
        if (!band || !layout["explorer"].isBool() || band->Visible() == layout["explorer"].toBool())
            return;
        if (band->Visible())
            m_parts.activeBar->Close(band);
        else if (const auto tool = ToolOfAction("ViewNavigation"))
            m_parts.activeBar->Click(tool);
    });
    m_parts.flush();
    m_parts.window->restoreState(Unpacked(layout["docks"]), dockVersion);
    m_parts.flush(); // what holds is the models
    m_parts.guard([&] { m_parts.documents->Restore(layout["groups"].toObject(), m_parts.documents->Frames()); });
    Schedule();
}

Ref<Tool> Session::ToolOfAction(const char* action) const {
    for (const auto& tool : m_parts.activeBar->Tools()->All())
        if (const auto item = tool->TagVariant().TryAs<ActionItem>())
            if (EqualText(item->Action(), action))
                return tool;
    return nullptr;
}

} // namespace corvane::desktop
