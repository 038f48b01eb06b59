#include "desktop/forms/RowsModel.h"

#include "desktop/forms/FormTexts.h"
#include "desktop/style/QtText.h"

#include <QApplication>
#include <QStyle>
#include <algorithm>
#include <limits>

namespace corvane::desktop {

namespace {

using forms::FieldKind;

constexpr qsizetype longText = 30; // which its column may cut off

QVariant AlignmentOf(const forms::ColumnDef& column) {
    const bool isNumber = column.kind == FieldKind::Integer || column.kind == FieldKind::Number || column.hasFigures;
    return QVariant::fromValue(Qt::Alignment(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeading)));
}

} // namespace

RowsModel::RowsModel(std::shared_ptr<FormContext> form, std::size_t field, QObject* parent)
    : QAbstractItemModel(parent), m_form(std::move(form)), m_field(field),
      m_isTree(m_form->Model().Field(field).kind == FieldKind::Tree), m_columns(m_form->Model().Columns(field)) {}

bool RowsModel::ShowRows() {
    if (m_isTree) {
        if (!ReadTree())
            ShowCells();
        return false;
    }
    const bool hasOthers = TakeColumns();
    const std::size_t most = std::numeric_limits<int>::max();
    const int rows = static_cast<int>(std::min(m_form->Model().RowCount(m_field), most));
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
    ShowCells();
    return hasOthers;
}

bool RowsModel::TakeColumns() {
    const std::vector<forms::ColumnDef>& columns = m_form->Model().Columns(m_field);
    if (std::equal(
            columns.begin(), columns.end(), m_columns.begin(), m_columns.end(),
            [](const auto& a, const auto& b) { return a.title.text == b.title.text && a.hasFigures == b.hasFigures; }))
        return false;
    beginResetModel();
    m_columns = columns;
    m_rows = 0;
    endResetModel();
    return true;
}

void RowsModel::ShowCells() {
    if (m_isTree)
        return Q_EMIT layoutChanged();
    if (m_rows > 0 && columnCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, columnCount() - 1));
}

// False when the tree has the same branches as before.
bool RowsModel::ReadTree() {
    const forms::FormModel& model = m_form->Model();
    std::vector<Branch> branches(model.RowCount(m_field));
    std::vector<std::size_t> roots;
    std::vector<std::size_t> above; // the latest row of each depth
    for (std::size_t row = 0; row < branches.size(); ++row) {
        const auto depth = std::min(static_cast<std::size_t>(std::max(0, model.Depth(m_field, row))), above.size());
        above.resize(depth);
        auto& siblings = depth == 0 ? roots : branches[above.back()].children;
        branches[row].parent = depth == 0 ? forms::none : above.back();
        branches[row].place = static_cast<int>(siblings.size());
        siblings.push_back(row);
        above.push_back(row);
    }
    const bool isSame = branches.size() == m_branches.size() &&
                        std::equal(branches.begin(), branches.end(), m_branches.begin(),
                                   [](const Branch& a, const Branch& b) { return a.parent == b.parent; });
    if (isSame)
        return false;
    beginResetModel();
    m_branches = std::move(branches);
    m_roots = std::move(roots);
    endResetModel();
    return true;
}

std::size_t RowsModel::RowOf(const QModelIndex& index) const {
    return index.isValid() ? static_cast<std::size_t>(index.internalId()) : forms::none;
}

QModelIndex RowsModel::IndexOf(std::size_t row) const {
    if (m_isTree)
        return row < m_branches.size() ? createIndex(m_branches[row].place, 0, static_cast<quintptr>(row))
                                       : QModelIndex();
    return row < static_cast<std::size_t>(m_rows) ? index(static_cast<int>(row), 0) : QModelIndex();
}

const std::vector<std::size_t>& RowsModel::ChildrenOf(const QModelIndex& parent) const {
    return parent.isValid() ? m_branches[RowOf(parent)].children : m_roots;
}

