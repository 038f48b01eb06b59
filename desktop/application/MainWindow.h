// The main form on screen: menus, toolbars, the explorer's dock, the windows' area and the status bar.
#pragma once

#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "desktop/bars/BarRenderer.h"
#include "desktop/commands/WindowKeys.h"

#include <QMainWindow>
#include <QPointer>

class QDockWidget;
class QMdiArea;

namespace corvane::items {
class Items;
}

namespace corvane::desktop {

class Documents;
class ExplorerPanel;
class FailurePresenter;
class WindowForm;
class WindowSwitcher;

class MainWindow final : public QMainWindow {
    Q_OBJECT
public:
    // The explorer shows the items' parts in what it does beyond the library.
    MainWindow(Ref<MdiForm> mainForm, Ref<ActiveBar> activeBar, Ref<PanelForm> panelForm, FailurePresenter& failures,
               std::shared_ptr<items::Items> items = {});
    ~MainWindow() override;

    [[nodiscard]] BarRenderer& Bars() { return *m_bars; }
    [[nodiscard]] ExplorerPanel& Explorer() { return *m_explorer; }
    [[nodiscard]] QDockWidget& ExplorerDock() { return *m_dock; }
    [[nodiscard]] QMdiArea& Area() { return *m_area; }
    [[nodiscard]] Documents& OpenDocuments() { return *m_documents; }
    void SetTabbedWindows(bool tabbed); // or free
    // The windows in one group of tabs, the explorer at the left, the toolbars at the top.
    void ResetLayout();
    // Files that users drop on the window, its documents or the explorer go to open while takes says so.
    void SetFiles(std::function<bool()> takes, std::function<void(const QStringList&)> open);
    // Of the active child, whose form asks and may refuse; nothing without one.
    void SaveActiveWindow();
    void CloseActiveWindow();
    // The active child's form when it can be seen.
    [[nodiscard]] Ref<WindowForm> ActiveForm() const;
    // Whether the form has been asked to unload and didn't refuse, also when a service failed at its end.
    [[nodiscard]] bool HasEnded() const { return m_hasEnded; }
    // Closes without asking the form again, whose end a failure has broken off.
    void EndNow();
    // Brings everything up to date now, as the end of a turn does.
    void Flush();

    QMenu* createPopupMenu() override;

Q_SIGNALS:
    void Ended();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void childEvent(QChildEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetUpDock(const Ref<PanelForm>& panelForm, std::shared_ptr<items::Items> items);
    void ShowDock();
    void Use(WindowKey::Use use);
    // Explorer, open views, and windows or the start page, in a ring.
    void GoToOtherPart(int step);
    void GoToWindow();
    void SwitchWindow(int step);
    void AddWindowKeys(QWidget& window);
    void ReportSizes();
    void m_frmMain_Changed(Form::Change change);
    void m_frmMain_QueryUnload(bool& refused);
    // The children that can be seen, in the order of their tabs, which is at first that in which they were opened.
    [[nodiscard]] std::vector<Ref<Form>> Children() const;
    void ActivateNeighbour(int step);
    [[nodiscard]] std::vector<OpenWindowEntry> OpenWindows() const;

    Ref<MdiForm> m_mainForm;
    Ref<ActiveBar> m_activeBar;
    FailurePresenter& m_failures;
    QMdiArea* m_area;
    Documents* m_documents;
    QPointer<WindowSwitcher> m_switcher;
    BarRenderer* m_bars;
    ExplorerPanel* m_explorer = nullptr;
    QDockWidget* m_dock = nullptr;
    bool m_hasEnded = false;
    std::function<bool()> m_takesFiles;
    std::function<void(const QStringList&)> m_openFiles;
    Subscription m_mainChanged;
    Subscription m_mainQueryUnload;
    Subscription m_mainArranged;
    Subscription m_barChanged;
};

} // namespace corvane::desktop
