// The view of one tree: it draws the model's nodes, reports to the model what a user does with mouse and keyboard in
// the order of the real control, edits labels, and lets users select several nodes and drag them.
#pragma once

#include "desktop/explorer/FilterModel.h"
#include "desktop/explorer/TreeModel.h"
#include "desktop/guard/Guard.h"
#include "items/Items.h"

#include <QBasicTimer>
#include <QTreeView>
#include <functional>
#include <optional>

class QLabel;
class QLineEdit;

namespace corvane::desktop {

class ExplorerTree final : public QTreeView {
    Q_OBJECT
public:
    // Without items no node has children to ask for, and none can be dropped on.
    ExplorerTree(Ref<TreeView> treeView, std::shared_ptr<ImageIcons> icons, Guard guard, QWidget* parent = nullptr,
                 std::shared_ptr<items::Items> items = {});

    // The user has come back to the selected node, as if by a click.
    void ChooseSelected();
    [[nodiscard]] const Ref<TreeView>& Tree() const { return m_treeView; }
    [[nodiscard]] TreeModel* Nodes() const { return m_model; }

    // Shows only what matches the text, with all of it open; an empty text shows the tree again as it is. The tree's
    // own state is untouched.
    void SetFilter(const QString& text);
    [[nodiscard]] bool IsFiltered() const { return !m_filter.isEmpty(); }
    [[nodiscard]] bool ShowsNothing() const { return model()->rowCount() == 0; }
    // Selects the first match as a user would.
    void ChooseFirstMatch();

    // Marks a node that isn't selected because of it: its row gets a line in the accent's colour, is made visible, and
    // nothing is reported. Nothing takes the mark away.
    void Mark(const Ref<Node>& node);
    [[nodiscard]] const Ref<Node>& Marked() const { return m_marked; }

    // Shows now what waits for the end of the turn.
    void Sync();
    // The index of a node in the model that is shown now.
    [[nodiscard]] QModelIndex IndexOf(const Node* node) { return Shown()->IndexOf(node); }
    [[nodiscard]] Node* NodeAtPoint(const QPoint& point) const;

    void keyboardSearch(const QString& text) override;
    // Begins the way of the keyboard to drag what is selected: arrow keys go to the target.
    void StartCarrying();
    [[nodiscard]] bool IsCarrying() const { return !m_carried.empty(); }
    // What is said at a row: why a name or a drop is refused, or what to do; empty for nothing.
    [[nodiscard]] QString Note() const;
    // Whether files that no item takes are of use to the window.
    void SetTakesFiles(std::function<bool()> takes) { m_takesFiles = std::move(takes); }

Q_SIGNALS:
    // Files that were dropped, and that no item takes.
    void FilesDropped(const QStringList& files);
    // After each turn in which the tree changed, and after each change of the filter.
    void ContentChanged();
    // While a label is being typed: its text so far, without blanks around it. A problem that is set refuses it, and is
    // shown beside the editor.
    void NameTyped(const QString& name, QString& problem);
    // A label is to be edited that the filter doesn't show: whoever set the filter should take it back now.
    void FilterHidesEdit();
    // Before the model is notified of a press that may open a menu: the menu belongs there, in pixels of the screen.
    void PopupPlace(const QPoint& global);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    class Delegate;
    class NameValidator;

    [[nodiscard]] NodeModel* Shown() const { return static_cast<NodeModel*>(model()); }
    [[nodiscard]] bool IsOnBranch(const QPoint& point) const;

    void Tree_Changed(const TreeChange& change);
    void Model_TurnEnded();
    void FindAgain();
    void ShowModel(NodeModel* nodeModel);
    void ApplyNodes();
    void ApplyExpanded();
    void ApplyExpandedEverywhere();
    void ApplySelection();
    void ApplyLook();
    void Reveal(const QModelIndex& index);
    void View_Toggled(const QModelIndex& index, bool expanded);

