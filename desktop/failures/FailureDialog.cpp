#include "desktop/failures/FailureDialog.h"

#include "analysis/Print.h"
#include "desktop/problems/ProblemList.h"

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
#include <algorithm>

namespace corvane::desktop {

namespace {

QLabel* SelectableLabel(const QString& sText) {
    auto* pLabel = new QLabel(sText);
    pLabel->setWordWrap(true);
    pLabel->setTextFormat(Qt::PlainText);
    pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return pLabel;
}

} // namespace

FailureDialog::FailureDialog(const FailureTexts& oTexts, std::vector<check::Finding> aFindings,
                             const QString& sServicesFolder, const QString& sLogFile, QWidget* pParent)
    : QDialog(pParent), m_oTexts(oTexts), m_aFindings(std::move(aFindings)), m_pDetails(new QPlainTextEdit) {
    setWindowTitle(oTexts.bIsForPerson && pParent ? pParent->window()->windowTitle().remove("[*]")
                                                  : tr("An Error Occurred"));
    auto* pIcon = new QLabel;
    const int nIcon = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    pIcon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(nIcon));

    auto* pHeadline = SelectableLabel(oTexts.sHeadline);
    QFont oBold = pHeadline->font();
    oBold.setBold(true);
    pHeadline->setFont(oBold);
    auto* pTexts = new QVBoxLayout;
    pTexts->addWidget(pHeadline);
    if (!oTexts.bIsForPerson)
        pTexts->addWidget(SelectableLabel(oTexts.sWhere));
    if (!oTexts.sAdvice.isEmpty())
        pTexts->addWidget(SelectableLabel(oTexts.sAdvice));

    m_pDetails->setReadOnly(true);
    m_pDetails->setPlainText(oTexts.sDetails);
    m_pDetails->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_pDetails->setAccessibleName(tr("Details"));
    m_pDetails->setTabChangesFocus(true);
    m_pDetails->hide();

    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* pDetails = pButtons->addButton(tr("&Details"), QDialogButtonBox::ActionRole);
    pDetails->setCheckable(true);
    connect(pDetails, &QPushButton::toggled, this, [this](bool bOn) {
        m_pDetails->setVisible(bOn);
        adjustSize();
    });
    auto* pCopy = pButtons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    connect(pCopy, &QPushButton::clicked, this, &FailureDialog::Copy);
    if (!sLogFile.isEmpty() && QFile::exists(sLogFile)) {
        auto* pLog = pButtons->addButton(tr("Open &Log"), QDialogButtonBox::ActionRole);
        pLog->setToolTip(sLogFile);
        connect(pLog, &QPushButton::clicked, this,
                [sLogFile] { QDesktopServices::openUrl(QUrl::fromLocalFile(sLogFile)); });
    }
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (QAbstractButton* pButton : pButtons->buttons())
        if (auto* pPush = qobject_cast<QPushButton*>(pButton))
            pPush->setAutoDefault(false);
    QPushButton* pClose = pButtons->button(QDialogButtonBox::Close);
    pClose->setDefault(true);

    auto* pTop = new QHBoxLayout;
    pTop->addWidget(pIcon, 0, Qt::AlignTop);
    pTop->addLayout(pTexts, 1);
    auto* pAll = new QVBoxLayout(this);
    pAll->addLayout(pTop);
    if (!m_aFindings.empty())
        AddFindings(*pAll, sServicesFolder);
    pAll->addWidget(m_pDetails, 1);
    pAll->addWidget(pButtons);
    pClose->setFocus(); // Enter closes
    setMinimumWidth(fontMetrics().averageCharWidth() * (m_aFindings.empty() ? 72 : 110));
}

// The file may have more mistakes than the one at which it failed, and each has its cure.
void FailureDialog::AddFindings(QVBoxLayout& oLayout, const QString& sServicesFolder) {
    auto* pList = new ProblemList;
    pList->setFrameShape(QFrame::StyledPanel);
    pList->Show(m_aFindings, sServicesFolder);
    // Warnings in front of it aren't why the file is left out.
    const auto itError = std::find_if(m_aFindings.begin(), m_aFindings.end(), [](const check::Finding& oFinding) {
        return check::TextOf(oFinding.eRule).eSeverity == check::Severity::Error;
    });
    if (itError != m_aFindings.end())
        pList->setCurrentItem(pList->topLevelItem(static_cast<int>(itError - m_aFindings.begin())), 0,
                              QItemSelectionModel::NoUpdate); // chosen lines alone would be copied
    auto* pLabel = new QLabel(tr("All &problems in this file:"));
    pLabel->setBuddy(pList);
    oLayout.addWidget(pLabel);
    oLayout.addWidget(pList, 2);
}

void FailureDialog::Copy() const {
    QStringList aTexts{m_oTexts.sHeadline, m_oTexts.sWhere, m_oTexts.sAdvice, m_oTexts.sDetails};
    if (!m_aFindings.empty())
        aTexts.append(QString::fromStdString(check::AsText(m_aFindings, false)));
    aTexts.removeAll(QString());
    QApplication::clipboard()->setText(aTexts.join("\n"));
}

} // namespace corvane::desktop
