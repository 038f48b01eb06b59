// What of a person's desktop comes back at the next start: the window's place, docks and toolbars, the explorer's tab,
// open and selected nodes, the open windows and their places.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "corvane/platform/controls/TabStrip.h"
#include "corvane/platform/controls/TreeView.h"
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
        QMainWindow* pWindow;
        Ref<MdiForm> frmMain;
        Ref<ActiveBar> oActiveBar;
        Ref<PanelForm> frmPanel;
        std::function<void(const std::function<void()>&)> fnGuard;
        std::function<void()> fnFlush; // brings the whole screen in line with the models
        bool bPlace = true;            // false: the window's place isn't kept
    };

    // Before the library is initialised: the session is told of the form's unload first, while all still stands.
    Session(StateFile oFile, Parts oParts);
    ~Session() override;

    // After the start, before the window is shown. From here on changes are kept, a moment after they were made; not
    // with false, for an application that isn't whole.
    void Restore(bool bFollow);
    // Once the window is shown: chooses the node that was chosen, and asks the services for the windows that were open.
    void RestoreWindows();
    // Writes what has changed, now.
    void Keep();

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Follow();
    void Schedule();
    void m_frmMain_Unload();
    [[nodiscard]] QJsonObject State() const;
    [[nodiscard]] QJsonArray Windows() const;
    struct KeptWindow {
        Ref<Window> oWindow;
        Ref<WindowForm> oForm; // nothing when it isn't the host's
        std::size_t nPlace;    // among the tabs
    };
    [[nodiscard]] static std::vector<Ref<Window>> OpenWindows(); // those that aren't modal
    [[nodiscard]] std::vector<KeptWindow> KeptWindows() const;
    [[nodiscard]] Ref<WindowForm> FormOf(const Window& oWindow) const;
    [[nodiscard]] Ref<Window> OpenAgain(const QJsonObject& oEntry);
    void PlaceAgain(Window& oWindow, const QJsonObject& oEntry);
    [[nodiscard]] QJsonObject Explorer() const;
    [[nodiscard]] QJsonObject Toolbars() const;
    void RestoreToolbars(const QJsonObject& oToolbars);
    void RestoreExplorer(const QJsonObject& oExplorer);
    void RestoreNodes(const Ref<TreeView>& oTree, const QJsonObject& oNodes);
    void SelectNodes(const QJsonObject& oTrees);
    void ClickSelectedNode();
    void ClickNode(const Ref<TreeView>& oTree, const Ref<Node>& oNode);
    void SelectAwaitedNodes();
    void Tree_Changed(TreeView* pTree, const TreeChange& oChange);
    void OpenAwaitedNodes();
    [[nodiscard]] Ref<TabStrip> Tabs() const;
    [[nodiscard]] std::vector<Ref<TreeView>> Trees() const;

    StateFile m_oFile;
    Parts m_oParts;
    QJsonObject m_oRead;
    QJsonObject m_oWritten;
    QJsonArray m_aWindows; // as they stood when no question was open
    QTimer m_oTimer;
    bool m_bFollows = false;
    bool m_bEnds = false; // the form is unloading, and what still stands isn't what the person left
    // Nodes that weren't there yet, by tree and key, and whether they are to be open.
    std::map<TreeView*, std::map<std::string, bool>> m_mapAwaited;
    std::map<TreeView*, std::string> m_mapToSelect; // the node, until something else is selected in the tree
    bool m_bSelects = false;
    std::vector<Ref<Node>> m_aInserted;
    std::vector<Subscription> m_aSubscriptions;
};

} // namespace corvane::desktop
