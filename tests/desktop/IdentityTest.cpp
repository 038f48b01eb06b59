#include "desktop/platform/Identity.h"

#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "tests/desktop/AppFolder.h"

#include <QGuiApplication>

namespace corvane::desktop {
namespace {

TEST(Identity, ComesFromAboutJsonAndOtherwiseFromTheFolder) {
    AppFolder folder;
    folder.Write("App/Images/birds.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1\" height=\"1\"/>");
    struct Case {
        const char* about; // nothing: there is no file
        std::string name;
        std::string settings;
        const char* problem; // part of it; empty: there is none
        bool icon = false;
    };
    for (const Case& testCase :
         {Case{nullptr, "App", "App", ""},
          Case{R"({"id": "org.example.Birds", "name": "Bird Counter", "icon": "birds.svg"})", "Bird Counter",
               "org.example.Birds", "", true},
          Case{R"({"name": " "})", "App", "App", ""}, Case{R"({"name": 7})", "App", "App", ""},
          Case{R"({"id": "../../Birds", "name": "Birds"})", "Birds", "Birds", "\"../../Birds\" isn't of the form"},
          Case{R"({"name": "Birds", "icon": "none.svg"})", "Birds", "Birds", "there is no picture"},
          Case{R"({"name": )", "App", "App", "at byte"}}) {
        if (testCase.about)
            folder.Write("App/about.json", testCase.about);
        const Identity identity = ReadIdentity(folder.App());
        const char* shown = testCase.about ? testCase.about : "without the file";
        EXPECT_EQ(identity.name, testCase.name) << shown;
        EXPECT_EQ(identity.Settings(), testCase.settings) << shown;
        EXPECT_EQ(identity.icon.isNull(), !testCase.icon) << shown;
        if (*testCase.problem)
            EXPECT_NE(identity.problem.find(testCase.problem), std::string::npos) << identity.problem;
        else
            EXPECT_EQ(identity.problem, "") << shown;
    }
}

TEST(Identity, NamesWindowDesktopFileAndFolders) {
    AppFolder folder;
    folder.Service("Shell", "Corvane.Framework", shellContent);
    folder.Write("App/about.json", R"({"id": "org.example.Birds", "name": "Bird Counter", "icon": "none.svg"})");
    ReadIdentity(folder.App()).Announce();
    EXPECT_EQ(QGuiApplication::desktopFileName(), "org.example.Birds");
    EXPECT_EQ(QGuiApplication::applicationName(), "Bird Counter");
    ApplicationOptions options;
    options.folder = folder.App();
    options.withDialogs = false;
    Application application(options);
    ASSERT_TRUE(application.Start());
    EXPECT_EQ(application.Window().windowTitle(), "Bird Counter");
    EXPECT_TRUE(folder.Read("corvane/org.example.Birds/errors.log").contains("there is no picture"));
    EXPECT_FALSE(QDir(folder.Path("corvane/App")).exists());
}

} // namespace
} // namespace corvane::desktop
