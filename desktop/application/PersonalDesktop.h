// What the user in front of an application has of the desktop beside the application itself: their session, their
// shortcuts, toolbars and menus, and the dialogs about commands.
#pragma once

#include "adapters/log/Utilities.h"
#include "corvane/platform/IFileSystem.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "desktop/application/MainWindow.h"
#include "desktop/custom/PersonalBars.h"
#include "desktop/inspector/EntryPicker.h"
#include "desktop/inspector/InspectorDialog.h"
#include "desktop/session/Layouts.h"
#include "desktop/session/RecentFiles.h"
#include "desktop/session/Session.h"

#include <QObject>
#include <QPointer>
#include <memory>

namespace corvane::desktop {

class FailurePresenter;
class LogPanel;
class PaletteDialog;
class ViewDock;

class PersonalDesktop final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        MainWindow& window;
        Ref<MdiForm> mainForm;
        Ref<ActiveBar> activeBar;
        Ref<PanelForm> panelForm;
        FailurePresenter& failures;
        Ref<Utilities> utilities;
        std::string appFolder;
        std::string configFolder;
        std::function<QString()> askReportPath;                // empty when the user cancelled
        std::function<QStringList()> leftOut;                  // the services that weren't started
        std::function<std::string(const Window&)> itemOf = {}; // as the session's
        std::function<void(const Window&, const std::string&)> setItem = {};
        std::function<void()> layoutsChanged = {}; // the names of the user's layouts
        bool keeps = true;                         // false: nothing that was kept is used, and nothing is kept
        std::function<ViewDock*(const QString&)> otherView = {}; // of that name, which is kept elsewhere; or null
        std::string sessionFile = {}; // where the session is kept all the same, without the window's place
    };

    // Before the library is initialized.
    explicit PersonalDesktop(Parts parts);
    ~PersonalDesktop() override;

    void Initialized(); // after the library was initialized, before it starts
    // After the start, before the window is shown. Where something didn't come up, the session stays as it was kept.
    void Restore(bool whole);
    void RestoreWindows(); // once it is shown

    PaletteDialog* ShowPalette();
    void ShowShortcuts();
    void ShowCustomize();
    LogPanel* ShowLog();
    // Opens a view of the session's where it was, without the focus.
    void ShowView(const QString& name);
    // Shows what is known of that, or the whole.
    InspectorDialog* ShowInspector(const Ref<Tool>& tool = nullptr, const Ref<Node>& node = nullptr);

    // A file of what is kept of this application, and nothing where nothing is kept.
    [[nodiscard]] StateFile KeptFile(const char* name) const { return File(m_stateFolder, name); }
    [[nodiscard]] PersonalBars& Bars() { return m_bars; }
    [[nodiscard]] Session& UserSession() { return m_session; }
    [[nodiscard]] Layouts& NamedLayouts() { return m_layouts; }
    [[nodiscard]] const Ref<RecentFiles>& LastFiles() const { return m_recentFiles; }

private:
    [[nodiscard]] StateFile File(const std::string& folder, const char* name) const;
    [[nodiscard]] StateFile FileAt(const QString& path) const; // keeps nothing under an empty path
    [[nodiscard]] StateFile SessionFile() const;
    [[nodiscard]] Session::Parts SessionParts();
    [[nodiscard]] ViewDock& LogDock();
    [[nodiscard]] bool SavesSession() const { return m_parts.keeps || !m_parts.sessionFile.empty(); }
    [[nodiscard]] QString WhyNot(const CommandEntry& command) const;
    PaletteDialog* Pick(QWidget* parent, bool all, const std::function<void(const Ref<Tool>&)>& choose);

    Parts m_parts;
    std::string m_stateFolder;
    PersonalBars m_bars;
    Session m_session;
    Layouts m_layouts;
    Ref<RecentFiles> m_recentFiles;
    ExplorerItemNotes m_notes;
    EntryPicker m_picker;
    QPointer<InspectorDialog> m_inspector;
    QPointer<ViewDock> m_logDock;
    QPointer<LogPanel> m_log; // in it
};

} // namespace corvane::desktop
