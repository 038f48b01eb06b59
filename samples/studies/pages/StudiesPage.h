// What all pages of Studies have in common: the base that the library talks to, and the widget that the host shows.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "desktop/IQtPage.h"

#include <QPointer>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

namespace studies {

class StudiesPage : public corvane::IPageAccess, public corvane::desktop::IQtPage {
public:
    corvane::Ref<corvane::IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) final;

protected:
    StudiesPage();

    // What the page does in its life. The widget is there from MakeWidget on, if the page ever comes to the front.
    virtual void OnInitialize() {}
    virtual void OnTerminate() {}
    virtual void OnActivate() {}
    virtual void OnSave() {}
    virtual QWidget* MakeWidget(QWidget* parent) = 0;
    [[nodiscard]] virtual bool IsValid() { return true; }

    // What the window is about. Fails with 13 when it is something else.
    template <class T>
    [[nodiscard]] corvane::Ref<T> About() const {
        return m_base->BusinessContext().As<T>();
    }
    [[nodiscard]] bool IsAlive() const { return !!m_base->Window(); }
    [[nodiscard]] const corvane::Ref<corvane::PageBase>& Base() const { return m_base; }
    [[nodiscard]] QWidget* Widget() const { return m_widget; }
    // Of the page's own commands.
    void EnableAction(const char* name, bool enabled);
    // Tells the window that validity or change may be another now.
    void Reconsider();
    // Everything that Qt calls goes through this: a failure is shown, and the program goes on.
    void Guarded(const std::function<void()>& act) const;
    void Keep(corvane::Subscription subscription) { m_subscriptions.push_back(std::move(subscription)); }

private:
    corvane::Ref<corvane::PageBase> m_base = corvane::New<corvane::PageBase>();
    std::vector<corvane::Subscription> m_life;
    std::vector<corvane::Subscription> m_subscriptions; // from OnInitialize to OnTerminate
    QPointer<QWidget> m_widget;
};

} // namespace studies
