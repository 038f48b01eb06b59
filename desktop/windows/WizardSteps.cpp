#include "desktop/windows/WizardSteps.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int stepCharacters = 28;

// Takes the space of a sign, so that the texts are below one another.
QIcon NoSign(const QSize& size) {
    QPixmap empty(size);
    empty.fill(Qt::transparent);
    return empty;
}

} // namespace

QString PageMark::Remark() const {
    if (isBroken)
        return QCoreApplication::translate("PageMark", "This page can't be shown.");
    if (isInvalid)
        return QCoreApplication::translate("PageMark", "This page has missing or invalid entries.");
    return {};
}

WizardSteps::WizardSteps(QWidget* parent) : QListWidget(parent) {
    setAccessibleName(tr("Steps"));
    setFrameShape(QFrame::NoFrame);
    setWordWrap(true);
    setTextElideMode(Qt::ElideNone);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSelectionMode(QAbstractItemView::SingleSelection);
    viewport()->setAutoFillBackground(false);
    setSpacing(fontMetrics().height() / 6);
    const int sign = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    setIconSize({sign, sign});
    const int margin = fontMetrics().height() / 3;
    setViewportMargins(margin, margin, margin, margin);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Expanding);
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { Q_EMIT StepChosen(row(item)); });
    connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) { Q_EMIT StepChosen(row(item)); });
}

QSize WizardSteps::sizeHint() const {
    return {fontMetrics().averageCharWidth() * stepCharacters, fontMetrics().height() * 6};
}

void WizardSteps::AddStep(const PageMark& mark) {
    addItem(new QListWidgetItem);
    SetStep(count() - 1, mark);
}

// The signs are in the text as well, so that nothing depends on colours or pictures.
void WizardSteps::SetStep(int step, const PageMark& mark) {
    QListWidgetItem* listWidgetItem = item(step);
    QString text = tr("%1. %2").arg(step + 1).arg(mark.caption);
    if (mark.isOptional)
        text += tr(" (optional)");
    QStyle::StandardPixmap sign = QStyle::SP_CustomBase;
    if (mark.isBroken || mark.isInvalid)
        sign = QStyle::SP_MessageBoxWarning;
    else if (mark.isDone)
        sign = QStyle::SP_DialogApplyButton;
    listWidgetItem->setText(text);
    listWidgetItem->setIcon(sign == QStyle::SP_CustomBase ? NoSign(iconSize())
                                                          : style()->standardIcon(sign, nullptr, this));
    listWidgetItem->setToolTip(mark.Remark());
    listWidgetItem->setData(Qt::AccessibleDescriptionRole, mark.Remark());
    listWidgetItem->setFlags(mark.isReachable ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags);
}

void WizardSteps::SetCurrentStep(int step) {
    for (int i = 0; i < count(); ++i) {
        QFont stepFont = font();
        stepFont.setBold(i == step);
        item(i)->setFont(stepFont);
    }
    setCurrentRow(step);
    doItemsLayout(); // a bold text may need another line
}

} // namespace corvane::desktop

#include "moc_WizardSteps.cpp"
