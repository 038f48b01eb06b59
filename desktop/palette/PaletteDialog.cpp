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

constexpr int nMargin = 6;

// A command in two lines: its caption with its keys, and below in small where it stands, whose it is, why it can't be
// chosen.
class CommandDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& oOption, const QModelIndex&) const override {
        return {200, oOption.fontMetrics.height() + QFontMetrics(Small(oOption.font)).height() + 2 * nMargin};
    }

    void paint(QPainter* pPainter, const QStyleOptionViewItem& oOption, const QModelIndex& oIndex) const override {
        const auto* pModel = static_cast<const PaletteModel*>(oIndex.model());
        const PaletteEntry& oEntry = pModel->EntryAt(oIndex.row());
        const bool bSelected = oOption.state.testFlag(QStyle::State_Selected);
        pPainter->save();
        if (bSelected)
            pPainter->fillRect(oOption.rect, oOption.palette.brush(QPalette::Active, QPalette::Highlight));
        const QColor oGround =
            oOption.palette.color(QPalette::Active, bSelected ? QPalette::Highlight : QPalette::Base);
        // What can't be chosen is paler, but must be read: it says why.
        QColor oColor = oOption.palette.color(QPalette::Active, bSelected ? QPalette::HighlightedText : QPalette::Text);
        if (!oEntry.sWhyNot.isEmpty() && !bSelected)
            oColor = Paler(oColor, oGround, 0.65F);
        pPainter->setPen(oColor);
        const QRect oRect = oOption.rect.adjusted(2 * nMargin, nMargin, -2 * nMargin, -nMargin);
        const QFontMetrics oMetrics(oOption.font);
        const int nKeys = oEntry.sKeys.isEmpty() ? 0 : oMetrics.horizontalAdvance(oEntry.sKeys) + nMargin;
        const QRect oTop(oRect.left(), oRect.top(), oRect.width(), oMetrics.height());
        pPainter->setFont(oOption.font);
        pPainter->drawText(oTop, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, oEntry.sKeys);
        DrawCaption(pPainter, oTop.adjusted(0, 0, -nKeys, 0), oOption.font, oEntry.sCaption,
                    pModel->MarkedAt(oIndex.row()));
        pPainter->setPen(Paler(oColor, oGround, 0.8F));
        pPainter->setFont(Small(oOption.font));
        QStringList aParts{oEntry.sPath, oEntry.sOwner, oEntry.sWhyNot};
        aParts.removeAll(QString());
        const QRect oBelow(oRect.left(), oTop.bottom() + 1, oRect.width(), oRect.bottom() - oTop.bottom());
        pPainter->drawText(oBelow, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                           pPainter->fontMetrics().elidedText(aParts.join("  ·  "), Qt::ElideRight, oBelow.width()));
        pPainter->restore();
    }

private:
    static QFont Small(QFont oFont) {
        oFont.setPointSizeF(oFont.pointSizeF() * 0.85);
        return oFont;
    }

    static void DrawCaption(QPainter* pPainter, const QRect& oRect, const QFont& oFont, const QString& sCaption,
                            const std::vector<qsizetype>& aMarked) {
        const QString sShown = QFontMetrics(oFont).elidedText(sCaption, Qt::ElideRight, oRect.width());
        QTextLayout oLayout(sShown, oFont);
        QList<QTextLayout::FormatRange> aFormats;
        for (const qsizetype i : aMarked) {
            QTextLayout::FormatRange oRange;
            oRange.start = static_cast<int>(i);
            oRange.length = 1;
            oRange.format.setFontWeight(QFont::Bold);
            oRange.format.setFontUnderline(true);
            aFormats.append(oRange);
        }
        oLayout.setFormats(aFormats);
        oLayout.beginLayout();
        oLayout.createLine();
        oLayout.endLayout();
        oLayout.draw(pPainter, oRect.topLeft());
    }
};

} // namespace

