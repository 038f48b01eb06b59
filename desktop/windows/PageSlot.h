// One page of a window's form: the plug-in's object, its widget, and what it last said of itself. A page that fails
// stays in its place as a failure, and the others work.
#pragma once

#include "corvane/services/PageDef.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/IWindowFormController.h"
#include "desktop/IQtPage.h"
#include "desktop/windows/PageMark.h"
#include "desktop/windows/WindowHost.h"

#include <QPointer>
#include <optional>

namespace corvane::desktop {

class PagePlace;

class PageSlot final : public virtual Object {
public:
    PageSlot(Ref<corvane::PageDef> oPageDef, WindowHost::GuardFunction fnGuard)
        : m_oPageDef(std::move(oPageDef)), m_fnGuard(std::move(fnGuard)) {}

    // Creates the page's object and reports it. Never fails: a failure is logged and kept.
    void Create(const Ref<IWindowFormController>& oController);
    // Makes the widget in its place, or shows there why it can't be, once.
    void MakeWidget(PagePlace& oPlace);
    [[nodiscard]] bool HasWidget() const { return m_bHasWidget; }
    // Puts the keyboard on the page's first control.
    void Focus();
    // Reports the page's end if it was reported to live; a failure is shown. The widget goes with the frame.
    void End(const Ref<IWindowFormController>& oController);

    [[nodiscard]] const Ref<corvane::PageDef>& PageDef() const { return m_oPageDef; }
    [[nodiscard]] const Ref<Object>& PageObj() const { return m_oPageObj; } // nothing for one that doesn't live
    [[nodiscard]] const Ref<IPage>& Page() const { return m_oPage; }
    [[nodiscard]] bool IsAlive() const { return !!m_oPage; }
    [[nodiscard]] bool IsBroken() const { return m_oFailure.has_value(); }
    [[nodiscard]] const std::optional<Failure>& WhyBroken() const { return m_oFailure; }
    [[nodiscard]] bool IsUsable() const { return IsAlive() && !IsBroken(); }
    [[nodiscard]] Long HelpTopic() const; // the definition's when the page fails to say; 0 for none

    // Of a page that lives.
    void Click(StandardCommandConstants eCommand);
    void Save();

    // Asks the page anew. A page that fails to answer counts as not valid, and as changed; the failure is shown once
    // until it answers again.
    void Ask();
    [[nodiscard]] bool IsValid() const { return m_bIsValid; }
    [[nodiscard]] bool IsChanged() const { return m_bIsChanged; }
    // Valid, or to be left out: optional and without anything entered.
    [[nodiscard]] bool IsPassable() const { return m_bIsValid || (m_oPageDef->IsOptional() && !m_bIsChanged); }
    [[nodiscard]] PageMark Mark() const;

private:
    void Break(const char* sProcedure);

    Ref<corvane::PageDef> m_oPageDef;
    WindowHost::GuardFunction m_fnGuard;
    Ref<Object> m_oPageObj;
    Ref<IPage> m_oPage;
    Ref<IQtPage> m_oQtPage;
    std::optional<Failure> m_oFailure;
    QPointer<QWidget> m_pWidget; // the page's own
    bool m_bHasWidget = false;   // that or the failure's
    bool m_bIsValid = true;
    bool m_bIsChanged = false;
    bool m_bIsAskedInVain = false;
};

} // namespace corvane::desktop
