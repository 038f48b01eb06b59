#include "desktop/windows/WindowBody.h"

#include "desktop/forms/FormTexts.h"
#include "desktop/forms/FormWidget.h"
#include "desktop/windows/PageList.h"
#include "desktop/windows/PagePlace.h"
#include "desktop/windows/PageTabs.h"
#include "desktop/windows/WizardSteps.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr int longestTab = 32;       // characters; the rest is in the tooltip
constexpr QSize measure(2000, 2000); // wider than any row of tabs or buttons
constexpr int narrowestPageBesideSteps = 300;

QString TabText(const QString& caption) {
    const QString shortText =
        caption.size() > longestTab ? caption.left(longestTab - 1).trimmed() + QChar(0x2026) : caption;
    return QString(shortText).replace('&', "&&");
}

// A layout that isn't on screen keeps the hints that it has once asked for.
void ForgetHints(QLayout& layout) {
    for (int i = 0; i < layout.count(); ++i)
        if (QLayout* inner = layout.itemAt(i)->layout())
            ForgetHints(*inner);
    layout.invalidate();
}

// A window's own help comes before a command of the application that has the same key.
class HelpKey final : public QObject {
public:
    explicit HelpKey(WindowBody& body) : QObject(&body), m_body(body) { body.installEventFilter(this); }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        const bool isHelp = event->type() == QEvent::ShortcutOverride &&
                            static_cast<QKeyEvent*>(event)->keyCombination() == QKeyCombination(Qt::Key_F1) &&
                            m_body.Commands().Button(StandardCommandConstants::cvHelp);
        if (isHelp)
            event->accept();
        return isHelp;
    }

private:
    WindowBody& m_body;
};

QFrame* NewLine(QFrame::Shape shape) {
    auto* line = new QFrame;
    line->setFrameShape(shape);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

} // namespace

WindowBody::WindowBody(const BodyOptions& options, const std::vector<PageRoom>& rooms, QWidget* parent)
    : QWidget(parent), m_options(options),
      m_commands(new CommandRow(options.type, options.withApply, options.withHelp)) {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    for (const auto& room : rooms)
        m_marks.push_back(room.mark);
    if (options.type == WindowTypeConstants::cvWizard)
        SetUpSteps(rooms, all);
    else if (options.withPageList)
        SetUpList(rooms, all);
    else if (rooms.size() > 1)
        SetUpTabs(rooms, all);
    else
        SetUpSinglePage(rooms, all);
    SetUpCommands(all);
    new HelpKey(*this);
}

PagePlace* WindowBody::NewPlace(const PageRoom& room) {
    m_places.push_back(new PagePlace(room.size, room.isResizable, this));
    return m_places.back();
}

void WindowBody::SetUpTabs(const std::vector<PageRoom>& rooms, QBoxLayout* all) {
    m_tabs = new PageTabs;
    m_tabs->setDocumentMode(m_options.isChild);
    m_tabs->setUsesScrollButtons(true);
    for (const auto& room : rooms) {
        const int tab = m_tabs->addTab(NewPlace(room), TabText(room.mark.caption));
        MarkTab(tab, room.mark);
    }
    connect(m_tabs, &QTabWidget::currentChanged, this, [this](int page) {
        if (!m_follows)
            Q_EMIT PageChosen(page);
    });
    if (m_options.isChild) {
        all->addWidget(m_tabs, 1);
        return;
    }
    auto* margins = new QVBoxLayout; // with the style's margins
    margins->setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin),
                                style()->pixelMetric(QStyle::PM_LayoutTopMargin),
                                style()->pixelMetric(QStyle::PM_LayoutRightMargin), 0);
    margins->addWidget(m_tabs);
    all->addLayout(margins, 1);
}

void WindowBody::SetUpSteps(const std::vector<PageRoom>& rooms, QBoxLayout* all) {
    m_steps = new WizardSteps;
    m_heading = new QLabel;
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setWordWrap(true);
    QFont font = m_heading->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.2);
    m_heading->setFont(font);
    m_heading->setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin),
                                  style()->pixelMetric(QStyle::PM_LayoutTopMargin),
                                  style()->pixelMetric(QStyle::PM_LayoutRightMargin), 0);
    m_stack = new QStackedWidget;
    for (const auto& room : rooms) {
        m_stack->addWidget(NewPlace(room));
        m_steps->AddStep(room.mark);
    }
    connect(m_steps, &WizardSteps::StepChosen, this, &WindowBody::PageChosen);
    auto* right = new QVBoxLayout;
    right->setSpacing(0);
    right->addWidget(m_heading);
    right->addWidget(m_stack, 1);
    auto* sides = new QHBoxLayout;
    sides->setSpacing(0);
    sides->addWidget(m_steps);
    sides->addWidget(NewLine(QFrame::VLine));
    sides->addLayout(right, 1);
    all->addLayout(sides, 1);
    all->addWidget(NewLine(QFrame::HLine));
    if (!m_marks.empty())
        ShowHeading(m_marks.front());
}

