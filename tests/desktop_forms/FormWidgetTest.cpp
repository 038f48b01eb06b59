#include "desktop/forms/FormTexts.h"
#include "desktop/forms/ProblemLine.h"
#include "desktop/forms/StepBox.h"
#include "tests/desktop_forms/FormOnScreen.h"

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>

using namespace corvane;
using namespace corvane::desktop;
using corvane::forms::Has;
using corvane::forms::Item;
using corvane::forms::Ui;

namespace {

const std::string twoChoices =
    "<item>" + Has("text", "string", "red") + "</item><item>" + Has("text", "string", "green") + "</item>";

std::string KindIs(const char* kind) {
    return "<property name=\"kind\" stdset=\"0\"><string>" + std::string(kind) + "</string></property>";
}

std::string Radios() {
    std::string buttons;
    for (const char* name : {"Low", "High"})
        buttons += "<item><widget class=\"QRadioButton\" name=\"" + std::string(name) + "\">" +
                   Has("text", "string", name) + "</widget></item>";
    return "<item row=\"30\" column=\"1\"><widget class=\"QGroupBox\" name=\"Grade\">" +
           Has("title", "string", "Grade") + "<layout class=\"QVBoxLayout\">" + buttons + "</layout></widget></item>";
}

std::string Box() {
    return "<item row=\"31\" column=\"1\"><widget class=\"QGroupBox\" name=\"Extra\">" +
           Has("title", "string", "Extra") + Has("checkable", "bool", "true") + Has("checked", "bool", "false") +
           "<layout class=\"QVBoxLayout\"><item><widget class=\"QLineEdit\" name=\"Inside\">" +
           Has("accessibleName", "string", "Inside") + "</widget></item></layout></widget></item>";
}

std::string EveryKind() {
    return Ui(Item(0, "QLineEdit", "Title", {}, "&amp;Title:") +
              Item(1, "QLineEdit", "Secret", Has("echoMode", "enum", "QLineEdit::Password"), "Secret:") +
              Item(2, "QPlainTextEdit", "Notes", {}, "Notes:") +
              Item(3, "QSpinBox", "Size", Has("value", "number", "3"), "Size:") +
              Item(4, "QDoubleSpinBox", "Mass", Has("suffix", "string", " kg"), "Mass:") +
              Item(5, "QLineEdit", "Count", KindIs("integer"), "Count:") +
              Item(6, "QCheckBox", "Active", Has("text", "string", "Active")) +
              Item(7, "QComboBox", "Color", twoChoices, "Color:") +
              Item(8, "QComboBox", "Free", Has("editable", "bool", "true") + twoChoices, "Free:") +
              Item(9, "QListWidget", "One", twoChoices, "One:") +
              Item(10, "QListWidget", "Several",
                   Has("selectionMode", "enum", "QAbstractItemView::MultiSelection") + twoChoices, "Several:") +
              Item(11, "QDateEdit", "Day", {}, "Day:") + Item(12, "QTimeEdit", "Hour", {}, "Hour:") +
              Item(13, "QDateTimeEdit", "Moment", {}, "Moment:") +
              Item(14, "QSlider", "Level", Has("orientation", "enum", "Qt::Horizontal"), "Level:") +
              Item(15, "QLineEdit", "File", KindIs("file"), "File:") +
              Item(16, "QLineEdit", "Shade", KindIs("color"), "Shade:") +
              Item(17, "QPushButton", "Pressed", Has("text", "string", "Sticky") + Has("checkable", "bool", "true")) +
              Radios() + Box());
}

void Type(QWidget& widget, const char* text) {
    QTest::keyClicks(&widget, text);
}

void Key(QWidget& widget, Qt::Key key) {
    QTest::keyClick(&widget, key);
}

void Type(QWidget& widget, const char* text, Qt::Key key, const char* behind) {
    Type(widget, text);
    Key(widget, key);
    Type(widget, behind);
}

// As it is read on screen, without the unit beside it.
std::string Shown(QWidget& widget) {
    QString text;
    if (const auto* line = qobject_cast<QLineEdit*>(&widget))
        text = line->text();
    else if (const auto* lines = qobject_cast<QPlainTextEdit*>(&widget))
        text = lines->toPlainText();
    else if (const auto* box = qobject_cast<QAbstractSpinBox*>(&widget))
        text = box->text();
    else if (const auto* combo = qobject_cast<QComboBox*>(&widget))
        text = combo->currentText();
    else if (const auto* button = qobject_cast<QAbstractButton*>(&widget))
        text = button->isChecked() ? "on" : "off";
    else if (const auto* group = qobject_cast<QGroupBox*>(&widget))
        text = group->isChecked() ? "on" : "off";
    else if (const auto* slider = qobject_cast<QSlider*>(&widget))
        text = QString::number(slider->value());
    else if (const auto* list = qobject_cast<QListWidget*>(&widget))
        for (int i = 0; i < list->count(); ++i)
            text += list->item(i)->checkState() == Qt::Checked || list->item(i)->isSelected() ? "x" : "-";
    return text.toStdString();
}

class FormWidgetTest : public ::testing::Test {
protected:
    FormWidgetTest() { QLocale::setDefault(QLocale(QLocale::German)); }
    ~FormWidgetTest() override { QLocale::setDefault(QLocale::c()); }
};

} // namespace

