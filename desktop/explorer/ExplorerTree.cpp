#include "desktop/explorer/ExplorerTree.h"

#include <QAccessible>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QValidator>

namespace corvane::desktop {

namespace {

constexpr int IconSize = 16;
constexpr Single indentationTwips = 15;
constexpr int markWidth = 3;     // pixels
constexpr int expandDelay = 700; // ms over a closed folder, while something is dragged

// Above this many, laying out the whole tree once is cheaper than opening or closing items one by one.
constexpr std::size_t ManyToggles = 8;

} // namespace

// A name that is refused keeps Return from ending the edit; an edit that ends otherwise leaves the old name.
class ExplorerTree::NameValidator final : public QValidator {
public:
    NameValidator(ExplorerTree* tree, QLineEdit* editor) : QValidator(editor), m_tree(tree), m_editor(editor) {}

    State validate(QString& text, int& /*position*/) const override {
        return m_tree->TakesName(text.trimmed(), *m_editor) ? Acceptable : Intermediate;
    }

private:
    ExplorerTree* m_tree;
    QLineEdit* m_editor;
};

class ExplorerTree::Delegate final : public QStyledItemDelegate {
public:
    explicit Delegate(ExplorerTree* tree) : QStyledItemDelegate(tree), m_tree(tree) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width(), qMax(size.height(), option.fontMetrics.height() + 6)};
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            line->setFrame(true);
            line->setValidator(new NameValidator(m_tree, line));
        }
        return editor;
    }

    // The frame, which tells the editor from the selected row, needs more height than the row has.
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override {
        QStyledItemDelegate::updateEditorGeometry(editor, option, index);
        QRect place = editor->geometry();
        const int more = qMax(0, editor->sizeHint().height() - place.height());
        editor->setGeometry(place.adjusted(0, -(more / 2), 0, more - more / 2));
    }

    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex&) const override {
        if (const auto* line = qobject_cast<QLineEdit*>(editor))
            m_tree->m_edited = line->text().trimmed();
    }

private:
    ExplorerTree* m_tree;
};

ExplorerTree::ExplorerTree(Ref<TreeView> treeView, std::shared_ptr<ImageIcons> icons, Guard guard, QWidget* parent,
                           std::shared_ptr<items::Items> items)
    : QTreeView(parent), m_treeView(std::move(treeView)), m_guard(std::move(guard)), m_items(std::move(items)),
      m_model(new TreeModel(m_treeView, icons, this)),
      m_filterModel(new FilterModel(m_treeView, std::move(icons), this)), m_note(new QLabel(viewport())) {
    if (!m_items) {
        m_items = std::make_shared<items::Items>(nullptr, [call = m_guard](const auto& act) { call(act); });
        m_items->Selected()->Follow(m_treeView);
    }
    m_model->SetIsLazy([items = m_items.get()](const Node& node) { return items->IsLazy(node); });
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_note->setMargin(4);
    m_note->setFrameShape(QFrame::Box);
    m_note->setAutoFillBackground(true);
    m_note->setBackgroundRole(QPalette::ToolTipBase);
    m_note->setForegroundRole(QPalette::ToolTipText);
    m_note->hide();
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIconSize({IconSize, IconSize});
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setAcceptDrops(true);
    setDropIndicatorShown(false);
    setAutoExpandDelay(expandDelay);
    setTextElideMode(Qt::ElideRight);
    setExpandsOnDoubleClick(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setFrameShape(NoFrame);
    header()->setMinimumSectionSize(0);
    setItemDelegate(new Delegate(this));
    setAccessibleName(QString::fromStdString(m_treeView->Name()));
    setModel(m_model);

    connect(m_model, &TreeModel::TurnEnded, this, &ExplorerTree::Model_TurnEnded);
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) { View_Toggled(index, true); });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex& index) { View_Toggled(index, false); });
    m_tree_Changed = m_treeView->Changed.Subscribe([this](const TreeChange& change) { Tree_Changed(change); });
    m_tree_EditorRequested = m_treeView->EditorRequested.Subscribe([this] { OpenEditor(); });
    m_tree_EditorEndRequested = m_treeView->EditorEndRequested.Subscribe([this] { EndEditor(); });
    m_tree_HitTestRequested = m_treeView->HitTestRequested.Subscribe(
        [this](Single x, Single y, Ref<Node>& node) { node = Ref<Node>(NodeAtPoint(QPointF(x, y).toPoint())); });
    m_selection_Changed = m_items->Selected()->Changed.Subscribe([this] {
        m_selectionMoved = true;
        m_model->Schedule();
    });
    m_items_Asked = m_items->Asked.Subscribe([this](const Ref<Node>&) {
        scheduleDelayedItemsLayout(); // a folder may turn out to be empty
        m_model->Schedule();
    });
    ApplyExpandedEverywhere();
    ApplyLook();
    ApplySelection();
}

// What the model says.

