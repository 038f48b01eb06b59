#include "desktop/windows/PageList.h"

#include "desktop/style/ClearButton.h"

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

constexpr int listCharacters = 24;

} // namespace

PageList::PageList(QWidget* parent)
    : QWidget(parent), m_search(new QLineEdit), m_pages(new QListWidget), m_nothing(new QLabel) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_pages, 1);
    layout->addWidget(m_nothing);
    layout->setContentsMargins(layout->contentsMargins().left(), layout->contentsMargins().top(), 0, 0);
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search the pages"));
    AddClearButton(*m_search);
    m_search->installEventFilter(this);
    m_pages->setAccessibleName(tr("Pages"));
    m_pages->setTextElideMode(Qt::ElideRight);
    m_pages->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_nothing->setText(tr("No page contains these words."));
    m_nothing->setWordWrap(true);
    m_nothing->hide();
    setFixedWidth(fontMetrics().averageCharWidth() * listCharacters);
    connect(m_search, &QLineEdit::textChanged, this, &PageList::Search);
    connect(m_pages, &QListWidget::currentRowChanged, this, [this](int page) {
        if (page >= 0)
            Q_EMIT PageChosen(page);
    });
}

void PageList::AddPage(const PageMark& mark) {
    const QSignalBlocker blocker(m_pages);
    m_pages->addItem(new QListWidgetItem);
    m_texts.emplace_back();
    SetPage(m_pages->count() - 1, mark);
}

void PageList::SetPage(int page, const PageMark& mark) {
    QListWidgetItem* item = m_pages->item(page);
    const QString remark = mark.Remark();
    item->setText(mark.caption);
    item->setIcon(remark.isEmpty() ? QIcon() : style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this));
    item->setToolTip(remark.isEmpty() ? mark.caption : mark.caption + "\n" + remark);
    item->setData(Qt::AccessibleDescriptionRole, remark);
}

void PageList::SetCurrentPage(int page) {
    const QSignalBlocker blocker(m_pages);
    m_pages->setCurrentRow(page);
}

void PageList::SetTexts(int page, const QString& texts) {
    m_texts[static_cast<std::size_t>(page)] = texts;
}

// All words must be on a page, in any order. The page in front stays there while it isn't the one looked for.
void PageList::Search(const QString& words) {
    if (!m_textsAsked && !words.isEmpty()) {
        m_textsAsked = true;
        Q_EMIT TextsWanted();
    }
    const QStringList wordList = words.split(' ', Qt::SkipEmptyParts);
    int first = -1;
    for (int i = 0; i < m_pages->count(); ++i) {
        const QString text = m_pages->item(i)->text() + "\n" + m_texts[static_cast<std::size_t>(i)];
        const bool found = std::all_of(wordList.begin(), wordList.end(),
                                       [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
        m_pages->item(i)->setHidden(!found);
        if (found && first < 0)
            first = i;
    }
    m_nothing->setVisible(first < 0);
    if (first >= 0 && m_pages->currentItem() && m_pages->currentItem()->isHidden())
        m_pages->setCurrentRow(first);
}

// The arrows go from the field into the list.
bool PageList::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Up) {
            QCoreApplication::sendEvent(m_pages, event);
            return true;
        }
        if (key == Qt::Key_Escape && !m_search->text().isEmpty()) {
            m_search->clear();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace corvane::desktop

#include "moc_PageList.cpp"
