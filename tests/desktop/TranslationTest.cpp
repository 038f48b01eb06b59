#include "desktop/Application.h"
#include "desktop/FailureDialog.h"
#include "desktop/translation/HostTranslation.h"
#include "tests/desktop/AppFolder.h"

#include <QAbstractButton>
#include <QProcess>

namespace corvane::desktop {
namespace {

// The program in a process of its own, with the preferences open.
QString PreferencesIn(const AppFolder& oFolder, const char* sLanguages) {
    QProcess oProgram;
    auto oEnvironment = QProcessEnvironment::systemEnvironment();
    oEnvironment.insert("LANG", "C.UTF-8");
    oEnvironment.remove("LC_ALL");
    oEnvironment.insert("LANGUAGE", sLanguages);
    oProgram.setProcessEnvironment(oEnvironment);
    oProgram.start(CORVANE_DESKTOP_PROGRAM,
                   {QString::fromStdString(oFolder.App()), "--choose", "Tools.Preferences", "--print", "--quit"});
    EXPECT_TRUE(oProgram.waitForFinished(60000));
    return QString::fromUtf8(oProgram.readAllStandardOutput());
}

TEST(Translation, HostSpeaksTheFirstLanguageThatItKnows) {
    AppFolder oFolder;
    oFolder.Service("Shell", "Corvane.Framework", sShellContent);
    struct Case {
        const char* sLanguages;
        const char* sApply;
        const char* sTheme;
    };
    for (const Case& oCase :
         {Case{"de_AT", "[Anwenden (off)]", "Design:"}, Case{"xx:fr:de", "[Appliquer (off)]", "Thème\u00a0:"},
          Case{"en_GB:de", "[Apply (off)]", "Theme:"}, Case{"xx", "[Apply (off)]", "Theme:"}}) {
        const QString sShown = PreferencesIn(oFolder, oCase.sLanguages);
        EXPECT_TRUE(sShown.contains(oCase.sApply) && sShown.contains(oCase.sTheme)) << oCase.sLanguages << "\n"
                                                                                    << sShown.toStdString();
    }
}

TEST(Translation, StandardButtonsAreTranslatedWithTheDialogAroundThem) {
    const auto fnShown = [](const QStringList& aLanguages) {
        const HostTranslation oTranslation(aLanguages);
        FailureDialog oDialog({"A", "b.xml, line 3", {}, {}}, QString(), nullptr);
        QStringList aTexts{oDialog.windowTitle()};
        for (const QAbstractButton* pButton : oDialog.findChildren<QAbstractButton*>())
            aTexts.append(QString(pButton->text()).remove('&'));
        aTexts.sort();
        return aTexts.join("|");
    };
    EXPECT_EQ(fnShown({"de"}), "Details|Etwas ist schiefgegangen|Kopieren|Schließen");
    EXPECT_EQ(fnShown({}), "Close|Copy|Details|Something went wrong"); // the translation has gone with its object
}

} // namespace
} // namespace corvane::desktop
