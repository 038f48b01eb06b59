// Pictures from files.
#pragma once

#include "corvane/base/Ref.h"

#include <string>
#include <string_view>

namespace corvane {

// A picture as its file holds it. Decoding is the renderer's work.
class __attribute__((visibility("default"))) Picture final : public virtual Object {
public:
    enum class Format { Png, Bmp, Ico, Gif, Jpeg, Svg };

    Picture(std::string sName, Format eFormat, std::string sBytes)
        : m_sName(std::move(sName)), m_eFormat(eFormat), m_sBytes(std::move(sBytes)) {}

    // The file's name, as it was first asked for.
    [[nodiscard]] const std::string& Name() const { return m_sName; }
    [[nodiscard]] Format FileFormat() const { return m_eFormat; }
    [[nodiscard]] const std::string& Bytes() const { return m_sBytes; }

    std::string_view TypeName() const override { return "Picture"; }

private:
    std::string m_sName;
    Format m_eFormat;
    std::string m_sBytes;
};

class __attribute__((visibility("default"))) IPictureLoader : public virtual Object {
public:
    // sName becomes the picture's name. Fails with 53 when there is no file, with 13 when its content isn't a picture
    // of a known format.
    [[nodiscard]] virtual Ref<Picture> Load(std::string_view sPath, std::string_view sName) = 0;
};

} // namespace corvane
