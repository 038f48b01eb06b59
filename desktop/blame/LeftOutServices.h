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
    std::vector<std::string> names; // of services, or of plug-ins for all their services
    bool allPlugins = false;        // the shell alone
};

// A file whose explorer items are below those of a file that is left out is left out as well: the library couldn't
// start with it.
class LeftOutServices final : public IFileSystem {
public:
    LeftOutServices(Ref<IFileSystem> files, std::string servicesFolder, LeftOut leftOut);

    [[nodiscard]] std::vector<std::string> Files(std::string_view folder) const override;
    [[nodiscard]] std::string FileName(std::string_view path) const override { return m_files->FileName(path); }
    [[nodiscard]] std::string Extension(std::string_view path) const override { return m_files->Extension(path); }
    [[nodiscard]] std::string Join(std::string_view folder, std::string_view name) const override {
        return m_files->Join(folder, name);
    }
    [[nodiscard]] std::string ReadAll(std::string_view path) const override { return m_files->ReadAll(path); }

    // After Files: the services that were left out, and the names that no service has.
    [[nodiscard]] const std::vector<std::string>& Services() const { return m_services; }
    [[nodiscard]] std::vector<std::string> Unknown() const;

private:
    struct File {
        std::string path;
        std::string service;
        std::string plugin;
        std::vector<std::string> items;
        std::vector<std::string> parents;
        bool active = false;
        bool out = false;
    };
    [[nodiscard]] File Read(const std::string& path) const;
    void LeaveOut(std::vector<File>& files) const;

    Ref<IFileSystem> m_files;
    std::string m_servicesFolder;
    LeftOut m_leftOut;
    mutable std::vector<std::string> m_services;
    mutable std::unordered_set<std::string, TextHash, TextEqual> m_used;
};

} // namespace corvane::desktop
