#include "desktop/Application.h"
#include "desktop/custom/CustomizeDialog.h"
#include "desktop/custom/ShortcutsDialog.h"
#include "desktop/log/LogDialog.h"
#include "desktop/palette/PaletteDialog.h"
#include "tests/desktop/AppFolder.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QApplication>
#include <QMetaEnum>

namespace corvane::desktop {
namespace {

QString RoleText(QAccessible::Role eRole) {
    return QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(eRole));
}

// What an assistive program would have no word for: controls that take the keyboard or can be pressed, without a name.
void CollectNameless(QAccessibleInterface* pInterface, const QString& sPath, QStringList& aNameless, int& nControls) {
    if (!pInterface || !pInterface->isValid() || pInterface->state().invisible)
        return;
    const QString sHere = sPath + "/" + RoleText(pInterface->role());
    const QAccessible::Role eRole = pInterface->role();
    const bool bIsControl =
        pInterface->state().focusable || eRole == QAccessible::PushButton || eRole == QAccessible::MenuItem;
    const auto* pWidget = qobject_cast<QWidget*>(pInterface->object());
    // Scroll bars belong to the control around them, and a cell of a table may be empty.
    const bool bIsPart = eRole == QAccessible::Separator || eRole == QAccessible::ScrollBar ||
                         eRole == QAccessible::Cell || eRole == QAccessible::TreeItem;
    const bool bCounts = bIsControl && !bIsPart && !(pWidget && pWidget->isWindow());
    nControls += bCounts;
    if (bCounts && pInterface->text(QAccessible::Name).isEmpty())
        aNameless.append(sHere + " " + (pWidget ? pWidget->metaObject()->className() : ""));
    const int nChildren = std::min(pInterface->childCount(), 60); // the rows of long lists are alike
    for (int i = 0; i < nChildren; ++i)
        CollectNameless(pInterface->child(i), sHere, aNameless, nControls);
}

void ExpectNames(QWidget& oWidget) {
    oWidget.show();
    QApplication::processEvents();
    QStringList aNameless;
    int nControls = 0;
    CollectNameless(QAccessible::queryAccessibleInterface(&oWidget), oWidget.windowTitle(), aNameless, nControls);
    aNameless.removeDuplicates();
    EXPECT_EQ(aNameless.join('\n').toStdString(), "") << oWidget.windowTitle().toStdString();
    EXPECT_GT(nControls, 3) << oWidget.windowTitle().toStdString();
}

TEST(Accessibility, EveryControlOfTheHostHasAName) {
    const AppFolder oFolder; // where the application keeps its things
    oFolder.Write("corvane/studies/errors.log", "a line\n");
    Application oApplication({CORVANE_STUDIES, false});
    ASSERT_TRUE(oApplication.Start());
    PersonalDesktop& oPersonal = oApplication.Personal();
    ExpectNames(oApplication.Window());
    PaletteDialog* pPalette = oPersonal.ShowPalette();
    ExpectNames(*pPalette);
    pPalette->reject();
    ExpectNames(*oPersonal.ShowInspector());
    ExpectNames(*oPersonal.ShowLog());
    ShortcutsDialog oShortcuts(oPersonal.Bars(), *oApplication.Bar(), nullptr);
    ExpectNames(oShortcuts);
    CustomizeDialog oCustomize(oPersonal.Bars(), oApplication.Bar(), {}, nullptr);
    ExpectNames(oCustomize);
    ReportDialog oReport("text", {}, nullptr);
    ExpectNames(oReport);
}

} // namespace
} // namespace corvane::desktop
