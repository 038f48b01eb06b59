#include "desktop/explorer/ExplorerTree.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>

namespace corvane::desktop {

namespace {

constexpr int IconSize = 16;
constexpr Single TwipsPerPixel = 15;

// Above this many, laying out the whole tree once is cheaper than opening or closing items one by one.
constexpr std::size_t ManyToggles = 8;

} // namespace

class ExplorerTree::Delegate final : public QStyledItemDelegate {
public:
    explicit Delegate(ExplorerTree* pTree) : QStyledItemDelegate(pTree), m_pTree(pTree) {}

    QSize sizeHint(const QStyleOptionViewItem& oOption, const QModelIndex& oIndex) const override {
        const QSize oSize = QStyledItemDelegate::sizeHint(oOption, oIndex);
        return {oSize.width(), qMax(oSize.height(), oOption.fontMetrics.height() + 6)};
    }

    QWidget* createEditor(QWidget* pParent, const QStyleOptionViewItem& oOption,
                          const QModelIndex& oIndex) const override {
        QWidget* pEditor = QStyledItemDelegate::createEditor(pParent, oOption, oIndex);
        if (auto* pLine = qobject_cast<QLineEdit*>(pEditor))
            pLine->setFrame(true);
        return pEditor;
    }

    // The frame, which tells the editor from the selected row, needs more height than the row has.
    void updateEditorGeometry(QWidget* pEditor, const QStyleOptionViewItem& oOption,
                              const QModelIndex& oIndex) const override {
        QStyledItemDelegate::updateEditorGeometry(pEditor, oOption, oIndex);
        QRect oPlace = pEditor->geometry();
        const int iMore = qMax(0, pEditor->sizeHint().height() - oPlace.height());
        pEditor->setGeometry(oPlace.adjusted(0, -(iMore / 2), 0, iMore - iMore / 2));
    }

    void setModelData(QWidget* pEditor, QAbstractItemModel*, const QModelIndex&) const override {
        if (const auto* pLine = qobject_cast<QLineEdit*>(pEditor))
            m_pTree->m_oEdited = pLine->text();
    }

private:
    ExplorerTree* m_pTree;
};

ExplorerTree::ExplorerTree(Ref<TreeView> oTreeView, std::shared_ptr<ImageIcons> pIcons, GuardFunction fnGuard,
                           QWidget* pParent)
    : QTreeView(pParent), m_oTreeView(std::move(oTreeView)), m_fnGuard(std::move(fnGuard)),
      m_pModel(new TreeModel(m_oTreeView, pIcons, this)),
      m_pFilterModel(new FilterModel(m_oTreeView, std::move(pIcons), this)) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIconSize({IconSize, IconSize});
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setTextElideMode(Qt::ElideRight);
    setExpandsOnDoubleClick(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setFrameShape(NoFrame);
    header()->setMinimumSectionSize(0);
    setItemDelegate(new Delegate(this));
    setAccessibleName(QString::fromStdString(m_oTreeView->Name()));
    setModel(m_pModel);

    connect(m_pModel, &TreeModel::TurnEnded, this, &ExplorerTree::Model_TurnEnded);
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex& oIndex) { View_Toggled(oIndex, true); });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex& oIndex) { View_Toggled(oIndex, false); });
    m_oTree_Changed = m_oTreeView->Changed.Subscribe([this](const TreeChange& oChange) { Tree_Changed(oChange); });
    m_oTree_EditorRequested = m_oTreeView->EditorRequested.Subscribe([this] { OpenEditor(); });
    m_oTree_HitTestRequested = m_oTreeView->HitTestRequested.Subscribe(
        [this](Single x, Single y, Ref<Node>& oNode) { oNode = Ref<Node>(NodeAtPoint(QPointF(x, y).toPoint())); });
    ApplyExpandedEverywhere();
    ApplyLook();
    ApplySelection();
}

// What the model says.

