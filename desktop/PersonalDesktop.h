// What the person in front of an application has of the desktop beside the application itself: their session, their
// keys, toolbars and menus, and the dialogs that tell of commands.
#pragma once

#include "adapters/log/Utilities.h"
#include "corvane/platform/IFileSystem.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "desktop/MainWindow.h"
#include "desktop/custom/PersonalBars.h"
#include "desktop/session/RecentFiles.h"
#include "desktop/session/Session.h"

#include <QObject>
#include <memory>

namespace corvane::desktop {

class FailurePresenter;
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
        std::string sConfigFolder;
        bool bKeeps = true; // false: nothing that was kept is used, and nothing is kept
    };

    // Before the library is initialised.
    explicit PersonalDesktop(Parts oParts);
    ~PersonalDesktop() override;

    void Restore();        // after the start, before the window is shown
    void RestoreWindows(); // once it is shown

    PaletteDialog* ShowPalette();
    void ShowShortcuts();
    void ShowCustomize();

    [[nodiscard]] PersonalBars& Bars() { return m_oBars; }
    [[nodiscard]] Session& Kept() { return m_oSession; }

private:
    [[nodiscard]] StateFile File(const std::string& sFolder, const char* sName) const;
    [[nodiscard]] Session::Parts SessionParts() const;
    PaletteDialog* Pick(QWidget* pParent, bool bAll, const std::function<void(const Ref<Tool>&)>& fnChoose);

    Parts m_oParts;
    std::string m_sStateFolder;
    PersonalBars m_oBars;
    Session m_oSession;
};

} // namespace corvane::desktop
