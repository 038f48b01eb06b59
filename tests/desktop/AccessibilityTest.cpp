#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/custom/CustomizeDialog.h"
#include "desktop/custom/ShortcutsDialog.h"
#include "desktop/log/LogPanel.h"
#include "desktop/palette/PaletteDialog.h"
#include "desktop/service/AppearancePage.h"
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

QString RoleText(QAccessible::Role role) {
    return QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(role));
}

// What an assistive program would have no word for: controls that take the keyboard or can be pressed, without a name.
void CollectNameless(QAccessibleInterface* interface, const QString& path, QStringList& nameless, int& controls) {
    if (!interface || !interface->isValid() || interface->state().invisible)
        return;
    const QString here = path + "/" + RoleText(interface->role());
    const QAccessible::Role role = interface->role();
    const bool isControl =
        interface->state().focusable || role == QAccessible::PushButton || role == QAccessible::MenuItem;
    const auto* widget = qobject_cast<QWidget*>(interface->object());
    // Scroll bars belong to the control around them, and a cell of a table may be empty.
    const bool isPart = role == QAccessible::Separator || role == QAccessible::ScrollBar || role == QAccessible::Cell ||
                        role == QAccessible::TreeItem;
    const bool counts = isControl && !isPart && !(widget && widget->isWindow());
    controls += counts;
    if (counts && interface->text(QAccessible::Name).isEmpty())
        nameless.append(here + " " + (widget ? widget->metaObject()->className() : ""));
    const int children = std::min(interface->childCount(), 60); // the rows of long lists are alike
    for (int i = 0; i < children; ++i)
        CollectNameless(interface->child(i), here, nameless, controls);
}

void ExpectNames(QWidget& widget) {
    widget.show();
    QApplication::processEvents();
    QStringList nameless;
    int controls = 0;
    CollectNameless(QAccessible::queryAccessibleInterface(&widget), widget.windowTitle(), nameless, controls);
    nameless.removeDuplicates();
    EXPECT_EQ(nameless.join('\n').toStdString(), "") << widget.windowTitle().toStdString();
    EXPECT_GT(controls, 3) << widget.windowTitle().toStdString();
}

TEST(Accessibility, EveryControlOfTheHostHasAName) {
    const AppFolder folder; // where the application keeps its things
    folder.Write("corvane/org.corvane.Studies/errors.log", "a line\n");
    Application application({CORVANE_STUDIES, false});
    ASSERT_TRUE(application.Start());
    PersonalDesktop& personal = application.Personal();
    ExpectNames(application.Window());
    PaletteDialog* palette = personal.ShowPalette();
    ExpectNames(*palette);
    palette->reject();
    ExpectNames(*personal.ShowInspector());
    ExpectNames(*personal.ShowLog());
    ShortcutsDialog shortcuts(personal.Bars(), *application.Bar(), nullptr);
    ExpectNames(shortcuts);
    CustomizeDialog customize(personal.Bars(), application.Bar(), {}, nullptr);
    ExpectNames(customize);
    ReportDialog report("text", {}, nullptr);
    ExpectNames(report);
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
    constexpr std::pair<Role, Role> pairs[] = {{QPalette::WindowText, QPalette::Window},
                                               {QPalette::Text, QPalette::Base},
                                               {QPalette::Text, QPalette::AlternateBase},
                                               {QPalette::ButtonText, QPalette::Button},
                                               {QPalette::ToolTipText, QPalette::ToolTipBase},
                                               {QPalette::HighlightedText, QPalette::Highlight},
                                               {QPalette::PlaceholderText, QPalette::Base},
                                               {QPalette::Link, QPalette::Base},
                                               {QPalette::Link, QPalette::Window}};
    for (const bool dark : {true, false})
        for (const auto& [text, ground] : pairs)
            EXPECT_GE(ContrastOf(ThemePalette(dark).color(text), ThemePalette(dark).color(ground)), readable)
                << (dark ? "dark " : "light ") << text << " on " << ground;
    for (const QPalette& palette :
         {ThemePalette(true), ThemePalette(false), ContrastPalette(true), ContrastPalette(false)})
        for (const auto& [text, groundRole] : pairs)
            for (const float alpha : {0.1F, 0.55F, 0.65F, 0.8F}) {
                const QColor ground = palette.color(groundRole);
                EXPECT_GE(ContrastOf(Paler(palette.color(text), ground, alpha), ground), readable)
                    << text << " on " << groundRole << " at " << alpha;
            }
}

