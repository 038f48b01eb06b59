#include "desktop/windows/PageList.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int nCharactersWide = 24;

} // namespace

PageList::PageList(QWidget* pParent)
    : QWidget(pParent), m_pSearch(new QLineEdit), m_pPages(new QListWidget), m_pNothing(new QLabel) {
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(m_pSearch);
    pLayout->addWidget(m_pPages, 1);
    pLayout->addWidget(m_pNothing);
    pLayout->setContentsMargins(pLayout->contentsMargins().left(), pLayout->contentsMargins().top(), 0, 0);
    m_pSearch->setPlaceholderText(tr("Search"));
    m_pSearch->setAccessibleName(tr("Search the pages"));
    m_pSearch->setClearButtonEnabled(true);
    m_pSearch->installEventFilter(this);
    m_pPages->setAccessibleName(tr("Pages"));
    m_pPages->setTextElideMode(Qt::ElideRight);
    m_pPages->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pNothing->setText(tr("No page contains these words."));
    m_pNothing->setWordWrap(true);
    m_pNothing->hide();
    setFixedWidth(fontMetrics().averageCharWidth() * nCharactersWide);
    connect(m_pSearch, &QLineEdit::textChanged, this, &PageList::Search);
    connect(m_pPages, &QListWidget::currentRowChanged, this, [this](int iPage) {
        if (iPage >= 0)
            Q_EMIT PageChosen(iPage);
    });
}

void PageList::AddPage(const PageMark& oMark) {
    const QSignalBlocker oBlocker(m_pPages);
    m_pPages->addItem(new QListWidgetItem);
    m_aTexts.emplace_back();
    SetPage(m_pPages->count() - 1, oMark);
}

void PageList::SetPage(int iPage, const PageMark& oMark) {
    QListWidgetItem* pItem = m_pPages->item(iPage);
    const QString sRemark = oMark.Remark();
    pItem->setText(oMark.sCaption);
    pItem->setIcon(sRemark.isEmpty() ? QIcon() : style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this));
    pItem->setToolTip(sRemark.isEmpty() ? oMark.sCaption : oMark.sCaption + "\n" + sRemark);
    pItem->setData(Qt::AccessibleDescriptionRole, sRemark);
}

void PageList::SetCurrentPage(int iPage) {
    const QSignalBlocker oBlocker(m_pPages);
    m_pPages->setCurrentRow(iPage);
}

void PageList::SetTexts(int iPage, const QString& sTexts) {
    m_aTexts[static_cast<std::size_t>(iPage)] = sTexts;
}

// All words must be on a page, in any order. The page in front stays there while it isn't the one looked for.
void PageList::Search(const QString& sWords) {
    if (!m_bTextsAsked && !sWords.isEmpty()) {
        m_bTextsAsked = true;
        Q_EMIT TextsWanted();
    }
    const QStringList aWords = sWords.split(' ', Qt::SkipEmptyParts);
    int iFirst = -1;
    for (int i = 0; i < m_pPages->count(); ++i) {
        const QString sText = m_pPages->item(i)->text() + "\n" + m_aTexts[static_cast<std::size_t>(i)];
        const bool bFound = std::all_of(aWords.begin(), aWords.end(), [&](const QString& sWord) {
            return sText.contains(sWord, Qt::CaseInsensitive);
        });
        m_pPages->item(i)->setHidden(!bFound);
        if (bFound && iFirst < 0)
            iFirst = i;
    }
    m_pNothing->setVisible(iFirst < 0);
    if (iFirst >= 0 && m_pPages->currentItem() && m_pPages->currentItem()->isHidden())
        m_pPages->setCurrentRow(iFirst);
}

// The arrows go from the field into the list.
bool PageList::eventFilter(QObject* pWatched, QEvent* pEvent) {
    if (pWatched == m_pSearch && pEvent->type() == QEvent::KeyPress) {
        const int nKey = static_cast<QKeyEvent*>(pEvent)->key();
        if (nKey == Qt::Key_Down || nKey == Qt::Key_Up) {
            QCoreApplication::sendEvent(m_pPages, pEvent);
            return true;
        }
        if (nKey == Qt::Key_Escape && !m_pSearch->text().isEmpty()) {
            m_pSearch->clear();
            return true;
        }
    }
    return QWidget::eventFilter(pWatched, pEvent);
}

} // namespace corvane::desktop
