// The model of a tree view: nodes by key under one another, a selection, label editing, and the events of the real
// control in its order. It holds state and draws nothing; a renderer subscribes to Changed.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Ref.h"
#include "corvane/platform/controls/ImageList.h"
#include "corvane/platform/controls/NodeTable.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class Nodes;
class Node;
class TreeView;

// The change that a renderer is notified of.
struct TreeChange {
    enum class What {
        BeforeInsert, // pNode is about to become child lRow of pParent
        AfterInsert,
        BeforeRemove, // pNode, child lRow of pParent, is about to go with all below it
        AfterRemove,  // pNode is null by now
        BeforeClear,
        AfterClear,
        NodeLook,  // text, image, key of pNode
        Expanded,  // of pNode
        Selection, // the tree's selected item
        Look,      // visible, enabled, size of the tree
        Repaint,   // Refresh
    };
    What eWhat;
    Node* pNode = nullptr;
    Node* pParent = nullptr; // null for a root
    Long lRow = 0;
};

enum class NodeRelationship : Long { First = 0, Child = 4 };

// One node. It stays one object for as long as it is in the tree; a node that has been removed answers with its last
// texts and has no parent and no children.
class __attribute__((visibility("default"))) Node final : public virtual Object {
public:
    Node(Nodes* pNodes, std::string sKey, std::string sText, Long lImage);
    ~Node() override;

    [[nodiscard]] const std::string& Key() const { return m_sKey; }
    // Fails with 457 when another node has the key, with 91 when the node has been removed.
    void SetKey(std::string sKey);
    [[nodiscard]] const std::string& Text() const { return m_sText; }
    void SetText(std::string sText);
    [[nodiscard]] const std::string& Tag() const { return m_sTag; }
    void SetTag(std::string sTag) { m_sTag = std::move(sTag); }
    // The position of the picture in the tree's image list; -1 for none.
    [[nodiscard]] Long ImageIndex() const { return m_lImage; }
    // Its key there; empty for none.
    [[nodiscard]] std::string Image() const;
    [[nodiscard]] bool Expanded() const { return m_bExpanded; }
    void SetExpanded(bool bExpanded);
    // Whether it is the tree's selected item.
    [[nodiscard]] bool Selected() const;
    // True selects it; false takes the selection away if it is this node. Raises no event of the control.
    void SetSelected(bool bSelected);

    [[nodiscard]] Node* Parent() const { return m_pParent; } // null for a root
    [[nodiscard]] const std::vector<Node*>& Children() const { return m_aChildren; }
    [[nodiscard]] Long Row() const; // among its siblings, from 0
    [[nodiscard]] bool IsInTree() const { return m_pNodes != nullptr; }

    std::string_view TypeName() const override { return "Node"; }

private:
    friend class Nodes;
    Nodes* m_pNodes; // null once removed
    Node* m_pParent = nullptr;
    std::vector<Node*> m_aChildren; // each held by one reference
    std::string m_sKey;
    std::string m_sText;
    std::string m_sTag;
    Long m_lImage;
    mutable Long m_lRow = 0;           // right unless the siblings' owner says otherwise
    mutable bool m_bRowsStale = false; // of the children
    bool m_bExpanded = false;
};

// The nodes of a tree. Keys ignore case and are found by one hash look-up.
class __attribute__((visibility("default"))) Nodes final : public virtual Object {
public:
    explicit Nodes(TreeView* pTreeView) : m_pTreeView(pTreeView) {}
    ~Nodes() override;

    // Adds a node and returns it. First puts a root behind the other roots, Child a child of sRelative behind its
    // siblings. sImage is a key of the image list, empty for none. Fails with 457 when the key is present, with 5
    // when there is no such relative or image; nothing is added then.
    Ref<Node> Add(std::string_view sRelative, NodeRelationship eRelationship, std::string_view sKey,
                  std::string_view sText, std::string_view sImage = {});
    // Fails with 5 when there is no such node.
    [[nodiscard]] Ref<Node> Item(std::string_view sKey) const;
    [[nodiscard]] Ref<Node> Find(std::string_view sKey) const; // nothing instead of the failure
    [[nodiscard]] bool HasKey(std::string_view sKey) const { return m_oKeys.Find(sKey) != nullptr; }
    // With all that is below it. Fails with 5 when there is no such node.
    void Remove(std::string_view sKey);
    void Clear();
    [[nodiscard]] Long Count() const { return static_cast<Long>(m_oKeys.Count()); }
    [[nodiscard]] const std::vector<Node*>& Roots() const { return m_aRoots; }
    void Detach() { m_pTreeView = nullptr; }

private:
    friend class Node;
    void RaiseChanged(const TreeChange& oChange) const;
    [[nodiscard]] const std::vector<Node*>& Siblings(const Node* pParent) const;
    void Drop(Node* pNode, bool bErasesKeys);
    void DropAll();

    TreeView* m_pTreeView;
    std::vector<Node*> m_aRoots; // each held by one reference
    NodeTable m_oKeys;
    mutable bool m_bRowsStale = false; // of the roots
};

enum MouseButton : Long { LeftButton = 1, RightButton = 2, MiddleButton = 4 };
enum ShiftState : Long { NoShift = 0, ShiftKey = 1, CtrlKey = 2, AltKey = 4 };

