// Texts between Qt and the rest, which is UTF-8.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace studies {

[[nodiscard]] inline QString Text(std::string_view sText) {
    return QString::fromUtf8(sText.data(), static_cast<qsizetype>(sText.size()));
}

[[nodiscard]] inline std::string Utf8(const QString& sText) {
    return sText.toStdString();
}

} // namespace studies
