// The frame around a window's body: one of the main window's children, or a window of its own. It says what happens
// to it and does only what it is told: its close box closes nothing.
#pragma once

#include "corvane/platform/controls/Form.h"

#include <QIcon>
#include <QPointer>
#include <QRect>
#include <QWidget>
#include <functional>
#include <memory>
#include <utility>

class QDialog;
class QMdiArea;
class QMdiSubWindow;

namespace corvane::desktop {

class WindowFrame final {
public:
    struct Listeners {
        std::function<void()> closeRequested;
        std::function<void()> activated;
        std::function<void()> placed; // moved, resized, or its state has changed
    };

    struct Notifier {
        explicit Notifier(Listeners o) : listeners(std::move(o)) {}
        void Notify(std::function<void()> Listeners::*what) const {
            if (!closed)
                (listeners.*what)();
        }
        Listeners listeners;
        bool closed = false;
    };

    // A child of the area for area, else a window that stays above owner.
    WindowFrame(QMdiArea* area, QWidget* owner, QWidget* body, bool withStateButtons, Listeners listeners);
    // The frame's widgets live on until the event loop turns, as one of them may be the caller.
    ~WindowFrame();
    WindowFrame(const WindowFrame&) = delete;
    WindowFrame& operator=(const WindowFrame&) = delete;

    // Null when the main window has gone first.
    [[nodiscard]] QWidget* Widget() const { return m_widget; }
    void Show(bool modal, FormState state);
    void Hide();
    void BringToFront();
    void SetTitle(const QString& title);
    void SetIcon(const QIcon& icon);
    void SetModified(bool modified);
    void SetState(FormState state);
    [[nodiscard]] FormState State() const;
    // In pixels, from the area's or the main window's corner; only what is seen in the normal state.
    void Place(const QRect& place);
    [[nodiscard]] QRect PlaceNow() const;
    [[nodiscard]] QSize Minimum() const { return m_widget ? m_widget->minimumSize() : QSize(0, 0); }
    void SetMinimum(const QSize& size); // unless its size is fixed
    void Fix(const QSize& size);        // no other size from now on
    // What the frame adds to its body.
    [[nodiscard]] QSize Surround() const { return m_surround; }
    // The space there is for it.
    [[nodiscard]] QRect Room() const;

private:
    [[nodiscard]] QPoint Corner() const;

    std::shared_ptr<Notifier> m_notifier;
    QPointer<QMdiArea> m_area;
    QPointer<QWidget> m_owner;
    QPointer<QMdiSubWindow> m_child;
    QPointer<QDialog> m_dialog;
    QPointer<QWidget> m_widget; // one of the two
    QSize m_surround{0, 0};
    bool m_isAdded = false; // to the area, with the first Show
};

} // namespace corvane::desktop
