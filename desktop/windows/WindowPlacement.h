// Where the frame of a window is: first by the definition, then where the user or code puts it. The model of the form
// and the frame follow each other.
#pragma once

#include "corvane/platform/controls/Form.h"
#include "corvane/services/WindowDef.h"
#include "desktop/windows/WindowBody.h"
#include "desktop/windows/WindowFrame.h"
#include "desktop/windows/WindowHost.h"

#include <QPointer>
#include <QRect>
#include <memory>

namespace corvane::desktop {

class WindowPlacement final {
public:
    // The form outlives it.
    WindowPlacement(Form& form, std::shared_ptr<const WindowHost> host) : m_form(form), m_host(std::move(host)) {}

    // Before everything below. The frame outlives it.
    void SetFrame(WindowFrame& frame, WindowBody& body);

    // Where the definition gives no size the page in front does; a window that would hide another of its kind is moved.
    void PlaceFirst(const WindowDef& def);
    // Puts a window that is shown where it was once, as far as there is space for it.
    void PlaceAgain(const QRect& place, FormState state);
    // The model's place or state has changed, or the frame's.
    void FollowModel();
    void FollowModelState();
    void FollowFrame();
    // Makes the frame as large as its content needs it.
    void ApplyMinimum();
    // The body has become higher; the page keeps its size where there is space.
    void MakeSpaceFor(int height);

    // Where it is while it is neither maximized nor minimized: in pixels, from the corner of the area or of the main
    // window.
    [[nodiscard]] QRect NormalPlace() const;
    // What of the window isn't page, in pixels. Fails with 91 after the window's end, and so do the next two.
    [[nodiscard]] QSize NonPageSize() const;
    // With a page of that size, in twips, as far as the screen allows.
    [[nodiscard]] Long WidthFor(Long pageWidth) const;
    [[nodiscard]] Long HeightFor(Long pageHeight) const;

private:
    // In a tab or a window of its own: the model's place and state are kept for when it is free again.
    [[nodiscard]] bool IsHeld() const { return m_frame->Held() != WindowFrame::Holding::Free; }
    [[nodiscard]] bool IsCornerTaken(const QPoint& corner) const;
    [[nodiscard]] QPoint FreeCorner(const QRect& place, const QRect& room, int step) const;
    void MoveModel(const QRect& place);

    Form& m_form;
    std::shared_ptr<const WindowHost> m_host;
    WindowFrame* m_frame = nullptr;
    QPointer<WindowBody> m_body;
    QSize m_minimum; // by the definition
    bool m_followsFrame = false;
};

} // namespace corvane::desktop
