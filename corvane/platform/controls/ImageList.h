// The model of an image list: pictures by key, in order, shared by trees.
#pragma once

#include "corvane/base/KeyedCollection.h"
#include "corvane/platform/IPictureLoader.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvane {

class __attribute__((visibility("default"))) ImageList final : public virtual Object {
public:
    struct Image {
        std::string sKey;
        Ref<Picture> oPicture; // nothing when it couldn't be loaded
    };

    // In pixels.
    [[nodiscard]] Long ImageHeight() const { return m_lImageHeight; }
    void SetImageHeight(Long lHeight) { m_lImageHeight = lHeight; }
    [[nodiscard]] Long ImageWidth() const { return m_lImageWidth; }
    void SetImageWidth(Long lWidth) { m_lImageWidth = lWidth; }

    // Appends; no picture is allowed. Fails with 457 when the key is present.
    void Add(std::string_view sKey, Ref<Picture> oPicture);
    [[nodiscard]] const std::vector<Image>& ListImages() const { return m_aImages; }
    // The position from 0, or -1 when there is no such key.
    [[nodiscard]] Long Find(std::string_view sKey) const;

private:
    Long m_lImageHeight = 0;
    Long m_lImageWidth = 0;
    std::vector<Image> m_aImages;
    std::unordered_map<std::string, Long, TextHash, TextEqual> m_mapKeys;
};

} // namespace corvane
