#include "desktop/printing/WidgetContent.h"

#include "desktop/printing/Printout.h"
#include "desktop/printing/TablePart.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScrollArea>
#include <QTabWidget>
#include <QTextEdit>
#include <algorithm>
#include <vector>

namespace corvane::desktop {

namespace {

// What scrolls, or isn't all in sight: it has to be opened up.
bool OpensUp(const QWidget& widget) {
    return qobject_cast<const QAbstractScrollArea*>(&widget) || qobject_cast<const QTabWidget*>(&widget);
}

bool HoldsSuch(const QWidget& widget) {
    const auto children = widget.findChildren<QWidget*>();
    return std::any_of(children.begin(), children.end(),
                       [&](const QWidget* child) { return OpensUp(*child) && child->isVisibleTo(&widget); });
}

bool IsButton(const QWidget* widget) {
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    return button && !button->isCheckable();
}

std::vector<QWidget*> ChildrenFromAbove(const QWidget& widget) {
    std::vector<QWidget*> children;
    for (auto* child : widget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (child->isVisibleTo(&widget) && !child->isWindow())
            children.push_back(child);
    std::stable_sort(children.begin(), children.end(), [](const QWidget* a, const QWidget* b) {
        return a->y() != b->y() ? a->y() < b->y() : a->x() < b->x();
    });
    return children;
}

// The children one below the other: neighbours that have nothing to open up share a picture.
void AddChildren(QWidget& widget, Printout& printout) {
    QRect strip;
    bool isWorthIt = false;
    const auto flush = [&] {
        if (isWorthIt)
            AddWidgetPicture(widget, strip, printout);
        strip = {};
        isWorthIt = false;
    };
    for (QWidget* child : ChildrenFromAbove(widget)) {
        if (OpensUp(*child) || HoldsSuch(*child)) {
            flush();
            AddContent(*child, printout);
            continue;
        }
        strip |= child->geometry();
        isWorthIt = isWorthIt || !IsButton(child);
    }
    flush();
}

} // namespace

void AddWidgetPicture(QWidget& widget, const QRect& part, IPrintout& printout) {
    if (part.isEmpty())
        return;
    printout.AddPicture(part.size(), [place = QPointer(&widget), part](QPainter& painter, const QRectF& target) {
        if (!place)
            return;
        painter.save();
        painter.translate(target.topLeft());
        painter.scale(target.width() / part.width(), target.height() / part.height());
        place->render(&painter, QPoint(), part, QWidget::DrawWindowBackground | QWidget::DrawChildren);
        painter.restore();
    });
}

void AddContent(QWidget& widget, Printout& printout) {
    if (const auto* view = qobject_cast<QAbstractItemView*>(&widget)) {
        if (view->model())
            printout.Add(std::make_unique<TablePart>(*view));
    } else if (const auto* text = qobject_cast<QTextEdit*>(&widget)) {
        printout.AddDocument(*text->document());
    } else if (const auto* plain = qobject_cast<QPlainTextEdit*>(&widget)) {
        printout.AddText(plain->toPlainText());
    } else if (const auto* area = qobject_cast<QScrollArea*>(&widget)) {
        if (area->widget())
            AddContent(*area->widget(), printout);
    } else if (const auto* tabs = qobject_cast<QTabWidget*>(&widget)) {
        for (int i = 0; i < tabs->count(); ++i) {
            QString title = tabs->tabText(i);
            printout.AddHeading(title.remove('&'));
            AddContent(*tabs->widget(i), printout);
        }
    } else if (HoldsSuch(widget)) {
        AddChildren(widget, printout);
    } else {
        AddWidgetPicture(widget, widget.rect(), printout);
    }
}

} // namespace corvane::desktop