std::vector<std::string> FormOnScreen::Problems() const {
    std::vector<std::string> problems;
    for (const auto* line : widget->findChildren<ProblemLine*>())
        if (line->isVisible())
            problems.push_back(line->findChildren<QLabel*>().constLast()->text().toStdString());
    return problems;
}

// Typed by keys, then by the page: both sides have the same each time.
TEST_F(FormWidgetTest, EveryKindIsEnteredAndShown) {
    const struct {
        const char* field;
        std::function<void(QWidget&)> enter;
        const char* text; // in the model, then
        const char* byPage;
        const char* shown; // then
    } cases[] = {
        {"Title", [](QWidget& w) { Type(w, "Sleep"); }, "Sleep", "Wake", "Wake"},
        {"Secret", [](QWidget& w) { Type(w, "x y"); }, "x y", "z", "z"},
        {"Notes", [](QWidget& w) { Type(w, "a", Qt::Key_Return, "b"); }, "a\nb", "c\nd", "c\nd"},
        {"Size", [](QWidget& w) { Key(w, Qt::Key_Up); }, "4", "12", "12"},
        {"Mass",
         [](QWidget& w) {
             w.setFocus();
             w.findChild<QLineEdit*>()->selectAll();
             Type(w, "2,5");
         },
         "2.5", "0.25", "0,25"},
        {"Count", [](QWidget& w) { Type(w, "17"); }, "17", "", ""},
        {"Active", [](QWidget& w) { Key(w, Qt::Key_Space); }, "true", "false", "off"},
        {"Color", [](QWidget& w) { Key(w, Qt::Key_Down); }, "green", "red", "red"},
        {"Free", [](QWidget& w) { Type(w, "blue"); }, "blue", "green", "green"},
        {"One", [](QWidget& w) { Key(w, Qt::Key_Down); }, "green", "red", "x-"},
        {"Several", [](QWidget& w) { Type(w, "", Qt::Key_Down, " "); }, "green", "red\ngreen", "xx"},
        {"Day", [](QWidget& w) { Type(w, "24.12.2026"); }, "2026-12-24", "2027-01-01", "2027-01-01"},
        {"Hour", [](QWidget& w) { Type(w, "23:05", Qt::Key_Up, ""); }, "23:06", "01:00", "01:00"},
        {"Moment", [](QWidget& w) { Type(w, "2026-11-25 23:05"); }, "2026-11-25T23:05", "2026-11-26T00:00",
         "2026-11-26 00:00"},
        {"Level", [](QWidget& w) { Key(w, Qt::Key_Right); }, "1", "50", "50"},
        {"File", [](QWidget& w) { Type(w, "/data/a.csv"); }, "/data/a.csv", "b.csv", "b.csv"},
        {"Shade", [](QWidget& w) { Type(w, "#ff0000"); }, "#ff0000", "#00ff00", "#00ff00"},
        {"Pressed", [](QWidget& w) { Key(w, Qt::Key_Space); }, "true", "false", "off"},
        {"Extra", [](QWidget& w) { Key(w, Qt::Key_Space); }, "true", "false", "off"},
    };
    FormOnScreen form(EveryKind());
    for (const auto& test : cases) {
        SCOPED_TRACE(test.field);
        QWidget& widget = form.On(test.field);
        widget.setFocus();
        test.enter(widget);
        EXPECT_EQ(form.Text(test.field), test.text);
        ASSERT_FALSE(form.acts.empty());
        EXPECT_EQ(form.acts.back().what, FormAct::What::Set);
        EXPECT_EQ(form.acts.back().field, form.Field(test.field));
        EXPECT_EQ(form.acts.back().text, test.text);
        EXPECT_EQ(form.data.last.second, test.text);
        form.acts.clear();
        EXPECT_EQ(form.model->EnterText(form.Field(test.field), test.byPage), "");
        EXPECT_EQ(Shown(widget), test.shown);
        EXPECT_TRUE(form.acts.empty()) << "what the page does isn't the user's doing";
    }
    const auto radios = form.widget->findChildren<QRadioButton*>();
    radios.constLast()->click();
    EXPECT_EQ(form.Text("Grade"), "High");
    (void)form.model->EnterText(form.Field("Grade"), "");
    EXPECT_FALSE(radios.constFirst()->isChecked() || radios.constLast()->isChecked());
}

