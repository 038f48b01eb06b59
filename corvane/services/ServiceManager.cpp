#include "corvane/services/ServiceManager.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Internals.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

namespace corvane {

namespace {

constexpr const char* sFrameworkProgID = "Corvane.Framework";
constexpr const char* sGatedFile = "MirelonSvc.xml"; // is read only while the INI file lets it
constexpr const char* sHelpProgID = "TavelinSvc.TavelinService";
constexpr std::size_t nProductNameCharacters = 255;

// Of a ring that would outlive the library: the tool of a menu has the action item in its tag, which has its
// definition, which has the tool.
void LetGoOfTools(const Ref<ActionItemDefCollection>& colActionItemDefs) {
    for (const auto& oActionItemDef : colActionItemDefs)
        oActionItemDef->SetTool(nullptr);
}

} // namespace

ServiceManager::ServiceManager() = default;

ServiceManager::~ServiceManager() {
    for (const auto& oServiceDef : m_colServiceDefs) {
        LetGoOfTools(oServiceDef->ActionItemDefs());
        for (const auto& oExplorerItemDef : oServiceDef->ExplorerItemDefs()) {
            LetGoOfTools(oExplorerItemDef->ActionItemDefs());
            oExplorerItemDef->Untie();
        }
    }
    for (const auto& oWindowDef : m_colWindowDefs)
        for (const auto& oPageDef : oWindowDef->PageDefs())
            LetGoOfTools(oPageDef->ActionItemDefs());
}

bool ServiceManager::IsServiceAlive(const Ref<Object>& oServiceSubclass) const noexcept {
    try {
        (void)oServiceSubclass.As<IServiceAccess>()->Service().As<ServiceBase>();
        return true;
    } catch (...) {
        return false; // a test, used before a call that would fail
    }
}

void ServiceManager::Initialize() try { LoadServices(); } catch (...) {
    Reraise("ServiceManager", "Initialize");
}

void ServiceManager::LoadServices() try {
    const Ref<ServiceManager> oSelf(this); // a service's constructor may end the application
    m_colServiceObjects->Add(CorvaneMain::Framework(), sFrameworkProgID);
    const auto& oPlatform = CurrentPlatform();
    const std::string sFolder = oPlatform.oUtilities->GetAppFolder("Services");
    const std::vector<std::string> aFiles = oPlatform.oFileSystem->Files(sFolder);
    Ref<IXmlSchemaCache> oSchemaCache = oPlatform.oXmlService->NewSchemaCache();
    oSchemaCache->Add("", oPlatform.oFileSystem->Join(sFolder, "Service.xdr"));
    const Long lTerminations = m_lTerminations;
    for (const auto& sFile : aFiles) {
        if (EqualText(oPlatform.oFileSystem->Extension(sFile), "xml"))
            LoadServices(sFile, oSchemaCache);
        if (m_lTerminations != lTerminations)
            return;
    }
    oSchemaCache = nullptr;
    ResolveExplorerItemDefReferences();
} catch (...) {
    Reraise("ServiceManager", "LoadServices");
}

// One bad file doesn't stop the others: its failure is shown and goes no further, and what earlier steps have put into
// the registries stays.
void ServiceManager::LoadServices(const std::string& sFile, const Ref<IXmlSchemaCache>& oSchemaCache) {
    std::string sContext;
    try {
        LoadService(sFile, oSchemaCache, sContext);
    } catch (...) {
        const Failure oFailure = CurrentFailure();
        try {
            const auto& oPlatform = CurrentPlatform();
            oPlatform.oUtilities->LogError(oPlatform.oUtilities->AppName(), TypeName(), "LoadServices", oFailure,
                                           "Context: " + sContext +
                                               ", File: " + oPlatform.oFileSystem->FileName(sFile) +
                                               ", Desc: " + oFailure.Description,
                                           true);
        } catch (...) {
            // A log that fails doesn't stop the other files either.
        }
    }
}

void ServiceManager::LoadService(const std::string& sFile, const Ref<IXmlSchemaCache>& oSchemaCache,
                                 std::string& sContext) {
    const auto& oPlatform = CurrentPlatform();
    const std::string sIniFile = oPlatform.oUtilities->LibraryFolder() + "\\QRZ.INI";
    if (EqualText(oPlatform.oFileSystem->FileName(sFile), sGatedFile) &&
        oPlatform.oIniReader->ReadInteger(sIniFile, "Preferences", "QRZVGEnabled", 1) != 1)
        return;
    const Ref<IXmlNode> oxmlService = ReadDocument(sFile, oSchemaCache, sContext);
    const std::string sProgID = ToText(CorvaneMain::XMLAttributeValue(oxmlService, "ProgID"));
    if (EqualText(sProgID, sHelpProgID))
        NameProductInAbout(oxmlService, sIniFile);
    const bool bActive = ToBoolean(CorvaneMain::XMLAttributeValue(oxmlService, "Active", false));
    if (sProgID.empty() || !bActive)
        return;
    sContext = "Creating Service Instance";
    const Ref<Object> oService = ServiceObject(sProgID);
    sContext = "Initializing Service Definition";
    AddDefinitions(oxmlService, oService, "Services/" + oPlatform.oFileSystem->FileName(sFile));
}

Ref<IXmlNode> ServiceManager::ReadDocument(const std::string& sFile, const Ref<IXmlSchemaCache>& oSchemaCache,
                                           std::string& sContext) const {
    const auto FailAt = [](Long lLine, Failure oFailure) {
        oFailure.Line = lLine;
        throw oFailure;
    };
    const auto& oPlatform = CurrentPlatform();
    const std::string sText = oPlatform.oFileSystem->ReadAll(sFile);
    sContext = "Loading XML";
    const Ref<IXmlDocument> oDocument = oPlatform.oXmlService->NewDocument();
    if (!oDocument->LoadXml(sText)) {
        const XmlError oError = oDocument->ParseError();
        FailAt(oError.lLine, Failure(FailureNumber::Unique, std::to_string(oError.lErrorCode), "XML Parser"));
    }
    Ref<IXmlNode> oxmlService = oDocument->SelectSingleNode("Service");
    if (!oxmlService)
        Fail(FailureNumber::Unique, "No Service Element found", "XML Parser");
    sContext = "Validating XML";
    const XmlError oError = oDocument->Validate(oSchemaCache);
    if (!oError.sReason.empty())
        FailAt(oError.lLine, Failure(oError.lErrorCode, oError.sReason, "Service Manager"));
    return oxmlService;
}

// The help service's entry names the product, which only the installation knows.
void ServiceManager::NameProductInAbout(const Ref<IXmlNode>& oxmlService, const std::string& sIniFile) const {
    const Ref<IXmlNode> oxmlAbout = oxmlService->SelectSingleNode("//Service/Menus/MenuItem[@ActionItem='About']");
    const std::optional<std::string> oCaption = oxmlAbout->Attribute("Caption");
    if (!oCaption)
        Fail(FailureNumber::ObjectNotSet);
    oxmlAbout->SetAttribute("Caption", "About " + CurrentPlatform().oIniReader->ReadString(sIniFile, "Preferences",
                                                                                           "QRZProductName", *oCaption,
                                                                                           nProductNameCharacters));
}

Ref<Object> ServiceManager::ServiceObject(const std::string& sProgID) {
    if (KeyExists(m_colServiceObjects, sProgID))
        return m_colServiceObjects->Item(sProgID);
    Ref<Object> oService = CurrentPlatform().oObjectFactory->Create(sProgID);
    m_colServiceObjects->Add(oService, sProgID);
    return oService;
}

void ServiceManager::AddDefinitions(const Ref<IXmlNode>& oxmlService, const Ref<Object>& oService,
                                    const std::string& sFile) {
    auto oServiceDef = New<ServiceDef>();
    oServiceDef->SetFile(sFile);
    oServiceDef->Initialize(oxmlService);
    for (const auto& oNode : oxmlService->SelectNodes("Windows/Window")) {
        auto oWindowDef = New<WindowDef>();
        oWindowDef->Initialize(oNode);
        oWindowDef->SetOrigin(oServiceDef->Name(), sFile);
        CorvaneMain::AtLineOf(oNode, [&] { m_colWindowDefs->Add(oWindowDef, oWindowDef->Name()); });
    }
    for (const auto& oNode : oxmlService->SelectNodes("Preferences/Page")) {
        auto oPageDef = New<PageDef>();
        oPageDef->Initialize(oNode);
        m_colPreferencePageDefs->Add(oPageDef);
    }
    CorvaneMain::AtLineOf(oxmlService, [&] {
        if (KeyExists(m_colServiceDefs, oServiceDef->Name()))
            Fail(FailureNumber::Unique, "Service Name " + oServiceDef->Name() + " is not unique", "Service Manager");
    });
    m_colServiceDefs->Add(oServiceDef, oServiceDef->Name());
    m_colServices->Add(oService, oServiceDef->Name());
    if (oServiceDef->IsStartService())
        m_oStartService = oService;
}

void ServiceManager::ResolveExplorerItemDefReferences() try {
    for (const auto& oServiceDef : m_colServiceDefs)
        for (const auto& oExplorerItemDef : oServiceDef->ExplorerItemDefs())
            m_colExplorerItemDefs->Add(oExplorerItemDef, oExplorerItemDef->Name());
    for (const auto& oExplorerItemDef : m_colExplorerItemDefs) {
        if (oExplorerItemDef->ParentExplorerItemName().empty())
            continue;
        const Ref<ExplorerItemDef> oParent = m_colExplorerItemDefs->Item(oExplorerItemDef->ParentExplorerItemName());
        oExplorerItemDef->SetParentExplorerItemDef(oParent);
        oParent->ChildExplorerItemDefs()->Add(oExplorerItemDef, oExplorerItemDef->Name());
    }
} catch (...) {
    Reraise("ServiceManager", "ResolveExplorerItemDefReferences");
}

namespace {

// What a service's procedure fails with says whose it was.
template <class Call>
void CallService(const Ref<Object>& oService, const char* sProcedure, Call fnCall) {
    const Entering oEntering(oService);
    try {
        fnCall();
    } catch (...) {
        RaiseFrom(CorvaneMain::PlaceOf(oService, sProcedure));
    }
}

} // namespace

void ServiceManager::Start() try {
    const Ref<ServiceManager> oSelf(this);
    const Long lTerminations = m_lTerminations;
    for (const auto& oService : m_colServices) {
        CallService(oService, "Initialize", [&] {
            if (const Ref<IService> oInner = CorvaneMain::QueryService(oService))
                oInner->Initialize();
        });
        if (m_lTerminations != lTerminations)
            return;
    }
    if (const Ref<Object> oStartService = m_oStartService)
        CallService(oStartService, "Start", [&] { (void)oStartService->Invoke("Start", {}); });
} catch (...) {
    Reraise("ServiceManager", "Start");
}

void ServiceManager::TerminateOne(const Ref<Object>& oService) {
    CallService(oService, "Terminate", [&] { CorvaneMain::QueryService(oService)->Terminate(); });
}

void ServiceManager::Terminate() try {
    const Ref<ServiceManager> oSelf(this);
    ++m_lTerminations;
    m_lTerminated = 0;
    for (const auto& oService : m_colServices) {
        ++m_lTerminated;
        TerminateOne(oService);
    }
} catch (...) {
    Reraise("ServiceManager", "Terminate");
}

void ServiceManager::TerminateRest() {
    const Ref<ServiceManager> oSelf(this);
    while (m_lTerminated < m_colServices->Count()) {
        try {
            TerminateOne(m_colServices->Item(++m_lTerminated));
        } catch (...) {
            Report("ServiceManager", "Terminate");
        }
    }
}

} // namespace corvane