void ExplorerTree::Tree_Changed(const TreeChange& oChange) {
    switch (oChange.eWhat) {
    case TreeChange::What::Expanded:
        m_aToggled.emplace_back(oChange.pNode);
        return;
    case TreeChange::What::Selection:
        m_bSelectionMoved = true;
        m_bRevealSelection = oChange.pNode != nullptr;
        return;
    case TreeChange::What::BeforeInsert:
    case TreeChange::What::BeforeRemove:
    case TreeChange::What::BeforeClear:
        return;
    case TreeChange::What::AfterRemove:
    case TreeChange::What::AfterClear:
        m_bSelectionMoved = true; // the view has moved its own
        break;
    case TreeChange::What::AfterInsert:
    case TreeChange::What::NodeLook:
        break;
    case TreeChange::What::Look:
        ApplyLook();
        return;
    case TreeChange::What::Repaint:
        viewport()->update();
        return;
    }
    m_bFindAgain = IsFiltered();
}

// The tree may stand hidden behind the line for an empty one, and is scrolled when it has its place.
void ExplorerTree::Model_TurnEnded() {
    ApplyNodes();
    Q_EMIT ContentChanged();
    ApplySelection();
}

void ExplorerTree::Sync() {
    ApplyNodes();
    ApplySelection();
}

void ExplorerTree::ApplyNodes() {
    m_pModel->Flush();
    // An open editor would go with the old matches.
    if (m_bFindAgain && !m_oTreeView->IsEditingLabel()) {
        const int iScrolled = verticalScrollBar()->value();
        FindAgain();
        verticalScrollBar()->setValue(iScrolled);
    }
    ApplyExpanded();
}

void ExplorerTree::ApplyExpanded() {
    const std::vector<Ref<Node>> aToggled = std::move(m_aToggled);
    m_aToggled.clear();
    if (IsFiltered())
        return;
    const QScopedValueRollback oFollows(m_bFollowsModel, true);
    if (aToggled.size() > ManyToggles)
        scheduleDelayedItemsLayout();
    for (const Ref<Node>& oNode : aToggled)
        if (oNode->IsInTree())
            setExpanded(m_pModel->IndexOf(oNode.Get()), oNode->Expanded());
}

void ExplorerTree::ApplyExpandedEverywhere() {
    std::vector<Node*> aWaiting = m_oTreeView->GetNodes()->Roots();
    while (!aWaiting.empty()) {
        Node* pNode = aWaiting.back();
        aWaiting.pop_back();
        aWaiting.insert(aWaiting.end(), pNode->Children().begin(), pNode->Children().end());
        if (pNode->Expanded())
            m_aToggled.emplace_back(pNode);
    }
    ApplyExpanded();
}

void ExplorerTree::ApplySelection() {
    if (!m_bSelectionMoved)
        return;
    m_bSelectionMoved = false;
    const QModelIndex oIndex = IndexOf(m_oTreeView->SelectedItem().Get());
    {
        const QScopedValueRollback oFollows(m_bFollowsModel, true);
        setAutoScroll(false); // it would open folders unheard
        if (!oIndex.isValid())
            selectionModel()->clearSelection();
        else if (!selectionModel()->isSelected(oIndex) || currentIndex() != oIndex)
            selectionModel()->setCurrentIndex(oIndex, QItemSelectionModel::ClearAndSelect);
        setAutoScroll(true);
    }
    if (oIndex.isValid() && m_bRevealSelection)
        Reveal(oIndex);
    m_bRevealSelection = false;
}

// The folders above open as a person would open them, so the model hears of it.
void ExplorerTree::Reveal(const QModelIndex& oIndex) {
    for (QModelIndex oParent = oIndex.parent(); oParent.isValid(); oParent = oParent.parent())
        expand(oParent);
    m_bScrollWhenShown = !isVisible();
    if (isVisible())
        scrollTo(oIndex);
}

void ExplorerTree::showEvent(QShowEvent* pEvent) {
    QTreeView::showEvent(pEvent);
    if (std::exchange(m_bScrollWhenShown, false)) {
        m_bSelectionMoved = m_bRevealSelection = true;
        m_pModel->Schedule();
    }
}