TEST_F(FormWidgetTest, WhatIsTypedStaysAsItIsUntilTheFieldIsLeft) {
    FormOnScreen form(Ui(Item(0, "QLineEdit", "Title", {}, "Title:") + Item(1, "QSpinBox", "Size", {}, "Size:")));
    form.data.left = [&](std::size_t field) { // a property that trims
        if (field == 0)
            form.model->ShowValue(0, "ab");
    };
    auto& title = form.On<QLineEdit>("Title");
    title.setFocus();
    Type(title, " b");
    Key(title, Qt::Key_Left);
    Type(title, "a");
    EXPECT_EQ(title.text(), " ab");
    EXPECT_EQ(title.cursorPosition(), 2);
    title.undo();
    EXPECT_EQ(form.Text("Title"), title.text().toStdString());
    auto& size = form.On<StepBox>("Size");
    size.setFocus();
    EXPECT_EQ(title.text(), "ab");
    size.Line().selectAll();
    Type(size, "05");
    EXPECT_EQ(form.Text("Size"), "5");
    EXPECT_EQ(size.text(), "05");
    title.setFocus();
    EXPECT_EQ(size.text(), "5");
}

TEST_F(FormWidgetTest, ProblemsAreSaidAtTheirFieldsOnceTheseAreLeft) {
    FormOnScreen form(Ui(Item(0, "QLineEdit", "Title", Has("required", "bool", "true"), "Title:") +
                         Item(1, "QSpinBox", "Size", Has("maximum", "number", "20"), "Size:")));
    form.data.refusals["taken"] = "There is such a title.";
    EXPECT_EQ(form.widget->findChildren<QLabel*>().constFirst()->text(), "Title *:");
    EXPECT_FALSE(form.model->IsValid());
    EXPECT_TRUE(form.Problems().empty());
    auto& title = form.On<QLineEdit>("Title");
    auto& size = form.On<StepBox>("Size");
    title.setFocus();
    size.setFocus();
    EXPECT_EQ(form.Problems(), std::vector<std::string>{"Please enter a value."});
    EXPECT_TRUE(title.accessibleDescription().contains("Please enter a value."));
    for (const char* text : {"abc", "99", "abc"}) { // the second time, too
        size.Line().selectAll();
        Type(size, text);
        title.setFocus();
        EXPECT_EQ(form.Problems().size(), 2U) << text;
        EXPECT_EQ(form.Problems()[1],
                  *text == '9' ? "Please enter a value from 0 to 20." : "Please enter a whole number.");
        EXPECT_EQ(size.text(), text) << "nothing that was typed is lost";
        size.setFocus();
    }
    size.Line().selectAll();
    Type(size, "20");
    title.setFocus();
    Type(title, "taken");
    EXPECT_EQ(form.Problems(), std::vector<std::string>{"There is such a title."});
    Type(title, "!");
    EXPECT_TRUE(form.Problems().empty());
    EXPECT_TRUE(form.model->IsValid());
}

