// The frame around a window's body: one of the main window's children, free, in a tab or moved out into a window of its
// own, or a dialog above the main window. It says what happens to it and does only what it is told: its close box
// closes nothing.
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

class WindowFrame;

// What arranges the children of the main window: it hears of each of them, and may take it into a tab.
class FrameKeeper {
public:
    virtual void FrameMade(WindowFrame& frame) = 0;
    virtual void FrameShown(WindowFrame& frame) = 0;  // before it can be seen
    virtual void FrameHidden(WindowFrame& frame) = 0; // it may be shown again
    // It is to come to the front, and the area takes it to be there already.
    virtual void FrameRaised(WindowFrame& frame) = 0;
    virtual void FrameClosed(WindowFrame& frame) = 0;  // before its widgets go
    virtual void FrameChanged(WindowFrame& frame) = 0; // title, icon or whether it is modified

protected:
    ~FrameKeeper() = default;
};

class WindowFrame final {
public:
    // A child's frame is free in the area, without an edge of its own in a tab, or a window of its own.
    enum class Holding { Free, InTab, Own };
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

    // A child of the area for area, which the keeper arranges if there is one; else a window that stays above owner.
    WindowFrame(QMdiArea* area, QWidget* owner, QWidget* body, bool withStateButtons, Observer& observer,
                FrameKeeper* keeper = nullptr);
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
    void Activate(); // likewise, and the observer hears of it
    // The body keeps its state and the focus; what it is for is said by the title that the frame has.
    [[nodiscard]] Holding Held() const { return m_holding; }
    void Hold(Holding holding);
    // In a tab: in pixels, from the area's corner.
    void PlaceInTab(const QRect& place);
    // Whether it can be minimized and maximized, as documents can and dialogs can't.
    [[nodiscard]] bool HasStateButtons() const { return m_hasStateButtons; }
    void StayOnTop(bool stays); // of the area's other windows
    void Forget(const FrameKeeper& keeper) {
        if (m_keeper == &keeper)
            m_keeper = nullptr;
    }
    void SetTitle(const QString& title);
    void SetIcon(const QIcon& icon);
    void SetModified(bool modified);
    void SetState(FormState state); // of a frame that is free or a dialog's, and so Place
    [[nodiscard]] FormState State() const;
    // In pixels, from the area's or the main window's corner; only what is seen in the normal state.
    void Place(const QRect& place);
    [[nodiscard]] QRect PlaceNow() const;
    [[nodiscard]] QSize Minimum() const { return m_minimum; }
    void SetMinimum(const QSize& size); // unless its size is fixed
    void Fix(const QSize& size);        // no other size from now on
    // What the frame adds to its body while it is free.
    [[nodiscard]] QSize Surround() const { return m_surround; }
    // The space there is for it.
    [[nodiscard]] QRect Room() const;

private:
    [[nodiscard]] QPoint Corner() const;
    void TellKeeper(void (FrameKeeper::*what)(WindowFrame&));
    void MoveBody(bool own);

    std::shared_ptr<Notifier> m_notifier;
    QPointer<QMdiArea> m_area;
    QPointer<QWidget> m_owner;
    QPointer<QMdiSubWindow> m_child;
    QPointer<QDialog> m_dialog;
    QPointer<QWidget> m_own;    // in place of the child
    QPointer<QWidget> m_widget; // one of the three
    FrameKeeper* m_keeper;
    Holding m_holding = Holding::Free;
    Qt::WindowFlags m_freeFlags;
    QSize m_surround{0, 0};
    QSize m_minimum{0, 0};
    bool m_hasStateButtons;
    bool m_isAdded = false; // to the area, with the first Show
};

} // namespace corvane::desktop
