#include "headless/StandIns.h"

#include "adapters/common/Encoding.h"
#include "adapters/common/Json.h"
#include "adapters/common/Paths.h"
#include "corvane/services/ExplorerItemDef.h"

#include <sstream>

namespace corvane::inspect {

StandInObject::StandInObject(Ref<Record> record, StandInSpec spec, const std::string& id)
    : m_record(std::move(record)), m_spec(std::move(spec)), m_id(id) {
    m_record->Name(*this, id);
}

StandInObject::~StandInObject() {
    m_record->Forget(*this);
}

Variant StandInObject::Invoke(std::string_view name, std::span<const Variant> arguments) {
    if (m_spec.missing.contains(FoldText(name)))
        FailNoSuchMember(*this, name);
    Hear(name, {arguments.begin(), arguments.end()});
    return {};
}

void StandInObject::Put(std::string_view name, const Variant& value) {
    if (m_spec.missing.contains(FoldText(name)))
        FailNoSuchMember(*this, name);
    Hear(name, {value});
}

void StandInObject::Hear(std::string_view member, std::vector<Variant> arguments, bool hasArguments) {
    m_record->Add({m_id, std::string(member), std::move(arguments), hasArguments});
    const auto it = m_spec.fail.find(FoldText(member));
    if (it != m_spec.fail.end())
        throw it->second;
}

Ref<IService> StandIn::Service() {
    if (!m_serviceBase)
        BecomeService();
    return m_serviceBase;
}

Ref<IExplorerItem> StandIn::ExplorerItem() {
    if (!m_explorerItemBase)
        BecomeExplorerItem();
    return m_explorerItemBase;
}

Ref<IPage> StandIn::Page() {
    if (!m_pageBase)
        BecomePage();
    return m_pageBase;
}

void StandIn::BecomeService() {
    m_serviceBase = New<ServiceBase>();
    ServiceBase& base = *m_serviceBase;
    Hold(base.InitializeEvent.Subscribe([this] { Hear("Initialize", {}); }));
    Hold(base.TerminateEvent.Subscribe([this] { Hear("Terminate", {}); }));
    Hold(base.GetUnsavedItems.Subscribe([this](const Ref<Dictionary>&, Double&) { Hear("GetUnsavedItems", {}); }));
    Hold(base.SaveEvent.Subscribe([this](const Ref<Object>& item) { Hear("Save", {Variant(item)}); }));
    Hold(base.SaveCompleteEvent.Subscribe([this](bool cancelled) { Hear("SaveComplete", {cancelled}); }));
    Hold(base.OnExitEvent.Subscribe([this](const auto&, bool cancelled) { Hear("OnExit", {cancelled}); }));
}

void StandIn::BecomeExplorerItem() {
    m_explorerItemBase = New<ExplorerItemBase>();
    ExplorerItemBase& base = *m_explorerItemBase;
    base.NameSilently(m_spec.name);
    Hold(base.InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& children) {
        Hear("Initialize", {}, false);
        if (m_explorerItemBase->Name().empty())
            m_explorerItemBase->NameSilently(m_explorerItemBase->ExplorerItemDef()->Name());
        FillChildren(children);
    }));
    Hold(base.OnDisplayName.Subscribe([this](std::string& text) {
        Hear("OnDisplayName", {text});
        text = m_spec.displayName.value_or(text);
    }));
    Hold(base.OnBeforeRename.Subscribe([this](std::string& text) {
        Hear("OnBeforeRename", {text});
        text = m_spec.editName.value_or(text);
    }));
    Hold(base.OnAfterRename.Subscribe([this](const std::string& name) { Hear("OnAfterRename", {name}); }));
    Hold(base.OnExitEvent.Subscribe([this](const auto&, bool cancelled) { Hear("OnExit", {cancelled}); }));
}

void StandIn::FillChildren(const Ref<KeyedCollection<Ref<Object>>>& children) {
    for (const auto& child : m_spec.children) {
        const std::string id = m_id + "/" + child.name;
        if (child.access)
            children->Add(New<StandIn>(m_record, child, id));
        else
            children->Add(New<StandInObject>(m_record, child, id));
    }
}

void StandIn::BecomePage() {
    m_pageBase = New<PageBase>();
    PageBase& base = *m_pageBase;
    Hold(base.InitializeEvent.Subscribe([this](const Ref<Object>& bag) { Hear("Initialize", {Variant(bag)}); }));
    Hold(base.TerminateEvent.Subscribe([this](const Ref<Object>& bag) { Hear("Terminate", {Variant(bag)}); }));
    Hold(base.ValidateEvent.Subscribe([this](bool& isValid) { Hear("Validate", {isValid}); }));
    Hold(base.ActivateEvent.Subscribe([this] { Hear("Activate", {}); }));
    Hold(base.DeactivateEvent.Subscribe([this] { Hear("Deactivate", {}); }));
    Hold(base.SaveEvent.Subscribe([this] { Hear("Save", {}); }));
    Hold(base.CommandClickEvent.Subscribe(
        [this](StandardCommandConstants command) { Hear("CommandClick", {static_cast<Long>(command)}); }));
    Hold(base.OnExitEvent.Subscribe([this](const auto&, bool cancelled) { Hear("OnExit", {cancelled}); }));
}

