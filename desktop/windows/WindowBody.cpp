#include "desktop/windows/WindowBody.h"

#include "desktop/windows/PageList.h"
#include "desktop/windows/PagePlace.h"
#include "desktop/windows/PageTabs.h"
#include "desktop/windows/WizardSteps.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr int nLongestTab = 32;       // characters; the rest is in the tool tip
constexpr QSize oMeasure(2000, 2000); // wider than any row of tabs or buttons
constexpr int nNarrowestPageBesideSteps = 300;

QString TabText(const QString& sCaption) {
    const QString sShort =
        sCaption.size() > nLongestTab ? sCaption.left(nLongestTab - 1).trimmed() + QChar(0x2026) : sCaption;
    return QString(sShort).replace('&', "&&");
}

// A layout that isn't on screen keeps the hints that it has once asked for.
void ForgetHints(QLayout& oLayout) {
    for (int i = 0; i < oLayout.count(); ++i)
        if (QLayout* pInner = oLayout.itemAt(i)->layout())
            ForgetHints(*pInner);
    oLayout.invalidate();
}

QFrame* NewLine(QFrame::Shape eShape) {
    auto* pLine = new QFrame;
    pLine->setFrameShape(eShape);
    pLine->setFrameShadow(QFrame::Sunken);
    return pLine;
}

} // namespace

WindowBody::WindowBody(const BodyOptions& oOptions, const std::vector<PageRoom>& aRooms, QWidget* pParent)
    : QWidget(pParent), m_oOptions(oOptions),
      m_pCommands(new CommandRow(oOptions.eType, oOptions.bWithApply, oOptions.bWithHelp)) {
    auto* pAll = new QVBoxLayout(this);
    pAll->setContentsMargins(0, 0, 0, 0);
    pAll->setSpacing(0);
    for (const auto& oRoom : aRooms)
        m_aMarks.push_back(oRoom.oMark);
    if (oOptions.eType == WindowTypeConstants::cvWizard)
        SetUpSteps(aRooms, pAll);
    else if (oOptions.bWithPageList)
        SetUpList(aRooms, pAll);
    else if (aRooms.size() > 1)
        SetUpTabs(aRooms, pAll);
    else
        SetUpSinglePage(aRooms, pAll);
    SetUpCommands(pAll);
}

PagePlace* WindowBody::NewPlace(const PageRoom& oRoom) {
    m_aPlaces.push_back(new PagePlace(oRoom.oSize, oRoom.bIsResizable, this));
    return m_aPlaces.back();
}

void WindowBody::SetUpTabs(const std::vector<PageRoom>& aRooms, QBoxLayout* pAll) {
    m_pTabs = new PageTabs;
    m_pTabs->setDocumentMode(m_oOptions.bIsChild);
    m_pTabs->setUsesScrollButtons(true);
    for (const auto& oRoom : aRooms) {
        const int iTab = m_pTabs->addTab(NewPlace(oRoom), TabText(oRoom.oMark.sCaption));
        MarkTab(iTab, oRoom.oMark);
    }
    connect(m_pTabs, &QTabWidget::currentChanged, this, [this](int iPage) {
        if (!m_bFollows)
            Q_EMIT PageChosen(iPage);
    });
    if (m_oOptions.bIsChild) {
        pAll->addWidget(m_pTabs, 1);
        return;
    }
    auto* pMargins = new QVBoxLayout; // with the style's margins
    pMargins->setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin),
                                 style()->pixelMetric(QStyle::PM_LayoutTopMargin),
                                 style()->pixelMetric(QStyle::PM_LayoutRightMargin), 0);
    pMargins->addWidget(m_pTabs);
    pAll->addLayout(pMargins, 1);
}

void WindowBody::SetUpSteps(const std::vector<PageRoom>& aRooms, QBoxLayout* pAll) {
    m_pSteps = new WizardSteps;
    m_pHeading = new QLabel;
    m_pHeading->setTextFormat(Qt::PlainText);
    m_pHeading->setWordWrap(true);
    QFont oFont = m_pHeading->font();
    oFont.setBold(true);
    oFont.setPointSizeF(oFont.pointSizeF() * 1.2);
    m_pHeading->setFont(oFont);
    m_pHeading->setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin),
                                   style()->pixelMetric(QStyle::PM_LayoutTopMargin),
                                   style()->pixelMetric(QStyle::PM_LayoutRightMargin), 0);
    m_pStack = new QStackedWidget;
    for (const auto& oRoom : aRooms) {
        m_pStack->addWidget(NewPlace(oRoom));
        m_pSteps->AddStep(oRoom.oMark);
    }
    connect(m_pSteps, &WizardSteps::StepChosen, this, &WindowBody::PageChosen);
    auto* pRight = new QVBoxLayout;
    pRight->setSpacing(0);
    pRight->addWidget(m_pHeading);
    pRight->addWidget(m_pStack, 1);
    auto* pSides = new QHBoxLayout;
    pSides->setSpacing(0);
    pSides->addWidget(m_pSteps);
    pSides->addWidget(NewLine(QFrame::VLine));
    pSides->addLayout(pRight, 1);
    pAll->addLayout(pSides, 1);
    pAll->addWidget(NewLine(QFrame::HLine));
    if (!m_aMarks.empty())
        ShowHeading(m_aMarks.front());
}

