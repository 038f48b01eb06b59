#include "desktop/blame/Blame.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/platform/IClassFinder.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/blame/PluginCode.h"

#include <QMessageBox>
#include <QPushButton>
#include <cstdio>
#include <filesystem>
#include <unordered_set>

namespace corvane::desktop {

namespace {

// Marks which object is being made, and knows each plug-in's code before any of it runs but the loading.
class MarkingFactory final : public IObjectFactory, public IClassFinder {
public:
    MarkingFactory(Ref<PluginFactory> plugins, CrashMarker& marker, EnteredCode& entered)
        : m_plugins(std::move(plugins)), m_marker(marker), m_entered(entered),
          m_folder(std::filesystem::path(m_plugins->PathOf("Any")).parent_path().string()) {}

    Ref<Object> Create(std::string_view progID) override {
        const Marked marked(*this, std::string(progID));
        Load(progID);
        Ref<Object> made = m_plugins->Create(progID);
        if (made)
            m_entered.Note(*made, progID);
        return made;
    }

    [[nodiscard]] bool HasClass(std::string_view progID) override {
        Load(progID);
        return m_plugins->HasClass(progID);
    }

private:
    // One in a process of its own can't take the program with it, and isn't started before it is needed.
    void Load(std::string_view progID) {
        const std::string plugin = PluginOf(progID);
        if (m_known.contains(plugin) || m_plugins->Processes()->FileOf(plugin))
            return;
        m_known.insert(plugin);
        try {
            (void)m_plugins->Classes(plugin);
        } catch (const Failure&) {
            // The creation meets the same failure.
        }
        PluginCode::NoteLibraries(m_folder);
    }

    // One may be made while another is.
    class Marked {
    public:
        Marked(MarkingFactory& factory, std::string progID)
            : m_factory(factory), m_before(std::exchange(factory.m_creating, std::move(progID))) {
            m_factory.m_marker.SetCreating(m_factory.m_creating);
            m_factory.m_entered.Enter(m_factory.m_creating);
        }
        ~Marked() {
            m_factory.m_creating = m_before;
            m_factory.m_marker.SetCreating(m_before);
            m_factory.m_entered.Leave();
        }
        Marked(const Marked&) = delete;
        Marked& operator=(const Marked&) = delete;

    private:
        MarkingFactory& m_factory;
        std::string m_before;
    };