    // Selecting several, in ExplorerTreeSelection.cpp.
    [[nodiscard]] bool IsSeveral() const { return m_items->Selected()->IsSeveral(); }
    void SelectOne();
    void ApplySeveral();
    // False when there is nothing to report any more.
    [[nodiscard]] bool Extend(const Ref<Node>& node, Qt::KeyboardModifiers modifiers);
    [[nodiscard]] bool TakeOut(const Ref<Node>& node);
    [[nodiscard]] std::vector<Ref<Node>> NodesBetween(const QModelIndex& one, const QModelIndex& other) const;
    [[nodiscard]] bool PressedForSeveral(const QMouseEvent& event);
    [[nodiscard]] bool KeyForSeveral(const QKeyEvent& event);
    [[nodiscard]] static std::optional<CursorAction> CursorActionOf(int key);
    void SelectSiblings();
    void DropHidden(const Node* closed);

    // Dragging, in ExplorerTreeDrag.cpp.
    struct Target {
        Ref<Node> node;
        bool copies = false;
        items::DropAnswer answer = {};
    };
    void StartDrag();
    [[nodiscard]] const Ref<Dropped>& Taken(const std::vector<Ref<Node>>& nodes, bool copies);
    [[nodiscard]] Ref<Dropped> DroppedBy(const QDropEvent& event, bool copies) const;
    void AskTarget(const Ref<Node>& node, const Ref<Dropped>& dropped);
    [[nodiscard]] Ref<Node> TargetAt(const QPoint& point) const;
    void RedrawTarget();
    void ForgetTarget();
    void DropOn(const Ref<Node>& node, const Ref<Dropped>& dropped);
    [[nodiscard]] bool KeyWhileCarrying(QKeyEvent& event);
    void ShowCarried();

    void OpenEditor();
    void EndEditor();
    [[nodiscard]] bool TakesName(const QString& name, QLineEdit& editor);
    void ShowNote(const QString& text, const QRect& row);
    // Each tells the model in one guarded step. False when the tree has gone with what it heard.
    bool ReportNode(const Ref<Node>& node);
    [[nodiscard]] bool ReleaseOnNode(Long button, const Ref<Node>& node);
    void ReportMouse(const Event<Long, Long, Single, Single>& event, Long button, Long shift, const QPoint& point);
    void OpenSelected();
    void EditSelected();
    void OpenMenuByKey();

    Ref<TreeView> m_treeView;
    Guard m_guard;
    std::shared_ptr<items::Items> m_items;
    TreeModel* m_model;
    FilterModel* m_filterModel;
    QString m_filter;
    std::vector<Ref<Node>> m_toggled;
    Ref<Node> m_marked;
    bool m_selectionMoved = true;
    bool m_revealSelection = false;
    bool m_scrollWhenShown = false;
    bool m_findAgain = false;
    bool m_followsModel = false; // the view is being brought in line, no one has touched it
    bool m_byKey = false;

    Ref<Node> m_pressed;
    bool m_pressPending = false; // pressed in this view and not released yet
    bool m_pressIsDouble = false;
    bool m_pressedSelected = false; // the node was selected already
    QBasicTimer m_editTimer;
    std::optional<QString> m_edited;
    QLabel* m_note; // below the row, or above it; hidden while there is none

    Ref<Node> m_anchor;                 // where Shift extends from
    QPoint m_pressPoint;                // in pixels of the viewport
    bool m_becomesOne = false;          // of several that are selected the pressed one stays, unless they are dragged
    std::vector<Ref<Node>> m_dragged;   // while they are
    std::vector<Ref<Node>> m_carried;   // by keyboard
    Ref<Dropped> m_taken;               // what either of them would drop
    Target m_target;                    // below the pointer, or at the row of the keyboard
    std::function<void()> m_dropsLater; // what the drag that is going on has been dropped on
    std::function<bool()> m_takesFiles;

    Subscription m_tree_Changed;
    Subscription m_tree_EditorRequested;
    Subscription m_tree_EditorEndRequested;
    Subscription m_tree_HitTestRequested;
    Subscription m_selection_Changed;
    Subscription m_items_Asked;
};

} // namespace corvane::desktop
