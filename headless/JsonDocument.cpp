#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/Document.h"

#include <nlohmann/json.hpp>

namespace corvane::inspect {

namespace {

using Json = nlohmann::json;

Json ServicesJson(const ServiceManager& oServiceManager) {
    Json aServices = Json::array();
    for (const auto& oServiceDef : oServiceManager.ServiceDefs())
        aServices.push_back({{"name", oServiceDef->Name()}, {"progId", oServiceDef->ProgID()}});
    return aServices;
}

bool IsHostTool(const Tool& oTool) {
    return oTool.ToolId() < 4; // the library's identifiers begin at 4
}

Json ActionJson(const ModelHost& oHost, const Tool& oTool) {
    const auto oItem = oTool.TagVariant().TryAs<ActionItem>();
    if (!oItem)
        return nullptr;
    Json oAction{{"name", oItem->Name()}, {"procedure", oItem->Action()}};
    if (const std::string sId = oHost.Recorded().IdOf(oItem->ActionsProviderObj()); !sId.empty())
        oAction["provider"] = sId;
    return oAction;
}

Json ToolJson(const ModelHost& oHost, const Tool& oTool) {
    Json aShortCuts = Json::array();
    for (const auto& oShortCut : oTool.ShortCuts())
        aShortCuts.push_back(oShortCut->Value());
    return {{"id", oTool.ToolId()},
            {"name", oTool.Name()},
            {"caption", oTool.Caption()},
            {"toolTip", oTool.ToolTip()},
            {"description", oTool.Description()},
            {"category", oTool.Category()},
            {"dropDownBand", oTool.DropDownBand()},
            {"shortCuts", aShortCuts},
            {"checked", oTool.Checked()},
            {"enabled", oTool.Enabled()},
            {"visible", oTool.Visible()},
            {"action", ActionJson(oHost, oTool)}};
}

Json PictureName(const Ref<Picture>& oPicture) {
    return oPicture ? Json(oPicture->Name()) : Json(nullptr);
}

Json InstanceJson(const Tool& oInstance) {
    if (IsHostTool(oInstance))
        return {{"name", oInstance.Name()}};
    Json aPictures = Json::array();
    for (const auto& [lState, oPicture] : oInstance.Pictures())
        aPictures.push_back({{"state", lState}, {"picture", PictureName(oPicture)}});
    return {{"name", oInstance.Name()},
            {"id", oInstance.ToolId()},
            {"caption", oInstance.Caption()},
            {"toolTip", oInstance.ToolTip()},
            {"description", oInstance.Description()},
            {"dropDownBand", oInstance.DropDownBand()},
            {"isDefaultItem", oInstance.IsDefaultItem()},
            {"pictures", aPictures}};
}

Json BandJson(const Band& oBand) {
    Json oJson{{"name", oBand.Name()}};
    if (oBand.Kind())
        oJson["kind"] = static_cast<Long>(*oBand.Kind());
    if (oBand.WasCaptionSet())
        oJson["caption"] = oBand.Caption();
    if (oBand.WasVisibleSet())
        oJson["visible"] = oBand.Visible();
    Json& aTools = oJson["tools"] = Json::array();
    for (const auto& oInstance : oBand.Tools()->All())
        aTools.push_back(InstanceJson(*oInstance));
    return oJson;
}

void AddNodes(Json& aNodes, const std::vector<Node*>& aSiblings) {
    for (const Node* pNode : aSiblings) {
        const std::string sImage = pNode->Image();
        aNodes.push_back({{"key", pNode->Key()},
                          {"parent", pNode->Parent() ? Json(pNode->Parent()->Key()) : Json(nullptr)},
                          {"text", pNode->Text()},
                          {"image", sImage.empty() ? Json(nullptr) : Json(sImage)}});
        AddNodes(aNodes, pNode->Children());
    }
}

Json ExplorerJson(const ModelHost& oHost, const DocumentOptions& oOptions) {
    Json oJson{{"visible", oHost.Bar()->Bands()->Item("Explorer")->Visible()}};
    Json& aTabs = oJson["tabs"] = Json::array();
    for (const auto& tvw : oHost.Trees()) {
        Json oTab{{"caption", oHost.Tabs()->CaptionOf(tvw->Container())}, {"nodes", Json::array()}};
        AddNodes(oTab["nodes"], tvw->GetNodes()->Roots());
        if (oOptions.bSizes && tvw->Width() >= 0)
            oTab["width"] = tvw->Width();
        if (oOptions.bSizes && tvw->Height() >= 0)
            oTab["height"] = tvw->Height();
        aTabs.push_back(std::move(oTab));
    }
    Json& aImages = oJson["images"] = Json::array();
    if (const auto oImages = oHost.Images())
        for (const auto& oImage : oImages->ListImages())
            aImages.push_back({{"key", oImage.sKey}, {"picture", PictureName(oImage.oPicture)}});
    return oJson;
}

Json WindowsJson(const WindowManager& oWindowManager) {
    Json aWindows = Json::array();
    if (!oWindowManager.Windows())
        return aWindows;
    for (const auto& oWindow : oWindowManager.Windows()) {
        Json oJson{{"name", oWindow->WindowDef()->Name()}};
        // Without a key of its own a window goes by its identity number.
        if (oWindow->Key() != std::to_string(oWindow->ObjectKey()))
            oJson["key"] = oWindow->Key();
        aWindows.push_back(std::move(oJson));
    }
    return aWindows;
}

Json LogJson(const Record& oRecord) {
    Json aLog = Json::array();
    for (const auto& oEntry : oRecord.aLog)
        aLog.push_back({{"module", oEntry.sModule},
                        {"procedure", oEntry.sProcedure},
                        {"number", oEntry.oFailure.Number},
                        {"source", oEntry.oFailure.Source},
                        {"description", oEntry.oFailure.Description},
                        {"context", oEntry.sContext},
                        {"shown", oEntry.bShown}});
    return aLog;
}

Json ArgumentJson(const Variant& vArgument) {
    if (vArgument.IsObject()) {
        if (const auto oItem = ToObject(vArgument).TryAs<ActionItem>())
            return {{"actionItem", oItem->Name()}};
        return nullptr;
    }
    if (const auto* pBoolean = vArgument.Get<bool>())
        return *pBoolean;
    if (const auto* pLong = vArgument.Get<Long>())
        return *pLong;
    return vArgument.IsEmpty() ? Json(nullptr) : Json(ToText(vArgument));
}

Json CallsJson(const Record& oRecord) {
    Json aCalls = Json::array();
    for (const auto& oCall : oRecord.aCalls) {
        Json oJson{{"object", oCall.sObject}, {"member", oCall.sMember}};
        if (oCall.bHasArguments) {
            Json& aArguments = oJson["args"] = Json::array();
            for (const auto& vArgument : oCall.aArguments)
                aArguments.push_back(ArgumentJson(vArgument));
        }
        aCalls.push_back(std::move(oJson));
    }
    return aCalls;
}

} // namespace

std::string JsonDocument(const ModelHost& oHost, const DocumentOptions& oOptions) {
    Json oJson;
    const Ref<Framework> oFramework = CorvaneMain::Framework();
    if (const auto oServiceManager = oFramework ? oFramework->ServiceManager() : nullptr) {
        oJson["services"] = ServicesJson(*oServiceManager);
        const std::string sStart = oHost.Recorded().IdOf(oServiceManager->StartService());
        oJson["startService"] = sStart.empty() ? Json(nullptr) : Json(sStart);
    }
    if (const auto oWindowManager = oFramework ? oFramework->WindowManager() : nullptr)
        oJson["windows"] = WindowsJson(*oWindowManager);
    Json& aTools = oJson["tools"] = Json::array();
    for (const auto& oTool : oHost.Bar()->Tools()->All())
        if (!IsHostTool(*oTool))
            aTools.push_back(ToolJson(oHost, *oTool));
    Json& aBands = oJson["bands"] = Json::array();
    for (const auto& oBand : oHost.Bar()->Bands()->All())
        aBands.push_back(BandJson(*oBand));
    oJson["explorer"] = ExplorerJson(oHost, oOptions);
    oJson["log"] = LogJson(oHost.Recorded());
    if (oOptions.bStandIns)
        oJson["calls"] = CallsJson(oHost.Recorded());
    oJson["failure"] = nullptr;
    if (const auto& oFailure = oHost.FirstFailure())
        oJson["failure"] = {
            {"number", oFailure->Number}, {"source", oFailure->Source}, {"description", oFailure->Description}};
    if (oOptions.bPopups)
        oJson["popups"] = oHost.Recorded().aPopups;
    if (oOptions.bMessages) {
        Json& aMessages = oJson["messages"] = Json::array();
        for (const auto& oMessage : oHost.Recorded().aMessages)
            aMessages.push_back({{"text", oMessage.sText}, {"title", oMessage.sTitle}});
    }
    return oJson.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace corvane::inspect
