// What of a user's desktop comes back at the next start: the window's place, docks and toolbars, the explorer's tab,
// open and selected nodes, the open windows and their places.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "corvane/platform/controls/TabStrip.h"
#include "corvane/platform/controls/TreeView.h"
#include "desktop/documents/Documents.h"
#include "desktop/guard/Guard.h"
#include "desktop/state/StateFile.h"
#include "desktop/windows/WindowForm.h"

#include <QJsonArray>
#include <QObject>
#include <QTimer>
#include <functional>
#include <map>
#include <set>
#include <vector>

class QMainWindow;

namespace corvane::desktop {

class Session final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        QMainWindow* window;
        Documents* documents; // the windows' groups
        Ref<MdiForm> mainForm;
        Ref<ActiveBar> activeBar;
        Ref<PanelForm> panelForm;
        Guard guard;
        std::function<void()> flush; // brings the whole screen in line with the models
        bool place = true;           // false: the window's place isn't kept
        // Whether that service would have to be started to be asked, if given.
        std::function<bool(const Ref<Object>& service)> isIdle = {};
        // Opens the host's view of that name where it was; without it none is.
        std::function<void(const QString& name)> showView = {};
        // The item of the explorer that a window belongs to, as a text, and the same again; without them no window has
        // one.
        std::function<std::string(const Window&)> itemOf = {};
        std::function<void(const Window&, const std::string&)> setItem = {};
    };

    // Before the library is initialized: the session is notified of the form's unload first, while everything still
    // exists.
    Session(StateFile file, Parts parts);
    ~Session() override;

    // After the start, before the window is shown. From here on changes are kept, a moment after they were made; not
    // with false, for an application that isn't whole.
    void Restore(bool follow);
    // Once the window is shown: chooses the node that was chosen, and asks the services for the windows that were open.
    void RestoreWindows();
    // Writes what has changed, now.
    void Save();
    // Asks the services for a window that was open, as at the start; false when none opens it.
    [[nodiscard]] bool Reopen(const std::string& name, const std::string& key);
    // Where docks, toolbars and groups are, and the same again, as far as it can be; windows that are free stay.
    [[nodiscard]] QJsonObject Layout() const;
    void SetLayout(const QJsonObject& layout);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Follow();
    void Schedule();
    void m_frmMain_Unload();
    [[nodiscard]] QJsonObject State() const;
    void NoteWindows();
    struct SavedWindow {
        Ref<Window> window;
        Ref<WindowForm> form; // nothing when it isn't the host's
        std::size_t place;    // among the tabs
    };
    [[nodiscard]] static std::vector<Ref<Window>> OpenWindows(); // those that aren't modal
    [[nodiscard]] std::vector<SavedWindow> SavedWindows() const;
    [[nodiscard]] Ref<WindowForm> FormOf(const Window& window) const;
    [[nodiscard]] Ref<Window> OpenAgain(const QJsonObject& entry);
    void PlaceAgain(Window& window, const QJsonObject& entry);
    void RestoreGroups(const QJsonArray& windows, const std::vector<Ref<WindowForm>>& forms);
    [[nodiscard]] QJsonObject Explorer() const;
    [[nodiscard]] QJsonObject Toolbars() const;
    [[nodiscard]] QJsonArray OpenViews() const;
    void ShowViews(const QJsonArray& names);
    [[nodiscard]] Ref<Tool> ToolOfAction(const char* action) const;
    void RestoreToolbars(const QJsonObject& state);
    void RestoreExplorer(const QJsonObject& explorer);
    void RestoreNodes(const Ref<TreeView>& tree, const QJsonObject& nodes);
    void SelectNodes(const QJsonObject& trees);
    void ClickSelectedNode();
    void ClickNode(const Ref<TreeView>& tree, const Ref<Node>& node);
    void SelectAwaitedNodes();
    void Tree_Changed(TreeView* tree, const TreeChange& change);
    void OpenAwaitedNodes();
    void NodesCame();
    void KeepNodes(TreeView& tree);
    void CloseNewNodes(const std::vector<Ref<Node>>& opened, const std::set<std::string>& known) const;
    void CloseNewNodes(const TreeView& tree, const QJsonObject& kept) const;
    [[nodiscard]] Ref<TabStrip> Tabs() const;
    [[nodiscard]] std::vector<Ref<TreeView>> Trees() const;

    StateFile m_file;
    Parts m_parts;
    QJsonObject m_read;
    QJsonObject m_written;
    QJsonArray m_windows; // as they were when no question was open
    QJsonObject m_groups; // likewise: the windows by their places in that list
    QTimer m_timer;
    bool m_follows = false;
    bool m_ends = false; // the form is unloading, and what is left isn't what the user left
    // Nodes that weren't there yet, by tree and key, and whether they are to be open.
    std::map<TreeView*, std::map<std::string, bool>> m_awaited;
    std::map<TreeView*, std::string> m_toSelect; // the node, until something else is selected in the tree
    bool m_selects = false;
    std::vector<Ref<Node>> m_opened; // as they came, in this turn
    bool m_nodesCome = false;        // in this turn
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane::desktop
