#include "adapters/process/ProcessObject.h"

#include "corvane/base/Text.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace corvane {

namespace {

using nlohmann::json;

std::string ClassOf(const std::string& progID) {
    return progID.substr(progID.find('.') + 1);
}

} // namespace

ProcessObject::ProcessObject(Ref<Process> process, std::string progID)
    : m_process(std::move(process)), m_progID(std::move(progID)), m_isMadeByClass(true) {}

ProcessObject::ProcessObject(Ref<Process> process, std::string progID, LongLong handle, std::string name)
    : m_process(std::move(process)), m_progID(std::move(progID)), m_isMadeByClass(false), m_handle(handle),
      m_generation(m_process->Generation()), m_name(std::move(name)) {
    m_process->Joined(*this, m_handle);
}

ProcessObject::~ProcessObject() {
    m_process->Left(*this, m_handle, m_generation, m_received);
}

bool ProcessObject::IsLive() const {
    return m_process->IsRunning() && m_generation == m_process->Generation();
}

void ProcessObject::Need() {
    m_process->Need();
    if (!IsLive()) {
        if (!m_isMadeByClass)
            Fail(Process::Ended,
                 "This object of the service \"" + m_process->Name() +
                     "\" went with its process, which has ended. Refresh the view that shows it",
                 m_process->Name());
        if (!m_process->FindClass(m_progID)) {
            std::string known;
            for (const ProcessClass& processClass : m_process->Classes())
                known += (known.empty() ? "\"" : ", \"") + processClass.progID + "\"";
            Fail(FailureNumber::CannotCreateObject,
                 "Can't create an object of \"" + m_progID + "\": the process has no such class. It has " +
                     (known.empty() ? "none" : known),
                 m_process->Name());
        }
        const json made = m_process->Ask({{"create", ClassOf(m_progID)}}, "was making its " + ClassOf(m_progID));
        if (!made.is_object() || !made.contains("process") || !made.at("process").is_number_integer())
            Fail(Process::Ended, "The service \"" + m_process->Name() + "\" has made no object", m_process->Name());
        m_handle = made.at("process").get<LongLong>();
        m_generation = m_process->Generation();
        m_received = 1;
        m_process->Joined(*this, m_handle);
        m_mustInitialize |= m_isInitialized;
    }
    if (m_mustInitialize)
        Begin();
}

void ProcessObject::Begin() {
    m_mustInitialize = false;
    m_isInitialized = true;
    try {
        json arguments = json::array();
        if (m_pageBase)
            arguments = {m_process->ToJson(m_pageBase->Window()), m_process->ToJson(m_pageBase->BusinessContext())};
        (void)Raise("Initialize", std::move(arguments));
    } catch (...) {
        m_mustInitialize = true;
        throw;
    }
}

LongLong ProcessObject::NeedHandle() {
    Need();
    return m_handle;
}

Ref<Object> ProcessObject::Base() const {
    return m_serviceBase ? Ref<Object>(m_serviceBase) : m_itemBase ? Ref<Object>(m_itemBase) : Ref<Object>(m_pageBase);
}

Variant ProcessObject::Invoke(std::string_view name, std::span<const Variant> arguments) {
    const Entering entering{Ref<Object>(this)};
    Need();
    json values = json::array();
    for (const Variant& argument : arguments)
        values.push_back(m_process->ToJson(argument));
    return m_process->AskValue({{"on", m_handle}, {"call", name}, {"arguments", std::move(values)}},
                               "ran " + std::string(name));
}

void ProcessObject::Put(std::string_view name, const Variant& value) {
    const Entering entering{Ref<Object>(this)};
    Need();
    (void)m_process->AskValue({{"on", m_handle}, {"set", name}, {"value", m_process->ToJson(value)}},
                              "set " + std::string(name));
}

std::vector<MemberInfo> ProcessObject::MembersByName() const {
    m_process->Need();
    const ProcessClass* processClass = m_process->FindClass(m_progID);
    std::vector<MemberInfo> members = processClass ? processClass->members : std::vector<MemberInfo>();
    std::sort(members.begin(), members.end(),
              [](const MemberInfo& left, const MemberInfo& right) { return CompareText(left.Name, right.Name) < 0; });
    return members;
}

bool ProcessObject::HasMember(std::string_view name) const {
    m_process->Need();
    const ProcessClass* processClass = m_process->FindClass(m_progID);
    return processClass && std::any_of(processClass->members.begin(), processClass->members.end(),
                                       [&](const MemberInfo& member) { return EqualText(member.Name, name); });
}

bool ProcessObject::Handles(const char* event) const {
    const ProcessClass* processClass = m_process->FindClass(m_progID);
    return processClass && processClass->events.contains(event);
}

// The process answers with what the event wants; nothing from a class that doesn't handle it.
json ProcessObject::Raise(const char* event, json arguments) {
    if (!Handles(event))
        return nullptr;
    const Entering entering{Ref<Object>(this)};
    return m_process->Ask({{"on", m_handle}, {"event", event}, {"arguments", std::move(arguments)}},
                          std::string("handled ") + event);
}

void ProcessObject::RaiseIfLive(const char* event, std::vector<Variant> arguments) {
    if (!IsLive() || !Handles(event))
        return;
    json values = json::array();
    for (const Variant& argument : arguments)
        values.push_back(m_process->ToJson(argument));
    (void)Raise(event, std::move(values));
}

std::string ProcessObject::TextFrom(const char* event, const std::string& text) {
    const json answer = IsLive() ? Raise(event, json::array({text})) : json();
    return answer.is_string() ? answer.get<std::string>() : text;
}

