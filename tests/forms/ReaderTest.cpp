#include "forms/FormValue.h"
#include "tests/forms/Ui.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::forms;

namespace {

std::string ProblemsOf(const FormDef& form) {
    std::string text;
    for (const FormProblem& problem : form.problems)
        text += std::to_string(problem.at.line) + ":" + std::to_string(problem.at.column) + " " + problem.text + "\n";
    return text;
}

// Kind, label, value and choices of each field.
std::string FieldsOf(const FormDef& form) {
    std::string text;
    for (const FieldDef& field : form.fields) {
        text += field.name + " " + std::string(WordOf(field.kind)) + " " + PlainText(field.label.text) + "=" +
                WriteValue(field.value);
        for (const FormChoice& choice : field.choices)
            text += "|" + choice.value;
        text += "\n";
    }
    return text;
}

TEST(FormReader, ReadsEveryKindOfField) {
    const FormDef form = ReadForm(
        Ui(Item(0, "QLineEdit", "Title", Has("text", "string", "a &amp; b"), "&amp;Title:") +
           Item(1, "QLineEdit", "Path", Has("kind", "string", "file")) + Item(2, "QPlainTextEdit", "Notes") +
           Item(3, "QSpinBox", "Size", Has("minimum", "number", "5"), "Size") +
           Item(4, "QDoubleSpinBox", "Weight", Has("value", "double", "2.5") + Has("suffix", "string", " g")) +
           Item(5, "QCheckBox", "Active", Has("text", "string", "&amp;Active") + Has("checked", "bool", "true")) +
           Item(6, "QComboBox", "Sex",
                "<item>" + Has("text", "string", "female") + "</item><item>" + Has("text", "string", "male") +
                    "</item>" + Has("currentIndex", "number", "1")) +
           Item(7, "QDateEdit", "Day", Has("date", "date", "<year>2026</year><month>11</month><day>5</day>")) +
           Item(8, "QTimeEdit", "Hour", Has("time", "time", "<hour>7</hour><minute>30</minute><second>0</second>")) +
           Item(9, "QGroupBox", "Color",
                Has("title", "string", "Color") +
                    "<layout class=\"QVBoxLayout\"><item><widget class=\"QRadioButton\" name=\"r1\">" +
                    Has("text", "string", "&amp;Red") +
                    "</widget></item><item><widget class=\"QRadioButton\" name=\"r2\">" +
                    Has("text", "string", "Blue") + Has("checked", "bool", "true") + "</widget></item></layout>") +
           Item(10, "QPushButton", "Import", Has("text", "string", "&amp;Import")) +
           Item(11, "QTableWidget", "Samples",
                Has("columns", "stringlist", "<string>Name:edit</string><string>Unit:edit=g|kg</string>") + "<column>" +
                    Has("text", "string", "Name") + "</column><column>" + Has("text", "string", "Unit") +
                    "</column><column>" + Has("text", "string", "Body mass") + "</column>") +
           Item(12, "QLabel", "Mean", Has("kind", "string", "shown")) + Item(13, "QProgressBar", "Done")),
        "Forms/P.Page.ui");
    EXPECT_EQ(ProblemsOf(form), "");
    EXPECT_EQ(FieldsOf(form), "Title text Title:=a & b\nPath file =\nNotes multiline =\nSize integer Size=5\n"
                              "Weight number =2.5\nActive boolean Active=true\nSex choice =male|female|male\n"
                              "Day date =2026-11-05\nHour time =07:30\nColor choice Color=Blue|Red|Blue\n"
                              "Import button Import=\nSamples table =\nMean shown =\nDone progress =0\n");
    const auto& columns = form.Find("samples")->columns;
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_EQ(columns[2].name, "BodyMass");
    EXPECT_TRUE(columns[1].editable && columns[1].kind == FieldKind::Choice && columns[1].choices.size() == 2);
}

TEST(FormReader, NamesWhatItDoesNotKnowAndGoesOn) {
    const struct {
        std::string items;
        const char* problem; // begins so, with its place
    } cases[] = {
        {Item(0, "QLineEdti", "A"), "5:26 there is no widget \"QLineEdti\""},
        {Item(0, "QLineEdit", "A", Has("maxLenght", "number", "3")), "5:61 the property \"maxLenght\""},
        {Item(0, "QSpinBox", "A", Has("minimum", "number", "x")), "5:60 the property \"minimum\" of \"A\" has a value"},
        {Item(0, "QSpinBox", "A", Has("minimum", "number", "200")), "5:60 the property \"minimum\""},
        {Item(0, "QLineEdit", "A") + Item(1, "QLineEdit", "a"), "6:26 there are two fields \"a\""},
        {Item(0, "QLineEdit", "A", Has("pattern", "string", "(a")), "5:86 the pattern of \"A\" can't be used"},
        {Item(0, "QLineEdit", "A") + Item(0, "QLineEdit", "B"), "6:26 \"B\" is in the cell of \"A\""},
        {Item(0, "QLineEdit", ""), "5:26 a field has no name"},
        {Item(0, "QLineEdit", "A", Has("kind", "string", "nmber")), "5:61 the property \"kind\""},
        {"<item row=\"-1\" column=\"0\"><widget class=\"QLineEdit\" name=\"A\"/></item>", "5:1 the row of a cell"},
        {"<item><widget class=\"QRadioButton\" name=\"A\"/></item>", "5:7 the radio button \"A\" belongs to no group"},
        {"<item><widget class=\"QGroupBox\" name=\"G\"><widget class=\"QLineEdit\" name=\"A\"/></widget></item>",
         "5:42 \"A\" lies in no layout"},
        {"<item><layout class=\"QStackedLayout\"><item><widget class=\"QLineEdit\" name=\"A\"/></item></layout></item>",
         "5:7 there is no layout \"QStackedLayout\""},
    };
    for (const auto& example : cases) {
        const FormDef form = ReadForm(Ui(example.items), "a.ui");
        EXPECT_TRUE(form.readable) << example.items;
        EXPECT_EQ(ProblemsOf(form).substr(0, std::string(example.problem).size()), example.problem) << example.items;
    }
    EXPECT_EQ(ProblemsOf(ReadForm(Ui(Item(0, "QLineEdit", "A"), "<tabstops><tabstop>B</tabstop></tabstops>\n"
                                                                "<connections><connection/></connections>\n"),
                                  "a.ui")),
              "9:1 the element \"connections\" has no effect in a form\n8:11 the tab stop \"B\" is none of the form's "
              "fields\n");
}

TEST(FormReader, SaysWhyNoFormComesOfAFile) {
    std::string deep;
    for (int i = 0; i < 5000; ++i)
        deep += "<widget class=\"QWidget\">";
    const struct {
        std::string bytes;
        const char* problem;
    } cases[] = {
        {"", "1:1 the file is empty"},
        {std::string("\xFF\xFE<\0u\0", 6), "1:1 the file isn't UTF-8"},
        {"<ui>\n <widget class=\"QWidget\">\n</ui>", "3:6 Opening and ending tag mismatch"},
        {"<!DOCTYPE ui [<!ENTITY a \"a\">]><ui/>", "1:1 a form has no DOCTYPE"},
        {"<Service/>", "1:1 the root element is \"Service\""},
        {"<ui version=\"4.0\"/>", "1:1 the form has no widget"},
        {"<ui version=\"3.3\"/>", "1:1 the form is of version 3.3"},
        {"<ui version=\"4.0\">" + deep, "1:"},
    };
    for (const auto& example : cases) {
        const FormDef form = ReadForm(example.bytes, "a.ui");
        EXPECT_FALSE(form.readable) << example.problem;
        EXPECT_EQ(ProblemsOf(form).substr(0, std::string(example.problem).size()), example.problem);
    }
}

// A label in front of a field, by its buddy, or the title of a box around a single field.
TEST(FormReader, FindsLabelsAndTabOrder) {
    const FormDef form =
        ReadForm("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"Page\"><layout class=\"QGridLayout\">"
                 "<item row=\"0\" column=\"0\"><widget class=\"QLabel\" name=\"l1\">" +
                     Has("text", "string", "&amp;File") +
                     "</widget></item>"
                     "<item row=\"0\" column=\"1\"><layout class=\"QHBoxLayout\"><item><widget class=\"QLineEdit\" "
                     "name=\"Path\"/></item>"
                     "<item><widget class=\"QPushButton\" name=\"Browse\">" +
                     Has("text", "string", "Browse") +
                     "</widget></item></layout></item>"
                     "<item row=\"1\" column=\"0\" colspan=\"2\"><widget class=\"QGroupBox\" name=\"G\">" +
                     Has("title", "string", "Columns") +
                     "<layout class=\"QVBoxLayout\"><item><widget class=\"QListWidget\" name=\"Columns\">" +
                     Has("selectionMode", "enum", "QAbstractItemView::MultiSelection") +
                     "</widget></item></layout></widget></item>"
                     "<item row=\"2\" column=\"0\"><widget class=\"QLabel\" name=\"l2\">" +
                     Has("text", "string", "Far") + Has("buddy", "cstring", "Last") +
                     "</widget></item><item row=\"3\" column=\"0\"><widget class=\"QSpinBox\" name=\"Last\"/></item>"
                     "</layout></widget><tabstops><tabstop>Last</tabstop><tabstop>Path</tabstop></tabstops></ui>",
                 "a.ui");
    EXPECT_EQ(ProblemsOf(form), "");
    EXPECT_EQ(FieldsOf(form), "Path text File=\nBrowse button Browse=\nColumns choices Columns=\nLast integer Far=0\n");
    EXPECT_EQ(form.tabOrder, (std::vector<std::size_t>{3, 0, 1, 2}));
    EXPECT_EQ(form.tabStops, 2U);
}

TEST(FormReader, TranslatesWhatIsShownAndNoValues) {
    FormDef form =
        ReadForm(Ui(Item(0, "QComboBox", "Sex", "<item>" + Has("text", "string", "female") + "</item>", "Se&amp;x") +
                    Item(1, "QLineEdit", "Code",
                         "<property name=\"placeholderText\"><string notr=\"true\">AB</string></property>")),
                 "/app/Forms/P.Page.ui");
    ASSERT_TRUE(form.readable);
    std::string keys;
    for (const FormMessage& message : TextsOf(form))
        keys += message.key + "\n";
    EXPECT_EQ(keys, "Form P.Page/Sex/label\nForm P.Page/Sex/choice female\n");
    const std::string german = "weiblich";
    TranslateForm(form,
                  [&](const std::string&, const std::string& text) { return text == "female" ? &german : nullptr; });
    EXPECT_EQ(form.fields[0].choices[0].value, "female");
    EXPECT_EQ(form.fields[0].choices[0].label.text, "weiblich");
}

} // namespace
