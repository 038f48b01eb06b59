#include "desktop/windows/FailureView.h"

#include "desktop/style/SelectableLabel.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace corvane::desktop {

FailureView::FailureView(const QString& page, const Failure& failure, QWidget* parent) : QWidget(parent) {
    const QString headlineText = tr("This page can't be shown");
    const QString reason = QString::fromStdString(failure.Description);
    QString where = tr("Error %1 from %2").arg(failure.Number).arg(QString::fromStdString(failure.Source));
    if (!failure.Context.empty())
        where += "\n" + QString::fromStdString(failure.Context);
    m_text = QStringList{tr("%1: %2").arg(headlineText, page), reason, where}.join('\n');

    auto* icon = new QLabel;
    const int iconSize = style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(iconSize));
    auto* headline = NewSelectableLabel(headlineText);
    QFont bold = headline->font();
    bold.setBold(true);
    headline->setFont(bold);
    auto* copy = new QPushButton(tr("&Copy"));
    copy->setAutoDefault(false);
    copy->setAccessibleDescription(tr("Copies the error description to the clipboard"));
    connect(copy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(m_text); });

    auto* texts = new QVBoxLayout;
    texts->addWidget(headline);
    texts->addWidget(NewSelectableLabel(reason));
    texts->addWidget(NewSelectableLabel(where));
    texts->addWidget(copy, 0, Qt::AlignLeft);
    texts->addStretch();
    auto* all = new QHBoxLayout(this);
    all->addWidget(icon, 0, Qt::AlignTop);
    all->addLayout(texts, 1);
}

} // namespace corvane::desktop

#include "moc_FailureView.cpp"
