// Whose page a widget is, for failures in it and in what it contains.
#pragma once

namespace corvane::desktop {

// The widget's dynamic property that holds the ProgID of the page.
inline constexpr const char* pageNameProperty = "corvanePage";

} // namespace corvane::desktop
