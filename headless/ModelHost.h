// An application on the bare control models: what a desktop host builds, without a display. The tool's inspect runs
// on it, and so do tests.
#pragma once

#include "adapters/messages/WindowMessages.h"
#include "adapters/process/ProcessMonitor.h"
#include "corvane/base/Failure.h"
#include "corvane/core/Library.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "headless/Dialogs.h"
#include "headless/Recording.h"
#include "headless/StandIns.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
class ProcessFactory;
}

namespace corvane::items {
class Items;
}

namespace corvane::jobs {
class Manager;
}

namespace corvane::inspect {

struct HostOptions {
    std::string applicationFolder;
    bool standIns = false;  // instead of plug-ins, as "standins.json" of the folder says, if there is one
    Ref<IXmlService> xml;   // instead of the real one, if given
    bool oneThread = false; // jobs do their work in this thread, one after another in order of their start
    // Milliseconds that a service in a process of its own may let a call wait; 0 for no limit.
    int timeLimit = 60'000;
    Ref<ProcessMonitor> processes = {}; // decides and hears instead, if given
};

class ModelHost {
public:
    explicit ModelHost(const HostOptions& options);
    ~ModelHost();
    ModelHost(const ModelHost&) = delete;
    ModelHost& operator=(const ModelHost&) = delete;

    // Framework.Initialize and Framework.Start, and the jobs that they started. False when one failed; see
    // FirstFailure.
    bool Start();
    // Runs an action of the user or a service; a failure that leaves the library is recorded and stops here.
    void Do(const std::function<void()>& act);
    // Jobs begin here, and run to their end with all that comes of them. Between the calls they wait.
    void RunJobs();
    // Time passes: each timer ticks once, and what has begun by that runs to its end.
    void Wait();
    // Cancels the jobs of that title that haven't ended, or, when a part between 0 and 1 is given, lets each be
    // cancelled as soon as it gets that far. False when there is none that can be cancelled.
    bool CancelJob(const std::string& title, std::optional<Double> part = std::nullopt);
    // Runs while a modal form is shown, which is closed afterwards if it still is open. Without it that is at once.
    void SetModalLoop(ModalLoopFunction modalLoop) { m_modalLoop = std::move(modalLoop); }
    // Files that are held for the next drop on a node, and the end of that.
    void TakeFile(std::string path) { m_files.push_back(std::move(path)); }
    [[nodiscard]] std::vector<std::string> TakeFiles() { return std::exchange(m_files, {}); }
    // The open forms unload, the one activated last first, then the main form.
    void Exit();
    // Also when the exit began and a service failed to end.
    [[nodiscard]] bool HasExited() const { return m_exitBegun; }

    [[nodiscard]] const Ref<ActiveBar>& Bar() const { return m_activeBar; }
    [[nodiscard]] const Ref<MdiForm>& MainForm() const { return m_mainForm; }
    [[nodiscard]] const Ref<PanelForm>& Panel() const { return m_panelForm; }
    [[nodiscard]] Ref<TabStrip> Tabs() const { return m_panelForm->Control("tabExplorer").As<TabStrip>(); }
    [[nodiscard]] std::vector<Ref<TreeView>> Trees() const; // in order of tabs
    [[nodiscard]] Ref<TreeView> ActiveTree() const;         // of the current tab; nothing without tabs
    [[nodiscard]] Ref<ImageList> Images() const;            // nothing before the explorer is set up
    [[nodiscard]] items::Items& ExplorerItems() const { return *m_items; }
    [[nodiscard]] ManualTimers& Timers() const { return *m_timers; }
    [[nodiscard]] const Ref<jobs::Manager>& Jobs() const { return m_jobs; }

    // Answers to what services ask are added here.
    [[nodiscard]] inspect::Dialogs& Dialogs() const { return *m_dialogs; }
    [[nodiscard]] Record& Recorded() const { return *m_record; }
    [[nodiscard]] const std::optional<Failure>& FirstFailure() const { return m_firstFailure; }

private:
    [[nodiscard]] Platform MakePlatform(const HostOptions& options);
    void ServeProcesses() const;
    void RegisterWindow(const Ref<Form>& form);

    Ref<Record> m_record = New<Record>();
    Ref<inspect::Dialogs> m_dialogs = New<inspect::Dialogs>();
    Ref<ManualTimers> m_timers = New<ManualTimers>();
    Ref<WindowMessages> m_messages = New<WindowMessages>();
    Ref<jobs::Manager> m_jobs;
    std::unique_ptr<Library> m_library;
    Ref<ProcessFactory> m_processes; // nothing with stubs
    Ref<ActiveBar> m_activeBar = NewHostActiveBar();
    Ref<MdiForm> m_mainForm = New<MdiForm>();
    Ref<PanelForm> m_panelForm = New<PanelForm>();
    std::unique_ptr<items::Items> m_items;
    Ref<IWindowFormFactory> m_formFactory;
    ModalLoopFunction m_modalLoop;
    std::optional<Failure> m_firstFailure;
    Subscription m_popupRequested;
    Subscription m_childLoaded;
    Subscription m_mainUnload;
    bool m_exitBegun = false;
    std::vector<std::string> m_files;
};

} // namespace corvane::inspect
