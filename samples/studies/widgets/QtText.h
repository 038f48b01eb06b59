// Texts between Qt and the rest, which is UTF-8.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace studies {

[[nodiscard]] inline QString Text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline std::string Utf8(const QString& text) {
    return text.toStdString();
}

} // namespace studies
