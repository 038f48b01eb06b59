// Keeps the widgets of a page that has ended from calling it: they exist until the next iteration of the event loop,
// lose the focus and are hidden meanwhile, and the page's object doesn't work any more.
#pragma once

class QWidget;

namespace corvane::desktop {

// The widget, and everything in it, sends no signal and hears no event from now on, but its deletion.
void Silence(QWidget& widget);

} // namespace corvane::desktop