Ref<IService> ProcessObject::Service() {
    if (!m_serviceBase)
        BecomeService();
    return m_serviceBase;
}

Ref<IExplorerItem> ProcessObject::ExplorerItem() {
    if (!m_itemBase)
        BecomeExplorerItem();
    return m_itemBase;
}

Ref<IPage> ProcessObject::Page() {
    if (!m_pageBase)
        BecomePage();
    return m_pageBase;
}

void ProcessObject::BecomeService() {
    m_serviceBase = New<ServiceBase>();
    ServiceBase& base = *m_serviceBase;
    Keep(base.InitializeEvent.Subscribe([this] {
        m_process->ServiceBegins();
        m_mustInitialize = true;
        if (!m_process->StartsNow() && !IsLive())
            return;
        try {
            Need();
        } catch (...) { // the other services begin all the same, and the next call tries again
            Report("Processes", "Initialize", m_process->Name());
        }
    }));
    Keep(base.TerminateEvent.Subscribe([this] {
        try {
            RaiseIfLive("Terminate", {});
        } catch (...) { // the other services end all the same
            Report("Processes", "Terminate", m_process->Name());
        }
        m_process->ServiceEnds();
    }));
    Keep(base.GetUnsavedItems.Subscribe(
        [this](const Ref<Dictionary>& items, Double& order) { AddUnsaved(items, order); }));
    Keep(base.SaveEvent.Subscribe([this](const Ref<Object>& item) { RaiseIfLive("Save", {Variant(item)}); }));
    Keep(base.SaveCompleteEvent.Subscribe([this](bool cancelled) { RaiseIfLive("SaveComplete", {cancelled}); }));
    Keep(base.OnExitEvent.Subscribe([this](const Ref<Window>& window, bool cancelled) {
        RaiseIfLive("Exit", {Variant(window), cancelled});
    }));
}

void ProcessObject::AddUnsaved(const Ref<Dictionary>& items, Double& order) {
    if (!IsLive())
        return;
    const json answer = Raise("Unsaved", json::array({order}));
    if (!answer.is_object())
        return;
    order = answer.value("order", order);
    for (const json& item : answer.value("items", json::array()))
        items->Add(item.at(0).get<std::string>(), m_process->FromJson(item.at(1)));
}

void ProcessObject::BecomeExplorerItem() {
    m_itemBase = New<ExplorerItemBase>();
    ExplorerItemBase& base = *m_itemBase;
    base.NameSilently(m_name);
    Keep(base.InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& children) {
        try {
            FillItem(children);
        } catch (...) { // the explorer's other items are added all the same
            Report("Processes", "Initialize", m_process->Name());
        }
        if (m_itemBase->Name().empty())
            m_itemBase->NameSilently(m_itemBase->ExplorerItemDef()->Name());
    }));
    Keep(base.OnDisplayName.Subscribe([this](std::string& text) { text = TextFrom("DisplayName", text); }));
    Keep(base.OnBeforeRename.Subscribe([this](std::string& text) { text = TextFrom("BeforeRename", text); }));
    Keep(base.OnAfterRename.Subscribe([this](const std::string& name) { RaiseIfLive("AfterRename", {name}); }));
    Keep(base.OnExitEvent.Subscribe([this](const Ref<Window>& window, bool cancelled) {
        RaiseIfLive("Exit", {Variant(window), cancelled});
    }));
}

void ProcessObject::FillItem(const Ref<KeyedCollection<Ref<Object>>>& children) {
    if (m_process->IsRunning() && IsLive() && !Handles("Initialize"))
        return; // as most items that have no children
    m_mustInitialize = false;
    Need();
    m_isInitialized = true;
    const json answer = Raise("Initialize", json::array());
    if (!answer.is_object())
        return;
    if (const std::string name = answer.value("name", ""); !name.empty())
        m_itemBase->NameSilently(name);
    for (const json& child : answer.value("children", json::array()))
        children->Add(ToObject(m_process->FromJson(child)));
}

void ProcessObject::BecomePage() {
    m_pageBase = New<PageBase>();
    PageBase& base = *m_pageBase;
    Keep(base.InitializeEvent.Subscribe([this](const Ref<Object>&) {
        m_mustInitialize = true;
        Need();
    }));
    Keep(base.TerminateEvent.Subscribe([this](const Ref<Object>&) {
        m_mustInitialize = m_isInitialized = false;
        RaiseIfLive("Terminate", {});
    }));
    Keep(base.ValidateEvent.Subscribe([this](bool& isValid) {
        const json answer = IsLive() ? Raise("Validate", json::array()) : json();
        isValid = answer.is_boolean() ? answer.get<bool>() : isValid;
    }));
    Keep(base.ActivateEvent.Subscribe([this] { RaiseIfLive("Activate", {}); }));
    Keep(base.DeactivateEvent.Subscribe([this] { RaiseIfLive("Deactivate", {}); }));
    Keep(base.SaveEvent.Subscribe([this] {
        Need(); // what can't be saved must not seem to be
        (void)Raise("Save", json::array());
    }));
    Keep(base.CommandClickEvent.Subscribe(
        [this](StandardCommandConstants command) { RaiseIfLive("Command", {static_cast<Long>(command)}); }));
    Keep(base.OnExitEvent.Subscribe([this](const Ref<Window>& window, bool cancelled) {
        RaiseIfLive("Exit", {Variant(window), cancelled});
    }));
}

} // namespace corvane
