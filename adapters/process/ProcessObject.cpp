#include "adapters/process/ProcessObject.h"

#include "adapters/process/Messages.h"
#include "adapters/process/ReadAnswer.h"
#include "corvane/base/Text.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/ExplorerItemDef.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace corvane {

namespace {

using nlohmann::json;

std::string ClassOf(const std::string& progID) {
    return progID.substr(progID.find('.') + 1);
}

} // namespace

ProcessObject::ProcessObject(Ref<Process> process, std::string progID)
    : m_process(std::move(process)), m_progID(std::move(progID)), m_isMadeByClass(true) {
    m_process->Made(*this);
}

ProcessObject::ProcessObject(Ref<Process> process, std::string progID, LongLong handle, std::string name)
    : m_process(std::move(process)), m_progID(std::move(progID)), m_isMadeByClass(false), m_handle(handle),
      m_generation(m_process->Generation()), m_name(std::move(name)) {
    m_process->Made(*this);
    m_process->Joined(*this, m_handle);
}

ProcessObject::~ProcessObject() {
    m_process->Gone(*this);
    for (ProcessObject* object : m_process->Known())
        if (object->m_parent == this)
            object->m_parent = nullptr;
    m_process->Left(*this, m_handle, m_generation, m_received);
}

bool ProcessObject::IsLive() const {
    return m_process->IsRunning() && m_handle != 0 && m_generation == m_process->Generation();
}

void ProcessObject::Need() {
    m_process->Need();
    if (!m_serviceBase) // which begins by itself, and says what fails in that
        m_process->BeginServices();
    if (!IsLive()) {
        if (m_isMadeByClass)
            Make();
        else
            FindAgain();
        m_mustInitialize |= m_isInitialized;
    }
    if (m_mustInitialize)
        Begin();
}

void ProcessObject::Make() {
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
    Take(WholeNumber(made.at("process")));
}

// The item above makes its children again when it is initialized.
void ProcessObject::FindAgain() {
    if (const Ref<ProcessObject> parent = ParentItem())
        parent->Need();
    if (!IsLive())
        Fail(Process::Ended,
             "This object of the service \"" + m_process->Name() +
                 "\" went with its process, which has ended. Refresh the view that shows it",
             m_process->Name());
}

Ref<ProcessObject> ProcessObject::ParentItem() const {
    if (m_parent || !m_itemBase || !m_itemBase->ExplorerItemDef())
        return Ref<ProcessObject>(m_parent);
    const std::string& name = m_itemBase->ExplorerItemDef()->ParentExplorerItemName();
    for (ProcessObject* object : m_process->Known())
        if (const auto def = object->m_itemBase ? object->m_itemBase->ExplorerItemDef() : nullptr;
            def && object != this && object->m_isMadeByClass && EqualText(def->Name(), name))
            return Ref<ProcessObject>(object);
    return nullptr;
}

bool ProcessObject::IsChild(const std::string& className, const std::string& name) const {
    return !m_isMadeByClass && !name.empty() && EqualText(ClassOf(m_progID), className) && EqualText(m_name, name);
}

void ProcessObject::Take(LongLong handle) {
    m_handle = handle;
    m_generation = m_process->Generation();
    m_received = 1;
    m_process->Joined(*this, m_handle);
}

void ProcessObject::AddChildren(const json& answer, const Ref<KeyedCollection<Ref<Object>>>& children) {
    for (const json& told : answer.value("children", json::array())) {
        const std::string className = told.value("class", "");
        const std::string name = told.value("name", "");
        Ref<ProcessObject> child;
        for (ProcessObject* known : m_process->Known())
            if (!known->IsLive() && known->IsChild(className, name) && known->ParentItem().Get() == this)
                child = Ref<ProcessObject>(known);
        if (child)
            child->Take(WholeNumber(told.at("process")));
        else if (const auto object = ToObject(m_process->FromJson(told)).TryAs<ProcessObject>())
            child = object;
        if (!child)
            continue;
        child->m_parent = this;
        if (children)
            children->Add(Ref<Object>(child));
    }
}

