// What a widget shows, as lines of text: for runs that no one watches.
#pragma once

#include <string>

class QWidget;

namespace corvane::desktop {

// Labels, fields with what is in them, and tables and lists with their first rows, as far as they aren't hidden. Every
// line begins with the indent.
[[nodiscard]] std::string WidgetAsText(const QWidget& widget, const std::string& indent);

} // namespace corvane::desktop