void WindowBody::SetUpList(const std::vector<PageRoom>& aRooms, QBoxLayout* pAll) {
    m_pList = new PageList;
    m_pStack = new QStackedWidget;
    for (const auto& oRoom : aRooms) {
        m_pStack->addWidget(NewPlace(oRoom));
        m_pList->AddPage(oRoom.oMark);
    }
    m_pList->SetCurrentPage(0);
    connect(m_pList, &PageList::PageChosen, this, &WindowBody::PageChosen);
    connect(m_pList, &PageList::TextsWanted, this, [this] {
        Q_EMIT AllPagesWanted();
        TellTexts();
    });
    auto* pSides = new QHBoxLayout;
    pSides->setSpacing(0);
    pSides->addWidget(m_pList);
    pSides->addWidget(m_pStack, 1);
    pAll->addLayout(pSides, 1);
}

void WindowBody::TellTexts() {
    for (std::size_t i = 0; i < m_aPlaces.size(); ++i) {
        QStringList aTexts;
        for (const auto* pLabel : m_aPlaces[i]->findChildren<QLabel*>())
            aTexts.append(pLabel->text().remove('&'));
        for (const auto* pButton : m_aPlaces[i]->findChildren<QAbstractButton*>())
            aTexts.append(pButton->text().remove('&'));
        for (const auto* pGroup : m_aPlaces[i]->findChildren<QGroupBox*>())
            aTexts.append(pGroup->title().remove('&'));
        m_pList->SetTexts(static_cast<int>(i), aTexts.join('\n'));
    }
}

void WindowBody::SetUpSinglePage(const std::vector<PageRoom>& aRooms, QBoxLayout* pAll) {
    m_pStack = new QStackedWidget;
    for (const auto& oRoom : aRooms)
        m_pStack->addWidget(NewPlace(oRoom));
    if (aRooms.empty()) {
        auto* pEmpty = new QLabel(tr("This window has no pages."));
        pEmpty->setAlignment(Qt::AlignCenter);
        pEmpty->setEnabled(false);
        m_pStack->addWidget(pEmpty);
    }
    pAll->addWidget(m_pStack, 1);
}

void WindowBody::SetUpCommands(QBoxLayout* pAll) {
    m_pFoot = new QWidget;
    auto* pFoot = new QVBoxLayout(m_pFoot);
    pFoot->addWidget(m_pCommands);
    pAll->addWidget(m_pFoot);
    m_pFoot->setVisible(m_oOptions.bWithCommands);
    connect(m_pCommands, &CommandRow::Chosen, this, &WindowBody::CommandChosen);
}

// Pages make their controls when they are first shown, and some later; all the same Tab goes from the pages' names into
// the page, and from there to the commands.
std::vector<QWidget*> WindowBody::TabStops() const {
    std::vector<QWidget*> aStops;
    std::vector<QWidget*> aCommands;
    for (QWidget* p = nextInFocusChain(); p != this; p = p->nextInFocusChain())
        if (isAncestorOf(p) && (p->focusPolicy() & Qt::TabFocus) && !p->focusProxy() && p->isVisibleTo(this) &&
            p->isEnabled())
            (m_pFoot->isAncestorOf(p) ? aCommands : aStops).push_back(p);
    aStops.insert(aStops.end(), aCommands.begin(), aCommands.end());
    return aStops;
}

