// Icons from the library's pictures, decoded when they are first drawn.
#pragma once

#include "corvane/platform/IPictureLoader.h"
#include "corvane/platform/controls/ImageList.h"

#include <QIcon>
#include <map>
#include <vector>

namespace corvane::desktop {

// An icon that is crisp at each size and scale that its file allows: all sizes of an ICO are used, an SVG is drawn at
// the size that is asked for. Null for nothing and for bytes that can't be decoded.
[[nodiscard]] QIcon IconOf(const Ref<Picture>& picture);

// The icons of image lists, each made once.
class ImageIcons {
public:
    // The icon of the image at a position. Position -1, and an image without a picture, give the first image of the
    // list, which represents anything; a null icon when that one has no picture either, or without a list.
    [[nodiscard]] const QIcon& Icon(const Ref<ImageList>& imageList, Long image);

private:
    struct Icons {
        Ref<ImageList> imageList; // keeps the address in the map from being reused
        std::vector<QIcon> icons;
    };
    std::map<const ImageList*, Icons> m_icons;
    QIcon m_none;
};

} // namespace corvane::desktop
