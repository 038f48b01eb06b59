#include "desktop/jobs/JobsView.h"

#include "desktop/jobs/JobTexts.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

enum JobColumn { Title, Progress, State, BelongsTo, ColumnCount };
constexpr int partRole = Qt::UserRole;

// A bar instead of the text, where the part is known; the text is for those who hear it.
class BarDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QVariant part = index.data(partRole);
        if (!part.isValid()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        QStyleOptionProgressBar bar;
        bar.initFrom(option.widget);
        bar.rect = option.rect.adjusted(2, 2, -2, -2);
        bar.state |= QStyle::State_Horizontal;
        bar.minimum = 0;
        bar.maximum = 1000;
        bar.progress = static_cast<int>(part.toDouble() * 1000);
        bar.text = index.data().toString();
        bar.textVisible = true;
        bar.textAlignment = Qt::AlignCenter;
        option.widget->style()->drawControl(QStyle::CE_ProgressBar, &bar, painter, option.widget);
    }

    // For all columns, as rows have one height.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int around = 10; // the text of the bar
        return {QStyledItemDelegate::sizeHint(option, index).width(), option.fontMetrics.height() + around};
    }
};

bool IsBefore(const Ref<jobs::Job>& a, const Ref<jobs::Job>& b) {
    return std::less<>()(a.Get(), b.Get());
}

void SetText(QTreeWidgetItem& item, int column, const QString& text) {
    if (item.text(column) == text)
        return;
    item.setText(column, text);
    item.setToolTip(column, text);
}

} // namespace

JobsView::JobsView(Ref<jobs::Manager> jobs, QWidget* parent)
    : QWidget(parent), m_jobs(std::move(jobs)), m_list(new QTreeWidget), m_empty(new QLabel(tr("No job is running."))),
      m_halves(new QSplitter), m_details(new QPlainTextEdit), m_items(&IsBefore) {
    SetUpList();
    m_details->setReadOnly(true);
    m_details->setAccessibleName(tr("Details"));
    m_details->setTabChangesFocus(true);
    m_halves->addWidget(m_list);
    m_halves->addWidget(m_details);
    m_halves->setStretchFactor(0, 2);
    m_halves->setStretchFactor(1, 1);
    m_halves->setChildrenCollapsible(false);
    auto* column = new QVBoxLayout;
    column->addWidget(m_empty);
    column->addWidget(m_halves, 1);
    auto* all = new QHBoxLayout(this);
    all->setContentsMargins(6, 6, 6, 6);
    all->addLayout(column, 1);
    SetUpButtons();
    setFocusProxy(m_list);
    Update();
}

JobsView::~JobsView() {
    if (!m_jobs->HasStopped())
        m_jobs->ForgetEnded();
}

void JobsView::SetUpList() {
    m_list->setColumnCount(ColumnCount);
    m_list->setHeaderLabels({tr("Job"), tr("Progress"), tr("State"), tr("Belongs to")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setAccessibleName(tr("Jobs"));
    m_list->setItemDelegateForColumn(Progress, new BarDelegate(m_list));
    const int character = fontMetrics().averageCharWidth();
    m_list->setColumnWidth(Title, character * 32);
    m_list->setColumnWidth(Progress, character * 14);
    m_list->setColumnWidth(BelongsTo, character * 26);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(State, QHeaderView::Stretch);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &JobsView::ShowCurrent);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &JobsView::ShowCurrent);
}

void JobsView::SetUpButtons() {
    m_cancel = new QPushButton(tr("Cancel &Job"));
    m_clear = new QPushButton(tr("Clear &Finished"));
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_clear);
    buttons->addStretch(1);
    connect(m_cancel, &QPushButton::clicked, this, &JobsView::CancelSelected);
    connect(m_clear, &QPushButton::clicked, this, [this] {
        m_jobs->ForgetEnded();
        Update();
    });
    connect(new QShortcut(QKeySequence::Delete, m_list), &QShortcut::activated, this, &JobsView::CancelSelected);
    static_cast<QHBoxLayout*>(layout())->addLayout(buttons);
}

// The details are beside the list where it is wider than high, as at the bottom of the window.
void JobsView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_halves->setOrientation(width() > 2 * height() ? Qt::Horizontal : Qt::Vertical);
}

// The rows of those that are still there stay, and so does what is selected.
void JobsView::Update() {
    auto jobs = m_jobs->Active();
    jobs.insert(jobs.end(), m_jobs->Ended().rbegin(), m_jobs->Ended().rend());
    decltype(m_items) items(&IsBefore);
    int row = 0;
    for (const auto& job : jobs) {
        QTreeWidgetItem* item = nullptr;
        if (const auto it = m_items.find(job); it != m_items.end()) {
            item = it->second;
            m_items.erase(it);
        } else {
            item = new QTreeWidgetItem;
            m_list->insertTopLevelItem(row, item);
        }
        items.emplace(job, item);
        Fill(*item, *job);
        ++row;
    }
    for (const auto& [job, item] : m_items)
        delete item;
    m_items = std::move(items);
    m_empty->setVisible(m_items.empty());
    if (!m_list->currentItem() && m_list->topLevelItemCount() > 0)
        m_list->setCurrentItem(m_list->topLevelItem(0));
    ShowCurrent();
}

void JobsView::Fill(QTreeWidgetItem& item, const jobs::Job& job) {
    const auto part = job.Part();
    SetText(item, Title, QString::fromStdString(job.Title()));
    SetText(item, Progress, job.HasEnded() ? QString() : PercentText(job));
    item.setData(Progress, partRole, part && !job.HasEnded() ? QVariant(*part) : QVariant());
    SetText(item, State, StateText(job));
    SetText(item, BelongsTo, OwnerText(job));
}

Ref<jobs::Job> JobsView::Current() const {
    for (const auto& [job, item] : m_items)
        if (item == m_list->currentItem())
            return job;
    return nullptr;
}

void JobsView::ShowCurrent() {
    const Ref<jobs::Job> current = Current();
    const QString details = current ? DetailsText(*current) : QString();
    if (m_details->toPlainText() != details) {
        const int at = m_details->verticalScrollBar()->value();
        m_details->setPlainText(details);
        m_details->verticalScrollBar()->setValue(at);
    }
    bool canCancel = false;
    for (const auto& [job, item] : m_items)
        canCancel = canCancel || (item->isSelected() && job->CanCancel() && !job->IsCancelling());
    m_cancel->setEnabled(canCancel);
    m_clear->setEnabled(!m_jobs->Ended().empty());
}

void JobsView::CancelSelected() {
    std::vector<Ref<jobs::Job>> selected;
    for (const auto& [job, item] : m_items)
        if (item->isSelected())
            selected.push_back(job);
    for (const auto& job : selected)
        job->Cancel();
    Update();
}

} // namespace corvane::desktop

#include "moc_JobsView.cpp"
