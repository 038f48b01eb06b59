// A page with a widget in short: `class CarePage final : public desktop::QtPage<CarePage, Plant>`, with MakeWidget and
// those of the functions of corvane/author/Page.h that it needs. Plug-ins include this one header for their pages.
#pragma once

#include "corvane/Page.h"
#include "desktop/IQtPage.h"

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace corvane::desktop {

// What all pages with a widget have, whatever their class: also the base of what several of them share.
class AnyQtPage : public AnyPage, public IQtPage {
public:
    QWidget* NewWidget(QWidget* parent) final {
        m_widget = MakeWidget(parent);
        return m_widget;
    }
    // May be asked before there is a widget.
    [[nodiscard]] bool IsChanged() override { return AnyPage::IsChanged(); }

protected:
    // Once, when the page first comes to the front, after OnInitialize: its widget, as a child of that parent.
    virtual QWidget* MakeWidget(QWidget* parent) = 0;
    // What MakeWidget made; a null pointer before and when the form has deleted it.
    [[nodiscard]] QWidget* Widget() const { return m_widget; }

    // Calls the function, which may be a lambda of fewer parameters, at that signal. A failure in it is logged and
    // shown, and the program goes on: nothing may be thrown through Qt.
    template <class Sender, class Signal, class F>
    void Connect(Sender* sender, Signal signal, F function) {
        QObject::connect(sender, signal, sender, Guard<F>{this, std::move(function)});
    }
    // The same for a call that comes from Qt another way.
    template <class F>
    void Guarded(F&& function) const {
        try {
            std::forward<F>(function)();
        } catch (...) {
            Report(TypeName(), "Guarded");
        }
    }

private:
    template <class F>
    struct Guard {
        template <class... Arguments>
        auto operator()(Arguments&&... arguments) -> std::enable_if_t<std::is_invocable_v<F&, Arguments...>> {
            page->Guarded([&] { function(std::forward<Arguments>(arguments)...); });
        }
        const AnyQtPage* page;
        F function;
    };

    QPointer<QWidget> m_widget;
};

// Part is AnyQtPage or derives from it.
template <class T, class Context = Object, class Part = AnyQtPage>
using QtPage = Page<T, Context, Part>;

} // namespace corvane::desktop
