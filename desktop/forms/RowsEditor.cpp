#include "desktop/forms/RowsEditor.h"

#include "desktop/forms/RowsModel.h"
#include "desktop/style/QtText.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolTip>
#include <QTreeView>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int rowsMeasured = 100;
constexpr int tableRowsShown = 6;
constexpr int widestColumn = 40; // characters

// A column of choices has space for the box in which one of its cells is edited.
int LeastColumnWidth(const forms::ColumnDef& column, const QWidget& view) {
    const QFontMetrics metrics = view.fontMetrics();
    int widest = 0;
    for (const auto& choice : column.choices)
        widest = std::max(widest, metrics.horizontalAdvance(Text(forms::PlainText(choice.label.text))));
    return widest == 0 ? 0 : widest + 3 * metrics.height();
}

// A cell with choices is edited in a box of them; any other one in a line, as a text.
class CellDelegate final : public QStyledItemDelegate {
public:
    CellDelegate(const forms::FieldDef& table, QObject* parent) : QStyledItemDelegate(parent), m_table(table) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        const forms::ColumnDef& column = m_table.columns[static_cast<std::size_t>(index.column())];
        if (column.kind != forms::FieldKind::Choice || column.choices.empty())
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto* box = new QComboBox(parent);
        for (const auto& choice : column.choices)
            box->addItem(Text(forms::PlainText(choice.label.text)), Text(choice.value));
        return box;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (auto* box = qobject_cast<QComboBox*>(editor))
            box->setCurrentText(index.data(Qt::EditRole).toString());
        else
            QStyledItemDelegate::setEditorData(editor, index);
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        if (const auto* box = qobject_cast<QComboBox*>(editor)) {
            if (box->currentIndex() >= 0 && box->currentText() != index.data(Qt::EditRole).toString())
                model->setData(index, box->currentData(), Qt::EditRole);
        } else if (editor->property("text").toString() != index.data(Qt::EditRole).toString()) {
            QStyledItemDelegate::setModelData(editor, model, index);
        }
    }

private:
    const forms::FieldDef& m_table; // of the model, which the form's context keeps
};

} // namespace

RowsEditor::RowsEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent)
    : FieldEditor(form, field), m_rows(new RowsModel(std::move(form), field, this)) {
    if (Def().kind == forms::FieldKind::Tree) {
        auto* tree = new QTreeView(parent);
        tree->setUniformRowHeights(true);
        m_view = tree;
    } else {
        auto* table = new QTableView(parent);
        table->verticalHeader()->hide();
        table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() * 3 / 2);
        table->horizontalHeader()->setHighlightSections(false);
        table->setWordWrap(false);
        m_view = table;
    }
    m_view->setModel(m_rows);
    m_view->setItemDelegate(new CellDelegate(Def(), m_view));
    m_view->setTabKeyNavigation(false);
    m_view->setAlternatingRowColors(true);
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    if (IsText()) {
        m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    } else {
        m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
        m_view->setSelectionMode(Def().selection == forms::RowSelection::None ? QAbstractItemView::NoSelection
                                                                              : QAbstractItemView::SingleSelection);
    }
    m_view->setMinimumHeight(m_view->fontMetrics().lineSpacing() * tableRowsShown);
    Header()->setStretchLastSection(!IsText());
    Header()->setResizeContentsPrecision(rowsMeasured);
    Compose(m_view, Growth::Fills);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (this->Form().IsShowing() || IsText())
            return;
        const QModelIndexList chosen = m_view->selectionModel()->selectedRows();
        const std::size_t row = m_rows->RowOf(chosen.value(0));
        const auto shared = SharedForm();
        shared->Do({FormAct::What::Row, Field(), {}, row},
                   [shared, index = Field(), row] { shared->Model().SelectRow(index, row); });
    });
    connect(m_rows, &RowsModel::Refused, this, [this](const QModelIndex& index, const QString& problem) {
        const QRect cell = m_view->visualRect(index);
        QToolTip::showText(m_view->viewport()->mapToGlobal(cell.bottomLeft()), problem, m_view, cell);
    });
    RowsEditor::ShowRows();
}

