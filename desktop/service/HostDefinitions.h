// The host's own definition files, behind those of the application: the file service and the object factory that the
// library gets know them.
#pragma once

#include "corvane/base/Text.h"
#include "corvane/platform/IFileSystem.h"
#include "corvane/platform/IObjectFactory.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace corvane::desktop {

// A definition of the host is empty where an active definition of the application has its ProgID, or any definition of
// the application has its name; one that isn't active thus switches the host's off. Otherwise it is fitted into what
// the library has read before, as it reads the files in their order.
class HostFileSystem final : public IFileSystem {
public:
    HostFileSystem(Ref<IFileSystem> oFiles, std::string sServicesFolder);

    [[nodiscard]] std::vector<std::string> Files(std::string_view sFolder) const override;
    [[nodiscard]] std::string FileName(std::string_view sPath) const override { return m_oFiles->FileName(sPath); }
    [[nodiscard]] std::string Extension(std::string_view sPath) const override { return m_oFiles->Extension(sPath); }
    [[nodiscard]] std::string Join(std::string_view sFolder, std::string_view sName) const override {
        return m_oFiles->Join(sFolder, sName);
    }
    [[nodiscard]] std::string ReadAll(std::string_view sPath) const override;

private:
    [[nodiscard]] std::string OwnDefinition(const std::string& sName) const;

    Ref<IFileSystem> m_oFiles;
    std::string m_sServicesFolder;
    // The host's definitions, by their paths. What the library was given is given to others, too.
    struct Own {
        std::string sName;
        std::string sText; // empty until it is asked for
    };
    mutable std::unordered_map<std::string, Own> m_mapOwn;
    // Of the definitions that have been read, as far as it matters.
    mutable std::unordered_set<std::string, TextHash, TextEqual> m_setNames;
    mutable std::unordered_set<std::string, TextHash, TextEqual> m_setProgIDs;
};

// Creates the host's own objects by their ProgIDs and leaves the others to the application's plug-ins.
class HostObjectFactory final : public IObjectFactory {
public:
    using Maker = std::function<Ref<Object>()>;

    explicit HostObjectFactory(Ref<IObjectFactory> oPlugins) : m_oPlugins(std::move(oPlugins)) {}
    void Add(std::string sProgID, Maker fnMake) { m_mapMakers[std::move(sProgID)] = std::move(fnMake); }
    [[nodiscard]] Ref<Object> Create(std::string_view sProgID) override;

private:
    Ref<IObjectFactory> m_oPlugins;
    std::unordered_map<std::string, Maker> m_mapMakers;
};

} // namespace corvane::desktop