    Ref<PluginFactory> m_plugins;
    CrashMarker& m_marker;
    EnteredCode& m_entered;
    std::string m_folder;
    std::string m_creating;
    std::unordered_set<std::string, TextHash, TextEqual> m_known;
};

// The service to which an action belongs: its own, or that of an explorer item of its.
Ref<ServiceDef> ServiceOf(const ActionItemDef& actionItemDef) {
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    const auto has = [&](const Ref<ActionItemDefCollection>& defs) {
        return defs->HasKey(actionItemDef.Name()) && defs->Item(actionItemDef.Name()).Get() == &actionItemDef;
    };
    if (manager)
        for (const auto& serviceDef : manager->ServiceDefs()) {
            if (has(serviceDef->ActionItemDefs()))
                return serviceDef;
            for (const auto& itemDef : serviceDef->ExplorerItemDefs())
                if (has(itemDef->ActionItemDefs()))
                    return serviceDef;
        }
    return nullptr;
}

std::string CrashText(const CrashRecord& record) {
    if (record.hung)
        return "didn't answer any more and was ended";
    return record.signal == 0 ? std::string("was ended") : "died of signal " + std::to_string(record.signal);
}

} // namespace

Blame::Blame(Ref<Utilities> utilities, std::string stateFolder, LeftOut leftOut, const AskFunction& ask)
    : m_utilities(std::move(utilities)), m_log(*m_utilities), m_servicesFolder(m_utilities->GetAppFolder("Services")),
      m_leftOut(std::move(leftOut)), m_marker(stateFolder) {
    ReportCrash(ask);
    Entering::SetWatcher(this);
}

Blame::~Blame() {
    Entering::SetWatcher(nullptr);
}

void Blame::NoteEntered() {
    m_notesAt = m_entered.Depth();
    m_noted.clear();
}

void Blame::Entered(const Object& object) noexcept {
    if (m_notesAt == m_entered.Depth())
        m_noted.insert(&object);
    m_entered.Enter(object);
}

void Blame::Left() noexcept {
    m_entered.Leave();
}

void Blame::Log(const std::string& text) const {
    m_log.LogError(m_log.AppName(), "Desktop", "Blame", Failure(FailureNumber::ObjectErrorBase, text), {}, false);
}

void Blame::ReportCrash(const AskFunction& ask) {
    for (const CrashRecord& record : m_marker.Found()) {
        const std::string who = Who(record);
        Log("The program " + CrashText(record) + " in the code of " + who);
        const auto& names = m_leftOut.names;
        if (!ask || m_leftOut.allPlugins || std::find(names.begin(), names.end(), who) != names.end())
            continue;
        const CrashAnswer answer = ask(record, who);
        if (answer == CrashAnswer::LeaveOut)
            m_leftOut.names.push_back(who);
        m_leftOut.allPlugins = answer == CrashAnswer::Safe;
    }
}

CrashAnswer Blame::AskInBox(const CrashRecord& record, const std::string& whoDied) {
    const QString who = QString::fromStdString(whoDied);
    QMessageBox box(QMessageBox::Warning, tr("Crash Recovery"),
                    record.hung ? tr("The application stopped responding while “%1” was running.").arg(who)
                                : tr("The application quit unexpectedly while “%1” was running.").arg(who));
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(tr("You can start without “%1” this time; its commands and windows are unavailable then. "
                              "Safe mode starts without all plug-ins and without your customizations.")
                               .arg(who));
    auto* leaveOut = box.addButton(tr("Start &Without It"), QMessageBox::AcceptRole);
    auto* all = box.addButton(tr("&Start Normally"), QMessageBox::RejectRole);
    auto* safe = box.addButton(tr("Start in Safe &Mode"), QMessageBox::DestructiveRole);
    box.setDefaultButton(leaveOut);
    box.setEscapeButton(all);
    box.exec();
    return box.clickedButton() == leaveOut ? CrashAnswer::LeaveOut
           : box.clickedButton() == safe   ? CrashAnswer::Safe
                                           : CrashAnswer::StartAll;
}

Ref<IFileSystem> Blame::Files(Ref<IFileSystem> files, const std::string& servicesFolder) {
    m_filter = New<LeftOutServices>(std::move(files), servicesFolder, m_leftOut);
    return m_filter;
}

Ref<IObjectFactory> Blame::Factory(Ref<PluginFactory> plugins) {
    return New<MarkingFactory>(std::move(plugins), m_marker, m_entered);
}

void Blame::CommandBegins(const ActionItem& actionItem) {
    const auto def = actionItem.ActionItemDef();
    const auto service = def ? ServiceOf(*def) : nullptr;
    if (!service)
        return;
    m_marker.SetService(service->Name(), PluginOf(service->ProgID()));
    QMetaObject::invokeMethod(
        &m_turn, [this] { m_marker.SetService({}, {}); }, Qt::QueuedConnection);
}

void Blame::StartWatch(UiWatch::Milliseconds limit) {
    m_watch = std::make_unique<UiWatch>(limit, [this](const char* plugin, UiWatch::Milliseconds duration, bool over) {
        ReportBusy(plugin, duration, over);
    });
}

// In the watching thread.
void Blame::ReportBusy(const char* plugin, UiWatch::Milliseconds duration, bool over) {
    if (!over) // when it is over, whose code it was has been left
        m_busy = Who(m_marker.Current(plugin));
    const std::string who = m_busy;
    m_marker.SetHung(over ? nullptr : plugin);
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.1f s", static_cast<double>(duration.count()) / 1000);
    Log((who.empty() ? std::string("The program itself") : who) +
        (over ? " kept the user interface busy for " : " has kept the user interface busy for ") + seconds);
}

} // namespace corvane::desktop
