// Pictures among the values of a form: a text such as "data:image/png;base64,…" that a label shows as a picture.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::forms {

struct FormPicture {
    std::string format; // "png", "jpeg" or "svg+xml"
    std::string bytes;
};

// Nothing for a text that isn't a picture, or isn't a whole one.
[[nodiscard]] std::optional<FormPicture> PictureIn(std::string_view text);
// "PNG picture, 640 x 480" and the like, for what is read by people and tests; the text itself when it isn't a picture.
[[nodiscard]] std::string WithoutPicture(const std::string& text);

} // namespace corvane::forms
