// The definition files of an application without those of services that are to be left out.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/base/Text.h"
#include "corvane/platform/IFileSystem.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace corvane::desktop {

struct LeftOut {
    std::vector<std::string> aNames; // of services, or of plug-ins for all their services
    bool bAllPlugins = false;        // the shell alone
};

// A file whose explorer items stand below those of a file that is left out is left out as well: the library couldn't
// start with it.
class LeftOutServices final : public IFileSystem {
public:
    LeftOutServices(Ref<IFileSystem> oFiles, std::string sServicesFolder, LeftOut oLeftOut);

    [[nodiscard]] std::vector<std::string> Files(std::string_view sFolder) const override;
    [[nodiscard]] std::string FileName(std::string_view sPath) const override { return m_oFiles->FileName(sPath); }
    [[nodiscard]] std::string Extension(std::string_view sPath) const override { return m_oFiles->Extension(sPath); }
    [[nodiscard]] std::string Join(std::string_view sFolder, std::string_view sName) const override {
        return m_oFiles->Join(sFolder, sName);
    }
    [[nodiscard]] std::string ReadAll(std::string_view sPath) const override { return m_oFiles->ReadAll(sPath); }

    // After Files: the services that were left out, and the names that no service has.
    [[nodiscard]] const std::vector<std::string>& Services() const { return m_aServices; }
    [[nodiscard]] std::vector<std::string> Unknown() const;

private:
    struct File {
        std::string sPath;
        std::string sService;
        std::string sPlugin;
        std::vector<std::string> aItems;
        std::vector<std::string> aParents;
        bool bActive = false;
        bool bOut = false;
    };
    [[nodiscard]] File Read(const std::string& sPath) const;
    void LeaveOut(std::vector<File>& aFiles) const;

    Ref<IFileSystem> m_oFiles;
    std::string m_sServicesFolder;
    LeftOut m_oLeftOut;
    mutable std::vector<std::string> m_aServices;
    mutable std::unordered_set<std::string, TextHash, TextEqual> m_setUsed;
};

} // namespace corvane::desktop
