#include "corvane/platform/controls/ImageList.h"

namespace corvane {

void ImageList::Add(std::string_view sKey, Ref<Picture> oPicture) {
    if (!m_mapKeys.try_emplace(std::string(sKey), static_cast<Long>(m_aImages.size())).second)
        FailKeyInUse(sKey);
    m_aImages.push_back({std::string(sKey), std::move(oPicture)});
}

Long ImageList::Find(std::string_view sKey) const {
    const auto it = m_mapKeys.find(sKey);
    return it == m_mapKeys.end() ? -1 : it->second;
}

} // namespace corvane
