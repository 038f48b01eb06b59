#include "headless/StandIns.h"

#include "adapters/common/Encoding.h"
#include "corvane/services/ExplorerItemDef.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace corvane::inspect {

StandInObject::StandInObject(Ref<Record> oRecord, StandInSpec oSpec, const std::string& sId)
    : m_oRecord(std::move(oRecord)), m_oSpec(std::move(oSpec)), m_sId(sId) {
    m_oRecord->Name(*this, sId);
}

StandInObject::~StandInObject() {
    m_oRecord->Forget(*this);
}

Variant StandInObject::Invoke(std::string_view sName, std::span<const Variant> aArguments) {
    if (m_oSpec.setMissing.contains(FoldText(sName)))
        FailNoSuchMember(*this, sName);
    Hear(sName, {aArguments.begin(), aArguments.end()});
    return {};
}

void StandInObject::Hear(std::string_view sMember, std::vector<Variant> aArguments, bool bHasArguments) {
    m_oRecord->Add({m_sId, std::string(sMember), std::move(aArguments), bHasArguments});
    const auto it = m_oSpec.mapFail.find(FoldText(sMember));
    if (it != m_oSpec.mapFail.end())
        throw it->second;
}

Ref<IService> StandIn::Service() {
    if (!m_oServiceBase)
        BecomeService();
    return m_oServiceBase;
}

Ref<IExplorerItem> StandIn::ExplorerItem() {
    if (!m_oExplorerItemBase)
        BecomeExplorerItem();
    return m_oExplorerItemBase;
}

Ref<IPage> StandIn::Page() {
    if (!m_oPageBase)
        BecomePage();
    return m_oPageBase;
}

void StandIn::BecomeService() {
    m_oServiceBase = New<ServiceBase>();
    ServiceBase& oBase = *m_oServiceBase;
    Hold(oBase.InitializeEvent.Subscribe([this] { Hear("Initialize", {}); }));
    Hold(oBase.TerminateEvent.Subscribe([this] { Hear("Terminate", {}); }));
    Hold(oBase.GetUnsavedItems.Subscribe([this](const Ref<Dictionary>&, Double&) { Hear("GetUnsavedItems", {}); }));
    Hold(oBase.SaveEvent.Subscribe([this](const Ref<Object>& oItem) { Hear("Save", {Variant(oItem)}); }));
    Hold(oBase.SaveCompleteEvent.Subscribe([this](bool bCancelled) { Hear("SaveComplete", {bCancelled}); }));
    Hold(oBase.OnExitEvent.Subscribe([this](const auto&, bool bCancelled) { Hear("OnExit", {bCancelled}); }));
}

void StandIn::BecomeExplorerItem() {
    m_oExplorerItemBase = New<ExplorerItemBase>();
    ExplorerItemBase& oBase = *m_oExplorerItemBase;
    oBase.NameSilently(m_oSpec.sName);
    Hold(oBase.InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& colChildren) {
        Hear("Initialize", {}, false);
        if (m_oExplorerItemBase->Name().empty())
            m_oExplorerItemBase->NameSilently(m_oExplorerItemBase->ExplorerItemDef()->Name());
        FillChildren(colChildren);
    }));
    Hold(oBase.OnDisplayName.Subscribe([this](std::string& sText) {
        Hear("OnDisplayName", {sText});
        sText = m_oSpec.sDisplayName.value_or(sText);
    }));
    Hold(oBase.OnBeforeRename.Subscribe([this](std::string& sText) {
        Hear("OnBeforeRename", {sText});
        sText = m_oSpec.sEditName.value_or(sText);
    }));
    Hold(oBase.OnAfterRename.Subscribe([this](const std::string& sName) { Hear("OnAfterRename", {sName}); }));
    Hold(oBase.OnExitEvent.Subscribe([this](const auto&, bool bCancelled) { Hear("OnExit", {bCancelled}); }));
}

void StandIn::FillChildren(const Ref<KeyedCollection<Ref<Object>>>& colChildren) {
    for (const auto& oChild : m_oSpec.aChildren) {
        const std::string sId = m_sId + "/" + oChild.sName;
        if (oChild.bAccess)
            colChildren->Add(New<StandIn>(m_oRecord, oChild, sId));
        else
            colChildren->Add(New<StandInObject>(m_oRecord, oChild, sId));
    }
}

void StandIn::BecomePage() {
    m_oPageBase = New<PageBase>();
    PageBase& oBase = *m_oPageBase;
    Hold(oBase.InitializeEvent.Subscribe([this](const Ref<Object>& oBag) { Hear("Initialize", {Variant(oBag)}); }));
    Hold(oBase.TerminateEvent.Subscribe([this](const Ref<Object>& oBag) { Hear("Terminate", {Variant(oBag)}); }));
    Hold(oBase.ValidateEvent.Subscribe([this](bool& bIsValid) { Hear("Validate", {bIsValid}); }));
    Hold(oBase.ActivateEvent.Subscribe([this] { Hear("Activate", {}); }));
    Hold(oBase.DeactivateEvent.Subscribe([this] { Hear("Deactivate", {}); }));
    Hold(oBase.SaveEvent.Subscribe([this] { Hear("Save", {}); }));
    Hold(oBase.CommandClickEvent.Subscribe(
        [this](StandardCommandConstants eCommand) { Hear("CommandClick", {static_cast<Long>(eCommand)}); }));
    Hold(oBase.OnExitEvent.Subscribe([this](const auto&, bool bCancelled) { Hear("OnExit", {bCancelled}); }));
}

