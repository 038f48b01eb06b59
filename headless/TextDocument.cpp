#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/controls/BarText.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/Document.h"
#include "headless/FormPages.h"
#include "headless/JobText.h"

#include <sstream>

namespace corvane::inspect {

namespace {

class Writer {
public:
    void Heading(const std::string& text) {
        if (m_text.tellp() > 0)
            m_text << "\n";
        m_text << text << "\n";
    }
    void Line(int depth, const std::string& text) {
        m_text << std::string(static_cast<std::size_t>(depth) * 2, ' ') << text << "\n";
    }
    void BandEntries(const Band& band, int depth) { m_text << BandAsText(band, depth); }
    void Nodes(const std::vector<Node*>& siblings, int depth) {
        for (const Node* node : siblings) {
            Line(depth, node->Text() + (node->Selected() ? "  (selected)" : ""));
            Nodes(node->Children(), depth + 1);
        }
    }
    [[nodiscard]] std::string Text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
};

void WriteBands(Writer& writer, const ModelHost& host) {
    const auto& bands = host.Bar()->Bands()->All();
    for (const auto& band : bands)
        if (band->Kind() == BandKind::MenuBar) {
            writer.Heading("Menus");
            writer.BandEntries(*band, 1);
        }
    for (const auto& band : bands)
        if (band->Kind() == BandKind::Toolbar) {
            writer.Heading("Toolbar " + band->Caption() + (band->Visible() ? "" : "  (hidden)"));
            writer.BandEntries(*band, 1);
        }
    constexpr std::string_view context = "Context.";
    for (const auto& band : bands)
        if (band->Kind() == BandKind::Popup && EqualText(band->Name().substr(0, context.size()), context)) {
            writer.Heading("Context menu of " + band->Name().substr(context.size()));
            writer.BandEntries(*band, 1);
        }
}

void WriteExplorer(Writer& writer, const ModelHost& host) {
    const bool visible = host.Bar()->Bands()->Item("Explorer")->Visible();
    writer.Heading(std::string("Explorer") + (visible ? "" : "  (hidden)"));
    for (const auto& tvw : host.Trees()) {
        writer.Line(1, "[" + host.Tabs()->CaptionOf(tvw->Container()) + "]" +
                           (tvw->Container() == host.Tabs()->Tab() ? "" : "  (behind)"));
        writer.Nodes(tvw->GetNodes()->Roots(), 2);
    }
}

void WriteForms(Writer& writer, const ModelHost& host, const Ref<Window>& window) {
    for (const ShownPage& page : PagesOf(host, window)) {
        const std::string problem = ProblemOf(page);
        if (!page.form && problem.empty())
            continue;
        writer.Line(2, "[" + page.pageDef->Caption() + "]" + (problem.empty() ? "" : "  ! " + problem));
        if (page.form)
            for (const std::string& line : FormLines(*page.form->Model()))
                writer.Line(3, line);
    }
}

void WriteJob(Writer& writer, const jobs::Job& job) {
    const std::string& service = job.BelongsTo().service;
    writer.Line(1, job.Title() + "  " + StateName(job.State()) +
                       (service.empty() ? "" : "  (service " + service + ")") +
                       (job.Text().empty() ? "" : "  " + job.Text()));
    for (const std::string& line : job.LogLines())
        writer.Line(2, line);
    if (const auto& failure = job.Error())
        writer.Line(2, std::to_string(failure->Number) + " " + failure->Source + ": " + failure->Description);
    for (const auto& [title, key] : job.WaitsFor())
        writer.Line(2, "waits for " + title + " (" + key + ")");
}

void WriteJobs(Writer& writer, const jobs::Manager& manager) {
    const auto active = manager.Active();
    if (manager.Ended().empty() && active.empty())
        return;
    writer.Heading("Jobs");
    for (const auto& job : manager.Ended())
        WriteJob(writer, *job);
    for (const auto& job : active)
        WriteJob(writer, *job);
}

void WriteRecord(Writer& writer, const ModelHost& host) {
    const Record& record = host.Recorded();
    if (!record.messages.empty())
        writer.Heading("Messages");
    for (const auto& message : record.messages)
        writer.Line(1, message.title + ": " + message.text);
    if (!record.log.empty())
        writer.Heading("Log");
    for (const auto& entry : record.log) {
        std::string line = entry.module + "." + entry.procedure + ": " + std::to_string(entry.failure.Number) + " " +
                           entry.failure.Source + ": " + entry.failure.Description;
        if (!entry.context.empty())
            line += "  {" + entry.context + "}";
        if (entry.failure.Line > 0)
            line += "  line " + std::to_string(entry.failure.Line);
        writer.Line(1, line + (entry.shown ? "  (shown)" : ""));
    }
    if (const auto& failure = host.FirstFailure()) {
        writer.Heading("Failure");
        writer.Line(1, std::to_string(failure->Number) + " " + failure->Source + ": " + failure->Description);
    }
}

} // namespace

std::string TextDocument(const ModelHost& host, const DocumentOptions& /*options*/) {
    Writer writer;
    const Ref<Framework> framework = CorvaneMain::Framework();
    if (const auto serviceManager = framework ? framework->ServiceManager() : nullptr) {
        writer.Heading("Services");
        for (const auto& serviceDef : serviceManager->ServiceDefs())
            writer.Line(1, serviceDef->Name() + "  " + serviceDef->ProgID() +
                               (serviceDef->IsStartService() ? "  (start service)" : ""));
    }
    WriteBands(writer, host);
    WriteExplorer(writer, host);
    if (const auto windowManager = framework ? framework->WindowManager() : nullptr;
        windowManager && windowManager->Windows() && windowManager->Windows()->Count() > 0) {
        writer.Heading("Windows");
        for (const auto& window : windowManager->Windows()) {
            writer.Line(1, window->WindowDef()->Name() + "  " + window->Caption() + "  key " + window->Key());
            WriteForms(writer, host, window);
        }
    }
    if (const std::string status = host.Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
        !status.empty()) {
        writer.Heading("Status");
        writer.Line(1, status);
    }
    WriteJobs(writer, *host.Jobs());
    WriteRecord(writer, host);
    return writer.Text();
}

} // namespace corvane::inspect