void WindowBody::SetUpList(const std::vector<PageRoom>& rooms, QBoxLayout* all) {
    m_list = new PageList;
    m_stack = new QStackedWidget;
    for (const auto& room : rooms) {
        m_stack->addWidget(NewPlace(room));
        m_list->AddPage(room.mark);
    }
    m_list->SetCurrentPage(0);
    connect(m_list, &PageList::PageChosen, this, &WindowBody::PageChosen);
    connect(m_list, &PageList::TextsWanted, this, [this] {
        Q_EMIT AllPagesWanted();
        UpdateSearchTexts();
    });
    auto* sides = new QHBoxLayout;
    sides->setSpacing(0);
    sides->addWidget(m_list);
    sides->addWidget(m_stack, 1);
    all->addLayout(sides, 1);
}

void WindowBody::UpdateSearchTexts() {
    for (std::size_t i = 0; i < m_places.size(); ++i) {
        QStringList texts;
        for (const auto* label : m_places[i]->findChildren<QLabel*>())
            texts.append(label->text().remove('&'));
        for (const auto* button : m_places[i]->findChildren<QAbstractButton*>())
            texts.append(button->text().remove('&'));
        for (const auto* group : m_places[i]->findChildren<QGroupBox*>())
            texts.append(group->title().remove('&'));
        for (const auto* form : m_places[i]->findChildren<FormWidget*>())
            texts.append(TextsToSearch(form->Model()));
        m_list->SetTexts(static_cast<int>(i), texts.join('\n'));
    }
}

void WindowBody::SetUpSinglePage(const std::vector<PageRoom>& rooms, QBoxLayout* all) {
    m_stack = new QStackedWidget;
    for (const auto& room : rooms)
        m_stack->addWidget(NewPlace(room));
    if (rooms.empty()) {
        auto* empty = new QLabel(tr("This window has no pages."));
        empty->setAlignment(Qt::AlignCenter);
        empty->setEnabled(false);
        m_stack->addWidget(empty);
    }
    all->addWidget(m_stack, 1);
}

void WindowBody::SetUpCommands(QBoxLayout* all) {
    m_foot = new QWidget;
    auto* foot = new QVBoxLayout(m_foot);
    foot->addWidget(m_commands);
    all->addWidget(m_foot);
    m_foot->setVisible(m_options.withCommands);
    connect(m_commands, &CommandRow::Chosen, this, &WindowBody::CommandChosen);
}

// Pages make their controls when they are first shown, and some later; all the same Tab goes from the pages' names into
// the page, and from there to the commands.
std::vector<QWidget*> WindowBody::TabStops() const {
    std::vector<QWidget*> stops;
    std::vector<QWidget*> commands;
    for (QWidget* p = nextInFocusChain(); p != this; p = p->nextInFocusChain())
        if (isAncestorOf(p) && (p->focusPolicy() & Qt::TabFocus) && !p->focusProxy() && p->isVisibleTo(this) &&
            p->isEnabled())
            (m_foot->isAncestorOf(p) ? commands : stops).push_back(p);
    stops.insert(stops.end(), commands.begin(), commands.end());
    return stops;
}

bool WindowBody::focusNextPrevChild(bool next) {
    const std::vector<QWidget*> stops = TabStops();
    const auto now = std::find(stops.begin(), stops.end(), window()->focusWidget());
    if (now == stops.end())
        return QWidget::focusNextPrevChild(next);
    const auto step = next ? 1 : stops.size() - 1;
    stops[(static_cast<std::size_t>(now - stops.begin()) + step) % stops.size()]->setFocus(
        next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void WindowBody::WatchEntries() {
    qApp->installEventFilter(this);
}

bool WindowBody::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::MouseButtonPress && event->type() != QEvent::Drop)
        return false;
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        for (const int other :
             {Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Control, Qt::Key_Shift, Qt::Key_Alt})
            if (key == other)
                return false;
    }
    const auto* widget = qobject_cast<QWidget*>(watched);
    m_hasEntries = widget && std::any_of(m_places.begin(), m_places.end(),
                                         [&](const PagePlace* place) { return place->isAncestorOf(widget); });
    if (m_hasEntries)
        qApp->removeEventFilter(this);
    return false;
}

bool WindowBody::AreCommandsShown() const {
    return !m_foot->isHidden();
}

int WindowBody::ShowCommands() {
    if (AreCommandsShown())
        return 0;
    m_foot->show();
    m_nonPageSize = QSize();
    return m_foot->sizeHint().height();
}

