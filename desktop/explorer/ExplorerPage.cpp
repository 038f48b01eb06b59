#include "desktop/explorer/ExplorerPage.h"

#include "desktop/style/ClearButton.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

constexpr int rootMargin = 8; // pixels, around the one row

} // namespace

QLabel* NewMessageLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    label->setMargin(24);
    label->setWordWrap(true);
    label->setAutoFillBackground(true);
    label->setBackgroundRole(QPalette::Base);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    return label;
}

ExplorerPage::ExplorerPage(Ref<TreeView> treeView, std::shared_ptr<ImageIcons> icons, Guard guard, QWidget* parent,
                           std::shared_ptr<items::Items> items)
    : QWidget(parent), m_tree(new ExplorerTree(treeView, std::move(icons), std::move(guard), this, std::move(items))),
      m_filter(new QLineEdit(this)), m_empty(new QWidget(this)), m_message(NewMessageLabel({}, m_empty)),
      m_emptyText(tr("Nothing here yet. Items that you create or open appear in this list.")) {
    m_filter->setPlaceholderText(tr("Filter"));
    AddClearButton(*m_filter);
    m_filter->setAccessibleName(tr("Filter for %1").arg(QString::fromStdString(treeView->Name())));
    m_filter->setToolTip(tr("Shows the items that contain this text (Ctrl+F)"));
    m_filter->installEventFilter(this);

    auto* filterRow = new QHBoxLayout;
    filterRow->setContentsMargins(4, 4, 4, 4);
    filterRow->addWidget(m_filter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(filterRow);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_empty, 1);
    m_empty->setAutoFillBackground(true);
    m_empty->setBackgroundRole(QPalette::Base);
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* emptyLayout = new QVBoxLayout(m_empty);
    emptyLayout->setContentsMargins(0, 0, 0, 0);
    emptyLayout->addWidget(m_message);
    emptyLayout->addStretch(1);
    setFocusProxy(m_tree);
    setTabOrder(m_filter, m_tree);

    connect(m_filter, &QLineEdit::textChanged, m_tree, &ExplorerTree::SetFilter);
    connect(m_tree, &ExplorerTree::FilterHidesEdit, m_filter, &QLineEdit::clear);
    connect(m_tree, &ExplorerTree::ContentChanged, this, &ExplorerPage::Update);
    Update();
}

void ExplorerPage::Update() {
    const bool visible = m_tree->Tree()->Visible();
    const bool hasNodes = m_tree->Tree()->GetNodes()->Count() > 0;
    const bool empty = m_tree->ShowsNothing();
    const bool rootAlone = m_hasHint && !m_tree->IsFiltered() && HasRootAlone();
    m_filter->setVisible(visible && hasNodes);
    m_filter->setEnabled(m_tree->Tree()->Enabled());
    m_tree->setVisible(visible && !empty);
    m_tree->setMaximumHeight(rootAlone ? m_tree->sizeHintForRow(0) + rootMargin : QWIDGETSIZE_MAX);
    m_empty->setVisible(visible && (empty || rootAlone));
    if (m_act)
        m_act->setVisible(!hasNodes || rootAlone);
    if (empty || rootAlone)
        m_message->setText(hasNodes && !rootAlone ? tr("No matching items") : m_emptyText);
    layout()->activate(); // what is scrolled to next needs the space that there will be
}

bool ExplorerPage::HasRootAlone() const {
    const auto& roots = m_tree->Tree()->GetNodes()->Roots();
    return roots.size() == 1 && roots.front()->Children().empty();
}

void ExplorerPage::SetEmptyHint(const QString& text, const QString& button, std::function<void()> act) {
    m_emptyText = text;
    m_hasHint = true;
    delete m_act;
    m_act = nullptr; // a button that is hidden is read out all the same
    if (act) {
        m_act = new QPushButton(button, m_empty);
        static_cast<QVBoxLayout*>(m_empty->layout())->insertWidget(1, m_act, 0, Qt::AlignHCenter);
        connect(m_act, &QPushButton::clicked, this, std::move(act));
    }
    Update();
}

void ExplorerPage::StartFilter() {
    if (!m_filter->isVisibleTo(this) || !m_filter->isEnabled())
        return;
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void ExplorerPage::ClearFilter() {
    m_filter->clear();
    m_tree->setFocus(Qt::OtherFocusReason);
}

bool ExplorerPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_filter || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
        ClearFilter();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        if (!m_tree->ShowsNothing()) {
            m_tree->setFocus(Qt::OtherFocusReason);
            m_tree->ChooseFirstMatch();
        }
        return true;
    default:
        return false;
    }
}

void ExplorerPage::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Find))
        StartFilter();
    else if (event->key() == Qt::Key_Escape && m_tree->IsFiltered())
        ClearFilter();
    else
        QWidget::keyPressEvent(event);
}

} // namespace corvane::desktop

#include "moc_ExplorerPage.cpp"
