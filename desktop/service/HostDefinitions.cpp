#include "desktop/service/HostDefinitions.h"

#include "corvane/base/Failure.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ExplorerItemDef.h"
#include "corvane/services/PageDef.h"
#include "corvane/services/ServiceDef.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"
#include "desktop/service/DefinitionTags.h"
#include "desktop/service/FitDefinition.h"

#include <QFile>
#include <algorithm>

namespace corvane::desktop {

namespace {

// In the order of loading.
constexpr const char* hostDefinitions[] = {"Corvane.Framework.xml", "Corvane.Desktop.xml"};

// What is in the place of a definition that the application has of its own.
constexpr const char* nothing = "<Service Active=\"false\"/>";

std::string HostDefinition(std::string_view name) {
    QFile file(QStringLiteral(":/corvane/services/") + QLatin1String(name.data(), static_cast<int>(name.size())));
    if (!file.open(QIODevice::ReadOnly))
        Fail(FailureNumber::FileNotFound, "The host has no definition \"" + std::string(name) + "\"");
    return file.readAll().toStdString();
}

// Calls see with the attributes of the Service element, if there is one.
void SeeService(std::string_view text, const std::function<void(const DefinitionTag&)>& see) {
    ForEachTag(text, {"Service"}, [&](const DefinitionTag& tag) {
        see(tag);
        return false;
    });
}

bool IsTrue(std::string_view value) {
    try {
        return ToBoolean(Variant(std::string(value)));
    } catch (const Failure&) {
        return false; // the library rejects the file and says so
    }
}

// The menus of all definitions that the library has read by now.
void AddLoaded(MenusInUse& inUse) {
    const Ref<Framework> framework = CorvaneMain::Framework();
    const Ref<ServiceManager> services = framework ? framework->ServiceManager() : nullptr;
    if (!services)
        return;
    for (const Ref<ServiceDef>& service : *services->ServiceDefs()) {
        inUse.Add(*service->MenuItemDefs());
        for (const Ref<ExplorerItemDef>& item : *service->ExplorerItemDefs())
            inUse.Add(*item->MenuItemDefs());
    }
    for (const Ref<WindowDef>& window : *services->WindowDefs())
        for (const Ref<PageDef>& page : *window->PageDefs())
            inUse.Add(*page->MenuItemDefs());
}

} // namespace

HostFileSystem::HostFileSystem(Ref<IFileSystem> files, std::string servicesFolder)
    : m_files(std::move(files)), m_servicesFolder(std::move(servicesFolder)) {}

std::vector<std::string> HostFileSystem::Files(std::string_view folder) const {
    std::vector<std::string> paths = m_files->Files(folder);
    if (folder != m_servicesFolder)
        return paths;
    for (const char* name : hostDefinitions) {
        const bool replaced = std::any_of(paths.begin(), paths.end(), [&](const std::string& path) {
            return EqualText(m_files->FileName(path), name);
        });
        if (replaced)
            continue;
        paths.push_back(m_files->Join(folder, name));
        m_own.try_emplace(paths.back(), Own{name, {}});
    }
    return paths;
}

std::string HostFileSystem::ReadAll(std::string_view path) const {
    if (const auto it = m_own.find(std::string(path)); it != m_own.end()) {
        if (it->second.text.empty())
            it->second.text = OwnDefinition(it->second.name);
        return it->second.text;
    }
    std::string text = m_files->ReadAll(path);
    if (!m_own.empty() && path.starts_with(m_servicesFolder))
        SeeService(text, [&](const DefinitionTag& tag) {
            m_names.emplace(tag.Attribute("Name"));
            if (IsTrue(tag.Attribute("Active")) && !tag.Attribute("ProgID").empty())
                m_progIDs.emplace(tag.Attribute("ProgID"));
        });
    return text;
}

std::string HostFileSystem::OwnDefinition(const std::string& name) const {
    const std::string text = HostDefinition(name);
    bool replaced = false;
    SeeService(text, [&](const DefinitionTag& tag) {
        replaced = m_names.contains(tag.Attribute("Name")) || m_progIDs.contains(tag.Attribute("ProgID"));
    });
    if (replaced)
        return nothing;
    MenusInUse inUse(text);
    AddLoaded(inUse);
    return FitDefinition(text, std::move(inUse));
}

Ref<Object> HostObjectFactory::Create(std::string_view progID) {
    const auto it = m_makers.find(std::string(progID));
    return it == m_makers.end() ? m_plugins->Create(progID) : it->second();
}

bool HostObjectFactory::HasClass(std::string_view progID) {
    const auto finder = m_plugins.TryAs<IClassFinder>();
    return m_makers.contains(std::string(progID)) || !finder || finder->HasClass(progID);
}

} // namespace corvane::desktop
