#include "desktop/windows/FailureView.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

QLabel* SelectableLabel(const QString& sText) {
    auto* pLabel = new QLabel(sText);
    pLabel->setTextFormat(Qt::PlainText);
    pLabel->setWordWrap(true);
    pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return pLabel;
}

} // namespace

FailureView::FailureView(const QString& sPage, const Failure& oFailure, QWidget* pParent) : QWidget(pParent) {
    const QString sHeadline = tr("This page can't be shown");
    const QString sReason = QString::fromStdString(oFailure.Description);
    const QString sWhere = tr("Error %1 from %2").arg(oFailure.Number).arg(QString::fromStdString(oFailure.Source));
    m_sText = QStringList{tr("%1: %2").arg(sHeadline, sPage), sReason, sWhere}.join('\n');

    auto* pIcon = new QLabel;
    const int nIcon = style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
    pIcon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(nIcon));
    auto* pHeadline = SelectableLabel(sHeadline);
    QFont oBold = pHeadline->font();
    oBold.setBold(true);
    pHeadline->setFont(oBold);
    auto* pCopy = new QPushButton(tr("&Copy"));
    pCopy->setAutoDefault(false);
    pCopy->setAccessibleDescription(tr("Copies the error description to the clipboard"));
    connect(pCopy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(m_sText); });

    auto* pTexts = new QVBoxLayout;
    pTexts->addWidget(pHeadline);
    pTexts->addWidget(SelectableLabel(sReason));
    pTexts->addWidget(SelectableLabel(sWhere));
    pTexts->addWidget(pCopy, 0, Qt::AlignLeft);
    pTexts->addStretch();
    auto* pAll = new QHBoxLayout(this);
    pAll->addWidget(pIcon, 0, Qt::AlignTop);
    pAll->addLayout(pTexts, 1);
}

} // namespace corvane::desktop
