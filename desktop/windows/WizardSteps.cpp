#include "desktop/windows/WizardSteps.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int nCharactersWide = 28;

// Takes the room of a sign, so that the texts stand below one another.
QIcon NoSign(const QSize& oSize) {
    QPixmap oNothing(oSize);
    oNothing.fill(Qt::transparent);
    return oNothing;
}

} // namespace

QString PageMark::Remark() const {
    if (bIsBroken)
        return QCoreApplication::translate("PageMark", "This page can't be shown.");
    if (bIsInvalid)
        return QCoreApplication::translate("PageMark", "This page has missing or invalid entries.");
    return {};
}

WizardSteps::WizardSteps(QWidget* pParent) : QListWidget(pParent) {
    setAccessibleName(tr("Steps"));
    setFrameShape(QFrame::NoFrame);
    setWordWrap(true);
    setTextElideMode(Qt::ElideNone);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSelectionMode(QAbstractItemView::SingleSelection);
    viewport()->setAutoFillBackground(false);
    setSpacing(fontMetrics().height() / 6);
    const int nSign = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    setIconSize({nSign, nSign});
    const int nMargin = fontMetrics().height() / 3;
    setViewportMargins(nMargin, nMargin, nMargin, nMargin);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Expanding);
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* pItem) { Q_EMIT StepChosen(row(pItem)); });
    connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem* pItem) { Q_EMIT StepChosen(row(pItem)); });
}

QSize WizardSteps::sizeHint() const {
    return {fontMetrics().averageCharWidth() * nCharactersWide, fontMetrics().height() * 6};
}

void WizardSteps::AddStep(const PageMark& oMark) {
    addItem(new QListWidgetItem);
    SetStep(count() - 1, oMark);
}

// The signs stand in the text as well, so that nothing depends on colours or pictures.
void WizardSteps::SetStep(int iStep, const PageMark& oMark) {
    QListWidgetItem* pItem = item(iStep);
    QString sText = tr("%1. %2").arg(iStep + 1).arg(oMark.sCaption);
    if (oMark.bIsOptional)
        sText += tr(" (optional)");
    QStyle::StandardPixmap eSign = QStyle::SP_CustomBase;
    if (oMark.bIsBroken || oMark.bIsInvalid)
        eSign = QStyle::SP_MessageBoxWarning;
    else if (oMark.bIsDone)
        eSign = QStyle::SP_DialogApplyButton;
    pItem->setText(sText);
    pItem->setIcon(eSign == QStyle::SP_CustomBase ? NoSign(iconSize()) : style()->standardIcon(eSign, nullptr, this));
    pItem->setToolTip(oMark.Remark());
    pItem->setData(Qt::AccessibleDescriptionRole, oMark.Remark());
    pItem->setFlags(oMark.bIsReachable ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags);
}

void WizardSteps::SetCurrentStep(int iStep) {
    for (int i = 0; i < count(); ++i) {
        QFont oFont = font();
        oFont.setBold(i == iStep);
        item(i)->setFont(oFont);
    }
    setCurrentRow(iStep);
    doItemsLayout(); // a bold text may need another line
}

} // namespace corvane::desktop
