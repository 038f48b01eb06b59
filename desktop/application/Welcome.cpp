#include "desktop/application/Welcome.h"

#include "adapters/common/Paths.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/commands/CommandList.h"
#include "desktop/documents/Documents.h"
#include "desktop/explorer/ExplorerPage.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/style/QtText.h"
#include "desktop/translation/ShownText.h"
#include "desktop/windows/WindowForm.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QJsonArray>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr std::size_t mostWindows = 6;
constexpr Long mostFiles = 6;
constexpr int saveDelay = 400;
constexpr std::size_t longestWindow = 80; // characters

// The action behind a tool, which entries of menus and toolbars share.
const ActionItemDef* ActionOf(const Tool* tool) {
    const auto item = tool ? tool->TagVariant().TryAs<ActionItem>() : nullptr;
    return item ? item->ActionItemDef().Get() : nullptr;
}

// As users know a folder; written from left to right among texts that aren't, too.
QString FolderText(const QString& path) {
    constexpr QChar leftToRight(0x2066);
    constexpr QChar end(0x2069);
    const QString folder = QDir::toNativeSeparators(QFileInfo(path).absolutePath());
    const bool isAtHome = folder.startsWith(QDir::homePath());
    return leftToRight + (isAtHome ? "~" + folder.mid(QDir::homePath().size()) : folder) + end;
}

} // namespace

Welcome::Welcome(Parts parts) : m_parts(std::move(parts)) {
    if (const std::string path = forms::WelcomePathOf(m_parts.folder); !path.empty()) {
        const auto bytes = ReadBytes(path);
        if (bytes)
            m_def = forms::ReadWelcome(*bytes);
        else
            m_parts.note(path + ": the file can't be read");
        for (const forms::WelcomeProblem& problem : m_def.problems)
            m_parts.note(path + ":" + std::to_string(problem.at.line) + ": " + problem.text);
    }
    Read();
    m_saveSoon.setSingleShot(true);
    m_saveSoon.setInterval(saveDelay);
    connect(&m_saveSoon, &QTimer::timeout, this, &Welcome::Save);
}

Welcome::~Welcome() {
    if (m_saveSoon.isActive())
        Save();
    delete m_dialog;
    delete m_page;
}

void Welcome::Read() {
    const QJsonObject state = m_parts.file.Read();
    m_wasShown = state["shown"].toBool();
    for (const auto& command : state["done"].toArray())
        m_done.insert(command.toString().toStdString());
    for (const auto& value : state["windows"].toArray()) {
        const QJsonObject window = value.toObject();
        if (m_windows.size() < mostWindows && !window["key"].toString().isEmpty())
            m_windows.push_back({window["name"].toString().toStdString(), window["key"].toString().toStdString(),
                                 window["title"].toString().toStdString()});
    }
}

void Welcome::Save() {
    m_saveSoon.stop();
    QJsonArray done;
    for (const std::string& command : m_done)
        done.append(Text(command));
    QJsonArray windows;
    for (const LastWindow& window : m_windows)
        windows.append(
            QJsonObject{{"name", Text(window.name)}, {"key", Text(window.key)}, {"title", Text(window.title)}});
    m_parts.file.Write({{"shown", m_wasShown}, {"done", done}, {"windows", windows}});
}

void Welcome::Start() {
    m_hasStarted = true;
    Follow();
    const bool isFirst = !std::exchange(m_wasShown, true);
    if (isFirst)
        Save();
    if (isFirst && !m_parts.window.ActiveForm() && ShowsOwnWindow())
        return;
    Update();
}

void Welcome::Follow() {
    for (const forms::WelcomeEntry& empty : m_def.empties) {
        const Ref<Tool> tool = m_parts.activeBar->Tools()->Find(empty.command);
        std::function<void()> act;
        if (tool)
            act = [this, command = empty.command] { m_parts.choose(command); };
        for (int tab = 0; ExplorerPage* page = m_parts.window.Explorer().Page(tab); ++tab)
            if (EqualText(page->Tree()->Tree()->Tag(), empty.file))
                page->SetEmptyHint(Shown(empty.file, empty.text), tool ? PlainCaption(*tool) : QString(), act);
    }
    m_parts.window.Area().viewport()->installEventFilter(this);
    // Behind the library's subscription: what the command has done is there.
    m_subscriptions.push_back(
        m_parts.activeBar->ToolClick.Subscribe([this](const Ref<Tool>& tool) { NoteClick(*tool); }));
    const Ref<Framework> framework = Singleton::Framework();
    if (const auto manager = framework ? framework->WindowManager() : nullptr)
        m_subscriptions.push_back(
            manager->WindowTerminateEvent.Subscribe([this](const Ref<Window>& window) { NoteWindow(*window); }));
}

