// What is inside a window's frame: the places of its pages, as tabs, as steps or as a list, and the row of
// commands.
#pragma once

#include "desktop/windows/CommandRow.h"
#include "desktop/windows/PageMark.h"

#include <QWidget>
#include <optional>
#include <vector>

class QBoxLayout;
class QKeyEvent;
class QLabel;
class QStackedWidget;

namespace corvane::desktop {

class PageList;
class PagePlace;
class PageTabs;
class WizardSteps;

struct BodyOptions {
    WindowTypeConstants type = WindowTypeConstants::cvWindow;
    bool isChild = false; // among the main window's windows: the pages go to its edges
    bool withApply = false;
    bool withHelp = false;
    bool withCommands = true;
    bool withPageList = false; // pages in a list that can be searched, where there would be tabs
};
struct PageRoom {
    PageMark mark;
    QSize size;
    bool isResizable = true;
};

class WindowBody final : public QWidget {
    Q_OBJECT
public:
    WindowBody(const BodyOptions& options, const std::vector<PageRoom>& rooms, QWidget* parent = nullptr);

    [[nodiscard]] int PageCount() const { return static_cast<int>(m_places.size()); }
    [[nodiscard]] PagePlace& Place(int page) const { return *m_places[static_cast<std::size_t>(page)]; }
    [[nodiscard]] CommandRow& Commands() { return *m_commands; }
    [[nodiscard]] bool AreCommandsShown() const;
    // How much higher that makes the body, in pixels.
    int ShowCommands();
    // From now on HasEntries says whether a user has used a key or the mouse in a page.
    void WatchEntries();
    [[nodiscard]] bool HasEntries() const { return m_hasEntries; }
    // What of the body isn't page, in pixels.
    [[nodiscard]] QSize NonPageSize();
    [[nodiscard]] int CurrentPage() const { return m_current; }
    void ShowPage(int page);
    void MarkPage(int page, const PageMark& mark);
    // What Return chooses in a field: the command, unless the page in front has a default button of its own.
    void SetDefault(StandardCommandConstants command);

Q_SIGNALS:
    // The user wants that page in front; ShowPage answers.
    void PageChosen(int page);
    // The user chose a command, by button or by key, which may be disabled.
    void CommandChosen(corvane::StandardCommandConstants command);
    // Every page's widget is needed, as a user searches the list of pages.
    void AllPagesWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; // of the program, once entries are watched
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] std::vector<QWidget*> TabStops() const;
    void SetUpTabs(const std::vector<PageRoom>& rooms, QBoxLayout* all);
    void SetUpSteps(const std::vector<PageRoom>& rooms, QBoxLayout* all);
    void SetUpList(const std::vector<PageRoom>& rooms, QBoxLayout* all);
    void UpdateSearchTexts();
    void SetUpSinglePage(const std::vector<PageRoom>& rooms, QBoxLayout* all);
    void SetUpCommands(QBoxLayout* all);
    PagePlace* NewPlace(const PageRoom& room);
    void MarkTab(int page, const PageMark& mark);
    [[nodiscard]] QPushButton* OwnDefault() const; // of the page in front
    void ShowHeading(const PageMark& mark);
    bool ChoosesByKey(const QKeyEvent& event);
    bool Chooses(std::optional<StandardCommandConstants> command);

    BodyOptions m_options;
    std::vector<PagePlace*> m_places;
    PageTabs* m_tabs = nullptr;        // with several pages that aren't steps
    QStackedWidget* m_stack = nullptr; // otherwise
    WizardSteps* m_steps = nullptr;    // of a wizard
    PageList* m_list = nullptr;
    QLabel* m_heading = nullptr; // of a wizard
    std::vector<PageMark> m_marks;
    QWidget* m_foot = nullptr;
    CommandRow* m_commands;
    QSize m_nonPageSize; // invalid until it is asked for, and when it may have changed
    int m_current = 0;
    bool m_hasEntries = false;
    bool m_follows = false; // it is the body itself that changes the tab
};

} // namespace corvane::desktop
