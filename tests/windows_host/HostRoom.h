// A running application with windows of every kind, whose pages are the test's own: they do what their ProgID says and
// write down what they hear.
#pragma once

#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/IWindowExitHandler.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/IQtPage.h"
#include "desktop/application/Application.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

class QLineEdit;
class QPushButton;

namespace corvane::desktop {

struct Heard {
    std::string sLine;
    int nPages = 0;   // alive
    int nWidgets = 0; // likewise
    void Add(const std::string& sWhat) { sLine += (sLine.empty() ? "" : " ") + sWhat; }
    std::string Take() { return std::exchange(sLine, {}); }
};

// A field that must not be empty and that counts as changed once its text isn't "old". Of the ProgID "T.NAME" or, for a
// page that fails in one of its events, "T.NAME.EVENT".
class TestPage final : public IPageAccess, public IQtPage {
public:
    TestPage(std::string sName, std::string sFailsIn, std::shared_ptr<Heard> pHeard);
    ~TestPage() override;
    Ref<IPage> Page() override { return m_oBase; }
    QWidget* NewWidget(QWidget* pParent) override;
    QWidget* FirstFocus() override;
    bool IsChanged() override { return m_sText != "old"; }

    void Enter(const std::string& sText); // as a person does
    [[nodiscard]] const Ref<PageBase>& Base() const { return m_oBase; }
    std::string sFailsIn;

private:
    void Hear(const std::string& sEvent);

    std::string m_sName;
    std::string m_sText = "old";
    std::shared_ptr<Heard> m_pHeard;
    QPointer<QLineEdit> m_pEdit;
    Ref<PageBase> m_oBase = New<PageBase>();
    std::vector<Subscription> m_aSubscriptions;
};

class ExitHandler final : public IWindowExitHandler {
public:
    explicit ExitHandler(std::shared_ptr<Heard> pHeard) : m_pHeard(std::move(pHeard)) {}
    void OnExit(const Ref<Window>&, bool bWasCancelled) override {
        m_pHeard->Add(bWasCancelled ? "exit(cancelled)" : "exit(done)");
    }

private:
    std::shared_ptr<Heard> m_pHeard;
};

class HostRoom : public ::testing::Test {
protected:
    HostRoom();
    ~HostRoom() override;

    // A Window element's attributes besides Name and State, and the ProgIDs of its pages without "T.", separated by
    // blanks; "!" behind one gives it the help topic 7, then "?" makes it optional, then "#" not resizable.
    void Define(const std::string& sName, const std::string& sAttributes, const std::string& sPages);
    void Start();
    void End(); // the application is gone, and everything with it that should be

    Ref<Window> Open(const std::string& sName, const std::string& sKey = {}, bool bHide = false, bool bAsync = false);
    [[nodiscard]] WindowManager& Manager() const;
    // The form of the window that was opened last or, for a number, of that one.
    [[nodiscard]] Ref<WindowForm> LastForm() const { return m_aForms.back(); }
    [[nodiscard]] TestPage& Page(const std::string& sName) const; // the latest of that name
    [[nodiscard]] QPushButton* Button(StandardCommandConstants eCommand) const;
    // "OK Cancel -Apply": the commands of the last form, a minus before those that are disabled.
    [[nodiscard]] std::string Commands() const;
    // Of the tab or the step, with what it is marked with.
    [[nodiscard]] std::string PagesText() const;
    void Turn(); // of the event loop, with what is to be deleted

    std::shared_ptr<Heard> m_pHeard = std::make_shared<Heard>();
    std::unique_ptr<Application> m_pApplication;
    std::vector<Ref<WindowForm>> m_aForms;
    std::map<std::string, TestPage*> m_mapPages;

private:
    QTemporaryDir m_oFolder;
    std::string m_sWindows;
    Subscription m_oLoaded;
};

} // namespace corvane::desktop
