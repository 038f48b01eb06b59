#include "desktop/windows/PageSlot.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Platform.h"
#include "desktop/failures/PageName.h"
#include "desktop/translation/ShownText.h"
#include "desktop/windows/EndedPage.h"
#include "desktop/windows/FailureView.h"
#include "desktop/windows/PagePlace.h"

#include <QString>
#include <exception>
#include <utility>

namespace corvane::desktop {

namespace {

void LogOf(const PageDef& pageDef, const char* procedure, const Failure& failure) {
    const auto& utilities = CurrentPlatform().oUtilities;
    utilities->LogError(utilities->AppName(), "WindowForm", procedure, failure, pageDef.Key(), false);
}

} // namespace

// In a catch block.
void PageSlot::Break(const char* procedure) {
    m_failure = CurrentFailure();
    LogOf(*m_pageDef, procedure, *m_failure);
}

void PageSlot::Create(const Ref<IWindowFormController>& controller) {
    try {
        const std::string& progID = m_pageDef->PageProgID();
        const Ref<Object> pageObj = CurrentPlatform().oObjectFactory->Create(progID);
        const Ref<IPage> page = CorvaneMain::QueryPage(pageObj);
        const Ref<IQtPage> qtPage = pageObj.TryAs<IQtPage>();
        if (!page || !qtPage)
            Fail(FailureNumber::TypeMismatch,
                 progID + " has no widget for this program: its class must implement IQtPage beside IPageAccess and "
                          "hand out a page",
                 "Creating the page");
        controller->PageInitialize(pageObj, m_pageDef);
        m_pageObj = pageObj;
        m_page = page;
        m_qtPage = qtPage;
    } catch (...) {
        Break("CreatePage");
    }
}

void PageSlot::MakeWidget(PagePlace& place) {
    if (m_hasWidget)
        return;
    m_hasWidget = true;
    m_place = &place;
    place.setProperty(pageNameProperty, QString::fromStdString(m_pageDef->PageProgID()));
    if (IsUsable()) {
        try {
            const Entering entering(m_pageObj);
            QWidget* widget = m_qtPage->NewWidget(place.ParentForPage());
            if (!widget)
                Fail(FailureNumber::ObjectNotSet, m_pageDef->PageProgID() + " returned no widget", "NewWidget");
            // The widget may speak to its page as long as it is there.
            QObject::connect(widget, &QObject::destroyed, [pageObj = m_pageObj] {});
            m_widget = widget;
            place.Fill(widget);
            return;
        } catch (...) {
            Break("NewWidget");
            m_isValid = true; // it doesn't hold the others back
            m_isChanged = false;
        }
    }
    place.Fill(new FailureView(ShownPage(m_pageDef->PageProgID(), m_pageDef->Caption()), *m_failure));
}

void PageSlot::Focus() {
    if (!m_widget)
        return;
    QWidget* first = nullptr;
    m_guard([&] {
        const Entering entering(m_pageObj);
        first = m_qtPage->FirstFocus();
    });
    for (QWidget* p = m_widget->nextInFocusChain(); !first && p != m_widget; p = p->nextInFocusChain())
        if ((p->focusPolicy() & Qt::TabFocus) && p->isEnabled() && m_widget->isAncestorOf(p) && !p->isHidden())
            first = p;
    if (first)
        first->setFocus(Qt::ActiveWindowFocusReason);
}

void PageSlot::End(const Ref<IWindowFormController>& controller) {
    if (!IsAlive())
        return;
    if (m_place)
        Silence(*m_place);
    m_guard([&] { controller->PageTerminate(m_pageObj); });
    m_page = nullptr;
    m_qtPage = nullptr;
    m_pageObj = nullptr;
}

Long PageSlot::HelpTopic() const {
    Long topic = -1;
    try {
        const Entering entering(m_pageObj);
        topic = m_qtPage ? m_qtPage->HelpTopic() : -1;
    } catch (...) {
        LogOf(*m_pageDef, "HelpTopic", CurrentFailure()); // it is asked too often to be shown
    }
    return topic == -1 ? m_pageDef->HelpContextID() : topic;
}

void PageSlot::Click(StandardCommandConstants command) {
    const Entering entering(m_pageObj);
    m_page->CommandClick(command);
}

void PageSlot::Save() {
    const Entering entering(m_pageObj);
    m_page->Save();
}

void PageSlot::Ask() {
    if (!IsUsable())
        return;
    try {
        const Entering entering(m_pageObj);
        m_isValid = m_page->IsValid();
        m_isChanged = m_qtPage->IsChanged();
        m_isAskedInVain = false;
    } catch (...) {
        m_isValid = false;
        m_isChanged = true;
        if (!std::exchange(m_isAskedInVain, true))
            m_guard([failure = std::current_exception()] { std::rethrow_exception(failure); });
    }
}

PageMark PageSlot::Mark() const {
    PageMark mark;
    mark.caption = ShownPage(m_pageDef->PageProgID(), m_pageDef->Caption());
    mark.isOptional = m_pageDef->IsOptional();
    mark.isBroken = IsBroken();
    mark.isInvalid = IsUsable() && !IsPassable();
    return mark;
}

} // namespace corvane::desktop
