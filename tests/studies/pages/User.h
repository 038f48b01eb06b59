// Studies in the Qt host, and what a user does to its windows.
#pragma once

#include "Workspace.h"
#include "desktop/application/Application.h"
#include "tests/support/TemporaryFolder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace studies {

class User : public testing::Test {
protected:
    User() {
        for (const char* name : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "HOME"})
            ::setenv(name, m_folder.Path().c_str(), 1);
    }

    // Unsaved changes go.
    ~User() override;

    // With a study "Penguins" that holds the penguins, if asked.
    void Start(bool withStudy = true);
    // The tool of that name.
    void Choose(const std::string& tool) { EXPECT_TRUE(m_application->Choose(tool)) << tool; }
    // Chooses a tool that opens a modal window, and acts in it, once. The window has ended afterwards.
    void ChooseAndAct(const std::string& tool, const std::function<void(QWidget& window)>& act);
    // Clicks on an item of the explorer, or twice.
    void ClickItem(const std::string& text);
    void OpenItem(const std::string& text);
    static void Turn(int milliseconds = 0);

    // The control of that kind in the window of that caption whose label or accessible name begins so; a failure when
    // there is none.
    template <class T>
    T* In(const QString& window, const QString& name) {
        Turn();
        for (QWidget* widget : QApplication::allWidgets())
            if (auto* found = qobject_cast<T*>(widget);
                found && found->isVisible() && IsIn(*found, window) && IsNamed(*found, name))
                return found;
        ADD_FAILURE() << "there is no " << name.toStdString() << " in \"" << window.toStdString() << "\"\n" << Shown();
        return nullptr;
    }
    static QAbstractButton* Button(const QWidget& window, const QString& text);
    [[nodiscard]] std::string Shown() { return m_application->AsText(); }
    [[nodiscard]] std::string Status() const;
    std::string Write(const std::string& name, const std::string& text) const;
    static std::string Read(const std::string& path);
    // The store as it is on disk.
    [[nodiscard]] static Table DataOnDisk(const std::string& name);

    corvane::test::TemporaryFolder m_folder;
    std::unique_ptr<corvane::desktop::Application> m_application;

private:
    static bool IsIn(const QWidget& widget, const QString& window);
    static bool IsNamed(const QWidget& widget, const QString& name);
    [[nodiscard]] corvane::Ref<corvane::TreeView> Tree() const;
};

} // namespace studies