void ExplorerTree::Tree_Changed(const TreeChange& change) {
    switch (change.eWhat) {
    case TreeChange::What::Expanded:
        m_toggled.emplace_back(change.pNode);
        return;
    case TreeChange::What::Selection:
        m_selectionMoved = true;
        m_revealSelection = change.pNode != nullptr;
        return;
    case TreeChange::What::BeforeInsert:
    case TreeChange::What::BeforeRemove:
    case TreeChange::What::BeforeClear:
        return;
    case TreeChange::What::AfterRemove:
    case TreeChange::What::AfterClear:
        m_selectionMoved = true; // the view has moved its own
        m_taken = nullptr;
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
    m_findAgain = IsFiltered();
}

// The tree may be hidden behind the line for an empty one, and is scrolled when it has its place.
void ExplorerTree::Model_TurnEnded() {
    m_items->Settle();
    ApplyNodes();
    Q_EMIT ContentChanged();
    ApplySelection();
}

void ExplorerTree::Sync() {
    ApplyNodes();
    ApplySelection();
}

void ExplorerTree::ApplyNodes() {
    m_model->Flush();
    // An open editor would go with the old matches.
    if (m_findAgain && !m_treeView->IsEditingLabel()) {
        const int scrolled = verticalScrollBar()->value();
        FindAgain();
        verticalScrollBar()->setValue(scrolled);
    }
    ApplyExpanded();
}

void ExplorerTree::ApplyExpanded() {
    const std::vector<Ref<Node>> toggled = std::move(m_toggled);
    m_toggled.clear();
    if (IsFiltered())
        return;
    const QScopedValueRollback follows(m_followsModel, true);
    if (toggled.size() > ManyToggles)
        scheduleDelayedItemsLayout();
    for (const Ref<Node>& node : toggled)
        if (node->IsInTree())
            setExpanded(m_model->IndexOf(node.Get()), node->Expanded());
}

void ExplorerTree::ApplyExpandedEverywhere() {
    std::vector<Node*> waiting = m_treeView->GetNodes()->Roots();
    while (!waiting.empty()) {
        Node* node = waiting.back();
        waiting.pop_back();
        waiting.insert(waiting.end(), node->Children().begin(), node->Children().end());
        if (node->Expanded())
            m_toggled.emplace_back(node);
    }
    ApplyExpanded();
}

void ExplorerTree::ApplySelection() {
    if (!m_selectionMoved)
        return;
    m_selectionMoved = false;
    const QModelIndex index = IndexOf(m_treeView->SelectedItem().Get());
    {
        const QScopedValueRollback follows(m_followsModel, true);
        setAutoScroll(false); // it would open folders unheard
        if (IsSeveral() && m_items->Selected()->Tree() == m_treeView)
            ApplySeveral();
        else if (!index.isValid())
            selectionModel()->clearSelection();
        else if (selectionModel()->selectedIndexes().size() > 1 || !selectionModel()->isSelected(index) ||
                 currentIndex() != index)
            selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
        setAutoScroll(true);
    }
    if (index.isValid() && m_revealSelection)
        Reveal(index);
    m_revealSelection = false;
}

void ExplorerTree::Mark(const Ref<Node>& node) {
    if (std::exchange(m_marked, node) == node)
        return;
    viewport()->update();
    if (!node || IsFiltered())
        return;
    Sync();
    if (const QModelIndex index = IndexOf(node.Get()); index.isValid() && isVisible()) {
        Reveal(index);
        m_scrollWhenShown = false;
    }
}

void ExplorerTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QTreeView::drawRow(painter, option, index);
    if (m_target.node && m_target.answer.accepts && Shown()->NodeAt(index) == m_target.node.Get()) {
        painter->setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), 2));
        painter->drawRect(visualRect(index).adjusted(1, 1, -2, -2));
    }
    if (!m_marked || Shown()->NodeAt(index) != m_marked.Get())
        return;
    const int left = isRightToLeft() ? viewport()->width() - markWidth : 0;
    painter->fillRect(left, option.rect.top(), markWidth, option.rect.height(),
                      palette().color(QPalette::Active, QPalette::Highlight));
}

// The folders above open as a user would open them, so the model is notified of it.
void ExplorerTree::Reveal(const QModelIndex& index) {
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent())
        expand(parent);
    m_scrollWhenShown = !isVisible();
    if (isVisible())
        scrollTo(index);
}

void ExplorerTree::showEvent(QShowEvent* event) {
    QTreeView::showEvent(event);
    if (std::exchange(m_scrollWhenShown, false)) {
        m_selectionMoved = m_revealSelection = true;
        m_model->Schedule();
    }
}

void ExplorerTree::ApplyLook() {
    setEnabled(m_treeView->Enabled());
    const auto indentation = static_cast<int>(m_treeView->Indentation() / indentationTwips);
    if (indentation > 0)
        setIndentation(qMax(indentation, IconSize));
}

