#include "desktop/welcome/StartPage.h"

#include "desktop/welcome/EntryButton.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int widestColumn = 900; // pixels, of all; wider lines are hard to read
constexpr int widthOfTwoColumns = 620;
constexpr int border = 28;
constexpr int startIconSize = 48;
constexpr const char* headingName = "heading"; // of a section

} // namespace

StartPage::StartPage(QWidget* parent)
    : QScrollArea(parent), m_inside(new QWidget), m_icon(new QLabel), m_title(new QLabel), m_text(new QLabel),
      m_grid(new QGridLayout), m_shown(new QCheckBox(tr("Show this page while no window is open"))) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(tr("Start page"));
    setAutoFillBackground(true);
    for (QLabel* label : {m_title, m_text}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    auto* head = new QGridLayout;
    head->setHorizontalSpacing(16);
    head->setVerticalSpacing(2);
    head->setColumnStretch(1, 1);
    head->addWidget(m_icon, 0, 0, 2, 1, Qt::AlignTop);
    head->addWidget(m_title, 0, 1);
    head->addWidget(m_text, 1, 1);
    m_grid->setHorizontalSpacing(36);
    m_grid->setVerticalSpacing(20);
    auto* all = new QVBoxLayout(m_inside);
    all->setContentsMargins(border, border, border, border);
    all->setSpacing(24);
    all->addLayout(head);
    all->addLayout(m_grid);
    all->addStretch(1);
    all->addWidget(m_shown);
    connect(m_shown, &QCheckBox::toggled, this, &StartPage::ShownAtStartChanged);
    setWidget(m_inside);
    SetFonts();
}

void StartPage::SetFonts() {
    QFont title = font();
    title.setPointSizeF(title.pointSizeF() * 1.8);
    m_title->setFont(title);
    QFont heading = font();
    heading.setPointSizeF(heading.pointSizeF() * 1.15);
    heading.setBold(true);
    for (QLabel* label : m_inside->findChildren<QLabel*>(headingName))
        label->setFont(heading);
}

QWidget* StartPage::NewSection(const Section& section) {
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    auto* heading = new QLabel(section.title);
    heading->setObjectName(headingName);
    heading->setTextFormat(Qt::PlainText);
    heading->setWordWrap(true);
    heading->setContentsMargins(8, 0, 0, 4);
    column->addWidget(heading);
    for (const Entry& entry : section.entries) {
        auto* button = new EntryButton(entry.text, entry.detail);
        button->setIcon(entry.icon);
        button->setToolTip(entry.toolTip.toHtmlEscaped());
        button->setEnabled(entry.isEnabled);
        if (entry.isDone)
            button->SetDone(*entry.isDone);
        // Behind the click's own work, as what is chosen may show other entries.
        connect(button, &EntryButton::clicked, this, entry.choose, Qt::QueuedConnection);
        column->addWidget(button);
    }
    column->addStretch(1);
    return widget;
}

void StartPage::Show(const Content& content) {
    const auto* focused = qobject_cast<EntryButton*>(m_inside->focusWidget());
    const QString focusedText = focused && focused->hasFocus() ? focused->text() : QString();
    m_icon->setVisible(!content.icon.isNull());
    m_icon->setPixmap(content.icon.pixmap(QSize(startIconSize, startIconSize), devicePixelRatioF()));
    m_title->setText(content.title);
    m_text->setText(content.text);
    m_text->setVisible(!content.text.isEmpty());
    const bool areBlocked = m_shown->blockSignals(true);
    m_shown->setChecked(content.isShownAtStart);
    m_shown->blockSignals(areBlocked);
    for (QWidget* section : m_sections)
        delete section;
    m_sections.clear();
    for (const Section& section : content.sections)
        m_sections.push_back(NewSection(section));
    m_columns = 0;
    Arrange(); // the fonts are for what is in it
    SetFonts();
    for (EntryButton* button : m_inside->findChildren<EntryButton*>())
        if (!focusedText.isEmpty() && button->text() == focusedText)
            button->setFocus();
}

void StartPage::Focus() {
    QWidget* focused = m_inside->focusWidget();
    if (!focused && !m_sections.empty())
        focused = m_sections.front()->findChild<EntryButton*>();
    (focused ? focused : static_cast<QWidget*>(m_shown))->setFocus(Qt::OtherFocusReason);
}

// One below the other where there is little width.
void StartPage::Arrange() {
    const int extra = std::max(0, (viewport()->width() - widestColumn) / 2);
    m_inside->layout()->setContentsMargins(border + extra, border, border + extra, border);
    const int columns = viewport()->width() >= widthOfTwoColumns && m_sections.size() > 1 ? 2 : 1;
    if (std::exchange(m_columns, columns) == columns)
        return;
    for (QWidget* section : m_sections)
        m_grid->removeWidget(section);
    QWidget* before = nullptr;
    for (std::size_t i = 0; i < m_sections.size(); ++i) {
        const int place = static_cast<int>(i);
        m_grid->addWidget(m_sections[i], place / columns, place % columns);
        for (EntryButton* button : m_sections[i]->findChildren<EntryButton*>()) {
            if (before)
                setTabOrder(before, button);
            before = button;
        }
    }
    if (before)
        setTabOrder(before, m_shown);
    m_grid->setColumnStretch(0, 1);
    m_grid->setColumnStretch(1, columns > 1 ? 1 : 0);
}

void StartPage::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    Arrange();
}

void StartPage::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_title)
        SetFonts();
}

} // namespace corvane::desktop

#include "moc_StartPage.cpp"