namespace {

using Json = nlohmann::json;

Failure FailureIn(const Json& json) {
    Failure failure(json.value("number", FailureNumber::InvalidProcedureCall));
    failure.Source = json.value("source", ""); // also when it is empty
    failure.Description = json.value("description", "");
    return failure;
}

StandInSpec SpecIn(const Json& json) {
    StandInSpec spec;
    if (json.contains("create"))
        spec.create = FailureIn(json.at("create"));
    spec.access = json.value("access", true);
    if (json.contains("fail"))
        for (const auto& [member, failure] : json.at("fail").items())
            spec.fail.insert_or_assign(FoldText(member), FailureIn(failure));
    if (json.contains("missing"))
        for (const auto& member : json.at("missing"))
            spec.missing.insert(FoldText(member.get<std::string>()));
    spec.name = json.value("name", "");
    if (json.contains("children"))
        for (const auto& child : json.at("children"))
            spec.children.push_back(SpecIn(child));
    if (json.contains("displayName"))
        spec.displayName = json.at("displayName").get<std::string>();
    if (json.contains("editName"))
        spec.editName = json.at("editName").get<std::string>();
    return spec;
}

} // namespace

StandInFile ReadStandIns(const std::string& filePath) {
    const auto bytes = ReadBytes(filePath);
    if (!bytes)
        Fail(FailureNumber::FileNotFound, "There is no file \"" + filePath + "\"");
    const auto FailHere = [&](const std::string& what) {
        Fail(FailureNumber::InvalidProcedureCall, "\"" + filePath + "\" can't be understood: " + what);
    };
    JsonProblem problem;
    const auto read = ReadJson(*bytes, &problem);
    if (!read)
        FailHere(problem.what);
    const Json& json = *read;
    StandInFile file;
    try {
        if (json.contains("objects"))
            for (const auto& [progID, spec] : json.at("objects").items())
                file.objects[FoldText(progID)] = SpecIn(spec);
        if (json.contains("ini")) {
            file.hasIni = true;
            const Json& ini = json.at("ini");
            if (ini.contains("QRZVGEnabled"))
                file.vgEnabled = ini.at("QRZVGEnabled").get<Long>();
            if (ini.contains("QRZProductName"))
                file.productName = ini.at("QRZProductName").get<std::string>();
        }
        if (json.contains("form"))
            file.formReportsDeactivate = json.at("form").value("reportsDeactivate", true);
    } catch (const Json::exception& exception) {
        FailHere(exception.what());
    }
    return file;
}

Ref<Object> StandInFactory::Create(std::string_view progID) {
    if (EqualText(progID, "Corvane.Framework"))
        Fail(FailureNumber::CannotCreateObject, "Can't create an object of \"" + std::string(progID) +
                                                    "\": the library has one, which only a service's file can name");
    const auto it = m_file->objects.find(FoldText(progID));
    const StandInSpec spec = it == m_file->objects.end() ? StandInSpec() : it->second;
    if (spec.create)
        throw *spec.create;
    const std::string id = m_record->NewId(progID);
    if (!spec.access)
        return New<StandInObject>(m_record, spec, id);
    return Make(spec, id);
}

Ref<Object> StandInFactory::Make(const StandInSpec& spec, const std::string& id) {
    return New<StandIn>(m_record, spec, id);
}

Ref<Object> NamingFactory::Create(std::string_view progID) {
    Ref<Object> object = m_factory->Create(progID);
    m_record->Name(*object, m_record->NewId(progID));
    return object;
}

bool NamingFactory::HasClass(std::string_view progID) {
    const auto finder = m_factory.TryAs<IClassFinder>();
    return !finder || finder->HasClass(progID);
}

Long StandInIni::ReadInteger(std::string_view file, std::string_view section, std::string_view key,
                             Long defaultNumber) const {
    if (!m_standInFile->hasIni)
        return m_file->ReadInteger(file, section, key, defaultNumber);
    return EqualText(key, "QRZVGEnabled") ? m_standInFile->vgEnabled.value_or(defaultNumber) : defaultNumber;
}

std::string StandInIni::ReadString(std::string_view file, std::string_view section, std::string_view key,
                                   std::string_view defaultText, std::size_t maximum) const {
    if (!m_standInFile->hasIni)
        return m_file->ReadString(file, section, key, defaultText, maximum);
    std::string_view value = defaultText;
    if (EqualText(key, "QRZProductName") && m_standInFile->productName)
        value = *m_standInFile->productName;
    return std::string(FirstCharacters(value, maximum));
}

} // namespace corvane::inspect