void Welcome::NoteClick(const Tool& tool) {
    const ActionItemDef* action = ActionOf(&tool);
    bool isNew = false;
    for (const forms::WelcomeEntry& step : m_def.steps) {
        const Ref<Tool> own = m_parts.activeBar->Tools()->Find(step.command);
        if (own && (own.Get() == &tool || (action && ActionOf(own.Get()) == action)))
            isNew = m_done.insert(step.command).second || isNew;
    }
    if (!isNew)
        return;
    Save();
    if (m_page && m_page->isVisible())
        QMetaObject::invokeMethod(this, &Welcome::ShowContent, Qt::QueuedConnection);
}

// One that a service can open again, by its key.
void Welcome::NoteWindow(const Window& window) {
    if (window.Key() == std::to_string(window.ObjectKey()) || window.IsModal() ||
        window.WindowType() != WindowTypeConstants::cvWindow)
        return;
    LastWindow last{std::string(window.WindowDef()->Name()), window.Key(), window.Caption()};
    std::erase_if(m_windows, [&](const auto& each) { return each.name == last.name && each.key == last.key; });
    m_windows.insert(m_windows.begin(), std::move(last));
    if (m_windows.size() > mostWindows)
        m_windows.pop_back();
    m_saveSoon.start(); // many may close at once
}

void Welcome::SetShownAtStart(bool shown) {
    if (std::exchange(m_isShownAtStart, shown) != shown && m_hasStarted)
        Update();
}

void Welcome::Update() {
    if (!m_hasStarted || m_parts.window.HasEnded())
        return;
    QMdiArea& area = m_parts.window.Area();
    const auto children = area.subWindowList();
    const bool isEmpty =
        std::all_of(children.begin(), children.end(), [](const auto* each) { return each->isHidden(); });
    m_isAskedFor = m_isAskedFor && isEmpty;
    const bool isShown = isEmpty && (m_isAskedFor || (m_isShownAtStart && m_def.window.empty()));
    if (!isShown) {
        if (m_page)
            m_page->hide();
        return;
    }
    if (m_page && m_page->isVisible())
        return;
    if (!m_page)
        m_page = NewPage(area.viewport());
    ShowContent();
    m_page->setGeometry(area.viewport()->rect());
    m_page->show();
}

bool Welcome::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && m_page)
        m_page->setGeometry(m_parts.window.Area().viewport()->rect());
    return QObject::eventFilter(watched, event);
}

StartPage* Welcome::NewPage(QWidget* parent) {
    auto* page = new StartPage(parent);
    connect(page, &StartPage::ShownAtStartChanged, this, [this](bool shown) {
        m_isAskedFor = true; // it stays until a window comes
        m_isShownAtStart = shown;
        Q_EMIT ShownAtStartChanged(shown);
    });
    return page;
}

bool Welcome::ShowsOwnWindow() {
    const Ref<Framework> framework = Singleton::Framework();
    const auto services = framework ? framework->ServiceManager() : nullptr;
    if (m_def.window.empty() || !services || !services->WindowDefs()->HasKey(m_def.window))
        return false;
    m_parts.guard([&] { framework->WindowManager()->OpenWindow(m_def.window, nullptr); });
    return true;
}

void Welcome::ShowAgain() {
    if (ShowsOwnWindow())
        return;
    m_isAskedFor = true;
    Update();
    if (m_page && m_page->isVisible()) {
        ShowContent();
        m_page->Focus();
        return;
    }
    if (!m_dialog) {
        m_dialog = new QDialog(&m_parts.window);
        m_dialog->setAttribute(Qt::WA_DeleteOnClose);
        m_dialog->setWindowTitle(tr("Welcome"));
        m_dialogPage = NewPage(m_dialog);
        auto* all = new QVBoxLayout(m_dialog);
        all->setContentsMargins(0, 0, 0, 0);
        all->addWidget(m_dialogPage);
        m_dialog->resize(760, 560);
    }
    ShowContent();
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
}

void Welcome::ShowContent() {
    for (StartPage* page : {m_page.data(), m_dialogPage.data()})
        if (page)
            page->Show(NewContent());
}

// What is chosen in the dialog closes it.
void Welcome::Do(const std::function<void()>& act) {
    delete m_dialog;
    act();
    if (m_page && m_page->isVisible())
        ShowContent();
}

// What is on it.

QString Welcome::Shown(const std::string& entry, const std::string& text) const {
    const std::string* translation = m_parts.translated(forms::WelcomeKey(entry), text);
    return Text(translation ? *translation : text);
}

StartPage::Content Welcome::NewContent() {
    StartPage::Content content;
    content.title = Text(m_parts.identity.name);
    content.text = Shown("Text", m_def.text);
    content.icon = m_parts.identity.icon;
    content.isShownAtStart = m_isShownAtStart;
    for (auto section : {Steps(), Files(), Samples(), Windows()})
        if (!section.entries.empty())
            content.sections.push_back(std::move(section));
    if (content.sections.size() < 2)
        content.sections.push_back(CommandsOfHost());
    return content;
}

