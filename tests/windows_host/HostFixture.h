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
#include "desktop/application/MainWindow.h"
#include "desktop/platform/HostParts.h"
#include "desktop/windows/WindowForm.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

class QLineEdit;
class QPushButton;

namespace corvane::desktop {

// The attributes of the definition of a dialog.
inline constexpr const char* dialogAttributes = "Type='Dialog' IsMDIChild='false'";
inline constexpr const char* wizard = "Type='Wizard' IsMDIChild='false'";

struct Heard {
    std::string line;
    int pages = 0;   // alive
    int widgets = 0; // likewise
    void Add(const std::string& what) { line += (line.empty() ? "" : " ") + what; }
    std::string Take() { return std::exchange(line, {}); }
};

// A field that must not be empty and that counts as changed once its text isn't "old". Of the ProgID "T.NAME" or, for a
// page that fails in one of its events, "T.NAME.EVENT". "T.Find" has a default button of its own beside the field.
class TestPage final : public IPageAccess, public IQtPage {
public:
    TestPage(std::string name, std::string failsInText, std::shared_ptr<Heard> heard);
    ~TestPage() override;
    Ref<IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) override;
    QWidget* FirstFocus() override;
    bool IsChanged() override { return m_text != "old"; }

    void Enter(const std::string& text); // as a user does
    [[nodiscard]] const Ref<PageBase>& Base() const { return m_base; }
    std::string failsIn;

private:
    void Hear(const std::string& event);

    std::string m_name;
    std::string m_text = "old";
    std::shared_ptr<Heard> m_heard;
    QPointer<QLineEdit> m_edit;
    Ref<PageBase> m_base = New<PageBase>();
    std::vector<Subscription> m_subscriptions;
};

class ExitHandler final : public IWindowExitHandler {
public:
    explicit ExitHandler(std::shared_ptr<Heard> heard) : m_heard(std::move(heard)) {}
    void OnExit(const Ref<Window>&, bool wasCancelled) override {
        m_heard->Add(wasCancelled ? "exit(cancelled)" : "exit(done)");
    }

private:
    std::shared_ptr<Heard> m_heard;
};

class HostFixture : public ::testing::Test {
protected:
    HostFixture();
    ~HostFixture() override;

    // A Window element's attributes besides Name and State, and the ProgIDs of its pages without "T.", separated by
    // blanks; "!" behind one gives it the help topic 7, then "?" makes it optional, then "#" not resizable.
    void Define(const std::string& name, const std::string& attributes, const std::string& pagesText);
    void Start();
    void End(); // the application is gone, and everything with it that should be

    Ref<Window> Open(const std::string& name, const std::string& key = {}, bool hide = false, bool async = false);
    [[nodiscard]] WindowManager& Manager() const;
    // The form of the window that was opened last or, for a number, of that one.
    [[nodiscard]] Ref<WindowForm> LastForm() const { return m_forms.back(); }
    [[nodiscard]] TestPage& Page(const std::string& name) const; // the latest of that name
    [[nodiscard]] QPushButton* Button(StandardCommandConstants command) const;
    // "OK Cancel -Apply": the commands of the last form, a minus before those that are disabled.
    [[nodiscard]] std::string Commands() const;
    // Of the tab or the step, with what it is marked with.
    [[nodiscard]] std::string PagesText() const;
    void Turn(); // of the event loop, with what is to be deleted

    std::shared_ptr<Heard> m_heard = std::make_shared<Heard>();
    std::unique_ptr<Application> m_application;
    std::vector<Ref<WindowForm>> m_forms;
    std::map<std::string, TestPage*> m_pages;

private:
    QTemporaryDir m_folder;
    std::string m_windows;
    Subscription m_loaded;
};

} // namespace corvane::desktop
