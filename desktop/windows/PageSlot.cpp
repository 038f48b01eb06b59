#include "desktop/windows/PageSlot.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "desktop/IPrintout.h"
#include "desktop/failures/PageName.h"
#include "desktop/guard/PluginCall.h"
#include "desktop/translation/ShownText.h"
#include "desktop/windows/EndedPage.h"
#include "desktop/windows/FailureView.h"
#include "desktop/windows/PagePlace.h"
#include "desktop/windows/QtFormPage.h"

#include <QString>
#include <exception>
#include <utility>

namespace corvane::desktop {

void PageSlot::Enter(const std::function<void(IPage&)>& call) const {
    const Ref<Object> pageObj = m_pageObj;
    const Ref<IPage> page = m_page;
    const Entering entering(pageObj);
    call(*page);
}

Ref<forms::FormModel> PageSlot::Form() const {
    const auto form = m_qtPage.TryAs<QtFormPage>();
    return form ? form->Model() : nullptr;
}

void PageSlot::Ask(const char* procedure, const std::function<void(IQtPage&)>& call) const {
    Enter([&](IPage&) {
        const Ref<IQtPage> qtPage = m_qtPage;
        try {
            call(*qtPage);
        } catch (...) {
            RaiseLogged(CorvaneMain::PlaceOf(m_pageDef, procedure), procedure);
        }
    });
}

void PageSlot::Create(const Ref<IWindowFormController>& controller) {
    try {
        const std::string& progID = m_pageDef->PageProgID();
        const Ref<QtFormPage> form = m_openForm ? m_openForm(m_pageDef) : nullptr;
        const Ref<Object> pageObj = form ? form->PageObj() : CurrentPlatform().oObjectFactory->Create(progID);
        const Ref<IPage> page = CorvaneMain::QueryPage(pageObj);
        const Ref<IQtPage> qtPage = form ? Ref<IQtPage>(form) : pageObj.TryAs<IQtPage>();
        if (!page || !qtPage)
            Fail(FailureNumber::TypeMismatch,
                 progID + " has no form and no widget for this program: draw a file Forms/" + progID +
                     ".ui, or let its class implement IQtPage beside IPageAccess and hand out a page",
                 "Creating the page");
        if (m_hasEnded)
            return; // its constructor has ended the window
        controller->PageInitialize(pageObj, m_pageDef);
        if (m_hasEnded) { // likewise, and the window has no end to report any more
            const Entering entering(pageObj);
            m_guard([&] { page->Terminate(nullptr); });
            return;
        }
        m_pageObj = pageObj;
        m_page = page;
        m_qtPage = qtPage;
    } catch (...) {
        m_failure = CurrentFailure();
        if (m_failure->Context.empty())
            AddPlace(*m_failure, CorvaneMain::PlaceOf(m_pageDef, "Create"));
        const auto& utilities = CurrentPlatform().oUtilities;
        utilities->LogError(utilities->AppName(), "WindowForm", "CreatePage", *m_failure, m_pageDef->Key(), false);
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
            const Ref<Object> pageObj = m_pageObj;
            QWidget* widget = nullptr;
            Ask("NewWidget", [&](IQtPage& page) {
                widget = page.NewWidget(place.ParentForPage());
                if (!widget && !m_hasEnded)
                    Fail(FailureNumber::ObjectNotSet, m_pageDef->PageProgID() + " returned no widget", "NewWidget");
            });
            if (!m_place || !widget)
                return; // it has ended its window
            // The widget may speak to its page as long as it is there.
            QObject::connect(widget, &QObject::destroyed, [pageObj] {});
            if (m_hasEnded)
                Silence(*widget);
            m_widget = widget;
            place.Fill(widget);
            return;
        } catch (...) {
            m_failure = CurrentFailure();
            m_isValid = true; // it doesn't hold the others back
            m_isChanged = false;
        }
    }
    if (m_place)
        place.Fill(new FailureView(ShownPage(m_pageDef->PageProgID(), m_pageDef->Caption()), *m_failure));
}

void PageSlot::Focus() {
    if (!m_widget || !IsAlive())
        return;
    QWidget* first = nullptr;
    m_guard([&] { Ask("FirstFocus", [&](IQtPage& page) { first = page.FirstFocus(); }); });
    if (m_hasEnded || !m_widget)
        return;
    for (QWidget* p = m_widget->nextInFocusChain(); !first && p != m_widget; p = p->nextInFocusChain())
        if ((p->focusPolicy() & Qt::TabFocus) && p->isEnabled() && m_widget->isAncestorOf(p) && !p->isHidden())
            first = p;
    if (first)
        first->setFocus(Qt::ActiveWindowFocusReason);
}

void PageSlot::Print(PagePlace& place, IPrintout& printout) {
    MakeWidget(place);
    bool isDone = false;
    if (m_widget && IsAlive())
        Ask("Print", [&](IQtPage& page) { isDone = page.Print(printout); });
    if (!isDone && (m_widget || m_place))
        printout.AddWidget(m_widget ? *m_widget : *m_place);
}

void PageSlot::End(const Ref<IWindowFormController>& controller) {
    m_hasEnded = true;
    if (!IsAlive())
        return;
    if (m_place)
        Silence(*m_place);
    const Ref<Object> pageObj = std::move(m_pageObj);
    m_page = nullptr;
    m_qtPage = nullptr;
    m_guard([&] { controller->PageTerminate(pageObj); });
}

Long PageSlot::HelpTopic() const {
    Long topic = -1;
    try {
        if (IsAlive())
            Ask("HelpTopic", [&](IQtPage& page) { topic = page.HelpTopic(); });
    } catch (...) {
        // It is in the log; it is asked too often to be shown.
    }
    return topic == -1 ? m_pageDef->HelpContextID() : topic;
}

void PageSlot::Click(StandardCommandConstants command) {
    Enter([=](IPage& page) { page.CommandClick(command); });
}

void PageSlot::Save() {
    Enter([](IPage& page) { page.Save(); });
}

void PageSlot::Ask() {
    if (!IsUsable())
        return;
    try {
        Enter([this](IPage& page) { m_isValid = page.IsValid(); });
        if (!IsAlive())
            return; // it has ended its window
        Ask("IsChanged", [this](IQtPage& page) { m_isChanged = page.IsChanged(); });
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
