#include "desktop/windows/WindowPlacement.h"

#include "corvane/core/CorvaneMain.h"
#include "desktop/windows/Twips.h"

#include <QScopedValueRollback>
#include <QScreen>
#include <algorithm>

namespace corvane::desktop {

namespace {

// The place within the space, where that is large enough for what the window needs.
QRect Fitted(QRect place, const QRect& room, const QSize& wanted, const QSize& needed) {
    place.setSize(place.size().expandedTo(wanted).boundedTo(room.size()).expandedTo(needed));
    place.moveTo(std::clamp(place.left(), room.left(), std::max(room.left(), room.right() + 1 - place.width())),
                 std::clamp(place.top(), room.top(), std::max(room.top(), room.bottom() + 1 - place.height())));
    return place;
}

} // namespace

void WindowPlacement::SetFrame(WindowFrame& frame, WindowBody& body) {
    m_frame = &frame;
    m_body = &body;
}

QRect WindowPlacement::NormalPlace() const {
    return {PixelsX(m_form.Left()), PixelsY(m_form.Top()), PixelsX(m_form.Width()), PixelsY(m_form.Height())};
}

void WindowPlacement::PlaceFirst(const WindowDef& def) {
    QRect place = NormalPlace();
    const QSize wanted = m_body->sizeHint() + m_frame->Surround();
    if (def.DefPageWidth() == 0 || def.DefPageHeight() == 0) {
        const Ref<Form> mainForm(m_host->mainForm);
        place.setSize({def.DefPageWidth() == 0 ? wanted.width() : place.width(),
                       def.DefPageHeight() == 0 ? wanted.height() : place.height()});
        place.moveTo(CorvaneMain::CenteredLeft(place.width(), PixelsX(mainForm->ScaleWidth()), 0),
                     CorvaneMain::CenteredTop(place.height(), PixelsY(mainForm->ScaleHeight()), 0));
    }
    const QRect room = m_frame->Room();
    MinMaxInfo info;
    m_host->messages->SendMessage(m_form.HWnd(), WindowMessage::GetMinMaxInfo, 0,
                                  reinterpret_cast<std::intptr_t>(&info));
    const int beside = std::max(m_frame->Surround().height(), 8); // a title bar
    const QSize minimum(info.oMinTrackSize.lX, info.oMinTrackSize.lY);
    m_minimum = minimum.boundedTo(room.size());
    ApplyMinimum();
    place = Fitted(place, room, minimum, m_frame->Minimum());
    if (m_form.MDIChild())
        place.moveTopLeft(FreeCorner(place, room, beside));
    m_frame->Place(place);
    if (IsHeld()) {
        const QScopedValueRollback followsFrame(m_followsFrame, true);
        MoveModel(place);
    }
    bool anyResizable = false;
    for (const auto& pageDef : def.PageDefs())
        anyResizable |= pageDef->IsResizable();
    if (!m_form.MDIChild() && !anyResizable && def.PageDefs()->Count() > 0)
        m_frame->Fix(place.size());
}

// Down the diagonal, and once more from the top; where all corners are taken, a window does hide another.
QPoint WindowPlacement::FreeCorner(const QRect& place, const QRect& room, int step) const {
    for (QRect tried : {place, QRect(room.topLeft(), place.size())})
        for (; room.contains(tried); tried.translate(step, step))
            if (!IsCornerTaken(tried.topLeft()))
                return tried.topLeft();
    return place.topLeft();
}

bool WindowPlacement::IsCornerTaken(const QPoint& corner) const {
    const auto forms = m_form.Application()->Forms();
    return std::any_of(forms.begin(), forms.end(), [&](const Ref<Form>& form) {
        return form.Get() != &m_form && form->MDIChild() && form->Visible() && PixelsX(form->Left()) == corner.x() &&
               PixelsY(form->Top()) == corner.y();
    });
}

void WindowPlacement::MoveModel(const QRect& place) {
    m_form.Move(TwipsX(place.left()), TwipsY(place.top()), TwipsX(place.width()), TwipsY(place.height()));
}

void WindowPlacement::PlaceAgain(const QRect& place, FormState state) {
    if (IsHeld()) {
        const QScopedValueRollback followsFrame(m_followsFrame, true);
        MoveModel(place);
        m_form.SetWindowState(state);
        return;
    }
    QRect room = m_frame->Room();
    // A main window that is just being maximized gets its size a moment later.
    const QWidget* main = m_host->mainWindow;
    if (m_form.MDIChild() && main && (main->isMaximized() || main->isFullScreen()))
        room.setSize(room.size() + (main->screen()->availableSize() - main->size()).expandedTo(QSize(0, 0)));
    m_form.SetWindowState(FormState::Normal);
    m_frame->Place(Fitted(place, room, m_minimum, m_frame->Minimum()));
    FollowFrame();
    m_form.SetWindowState(state);
}

// The definition's, and what buttons and pages need so that nothing is cut off.
void WindowPlacement::ApplyMinimum() {
    if (m_body)
        m_frame->SetMinimum(m_minimum.expandedTo(m_body->minimumSizeHint() + m_frame->Surround()));
}

void WindowPlacement::MakeSpaceFor(int height) {
    ApplyMinimum();
    const QRect place = m_frame->PlaceNow();
    if (m_form.Visible() && !IsHeld() && m_frame->State() == FormState::Normal &&
        place.bottom() + height <= m_frame->Room().bottom())
        m_frame->Place(place.adjusted(0, 0, 0, height));
}

void WindowPlacement::FollowModel() {
    if (!m_followsFrame)
        m_frame->Place(NormalPlace());
}

void WindowPlacement::FollowModelState() {
    if (!m_followsFrame && m_form.Visible())
        m_frame->SetState(m_form.WindowState());
}

void WindowPlacement::FollowFrame() {
    if (!m_form.Visible() || m_followsFrame || IsHeld() || !m_frame->Widget() || !m_frame->Widget()->isVisible())
        return;
    const QScopedValueRollback followsFrame(m_followsFrame, true);
    m_host->guard([this] {
        const FormState state = m_frame->State();
        const QRect place = m_frame->PlaceNow();
        if (state == FormState::Normal && place != NormalPlace())
            MoveModel(place);
        if (state != m_form.WindowState())
            m_form.SetWindowState(state);
    });
}

QSize WindowPlacement::NonPageSize() const {
    if (!m_body)
        Fail(FailureNumber::ObjectNotSet); // the window has ended
    return m_body->NonPageSize() + m_frame->Surround();
}

Long WindowPlacement::WidthFor(Long pageWidth) const {
    const int width = NonPageSize().width() + PixelsX(pageWidth);
    return RoundToLong(TwipsX(std::min(width, m_body->screen()->availableSize().width())));
}

Long WindowPlacement::HeightFor(Long pageHeight) const {
    const int height = NonPageSize().height() + PixelsY(pageHeight);
    return RoundToLong(TwipsY(std::min(height, m_body->screen()->availableSize().height())));
}

} // namespace corvane::desktop