TEST_F(FormWidgetTest, PartsAreDisabledAndHiddenAndTheirProblemsWithThem) {
    const std::string tabs =
        "<item row=\"5\" column=\"0\" colspan=\"2\"><widget class=\"QTabWidget\" name=\"Tabs\"><widget "
        "class=\"QWidget\" "
        "name=\"First\"><attribute name=\"title\"><string>First</string></attribute><layout class=\"QFormLayout\">" +
        Item(0, "QLineEdit", "Title", {}, "Title:") +
        "</layout></widget><widget class=\"QWidget\" name=\"Second\"><attribute "
        "name=\"title\"><string>Second</string></attribute><layout class=\"QFormLayout\">" +
        Item(0, "QLineEdit", "Code", Has("required", "bool", "true"), "Code:") + "</layout></widget></widget></item>";
    FormOnScreen form(Ui(tabs));
    auto& tab = *form.widget->findChild<QTabWidget*>();
    auto& code = form.On<QLineEdit>("Code");
    form.model->ShowProblems();
    EXPECT_FALSE(tab.tabIcon(1).isNull());
    EXPECT_TRUE(tab.tabIcon(0).isNull());
    EXPECT_EQ(form.widget->FirstFocus(), &code);
    form.model->AskFocus(form.Field("Code"));
    EXPECT_EQ(tab.currentIndex(), 1);
    EXPECT_TRUE(code.hasFocus());
    EXPECT_EQ(form.Problems().size(), 1U);
    const auto Show = [&](const char* name, bool visible) {
        for (const std::size_t node : form.model->NodesNamed(name))
            form.model->ShowNode(node, visible);
    };
    Show("Code", false);
    EXPECT_FALSE(code.isVisible());
    EXPECT_TRUE(form.Problems().empty());
    Show("Code", true);
    EXPECT_EQ(form.Problems().size(), 1U);
    form.model->EnableNode(form.model->NodesNamed("Second").front(), false);
    EXPECT_FALSE(tab.isTabEnabled(1));
    Show("First", false);
    EXPECT_FALSE(tab.isTabVisible(0));
}

