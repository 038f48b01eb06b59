// Settings in text files, one a service, in the user's configuration folder. Several programs may write at once; a
// crash at any moment leaves the values as they were before or after the write.
#pragma once

#include "corvane/platform/ISettingsStore.h"

#include <string>

namespace corvane {

class SettingsStore final : public ISettingsStore {
public:
    // An empty folder represents corvane/<application> in $XDG_CONFIG_HOME, or in ~/.config. It is made by the first
    // write.
    explicit SettingsStore(std::string_view application, std::string folder = {});

    // Nothing is cached: what another program has written is seen at once. Services, categories and names are
    // compared without regard to case. 75 when the file is there and can't be read.
    std::string Read(std::string_view service, std::string_view category, std::string_view name,
                     std::string_view defaultText) const override;
    // 75 when it can't be written; the earlier values are kept.
    void Write(std::string_view service, std::string_view category, std::string_view name,
               std::string_view value) override;

    [[nodiscard]] const std::string& Folder() const { return m_folder; }

private:
    [[nodiscard]] std::string PathOf(std::string_view service) const;

    std::string m_folder;
};

} // namespace corvane
