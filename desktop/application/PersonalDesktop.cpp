#include "desktop/application/PersonalDesktop.h"

#include "adapters/process/ProcessObject.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/menus/ActionItem.h"
#include "desktop/custom/CustomizeDialog.h"
#include "desktop/custom/ShortcutsDialog.h"
#include "desktop/documents/Documents.h"
#include "desktop/failures/FailurePresenter.h"
#include "desktop/log/LogPanel.h"
#include "desktop/palette/PaletteDialog.h"
#include "desktop/style/ViewDock.h"
#include "desktop/translation/ShownText.h"

#include <filesystem>

namespace corvane::desktop {

namespace {

QString DescriptionOf(const Tool& tool) {
    QString description = ShownDescription(tool);
    for (const Tool* instance : tool.Instances())
        if (description.isEmpty())
            description = ShownDescription(*instance);
    return description;
}

// Users don't know services by their names.
QString WhoseIs(const CommandEntry& command) {
    return command.owner.kind == Owner::Kind::Service ? QString() : command.owner.Text();
}

// The window or the item of the explorer that a command would act on now; of others whose it is.
QString ActsOn(const CommandEntry& command, const MdiForm& mainForm) {
    QString target;
    const Ref<ActionItem> action = command.Action();
    if (!action || !command.WhyNot().isEmpty())
        return WhoseIs(command);
    if (command.owner.kind == Owner::Kind::Page) {
        if (const Ref<Form> form = mainForm.ActiveForm())
            target = TitleOf(*form);
    } else if (command.owner.kind == Owner::Kind::ExplorerItem) {
        if (const auto item = CorvaneMain::QueryExplorerItem(action->ActionsProviderObj()))
            target = QString::fromStdString(item->DisplayName());
    }
    return target.isEmpty() ? WhoseIs(command) : PersonalDesktop::tr("acts on “%1”").arg(target);
}

constexpr const char* logName = "Log"; // of its dock

std::string FolderOf(const std::string& path) {
    return std::filesystem::path(path).parent_path().string();
}

} // namespace

PersonalDesktop::PersonalDesktop(Parts parts)
    : m_parts(std::move(parts)), m_stateFolder(FolderOf(m_parts.utilities->LogPath())),
      m_bars(File(m_parts.configFolder, "desktop.json"), m_parts.activeBar, [this] { m_parts.window.Bars().Redraw(); }),
      m_session(SessionFile(), SessionParts()),
      m_layouts(File(m_parts.configFolder, "layouts.json"),
                {[this] { return m_session.Layout(); },
                 [this](const QJsonObject& layout) { m_session.SetLayout(layout); }, m_parts.layoutsChanged}),
      m_recentFiles(New<RecentFiles>(File(m_stateFolder, "recent.json"))),
      m_picker(
          m_parts.window.Bars().Actions(), [this](const Ref<Tool>& tool) { ShowInspector(tool); },
          [this](const Ref<Node>& node) { ShowInspector(nullptr, node); }, nullptr) {
    m_parts.mainForm->AddMember("RecentFiles", m_recentFiles);
    m_parts.window.Bars().SetChanges(m_bars);
}

PersonalDesktop::~PersonalDesktop() {
    delete m_logDock;
    delete m_inspector; // it looks at what is kept here
}

void PersonalDesktop::Initialized() {
    m_notes.Follow();
}

StateFile PersonalDesktop::File(const std::string& folder, const char* name) const {
    const bool keeps = m_parts.keeps && !folder.empty();
    return FileAt(keeps ? QString::fromStdString(folder) + "/" + QLatin1String(name) : QString());
}

StateFile PersonalDesktop::SessionFile() const {
    return m_parts.sessionFile.empty() ? File(m_stateFolder, "session.json")
                                       : FileAt(QString::fromStdString(m_parts.sessionFile));
}

StateFile PersonalDesktop::FileAt(const QString& path) const {
    return {path, [utilities = m_parts.utilities](const QString& text) {
                utilities->LogError(utilities->AppName(), "Desktop", "StateFile",
                                    Failure(FailureNumber::FileAccess, text.toStdString()), {}, false);
            }};
}

Session::Parts PersonalDesktop::SessionParts() {
    return {&m_parts.window,
            &m_parts.window.OpenDocuments(),
            m_parts.mainForm,
            m_parts.activeBar,
            m_parts.panelForm,
            [failures = &m_parts.failures](const std::function<void()>& act) { failures->Guard(act); },
            [window = &m_parts.window] {
                window->Bars().RedrawToolbars();
                window->Flush();
            },
            m_parts.sessionFile.empty(),
            [](const Ref<Object>& service) {
                const auto own = service.TryAs<ProcessObject>();
                return own && !own->Owner()->IsRunning();
            },
            [this](const QString& name) { ShowView(name); },
            m_parts.itemOf,
            m_parts.setItem};
}

void PersonalDesktop::Restore(bool whole) {
    if (SavesSession())
        m_session.Restore(whole && m_parts.leftOut().isEmpty());
}

void PersonalDesktop::RestoreWindows() {
    if (SavesSession())
        m_session.RestoreWindows();
}

QString PersonalDesktop::WhyNot(const CommandEntry& command) const {
    const QString why = command.WhyNot();
    return why.isEmpty() ? m_parts.window.Bars().WhyNot(*command.tool) : why;
}

// Without all only what can be chosen where the user is: a context menu's command is for the item that is chosen.
PaletteDialog* PersonalDesktop::Pick(QWidget* parent, bool all, const std::function<void(const Ref<Tool>&)>& choose) {
    const CommandList commands(*m_parts.activeBar);
    std::vector<PaletteEntry> entries;
    entries.reserve(commands.All().size());
    for (const CommandEntry& command : commands.All())
        entries.push_back({command.tool, command.caption, command.path, m_bars.KeysText(*command.tool),
                           all ? command.owner.Text() : ActsOn(command, *m_parts.mainForm),
                           all ? QString() : WhyNot(command), DescriptionOf(*command.tool),
                           !all && !command.WhatFirst().isEmpty(), command.original});
    auto* palette = new PaletteDialog(
        std::move(entries), choose, [this](const Ref<Tool>& tool) { ShowInspector(tool); }, parent);
    palette->open();
    return palette;
}

PaletteDialog* PersonalDesktop::ShowPalette() {
    return Pick(&m_parts.window, false, [this](const Ref<Tool>& tool) { m_parts.window.Bars().Choose(tool); });
}

LogPanel* PersonalDesktop::ShowLog() {
    LogDock().Open();
    return m_log;
}

ViewDock& PersonalDesktop::LogDock() {
    if (!m_logDock)
        m_logDock = new ViewDock(logName, tr("Log"), m_parts.window, [this] {
            return m_log = new LogPanel(QString::fromStdString(m_parts.utilities->LogPath()),
                                        {QString::fromStdString(m_parts.utilities->AppName()),
                                         QString::fromStdString(m_parts.appFolder),
                                         m_parts.leftOut(),
                                         {}},
                                        m_parts.askReportPath);
        });
    return *m_logDock;
}

void PersonalDesktop::ShowView(const QString& name) {
    if (ViewDock* view = name == logName ? &LogDock() : m_parts.otherView ? m_parts.otherView(name) : nullptr)
        view->show();
}

InspectorDialog* PersonalDesktop::ShowInspector(const Ref<Tool>& tool, const Ref<Node>& node) {
    m_parts.failures.Guard([&] {
        if (!m_inspector) {
            m_inspector = new InspectorDialog(m_parts.activeBar, m_parts.panelForm, m_bars, m_notes,
                                              QString::fromStdString(m_parts.utilities->LogPath()), &m_parts.window);
            m_inspector->setAttribute(Qt::WA_DeleteOnClose);
        }
        if (tool)
            m_inspector->Select(*tool);
        if (node)
            m_inspector->Select(*node);
        m_inspector->show();
        m_inspector->raise();
        m_inspector->activateWindow();
    });
    return m_inspector;
}

void PersonalDesktop::ShowShortcuts() {
    ShortcutsDialog dialog(m_bars, *m_parts.activeBar, &m_parts.window);
    dialog.exec();
}

void PersonalDesktop::ShowCustomize() {
    CustomizeDialog dialog(
        m_bars, m_parts.activeBar,
        [this](QWidget* parent, const std::function<void(const Ref<Tool>&)>& choose) { Pick(parent, true, choose); },
        &m_parts.window);
    dialog.exec();
}

} // namespace corvane::desktop

#include "moc_PersonalDesktop.cpp"