TEST_F(FormWidgetTest, ManyRowsAreAskedForAsTheyComeIntoSight) {
    const std::string columns = Has("columns", "string", "Name, Mass:number:edit, Done:boolean:edit");
    FormOnScreen form(Ui(Item(0, "QTableWidget", "Samples", columns, "Samples:")));
    auto& table = form.On<QTableView>("Samples");
    const std::size_t field = form.Field("Samples");
    form.data.rows = 100000;
    form.model->ShowRows(field);
    QApplication::processEvents();
    EXPECT_EQ(table.model()->rowCount(), 100000);
    EXPECT_LT(form.data.cellsAsked, 10000);
    const int last = table.sizeHintForIndex(table.model()->index(99999, 0)).width();
    EXPECT_GT(last, table.sizeHintForIndex(table.model()->index(0, 0)).width());
    EXPECT_GE(table.columnWidth(0), last) << "columns have space for the last row";

    table.setFocus();
    table.selectRow(4);
    EXPECT_EQ(form.data.selected, 4U);
    EXPECT_EQ(form.acts.back().row, 4U);
    table.scrollToBottom();
    const int scrolled = table.verticalScrollBar()->value();
    form.model->ShowRows(field);
    EXPECT_EQ(table.verticalScrollBar()->value(), scrolled) << "rows that are as before stay where they are";
    EXPECT_EQ(table.selectionModel()->selectedRows().value(0).row(), 4);

    const auto Edit = [&](const char* text) {
        table.setCurrentIndex(table.model()->index(4, 1));
        table.edit(table.currentIndex());
        auto* editor = table.viewport()->findChild<QLineEdit*>();
        ASSERT_TRUE(editor);
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    Edit("2,5");
    EXPECT_EQ(form.data.cells[std::pair(std::size_t{4}, std::size_t{1})], Variant(2.5));
    EXPECT_EQ(table.model()->index(4, 1).data().toString(), "2,5");
    EXPECT_TRUE(form.model->IsChanged());
    form.acts.clear();
    Edit("much");
    EXPECT_TRUE(form.acts.empty());
    EXPECT_EQ(table.model()->index(4, 1).data().toString(), "2,5");
    EXPECT_FALSE(table.model()->flags(table.model()->index(4, 0)) & Qt::ItemIsEditable);
    table.model()->setData(table.model()->index(4, 2), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(form.acts.back().text, "true");

    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "4.0\t2,5\ttrue\n");
    form.data.rows = 3;
    form.model->ShowRows(field);
    EXPECT_EQ(table.model()->rowCount(), 3);
    EXPECT_TRUE(table.selectionModel()->selectedRows().isEmpty());
}

TEST_F(FormWidgetTest, ATableThatIsATextIsCopied) {
    FormOnScreen form(Ui(Item(0, "QTableWidget", "Statistics", Has("kind", "string", "text"), "Statistics:")));
    auto& table = form.On<QTableView>("Statistics");
    const auto Copied = [&] {
        QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    };
    std::vector<forms::ColumnDef> columns(2);
    columns[0].title.text = "Name";
    columns[1].title.text = "Mean";
    columns[1].hasFigures = true;
    form.data.rows = 2;
    form.model->ShowRows(0, columns);
    EXPECT_EQ(table.model()->headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).toInt() & Qt::AlignRight,
              Qt::AlignRight);
    EXPECT_EQ(Copied(), "Name\tMean\n0.0\t0.1\n1.0\t1.1\n");
    table.selectionModel()->select(table.model()->index(1, 1), QItemSelectionModel::Select);
    table.selectionModel()->select(table.model()->index(0, 1), QItemSelectionModel::Select);
    EXPECT_EQ(Copied(), "0.1\n1.1\n");
    columns.pop_back();
    form.model->ShowRows(0, columns);
    EXPECT_EQ(Copied(), "Name\n0.0\n1.0\n");
    EXPECT_TRUE(form.acts.empty());
}

TEST_F(FormWidgetTest, ATreeFollowsTheDepthOfItsRows) {
    FormOnScreen form(Ui(Item(0, "QTreeWidget", "Items", Has("columns", "string", "Name"), "Items:")));
    auto& tree = form.On<QTreeView>("Items");
    form.data.rows = 7; // 0 (1 (2)), 3 (4 (5)), 6
    form.model->ShowRows(0);
    ASSERT_EQ(tree.model()->rowCount(), 3);
    const QModelIndex second = tree.model()->index(1, 0);
    const QModelIndex inside = tree.model()->index(0, 0, tree.model()->index(0, 0, second));
    EXPECT_EQ(inside.data().toString(), "5.0");
    EXPECT_EQ(inside.parent().parent(), second);
    tree.expandAll();
    tree.setCurrentIndex(inside);
    EXPECT_EQ(form.data.selected, 5U);
    form.model->ShowRows(0);
    EXPECT_TRUE(tree.isExpanded(second));
    EXPECT_EQ(form.model->SelectedRow(0), 5U);
}

TEST_F(FormWidgetTest, DefaultsAreRestoredOneByOneAndTogether) {
    FormOnScreen form(Ui(Item(0, "QSpinBox", "Size", Has("value", "number", "3"), "Size:") +
                         Item(1, "QCheckBox", "Active", Has("text", "string", "Active"))),
                      true);
    auto* all = form.widget->findChildren<QPushButton*>().constLast();
    const auto Resets = [&] {
        std::vector<QToolButton*> shown;
        for (auto* button : form.widget->findChildren<QToolButton*>())
            if (button->isVisible())
                shown.push_back(button);
        return shown;
    };
    EXPECT_TRUE(Resets().empty());
    EXPECT_FALSE(all->isEnabled());
    Key(form.On("Size"), Qt::Key_Up);
    form.On<QCheckBox>("Active").click();
    ASSERT_EQ(Resets().size(), 2U);
    Resets()[0]->click();
    EXPECT_EQ(form.Text("Size"), "3");
    EXPECT_EQ(Resets().size(), 1U);
    all->click();
    EXPECT_EQ(form.Text("Active"), "false");
    EXPECT_FALSE(all->isEnabled());
    EXPECT_EQ(form.acts.back().text, "false");
}

