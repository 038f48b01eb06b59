#include "desktop/custom/ShortcutsDialog.h"

#include "desktop/style/ClearButton.h"
#include "desktop/style/DialogSize.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

enum Column { CommandColumn, KeysColumn, OwnerColumn, NoteColumn };
constexpr int indexRole = Qt::UserRole; // of a command among all
constexpr int windowKeyRole = Qt::UserRole + 2;
constexpr int asideRole = Qt::UserRole + 1; // of a change whose entry has gone

QString FullName(const CommandEntry& command) {
    return command.path.isEmpty() ? command.caption : command.path + " › " + command.caption;
}

} // namespace

ShortcutsDialog::ShortcutsDialog(PersonalBars& bars, const ActiveBar& activeBar, QWidget* parent)
    : QDialog(parent), m_bars(bars), m_commands(activeBar), m_windowKeys(WindowKeys(activeBar)),
      m_filter(new QLineEdit), m_list(new QTreeWidget), m_conflict(new QLabel) {
    setWindowTitle(tr("Keyboard Shortcuts"));
    ResizeWithin(*this, {940, 580});
    m_filter->setPlaceholderText(tr("Search for a command, shortcut or owner"));
    m_filter->setAccessibleName(tr("Search"));
    m_filter->installEventFilter(this);
    AddClearButton(*m_filter);
    m_list->setHeaderLabels({tr("Command"), tr("Shortcut"), tr("Owner"), tr("Note")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setAccessibleName(tr("Commands and their shortcuts"));
    m_list->header()->setSectionResizeMode(QHeaderView::Interactive);
    m_conflict->setWordWrap(true);
    m_conflict->setTextFormat(Qt::PlainText);
    m_conflict->setAccessibleName(tr("Conflict"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_filter);
    layout->addWidget(m_list, 1);
    layout->addWidget(NewEditRow());
    layout->addWidget(m_conflict);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* resetAll = buttons->addButton(tr("Reset &All…"), QDialogButtonBox::ResetRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(resetAll, &QPushButton::clicked, this, [this] {
        if (QMessageBox::question(this, windowTitle(), tr("Reset all shortcuts to the application's defaults?")) !=
            QMessageBox::Yes)
            return;
        m_bars.ResetAllKeys();
        ShowAll();
    });
    layout->addWidget(buttons);
    connect(m_filter, &QLineEdit::textChanged, this, &ShortcutsDialog::Filter);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ShortcutsDialog::ShowCurrent);
    for (const CommandEntry& command : m_commands.All())
        NewRow(command);
    AddWindowKeys();
    ShowAll();
    m_list->setColumnWidth(CommandColumn, 250);
    m_list->setColumnWidth(KeysColumn, 110);
    m_list->setColumnWidth(OwnerColumn, 260);
    m_list->setCurrentItem(m_list->topLevelItem(0));
}

ShortcutsDialog::~ShortcutsDialog() = default;

QWidget* ShortcutsDialog::NewEditRow() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(tr("&New shortcut:"));
    m_keys = new QKeySequenceEdit;
    m_keys->setAccessibleName(tr("New shortcut"));
    if (auto* field = m_keys->findChild<QLineEdit*>()) // it is what has the focus
        field->setAccessibleName(tr("New shortcut"));
    label->setBuddy(m_keys);
    m_assign = new QPushButton(tr("A&ssign"));
    m_none = new QPushButton(tr("No Shor&tcut"));
    m_reset = new QPushButton(tr("&Reset"));
    m_forget = new QPushButton(tr("&Forget"));
    for (QPushButton* button : {m_assign, m_none, m_reset, m_forget})
        button->setAutoDefault(false);
    layout->addWidget(label);
    layout->addWidget(m_keys, 1);
    for (QPushButton* button : {m_assign, m_none, m_reset, m_forget})
        layout->addWidget(button);
    // The field reports keys only when no others have followed for a second.
    m_keys->installEventFilter(this);
    connect(m_keys, &QKeySequenceEdit::keySequenceChanged, this, &ShortcutsDialog::ShowConflict);
    connect(m_assign, &QPushButton::clicked, this, &ShortcutsDialog::Assign);
    connect(m_none, &QPushButton::clicked, this, [this] {
        if (const CommandEntry* command = Current())
            m_bars.SetKeys(*command->tool, {});
        ShowAll();
    });
    connect(m_reset, &QPushButton::clicked, this, [this] {
        if (const CommandEntry* command = Current())
            m_bars.ResetKeys(*command->tool);
        ShowAll();
    });
    connect(m_forget, &QPushButton::clicked, this, [this] {
        const int aside = m_list->currentItem()->data(0, asideRole).toInt();
        m_bars.KeysAside().at(static_cast<std::size_t>(aside)).forget();
        ShowAll();
    });
    return row;
}

QTreeWidgetItem* ShortcutsDialog::NewRow(const CommandEntry& command) {
    auto* item = new QTreeWidgetItem(m_list, {FullName(command), QString(), command.owner.Text()});
    item->setData(0, indexRole, static_cast<int>(&command - m_commands.All().data()));
    item->setToolTip(CommandColumn, QString::fromStdString(command.tool->Name()));
    return item;
}

void ShortcutsDialog::AddWindowKeys() {
    for (const WindowKey& key : m_windowKeys) {
        auto* item = new QTreeWidgetItem(
            m_list, {key.what, key.keys.toString(QKeySequence::NativeText), key.owner,
                     key.comesFirst ? tr("can't be changed") : tr("can't be changed; commands come first")});
        item->setData(0, windowKeyRole, true);
    }
}

const WindowKey* ShortcutsDialog::WindowKeyOf(const QKeySequence& keys) const {
    const WindowKey* found = nullptr;
    for (const WindowKey& key : m_windowKeys)
        if (!keys.isEmpty() && key.keys == QKeySequence(keys[0]) && (!found || (key.comesFirst && !found->comesFirst)))
            found = &key;
    return found;
}

void ShortcutsDialog::ShowRow(QTreeWidgetItem* item, const CommandEntry& command) {
    const bool own = m_bars.HasOwnKeys(*command.tool);
    QStringList notes;
    for (const QKeySequence& keys : m_bars.KeysOf(*command.tool))
        if (const QStringList others = OthersOf(keys, command); !others.isEmpty())
            notes.append(tr("conflict: %1").arg(others.join(", ")));
        else if (const QStringList halves = HalvesOf(keys, command); !halves.isEmpty())
            notes.append(tr("conflict: %1").arg(halves.join(", ")));
    bool conflict = !notes.isEmpty();
    for (const QKeySequence& keys : m_bars.KeysOf(*command.tool))
        if (const WindowKey* key = WindowKeyOf(keys)) {
            conflict |= key->comesFirst;
            notes.append(key->comesFirst ? tr("conflict: %1 (%2)").arg(key->what, key->owner)
                                         : tr("instead of %1 (%2)").arg(key->what, key->owner));
        }
    if (own) {
        const QString before = BarChanges::None().KeysText(*command.tool);
        notes.prepend(before.isEmpty() ? tr("changed") : tr("changed; was %1").arg(before));
    }
    item->setText(KeysColumn, m_bars.KeysText(*command.tool));
    item->setText(NoteColumn, notes.join("; "));
    item->setToolTip(NoteColumn, notes.join("\n"));
    item->setIcon(NoteColumn, conflict ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
    QFont font = m_list->font();
    font.setBold(own);
    item->setFont(KeysColumn, font);
}

// One change may make conflicts anywhere or end them.
void ShortcutsDialog::ShowAll() {
    m_byKeys.clear();
    for (const CommandEntry& command : m_commands.All())
        for (const QKeySequence& keys : m_bars.KeysOf(*command.tool))
            m_byKeys[keys[0].toCombined()].append({&command, keys});
    ShowAside();
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        if (QTreeWidgetItem* item = m_list->topLevelItem(i); item->data(0, indexRole).isValid())
            ShowRow(item, m_commands.All()[static_cast<std::size_t>(item->data(0, indexRole).toInt())]);
    ShowCurrent();
}

void ShortcutsDialog::ShowAside() {
    for (int i = m_list->topLevelItemCount(); i-- > 0;)
        if (m_list->topLevelItem(i)->data(0, asideRole).isValid())
            delete m_list->takeTopLevelItem(i);
    int asideIndex = 0;
    for (const auto& aside : m_bars.KeysAside()) {
        auto* item = new QTreeWidgetItem(m_list, {aside.text, QString(), QString(), tr("no longer exists; kept")});
        item->setData(0, asideRole, asideIndex++);
    }
}

const CommandEntry* ShortcutsDialog::Current() const {
    const QTreeWidgetItem* item = m_list->currentItem();
    if (!item || !item->data(0, indexRole).isValid())
        return nullptr;
    return &m_commands.All()[static_cast<std::size_t>(item->data(0, indexRole).toInt())];
}

[[maybe_unused]] bool ShortcutsDialog::Select(const Tool& tool) {
    const CommandEntry* command = m_commands.Find(tool);
    for (int i = 0; command && i < m_list->topLevelItemCount(); ++i) {
        m_list->setCurrentItem(m_list->topLevelItem(i));
        if (Current() == command)
            return true;
    }
    return false;
}

QStringList ShortcutsDialog::OthersOf(const QKeySequence& keys, const CommandEntry& command) const {
    QStringList others;
    for (const auto& [other, othersKeys] : m_byKeys.value(keys[0].toCombined()))
        if (other != &command && othersKeys == keys)
            others.append(QString("%1 (%2)").arg(FullName(*other), other->owner.Text()));
    return others;
}

// Of a single key the chords that begin with it, of a chord the commands of its first stroke alone.
QStringList ShortcutsDialog::HalvesOf(const QKeySequence& keys, const CommandEntry& command) const {
    QStringList others;
    for (const auto& [other, othersKeys] : m_byKeys.value(keys[0].toCombined()))
        if (other != &command && othersKeys.count() != keys.count())
            others.append(QString("%1 (%2)").arg(FullName(*other), othersKeys.toString(QKeySequence::NativeText)));
    return others;
}

void ShortcutsDialog::ShowCurrent() {
    const CommandEntry* command = Current();
    m_keys->clear();
    m_keys->setEnabled(command);
    m_none->setEnabled(command && !m_bars.KeysOf(*command->tool).isEmpty());
    m_reset->setEnabled(command && m_bars.HasOwnKeys(*command->tool));
    m_forget->setVisible(m_list->currentItem() && m_list->currentItem()->data(0, asideRole).isValid());
    ShowConflict();
}

bool ShortcutsDialog::eventFilter(QObject* watched, QEvent* event) {
    // The arrows go from the search into the list.
    if (watched == m_filter && event->type() == QEvent::KeyPress)
        if (const int key = static_cast<QKeyEvent*>(event)->key(); key == Qt::Key_Down || key == Qt::Key_Up) {
            QCoreApplication::sendEvent(m_list, event);
            return true;
        }
    // Esc alone leads out of the field, as out of every other; to be assigned it needs a modifier.
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (watched == m_keys && key &&
        static_cast<QKeyEvent*>(event)->keyCombination() == QKeyCombination(Qt::Key_Escape)) {
        if (event->type() == QEvent::KeyPress)
            LeaveKeys();
        return true;
    }
    if (watched == m_keys && event->type() == QEvent::KeyPress)
        QMetaObject::invokeMethod(this, &ShortcutsDialog::ShowConflict, Qt::QueuedConnection);
    return QDialog::eventFilter(watched, event);
}

void ShortcutsDialog::LeaveKeys() {
    if (m_keys->keySequence().isEmpty())
        reject();
    else
        ShowCurrent();
}

// A command has keys of one stroke or of two; of more the latest count.
QKeySequence ShortcutsDialog::Typed() const {
    QKeySequence keys = m_keys->keySequence();
    if (keys.count() <= 2)
        return keys;
    const auto last = static_cast<uint>(keys.count() - 1);
    return {keys[last - 1], keys[last]};
}

void ShortcutsDialog::ShowConflict() {
    const WindowKey* key = WindowKeyOf(Typed());
    m_assign->setEnabled(Current() && !Typed().isEmpty() && !(key && key->comesFirst));
    m_conflict->setText(Conflict());
}

QString ShortcutsDialog::Conflict() const {
    const CommandEntry* command = Current();
    if (!command)
        return {};
    QStringList texts;
    const QKeySequence typed = Typed();
    const QList<QKeySequence> keyList = typed.isEmpty() ? m_bars.KeysOf(*command->tool) : QList<QKeySequence>{typed};
    for (const QKeySequence& keys : keyList) {
        const QString keysText = keys.toString(QKeySequence::NativeText);
        if (const WindowKey* key = WindowKeyOf(keys))
            texts.append(key->comesFirst ? tr("%1 is reserved for the window: %2. It can't be assigned to a command.")
                                               .arg(keysText, key->what)
                                         : tr("%1 is also used by %2: %3. The command takes precedence.")
                                               .arg(keysText, key->owner, key->what));
        if (const QStringList others = OthersOf(keys, *command); !others.isEmpty())
            texts.append(tr("%1 is also the shortcut of %2. Of the available commands, the one that you changed takes "
                            "precedence, otherwise the first.")
                             .arg(keysText, others.join(", ")));
        if (const QStringList halves = HalvesOf(keys, *command); !halves.isEmpty())
            texts.append((keys.count() > 1 ? tr("%1 begins with the shortcut of %2, which won't work any more.")
                                           : tr("%1 won't work, as it is the beginning of the shortcut of %2."))
                             .arg(keysText, halves.join(", ")));
    }
    return texts.join("\n");
}

void ShortcutsDialog::Assign() {
    const CommandEntry* command = Current();
    if (!command || !m_assign->isEnabled())
        return;
    m_bars.SetKeys(*command->tool, {Typed()});
    ShowAll();
}

void ShortcutsDialog::Filter(const QString& text) {
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        bool shown = text.isEmpty();
        for (int column = 0; column < m_list->columnCount(); ++column)
            shown = shown || item->text(column).contains(text, Qt::CaseInsensitive);
        item->setHidden(!shown);
    }
    // Keys go to the current row: to one that is seen, or to none.
    if (const QTreeWidgetItem* current = m_list->currentItem(); current && !current->isHidden())
        return;
    QTreeWidgetItem* first = nullptr;
    for (int i = m_list->topLevelItemCount(); i-- > 0;)
        if (!m_list->topLevelItem(i)->isHidden())
            first = m_list->topLevelItem(i);
    m_list->setCurrentItem(first);
}

} // namespace corvane::desktop

#include "moc_ShortcutsDialog.cpp"
