#include "desktop/explorer/ExplorerPage.h"

#include "desktop/style/ClearButton.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace corvane::desktop {

QLabel* NewMessageLabel(const QString& sText, QWidget* pParent) {
    auto* pLabel = new QLabel(sText, pParent);
    pLabel->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    pLabel->setMargin(24);
    pLabel->setWordWrap(true);
    pLabel->setAutoFillBackground(true);
    pLabel->setBackgroundRole(QPalette::Base);
    pLabel->setForegroundRole(QPalette::PlaceholderText);
    pLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    return pLabel;
}

ExplorerPage::ExplorerPage(Ref<TreeView> oTreeView, std::shared_ptr<ImageIcons> pIcons, GuardFunction fnGuard,
                           QWidget* pParent)
    : QWidget(pParent), m_pTree(new ExplorerTree(oTreeView, std::move(pIcons), std::move(fnGuard), this)),
      m_pFilter(new QLineEdit(this)), m_pMessage(NewMessageLabel({}, this)) {
    m_pFilter->setPlaceholderText(tr("Filter"));
    AddClearButton(*m_pFilter);
    m_pFilter->setAccessibleName(tr("Filter for %1").arg(QString::fromStdString(oTreeView->Name())));
    m_pFilter->setToolTip(tr("Shows the items that contain this text (Ctrl+F)"));
    m_pFilter->installEventFilter(this);

    auto* pFilterRow = new QHBoxLayout;
    pFilterRow->setContentsMargins(4, 4, 4, 4);
    pFilterRow->addWidget(m_pFilter);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addLayout(pFilterRow);
    pLayout->addWidget(m_pTree, 1);
    pLayout->addWidget(m_pMessage, 1);
    setFocusProxy(m_pTree);
    setTabOrder(m_pFilter, m_pTree);

    connect(m_pFilter, &QLineEdit::textChanged, m_pTree, &ExplorerTree::SetFilter);
    connect(m_pTree, &ExplorerTree::FilterHidesEdit, m_pFilter, &QLineEdit::clear);
    connect(m_pTree, &ExplorerTree::ContentChanged, this, &ExplorerPage::Update);
    Update();
}

void ExplorerPage::Update() {
    const bool bVisible = m_pTree->Tree()->Visible();
    const bool bHasNodes = m_pTree->Tree()->GetNodes()->Count() > 0;
    const bool bEmpty = m_pTree->ShowsNothing();
    m_pFilter->setVisible(bVisible && bHasNodes);
    m_pFilter->setEnabled(m_pTree->Tree()->Enabled());
    m_pTree->setVisible(bVisible && !bEmpty);
    m_pMessage->setVisible(bVisible && bEmpty);
    if (bEmpty)
        m_pMessage->setText(bHasNodes ? tr("No matching items")
                                      : tr("Nothing here yet. Items that you create or open appear in this list."));
    layout()->activate(); // what is scrolled to next needs the room that there will be
}

void ExplorerPage::StartFilter() {
    if (!m_pFilter->isVisibleTo(this) || !m_pFilter->isEnabled())
        return;
    m_pFilter->setFocus(Qt::ShortcutFocusReason);
    m_pFilter->selectAll();
}

void ExplorerPage::ClearFilter() {
    m_pFilter->clear();
    m_pTree->setFocus(Qt::OtherFocusReason);
}

bool ExplorerPage::eventFilter(QObject* pWatched, QEvent* pEvent) {
    if (pWatched != m_pFilter || pEvent->type() != QEvent::KeyPress)
        return QWidget::eventFilter(pWatched, pEvent);
    switch (static_cast<QKeyEvent*>(pEvent)->key()) {
    case Qt::Key_Escape:
        ClearFilter();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        if (!m_pTree->ShowsNothing()) {
            m_pTree->setFocus(Qt::OtherFocusReason);
            m_pTree->ChooseFirstMatch();
        }
        return true;
    default:
        return false;
    }
}

void ExplorerPage::keyPressEvent(QKeyEvent* pEvent) {
    if (pEvent->matches(QKeySequence::Find))
        StartFilter();
    else if (pEvent->key() == Qt::Key_Escape && m_pTree->IsFiltered())
        ClearFilter();
    else
        QWidget::keyPressEvent(pEvent);
}

} // namespace corvane::desktop