namespace {

using Json = nlohmann::json;

Failure FailureIn(const Json& oJson) {
    Failure oFailure(oJson.value("number", FailureNumber::InvalidProcedureCall));
    oFailure.Source = oJson.value("source", ""); // also when it is empty
    oFailure.Description = oJson.value("description", "");
    return oFailure;
}

StandInSpec SpecIn(const Json& oJson) {
    StandInSpec oSpec;
    if (oJson.contains("create"))
        oSpec.oCreate = FailureIn(oJson.at("create"));
    oSpec.bAccess = oJson.value("access", true);
    if (oJson.contains("fail"))
        for (const auto& [sMember, oFailure] : oJson.at("fail").items())
            oSpec.mapFail.insert_or_assign(FoldText(sMember), FailureIn(oFailure));
    if (oJson.contains("missing"))
        for (const auto& oMember : oJson.at("missing"))
            oSpec.setMissing.insert(FoldText(oMember.get<std::string>()));
    oSpec.sName = oJson.value("name", "");
    if (oJson.contains("children"))
        for (const auto& oChild : oJson.at("children"))
            oSpec.aChildren.push_back(SpecIn(oChild));
    if (oJson.contains("displayName"))
        oSpec.sDisplayName = oJson.at("displayName").get<std::string>();
    if (oJson.contains("editName"))
        oSpec.sEditName = oJson.at("editName").get<std::string>();
    return oSpec;
}

} // namespace

StandInFile ReadStandIns(const std::string& sFile) {
    std::ifstream oStream(sFile, std::ios::binary);
    if (!oStream)
        Fail(FailureNumber::FileNotFound, "There is no file \"" + sFile + "\"");
    StandInFile oFile;
    try {
        const Json oJson = Json::parse(oStream);
        if (oJson.contains("objects"))
            for (const auto& [sProgID, oSpec] : oJson.at("objects").items())
                oFile.mapObjects[FoldText(sProgID)] = SpecIn(oSpec);
        if (oJson.contains("ini")) {
            oFile.bHasIni = true;
            const Json& oIni = oJson.at("ini");
            if (oIni.contains("QRZVGEnabled"))
                oFile.lVGEnabled = oIni.at("QRZVGEnabled").get<Long>();
            if (oIni.contains("QRZProductName"))
                oFile.sProductName = oIni.at("QRZProductName").get<std::string>();
        }
        if (oJson.contains("form"))
            oFile.bFormReportsDeactivate = oJson.at("form").value("reportsDeactivate", true);
    } catch (const Json::exception& oException) {
        Fail(FailureNumber::InvalidProcedureCall, "\"" + sFile + "\" can't be understood: " + oException.what());
    }
    return oFile;
}

Ref<Object> StandInFactory::Create(std::string_view sProgID) {
    if (EqualText(sProgID, "Corvane.Framework"))
        Fail(FailureNumber::CannotCreateObject, "Can't create an object of \"" + std::string(sProgID) +
                                                    "\": the library has one, which only a service's file can name");
    const auto it = m_pFile->mapObjects.find(FoldText(sProgID));
    const StandInSpec oSpec = it == m_pFile->mapObjects.end() ? StandInSpec() : it->second;
    if (oSpec.oCreate)
        throw *oSpec.oCreate;
    const std::string sId = m_oRecord->NewId(sProgID);
    if (!oSpec.bAccess)
        return New<StandInObject>(m_oRecord, oSpec, sId);
    return Make(oSpec, sId);
}

Ref<Object> StandInFactory::Make(const StandInSpec& oSpec, const std::string& sId) {
    return New<StandIn>(m_oRecord, oSpec, sId);
}

Ref<Object> NamingFactory::Create(std::string_view sProgID) {
    Ref<Object> oObject = m_oFactory->Create(sProgID);
    m_oRecord->Name(*oObject, m_oRecord->NewId(sProgID));
    return oObject;
}

Long StandInIni::ReadInteger(std::string_view sFile, std::string_view sSection, std::string_view sKey,
                             Long lDefault) const {
    if (!m_pFile->bHasIni)
        return m_oFile->ReadInteger(sFile, sSection, sKey, lDefault);
    return EqualText(sKey, "QRZVGEnabled") ? m_pFile->lVGEnabled.value_or(lDefault) : lDefault;
}

std::string StandInIni::ReadString(std::string_view sFile, std::string_view sSection, std::string_view sKey,
                                   std::string_view sDefault, std::size_t nMaximum) const {
    if (!m_pFile->bHasIni)
        return m_oFile->ReadString(sFile, sSection, sKey, sDefault, nMaximum);
    std::string_view sValue = sDefault;
    if (EqualText(sKey, "QRZProductName") && m_pFile->sProductName)
        sValue = *m_pFile->sProductName;
    return std::string(FirstCharacters(sValue, nMaximum));
}

} // namespace corvane::inspect
