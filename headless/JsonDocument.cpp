#include "adapters/common/Json.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/Document.h"
#include "headless/FormJson.h"
#include "headless/FormPages.h"
#include "headless/JobText.h"
#include "items/Items.h"

namespace corvane::inspect {

namespace {

using Json = nlohmann::json;

Json ServicesJson(const ServiceManager& serviceManager) {
    Json services = Json::array();
    for (const auto& serviceDef : serviceManager.ServiceDefs())
        services.push_back({{"name", serviceDef->Name()}, {"progId", serviceDef->ProgID()}});
    return services;
}

bool IsHostTool(const Tool& tool) {
    return tool.ToolId() < 4; // the library's identifiers begin at 4
}

Json ActionJson(const ModelHost& host, const Tool& tool) {
    const auto item = tool.TagVariant().TryAs<ActionItem>();
    if (!item)
        return nullptr;
    Json action{{"name", item->Name()}, {"procedure", item->Action()}};
    if (const std::string id = host.Recorded().IdOf(item->ActionsProviderObj()); !id.empty())
        action["provider"] = id;
    return action;
}

Json ToolJson(const ModelHost& host, const Tool& tool) {
    Json shortCuts = Json::array();
    for (const auto& shortCut : tool.ShortCuts())
        shortCuts.push_back(shortCut->Value());
    return {{"id", tool.ToolId()},
            {"name", tool.Name()},
            {"caption", tool.Caption()},
            {"toolTip", tool.ToolTip()},
            {"description", tool.Description()},
            {"category", tool.Category()},
            {"dropDownBand", tool.DropDownBand()},
            {"shortCuts", shortCuts},
            {"checked", tool.Checked()},
            {"enabled", tool.Enabled()},
            {"visible", tool.Visible()},
            {"action", ActionJson(host, tool)}};
}

Json PictureName(const Ref<Picture>& picture) {
    return picture ? Json(picture->Name()) : Json(nullptr);
}

Json InstanceJson(const Tool& instance) {
    if (IsHostTool(instance))
        return {{"name", instance.Name()}};
    Json pictures = Json::array();
    for (const auto& [state, picture] : instance.Pictures())
        pictures.push_back({{"state", state}, {"picture", PictureName(picture)}});
    return {{"name", instance.Name()},
            {"id", instance.ToolId()},
            {"caption", instance.Caption()},
            {"toolTip", instance.ToolTip()},
            {"description", instance.Description()},
            {"dropDownBand", instance.DropDownBand()},
            {"isDefaultItem", instance.IsDefaultItem()},
            {"pictures", pictures}};
}

Json BandJson(const Band& band) {
    Json json{{"name", band.Name()}};
    if (band.Kind())
        json["kind"] = static_cast<Long>(*band.Kind());
    if (band.WasCaptionSet())
        json["caption"] = band.Caption();
    if (band.WasVisibleSet())
        json["visible"] = band.Visible();
    Json& tools = json["tools"] = Json::array();
    for (const auto& instance : band.Tools()->All())
        tools.push_back(InstanceJson(*instance));
    return json;
}

void AddNodes(Json& nodes, const std::vector<Node*>& siblings) {
    for (const Node* node : siblings) {
        const std::string image = node->Image();
        nodes.push_back({{"key", node->Key()},
                         {"parent", node->Parent() ? Json(node->Parent()->Key()) : Json(nullptr)},
                         {"text", node->Text()},
                         {"image", image.empty() ? Json(nullptr) : Json(image)}});
        AddNodes(nodes, node->Children());
    }
}

Json ExplorerJson(const ModelHost& host, const DocumentOptions& options) {
    Json json{{"visible", host.Bar()->Bands()->Item("Explorer")->Visible()}};
    Json& tabs = json["tabs"] = Json::array();
    for (const auto& tvw : host.Trees()) {
        Json tab{{"caption", host.Tabs()->CaptionOf(tvw->Container())}, {"nodes", Json::array()}};
        AddNodes(tab["nodes"], tvw->GetNodes()->Roots());
        if (const auto selection = host.ExplorerItems().Selected(); selection->IsSeveral() && selection->Tree() == tvw)
            for (const auto& node : selection->Nodes())
                tab["selected"].push_back(node->Key());
        if (options.sizes && tvw->Width() >= 0)
            tab["width"] = tvw->Width();
        if (options.sizes && tvw->Height() >= 0)
            tab["height"] = tvw->Height();
        tabs.push_back(std::move(tab));
    }
    Json& imageList = json["images"] = Json::array();
    if (const auto images = host.Images())
        for (const auto& image : images->ListImages())
            imageList.push_back({{"key", image.sKey}, {"picture", PictureName(image.oPicture)}});
    return json;
}

// Nothing for a window without forms.
Json PagesJson(const ModelHost& host, const Ref<Window>& window) {
    Json pages = Json::array();
    bool hasForm = false;
    for (const ShownPage& page : PagesOf(host, window)) {
        hasForm = hasForm || page.form || !page.problem.empty();
        Json json{{"progId", page.pageDef->PageProgID()}, {"caption", page.pageDef->Caption()}};
        if (const std::string problem = ProblemOf(page); !problem.empty())
            json["problem"] = problem;
        if (page.form) {
            json["valid"] = page.form->IsValid();
            if (page.form->IsChanged())
                json["changed"] = true;
            json["fields"] = FieldsJson(*page.form->Model());
        }
        pages.push_back(std::move(json));
    }
    return hasForm ? pages : Json();
}

Json WindowsJson(const ModelHost& host, const WindowManager& windowManager) {
    Json windows = Json::array();
    if (!windowManager.Windows())
        return windows;
    for (const auto& window : windowManager.Windows()) {
        Json json{{"name", window->WindowDef()->Name()}};
        // Without a key of its own a window goes by its identity number.
        if (window->Key() != std::to_string(window->ObjectKey()))
            json["key"] = window->Key();
        if (Json pages = PagesJson(host, window); !pages.is_null())
            json["pages"] = std::move(pages);
        windows.push_back(std::move(json));
    }
    return windows;
}

void AddJob(Json& jobs, const corvane::jobs::Job& job) {
    Json json{{"name", job.Title()}, {"state", StateName(job.State())}, {"text", job.Text()}, {"log", job.LogLines()}};
    if (!job.BelongsTo().service.empty())
        json["service"] = job.BelongsTo().service;
    if (!job.BelongsTo().name.empty())
        json["owner"] = job.BelongsTo().name;
    if (const auto& failure = job.Error())
        json["failure"] = {{"number", failure->Number},
                           {"source", failure->Source},
                           {"description", failure->Description},
                           {"context", failure->Context}};
    for (const auto& [title, key] : job.WaitsFor())
        json["waitsFor"].push_back({{"name", title}, {"key", key}});
    jobs.push_back(std::move(json));
}

Json JobsJson(const corvane::jobs::Manager& manager) {
    Json jobs = Json::array();
    for (const auto& job : manager.Ended())
        AddJob(jobs, *job);
    for (const auto& job : manager.Active())
        AddJob(jobs, *job);
    return jobs;
}

Json LogJson(const Record& record) {
    Json log = Json::array();
    for (const auto& entry : record.log)
        log.push_back({{"module", entry.module},
                       {"procedure", entry.procedure},
                       {"number", entry.failure.Number},
                       {"source", entry.failure.Source},
                       {"description", entry.failure.Description},
                       {"context", entry.context},
                       {"shown", entry.shown}});
    return log;
}

Json ArgumentJson(const Variant& argument) {
    if (argument.IsObject()) {
        if (const auto item = ToObject(argument).TryAs<ActionItem>())
            return {{"actionItem", item->Name()}};
        return nullptr;
    }
    if (const auto* boolean = argument.Get<bool>())
        return *boolean;
    if (const auto* longValue = argument.Get<Long>())
        return *longValue;
    if (const auto* longLong = argument.Get<LongLong>())
        return *longLong;
    return argument.IsEmpty() ? Json(nullptr) : Json(ToText(argument));
}

Json CallsJson(const Record& record) {
    Json calls = Json::array();
    for (const auto& call : record.calls) {
        Json json{{"object", call.object}, {"member", call.member}};
        if (call.hasArguments) {
            Json& arguments = json["args"] = Json::array();
            for (const auto& argument : call.arguments)
                arguments.push_back(ArgumentJson(argument));
        }
        calls.push_back(std::move(json));
    }
    return calls;
}

} // namespace

std::string JsonDocument(const ModelHost& host, const DocumentOptions& options) {
    Json json;
    const Ref<Framework> framework = CorvaneMain::Framework();
    if (const auto serviceManager = framework ? framework->ServiceManager() : nullptr) {
        json["services"] = ServicesJson(*serviceManager);
        const std::string start = host.Recorded().IdOf(serviceManager->StartService());
        json["startService"] = start.empty() ? Json(nullptr) : Json(start);
    }
    if (const auto windowManager = framework ? framework->WindowManager() : nullptr)
        json["windows"] = WindowsJson(host, *windowManager);
    Json& tools = json["tools"] = Json::array();
    for (const auto& tool : host.Bar()->Tools()->All())
        if (!IsHostTool(*tool))
            tools.push_back(ToolJson(host, *tool));
    Json& bands = json["bands"] = Json::array();
    for (const auto& band : host.Bar()->Bands()->All())
        bands.push_back(BandJson(*band));
    json["explorer"] = ExplorerJson(host, options);
    if (std::string status = host.Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
        !status.empty())
        json["status"] = std::move(status);
    if (Json jobs = JobsJson(*host.Jobs()); !jobs.empty())
        json["jobs"] = std::move(jobs);
    json["log"] = LogJson(host.Recorded());
    if (options.standIns)
        json["calls"] = CallsJson(host.Recorded());
    json["failure"] = nullptr;
    if (const auto& failure = host.FirstFailure())
        json["failure"] = {
            {"number", failure->Number}, {"source", failure->Source}, {"description", failure->Description}};
    if (options.popups)
        json["popups"] = host.Recorded().popups;
    if (options.messages) {
        Json& messages = json["messages"] = Json::array();
        for (const auto& message : host.Recorded().messages)
            messages.push_back({{"text", message.text}, {"title", message.title}});
    }
    return WriteJson(json, 2) + "\n";
}

} // namespace corvane::inspect
