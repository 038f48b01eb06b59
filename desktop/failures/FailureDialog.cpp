#include "desktop/failures/FailureDialog.h"

#include "analysis/Print.h"
#include "desktop/problems/ProblemList.h"
#include "desktop/style/SelectableLabel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFile>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QUrl>
#include <QVBoxLayout>

namespace corvane::desktop {

FailureDialog::FailureDialog(const FailureTexts& texts, std::vector<check::Finding> findings,
                             const QString& servicesFolder, const QString& logFile, QWidget* parent)
    : QDialog(parent), m_texts(texts), m_findings(std::move(findings)), m_details(new QPlainTextEdit) {
    setWindowTitle(texts.isForUser && parent ? parent->window()->windowTitle().remove("[*]") : tr("An Error Occurred"));
    auto* icon = new QLabel;
    const int iconSize = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(iconSize));

    auto* headline = NewSelectableLabel(texts.headline);
    QFont bold = headline->font();
    bold.setBold(true);
    headline->setFont(bold);
    auto* textsLayout = new QVBoxLayout;
    textsLayout->addWidget(headline);
    if (!texts.isForUser)
        textsLayout->addWidget(NewSelectableLabel(texts.where));
    if (!texts.advice.isEmpty())
        textsLayout->addWidget(NewSelectableLabel(texts.advice));

    m_details->setReadOnly(true);
    m_details->setPlainText(texts.details);
    m_details->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_details->setAccessibleName(tr("Details"));
    m_details->setTabChangesFocus(true);
    m_details->hide();

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* details = buttons->addButton(tr("&Details"), QDialogButtonBox::ActionRole);
    details->setCheckable(true);
    connect(details, &QPushButton::toggled, this, [this](bool on) {
        m_details->setVisible(on);
        adjustSize();
    });
    auto* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this, &FailureDialog::Copy);
    if (!logFile.isEmpty() && QFile::exists(logFile)) {
        auto* log = buttons->addButton(tr("Open &Log"), QDialogButtonBox::ActionRole);
        log->setToolTip(logFile);
        connect(log, &QPushButton::clicked, this,
                [logFile] { QDesktopServices::openUrl(QUrl::fromLocalFile(logFile)); });
    }
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (QAbstractButton* button : buttons->buttons())
        if (auto* push = qobject_cast<QPushButton*>(button))
            push->setAutoDefault(false);
    QPushButton* close = buttons->button(QDialogButtonBox::Close);
    close->setDefault(true);

    auto* top = new QHBoxLayout;
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addLayout(textsLayout, 1);
    auto* all = new QVBoxLayout(this);
    all->addLayout(top);
    if (!m_findings.empty())
        AddFindings(*all, servicesFolder);
    all->addWidget(m_details, 1);
    all->addWidget(buttons);
    close->setFocus(); // Enter closes
    setMinimumWidth(fontMetrics().averageCharWidth() * (m_findings.empty() ? 72 : 110));
}

// The file may have more mistakes than the one at which it failed, and each has its remedy.
void FailureDialog::AddFindings(QVBoxLayout& layout, const QString& servicesFolder) {
    auto* list = new ProblemList;
    list->setFrameShape(QFrame::StyledPanel);
    list->Show(m_findings, servicesFolder);
    list->MakeFirstErrorCurrent();
    auto* label = new QLabel(tr("All &problems in this file:"));
    label->setBuddy(list);
    layout.addWidget(label);
    layout.addWidget(list, 2);
}

void FailureDialog::Copy() const {
    QStringList texts{m_texts.headline, m_texts.where, m_texts.advice, m_texts.details};
    if (!m_findings.empty())
        texts.append(QString::fromStdString(check::AsText(m_findings, false)));
    texts.removeAll(QString());
    QApplication::clipboard()->setText(texts.join("\n"));
}

} // namespace corvane::desktop

#include "moc_FailureDialog.cpp"
