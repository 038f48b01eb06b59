// Reads the folder of definition files into the registries of the application, and controls the lifecycle of the
// services.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/base/Ref.h"
#include "corvane/platform/IXmlService.h"
#include "corvane/services/ServiceDef.h"
#include "corvane/services/WindowDef.h"

#include <string>

namespace corvane {

class __attribute__((visibility("default"))) ServiceManager final : public Automation<ServiceManager> {
public:
    ServiceManager();
    ~ServiceManager() override;

    // Whether the object is a service built on a ServiceBase; true when it has none to show. Never fails.
    [[nodiscard]] bool IsServiceAlive(const Ref<Object>& oServiceSubclass) const noexcept;

    // After Initialize. Definitions and services in order of loading, by name; preference pages without keys.
    [[nodiscard]] const Ref<KeyedCollection<Ref<ServiceDef>>>& ServiceDefs() const { return m_colServiceDefs; }
    [[nodiscard]] const Ref<KeyedCollection<Ref<ExplorerItemDef>>>& ExplorerItemDefs() const {
        return m_colExplorerItemDefs;
    }
    [[nodiscard]] const Ref<KeyedCollection<Ref<WindowDef>>>& WindowDefs() const { return m_colWindowDefs; }
    [[nodiscard]] const Ref<KeyedCollection<Ref<PageDef>>>& PreferencePageDefs() const {
        return m_colPreferencePageDefs;
    }
    [[nodiscard]] const Ref<KeyedCollection<Ref<Object>>>& Services() const { return m_colServices; }
    // The object of the last accepted file that says so; nothing when none does.
    [[nodiscard]] const Ref<Object>& StartService() const { return m_oStartService; }

    // Reads every definition file and creates every service object. A bad file is shown and skipped. Fails when the
    // folder (76) or the schema can't be read, when two accepted files name one explorer item (457) and when a parent
    // isn't there (5).
    void Initialize();
    // Each service's Terminate, in order of loading, up to the first failure.
    void Terminate();
    // Each service's Initialize, in order of loading, up to the first failure; then the start service's method Start.
    // Ends at once when a service ends the application.
    void Start();
    // Terminate of those services that the latest Terminate didn't reach; a failure is shown, and the next one follows.
    void TerminateRest();

    std::string_view TypeName() const override { return "ServiceManager"; }

    static constexpr auto Members = MemberTable(
        Method("IsServiceAlive", &ServiceManager::IsServiceAlive),
        Property("ServiceDefs", &ServiceManager::ServiceDefs),
        Property("ExplorerItemDefs", &ServiceManager::ExplorerItemDefs),
        Property("WindowDefs", &ServiceManager::WindowDefs),
        Property("PreferencePageDefs", &ServiceManager::PreferencePageDefs),
        Property("Services", &ServiceManager::Services), Property("StartService", &ServiceManager::StartService),
        Method("Initialize", &ServiceManager::Initialize), Method("Terminate", &ServiceManager::Terminate),
        Method("Start", &ServiceManager::Start));

private:
    void LoadServices();
    void LoadServices(const std::string& sFile, const Ref<IXmlSchemaCache>& oSchemaCache);
    void LoadService(const std::string& sFile, const Ref<IXmlSchemaCache>& oSchemaCache, std::string& sContext);
    [[nodiscard]] Ref<IXmlNode> ReadDocument(const std::string& sFile, const Ref<IXmlSchemaCache>& oSchemaCache,
                                             std::string& sContext) const;
    void NameProductInAbout(const Ref<IXmlNode>& oxmlService, const std::string& sIniFile) const;
    [[nodiscard]] Ref<Object> ServiceObject(const std::string& sProgID);
    void AddDefinitions(const Ref<IXmlNode>& oxmlService, const Ref<Object>& oService, const std::string& sFile);
    static void TerminateOne(const Ref<Object>& oService);
    void ResolveExplorerItemDefReferences();

    Ref<KeyedCollection<Ref<ServiceDef>>> m_colServiceDefs = New<KeyedCollection<Ref<ServiceDef>>>();
    Ref<KeyedCollection<Ref<Object>>> m_colServices = New<KeyedCollection<Ref<Object>>>();
    Ref<KeyedCollection<Ref<ExplorerItemDef>>> m_colExplorerItemDefs = New<KeyedCollection<Ref<ExplorerItemDef>>>();
    Ref<KeyedCollection<Ref<WindowDef>>> m_colWindowDefs = New<KeyedCollection<Ref<WindowDef>>>();
    Ref<KeyedCollection<Ref<PageDef>>> m_colPreferencePageDefs = New<KeyedCollection<Ref<PageDef>>>();
    Ref<KeyedCollection<Ref<Object>>> m_colServiceObjects = New<KeyedCollection<Ref<Object>>>(); // by ProgID
    Ref<Object> m_oStartService;
    Long m_lTerminations = 0;
    Long m_lTerminated = 0; // services that the latest Terminate has reached
};

} // namespace corvane
