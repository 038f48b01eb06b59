#include "desktop/custom/CustomizeDialog.h"

#include "desktop/style/DialogSize.h"
#include "desktop/translation/ShownText.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <set>

namespace corvane::desktop {

namespace {

constexpr int nameRole = Qt::UserRole;

QString InstanceCaption(const Tool& instance) {
    const QString caption = PlainCaption(instance);
    return caption.isEmpty() ? PlainCaption(instance.Master()) : caption;
}

} // namespace

CustomizeDialog::CustomizeDialog(PersonalBars& bars, Ref<ActiveBar> activeBar, PickFunction pick, QWidget* parent)
    : QDialog(parent), m_bars(bars), m_activeBar(std::move(activeBar)), m_pick(std::move(pick)),
      m_bands(new QTreeWidget), m_entries(new QListWidget), m_aside(new QLabel) {
    setWindowTitle(tr("Customize Menus and Toolbars"));
    ResizeWithin(*this, {760, 520});
    m_bands->setHeaderHidden(true);
    m_bands->setAccessibleName(tr("Menus and toolbars"));
    m_entries->setAccessibleName(tr("Entries"));
    m_aside->setWordWrap(true);
    m_aside->setTextFormat(Qt::PlainText);
    auto* splitter = new QSplitter;
    splitter->addWidget(m_bands);
    splitter->addWidget(m_entries);
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 3);
    auto* hint = new QLabel(tr("Unchecked entries are hidden. Drag entries to move them, or use the buttons."));
    hint->setWordWrap(true);
    auto* grid = new QGridLayout(this);
    grid->addWidget(hint, 0, 0, 1, 2);
    grid->addWidget(splitter, 1, 0);
    grid->addWidget(NewButtons(), 1, 1);
    grid->addWidget(m_aside, 2, 0);
    m_forget = NewButton(tr("&Forget These"), [this] { ForgetAside(); });
    grid->addWidget(m_forget, 2, 1, Qt::AlignTop);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    grid->addWidget(close, 3, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(1, 1);
    connect(m_bands, &QTreeWidget::currentItemChanged, this, &CustomizeDialog::ShowBand);
    connect(m_entries, &QListWidget::currentRowChanged, this, &CustomizeDialog::ShowButtons);
    connect(m_entries, &QListWidget::itemChanged, this, &CustomizeDialog::Entry_Changed);
    m_entries->setDragDropMode(QAbstractItemView::InternalMove);
    // Queued: the list is filled again, which is still in the midst of the move.
    connect(
        m_entries->model(), &QAbstractItemModel::rowsMoved, this,
        [this](const QModelIndex&, int row, int, const QModelIndex&, int to) { Entries_Moved(to > row ? to - 1 : to); },
        Qt::QueuedConnection);
    FillBands();
}

QPushButton* CustomizeDialog::NewButton(const QString& text, const std::function<void()>& click) {
    auto* button = new QPushButton(text);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

QWidget* CustomizeDialog::NewButtons() {
    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    m_up = NewButton(tr("Move &Up"), [this] { MoveCurrent(-1); });
    m_down = NewButton(tr("Move &Down"), [this] { MoveCurrent(1); });
    m_add = NewButton(tr("&Add…"), [this] { m_pick(this, [this](const Ref<Tool>& tool) { AddCommand(tool); }); });
    m_remove = NewButton(tr("&Remove"), [this] {
        if (const auto tool = ToolAt(m_entries->currentRow()))
            m_bars.RemoveAdded(*CurrentBand(), *tool);
        ShowBand();
    });
    m_reset = NewButton(tr("R&eset This"), [this] {
        m_bars.ResetBand(*CurrentBand());
        ShowBand();
    });
    auto* resetAll = NewButton(tr("Reset A&ll…"), [this] {
        if (QMessageBox::question(this, windowTitle(),
                                  tr("Reset all menus and toolbars to the application's defaults?")) !=
            QMessageBox::Yes)
            return;
        m_bars.ResetAllBands();
        ShowBand();
    });
    for (QPushButton* button : {m_up, m_down, m_add, m_remove})
        layout->addWidget(button);
    layout->addStretch();
    layout->addWidget(m_reset);
    layout->addWidget(resetAll);
    return column;
}

void CustomizeDialog::AddBand(QTreeWidgetItem* group, const Ref<Band>& band, const QString& caption) {
    auto* item = new QTreeWidgetItem(group, {caption});
    item->setData(0, nameRole, QString::fromStdString(band->Name()));
}

void CustomizeDialog::FillBands() {
    auto* toolbars = new QTreeWidgetItem(m_bands, {tr("Toolbars")});
    auto* menus = new QTreeWidgetItem(m_bands, {tr("Menus")});
    auto* contexts = new QTreeWidgetItem(m_bands, {tr("Context menus")});
    std::set<std::string> seen;
    const std::function<void(QTreeWidgetItem*, const Ref<Band>&)> addMenus = [&](QTreeWidgetItem* group,
                                                                                 const Ref<Band>& above) {
        for (const auto& instance : above->Tools()->All()) {
            const auto band =
                instance->DropDownBand().empty() ? nullptr : m_activeBar->Bands()->Find(instance->DropDownBand());
            if (!band || !seen.insert(band->Name()).second)
                continue;
            AddBand(group, band, InstanceCaption(*instance));
            addMenus(group->child(group->childCount() - 1), band);
        }
    };
    for (const auto& band : m_activeBar->Bands()->All())
        if (band->Kind() == BandKind::Toolbar)
            AddBand(toolbars, band, ShownCaption(*band));
        else if (band->Kind() == BandKind::MenuBar)
            addMenus(menus, band);
        else if (band->Name().starts_with("Context.") && seen.insert(band->Name()).second) {
            AddBand(contexts, band, QString::fromStdString(band->Name().substr(8)));
            addMenus(contexts->child(contexts->childCount() - 1), band);
        }
    for (QTreeWidgetItem* group : {toolbars, menus, contexts}) {
        group->setFlags(Qt::ItemIsEnabled);
        group->setHidden(group->childCount() == 0);
        group->setExpanded(true);
    }
    QTreeWidgetItem* first = toolbars->childCount() > 0 ? toolbars->child(0) : menus->child(0);
    m_bands->setCurrentItem(first);
    ShowBand();
}

[[maybe_unused]] bool CustomizeDialog::SelectBand(const std::string& band) {
    for (QTreeWidgetItemIterator it(m_bands); *it; ++it)
        if (EqualText((*it)->data(0, nameRole).toString().toStdString(), band)) {
            m_bands->setCurrentItem(*it);
            return true;
        }
    return false;
}

Ref<Band> CustomizeDialog::CurrentBand() const {
    const QTreeWidgetItem* item = m_bands->currentItem();
    const QString name = item ? item->data(0, nameRole).toString() : QString();
    return name.isEmpty() ? nullptr : m_activeBar->Bands()->Find(name.toStdString());
}

Ref<Tool> CustomizeDialog::ToolAt(int row) const {
    const QListWidgetItem* item = m_entries->item(row);
    return item ? m_activeBar->Tools()->Find(item->data(nameRole).toString().toStdString()) : nullptr;
}

void CustomizeDialog::ShowBand() {
    const int row = m_entries->currentRow();
    m_fills = true;
    m_entries->clear();
    const Ref<Band> band = CurrentBand();
    if (band)
        for (const auto& instance : m_bars.AllOf(*band)) {
            auto* item = new QListWidgetItem(m_entries);
            if (IsSeparator(*instance)) {
                item->setText("————");
                item->setData(Qt::AccessibleTextRole, tr("Separator"));
                item->setFlags(Qt::NoItemFlags);
                continue;
            }
            const bool added = m_bars.IsAdded(*band, *instance);
            item->setText(added ? tr("%1 (added)").arg(InstanceCaption(*instance)) : InstanceCaption(*instance));
            item->setToolTip(QString::fromStdString(instance->Name()));
            item->setData(nameRole, QString::fromStdString(instance->Name()));
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled);
            item->setCheckState(m_bars.IsHidden(*band, *instance) ? Qt::Unchecked : Qt::Checked);
        }
    m_fills = false;
    m_entries->setCurrentRow(std::min(row, m_entries->count() - 1));
    QStringList asideItems;
    for (const auto& aside : m_bars.PlacesAside())
        asideItems.append(aside.text);
    m_aside->setText(
        asideItems.isEmpty() ? QString() : tr("Kept for entries that no longer exist:\n%1").arg(asideItems.join('\n')));
    m_aside->setVisible(!asideItems.isEmpty());
    m_forget->setVisible(!asideItems.isEmpty());
    ShowButtons();
}

void CustomizeDialog::ShowButtons() {
    const Ref<Band> band = CurrentBand();
    const auto tool = ToolAt(m_entries->currentRow());
    m_up->setEnabled(tool && m_entries->currentRow() > 0);
    m_down->setEnabled(tool && m_entries->currentRow() < m_entries->count() - 1);
    m_add->setEnabled(band != nullptr);
    m_remove->setEnabled(band && tool && m_bars.IsAdded(*band, *tool));
    m_reset->setEnabled(band && m_bars.HasChanges(*band));
}

void CustomizeDialog::Entry_Changed(QListWidgetItem* item) {
    if (m_fills)
        return;
    const auto tool = ToolAt(m_entries->row(item));
    if (tool)
        m_bars.SetHidden(*CurrentBand(), *tool, item->checkState() == Qt::Unchecked);
    ShowButtons();
}

// The entry that has been dragged is in that row now.
void CustomizeDialog::Entries_Moved(int row) {
    const auto tool = ToolAt(row);
    const Ref<Band> band = CurrentBand();
    if (!tool || !band)
        return;
    const bool beginsSection = row > 0 && !ToolAt(row - 1);
    Ref<Tool> behind;
    for (int above = row - 1; above >= 0 && !behind; --above)
        behind = ToolAt(above);
    m_bars.Move(*band, *tool, behind.Get(), beginsSection ? ToolAt(row + 1).Get() : nullptr);
    ShowBand();
    SelectEntry(*tool);
}

// Over the next entry, not over a separator alone.
void CustomizeDialog::MoveCurrent(int step) {
    const int row = m_entries->currentRow();
    const auto tool = ToolAt(row);
    const Ref<Band> band = CurrentBand();
    if (!tool || !band)
        return;
    int behindRow = row + step; // downwards the entry below, upwards the one above the one above
    int passed = step > 0 ? 0 : 1;
    for (; behindRow >= 0 && behindRow < m_entries->count(); behindRow += step)
        if (ToolAt(behindRow) && passed-- == 0)
            break;
    if (behindRow >= m_entries->count())
        return;
    const auto behind = ToolAt(behindRow);
    m_bars.Move(*band, *tool, behind.Get());
    ShowBand();
    SelectEntry(*tool);
}

// It is chosen, to be moved where it should be; so is one that the toolbar has already.
void CustomizeDialog::AddCommand(const Ref<Tool>& tool) {
    if (const Ref<Band> band = CurrentBand())
        m_bars.Add(*band, *tool);
    ShowBand();
    SelectEntry(*tool);
}

void CustomizeDialog::SelectEntry(const Tool& tool) {
    for (int i = 0; i < m_entries->count(); ++i)
        if (const auto entry = ToolAt(i); entry && &entry->Master() == &tool.Master())
            m_entries->setCurrentRow(i);
}

void CustomizeDialog::ForgetAside() {
    for (auto aside = m_bars.PlacesAside(); !aside.empty(); aside = m_bars.PlacesAside())
        aside.front().forget();
    ShowBand();
}

} // namespace corvane::desktop

#include "moc_CustomizeDialog.cpp"