QSize WindowBody::NonPageSize() {
    if (m_places.empty())
        return sizeHint();
    if (m_nonPageSize.isValid())
        return m_nonPageSize;
    const auto pretend = [this](const QSize& size) {
        for (PagePlace* place : m_places) {
            place->Pretend(size);
            for (QWidget* p = place->parentWidget(); p != this; p = p->parentWidget()) {
                if (p->layout())
                    p->layout()->invalidate();
                p->updateGeometry();
            }
        }
        ForgetHints(*layout());
    };
    ensurePolished();
    pretend(measure);
    m_nonPageSize = sizeHint() - measure;
    if (m_tabs) // whose own hint is a rough one
        m_nonPageSize = sizeHint() - m_tabs->sizeHint() + m_tabs->NonPageSize();
    pretend(QSize());
    return m_nonPageSize;
}

void WindowBody::ShowPage(int page) {
    m_follows = true;
    if (m_tabs)
        m_tabs->setCurrentIndex(page);
    else
        m_stack->setCurrentIndex(page);
    m_follows = false;
    m_current = page;
    if (m_list)
        m_list->SetCurrentPage(page);
    if (m_steps) {
        m_steps->SetCurrentStep(page);
        ShowHeading(m_marks[static_cast<std::size_t>(page)]);
    }
}

// With the list of steps out of sight the heading says where one is.
void WindowBody::ShowHeading(const PageMark& mark) {
    m_heading->setText(m_steps->isHidden()
                           ? tr("Step %1 of %2: %3").arg(m_current + 1).arg(m_marks.size()).arg(mark.caption)
                           : mark.caption);
}

void WindowBody::MarkPage(int page, const PageMark& mark) {
    if (std::exchange(m_marks[static_cast<std::size_t>(page)], mark) == mark)
        return;
    if (m_steps)
        m_steps->SetStep(page, mark);
    if (m_list)
        m_list->SetPage(page, mark);
    if (m_tabs)
        MarkTab(page, mark);
}

void WindowBody::MarkTab(int page, const PageMark& mark) {
    const QString remark = mark.Remark();
    m_nonPageSize = QSize(); // a sign may be higher than the text
    m_tabs->setTabIcon(page, remark.isEmpty() ? QIcon()
                                              : style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, m_tabs));
    m_tabs->setTabToolTip(page, remark.isEmpty() ? mark.caption : mark.caption + "\n" + remark);
    m_tabs->tabBar()->setAccessibleTabName(page,
                                           remark.isEmpty() ? mark.caption : tr("%1. %2").arg(mark.caption, remark));
}

void WindowBody::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!m_steps || m_marks.empty())
        return;
    const bool narrow = width() < m_steps->sizeHint().width() + narrowestPageBesideSteps;
    if (m_steps->isHidden() != narrow) {
        m_steps->setHidden(narrow);
        ShowHeading(m_marks[static_cast<std::size_t>(m_current)]);
    }
}

bool WindowBody::ChoosesByKey(const QKeyEvent& event) {
    const int pages = static_cast<int>(m_places.size());
    const bool control = event.modifiers() == Qt::ControlModifier;
    if (m_tabs && control && (event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown)) {
        const int step = event.key() == Qt::Key_PageDown ? 1 : pages - 1;
        m_tabs->setCurrentIndex((m_current + step) % pages);
        return true;
    }
    if (event.modifiers() & ~Qt::KeypadModifier)
        return false;
    switch (event.key()) {
    case Qt::Key_Escape:
        return Chooses(StandardCommandConstants::cvCancel);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (auto* button = qobject_cast<QPushButton*>(focusWidget())) { // dialogs see to this themselves
            button->click();
            return true;
        }
        if (QPushButton* button = OwnDefault()) { // while it is disabled, Return does nothing
            button->click();
            return true;
        }
        return Chooses(m_commands->Default());
    case Qt::Key_F1:
        return Chooses(StandardCommandConstants::cvHelp);
    default:
        return false;
    }
}

QPushButton* WindowBody::OwnDefault() const {
    QPushButton* button = m_places.empty() ? nullptr : Place(m_current).OwnDefault();
    return button && button->isVisibleTo(this) ? button : nullptr;
}

void WindowBody::SetDefault(StandardCommandConstants command) {
    QPushButton* own = OwnDefault();
    m_commands->SetDefault(own ? std::nullopt : std::optional(command));
    if (own)
        own->setDefault(true);
}

// In a child window that is a document, a table say, the keys belong to the page.
bool WindowBody::Chooses(std::optional<StandardCommandConstants> command) {
    if (!command || !m_commands->Button(*command))
        return false;
    const bool isDocument = m_options.isChild && m_options.type == WindowTypeConstants::cvWindow;
    if (command != StandardCommandConstants::cvHelp && (isDocument || !AreCommandsShown()))
        return false;
    Q_EMIT CommandChosen(*command);
    return true;
}

void WindowBody::keyPressEvent(QKeyEvent* event) {
    if (ChoosesByKey(*event))
        event->accept();
    else
        QWidget::keyPressEvent(event);
}

} // namespace corvane::desktop

#include "moc_WindowBody.cpp"
