#include "desktop/style/WidgetText.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTextDocumentFragment>
#include <algorithm>
#include <vector>

namespace corvane::desktop {

namespace {

constexpr int rowsWritten = 20;

QStringList Headings(const QAbstractItemModel& model) {
    QStringList headings;
    for (int column = 0; column < model.columnCount(); ++column)
        headings.append(model.headerData(column, Qt::Horizontal).toString().simplified());
    return headings;
}

QStringList RowOf(const QAbstractItemModel& model, int row) {
    QStringList cells;
    for (int column = 0; column < model.columnCount(); ++column)
        cells.append(model.index(row, column).data().toString().simplified());
    return cells;
}

// In columns of equal width, numbers to the right.
QStringList TableLines(const QAbstractItemModel& model) {
    std::vector<QStringList> rows{Headings(model)};
    for (int row = 0; row < std::min(model.rowCount(), rowsWritten); ++row)
        rows.push_back(RowOf(model, row));
    QStringList lines;
    for (const QStringList& row : rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i) {
            qsizetype width = 0;
            for (const QStringList& other : rows)
                width = std::max(width, other[i].size());
            const auto last = rows.back()[i];
            bool isNumber = false;
            last.toDouble(&isNumber);
            line += (i > 0 ? "  " : "") + (isNumber ? row[i].rightJustified(width) : row[i].leftJustified(width));
        }
        while (line.endsWith(' '))
            line.chop(1);
        lines.append(line);
    }
    if (model.rowCount() > rowsWritten)
        lines.append(QString("(%1 more rows)").arg(model.rowCount() - rowsWritten));
    lines.removeAll(QString());
    return lines;
}

// Empty for a widget that isn't read by itself.
QStringList LinesOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        const QString text = Qt::mightBeRichText(label->text())
                                 ? QTextDocumentFragment::fromHtml(label->text()).toPlainText()
                                 : label->text();
        return QString(text).remove('&').split('\n', Qt::SkipEmptyParts);
    }
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget))
        return view->model() ? TableLines(*view->model()) : QStringList();
    if (const auto* box = qobject_cast<const QComboBox*>(&widget))
        return {"[" + box->currentText() + "]"};
    if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(&widget))
        return {"[" + spin->text() + "]"};
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget))
        return {"[" + edit->text() + "]"};
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        if (const QString text = button->text().remove('&'); !text.isEmpty())
            return {button->isCheckable() ? (button->isChecked() ? "(x) " : "( ) ") + text : "<" + text + ">"};
    return {};
}

void Collect(const QWidget& widget, const std::string& indent, std::string& text) {
    if (widget.isHidden() || qobject_cast<const QHeaderView*>(&widget))
        return;
    const QStringList lines = LinesOf(widget);
    for (const QString& line : lines)
        text += indent + line.toStdString() + "\n";
    if (!lines.isEmpty())
        return;
    for (const auto* child : widget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        Collect(*child, indent, text);
}

} // namespace

std::string WidgetAsText(const QWidget& widget, const std::string& indent) {
    std::string text;
    Collect(widget, indent, text);
    return text;
}

} // namespace corvane::desktop
