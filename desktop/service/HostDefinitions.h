// The host's own definition files, behind those of the application: the file service and the object factory that the
// library gets know them.
#pragma once

#include "corvane/base/Text.h"
#include "corvane/platform/IClassFinder.h"
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
    HostFileSystem(Ref<IFileSystem> files, std::string servicesFolder);

    [[nodiscard]] std::vector<std::string> Files(std::string_view folder) const override;
    [[nodiscard]] std::string FileName(std::string_view path) const override { return m_files->FileName(path); }
    [[nodiscard]] std::string Extension(std::string_view path) const override { return m_files->Extension(path); }
    [[nodiscard]] std::string Join(std::string_view folder, std::string_view name) const override {
        return m_files->Join(folder, name);
    }
    [[nodiscard]] std::string ReadAll(std::string_view path) const override;

private:
    [[nodiscard]] std::string OwnDefinition(const std::string& name) const;

    Ref<IFileSystem> m_files;
    std::string m_servicesFolder;
    // The host's definitions, by their paths. What the library was given is given to others, too.
    struct Own {
        std::string name;
        std::string text; // empty until it is asked for
    };
    mutable std::unordered_map<std::string, Own> m_own;
    // Of the definitions that have been read, as far as it matters.
    mutable std::unordered_set<std::string, TextHash, TextEqual> m_names;
    mutable std::unordered_set<std::string, TextHash, TextEqual> m_progIDs;
};

// Creates the host's own objects by their ProgIDs and leaves the others to the application's plug-ins.
class HostObjectFactory final : public IObjectFactory, public IClassFinder {
public:
    using Maker = std::function<Ref<Object>()>;

    explicit HostObjectFactory(Ref<IObjectFactory> plugins) : m_plugins(std::move(plugins)) {}
    void Add(std::string progID, Maker make) { m_makers[std::move(progID)] = std::move(make); }
    [[nodiscard]] Ref<Object> Create(std::string_view progID) override;
    [[nodiscard]] bool HasClass(std::string_view progID) override;

private:
    Ref<IObjectFactory> m_plugins;
    std::unordered_map<std::string, Maker> m_makers;
};

} // namespace corvane::desktop
