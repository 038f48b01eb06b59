// The view of one tree: it draws the model's nodes, reports to the model what a person does with mouse and keyboard in
// the order of the real control, and edits labels.
#pragma once

#include "desktop/explorer/FilterModel.h"
#include "desktop/explorer/TreeModel.h"

#include <QBasicTimer>
#include <QTreeView>
#include <functional>
#include <optional>

namespace corvane::desktop {

// Runs what enters the library, shows a failure to the user and goes on.
using GuardFunction = std::function<void(const std::function<void()>&)>;

class ExplorerTree final : public QTreeView {
    Q_OBJECT
public:
    ExplorerTree(Ref<TreeView> oTreeView, std::shared_ptr<ImageIcons> pIcons, GuardFunction fnGuard,
                 QWidget* pParent = nullptr);

    // The person has come back to the selected node, as if by a click.
    void ChooseSelected();
    [[nodiscard]] const Ref<TreeView>& Tree() const { return m_oTreeView; }
    [[nodiscard]] TreeModel* Nodes() const { return m_pModel; }

    // Shows only what matches the text, with all of it open; an empty text shows the tree again as it is. The tree's
    // own state is untouched.
    void SetFilter(const QString& sText);
    [[nodiscard]] bool IsFiltered() const { return !m_sFilter.isEmpty(); }
    [[nodiscard]] bool ShowsNothing() const { return model()->rowCount() == 0; }
    // Selects the first match as a person would.
    void ChooseFirstMatch();

    // Shows now what waits for the end of the turn.
    void Sync();
    // The index of a node in the model that is shown now.
    [[nodiscard]] QModelIndex IndexOf(const Node* pNode) { return Shown()->IndexOf(pNode); }
    [[nodiscard]] Node* NodeAtPoint(const QPoint& oPoint) const;

    void keyboardSearch(const QString& sText) override;

Q_SIGNALS:
    // After each turn in which the tree changed, and after each change of the filter.
    void ContentChanged();
    // A label is to be edited that the filter doesn't show: whoever set the filter should take it back now.
    void FilterHidesEdit();
    // Before the model hears of a press that may open a menu: the menu belongs there, in pixels of the screen.
    void PopupPlace(const QPoint& oGlobal);

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void timerEvent(QTimerEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;
    bool viewportEvent(QEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    void currentChanged(const QModelIndex& oCurrent, const QModelIndex& oPrevious) override;
    void dataChanged(const QModelIndex& oTopLeft, const QModelIndex& oBottomRight, const QList<int>& aRoles) override;
    void closeEditor(QWidget* pEditor, QAbstractItemDelegate::EndEditHint eHint) override;

private:
    class Delegate;

    [[nodiscard]] NodeModel* Shown() const { return static_cast<NodeModel*>(model()); }
    [[nodiscard]] bool IsOnBranch(const QPoint& oPoint) const;

    void Tree_Changed(const TreeChange& oChange);
    void Model_TurnEnded();
    void FindAgain();
    void ShowModel(NodeModel* pModel);
    void ApplyNodes();
    void ApplyExpanded();
    void ApplyExpandedEverywhere();
    void ApplySelection();
    void ApplyLook();
    void Reveal(const QModelIndex& oIndex);
    void View_Toggled(const QModelIndex& oIndex, bool bExpanded);

    void OpenEditor();
    // Each tells the model in one guarded step.
    void ReportNode(const Ref<Node>& oNode);
    void ReportMouse(const Event<Long, Long, Single, Single>& oEvent, Long lButton, Long lShift, const QPoint& oPoint);
    void ReleaseOnNode(Long lButton, const Ref<Node>& oNode);
    void OpenSelected();
    void EditSelected();
    void OpenMenuByKey();

    Ref<TreeView> m_oTreeView;
    GuardFunction m_fnGuard;
    TreeModel* m_pModel;
    FilterModel* m_pFilterModel;
    QString m_sFilter;
    std::vector<Ref<Node>> m_aToggled;
    bool m_bSelectionMoved = true;
    bool m_bRevealSelection = false;
    bool m_bScrollWhenShown = false;
    bool m_bFindAgain = false;
    bool m_bFollowsModel = false; // the view is being brought in line, nobody has touched it
    bool m_bByKey = false;

    Ref<Node> m_oPressed;
    bool m_bPressPending = false; // pressed in this view and not released yet
    bool m_bPressIsDouble = false;
    bool m_bPressedSelected = false; // the node was selected already
    QBasicTimer m_oEditTimer;
    std::optional<QString> m_oEdited;

    Subscription m_oTree_Changed;
    Subscription m_oTree_EditorRequested;
    Subscription m_oTree_HitTestRequested;
};

} // namespace corvane::desktop
