// A page in short: `class CarePage final : public Page<CarePage, Plant>` is a page of a window about a Plant, with
// those of the functions below that it needs, the values of its form and the procedures of its commands, listed by
// Fields<…>() or Methods<…>(). A form shows it; a page with a widget of its own derives from a host's class, such as
// desktop::QtPage.
#pragma once

#include "corvane/author/Client.h"
#include "corvane/author/Fields.h"
#include "corvane/windows/IForm.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"

namespace corvane {

// What all pages have, whatever their class: also the base of what several of them share.
class __attribute__((visibility("default"))) AnyPage : public IPageAccess, public IFormUser, protected Client {
public:
    Ref<IPage> Page() override { return m_oBase; }
    void UseForm(const Ref<IForm>& oForm) override { m_oForm = oForm; }
    // Whether there is something to save. A page calls ValidityChanged when the answer changes.
    [[nodiscard]] virtual bool IsChanged() { return false; }

protected:
    AnyPage();
    ~AnyPage() override;

    virtual void OnInitialize() {} // the page joins its window
    virtual void OnTerminate() {}  // and leaves it; what was kept is unsubscribed already
    virtual void OnActivate() {}   // it comes to the front
    virtual void OnDeactivate() {}
    [[nodiscard]] virtual bool IsValid() { return true; } // may the window go on? Call ValidityChanged when it changes
    virtual void OnSave() {}
    virtual void OnCommand(StandardCommandConstants /*eCommand*/) {} // one of the window's, before it acts
    virtual void OnExit(const Ref<corvane::Window>& /*oWindow*/, bool /*bWasCancelled*/) {} // a window that it opened

    // What the window is about, nothing outside of the page's life. Fails with 13 when it is something else.
    template <class T>
    [[nodiscard]] Ref<T> AboutAs() const {
        return m_oBase->BusinessContext().template As<T>();
    }
    // Nothing outside of the page's life.
    [[nodiscard]] Ref<corvane::Window> OwnWindow() const { return m_oBase->Window(); }
    // The form that shows the page, from before OnInitialize; nothing after the page's end, and without a form.
    [[nodiscard]] const Ref<IForm>& OwnForm() const { return m_oForm; }
    // The window's commands follow what IsValid and IsChanged say now. Nothing outside of the page's life.
    void ValidityChanged();
    [[nodiscard]] const Ref<PageBase>& Base() const { return m_oBase; }

private:
    [[nodiscard]] Ref<Object> BaseObject() const override { return m_oBase; }

    Ref<PageBase> m_oBase = New<PageBase>();
    Ref<IForm> m_oForm;
    std::vector<Subscription> m_aEvents;
};

// Part is AnyPage or derives from it.
template <class T, class Context = Object, class Part = AnyPage>
class Page : public Automation<T, Part> {
public:
    static constexpr auto Members = MemberTable(); // of a page without procedures

protected:
    [[nodiscard]] Ref<Context> About() const { return this->template AboutAs<Context>(); }
};

} // namespace corvane