void ProcessObject::Begin() {
    m_mustInitialize = false;
    const bool isAgain = std::exchange(m_isInitialized, true);
    try {
        json arguments = json::array();
        if (m_pageBase)
            arguments = {m_process->ToJson(m_pageBase->Window()), m_process->ToJson(m_pageBase->BusinessContext())};
        const json answer = Raise("Initialize", std::move(arguments));
        if (m_itemBase && answer.is_object())
            ReadAnswer(*m_process, [&] { AddChildren(answer, nullptr); });
    } catch (...) {
        m_mustInitialize = true;
        throw;
    }
    if (!std::exchange(m_whyLost, {}).empty())
        LostChanged.Raise();
    if (isAgain)
        Recovered.Raise();
}

void ProcessObject::FollowProcess() {
    if (m_itemBase)
        m_name = m_itemBase->Name(); // by which the process that comes next knows it
    if (!m_pageBase || !m_isInitialized || m_process->HasStopped() || !m_whyLost.empty())
        return;
    m_whyLost = "The service \"" + m_process->Name() + "\" " + m_process->Death();
    LostChanged.Raise();
}

void ProcessObject::Recover() {
    const Entering entering{Ref<Object>(this)};
    Need();
}

LongLong ProcessObject::NeedHandle() {
    Need();
    return m_handle;
}

Ref<Object> ProcessObject::Base() const {
    return m_serviceBase ? Ref<Object>(m_serviceBase) : m_itemBase ? Ref<Object>(m_itemBase) : Ref<Object>(m_pageBase);
}

Variant ProcessObject::Invoke(std::string_view name, std::span<const Variant> arguments) {
    if (m_rows)
        return InvokeRows(name, arguments);
    const Entering entering{Ref<Object>(this)};
    Need();
    if (arguments.empty())
        if (auto value = Stored(name))
            return std::move(*value);
    json values = json::array();
    for (const Variant& argument : arguments)
        values.push_back(m_process->ToJson(argument));
    Variant value = m_process->AskValue({{"on", m_handle}, {"call", name}, {"arguments", std::move(values)}},
                                        "ran " + std::string(name));
    m_lastRead = m_process->Turns();
    return value;
}

// A form reads its fields one behind the other: from the second on they all come at once.
std::optional<Variant> ProcessObject::Stored(std::string_view name) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds fresh(20); // a thread of the process may change them without a message
    const ProcessClass* processClass = m_process->FindClass(m_progID);
    const auto IsNamed = [name](const std::string& known) { return EqualText(known, name); };
    if (!processClass || std::none_of(processClass->stored.begin(), processClass->stored.end(), IsNamed))
        return std::nullopt;
    const bool isFresh = m_snapshot.turns == m_process->Turns() && Clock::now() - m_snapshot.taken < fresh;
    if (!isFresh && m_lastRead != m_process->Turns())
        return std::nullopt;
    if (!isFresh) {
        const json answer = m_process->Ask({{"on", m_handle}, {"get", processClass->stored}}, "read its properties");
        m_snapshot.values.clear();
        ReadAnswer(*m_process, [&] {
            for (std::size_t i = 0; i < processClass->stored.size() && i < answer.size(); ++i)
                if (answer.at(i).contains("value") && !answer.at(i).at("value").is_object())
                    m_snapshot.values.emplace(processClass->stored[i], m_process->FromJson(answer.at(i).at("value")));
        });
        m_snapshot.turns = m_process->Turns();
        m_snapshot.taken = Clock::now();
    }
    const auto it = m_snapshot.values.find(std::string(name));
    return it == m_snapshot.values.end() ? std::nullopt : std::optional(it->second);
}

void ProcessObject::PutAll(const std::vector<std::pair<std::string, Variant>>& values) {
    const Entering entering{Ref<Object>(this)};
    Need();
    json told = json::array();
    for (const auto& [name, value] : values)
        told.push_back({name, m_process->ToJson(value)});
    (void)m_process->Ask({{"on", m_handle}, {"put", std::move(told)}}, "wrote its properties");
}

