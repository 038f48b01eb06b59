// One page of a window's form: the plug-in's object, its widget, and what it last said of itself. A page that fails
// stays in its place as a failure, and the others work. Whatever a page is asked or notified of, it may end its window
// then; the slot stays, and answers for a page that has ended.
#pragma once

#include "corvane/services/PageDef.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/IWindowFormController.h"
#include "desktop/IQtPage.h"
#include "desktop/guard/Guard.h"
#include "desktop/windows/PageMark.h"
#include "desktop/windows/WindowHost.h"

#include <QPointer>
#include <QWidget>
#include <functional>
#include <optional>

namespace corvane::forms {
class FormModel;
}

namespace corvane::desktop {

class PagePlace;

class PageSlot final {
public:
    PageSlot(Ref<corvane::PageDef> pageDef, Guard guard, OpenFormFunction openForm)
        : m_pageDef(std::move(pageDef)), m_guard(std::move(guard)), m_openForm(std::move(openForm)) {}

    // Creates the page's object and reports it. Never fails: a failure is logged and kept.
    void Create(const Ref<IWindowFormController>& controller);
    // Makes the widget in its place, or shows there why it can't be, once.
    void MakeWidget(PagePlace& place);
    [[nodiscard]] bool HasWidget() const { return m_hasWidget; }
    // Puts the keyboard on the page's first control.
    void Focus();
    // Adds what the page shows, or why it shows nothing. Makes its widget first, if need be.
    void Print(PagePlace& place, IPrintout& printout);
    // Reports the page's end if it was reported to live; a failure is shown. The widget goes with the frame, and sends
    // the page nothing any more.
    void End(const Ref<IWindowFormController>& controller);

    [[nodiscard]] const Ref<corvane::PageDef>& PageDef() const { return m_pageDef; }
    [[nodiscard]] const Ref<Object>& PageObj() const { return m_pageObj; } // nothing for one that doesn't live
    [[nodiscard]] const Ref<IPage>& Page() const { return m_page; }
    [[nodiscard]] Ref<forms::FormModel> Form() const; // nothing for a page without a form
    [[nodiscard]] bool IsAlive() const { return !!m_page; }
    [[nodiscard]] bool IsBroken() const { return m_failure.has_value(); }
    [[nodiscard]] const std::optional<Failure>& WhyBroken() const { return m_failure; }
    [[nodiscard]] bool IsUsable() const { return IsAlive() && !IsBroken(); }
    [[nodiscard]] Long HelpTopic() const; // the definition's when the page fails to say; 0 for none

    // Of a page that lives.
    void Click(StandardCommandConstants command);
    void Save();

    // Asks the page again. A page that fails to answer counts as not valid, and as changed; the failure is shown once
    // until it answers again.
    void Ask();
    [[nodiscard]] bool IsValid() const { return m_isValid; }
    [[nodiscard]] bool IsChanged() const { return m_isChanged; }
    // Valid, or to be left out: optional and without anything entered.
    [[nodiscard]] bool IsPassable() const { return m_isValid || (m_pageDef->IsOptional() && !m_isChanged); }
    [[nodiscard]] PageMark Mark() const;

private:
    // Holds the page while it is called, as it may end then.
    void Enter(const std::function<void(IPage&)>& call) const;
    // The same for what the host alone asks of it; a failure says whose it was.
    void Ask(const char* procedure, const std::function<void(IQtPage&)>& call) const;

    Ref<corvane::PageDef> m_pageDef;
    Guard m_guard;
    OpenFormFunction m_openForm;
    Ref<Object> m_pageObj;
    Ref<IPage> m_page;
    Ref<IQtPage> m_qtPage;
    std::optional<Failure> m_failure;
    QPointer<QWidget> m_widget; // the page's own
    QPointer<QWidget> m_place;  // where that is, also when it came to nothing half-way
    bool m_hasWidget = false;   // that or the failure's
    bool m_hasEnded = false;    // the window has
    bool m_isValid = true;
    bool m_isChanged = false;
    bool m_isAskedInVain = false;
};

} // namespace corvane::desktop
