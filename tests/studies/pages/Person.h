// Studies in the Qt host, and what a person does to its windows.
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

class Person : public testing::Test {
protected:
    Person() {
        for (const char* sName : {"XDG_STATE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "HOME"})
            ::setenv(sName, m_oFolder.Path().c_str(), 1);
    }

    // Unsaved changes go.
    ~Person() override;

    // With a study "Penguins" that holds the penguins, if asked.
    void Start(bool bWithStudy = true);
    // The tool of that name.
    void Choose(const std::string& sTool) { EXPECT_TRUE(m_pApplication->Choose(sTool)) << sTool; }
    // Chooses a tool that opens a modal window, and acts in it, once. The window has ended afterwards.
    void ChooseAndAct(const std::string& sTool, const std::function<void(QWidget& oWindow)>& fnAct);
    // Clicks on an item of the explorer, or twice.
    void ClickItem(const std::string& sText);
    void OpenItem(const std::string& sText);
    static void Turn(int nMilliseconds = 0);

    // The control of that kind in the window of that caption whose label or accessible name begins so; a failure when
    // there is none.
    template <class T>
    T* In(const QString& sWindow, const QString& sName) {
        Turn();
        for (QWidget* pWidget : QApplication::allWidgets())
            if (auto* pFound = qobject_cast<T*>(pWidget);
                pFound && pFound->isVisible() && IsIn(*pFound, sWindow) && IsNamed(*pFound, sName))
                return pFound;
        ADD_FAILURE() << "there is no " << sName.toStdString() << " in \"" << sWindow.toStdString() << "\"\n"
                      << Shown();
        return nullptr;
    }
    static QAbstractButton* Button(const QWidget& oWindow, const QString& sText);
    [[nodiscard]] std::string Shown() { return m_pApplication->AsText(); }
    [[nodiscard]] std::string Status() const;
    std::string Write(const std::string& sName, const std::string& sText) const;
    static std::string Read(const std::string& sPath);
    // The store as it is on disk.
    [[nodiscard]] static Table DataOnDisk(const std::string& sName);

    corvane::test::TemporaryFolder m_oFolder;
    std::unique_ptr<corvane::desktop::Application> m_pApplication;

private:
    static bool IsIn(const QWidget& oWidget, const QString& sWindow);
    static bool IsNamed(const QWidget& oWidget, const QString& sName);
    [[nodiscard]] corvane::Ref<corvane::TreeView> Tree() const;
};

} // namespace studies
