#include "desktop/session/LayoutsDialog.h"

#include "desktop/style/DialogSize.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QVBoxLayout>

namespace corvane::desktop {

LayoutsDialog::LayoutsDialog(Layouts& layouts, Paths paths, QWidget* parent)
    : QDialog(parent), m_layouts(layouts), m_paths(std::move(paths)), m_list(new QListWidget),
      m_empty(new QLabel(tr("No layout has been saved yet. Window › Layouts › Save Layout keeps the present one."))) {
    setWindowTitle(tr("Layouts"));
    ResizeWithin(*this, {460, 340});
    m_empty->setWordWrap(true);
    m_list->setAccessibleName(tr("Layouts"));
    m_list->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    auto* sides = new QHBoxLayout;
    sides->addWidget(m_list, 1);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_empty);
    all->addLayout(sides, 1);
    auto* buttons = new QVBoxLayout;
    sides->addLayout(buttons);
    const auto add = [&](const QString& text, bool ofOne, auto act) {
        auto* button = new QPushButton(text);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, act);
        buttons->addWidget(button);
        if (ofOne)
            m_ofOne.push_back(button);
        return button;
    };
    add(tr("&Use"), true, [this] { m_layouts.Choose(Current()); })->setDefault(true);
    add(tr("&Rename"), true, [this] { m_list->editItem(m_list->currentItem()); });
    add(tr("&Delete"), true, [this] { Delete(); });
    add(tr("&Export…"), true, [this] {
        if (const QString path = m_paths.toSave(Current() + ".layout"); !path.isEmpty())
            ShowProblem(m_layouts.Export(Current(), path));
    });
    add(tr("&Import…"), false, [this] {
        if (const QString path = m_paths.toOpen(); !path.isEmpty()) {
            ShowProblem(m_layouts.Import(path));
            Fill(Current());
        }
    });
    buttons->addStretch(1);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    all->addWidget(close);
    connect(m_list, &QListWidget::currentRowChanged, this, &LayoutsDialog::UpdateButtons);
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this] { m_layouts.Choose(Current()); });
    auto* deleteKey = new QShortcut(QKeySequence::Delete, m_list);
    deleteKey->setContext(Qt::WidgetShortcut); // not while a name is edited
    connect(deleteKey, &QShortcut::activated, this, &LayoutsDialog::Delete);
    connect(m_list, &QListWidget::itemChanged, this, [this](const QListWidgetItem* item) {
        if (m_fills)
            return;
        const QString before = item->data(Qt::UserRole).toString();
        const QString after = item->text().trimmed();
        if (after != before && m_layouts.Has(after))
            ShowProblem(tr("There is a layout “%1” already.").arg(after));
        m_layouts.Rename(before, after);
        // Behind the editor's end, which still needs the item.
        QMetaObject::invokeMethod(
            this, [this, after] { Fill(after); }, Qt::QueuedConnection);
    });
    Fill({});
}

void LayoutsDialog::Fill(const QString& current) {
    const QScopedValueRollback fills(m_fills, true);
    m_list->clear();
    for (const QString& name : m_layouts.Names()) {
        auto* item = new QListWidgetItem(name, m_list);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        item->setData(Qt::UserRole, name);
        item->setToolTip(name.toHtmlEscaped());
        if (name == current || m_list->count() == 1)
            m_list->setCurrentItem(item);
    }
    m_empty->setVisible(m_list->count() == 0);
    UpdateButtons();
}

QString LayoutsDialog::Current() const {
    const QListWidgetItem* item = m_list->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

void LayoutsDialog::UpdateButtons() {
    for (QPushButton* button : m_ofOne)
        button->setEnabled(m_list->currentItem());
}

void LayoutsDialog::ShowProblem(const QString& problem) {
    if (!problem.isEmpty())
        QMessageBox(QMessageBox::Warning, windowTitle(), problem, QMessageBox::Ok, this).exec();
}

void LayoutsDialog::Delete() {
    const QString name = Current();
    if (name.isEmpty())
        return;
    QMessageBox box(QMessageBox::Question, windowTitle(), tr("Delete the layout “%1”?").arg(name), QMessageBox::Cancel,
                    this);
    box.setTextFormat(Qt::PlainText);
    const QPushButton* doIt = box.addButton(tr("&Delete"), QMessageBox::DestructiveRole);
    box.exec();
    if (box.clickedButton() != doIt)
        return;
    m_layouts.Remove(name);
    Fill({});
}

} // namespace corvane::desktop

#include "moc_LayoutsDialog.cpp"