QModelIndex RowsModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column < 0 || row >= rowCount(parent) || column >= columnCount())
        return {};
    const std::size_t id = m_isTree ? ChildrenOf(parent)[static_cast<std::size_t>(row)] : static_cast<std::size_t>(row);
    return createIndex(row, column, static_cast<quintptr>(id));
}

QModelIndex RowsModel::parent(const QModelIndex& child) const {
    if (!m_isTree || !child.isValid())
        return {};
    return IndexOf(m_branches[RowOf(child)].parent);
}

int RowsModel::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0)
        return 0;
    if (m_isTree)
        return static_cast<int>(ChildrenOf(parent).size());
    return parent.isValid() ? 0 : m_rows;
}

int RowsModel::columnCount(const QModelIndex& /*parent*/) const {
    return static_cast<int>(m_columns.size());
}

// A class that fails at a cell leaves it empty: a view asks for it again and again.
QVariant RowsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    try {
        return CellData(index, role);
    } catch (...) {
        return {};
    }
}

QVariant RowsModel::CellData(const QModelIndex& index, int role) const {
    const forms::FormModel& model = m_form->Model();
    const forms::ColumnDef& column = Column(index.column());
    const std::size_t row = RowOf(index);
    const auto columnIndex = static_cast<std::size_t>(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: {
        if (column.kind == FieldKind::Boolean)
            return {};
        const std::string text = model.CellText(m_field, row, columnIndex);
        if (column.kind == FieldKind::Choice)
            for (const auto& choice : column.choices)
                if (choice.value == text)
                    return Text(forms::PlainText(choice.label.text));
        return ShownValue(column.kind, text);
    }
    case Qt::CheckStateRole:
        if (column.kind != FieldKind::Boolean)
            return {};
        return model.CellText(m_field, row, columnIndex) == "true" ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
        return AlignmentOf(column);
    case Qt::DecorationRole:
        if (model.CellProblem(m_field, row, columnIndex))
            return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
        return {};
    case Qt::ToolTipRole:
        if (QString shown = CellData(index, Qt::DisplayRole).toString();
            shown.size() > longText && !model.CellProblem(m_field, row, columnIndex))
            return shown;
        [[fallthrough]];
    case Qt::AccessibleDescriptionRole:
        return ShownProblem(model.CellProblem(m_field, row, columnIndex));
    default:
        return {};
    }
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return Text(Column(section).title.text);
    return role == Qt::TextAlignmentRole ? AlignmentOf(Column(section)) : QVariant();
}

Qt::ItemFlags RowsModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (m_form->Model().IsCellEditable(m_field, static_cast<std::size_t>(index.column())))
        flags |= Column(index.column()).kind == FieldKind::Boolean ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
    return flags;
}

bool RowsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || (role != Qt::EditRole && role != Qt::CheckStateRole))
        return false;
    const forms::ColumnDef& column = Column(index.column());
    const std::size_t row = RowOf(index);
    const auto columnIndex = static_cast<std::size_t>(index.column());
    const std::string text = role == Qt::CheckStateRole ? (value.toInt() == Qt::Checked ? "true" : "false")
                                                        : TypedValue(column.kind, value.toString());
    forms::FieldDef cell; // what a cell takes, so that users read why it doesn't
    cell.kind = column.kind;
    cell.decimals = column.decimals;
    forms::Problem problem;
    if (!forms::ReadValue(cell, column.choices, text, problem)) {
        Q_EMIT Refused(index, ShownProblem(problem));
        return false;
    }
    const auto form = m_form; // what comes of it may end this
    form->Do({FormAct::What::Cell, m_field, text, row, columnIndex}, [form, field = m_field, row, columnIndex, text] {
        form->Model().EnterCell(field, row, columnIndex, text);
    });
    return true;
}

} // namespace corvane::desktop

#include "moc_RowsModel.cpp"