// With rows of one height a change of looks moves nothing, so there is nothing to search for in the rows laid out.
void ExplorerTree::dataChanged(const QModelIndex& topLeft, const QModelIndex&, const QList<int>&) {
    const QModelIndex parent = topLeft.parent();
    if (!parent.isValid() || isExpanded(parent))
        viewport()->update();
}

// The filter.

void ExplorerTree::SetFilter(const QString& text) {
    const QString filter = text.trimmed();
    if (filter == m_filter)
        return;
    m_model->Flush();
    m_filter = filter;
    if (IsFiltered()) {
        FindAgain();
        scrollToTop();
    } else {
        m_findAgain = false;
        ShowModel(m_model);
        m_filterModel->Empty();
        ApplyExpandedEverywhere();
        m_revealSelection = true;
    }
    m_selectionMoved = true;
    ApplySelection();
    Q_EMIT ContentChanged();
}

void ExplorerTree::FindAgain() {
    const QScopedValueRollback follows(m_followsModel, true);
    m_findAgain = false;
    m_selectionMoved = true;
    m_filterModel->Find(m_filter);
    ShowModel(m_filterModel);
    expandAll();
    DropHidden(nullptr);
}

void ExplorerTree::ShowModel(NodeModel* nodeModel) {
    if (model() == nodeModel)
        return;
    const QItemSelectionModel* old = selectionModel(); // which the view would keep
    setModel(nodeModel);
    delete old;
}

void ExplorerTree::ChooseFirstMatch() {
    Sync();
    if (const Ref<Node> node{IsFiltered() ? m_filterModel->FirstMatch() : nullptr})
        ReportNode(node);
}

// Label editing.

void ExplorerTree::OpenEditor() {
    Model_TurnEnded();
    QModelIndex index = IndexOf(m_treeView->SelectedItem().Get());
    if (!index.isValid() && IsFiltered()) {
        Q_EMIT FilterHidesEdit();
        index = IndexOf(m_treeView->SelectedItem().Get());
    }
    if (index.isValid() && isVisible()) {
        Reveal(index);
        edit(index);
    }
    // Where no one can type, the model mustn't wait for an end.
    if (state() != EditingState)
        m_treeView->CancelLabelEdit();
}

// Another label is about to be opened: what has been typed counts, and an editor that nobody has touched goes.
void ExplorerTree::EndEditor() {
    QWidget* editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
    auto* line = editor ? qobject_cast<QLineEdit*>(editor) : nullptr;
    if (!line)
        return;
    if (line->isModified() && line->hasAcceptableInput())
        commitData(line);
    closeEditor(line, QAbstractItemDelegate::NoHint);
}

bool ExplorerTree::TakesName(const QString& name, QLineEdit& editor) {
    QString problem;
    Q_EMIT NameTyped(name, problem);
    if (problem != editor.accessibleDescription()) {
        editor.setAccessibleDescription(problem);
        ShowNote(problem, editor.geometry());
    }
    return problem.isEmpty();
}

QString ExplorerTree::Note() const {
    return m_note->isHidden() ? QString() : m_note->text();
}

void ExplorerTree::ShowNote(const QString& text, const QRect& row) {
    const bool isNew = m_note->isHidden() || m_note->text() != text;
    m_note->setText(text);
    m_note->setVisible(!text.isEmpty());
    if (text.isEmpty())
        return;
    constexpr int gap = 2;
    const int width = viewport()->width() - 2 * gap;
    const int height = m_note->heightForWidth(width);
    // What is dragged by mouse has a label below the pointer.
    const bool isDragged = state() == DraggingState;
    const int below = row.bottom() + 1 + gap + (isDragged ? 2 * fontMetrics().height() : 0);
    const bool fitsAbove = row.top() >= height + gap;
    const bool fitsBelow = !fitsAbove || (!isDragged && below + height <= viewport()->height());
    m_note->setGeometry(gap, fitsBelow ? below : row.top() - gap - height, width, height);
    m_note->raise();
    if (!isNew)
        return;
    QAccessibleEvent alert(m_note, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

// The editor goes before the model is notified of the text, since the answer may be a message that waits for the user.
void ExplorerTree::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint) {
    QTreeView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    m_note->hide();
    const std::optional<QString> edited = std::exchange(m_edited, std::nullopt);
    m_model->Schedule();
    m_guard([tree = m_treeView, &edited] {
        if (edited)
            tree->CommitLabelEdit(edited->toStdString());
        else
            tree->CancelLabelEdit();
    });
}

// Tips for what is too long to be read.
bool ExplorerTree::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QTreeView::viewportEvent(event);
    auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    const QRect rect = visualRect(index);
    if (index.isValid() && sizeHintForIndex(index).width() > rect.width())
        QToolTip::showText(help->globalPos(), index.data().toString().toHtmlEscaped(), viewport(), rect);
    else
        QToolTip::hideText();
    return true;
}

void ExplorerTree::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        scheduleDelayedItemsLayout();
}

} // namespace corvane::desktop

#include "moc_ExplorerTree.cpp"
