// The main form on screen: menus, toolbars, the explorer's dock, the windows' area and the status bar.
#pragma once

#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "desktop/bars/BarRenderer.h"
#include "desktop/commands/WindowKeys.h"

#include <QMainWindow>

class QDockWidget;
class QMdiArea;
class QMdiSubWindow;

namespace corvane::desktop {

class ExplorerPanel;
class FailurePresenter;

class MainWindow final : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(Ref<MdiForm> frmMain, Ref<ActiveBar> oActiveBar, Ref<PanelForm> frmPanel, FailurePresenter& oFailures);
    ~MainWindow() override;

    [[nodiscard]] BarRenderer& Bars() { return *m_pBars; }
    [[nodiscard]] ExplorerPanel& Explorer() { return *m_pExplorer; }
    [[nodiscard]] QDockWidget& ExplorerDock() { return *m_pDock; }
    [[nodiscard]] QMdiArea& Area() { return *m_pArea; }
    // Whether the windows lie behind tabs instead of in frames of their own.
    [[nodiscard]] bool HasTabbedWindows() const;
    void SetTabbedWindows(bool bTabbed);
    // Whether the form has been asked to unload and didn't refuse, also when a service failed at its end.
    [[nodiscard]] bool HasEnded() const { return m_bHasEnded; }
    // Brings everything up to date now, as the end of a turn does.
    void Flush();

    QMenu* createPopupMenu() override;

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    bool event(QEvent* pEvent) override;
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void SetUpDock(const Ref<PanelForm>& frmPanel);
    void ShowDock();
    void SetUpWindowKeys();
    void Use(WindowKey::Use eUse);
    void GoToOtherPart();
    void FillTab(QMdiSubWindow* pWindow);
    void TellSizes();
    void m_frmMain_Changed(Form::Change eChange);
    void m_frmMain_QueryUnload(bool& bRefused);
    // The children that can be seen, in the order of their tabs, which is at first that in which they were opened.
    [[nodiscard]] std::vector<Ref<Form>> Children() const;
    void ActivateNeighbour(int nStep);
    [[nodiscard]] std::vector<OpenWindowEntry> OpenWindows() const;

    Ref<MdiForm> m_frmMain;
    Ref<ActiveBar> m_oActiveBar;
    FailurePresenter& m_oFailures;
    QMdiArea* m_pArea;
    BarRenderer* m_pBars;
    ExplorerPanel* m_pExplorer = nullptr;
    QDockWidget* m_pDock = nullptr;
    bool m_bHasEnded = false;
    Subscription m_oMainChanged;
    Subscription m_oMainQueryUnload;
    Subscription m_oMainArranged;
    Subscription m_oBarChanged;
};

} // namespace corvane::desktop