// What has the focus can be told from what hasn't, and under contrast palettes every control from its surroundings.
TEST(Contrast, FocusAndEdgesOfControlsCanBeSeen) {
    const QPalette before = QApplication::palette();
    for (const QPalette& palette :
         {ContrastPalette(true), ContrastPalette(false), ThemePalette(true), ThemePalette(false)}) {
        QApplication::setPalette(palette);
        ContrastStyle::Follow();
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        auto* list = new QListWidget;
        list->addItems({"One", "Two"});
        const std::vector<QWidget*> controls{
            new QPushButton("Press"), new QLineEdit("Text"), new QCheckBox("Check"), new QComboBox, new QSpinBox, list};
        for (QWidget* control : controls)
            layout->addWidget(control);
        auto* elsewhere = new QLineEdit;
        layout->addWidget(elsewhere);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        window.setAttribute(Qt::WA_KeyboardFocusChange); // as once Tab has been pressed
        for (QWidget* control : controls) {
            elsewhere->setFocus(Qt::TabFocusReason);
            const QImage without = control->grab().toImage();
            control->setFocus(Qt::TabFocusReason);
            const QImage with = control->grab().toImage();
            double most = 1;
            for (int y = 0; y < with.height(); ++y)
                for (int x = 0; x < with.width(); ++x)
                    if (with.pixel(x, y) != without.pixel(x, y))
                        most = std::max(most, ContrastOf(with.pixelColor(x, y), without.pixelColor(x, y)));
            EXPECT_GT(most, 1.2) << control->metaObject()->className();
            const bool darkBox = palette == ThemePalette(true) && qobject_cast<QCheckBox*>(control);
            if (!IsOfContrast(palette) && !darkBox)
                continue;
            double edge = 1; // along a line through the middle, from the left
            for (int x = 0; x < 8; ++x)
                edge = std::max(
                    edge, ContrastOf(without.pixelColor(x, without.height() / 2), palette.color(QPalette::Window)));
            EXPECT_GE(edge, 3) << control->metaObject()->className();
        }
    }
    QApplication::setPalette(before);
}

TEST(Contrast, SelectionOfAListIsGreyWithoutTheFocus) {
    const QPalette before = QApplication::palette();
    for (const bool dark : {true, false}) {
        QApplication::setPalette(ThemePalette(dark));
        ContrastStyle::Follow();
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        auto* list = new QListWidget;
        auto* elsewhere = new QLineEdit;
        layout->addWidget(list);
        layout->addWidget(elsewhere);
        list->addItem("One");
        list->setCurrentRow(0);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        const auto behindText = [list] {
            const QImage image = list->viewport()->grab().toImage();
            return image.pixelColor(image.width() - 6, list->visualItemRect(list->item(0)).center().y());
        };
        list->setFocus();
        const QColor highlight = ThemePalette(dark).color(QPalette::Active, QPalette::Highlight);
        const QColor focused = behindText(); // the style lightens it a little below the pointer
        EXPECT_NEAR(focused.hsvHue(), highlight.hsvHue(), 8) << dark;
        EXPECT_GT(focused.hsvSaturation(), 120) << dark;
        elsewhere->setFocus();
        EXPECT_LT(behindText().hsvSaturation(), 40) << dark;
        EXPECT_NE(behindText(), ThemePalette(dark).color(QPalette::Active, QPalette::Base)) << dark;
    }
    QApplication::setPalette(before);
}

} // namespace
} // namespace corvane::desktop
