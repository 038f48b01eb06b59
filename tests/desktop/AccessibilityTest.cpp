#include "desktop/application/Application.h"
#include "desktop/custom/CustomizeDialog.h"
#include "desktop/custom/ShortcutsDialog.h"
#include "desktop/log/LogDialog.h"
#include "desktop/palette/PaletteDialog.h"
#include "desktop/style/Contrast.h"
#include "desktop/style/ContrastStyle.h"
#include "tests/desktop/AppFolder.h"
#include "tests/desktop/ContrastPalette.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaEnum>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>

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

TEST(Contrast, IsThatOfTheGuidelines) {
    EXPECT_NEAR(ContrastOf(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(ContrastOf(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
    EXPECT_NEAR(ContrastOf(QColor(0, 0, 0, 0), Qt::white), 1, 0.01);
    EXPECT_TRUE(IsOfContrast(ContrastPalette(true)) && IsOfContrast(ContrastPalette(false)));
    EXPECT_FALSE(IsOfContrast(ThemePalette(true)) || IsOfContrast(ThemePalette(false)));
}

TEST(Contrast, EveryTextOfTheHostsOwnThemesCanBeRead) {
    using Role = QPalette::ColorRole;
    constexpr std::pair<Role, Role> aPairs[] = {{QPalette::WindowText, QPalette::Window},
                                                {QPalette::Text, QPalette::Base},
                                                {QPalette::Text, QPalette::AlternateBase},
                                                {QPalette::ButtonText, QPalette::Button},
                                                {QPalette::ToolTipText, QPalette::ToolTipBase},
                                                {QPalette::HighlightedText, QPalette::Highlight},
                                                {QPalette::PlaceholderText, QPalette::Base},
                                                {QPalette::Link, QPalette::Base},
                                                {QPalette::Link, QPalette::Window}};
    for (const bool bDark : {true, false})
        for (const auto& [eText, eGround] : aPairs)
            EXPECT_GE(ContrastOf(ThemePalette(bDark).color(eText), ThemePalette(bDark).color(eGround)), dReadable)
                << (bDark ? "dark " : "light ") << eText << " on " << eGround;
    for (const QPalette& oPalette :
         {ThemePalette(true), ThemePalette(false), ContrastPalette(true), ContrastPalette(false)})
        for (const auto& [eText, eGround] : aPairs)
            for (const float fAlpha : {0.1F, 0.55F, 0.65F, 0.8F}) {
                const QColor oGround = oPalette.color(eGround);
                EXPECT_GE(ContrastOf(Paler(oPalette.color(eText), oGround, fAlpha), oGround), dReadable)
                    << eText << " on " << eGround << " at " << fAlpha;
            }
}

// What has the focus can be told from what hasn't, and under contrast palettes every control from its surroundings.
TEST(Contrast, FocusAndEdgesOfControlsCanBeSeen) {
    const QPalette oBefore = QApplication::palette();
    for (const QPalette& oPalette :
         {ContrastPalette(true), ContrastPalette(false), ThemePalette(true), ThemePalette(false)}) {
        QApplication::setPalette(oPalette);
        ContrastStyle::Follow();
        QWidget oWindow;
        auto* pLayout = new QVBoxLayout(&oWindow);
        auto* pList = new QListWidget;
        pList->addItems({"One", "Two"});
        const std::vector<QWidget*> aControls{new QPushButton("Press"),
                                              new QLineEdit("Text"),
                                              new QCheckBox("Check"),
                                              new QComboBox,
                                              new QSpinBox,
                                              pList};
        for (QWidget* pControl : aControls)
            pLayout->addWidget(pControl);
        auto* pElsewhere = new QLineEdit;
        pLayout->addWidget(pElsewhere);
        oWindow.show();
        oWindow.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&oWindow));
        oWindow.setAttribute(Qt::WA_KeyboardFocusChange); // as once Tab has been pressed
        for (QWidget* pControl : aControls) {
            pElsewhere->setFocus(Qt::TabFocusReason);
            const QImage oWithout = pControl->grab().toImage();
            pControl->setFocus(Qt::TabFocusReason);
            const QImage oWith = pControl->grab().toImage();
            double dMost = 1;
            for (int y = 0; y < oWith.height(); ++y)
                for (int x = 0; x < oWith.width(); ++x)
                    if (oWith.pixel(x, y) != oWithout.pixel(x, y))
                        dMost = std::max(dMost, ContrastOf(oWith.pixelColor(x, y), oWithout.pixelColor(x, y)));
            EXPECT_GT(dMost, 1.2) << pControl->metaObject()->className();
            const bool bDarkBox = oPalette == ThemePalette(true) && qobject_cast<QCheckBox*>(pControl);
            if (!IsOfContrast(oPalette) && !bDarkBox)
                continue;
            double dEdge = 1; // along a line through the middle, from the left
            for (int x = 0; x < 8; ++x)
                dEdge = std::max(
                    dEdge, ContrastOf(oWithout.pixelColor(x, oWithout.height() / 2), oPalette.color(QPalette::Window)));
            EXPECT_GE(dEdge, 3) << pControl->metaObject()->className();
        }
    }
    QApplication::setPalette(oBefore);
    ContrastStyle::Follow();
    EXPECT_EQ(dynamic_cast<ContrastStyle*>(QApplication::style()), nullptr);
}

} // namespace
} // namespace corvane::desktop