QHeaderView* RowsEditor::Header() const {
    if (const auto* tree = qobject_cast<QTreeView*>(m_view))
        return tree->header();
    return static_cast<QTableView*>(m_view.data())->horizontalHeader();
}

void RowsEditor::ShowRows() {
    if (!m_view)
        return;
    const FormContext::Showing showing(Form());
    if (m_rows->ShowRows())
        m_isFitted = false;
    FitColumns();
    if (!IsText())
        ShowSelection();
}

void RowsEditor::ShowCells() {
    const FormContext::Showing showing(Form());
    if (m_rows)
        m_rows->ShowCells();
}

void RowsEditor::ShowSelection() {
    if (!m_view)
        return;
    const FormContext::Showing showing(Form());
    const QModelIndex index = m_rows->IndexOf(Model().SelectedRow(Field()));
    QItemSelectionModel* selection = m_view->selectionModel();
    if (!index.isValid()) {
        selection->clearSelection();
    } else if (!selection->isRowSelected(index.row(), index.parent())) {
        selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        m_view->scrollTo(index);
    }
}

// Once there is something to measure; afterwards the widths are the user's.
void RowsEditor::FitColumns() {
    if (m_isFitted || m_rows->rowCount() == 0)
        return;
    m_isFitted = true;
    QHeaderView* header = Header();
    const int most = m_view->fontMetrics().averageCharWidth() * widestColumn;
    if (auto* tree = qobject_cast<QTreeView*>(m_view))
        for (int column = 0; column < header->count(); ++column)
            tree->resizeColumnToContents(column);
    else
        static_cast<QTableView*>(m_view.data())->resizeColumnsToContents();
    // Numbers and times are often longest in the last row, which is too far away to be measured with the first ones.
    const int lastRow = m_rows->rowCount() - 1;
    const int fitted = header->stretchLastSection() ? header->count() - 1 : header->count();
    for (int column = 0; column < fitted; ++column) {
        const int last = m_view->sizeHintForIndex(m_rows->index(lastRow, column)).width() + 1; // and the grid
        const int least = LeastColumnWidth(Model().Columns(Field())[static_cast<std::size_t>(column)], *m_view);
        header->resizeSection(column, std::max(least, std::min(std::max(header->sectionSize(column), last), most)));
    }
}

// What is selected, a line for each row with tabs between the cells; of a text without a selection all, with its
// titles.
void RowsEditor::Copy() const {
    QModelIndexList cells = m_view->selectionModel()->selectedIndexes();
    std::sort(cells.begin(), cells.end());
    QString text;
    if (cells.isEmpty() && IsText()) {
        for (int column = 0; column < m_rows->columnCount(); ++column)
            text += (column > 0 ? "\t" : "") + m_rows->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        for (int row = 0; row < m_rows->rowCount(); ++row)
            for (int column = 0; column < m_rows->columnCount(); ++column)
                cells.append(m_rows->index(row, column));
        text += '\n';
    }
    for (qsizetype i = 0; i < cells.size(); ++i) {
        const bool isFirst = i == 0 || cells[i].row() != cells[i - 1].row();
        text += isFirst ? (i > 0 ? "\n" : "") : "\t";
        const QVariant check = cells[i].data(Qt::CheckStateRole);
        text += check.isValid() ? QVariant(check.toInt() == Qt::Checked).toString() : cells[i].data().toString();
    }
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text + '\n');
}

// The key means the cells while the keyboard is here, whatever the menus do with it.
bool RowsEditor::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (!isKey || !m_view || watched != m_view || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy))
        return FieldEditor::eventFilter(watched, event);
    event->accept();
    if (event->type() == QEvent::KeyPress)
        Copy();
    return true;
}

} // namespace corvane::desktop

#include "moc_RowsEditor.cpp"
