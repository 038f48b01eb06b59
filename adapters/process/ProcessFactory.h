// Objects of plug-ins that run in processes of their own: the ProgID "Birds.Service" is a class of the process that
// plugins/Birds/plugin.json describes.
#pragma once

#include "adapters/process/Process.h"
#include "corvane/base/Text.h"

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace corvane {

class ProcessFactory final : public virtual Object {
public:
    // folder is that of the plug-ins; one that doesn't exist is an empty one.
    explicit ProcessFactory(std::string folder);
    ~ProcessFactory() override;

    // For the processes that are made from then on.
    void SetMonitor(Ref<ProcessMonitor> monitor) { m_monitor = std::move(monitor); }

    // Whose items get a mark when their process has died. For the processes that are made from then on.
    void SetExplorer(const Ref<PanelForm>& panel) { m_marks = std::make_shared<const ExplorerMarks>(panel); }
    // Those that have been asked for, running or not.
    [[nodiscard]] std::vector<Ref<corvane::Process>> Processes() const;
    [[nodiscard]] bool IsAnyWaitedFor() const;
    // Serves all that run.
    void Pump() const;

    // The path of its plugin.json; nothing when there is none. Names are compared without regard to case.
    [[nodiscard]] std::optional<std::string> FileOf(std::string_view plugin) const;
    // Those that have a plugin.json, in order.
    [[nodiscard]] std::vector<std::string> Names() const;
    // Fails with 429 for a plugin.json that can't be used. The process isn't started yet.
    [[nodiscard]] Ref<corvane::Process> ProcessOf(std::string_view plugin);
    // An object that is made in the process when it is first needed.
    [[nodiscard]] Ref<Object> Create(std::string_view plugin, std::string_view progID);

private:
    std::string m_folder;
    Ref<ProcessMonitor> m_monitor;
    std::shared_ptr<const ExplorerMarks> m_marks;
    std::unordered_map<std::string, Ref<corvane::Process>, TextHash, TextEqual> m_processes;
};

} // namespace corvane
