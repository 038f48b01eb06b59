#include "desktop/windows/PageSlot.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Platform.h"
#include "desktop/translation/ShownText.h"
#include "desktop/windows/FailureView.h"
#include "desktop/windows/PagePlace.h"

#include <QString>
#include <exception>
#include <utility>

namespace corvane::desktop {

namespace {

void LogOf(const PageDef& oPageDef, const char* sProcedure, const Failure& oFailure) {
    const auto& oUtilities = CurrentPlatform().oUtilities;
    oUtilities->LogError(oUtilities->AppName(), "WindowForm", sProcedure, oFailure, oPageDef.Key(), false);
}

} // namespace

// In a catch block.
void PageSlot::Break(const char* sProcedure) {
    m_oFailure = CurrentFailure();
    LogOf(*m_oPageDef, sProcedure, *m_oFailure);
}

void PageSlot::Create(const Ref<IWindowFormController>& oController) {
    try {
        const std::string& sProgID = m_oPageDef->PageProgID();
        const Ref<Object> oPageObj = CurrentPlatform().oObjectFactory->Create(sProgID);
        const Ref<IPage> oPage = CorvaneMain::QueryPage(oPageObj);
        const Ref<IQtPage> oQtPage = oPageObj.TryAs<IQtPage>();
        if (!oPage || !oQtPage)
            Fail(FailureNumber::TypeMismatch,
                 sProgID + " has no widget for this program: its class must implement IQtPage beside IPageAccess and "
                           "hand out a page",
                 "Creating the page");
        oController->PageInitialize(oPageObj, m_oPageDef);
        m_oPageObj = oPageObj;
        m_oPage = oPage;
        m_oQtPage = oQtPage;
    } catch (...) {
        Break("CreatePage");
    }
}

void PageSlot::MakeWidget(PagePlace& oPlace) {
    if (m_bHasWidget)
        return;
    m_bHasWidget = true;
    if (IsUsable()) {
        try {
            const Entering oEntering(m_oPageObj);
            QWidget* pWidget = m_oQtPage->NewWidget(oPlace.ParentForPage());
            if (!pWidget)
                Fail(FailureNumber::ObjectNotSet, m_oPageDef->PageProgID() + " returned no widget", "NewWidget");
            // The widget may speak to its page as long as it is there.
            QObject::connect(pWidget, &QObject::destroyed, [oPageObj = m_oPageObj] {});
            m_pWidget = pWidget;
            oPlace.Fill(pWidget);
            return;
        } catch (...) {
            Break("NewWidget");
            m_bIsValid = true; // it doesn't hold the others back
            m_bIsChanged = false;
        }
    }
    oPlace.Fill(new FailureView(ShownPage(m_oPageDef->PageProgID(), m_oPageDef->Caption()), *m_oFailure));
}

void PageSlot::Focus() {
    if (!m_pWidget)
        return;
    QWidget* pFirst = nullptr;
    m_fnGuard([&] {
        const Entering oEntering(m_oPageObj);
        pFirst = m_oQtPage->FirstFocus();
    });
    for (QWidget* p = m_pWidget->nextInFocusChain(); !pFirst && p != m_pWidget; p = p->nextInFocusChain())
        if ((p->focusPolicy() & Qt::TabFocus) && p->isEnabled() && m_pWidget->isAncestorOf(p) && !p->isHidden())
            pFirst = p;
    if (pFirst)
        pFirst->setFocus(Qt::ActiveWindowFocusReason);
}

void PageSlot::End(const Ref<IWindowFormController>& oController) {
    if (!IsAlive())
        return;
    m_fnGuard([&] { oController->PageTerminate(m_oPageObj); });
    m_oPage = nullptr;
    m_oQtPage = nullptr;
    m_oPageObj = nullptr;
}

Long PageSlot::HelpTopic() const {
    Long lTopic = -1;
    try {
        const Entering oEntering(m_oPageObj);
        lTopic = m_oQtPage ? m_oQtPage->HelpTopic() : -1;
    } catch (...) {
        LogOf(*m_oPageDef, "HelpTopic", CurrentFailure()); // it is asked too often to be shown
    }
    return lTopic == -1 ? m_oPageDef->HelpContextID() : lTopic;
}

void PageSlot::Click(StandardCommandConstants eCommand) {
    const Entering oEntering(m_oPageObj);
    m_oPage->CommandClick(eCommand);
}

void PageSlot::Save() {
    const Entering oEntering(m_oPageObj);
    m_oPage->Save();
}

void PageSlot::Ask() {
    if (!IsUsable())
        return;
    try {
        const Entering oEntering(m_oPageObj);
        m_bIsValid = m_oPage->IsValid();
        m_bIsChanged = m_oQtPage->IsChanged();
        m_bIsAskedInVain = false;
    } catch (...) {
        m_bIsValid = false;
        m_bIsChanged = true;
        if (!std::exchange(m_bIsAskedInVain, true))
            m_fnGuard([oFailure = std::current_exception()] { std::rethrow_exception(oFailure); });
    }
}

PageMark PageSlot::Mark() const {
    PageMark oMark;
    oMark.sCaption = ShownPage(m_oPageDef->PageProgID(), m_oPageDef->Caption());
    oMark.bIsOptional = m_oPageDef->IsOptional();
    oMark.bIsBroken = IsBroken();
    oMark.bIsInvalid = IsUsable() && !IsPassable();
    return oMark;
}

} // namespace corvane::desktop
