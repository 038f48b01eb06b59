// An application on the bare control models: what a desktop host builds, without a display. The tool's inspect runs
// on it, and so do tests.
#pragma once

#include "adapters/messages/WindowMessages.h"
#include "corvane/base/Failure.h"
#include "corvane/core/Library.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "headless/Recording.h"
#include "headless/StandIns.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane::inspect {

struct HostOptions {
    std::string sApplicationFolder;
    bool bStandIns = false; // instead of plug-ins, as "standins.json" of the folder says, if there is one
    Ref<IXmlService> oXml;  // instead of the real one, if given
};

class ModelHost {
public:
    explicit ModelHost(const HostOptions& oOptions);
    ~ModelHost();
    ModelHost(const ModelHost&) = delete;
    ModelHost& operator=(const ModelHost&) = delete;

    // Framework.Initialize and Framework.Start. False when one failed; FirstFailure tells it.
    bool Start();
    // Runs what a person or a service does; a failure that leaves the library is noted and goes no further.
    void Do(const std::function<void()>& fnAct);
    // Runs while a modal form is shown, which is closed afterwards if it still is open. Without it that is at once.
    void SetModalLoop(ModalLoopFunction fnModalLoop) { m_fnModalLoop = std::move(fnModalLoop); }
    // The open forms unload, the one activated last first, then the main form.
    void Exit();
    // Also when the exit began and a service failed to end.
    [[nodiscard]] bool HasExited() const { return m_bExitBegun; }

    [[nodiscard]] const Ref<ActiveBar>& Bar() const { return m_oActiveBar; }
    [[nodiscard]] const Ref<MdiForm>& MainForm() const { return m_frmMain; }
    [[nodiscard]] const Ref<PanelForm>& Panel() const { return m_frmPanel; }
    [[nodiscard]] Ref<TabStrip> Tabs() const { return m_frmPanel->Control("tabExplorer").As<TabStrip>(); }
    [[nodiscard]] std::vector<Ref<TreeView>> Trees() const; // in order of tabs
    [[nodiscard]] Ref<TreeView> ActiveTree() const;         // of the current tab; nothing without tabs
    [[nodiscard]] Ref<ImageList> Images() const;            // nothing before the explorer is set up
    [[nodiscard]] ManualTimers& Timers() const { return *m_oTimers; }

    [[nodiscard]] Record& Recorded() const { return *m_oRecord; }
    [[nodiscard]] const std::optional<Failure>& FirstFailure() const { return m_oFirstFailure; }

private:
    [[nodiscard]] Platform MakePlatform(const HostOptions& oOptions);
    void RegisterWindow(const Ref<Form>& oForm);

    Ref<Record> m_oRecord = New<Record>();
    Ref<ManualTimers> m_oTimers = New<ManualTimers>();
    Ref<WindowMessages> m_oMessages = New<WindowMessages>();
    std::unique_ptr<Library> m_pLibrary;
    Ref<ActiveBar> m_oActiveBar = NewHostActiveBar();
    Ref<MdiForm> m_frmMain = New<MdiForm>();
    Ref<PanelForm> m_frmPanel = New<PanelForm>();
    Ref<IWindowFormFactory> m_oFormFactory;
    ModalLoopFunction m_fnModalLoop;
    std::optional<Failure> m_oFirstFailure;
    Subscription m_oPopupRequested;
    Subscription m_oChildLoaded;
    Subscription m_oMainUnload;
    bool m_bExitBegun = false;
};

} // namespace corvane::inspect
