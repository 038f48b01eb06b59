#include "corvane/platform/controls/TreeView.h"

#include "corvane/base/Text.h"

#include <algorithm>

namespace corvane {

Node::Node(Nodes* pNodes, std::string sKey, std::string sText, Long lImage)
    : m_pNodes(pNodes), m_sKey(std::move(sKey)), m_sText(std::move(sText)), m_lImage(lImage) {}

Node::~Node() = default;

void Node::SetKey(std::string sKey) {
    if (!m_pNodes)
        FailObjectNotSet();
    const std::size_t uHash = HashText(sKey);
    const Node* pHolder = m_pNodes->m_oKeys.Find(sKey, uHash);
    if (pHolder && pHolder != this)
        FailKeyInUse(sKey);
    m_pNodes->m_oKeys.Erase(this);
    m_sKey = std::move(sKey);
    m_pNodes->m_oKeys.Insert(this, uHash);
    m_pNodes->RaiseChanged({TreeChange::What::NodeLook, this});
}

void Node::SetText(std::string sText) {
    if (m_sText == sText)
        return;
    m_sText = std::move(sText);
    if (m_pNodes)
        m_pNodes->RaiseChanged({TreeChange::What::NodeLook, this});
}

std::string Node::Image() const {
    if (m_lImage < 0 || !m_pNodes || !m_pNodes->m_pTreeView)
        return {};
    return m_pNodes->m_pTreeView->GetImageList()->ListImages()[static_cast<std::size_t>(m_lImage)].sKey;
}

void Node::SetExpanded(bool bExpanded) {
    if (m_bExpanded == bExpanded)
        return;
    m_bExpanded = bExpanded;
    if (m_pNodes)
        m_pNodes->RaiseChanged({TreeChange::What::Expanded, this});
}

bool Node::Selected() const {
    return m_pNodes && m_pNodes->m_pTreeView && m_pNodes->m_pTreeView->SelectedItem().Get() == this;
}

void Node::SetSelected(bool bSelected) {
    if (!m_pNodes || !m_pNodes->m_pTreeView)
        return;
    if (bSelected)
        m_pNodes->m_pTreeView->SetSelectedItem(Ref<Node>(this));
    else if (Selected())
        m_pNodes->m_pTreeView->SetSelectedItem(nullptr);
}

Long Node::Row() const {
    if (!m_pNodes)
        return 0;
    bool& bStale = m_pParent ? m_pParent->m_bRowsStale : m_pNodes->m_bRowsStale;
    if (bStale) {
        Long lRow = 0;
        for (const Node* pSibling : m_pNodes->Siblings(m_pParent))
            pSibling->m_lRow = lRow++;
        bStale = false;
    }
    return m_lRow;
}

Nodes::~Nodes() {
    DropAll();
}

void Nodes::RaiseChanged(const TreeChange& oChange) const {
    if (!m_pTreeView)
        return;
    m_pTreeView->CheckThread();
    m_pTreeView->Changed.Raise(oChange);
}

const std::vector<Node*>& Nodes::Siblings(const Node* pParent) const {
    return pParent ? pParent->m_aChildren : m_aRoots;
}

Ref<Node> Nodes::Add(std::string_view sRelative, NodeRelationship eRelationship, std::string_view sKey,
                     std::string_view sText, std::string_view sImage) {
    Node* pParent = eRelationship == NodeRelationship::Child ? Item(sRelative).Get() : nullptr;
    const std::size_t uHash = HashText(sKey);
    if (m_oKeys.Find(sKey, uHash))
        FailKeyInUse(sKey);
    Long lImage = -1;
    if (!sImage.empty()) {
        if (m_pTreeView && m_pTreeView->GetImageList())
            lImage = m_pTreeView->GetImageList()->Find(sImage);
        if (lImage < 0)
            Fail(FailureNumber::InvalidProcedureCall, "There is no image \"" + std::string(sImage) + "\"");
    }
    const Ref<Nodes> oSelf(this);
    auto oNode = New<Node>(this, std::string(sKey), std::string(sText), lImage);
    auto& aSiblings = pParent ? pParent->m_aChildren : m_aRoots;
    const auto lRow = static_cast<Long>(aSiblings.size());
    RaiseChanged({TreeChange::What::BeforeInsert, oNode.Get(), pParent, lRow});
    oNode->m_pParent = pParent;
    oNode->m_lRow = lRow;
    aSiblings.push_back(oNode.Get());
    m_oKeys.Insert(oNode.Get(), uHash);
    oNode->AddRef(); // the siblings' list holds it
    RaiseChanged({TreeChange::What::AfterInsert, oNode.Get(), pParent, lRow});
    return oNode;
}

Ref<Node> Nodes::Item(std::string_view sKey) const {
    Ref<Node> oNode = Find(sKey);
    if (!oNode)
        Fail(FailureNumber::InvalidProcedureCall, "There is no node \"" + std::string(sKey) + "\"");
    return oNode;
}

Ref<Node> Nodes::Find(std::string_view sKey) const {
    return Ref<Node>(m_oKeys.Find(sKey));
}

// Takes a node that is in no list any more, and all below it, out of the keys and lets them go.
void Nodes::Drop(Node* pNode, bool bErasesKeys) {
    std::vector<Node*> aDropped{pNode};
    for (std::size_t i = 0; i < aDropped.size(); ++i)
        aDropped.insert(aDropped.end(), aDropped[i]->m_aChildren.begin(), aDropped[i]->m_aChildren.end());
    for (Node* pDropped : aDropped) {
        if (bErasesKeys)
            m_oKeys.Erase(pDropped);
        if (m_pTreeView && m_pTreeView->m_oSelectedItem.Get() == pDropped)
            m_pTreeView->SetSelectedItem(nullptr);
        if (m_pTreeView && m_pTreeView->m_oEditedNode.Get() == pDropped)
            m_pTreeView->m_oEditedNode = nullptr;
        pDropped->m_pNodes = nullptr;
        pDropped->m_pParent = nullptr;
        pDropped->m_aChildren.clear();
    }
    for (Node* pDropped : aDropped)
        pDropped->Release();
}

void Nodes::Remove(std::string_view sKey) {
    const Ref<Nodes> oSelf(this);
    Node* pNode = Item(sKey).Get();
    Node* pParent = pNode->m_pParent;
    const Long lRow = pNode->Row();
    RaiseChanged({TreeChange::What::BeforeRemove, pNode, pParent, lRow});
    auto& aSiblings = pParent ? pParent->m_aChildren : m_aRoots;
    aSiblings.erase(aSiblings.begin() + lRow);
    (pParent ? pParent->m_bRowsStale : m_bRowsStale) = true;
    Drop(pNode, true);
    RaiseChanged({TreeChange::What::AfterRemove, nullptr, pParent, lRow});
}

void Nodes::DropAll() {
    const std::vector<Node*> aRoots = std::move(m_aRoots);
    m_aRoots.clear();
    m_oKeys.Clear();
    for (Node* pRoot : aRoots)
        Drop(pRoot, false);
}

void Nodes::Clear() {
    const Ref<Nodes> oSelf(this);
    RaiseChanged({TreeChange::What::BeforeClear});
    DropAll();
    RaiseChanged({TreeChange::What::AfterClear});
}

TreeView::TreeView(std::string sName) : m_sName(std::move(sName)), m_oNodes(New<Nodes>(this)) {}

TreeView::~TreeView() {
    m_oNodes->Detach();
}

void TreeView::RaiseChanged(TreeChange::What eWhat, Node* pNode) {
    CheckThread();
    Changed.Raise({eWhat, pNode});
}

void TreeView::SetVisible(bool bVisible) {
    m_bVisible = bVisible;
    RaiseChanged(TreeChange::What::Look);
}

void TreeView::SetEnabled(bool bEnabled) {
    m_bEnabled = bEnabled;
    RaiseChanged(TreeChange::What::Look);
}

void TreeView::SetWidth(Single fWidth) {
    m_fWidth = fWidth;
    RaiseChanged(TreeChange::What::Look);
}

void TreeView::SetHeight(Single fHeight) {
    m_fHeight = fHeight;
    RaiseChanged(TreeChange::What::Look);
}

void TreeView::SetTop(Single fTop) {
    m_fTop = fTop;
    RaiseChanged(TreeChange::What::Look);
}

void TreeView::SetSelectedItem(Ref<Node> oNode) {
    if (m_oSelectedItem == oNode)
        return;
    m_oSelectedItem = std::move(oNode);
    RaiseChanged(TreeChange::What::Selection, m_oSelectedItem.Get());
}

void TreeView::StartLabelEdit() {
    const Ref<TreeView> oSelf(this); // handlers may end the application
    if (m_oEditedNode != m_oSelectedItem)
        CancelLabelEdit();
    if (!m_oSelectedItem || m_oEditedNode)
        return;
    m_oEditedNode = m_oSelectedItem;
    m_sTextBeforeEdit = m_oEditedNode->Text();
    bool bCancel = false;
    try {
        BeforeLabelEdit.Raise(bCancel);
    } catch (...) {
        CancelLabelEdit();
        throw;
    }
    if (bCancel) {
        CancelLabelEdit();
        return;
    }
    if (!m_oEditedNode)
        return;                                // a handler ended the edit or removed the node
    m_sTextBeforeEdit = m_oEditedNode->Text(); // the handler may have put another text to edit
    EditorRequested.Raise();
}

void TreeView::EndLabelEdit() {
    if (!m_oEditedNode)
        return;
    const Ref<TreeView> oSelf(this);
    EditorEndRequested.Raise();
    CancelLabelEdit();
}

void TreeView::CancelLabelEdit() {
    if (const Ref<Node> oNode = std::move(m_oEditedNode))
        oNode->SetText(m_sTextBeforeEdit);
}

void TreeView::CommitLabelEdit(std::string sText) {
    const Ref<TreeView> oSelf(this);
    const Ref<Node> oNode = std::move(m_oEditedNode);
    if (!oNode)
        return;
    bool bCancel = false;
    try {
        AfterLabelEdit.Raise(bCancel, sText);
    } catch (...) {
        oNode->SetText(std::move(sText));
        throw;
    }
    oNode->SetText(bCancel ? m_sTextBeforeEdit : std::move(sText));
}

Ref<Node> TreeView::HitTest(Single x, Single y) const {
    Ref<Node> oNode;
    HitTestRequested.Raise(x, y, oNode);
    return oNode;
}

void TreeView::Refresh() {
    RaiseChanged(TreeChange::What::Repaint);
}

void TreeView::ClickNode(const Ref<Node>& oNode) {
    const Ref<TreeView> oSelf(this);
    SetSelectedItem(oNode);
    NodeClick.Raise(oNode);
    Click.Raise();
}

} // namespace corvane
