// A whole application for a test, without a display: either a folder that exists, with its plug-ins, or a temporary one
// of short definition files, with stubs in place of plug-ins. Only one may be running at a time.
#pragma once

#include "corvane/base/Ref.h"
#include "headless/ModelHost.h"
#include "testing/FormPage.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {
class ExplorerManager;
class MenuManager;
class ServiceManager;
class WindowManager;
} // namespace corvane

namespace corvane::testing {

using Lines = std::vector<std::string>;

// An attribute of ServiceXml, as in {"Active", "false"}; it takes the place of the usual one.
using Attribute = std::pair<std::string, std::string>;

// A definition file: an active service named name of the ProgID "name.Service" around content.
[[nodiscard]] std::string ServiceXml(const std::string& name, const std::string& content = {},
                                     std::initializer_list<Attribute> attributes = {});

class Application {
public:
    // The folder begins with a permissive schema, the images "GenericExplorerItem.ico" and "open.bmp", and a file
    // "!Shell.xml", which is read first and gives the explorer the action "Navigation" that it needs.
    Application();
    // An application folder that exists. Nothing is written there. Fails with 76 when it doesn't exist.
    explicit Application(std::string folder);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // Before Start, in a folder of the test's own (5 otherwise). The file goes into the folder "Services"; AddService
    // makes it of ServiceXml, as name.xml.
    Application& AddDefinition(const std::string& file, const std::string& xml);
    Application& AddService(const std::string& name, const std::string& content = {},
                            std::initializer_list<Attribute> attributes = {});
    Application& SetStandIns(const std::string& json);
    Application& AddFile(const std::string& pathText, std::string_view bytes); // below the application's folder
    Application& RemoveFile(const std::string& path);

    // Before Start: jobs do their work in the test's own thread, in order of their start.
    Application& UseOneThread() {
        m_oneThread = true;
        return *this;
    }

    // Brings the application up. The number of the failure that stopped it, else 0.
    Long Start();
    // The main form unloads, and the library with it.
    void Stop();
    // The same up to where the library is loaded and nothing has been read.
    void Load();

    [[nodiscard]] const std::string& Folder() const { return m_folder; }
    [[nodiscard]] inspect::ModelHost& Host() const { return *m_host; }
    [[nodiscard]] Ref<corvane::ServiceManager> Services() const;
    [[nodiscard]] Ref<corvane::MenuManager> Menus() const;
    [[nodiscard]] Ref<corvane::ExplorerManager> Explorer() const;
    [[nodiscard]] Ref<corvane::WindowManager> Windows() const;
    [[nodiscard]] Ref<Tool> MasterTool(const std::string& name) const; // fails with 5 when there is none

    // Steps of an inspection, one a line, such as "node 0 Root". What a failure leaves the library with stays with the
    // host.
    void Take(const std::string& stepsText);
    // What steps "expect" have found otherwise since the last call, with the numbers of their lines.
    [[nodiscard]] Lines TakeUnmet();
    // After a test's own calls, for which no step is taken: jobs run to their end, with what comes of them.
    void RunJobs() const { m_host->RunJobs(); }
    // The user chooses a tool. The number of the failure that leaves the bar, else 0.
    [[nodiscard]] Long Click(const std::string& tool) const;

    // A page that is a form, by its caption, its ProgID or its class, in one of the open windows.
    [[nodiscard]] FormPage Page(const std::string& name) const { return {*this, name}; }

    // The calls and events that stubs have received since the last call, as "P.A#1 DoX", arguments in parentheses:
    // texts as they are, action items by name, nothing as "-".
    [[nodiscard]] Lines TakeCalls();
    // What has been logged since the last call, as "Module.Procedure number".
    [[nodiscard]] Lines TakeLog();
    // All that is on screen, as corvane inspect prints it, for comparison with a stored text.
    [[nodiscard]] std::string Text() const;
    // The text of the status line.
    [[nodiscard]] std::string Status() const;
    // A band as the text of an inspection: an entry a line, two blanks a level.
    [[nodiscard]] std::string BandText(const std::string& band) const;
    // The names of a band's instances, "|" for a separator, with one blank between.
    [[nodiscard]] std::string BandNames(const std::string& band) const;
    // The names of the open windows' definitions, in order of opening.
    [[nodiscard]] Lines OpenWindows() const;
    // The tab of the explorer with that caption, from 0. Fails with 5 when there is none.
    [[nodiscard]] std::size_t TabOf(const std::string& caption) const;
    // The keys of the tab's nodes, depth first, each with a blank for each level before it.
    [[nodiscard]] Lines Nodes(std::size_t tab = 0) const;

private:
    void CheckIsOwn() const;

    std::string m_folder;
    bool m_isOwn = true;
    bool m_oneThread = false;
    std::unique_ptr<inspect::ModelHost> m_host;
    std::size_t m_callsTaken = 0;
    std::size_t m_logTaken = 0;
    std::size_t m_unmetTaken = 0;
};

} // namespace corvane::testing
