// What the person in front of an application has of the desktop beside the application itself: their session, their
// keys, toolbars and menus, and the dialogs that tell of commands.
#pragma once

#include "adapters/log/Utilities.h"
#include "corvane/platform/IFileSystem.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "desktop/application/MainWindow.h"
#include "desktop/custom/PersonalBars.h"
#include "desktop/inspector/EntryPicker.h"
#include "desktop/inspector/InspectorDialog.h"
#include "desktop/session/RecentFiles.h"
#include "desktop/session/Session.h"

#include <QObject>
#include <QPointer>
#include <memory>

namespace corvane::desktop {

class FailurePresenter;
class LogDialog;
class PaletteDialog;

class PersonalDesktop final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        MainWindow& oWindow;
        Ref<MdiForm> frmMain;
        Ref<ActiveBar> oActiveBar;
        Ref<PanelForm> frmPanel;
        FailurePresenter& oFailures;
        Ref<Utilities> oUtilities;
        std::string sAppFolder;
        std::string sConfigFolder;
        std::function<QString()> fnAskReportPath; // empty when the person thought better of it
        std::function<QStringList()> fnLeftOut;   // the services that weren't started
        bool bKeeps = true;                       // false: nothing that was kept is used, and nothing is kept
        std::string sSessionFile = {};            // where the session is kept all the same, without the window's place
    };

    // Before the library is initialised.
    explicit PersonalDesktop(Parts oParts);
    ~PersonalDesktop() override;

    void Initialized(); // after the library was initialised, before it starts
    // After the start, before the window is shown. Where something didn't come up, the session stays as it was kept.
    void Restore(bool bWhole);
    void RestoreWindows(); // once it is shown

    PaletteDialog* ShowPalette();
    void ShowShortcuts();
    void ShowCustomize();
    LogDialog* ShowLog();
    // Shows what is known of that, or the whole.
    InspectorDialog* ShowInspector(const Ref<Tool>& oTool = nullptr, const Ref<Node>& oNode = nullptr);

    [[nodiscard]] PersonalBars& Bars() { return m_oBars; }
    [[nodiscard]] Session& Kept() { return m_oSession; }

private:
    [[nodiscard]] StateFile File(const std::string& sFolder, const char* sName) const;
    [[nodiscard]] StateFile FileAt(const QString& sPath) const; // keeps nothing under an empty path
    [[nodiscard]] StateFile SessionFile() const;
    [[nodiscard]] Session::Parts SessionParts() const;
    [[nodiscard]] bool KeepsSession() const { return m_oParts.bKeeps || !m_oParts.sSessionFile.empty(); }
    PaletteDialog* Pick(QWidget* pParent, bool bAll, const std::function<void(const Ref<Tool>&)>& fnChoose);

    Parts m_oParts;
    std::string m_sStateFolder;
    PersonalBars m_oBars;
    Session m_oSession;
    ExplorerItemNotes m_oNotes;
    EntryPicker m_oPicker;
    QPointer<InspectorDialog> m_pInspector;
};

} // namespace corvane::desktop
