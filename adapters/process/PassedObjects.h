// The objects that the application and a process have passed to each other, and values as they are in messages.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/base/Variant.h"

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <unordered_map>
#include <utility>
#include <vector>

namespace corvane {

class Process;
class ProcessObject;

class PassedObjects {
public:
    explicit PassedObjects(Process& process) : m_process(process) {}

    // An object of the application is held until the process has released it as often as it was passed.
    [[nodiscard]] nlohmann::json ToJson(const Variant& value);
    // Fails with 13 for what isn't a value and with 5 for an object that isn't there.
    [[nodiscard]] Variant FromJson(const nlohmann::json& value);
    // Fails with 5 for a number that the process hasn't been given.
    [[nodiscard]] Ref<Object> OfApplication(LongLong handle) const;

    // The process has released objects of the application, each so many times.
    void Release(const nlohmann::json& handles);
    // Those of the process that the application has released since the last call.
    [[nodiscard]] std::vector<std::pair<LongLong, int>> TakeReleased() { return std::exchange(m_released, {}); }

    void Joined(ProcessObject& object, LongLong handle) { m_ofProcess[handle] = &object; }
    // received is how often the process has passed it.
    void Left(const ProcessObject& object, LongLong handle, int received);

    // The process has ended.
    void Clear();

private:
    struct Held {
        Ref<Object> object;
        int sent = 0;
    };

    [[nodiscard]] Variant ObjectOfProcess(const nlohmann::json& value);

    Process& m_process;
    std::map<LongLong, Held> m_held; // objects of the application that the process knows
    std::unordered_map<const Object*, LongLong> m_handles;
    LongLong m_lastHandle = 2;
    std::map<LongLong, ProcessObject*> m_ofProcess; // that the application knows
    std::vector<std::pair<LongLong, int>> m_released;
};

} // namespace corvane
