// Pictures distinguished by what their files hold; the name's ending doesn't matter.
#pragma once

#include "corvane/platform/IPictureLoader.h"

#include <optional>

namespace corvane {

class PictureLoader final : public IPictureLoader {
public:
    Ref<Picture> Load(std::string_view path, std::string_view name) override;

    // By the header, which must be sound for the format; nothing when it is none of them.
    [[nodiscard]] static std::optional<Picture::Format> FormatOf(std::string_view bytes);
};

} // namespace corvane
