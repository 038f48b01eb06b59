// What stands inside a window's frame: the places of its pages, as tabs, as steps or as a list, and the row of
// commands.
#pragma once

#include "desktop/windows/CommandRow.h"
#include "desktop/windows/PageMark.h"

#include <QWidget>
#include <optional>
#include <vector>

class QBoxLayout;
class QLabel;
class QStackedWidget;

namespace corvane::desktop {

class PageList;
class PagePlace;
class PageTabs;
class WizardSteps;

struct BodyOptions {
    WindowTypeConstants eType = WindowTypeConstants::cvWindow;
    bool bIsChild = false; // among the main window's windows: the pages go to its edges
    bool bWithApply = false;
    bool bWithHelp = false;
    bool bWithCommands = true;
    bool bWithPageList = false; // pages in a list that can be searched, where there would be tabs
};
struct PageRoom {
    PageMark oMark;
    QSize oSize;
    bool bIsResizable = true;
};

class WindowBody final : public QWidget {
    Q_OBJECT
public:
    WindowBody(const BodyOptions& oOptions, const std::vector<PageRoom>& aRooms, QWidget* pParent = nullptr);

    [[nodiscard]] int PageCount() const { return static_cast<int>(m_aPlaces.size()); }
    [[nodiscard]] PagePlace& Place(int iPage) const { return *m_aPlaces[static_cast<std::size_t>(iPage)]; }
    [[nodiscard]] CommandRow& Commands() { return *m_pCommands; }
    [[nodiscard]] bool AreCommandsShown() const;
    // How much higher that makes the body, in pixels.
    int ShowCommands();
    // What of the body isn't page, in pixels.
    [[nodiscard]] QSize NonPageSize();
    [[nodiscard]] int CurrentPage() const { return m_iCurrent; }
    void ShowPage(int iPage);
    void MarkPage(int iPage, const PageMark& oMark);

Q_SIGNALS:
    // A person wants that page in front; ShowPage answers.
    void PageChosen(int iPage);
    // A person chose a command, by button or by key, which may be disabled.
    void CommandChosen(corvane::StandardCommandConstants eCommand);
    // Every page's widget is needed, as a person searches the list of pages.
    void AllPagesWanted();

protected:
    bool focusNextPrevChild(bool bNext) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    [[nodiscard]] std::vector<QWidget*> TabStops() const;
    void SetUpTabs(const std::vector<PageRoom>& aRooms, QBoxLayout* pAll);
    void SetUpSteps(const std::vector<PageRoom>& aRooms, QBoxLayout* pAll);
    void SetUpList(const std::vector<PageRoom>& aRooms, QBoxLayout* pAll);
    void TellTexts();
    void SetUpSinglePage(const std::vector<PageRoom>& aRooms, QBoxLayout* pAll);
    void SetUpCommands(QBoxLayout* pAll);
    PagePlace* NewPlace(const PageRoom& oRoom);
    void MarkTab(int iPage, const PageMark& oMark);
    void ShowHeading(const PageMark& oMark);
    bool ChoosesByKey(const class QKeyEvent& oEvent);
    bool Chooses(std::optional<StandardCommandConstants> oCommand);

    BodyOptions m_oOptions;
    std::vector<PagePlace*> m_aPlaces;
    PageTabs* m_pTabs = nullptr;        // with several pages that aren't steps
    QStackedWidget* m_pStack = nullptr; // otherwise
    WizardSteps* m_pSteps = nullptr;    // of a wizard
    PageList* m_pList = nullptr;
    QLabel* m_pHeading = nullptr; // of a wizard
    std::vector<PageMark> m_aMarks;
    QWidget* m_pFoot = nullptr;
    CommandRow* m_pCommands;
    QSize m_oNonPageSize; // invalid until it is asked for, and when it may have changed
    int m_iCurrent = 0;
    bool m_bFollows = false; // it is the body itself that changes the tab
};

} // namespace corvane::desktop