void ExplorerTree::ApplyLook() {
    setEnabled(m_oTreeView->Enabled());
    const auto iIndentation = static_cast<int>(m_oTreeView->Indentation() / TwipsPerPixel);
    if (iIndentation > 0)
        setIndentation(qMax(iIndentation, IconSize));
}

// With rows of one height a change of looks moves nothing, so there is nothing to search for in the rows laid out.
void ExplorerTree::dataChanged(const QModelIndex& oTopLeft, const QModelIndex&, const QList<int>&) {
    const QModelIndex oParent = oTopLeft.parent();
    if (!oParent.isValid() || isExpanded(oParent))
        viewport()->update();
}

// The filter.

void ExplorerTree::SetFilter(const QString& sText) {
    const QString sFilter = sText.trimmed();
    if (sFilter == m_sFilter)
        return;
    m_pModel->Flush();
    m_sFilter = sFilter;
    if (IsFiltered()) {
        FindAgain();
        scrollToTop();
    } else {
        m_bFindAgain = false;
        ShowModel(m_pModel);
        m_pFilterModel->Empty();
        ApplyExpandedEverywhere();
        m_bRevealSelection = true;
    }
    m_bSelectionMoved = true;
    ApplySelection();
    Q_EMIT ContentChanged();
}

void ExplorerTree::FindAgain() {
    const QScopedValueRollback oFollows(m_bFollowsModel, true);
    m_bFindAgain = false;
    m_bSelectionMoved = true;
    m_pFilterModel->Find(m_sFilter);
    ShowModel(m_pFilterModel);
    expandAll();
}

void ExplorerTree::ShowModel(NodeModel* pModel) {
    if (model() == pModel)
        return;
    const QItemSelectionModel* pOld = selectionModel(); // which the view would keep
    setModel(pModel);
    delete pOld;
}

void ExplorerTree::ChooseFirstMatch() {
    Sync();
    if (const Ref<Node> oNode{IsFiltered() ? m_pFilterModel->FirstMatch() : nullptr})
        ReportNode(oNode);
}

// Label editing.

void ExplorerTree::OpenEditor() {
    Model_TurnEnded();
    QModelIndex oIndex = IndexOf(m_oTreeView->SelectedItem().Get());
    if (!oIndex.isValid() && IsFiltered()) {
        Q_EMIT FilterHidesEdit();
        oIndex = IndexOf(m_oTreeView->SelectedItem().Get());
    }
    if (oIndex.isValid() && isVisible()) {
        Reveal(oIndex);
        edit(oIndex);
    }
    // Where nobody can type, the model mustn't wait for an end.
    if (state() != EditingState)
        m_oTreeView->CancelLabelEdit();
}

// The editor goes before the model hears of the text, since the answer may be a message that waits for the user.
void ExplorerTree::closeEditor(QWidget* pEditor, QAbstractItemDelegate::EndEditHint) {
    QTreeView::closeEditor(pEditor, QAbstractItemDelegate::NoHint);
    const std::optional<QString> oEdited = std::exchange(m_oEdited, std::nullopt);
    m_pModel->Schedule();
    m_fnGuard([oTree = m_oTreeView, &oEdited] {
        if (oEdited)
            oTree->CommitLabelEdit(oEdited->toStdString());
        else
            oTree->CancelLabelEdit();
    });
}

// Tips for what is too long to be read.
bool ExplorerTree::viewportEvent(QEvent* pEvent) {
    if (pEvent->type() != QEvent::ToolTip)
        return QTreeView::viewportEvent(pEvent);
    auto* pHelp = static_cast<QHelpEvent*>(pEvent);
    const QModelIndex oIndex = indexAt(pHelp->pos());
    const QRect oRect = visualRect(oIndex);
    if (oIndex.isValid() && sizeHintForIndex(oIndex).width() > oRect.width())
        QToolTip::showText(pHelp->globalPos(), oIndex.data().toString().toHtmlEscaped(), viewport(), oRect);
    else
        QToolTip::hideText();
    return true;
}

void ExplorerTree::changeEvent(QEvent* pEvent) {
    QTreeView::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange || pEvent->type() == QEvent::StyleChange)
        scheduleDelayedItemsLayout();
}

} // namespace corvane::desktop
