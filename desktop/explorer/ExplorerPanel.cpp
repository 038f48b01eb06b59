#include "desktop/explorer/ExplorerPanel.h"

#include "desktop/translation/ShownText.h"

#include <QLabel>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

// At 96 pixels an inch, which is what a logical pixel means.
constexpr int TwipsPerPixel = 15;

void LogFailure(const std::function<void()>& fnCall) {
    try {
        fnCall();
    } catch (...) {
        const Failure oFailure = CurrentFailure();
        qWarning("Failure %d: %s", oFailure.Number, oFailure.Description.c_str());
    }
}

// A caption is no place for mnemonics.
QString TabText(QString sCaption) {
    return sCaption.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

ExplorerPanel::ExplorerPanel(Ref<PanelForm> oForm, GuardFunction fnGuard, QWidget* pParent)
    : QWidget(pParent), m_oForm(std::move(oForm)), m_fnGuard(fnGuard ? std::move(fnGuard) : LogFailure),
      m_pTabBar(new QTabBar(this)), m_pStack(new QStackedWidget(this)),
      m_pEmpty(NewMessageLabel(tr("The explorer is empty. Items appear here when the application provides them."),
                               m_pStack)) {
    m_pTabBar->setDocumentMode(true);
    m_pTabBar->setExpanding(false);
    m_pTabBar->setDrawBase(true);
    m_pTabBar->setElideMode(Qt::ElideRight);
    m_pTabBar->setUsesScrollButtons(true);
    m_pTabBar->setAccessibleName(tr("Explorer tabs"));
    m_pStack->addWidget(m_pEmpty);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addWidget(m_pTabBar);
    pLayout->addWidget(m_pStack, 1);

    for (const Ref<Object>& oControl : *m_oForm->Controls()) {
        if (const auto oStrip = oControl.TryAs<TabStrip>())
            m_oStrip = oStrip;
        AddPage(oControl);
    }
    m_oForm_ControlAdded = m_oForm->ControlAdded.Subscribe([this](const Ref<Object>& oControl) { AddPage(oControl); });
    if (m_oStrip)
        m_oStrip_Changed = m_oStrip->Changed.Subscribe([this] { Strip_Changed(); });
    connect(m_pTabBar, &QTabBar::currentChanged, this, &ExplorerPanel::TabBar_CurrentChanged);
    ShowStrip();
}

ExplorerPage* ExplorerPanel::Page(int iTab) const {
    return iTab >= 0 && iTab < static_cast<int>(m_aPages.size()) ? m_aPages[static_cast<std::size_t>(iTab)] : nullptr;
}

ExplorerPage* ExplorerPanel::CurrentPage() const {
    return qobject_cast<ExplorerPage*>(m_pStack->currentWidget());
}

void ExplorerPanel::AddPage(const Ref<Object>& oControl) {
    const auto oTreeView = oControl.TryAs<TreeView>();
    if (!oTreeView)
        return;
    auto* pPage = new ExplorerPage(oTreeView, m_pIcons, m_fnGuard, m_pStack);
    connect(pPage->Tree(), &ExplorerTree::PopupPlace, this, &ExplorerPanel::PopupPlace);
    m_pStack->addWidget(pPage);
    m_aPages.push_back(pPage);
    Strip_Changed();
}

// Setting up writes each caption on its own; the tabs are drawn once.
void ExplorerPanel::Strip_Changed() {
    if (m_bScheduled)
        return;
    m_bScheduled = true;
    QMetaObject::invokeMethod(this, &ExplorerPanel::ShowStrip, Qt::QueuedConnection);
}

void ExplorerPanel::ShowStrip() {
    m_bScheduled = false;
    const QScopedValueRollback oFollows(m_bFollowsModel, true);
    const int nTabs = m_oStrip ? m_oStrip->Tabs() : 0;
    while (m_pTabBar->count() > nTabs)
        m_pTabBar->removeTab(m_pTabBar->count() - 1);
    while (m_pTabBar->count() < nTabs)
        m_pTabBar->addTab({});
    for (int i = 0; i < nTabs; ++i) {
        const QString sCaption = ShownTab(m_oStrip->CaptionOf(i));
        const QString sText = TabText(sCaption);
        if (m_pTabBar->tabText(i) != sText) {
            m_pTabBar->setTabText(i, sText);
            m_pTabBar->setTabToolTip(i, sCaption.toHtmlEscaped());
        }
    }
    const int iCurrent = m_oStrip ? m_oStrip->Tab() : 0;
    if (nTabs > 0)
        m_pTabBar->setCurrentIndex(iCurrent);
    m_pTabBar->setVisible(nTabs > 0);
    ExplorerPage* pPage = nTabs > 0 || !m_oStrip ? Page(iCurrent) : nullptr;
    m_pStack->setCurrentWidget(pPage ? static_cast<QWidget*>(pPage) : m_pEmpty);
}

void ExplorerPanel::TabBar_CurrentChanged(int iTab) {
    if (m_bFollowsModel || !m_oStrip || iTab < 0)
        return;
    m_fnGuard([oStrip = m_oStrip, iTab] { oStrip->ChooseTab(iTab); });
    ShowStrip();
}

void ExplorerPanel::resizeEvent(QResizeEvent* pEvent) {
    QWidget::resizeEvent(pEvent);
    if (m_oStrip)
        m_oStrip->SetBounds(0, static_cast<Single>(width() * TwipsPerPixel),
                            static_cast<Single>(height() * TwipsPerPixel));
    m_fnGuard([oForm = m_oForm] { oForm->Resize.Raise(); });
}

} // namespace corvane::desktop
