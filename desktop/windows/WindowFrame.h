// The frame around a window's body: one of the main window's children, or a window of its own. It says what happens
// to it and does only what it is told: its close box closes nothing.
#pragma once

#include "corvane/platform/controls/Form.h"

#include <QIcon>
#include <QPointer>
#include <QRect>
#include <QWidget>
#include <memory>

class QDialog;
class QMdiArea;
class QMdiSubWindow;

namespace corvane::desktop {

class WindowFrame final {
public:
    class Observer {
    public:
        virtual void CloseRequested() = 0;
        virtual void FrameActivated() = 0;
        virtual void FramePlaced() = 0; // moved, resized, or its state has changed

    protected:
        ~Observer() = default;
    };
    // What the frame's widgets report to; they outlive the frame by a turn of the event loop.
    struct Notifier {
        Observer* observer; // null once the frame is closed
        void Notify(void (Observer::*what)()) const {
            if (observer)
                (observer->*what)();
        }
    };

    // A child of the area for area, else a window that stays above owner.
    WindowFrame(QMdiArea* area, QWidget* owner, QWidget* body, bool withStateButtons, Observer& observer);
    ~WindowFrame() { Close(); }
    WindowFrame(const WindowFrame&) = delete;
    WindowFrame& operator=(const WindowFrame&) = delete;

    // Reports nothing from now on, and everything else does nothing. Whatever the frame does may make the observer call
    // this. Its widgets live on until the event loop turns, as one of them may be the caller.
    void Close();
    // Null when it is closed, or when the main window has gone first.
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