TEST_F(FormWidgetTest, LongChoicesAreSearchedAMinimumHasAWordAndFilesAreAskedFor) {
    std::string many;
    for (int i = 0; i < 25; ++i)
        many += "<item>" + Has("text", "string", "c" + std::to_string(i)) + "</item>";
    FormOnScreen form(Ui(Item(0, "QComboBox", "Many", many, "Many:") +
                         Item(1, "QSpinBox", "Bins", Has("specialValueText", "string", "Automatic"), "Bins:") +
                         Item(2, "QLineEdit", "Path", KindIs("file") + Has("filter", "string", ".csv"), "Path:")));
    QLineEdit& search = *form.On<QComboBox>("Many").lineEdit();
    for (const char* typed : {"c17", "zz"}) { // the second isn't there
        search.setFocus();
        search.selectAll();
        QTest::keyClicks(&search, typed);
        QTest::keyClick(&search, Qt::Key_Return);
        EXPECT_EQ(form.Text("Many") + search.text().toStdString(), "c17c17");
    }
    auto& bins = form.On<StepBox>("Bins");
    EXPECT_EQ(bins.text(), "Automatic");
    bins.stepBy(1);
    EXPECT_EQ(form.Text("Bins") + bins.text().toStdString(), "11");
    bins.stepBy(-1);
    EXPECT_EQ(form.Text("Bins") + bins.text().toStdString(), "0Automatic");
    QTest::keyClicks(&form.On<QLineEdit>("Path"), "/a");
    for (auto* button : form.widget->findChildren<QToolButton*>())
        if (button->accessibleName().contains("Path"))
            button->click();
    EXPECT_EQ(form.Text("Path"), "/a.csv");
}

TEST_F(FormWidgetTest, ReturnPressesTheButtonOfTheForm) {
    FormOnScreen form(
        Ui(Item(0, "QLineEdit", "Title", {}, "Title:") +
           Item(1, "QPushButton", "Find", Has("text", "string", "Find") + Has("default", "bool", "true"))));
    form.On("Title").setFocus();
    Key(form.On("Title"), Qt::Key_Return);
    EXPECT_EQ(form.data.presses, 1);
    form.model->EnableNode(form.model->NodesNamed("Find").front(), false);
    Key(form.On("Title"), Qt::Key_Return);
    EXPECT_EQ(form.data.presses, 1);
}

TEST(FormTexts, StepsStayInRangeAndInTheirUnit) {
    forms::FieldDef number;
    number.kind = forms::FieldKind::Number;
    number.minimum = 0;
    number.maximum = 1;
    number.step = 0.1;
    forms::FieldDef day;
    day.kind = forms::FieldKind::Date;
    forms::FieldDef moment;
    moment.kind = forms::FieldKind::DateTime;
    const struct {
        const forms::FieldDef& field;
        const char* text;
        int steps;
        int cursor;
        const char* stepped;
    } cases[] = {{number, "0.2", 1, 0, "0.3"},
                 {number, "0.95", 1, 0, "1"},
                 {number, "junk", 1, 0, "0"},
                 {day, "2024-02-28", 1, 0, "2024-02-29"},
                 {day, "9999-12-31", 1, 0, "9999-12-31"},
                 {moment, "2026-12-31T23:59", 1, 16, "2027-01-01T00:00"},
                 {moment, "2026-12-31T23:59", -1, 3, "2026-12-30T23:59"}};
    for (const auto& test : cases)
        EXPECT_EQ(Stepped(test.field, test.text, test.steps, test.cursor), test.stepped) << test.text;
}
