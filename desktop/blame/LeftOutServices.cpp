#include "desktop/blame/LeftOutServices.h"

#include "corvane/base/Failure.h"
#include "desktop/service/DefinitionTags.h"

#include <algorithm>

namespace corvane::desktop {

LeftOutServices::LeftOutServices(Ref<IFileSystem> files, std::string servicesFolder, LeftOut leftOut)
    : m_files(std::move(files)), m_servicesFolder(std::move(servicesFolder)), m_leftOut(std::move(leftOut)) {}

LeftOutServices::File LeftOutServices::Read(const std::string& path) const {
    File file;
    file.path = path;
    if (!EqualText(m_files->Extension(path), "xml"))
        return file;
    std::string text;
    try {
        text = m_files->ReadAll(path);
    } catch (const Failure&) {
        return file; // the library meets the same failure and reports it
    }
    for (const DefinitionTag& tag : TagsIn(text, {"Service", "ExplorerItem"})) {
        if (tag.element == "Service") {
            file.service = tag.Attribute("Name");
            const std::string_view progID = tag.Attribute("ProgID");
            file.plugin = progID.substr(0, progID.find('.'));
            file.active = !EqualText(tag.Attribute("Active"), "false");
        } else {
            file.items.emplace_back(tag.Attribute("Name"));
            file.parents.emplace_back(tag.Attribute("Parent"));
        }
    }
    return file;
}

void LeftOutServices::LeaveOut(std::vector<File>& files) const {
    std::unordered_set<std::string, TextHash, TextEqual> gone;
    const auto go = [&](File& file) {
        file.out = true;
        m_services.push_back(file.service);
        gone.insert(file.items.begin(), file.items.end());
    };
    for (File& file : files) {
        if (!file.active)
            continue;
        const bool shell = file.plugin.empty() || EqualText(file.plugin, "Corvane");
        bool named = false;
        for (const std::string& name : m_leftOut.names)
            if (EqualText(name, file.service) || EqualText(name, file.plugin)) {
                m_used.insert(name);
                named = true;
            }
        if (named || (m_leftOut.allPlugins && !shell))
            go(file);
    }
    for (bool again = true; again;) {
        again = false;
        for (File& file : files)
            if (file.active && !file.out &&
                std::any_of(file.parents.begin(), file.parents.end(),
                            [&](const std::string& parent) { return gone.contains(parent); })) {
                go(file);
                again = true;
            }
    }
}

std::vector<std::string> LeftOutServices::Files(std::string_view folder) const {
    std::vector<std::string> paths = m_files->Files(folder);
    if (folder != m_servicesFolder || (m_leftOut.names.empty() && !m_leftOut.allPlugins))
        return paths;
    m_services.clear();
    std::vector<File> files;
    for (const std::string& path : paths)
        files.push_back(Read(path));
    LeaveOut(files);
    std::erase_if(paths, [&](const std::string& path) {
        return std::any_of(files.begin(), files.end(), [&](const File& file) { return file.out && file.path == path; });
    });
    return paths;
}

std::vector<std::string> LeftOutServices::Unknown() const {
    std::vector<std::string> unknown;
    for (const std::string& name : m_leftOut.names)
        if (!m_used.contains(name))
            unknown.push_back(name);
    return unknown;
}

} // namespace corvane::desktop
