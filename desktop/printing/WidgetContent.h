// What a widget holds, added to a printout.
#pragma once

class QRect;
class QWidget;

namespace corvane::desktop {

class IPrintout;
class Printout;

// Tables, lists, trees and texts whole, the pages of tabs one after another; what lies between these as pictures.
void AddContent(QWidget& widget, Printout& printout);
// A rectangle of the widget, in its own coordinates, as a picture. The widget may go before that is drawn.
void AddWidgetPicture(QWidget& widget, const QRect& part, IPrintout& printout);

} // namespace corvane::desktop
