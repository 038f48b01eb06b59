#include "desktop/palette/PaletteDialog.h"

#include "desktop/style/ClearButton.h"
#include "desktop/style/Contrast.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <QTimer>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

constexpr int dialogMargin = 6;

// A command in two lines: its caption with its keys, and below in small where it is, whose it is, why it can't be
// chosen.
class CommandDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {200, option.fontMetrics.height() + QFontMetrics(Small(option.font)).height() + 2 * dialogMargin};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const auto* model = static_cast<const PaletteModel*>(index.model());
        const PaletteEntry& entry = model->EntryAt(index.row());
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        if (selected)
            painter->fillRect(option.rect, option.palette.brush(QPalette::Active, QPalette::Highlight));
        const QColor ground = option.palette.color(QPalette::Active, selected ? QPalette::Highlight : QPalette::Base);
        // What can't be chosen is paler, but must be read: it says why.
        QColor color = option.palette.color(QPalette::Active, selected ? QPalette::HighlightedText : QPalette::Text);
        if (!entry.whyNot.isEmpty() && !selected)
            color = Paler(color, ground, 0.65F);
        painter->setPen(color);
        const QRect rect = option.rect.adjusted(2 * dialogMargin, dialogMargin, -2 * dialogMargin, -dialogMargin);
        const QFontMetrics metrics(option.font);
        const int keys = entry.keys.isEmpty() ? 0 : metrics.horizontalAdvance(entry.keys) + dialogMargin;
        const QRect top(rect.left(), rect.top(), rect.width(), metrics.height());
        painter->setFont(option.font);
        painter->drawText(top, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, entry.keys);
        DrawCaption(painter, top.adjusted(0, 0, -keys, 0), option.font, entry.caption, model->MarkedAt(index.row()));
        painter->setPen(Paler(color, ground, 0.8F));
        painter->setFont(Small(option.font));
        QStringList parts{entry.path, entry.owner, entry.whyNot};
        parts.removeAll(QString());
        const QRect below(rect.left(), top.bottom() + 1, rect.width(), rect.bottom() - top.bottom());
        painter->drawText(below, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          painter->fontMetrics().elidedText(parts.join("  ·  "), Qt::ElideRight, below.width()));
        painter->restore();
    }

private:
    static QFont Small(QFont font) {
        font.setPointSizeF(font.pointSizeF() * 0.85);
        return font;
    }

    static void DrawCaption(QPainter* painter, const QRect& rect, const QFont& font, const QString& caption,
                            const std::vector<qsizetype>& marked) {
        const QString shown = QFontMetrics(font).elidedText(caption, Qt::ElideRight, rect.width());
        QTextLayout layout(shown, font);
        QList<QTextLayout::FormatRange> formats;
        for (const qsizetype i : marked) {
            QTextLayout::FormatRange range;
            range.start = static_cast<int>(i);
            range.length = 1;
            range.format.setFontWeight(QFont::Bold);
            range.format.setFontUnderline(true);
            formats.append(range);
        }
        layout.setFormats(formats);
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        layout.draw(painter, rect.topLeft());
    }
};

} // namespace

PaletteDialog::PaletteDialog(std::vector<PaletteEntry> entries, ToolFunction choose, ToolFunction explain,
                             QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), m_model(new PaletteModel(std::move(entries), this)),
      m_choose(std::move(choose)), m_explain(std::move(explain)), m_field(new QLineEdit(this)),
      m_list(new QListView(this)), m_status(new QLabel(this)) {
    setWindowTitle(tr("Command Palette"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_field->setPlaceholderText(tr("Type a few letters of a command"));
    m_field->setAccessibleName(tr("Command"));
    AddClearButton(*m_field);
    m_field->installEventFilter(this);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new CommandDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setFocusPolicy(Qt::NoFocus); // the keys stay with the field
    m_list->setAccessibleName(tr("Commands"));
    m_list->setFrameShape(QFrame::NoFrame);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    m_status->setAccessibleName(tr("About the command"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_field);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_status);
    connect(m_field, &QLineEdit::textChanged, this, &PaletteDialog::Search);
    connect(m_list, &QListView::clicked, this, [this] { Choose(false); });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &PaletteDialog::ShowStatus);
    Search({});
}

void PaletteDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (const QWidget* over = parentWidget()) {
        const int width = std::min(640, over->width() - 40);
        const int height = std::min(440, over->height() - 40);
        resize(width, height);
        move(over->mapToGlobal(QPoint((over->width() - width) / 2, (over->height() - height) / 5)));
    }
    m_field->setFocus();
}

// Who turns to another window has cancelled.
void PaletteDialog::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isVisible() && !isActiveWindow())
        QTimer::singleShot(0, this, &QDialog::reject);
}

void PaletteDialog::Search(const QString& typed) {
    m_model->SetTyped(typed);
    if (m_model->rowCount() > 0)
        m_list->setCurrentIndex(m_model->index(0));
    ShowStatus();
}

void PaletteDialog::ShowStatus() {
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid()) {
        m_status->setText(m_model->EntryCount() == 0 ? tr("This application has no commands yet.")
                                                     : tr("No command contains these letters in this order."));
        return;
    }
    const PaletteEntry& entry = m_model->EntryAt(current.row());
    m_status->setText(entry.whyNot.isEmpty() ? entry.description
                      : entry.whyNotIsAdvice ? entry.whyNot + "."
                                             : tr("Unavailable: %1.").arg(entry.whyNot));
}

void PaletteDialog::Choose(bool explain) {
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid())
        return;
    const PaletteEntry& entry = m_model->EntryAt(current.row());
    if (!explain && !entry.whyNot.isEmpty()) {
        QApplication::beep();
        ShowStatus();
        return;
    }
    // The command may open a dialog of its own, so this one goes first.
    QMetaObject::invokeMethod(
        parentWidget() ? static_cast<QObject*>(parentWidget()) : qApp,
        [act = explain ? m_explain : m_choose, tool = entry.tool] { act(tool); }, Qt::QueuedConnection);
    accept();
}

bool PaletteDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_field || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QApplication::sendEvent(m_list, event);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Choose(key->modifiers().testFlags(Qt::ControlModifier | Qt::AltModifier));
        return true;
    default:
        return false;
    }
}

} // namespace corvane::desktop

#include "moc_PaletteDialog.cpp"
