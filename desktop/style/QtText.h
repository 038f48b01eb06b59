// Texts of the library, which are UTF-8, as Qt's.
#pragma once

#include <QString>
#include <string_view>

namespace corvane::desktop {

[[nodiscard]] inline QString Text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace corvane::desktop
