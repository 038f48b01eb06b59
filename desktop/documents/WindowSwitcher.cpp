#include "desktop/documents/WindowSwitcher.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int widestName = 60; // characters
constexpr int mostRows = 16;

} // namespace

WindowSwitcher::WindowSwitcher(std::vector<Entry> entries, int step, QWidget& over, bool isHeld)
    : QFrame(&over), m_entries(std::move(entries)), m_list(new QListWidget(this)) {
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(2, 2, 2, 2);
    all->addWidget(m_list);
    m_list->setAccessibleName(tr("Open windows, the last used first"));
    m_list->setFocusPolicy(Qt::NoFocus); // which stays in the window
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QPalette palette = m_list->palette(); // it isn't the focus that shows where one is
    palette.setColor(QPalette::Inactive, QPalette::Highlight, palette.color(QPalette::Active, QPalette::Highlight));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText,
                     palette.color(QPalette::Active, QPalette::HighlightedText));
    m_list->setPalette(palette);
    for (const Entry& entry : m_entries)
        new QListWidgetItem(entry.icon, entry.title, m_list);
    const int rows = std::min(mostRows, m_list->count());
    const int width = std::min(m_list->sizeHintForColumn(0) + 24, fontMetrics().averageCharWidth() * widestName);
    m_list->setFixedSize(std::max(width, 240), rows * m_list->sizeHintForRow(0) + 2);
    adjustSize();
    move(over.rect().center() - rect().center());
    m_list->setCurrentRow(0);
    Step(step);
    connect(m_list, &QListWidget::itemClicked, this, [this] { End(true); });
    qApp->installEventFilter(this);
    show();
    raise();
    if (!isHeld)
        End(true);
}

void WindowSwitcher::Step(int step) {
    const int rows = m_list->count();
    m_list->setCurrentRow((m_list->currentRow() + step + rows) % rows);
}

void WindowSwitcher::End(bool chooses) {
    qApp->removeEventFilter(this);
    const int row = m_list->currentRow();
    const auto entries = std::move(m_entries);
    m_entries.clear();
    close();
    if (chooses && row >= 0 && static_cast<std::size_t>(row) < entries.size())
        entries[static_cast<std::size_t>(row)].choose();
}

bool WindowSwitcher::eventFilter(QObject* watched, QEvent* event) {
    const auto key = [event] { return static_cast<const QKeyEvent*>(event); }; // of a key's event
    switch (event->type()) {
    case QEvent::ShortcutOverride: // the keys come here, whoever else wants them
        event->accept();
        return true;
    case QEvent::KeyPress:
        if (key()->key() == Qt::Key_Tab || key()->key() == Qt::Key_Down)
            Step(key()->modifiers() & Qt::ShiftModifier ? -1 : 1);
        else if (key()->key() == Qt::Key_Backtab || key()->key() == Qt::Key_Up)
            Step(-1);
        else if (key()->key() == Qt::Key_Escape)
            End(false);
        return true;
    case QEvent::KeyRelease:
        if (key()->key() == Qt::Key_Control)
            End(true);
        return true;
    case QEvent::MouseButtonPress:
        if (const auto* widget = qobject_cast<QWidget*>(watched); widget && widget != this && !isAncestorOf(widget))
            End(false);
        return false;
    case QEvent::WindowDeactivate:
        if (watched == window())
            End(false);
        return false;
    default:
        return false;
    }
}

} // namespace corvane::desktop

#include "moc_WindowSwitcher.cpp"
