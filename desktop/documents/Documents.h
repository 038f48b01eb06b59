// The windows in the main window's area: free, or in tabs, whose groups a user splits, moves and takes out into windows
// of their own. It arranges frames and activates them; what a window is and whether it may close is its form's matter.
#pragma once

#include "corvane/platform/controls/MdiForm.h"
#include "desktop/documents/TabGroup.h"
#include "desktop/windows/WindowFrame.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <optional>
#include <vector>

class QMdiArea;
class QMdiSubWindow;
class QRubberBand;
class QSplitter;

namespace corvane::desktop {

class Documents final : public QObject, public FrameKeeper {
    Q_OBJECT
public:
    enum class Side { Left, Right, Above, Below };

    // A part of the area, which belongs to the main window.
    explicit Documents(QMdiArea& area);
    ~Documents() override;

    // Whether windows are in tabs. Dialogs among them stay free, on top.
    [[nodiscard]] bool IsTabbed() const { return m_isTabbed; }
    void SetTabbed(bool tabbed);

    // Every window's frame, hidden ones as well, in the order of the tabs, those in windows of their own last; in that
    // of opening while they are free.
    [[nodiscard]] std::vector<QWidget*> Frames() const;
    // The one that was active last of those that can be seen; null without one.
    [[nodiscard]] QWidget* Active() const;
    // Whether commands go to the active window, and not to another part of the main window.
    void SetMarked(bool marked);
    [[nodiscard]] bool IsOwn(const QWidget* window) const;

    // What a user can do to the active window now; nothing while windows are free.
    struct Acts {
        bool split = false;
        bool moveToNextGroup = false;
        bool goToNextGroup = false;
        bool moveToOwnWindow = false;
        bool dock = false;
        bool pin = false;
        bool closeOthers = false;
    };
    [[nodiscard]] Acts PossibleActs() const;
    // Each does nothing where it isn't possible.
    void Split(Side side);
    void MoveToNextGroup(); // a new one on the right where there is no other
    void GoToNextGroup();
    void MoveToOwnWindow();
    bool MoveToOwnWindow(QWidget* window); // false for one that isn't in a tab
    void Dock();
    void Pin(); // or no longer
    void CloseOthers();

    // All in one group, or a group for each window: the tabs' way to cascade and tile. Windows of their own stay.
    void Arrange(Arrangement how);
    void ResetLayout(); // one group with all windows

    // The groups, for windows that have a number: that of their place in the list.
    [[nodiscard]] QJsonObject State(const std::vector<QWidget*>& windows) const;
    // The same again. A window that isn't in it, and null in the list, is left as it is; what isn't such a state as
    // well.
    void Restore(const QJsonObject& state, const std::vector<QWidget*>& windows);

    // FrameKeeper.
    void FrameMade(WindowFrame& frame) override;
    void FrameShown(WindowFrame& frame) override;
    void FrameHidden(WindowFrame& frame) override;
    void FrameRaised(WindowFrame& frame) override;
    void FrameClosed(WindowFrame& frame) override;
    void FrameChanged(WindowFrame& frame) override;

Q_SIGNALS:
    // The groups, their order or their sizes are others.
    void Changed();
    // What can be done to the active window may be different from now on.
    void ActsChanged();
    // The changes of that window are to be saved.
    void SaveWanted(QWidget* window);
    // A window of its own is there, which has keys of its own.
    void OwnWindowMade(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct DropPlace {
        TabGroup* group = nullptr;
        int index = -1;           // among the tabs
        std::optional<Side> side; // instead of that
        bool isOutside = false;   // of the main window
        QRect shown;              // in the area's viewport
    };

    [[nodiscard]] static bool IsDocument(const WindowFrame& frame) { return frame.HasStateButtons(); }
    [[nodiscard]] WindowFrame* FrameOf(const QWidget* window) const;
    [[nodiscard]] WindowFrame* ActiveFrame() const;
    [[nodiscard]] TabGroup* GroupOf(const WindowFrame* frame) const;
    [[nodiscard]] std::vector<TabGroup*> Groups() const; // from left to right, from the top
    [[nodiscard]] TabGroup* ActiveGroup();               // a new one where there is none
    TabGroup* NewGroup();
    QSplitter* NewPart(Qt::Orientation orientation);
    void MakeRoot();
    TabGroup* NewGroupBeside(TabGroup& group, Side side);
    void RemoveIfEmpty(TabGroup* group);
    void Tidy(QSplitter* splitter);
    void Add(WindowFrame& frame, TabGroup& group, int index, bool isPinned);
    void TakeOut(WindowFrame& frame);
    void MoveTo(WindowFrame& frame, const DropPlace& place);
    void ToOwn(WindowFrame& frame, const QPoint& corner);
    void Activate(WindowFrame& frame);
    void LayOut();
    void ShowGroups();
    void SubWindowActivated(QMdiSubWindow* window);
    void ConnectBar(DocumentBar& bar, const std::function<WindowFrame*(int)>& frameAt);
    void ShowMenu(WindowFrame& frame, const QPoint& global);
    void Close(const std::vector<WindowFrame*>& frames);
    [[nodiscard]] std::vector<WindowFrame*> Others(const WindowFrame& frame,
                                                   bool onlyRight) const; // of the group, to be closed
    void Drag(WindowFrame& frame, const QPoint& global);
    void Drop(WindowFrame& frame, const QPoint& global);
    [[nodiscard]] DropPlace PlaceAt(const WindowFrame& frame, const QPoint& global) const;
    void SetAlone();
    [[nodiscard]] QJsonObject StateOf(const QWidget& cell, const std::map<const QWidget*, int>& numbers) const;
    void Build(const QJsonObject& state, QSplitter& parent, const std::vector<QWidget*>& windows);

    QMdiArea& m_area;
    QPointer<QSplitter> m_root;
    std::vector<WindowFrame*> m_frames;
    WindowFrame* m_active = nullptr; // activated last
    QPointer<QRubberBand> m_band;
    bool m_isTabbed = false;
    bool m_isMarked = true;
    bool m_laysOut = false;
};

} // namespace corvane::desktop