StartPage::Entry Welcome::EntryOf(const std::string& tool, const QString& text) {
    const Ref<Tool> found = m_parts.activeBar->Tools()->Find(tool);
    StartPage::Entry entry;
    entry.text = text;
    entry.isEnabled = found && found->Visible() && found->Enabled();
    entry.toolTip = entry.isEnabled ? ShownDescription(*found)
                                    : tr("This can't be chosen now; maybe something has to be selected first.");
    entry.choose = [this, tool] { Do([&] { m_parts.choose(tool); }); };
    return entry;
}

StartPage::Section Welcome::Steps() {
    StartPage::Section section;
    int done = 0;
    for (const forms::WelcomeEntry& step : m_def.steps) {
        if (!m_parts.activeBar->Tools()->Find(step.command))
            continue; // of a service that was left out
        StartPage::Entry entry = EntryOf(step.command, Shown(step.command, step.text));
        entry.isDone = m_done.contains(step.command);
        done += *entry.isDone ? 1 : 0;
        section.entries.push_back(std::move(entry));
    }
    section.title =
        done == 0 ? tr("First Steps") : tr("First Steps: %1 of %2 Done").arg(done).arg(section.entries.size());
    return section;
}

StartPage::Section Welcome::Files() {
    StartPage::Section section{tr("Recent Files"), {}};
    if (m_def.open.empty() && !m_parts.canOpen())
        return section;
    const QIcon icon = m_parts.window.style()->standardIcon(QStyle::SP_FileIcon);
    for (Long i = 1; i <= m_parts.recentFiles->Count() && static_cast<Long>(section.entries.size()) < mostFiles; ++i) {
        const std::string path = m_parts.recentFiles->Item(i);
        const QFileInfo file(Text(path));
        if (!file.exists())
            continue;
        StartPage::Entry entry;
        entry.text = file.fileName();
        entry.detail = FolderText(Text(path));
        entry.icon = icon;
        entry.toolTip = QDir::toNativeSeparators(file.absoluteFilePath());
        entry.choose = [this, path] { Do([&] { m_parts.open(path, m_def.open); }); };
        section.entries.push_back(std::move(entry));
    }
    return section;
}

StartPage::Section Welcome::Windows() {
    StartPage::Section section{tr("Recent Windows"), {}};
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->WindowManager() : nullptr;
    if (!manager)
        return section;
    const QIcon icon = m_parts.window.style()->standardIcon(QStyle::SP_FileDialogDetailedView);
    for (const LastWindow& window : m_windows) {
        bool isOpen = false;
        for (const auto& each : manager->Windows())
            isOpen = isOpen || (each->WindowDef()->Name() == window.name && each->Key() == window.key);
        if (isOpen)
            continue;
        StartPage::Entry entry;
        entry.text = Text(window.title.empty() ? window.name : window.title);
        if (entry.text.size() > static_cast<qsizetype>(longestWindow))
            entry.text = entry.text.left(static_cast<qsizetype>(longestWindow)).trimmed() + QChar(0x2026);
        entry.icon = icon;
        entry.choose = [this, window] { OpenLast(window); };
        section.entries.push_back(std::move(entry));
    }
    return section;
}

// One that can't be opened any more, as what it showed is gone, is forgotten.
void Welcome::OpenLast(const LastWindow& last) {
    Do([&] {
        bool isOpen = false;
        m_parts.guard([&] { isOpen = m_parts.openWindow(last.name, last.key); });
        if (isOpen)
            return;
        std::erase_if(m_windows, [&](const auto& each) { return each.name == last.name && each.key == last.key; });
        Save();
    });
}

StartPage::Section Welcome::Samples() {
    StartPage::Section section{tr("Samples"), {}};
    for (const forms::WelcomeEntry& sample : m_def.samples) {
        const QString text = Shown(sample.file.empty() ? sample.command : sample.file, sample.text);
        if (sample.file.empty()) {
            if (m_parts.activeBar->Tools()->Find(sample.command))
                section.entries.push_back(EntryOf(sample.command, text));
            continue;
        }
        const auto path = FindPath(JoinPath(m_parts.folder, sample.file));
        if (!path)
            continue;
        StartPage::Entry entry;
        entry.text = text;
        entry.detail = QFileInfo(Text(*path)).fileName();
        entry.icon = m_parts.window.style()->standardIcon(QStyle::SP_FileIcon);
        entry.choose = [this, file = *path, command = sample.command.empty() ? m_def.open : sample.command] {
            Do([&] { m_parts.open(file, command); });
        };
        section.entries.push_back(std::move(entry));
    }
    return section;
}

// What every application has.
StartPage::Section Welcome::CommandsOfHost() {
    StartPage::Section section{tr("Find Your Way"), {}};
    for (const auto& [tool, text] :
         {std::pair("Tools.CommandPalette", tr("Find a command by a few of its letters")),
          std::pair("Help.Manual", tr("Read the manual")), std::pair("Tools.Shortcuts", tr("See all shortcuts")),
          std::pair("Tools.Preferences", tr("Change how the application looks and works"))})
        if (m_parts.activeBar->Tools()->Find(tool))
            section.entries.push_back(EntryOf(tool, text));
    return section;
}

} // namespace corvane::desktop

#include "moc_Welcome.cpp"
