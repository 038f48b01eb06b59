#include "adapters/platform/ApplicationPlatform.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/application/Application.h"
#include "desktop/application/CommandStates.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/application/Welcome.h"
#include "desktop/guard/PluginCall.h"
#include "desktop/platform/HostParts.h"
#include "desktop/record/StepRecorder.h"
#include "desktop/service/AppearancePage.h"
#include "desktop/service/HostService.h"
#include "desktop/session/LayoutsDialog.h"
#include "desktop/style/QtText.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <array>

namespace corvane::desktop {

namespace {

constexpr const char* openFile = "OpenFile";
constexpr Long mostRecentFiles = 8; // in the menu; each has a digit

struct OpenedFiles {
    Q_DECLARE_TR_FUNCTIONS(OpenedFiles)
};

} // namespace

void Application::SetUpWelcome() {
    Welcome::Parts parts{
        *m_window,
        m_activeBar,
        m_personal->LastFiles(),
        m_platform->folder,
        m_identity,
        m_personal->KeptFile("welcome.json"),
        [this](const std::function<void()>& act) { m_failures.Guard(act); },
        [this](const std::string& tool) { return Choose(tool); },
        [this](const std::string& path, const std::string& command) { return OpenFile(path, command); },
        [this] { return !FileServices().empty(); },
        [this](const std::string& name, const std::string& key) { return m_personal->UserSession().Reopen(name, key); },
        [this](const std::string& key, const std::string& text) { return m_translation.OfForm(key, text); },
        [this](const std::string& text) { Note("Welcome", text); }};
    m_welcome = std::make_unique<Welcome>(std::move(parts));
    QObject::connect(m_commandStates.get(), &CommandStates::Updated, m_welcome.get(), &Welcome::Update);
    QObject::connect(m_welcome.get(), &Welcome::ShownAtStartChanged, m_welcome.get(), [](bool shown) {
        Appearance appearance = Appearance::Load();
        appearance.startPage = shown;
        appearance.Save();
    });
    m_personal->LastFiles()->SetOnChange([this] { ShowRecentFiles(); });
    m_commonDialog->SetOnOpen([this](const std::string& path) { NoteOpened(path); });
}

void Application::ShowWelcome() {
    m_welcome->ShowAgain();
}

std::vector<Ref<Object>> Application::FileServices() const {
    std::vector<Ref<Object>> found;
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (!manager)
        return found;
    for (const auto& service : manager->Services())
        if (service->HasMember(openFile))
            found.push_back(service);
    return found;
}

// What the command by which files are opened has asked for is a recent file.
void Application::NoteOpened(const std::string& path) {
    const Ref<Tool> tool = m_activeBar->Tools()->Find(m_welcome->OpenCommand());
    const auto action = tool ? tool->TagVariant().TryAs<ActionItem>() : nullptr;
    if (action && action->ActionItemDef() == m_runningAction)
        m_personal->LastFiles()->Add(path);
}

bool Application::OpenFile(const std::string& path, const std::string& command) {
    const std::array<Variant, 1> arguments{path};
    for (const auto& service : FileServices()) {
        bool isOpen = false;
        m_failures.Guard([&] {
            if (m_recorder)
                m_recorder->Note("dropfile " + path);
            const Variant answer = CallPlugin(service, openFile, [&] { return service->Invoke(openFile, arguments); });
            isOpen = answer.IsEmpty() || ToBoolean(answer);
        });
        if (HasEnded())
            return true;
        if (!isOpen)
            continue;
        m_personal->LastFiles()->Add(path);
        return true;
    }
    m_commonDialog->AnswerOpen(path);
    const bool isChosen = !command.empty() && Choose(command);
    m_commonDialog->AnswerOpen({});
    return isChosen;
}

void Application::ShowRecentFiles() {
    if (!m_hostService || HasEnded())
        return;
    std::vector<std::string> names;
    if (!m_welcome->OpenCommand().empty() || !FileServices().empty())
        for (Long i = 1; i <= std::min(mostRecentFiles, m_personal->LastFiles()->Count()); ++i)
            names.push_back(QFileInfo(Text(m_personal->LastFiles()->Item(i))).fileName().toStdString());
    m_failures.Guard(
        [&] { m_hostService->ShowRecentFiles(names, OpenedFiles::tr("&Clear Recent Files").toStdString()); });
}

// Behind the command that is running, as no other one may begin within it.
void Application::OpenRecentFile(Long place) {
    if (place > m_personal->LastFiles()->Count())
        return;
    const std::string path = m_personal->LastFiles()->Item(place);
    QMetaObject::invokeMethod(
        m_welcome.get(),
        [this, path] {
            if (QFileInfo::exists(Text(path))) {
                (void)OpenFile(path, m_welcome->OpenCommand());
                return;
            }
            m_personal->LastFiles()->Remove(path);
            m_messageBox->ShowInformation(
                OpenedFiles::tr("The file “%1” isn't there any more.").arg(Text(path)).toStdString(),
                OpenedFiles::tr("Recent Files").toStdString());
        },
        Qt::QueuedConnection);
}

void Application::ClearRecentFiles() {
    QMetaObject::invokeMethod(
        m_welcome.get(), [this] { m_personal->LastFiles()->Clear(); }, Qt::QueuedConnection);
}

// Layouts.

void Application::ShowLayouts() {
    if (!m_hostService || HasEnded())
        return;
    std::vector<std::string> names;
    for (const QString& name : m_personal->NamedLayouts().Names())
        names.push_back(name.toStdString());
    m_failures.Guard([&] { m_hostService->ShowLayouts(names); });
}

void Application::UseLayout(const std::string& name) {
    QMetaObject::invokeMethod(
        m_welcome.get(), [this, name] { m_personal->NamedLayouts().Choose(Text(name)); }, Qt::QueuedConnection);
}

void Application::SaveLayout() {
    Layouts& layouts = m_personal->NamedLayouts();
    QString proposed;
    for (int i = 1; proposed.isEmpty() || layouts.Has(proposed); ++i)
        proposed = OpenedFiles::tr("Layout %1").arg(i);
    const QString title = OpenedFiles::tr("Save Layout");
    const QString name =
        Text(m_commonDialog->AskText(title.toStdString(), OpenedFiles::tr("Name of the layout:").toStdString(),
                                     proposed.toStdString()))
            .trimmed();
    if (name.isEmpty())
        return;
    if (layouts.Has(name)) {
        const QString replace = OpenedFiles::tr("Replace");
        const QString question = OpenedFiles::tr("There is a layout “%1” already. Replace it?").arg(name);
        if (m_commonDialog->Ask(title.toStdString(), question.toStdString(), replace.toStdString()) !=
            replace.toStdString())
            return;
    }
    layouts.Save(name);
}

void Application::ManageLayouts() {
    const std::string filter = OpenedFiles::tr("Layouts").toStdString() + " (*.layout)|*.layout";
    LayoutsDialog dialog(m_personal->NamedLayouts(),
                         {[this, filter](const QString& proposed) {
                              return Text(m_commonDialog->ShowSave(OpenedFiles::tr("Export Layout").toStdString(),
                                                                   filter, proposed.toStdString()));
                          },
                          [this, filter] {
                              return Text(
                                  m_commonDialog->ShowOpen(OpenedFiles::tr("Import Layout").toStdString(), filter, {}));
                          }},
                         m_window.get());
    dialog.exec();
}

} // namespace corvane::desktop
