// What a page puts on paper, from top to bottom: it breaks onto as many sheets as it needs. The host adds head, foot
// and page numbers. A page gets it in IQtPage::Print, and must not keep it.
#pragma once

#include <QString>
#include <functional>

class QAbstractItemModel;
class QPainter;
class QRectF;
class QSizeF;
class QTextDocument;
class QWidget;

namespace corvane::desktop {

class IPrintout {
public:
    virtual ~IPrintout() = default;

    // Stays on the sheet of what follows.
    virtual void AddHeading(const QString& text) = 0;
    // Plain, with "\n" between lines; long lines are wrapped.
    virtual void AddText(const QString& text) = 0;
    // Breaks between lines.
    virtual void AddDocument(const QTextDocument& document) = 0;
    // A label and its value, on a line of their own.
    virtual void AddField(const QString& label, const QString& value) = 0;
    // All rows below the root of the model, with the headers of its columns on each sheet. Columns for which there is
    // no space follow behind the last row. The model must not change before Print has returned.
    virtual void AddTable(const QAbstractItemModel& model) = 0;
    // Stays on one sheet: as wide as the paper or as high, whichever is less, in the proportions of that size. The
    // function draws into the rectangle, in the painter's own units, once or more often until the printing ends: what
    // it refers to must live that long.
    virtual void AddPicture(const QSizeF& size, const std::function<void(QPainter&, const QRectF&)>& draw) = 0;
    // All that the widget holds, also what isn't in sight: tables, lists and texts whole, the rest as pictures.
    virtual void AddWidget(QWidget& widget) = 0;
    // What follows begins on a new sheet.
    virtual void StartSheet() = 0;
};

} // namespace corvane::desktop