bool WindowBody::focusNextPrevChild(bool bNext) {
    const std::vector<QWidget*> aStops = TabStops();
    const auto itNow = std::find(aStops.begin(), aStops.end(), window()->focusWidget());
    if (itNow == aStops.end())
        return QWidget::focusNextPrevChild(bNext);
    const auto nStep = bNext ? 1 : aStops.size() - 1;
    aStops[(static_cast<std::size_t>(itNow - aStops.begin()) + nStep) % aStops.size()]->setFocus(
        bNext ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool WindowBody::AreCommandsShown() const {
    return !m_pFoot->isHidden();
}

int WindowBody::ShowCommands() {
    if (AreCommandsShown())
        return 0;
    m_pFoot->show();
    m_oNonPageSize = QSize();
    return m_pFoot->sizeHint().height();
}

QSize WindowBody::NonPageSize() {
    if (m_aPlaces.empty())
        return sizeHint();
    if (m_oNonPageSize.isValid())
        return m_oNonPageSize;
    const auto fnPretend = [this](const QSize& oSize) {
        for (PagePlace* pPlace : m_aPlaces) {
            pPlace->Pretend(oSize);
            for (QWidget* p = pPlace->parentWidget(); p != this; p = p->parentWidget()) {
                if (p->layout())
                    p->layout()->invalidate();
                p->updateGeometry();
            }
        }
        ForgetHints(*layout());
    };
    ensurePolished();
    fnPretend(oMeasure);
    m_oNonPageSize = sizeHint() - oMeasure;
    if (m_pTabs) // whose own hint is a rough one
        m_oNonPageSize = sizeHint() - m_pTabs->sizeHint() + m_pTabs->NonPageSize();
    fnPretend(QSize());
    return m_oNonPageSize;
}

void WindowBody::ShowPage(int iPage) {
    m_bFollows = true;
    if (m_pTabs)
        m_pTabs->setCurrentIndex(iPage);
    else
        m_pStack->setCurrentIndex(iPage);
    m_bFollows = false;
    m_iCurrent = iPage;
    if (m_pList)
        m_pList->SetCurrentPage(iPage);
    if (m_pSteps) {
        m_pSteps->SetCurrentStep(iPage);
        ShowHeading(m_aMarks[static_cast<std::size_t>(iPage)]);
    }
}

// With the list of steps out of sight the heading says where one is.
void WindowBody::ShowHeading(const PageMark& oMark) {
    m_pHeading->setText(m_pSteps->isHidden()
                            ? tr("Step %1 of %2: %3").arg(m_iCurrent + 1).arg(m_aMarks.size()).arg(oMark.sCaption)
                            : oMark.sCaption);
}

void WindowBody::MarkPage(int iPage, const PageMark& oMark) {
    if (std::exchange(m_aMarks[static_cast<std::size_t>(iPage)], oMark) == oMark)
        return;
    if (m_pSteps)
        m_pSteps->SetStep(iPage, oMark);
    if (m_pList)
        m_pList->SetPage(iPage, oMark);
    if (m_pTabs)
        MarkTab(iPage, oMark);
}

void WindowBody::MarkTab(int iPage, const PageMark& oMark) {
    const QString sRemark = oMark.Remark();
    m_oNonPageSize = QSize(); // a sign may be higher than the text
    m_pTabs->setTabIcon(
        iPage, sRemark.isEmpty() ? QIcon() : style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, m_pTabs));
    m_pTabs->setTabToolTip(iPage, sRemark.isEmpty() ? oMark.sCaption : oMark.sCaption + "\n" + sRemark);
    m_pTabs->tabBar()->setAccessibleTabName(iPage, sRemark.isEmpty() ? oMark.sCaption
                                                                     : tr("%1. %2").arg(oMark.sCaption, sRemark));
}

void WindowBody::resizeEvent(QResizeEvent* pEvent) {
    QWidget::resizeEvent(pEvent);
    if (!m_pSteps || m_aMarks.empty())
        return;
    const bool bNarrow = width() < m_pSteps->sizeHint().width() + nNarrowestPageBesideSteps;
    if (m_pSteps->isHidden() != bNarrow) {
        m_pSteps->setHidden(bNarrow);
        ShowHeading(m_aMarks[static_cast<std::size_t>(m_iCurrent)]);
    }
}

bool WindowBody::ChoosesByKey(const QKeyEvent& oEvent) {
    const int nPages = static_cast<int>(m_aPlaces.size());
    const bool bControl = oEvent.modifiers() == Qt::ControlModifier;
    if (m_pTabs && bControl && (oEvent.key() == Qt::Key_PageUp || oEvent.key() == Qt::Key_PageDown)) {
        const int nStep = oEvent.key() == Qt::Key_PageDown ? 1 : nPages - 1;
        m_pTabs->setCurrentIndex((m_iCurrent + nStep) % nPages);
        return true;
    }
    if (oEvent.modifiers() & ~Qt::KeypadModifier)
        return false;
    switch (oEvent.key()) {
    case Qt::Key_Escape:
        return Chooses(StandardCommandConstants::cvCancel);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (auto* pButton = qobject_cast<QPushButton*>(focusWidget())) { // dialogs see to this themselves
            pButton->click();
            return true;
        }
        return Chooses(m_pCommands->Default());
    case Qt::Key_F1:
        return Chooses(StandardCommandConstants::cvHelp);
    default:
        return false;
    }
}

// In a child window that is a document, a table say, the keys belong to the page.
bool WindowBody::Chooses(std::optional<StandardCommandConstants> oCommand) {
    if (!oCommand || !m_pCommands->Button(*oCommand))
        return false;
    const bool bIsDocument = m_oOptions.bIsChild && m_oOptions.eType == WindowTypeConstants::cvWindow;
    if (oCommand != StandardCommandConstants::cvHelp && (bIsDocument || !AreCommandsShown()))
        return false;
    Q_EMIT CommandChosen(*oCommand);
    return true;
}

void WindowBody::keyPressEvent(QKeyEvent* pEvent) {
    if (ChoosesByKey(*pEvent))
        pEvent->accept();
    else
        QWidget::keyPressEvent(pEvent);
}

} // namespace corvane::desktop