class __attribute__((visibility("default"))) TreeView final : public virtual Object {
public:
    explicit TreeView(std::string sName);
    ~TreeView() override;

    [[nodiscard]] const std::string& Name() const { return m_sName; }
    [[nodiscard]] const Ref<Nodes>& GetNodes() const { return m_oNodes; }
    [[nodiscard]] const Ref<ImageList>& GetImageList() const { return m_oImageList; }
    void SetImageList(Ref<ImageList> oImageList) { m_oImageList = std::move(oImageList); }
    // The tab, from 0, that contains the tree; -1 until it has been put on one.
    [[nodiscard]] Long Container() const { return m_lContainer; }
    void SetContainer(Long lTab) { m_lContainer = lTab; }
    [[nodiscard]] const std::string& Tag() const { return m_sTag; }
    void SetTag(std::string sTag) { m_sTag = std::move(sTag); }
    [[nodiscard]] Long BorderStyle() const { return m_lBorderStyle; }
    void SetBorderStyle(Long lStyle) { m_lBorderStyle = lStyle; }
    void SetOLEDragMode(Long lMode) { m_lOLEDragMode = lMode; }
    void SetOLEDropMode(Long lMode) { m_lOLEDropMode = lMode; }
    // In twips.
    [[nodiscard]] Single Indentation() const { return m_fIndentation; }
    void SetIndentation(Single fTwips) { m_fIndentation = fTwips; }
    [[nodiscard]] bool HideSelection() const { return m_bHideSelection; }
    void SetHideSelection(bool bHide) { m_bHideSelection = bHide; }
    [[nodiscard]] bool Visible() const { return m_bVisible; }
    void SetVisible(bool bVisible);
    [[nodiscard]] bool Enabled() const { return m_bEnabled; }
    void SetEnabled(bool bEnabled);
    // In twips; -1 until something set it.
    [[nodiscard]] Single Width() const { return m_fWidth; }
    void SetWidth(Single fWidth);
    [[nodiscard]] Single Height() const { return m_fHeight; }
    void SetHeight(Single fHeight);
    [[nodiscard]] Single Top() const { return m_fTop; }
    void SetTop(Single fTop);

    [[nodiscard]] Ref<Node> SelectedItem() const { return m_oSelectedItem; }
    // Nothing deselects. Raises no event of the control.
    void SetSelectedItem(Ref<Node> oNode);
    // Opens the selected node's label for editing: raises BeforeLabelEdit and, unless that cancels, asks the renderer
    // for its editor. Does nothing without a selection, and for the label that is open already; another label that is
    // open is cancelled.
    void StartLabelEdit();
    // The node at a point (in pixels of the tree), or nothing; known to the renderer.
    [[nodiscard]] Ref<Node> HitTest(Single x, Single y) const;
    void Refresh();

    // The control's events.
    Event<bool&> BeforeLabelEdit;              // true cancels
    Event<bool&, std::string&> AfterLabelEdit; // true cancels; the text may be replaced
    Event<> Click;
    Event<> DblClick;
    Event<Long, Long, Single, Single> MouseDown; // button, shift, x, y
    Event<Long, Long, Single, Single> MouseUp;
    Event<const Ref<Node>&> NodeClick; // raised before Click

    // For renderers alone.
    Event<const TreeChange&> Changed;
    Event<> EditorRequested;    // for the selected node's label; its text is the text to edit
    Event<> EditorEndRequested; // by EndLabelEdit: commit what has been typed, or cancel when nothing has
    Event<Single, Single, Ref<Node>&> HitTestRequested;

    // What the user does, in the name of a renderer or a test.
    // A click of the left button on a node: the selection moves, then NodeClick, then Click.
    void ClickNode(const Ref<Node>& oNode);
    // The label's edit ends. A committed text goes through AfterLabelEdit, and stands as typed when a handler fails; a
    // cancelled edit, or one whose handler cancels, leaves the text that the edit began with.
    void CommitLabelEdit(std::string sText);
    void CancelLabelEdit();
    // The label that is open ends as if the user had turned to something else: the renderer commits what has been
    // typed. Without a renderer it is cancelled.
    void EndLabelEdit();
    [[nodiscard]] const Ref<Node>& EditedNode() const { return m_oEditedNode; } // nothing while no label is open
    [[nodiscard]] bool IsEditingLabel() const { return static_cast<bool>(m_oEditedNode); }

    std::string_view TypeName() const override { return "TreeView"; }

private:
    friend class Nodes;
    void RaiseChanged(TreeChange::What eWhat, Node* pNode = nullptr);

    std::string m_sName;
    std::string m_sTag;
    Ref<Nodes> m_oNodes;
    Ref<ImageList> m_oImageList;
    Ref<Node> m_oSelectedItem;
    Ref<Node> m_oEditedNode;
    std::string m_sTextBeforeEdit;
    Long m_lContainer = -1;
    Long m_lBorderStyle = 0;
    Long m_lOLEDragMode = 0;
    Long m_lOLEDropMode = 0;
    Single m_fIndentation = 0;
    Single m_fWidth = -1;
    Single m_fHeight = -1;
    Single m_fTop = -1;
    bool m_bHideSelection = true;
    bool m_bVisible = false;
    bool m_bEnabled = true;
};

} // namespace corvane