void ProcessObject::SetRows(std::size_t count) {
    m_rows = std::make_shared<ProcessRows>(count, [this](std::size_t first, std::size_t number) {
        const Entering entering{Ref<Object>(this)};
        const json answer = m_process->Ask({{"on", m_handle}, {"rows", {first, number}}}, "fetched rows of a table");
        return ReadAnswer(*m_process, [&] {
            ProcessRows::Page page;
            page.columns = answer.at("columns").get<std::vector<std::string>>();
            for (const json& told : answer.at("values")) {
                std::vector<Variant>& row = page.rows.emplace_back();
                for (const json& value : told)
                    row.push_back(m_process->FromJson(value));
                row.resize(page.columns.size());
            }
            return page;
        });
    });
}

Variant ProcessObject::InvokeRows(std::string_view name, std::span<const Variant> arguments) {
    if (EqualText(name, "Count") && arguments.empty())
        return static_cast<Long>(m_rows->Count());
    if (!EqualText(name, "Item") || arguments.size() != 1)
        Fail(FailureNumber::NoSuchMember, "Rows have Count and Item, and no \"" + std::string(name) + "\"",
             m_process->Name());
    const Long row = ToLong(arguments[0]);
    if (row < 1 || static_cast<std::size_t>(row) > m_rows->Count())
        Fail(FailureNumber::Subscript, "There is no row " + std::to_string(row), m_process->Name());
    return Variant(Ref<Object>(New<ProcessRow>(Ref<ProcessObject>(this), static_cast<std::size_t>(row) - 1)));
}

Variant ProcessObject::RowCell(std::size_t row, std::string_view column) {
    const auto rows = m_rows;
    return IsLive() || rows->Has(row) ? rows->Cell(row, column) : Variant();
}

void ProcessObject::SetRowCell(std::size_t row, std::string_view column, const Variant& value) {
    Need();
    (void)m_process->Ask({{"on", m_handle}, {"row", row}, {"column", column}, {"value", m_process->ToJson(value)}},
                         "wrote a cell");
    m_rows->Forget(row);
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
    if (!m_serviceBase && !Base())
        BecomeService();
    return m_serviceBase;
}

Ref<IExplorerItem> ProcessObject::ExplorerItem() {
    if (!m_itemBase && !Base())
        BecomeExplorerItem();
    return m_itemBase;
}

Ref<IPage> ProcessObject::Page() {
    if (!m_pageBase && !Base())
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
        const Process::Reporting reporting(*m_process);
        try {
            Need();
        } catch (...) { // the other services begin all the same, and the next call tries again
            Report("Processes", "Initialize", m_process->Name());
        }
    }));
    Keep(base.TerminateEvent.Subscribe([this] {
        const Process::Reporting reporting(*m_process);
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
    ReadAnswer(*m_process, [&] {
        order = answer.value("order", order);
        for (const json& item : answer.value("items", json::array()))
            items->Add(item.at(0).get<std::string>(), m_process->FromJson(item.at(1)));
    });
}

void ProcessObject::BecomeExplorerItem() {
    m_itemBase = New<ExplorerItemBase>();
    ExplorerItemBase& base = *m_itemBase;
    base.NameSilently(m_name);
    Keep(base.InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>& children) {
        const Process::Reporting reporting(*m_process);
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
    Keep(base.OnAfterRename.Subscribe([this](const std::string& name) {
        Need();
        (void)Raise("AfterRename", json::array({name}));
    }));
    Keep(base.OnExitEvent.Subscribe([this](const Ref<Window>& window, bool cancelled) {
        RaiseIfLive("Exit", {Variant(window), cancelled});
    }));
}

void ProcessObject::FillItem(const Ref<KeyedCollection<Ref<Object>>>& children) {
    if (m_process->IsRunning() && IsLive() && !Handles("Initialize"))
        return; // as most items that have no children
    m_mustInitialize = m_isInitialized = false;
    Need();
    m_isInitialized = true;
    const json answer = Raise("Initialize", json::array());
    if (!answer.is_object())
        return;
    ReadAnswer(*m_process, [&] {
        if (const std::string name = answer.value("name", ""); !name.empty())
            m_itemBase->NameSilently(name);
        AddChildren(answer, children);
    });
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
        m_whyLost.clear();
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
