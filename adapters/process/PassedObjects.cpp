#include "adapters/process/PassedObjects.h"

#include "adapters/process/HostFunctions.h"
#include "adapters/process/Messages.h"
#include "adapters/process/ProcessObject.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace corvane {

namespace {

using nlohmann::json;

constexpr LongLong rootHandle = 1;
constexpr LongLong hostHandle = 2;

// What JSON has no number for.
Double NotFinite(const std::string& name) {
    using Limits = std::numeric_limits<Double>;
    if (name != "nan" && name != "inf" && name != "-inf")
        Fail(FailureNumber::TypeMismatch, "\"" + name + "\" isn't one of the numbers nan, inf and -inf");
    return name == "nan" ? Limits::quiet_NaN() : name == "inf" ? Limits::infinity() : -Limits::infinity();
}

json NumberToJson(Double number) {
    if (std::isnan(number))
        return {{"number", "nan"}};
    if (std::isinf(number))
        return {{"number", number < 0 ? "-inf" : "inf"}};
    return number;
}

} // namespace

json PassedObjects::ToJson(const Variant& value) {
    if (const auto* boolean = value.Get<bool>())
        return *boolean;
    if (const auto* number = value.Get<Long>())
        return *number;
    if (const auto* number = value.Get<LongLong>())
        return *number;
    if (const auto* text = value.Get<std::string>())
        return *text;
    if (const auto* number = value.Get<Double>())
        return NumberToJson(*number);
    if (const auto* number = value.Get<Single>())
        return NumberToJson(static_cast<Double>(*number));
    const Ref<Object> object = ToObject(value);
    if (!object)
        return nullptr;
    if (const auto own = object.TryAs<ProcessObject>(); own && own->Owner().Get() == &m_process)
        return {{"process", own->NeedHandle()}};
    auto [it, isNew] = m_handles.try_emplace(object.Get(), m_lastHandle + 1);
    if (isNew) {
        ++m_lastHandle;
        m_held[it->second].object = object;
    }
    ++m_held[it->second].sent;
    return {{"host", it->second}, {"class", object->TypeName()}};
}

Variant PassedObjects::FromJson(const json& value) {
    if (value.is_null())
        return {};
    if (value.is_boolean())
        return value.get<bool>();
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_number_float())
        return value.get<Double>();
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX))
        Fail(FailureNumber::Overflow);
    if (value.is_number_integer()) {
        const auto number = value.get<LongLong>();
        return std::in_range<Long>(number) ? Variant(static_cast<Long>(number)) : Variant(number);
    }
    if (value.is_object() && value.contains("number"))
        return NotFinite(value.at("number").get_ref<const std::string&>());
    if (value.is_object() && value.contains("host"))
        return OfApplication(WholeNumber(value.at("host")));
    if (!value.is_object() || !value.contains("process"))
        Fail(FailureNumber::TypeMismatch, "What isn't a text, a number, a truth value or an object can't be passed",
             m_process.Name());
    return ObjectOfProcess(value);
}

Variant PassedObjects::ObjectOfProcess(const json& value) {
    const auto handle = WholeNumber(value.at("process"));
    const auto it = m_ofProcess.find(handle);
    Ref<ProcessObject> object = it == m_ofProcess.end() ? nullptr : Ref<ProcessObject>(it->second);
    if (!object)
        object = New<ProcessObject>(Ref<Process>(&m_process), m_process.Name() + "." + value.value("class", "object"),
                                    handle, value.value("name", ""));
    object->Received();
    if (value.contains("rows")) {
        const auto rows = WholeNumber(value.at("rows"));
        if (rows < 0 || !std::in_range<Long>(rows))
            Fail(FailureNumber::Overflow, "A table can't have " + std::to_string(rows) + " rows", m_process.Name());
        object->SetRows(static_cast<std::size_t>(rows));
    }
    return object;
}

Ref<Object> PassedObjects::OfApplication(LongLong handle) const {
    if (handle == rootHandle)
        return Singleton::Framework();
    if (handle == hostHandle)
        return New<HostFunctions>();
    const auto it = m_held.find(handle);
    if (it == m_held.end())
        Fail(FailureNumber::InvalidProcedureCall,
             "The application holds no object of the number " + std::to_string(handle), m_process.Name());
    return it->second.object;
}

void PassedObjects::Release(const json& handles) {
    std::vector<Ref<Object>> released; // their ends may come back here
    for (const json& entry : handles) {
        const auto it = m_held.find(WholeNumber(entry.at(0)));
        if (it == m_held.end() || (it->second.sent -= std::max(1, static_cast<int>(WholeNumber(entry.at(1))))) > 0)
            continue;
        m_handles.erase(it->second.object.Get());
        released.push_back(std::move(it->second.object));
        m_held.erase(it);
    }
}

void PassedObjects::Left(const ProcessObject& object, LongLong handle, int received) {
    if (const auto it = m_ofProcess.find(handle); it != m_ofProcess.end() && it->second == &object)
        m_ofProcess.erase(it);
    if (received > 0)
        m_released.emplace_back(handle, received);
}

// Objects that go may come back here, so nothing refers to them any more by then.
void PassedObjects::Clear() {
    m_ofProcess.clear();
    m_released.clear();
    m_handles.clear();
    const auto held = std::exchange(m_held, {});
}

} // namespace corvane
