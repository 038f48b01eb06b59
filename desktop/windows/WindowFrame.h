// The frame around a window's body: one of the main window's children, or a window of its own. It tells what happens
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
        std::function<void()> fnCloseRequested;
        std::function<void()> fnActivated;
        std::function<void()> fnPlaced; // moved, resized, or its state has changed
    };

    struct Ears {
        explicit Ears(Listeners o) : oListeners(std::move(o)) {}
        void Tell(std::function<void()> Listeners::*fnWhat) const {
            if (!bClosed)
                (oListeners.*fnWhat)();
        }
        Listeners oListeners;
        bool bClosed = false;
    };

    // A child of the area for pArea, else a window that stays above pOwner.
    WindowFrame(QMdiArea* pArea, QWidget* pOwner, QWidget* pBody, bool bWithStateButtons, Listeners oListeners);
    // The frame's widgets live on until the event loop turns, as one of them may be the caller.
    ~WindowFrame();
    WindowFrame(const WindowFrame&) = delete;
    WindowFrame& operator=(const WindowFrame&) = delete;

    // Null when the main window has gone first.
    [[nodiscard]] QWidget* Widget() const { return m_pWidget; }
    void Show(bool bModal, FormState eState);
    void Hide();
    void BringToFront();
    void SetTitle(const QString& sTitle);
    void SetIcon(const QIcon& oIcon);
    void SetModified(bool bModified);
    void SetState(FormState eState);
    [[nodiscard]] FormState State() const;
    // In pixels, from the area's or the main window's corner; only what is seen in the normal state.
    void Place(const QRect& oPlace);
    [[nodiscard]] QRect PlaceNow() const;
    [[nodiscard]] QSize Minimum() const { return m_pWidget ? m_pWidget->minimumSize() : QSize(0, 0); }
    void SetMinimum(const QSize& oSize); // unless its size is fixed
    void Fix(const QSize& oSize);        // no other size from now on
    // What the frame adds to its body.
    [[nodiscard]] QSize Surround() const { return m_oSurround; }
    // The room there is for it.
    [[nodiscard]] QRect Room() const;

private:
    [[nodiscard]] QPoint Corner() const;

    std::shared_ptr<Ears> m_pEars;
    QPointer<QMdiArea> m_pArea;
    QPointer<QWidget> m_pOwner;
    QPointer<QMdiSubWindow> m_pChild;
    QPointer<QDialog> m_pDialog;
    QPointer<QWidget> m_pWidget; // one of the two
    QSize m_oSurround{0, 0};
    bool m_bIsAdded = false; // to the area, with the first Show
};

} // namespace corvane::desktop