PaletteDialog::PaletteDialog(std::vector<PaletteEntry> aEntries, ToolFunction fnChoose, ToolFunction fnExplain,
                             QWidget* pParent)
    : QDialog(pParent, Qt::Dialog | Qt::FramelessWindowHint), m_pModel(new PaletteModel(std::move(aEntries), this)),
      m_fnChoose(std::move(fnChoose)), m_fnExplain(std::move(fnExplain)), m_pField(new QLineEdit(this)),
      m_pList(new QListView(this)), m_pStatus(new QLabel(this)) {
    setWindowTitle(tr("Command Palette"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_pField->setPlaceholderText(tr("Type a few letters of a command"));
    m_pField->setAccessibleName(tr("Command"));
    AddClearButton(*m_pField);
    m_pField->installEventFilter(this);
    m_pList->setModel(m_pModel);
    m_pList->setItemDelegate(new CommandDelegate(m_pList));
    m_pList->setUniformItemSizes(true);
    m_pList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pList->setFocusPolicy(Qt::NoFocus); // the keys stay with the field
    m_pList->setAccessibleName(tr("Commands"));
    m_pList->setFrameShape(QFrame::NoFrame);
    m_pStatus->setTextFormat(Qt::PlainText);
    m_pStatus->setWordWrap(true);
    m_pStatus->setAccessibleName(tr("About the command"));
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(m_pField);
    pLayout->addWidget(m_pList, 1);
    pLayout->addWidget(m_pStatus);
    connect(m_pField, &QLineEdit::textChanged, this, &PaletteDialog::Search);
    connect(m_pList, &QListView::clicked, this, [this] { Choose(false); });
    connect(m_pList->selectionModel(), &QItemSelectionModel::currentChanged, this, &PaletteDialog::ShowStatus);
    Search({});
}

void PaletteDialog::showEvent(QShowEvent* pEvent) {
    QDialog::showEvent(pEvent);
    if (const QWidget* pOver = parentWidget()) {
        const int nWidth = std::min(640, pOver->width() - 40);
        const int nHeight = std::min(440, pOver->height() - 40);
        resize(nWidth, nHeight);
        move(pOver->mapToGlobal(QPoint((pOver->width() - nWidth) / 2, (pOver->height() - nHeight) / 5)));
    }
    m_pField->setFocus();
}

// Who turns to another window has thought better of it.
void PaletteDialog::changeEvent(QEvent* pEvent) {
    QDialog::changeEvent(pEvent);
    if (pEvent->type() == QEvent::ActivationChange && isVisible() && !isActiveWindow())
        QTimer::singleShot(0, this, &QDialog::reject);
}

void PaletteDialog::Search(const QString& sTyped) {
    m_pModel->SetTyped(sTyped);
    if (m_pModel->rowCount() > 0)
        m_pList->setCurrentIndex(m_pModel->index(0));
    ShowStatus();
}

void PaletteDialog::ShowStatus() {
    const QModelIndex oCurrent = m_pList->currentIndex();
    if (!oCurrent.isValid()) {
        m_pStatus->setText(m_pModel->EntryCount() == 0 ? tr("This application has no commands yet.")
                                                       : tr("No command contains these letters in this order."));
        return;
    }
    const PaletteEntry& oEntry = m_pModel->EntryAt(oCurrent.row());
    m_pStatus->setText(oEntry.sWhyNot.isEmpty() ? oEntry.sDescription : tr("Unavailable: %1.").arg(oEntry.sWhyNot));
}

void PaletteDialog::Choose(bool bExplain) {
    const QModelIndex oCurrent = m_pList->currentIndex();
    if (!oCurrent.isValid())
        return;
    const PaletteEntry& oEntry = m_pModel->EntryAt(oCurrent.row());
    if (!bExplain && !oEntry.sWhyNot.isEmpty()) {
        QApplication::beep();
        ShowStatus();
        return;
    }
    // The command may open a dialog of its own, so this one goes first.
    QMetaObject::invokeMethod(
        parentWidget() ? static_cast<QObject*>(parentWidget()) : qApp,
        [fnAct = bExplain ? m_fnExplain : m_fnChoose, oTool = oEntry.oTool] { fnAct(oTool); }, Qt::QueuedConnection);
    accept();
}

bool PaletteDialog::eventFilter(QObject* pWatched, QEvent* pEvent) {
    if (pWatched != m_pField || pEvent->type() != QEvent::KeyPress)
        return QDialog::eventFilter(pWatched, pEvent);
    auto* pKey = static_cast<QKeyEvent*>(pEvent);
    switch (pKey->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QApplication::sendEvent(m_pList, pEvent);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Choose(pKey->modifiers().testFlags(Qt::ControlModifier | Qt::AltModifier));
        return true;
    default:
        return false;
    }
}

} // namespace corvane::desktop
