// What a check finds in the forms of pages.
#include "analysis/Explain.h"
#include "tests/analysis/CheckedFolder.h"

#include <gtest/gtest.h>

namespace corvane::testing {

namespace {

constexpr const char* definition = R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True"><Windows>
<Window Name="Plot" Type="Wizard" State="Normal" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>
<Preferences><Page PageProgID="Example.Figures" Caption="Figures" IsOptional="False" IsResizable="False"/></Preferences>
</Service>)";

std::string Has(const std::string& name, const std::string& type, const std::string& value) {
    return "<property name=\"" + name + "\"><" + type + ">" + value + "</" + type + "></property>";
}

std::string Widget(const std::string& className, const std::string& name, const std::string& content = {}) {
    return "<item><widget class=\"" + className + "\" name=\"" + name + "\">" + content + "</widget></item>\n";
}

std::string Labelled(const std::string& className, const std::string& name, const std::string& content = {}) {
    return Widget(className, name, Has("accessibleName", "string", name) + content);
}

std::string Ui(const std::string& items, const std::string& behind = {}) {
    return "<ui version=\"4.0\"><widget class=\"QWidget\" name=\"Page\"><layout class=\"QVBoxLayout\">\n" + items +
           "</layout></widget>" + behind + "</ui>";
}

std::string Checked(const std::string& form, const std::string& name = "ExampleSvc.PlotPage", bool plugins = false) {
    CheckedFolder folder;
    folder.Write("Services/Example.xml", definition).Write("Forms/" + name + ".ui", form);
    if (plugins)
        folder.AddPlugins();
    std::string text;
    for (const check::Finding& finding : folder.Check(plugins))
        if (finding.place.file.find(".ui") != std::string::npos)
            text += std::to_string(finding.place.at.line) + ":" + std::to_string(finding.place.at.column) + " " +
                    std::string(check::TextOf(finding.rule).name) + " " + finding.text + "\n";
    return text;
}

} // namespace

TEST(CheckForms, FindsWhatIsWrong) {
    const std::string row = "<item><layout class=\"QHBoxLayout\">";
    const struct {
        std::string form;
        const char* finding; // begins so; "" for none
    } cases[] = {
        {Ui(Labelled("QLineEdit", "A") + Widget("QPushButton", "B", Has("text", "string", "&amp;Go"))), ""},
        {"<ui", "1:4 form-unreadable"},
        {Ui(Labelled("QDial", "A", Has("value", "number", "1")), "<tabstops><tabstop>A</tabstop></tabstops>"),
         "2:7 form-unknown there is no widget \"QDial\""},
        {Ui(Labelled("QLineEdit", "A", Has("styleSheet", "string", "x"))),
         "2:103 form-unknown the property \"styleSheet\""},
        {Ui(Labelled("QLineEdit", "A") + Labelled("QLineEdit", "A")), "3:7 form-name there are two fields"},
        {Ui(Widget("QLineEdit", "A")), "2:7 form-label \"A\" has neither"},
        {Ui(Widget("QCheckBox", "A", Has("text", "string", "&amp;Go")) +
            Widget("QPushButton", "B", Has("text", "string", "A&amp;gain"))),
         "3:7 form-mnemonic \"Again\" and \"Go\" both have the mnemonic \"g\""},
        {Ui(Widget("QCheckBox", "A", Has("text", "string", "&amp;Near"))),
         "2:7 form-mnemonic \"Near\" has the mnemonic of the window's button \"Next\""},
        {Ui(Labelled("QLineEdit", "A") + Labelled("QLineEdit", "B"),
            "<tabstops><tabstop>B</tabstop><tabstop>A</tabstop></tabstops>"),
         "2:7 form-tab-order the tab order jumps back from \"B\" to \"A\""},
        {Ui(row + Labelled("QLineEdit", "A") + Labelled("QLineEdit", "B") + "</layout></item>",
            "<tabstops><tabstop>A</tabstop><tabstop>B</tabstop></tabstops>"),
         ""},
        {Ui(Labelled("QSpinBox", "A", Has("maximum", "number", "5") + Has("value", "number", "7"))),
         "2:7 form-default \"A\" begins with \"7\", which can't be accepted: please enter a value from 0 to 5"},
        {Ui(Labelled("QComboBox", "A",
                     "<item>" + Has("text", "string", "x") + "</item><item>" + Has("text", "string", "x") + "</item>")),
         "2:195 form-bad-value \"A\" has the choice \"x\" twice"},
        {Ui(Labelled("QComboBox", "A",
                     Has("currentIndex", "number", "1") + "<item>" + Has("text", "string", "x") + "</item>")),
         "2:103 form-bad-value the property \"currentIndex\""},
        {Ui(Labelled("QLineEdit", "A", Has("kind", "string", "date") + Has("pattern", "string", "x"))),
         "2:182 form-unknown the pattern of \"A\" has no effect"},
        {Ui(Labelled("QLineEdit", "A", Has("required", "bool", "true") + Has("readOnly", "bool", "true"))),
         "2:7 form-required"},
        {Ui(Labelled("QLineEdit", "A", Has("pattern", "string", "[a"))), "2:128 form-bad-value the pattern"},
        {Ui(Labelled("QSpinBox", "A", Has("minimum", "number", "7") + Has("maximum", "number", "5"))),
         "2:156 form-bad-value the property \"minimum\""},
        {Ui(Widget("QRadioButton", "A", Has("text", "string", "Go"))), "2:7 form-name the radio button \"A\""},
        {Ui(Labelled("QLineEdit", "Aim") + Widget("QLabel", "L", Has("buddy", "cstring", "Amm"))),
         "3:7 form-bad-value the label \"\" is the buddy of \"Amm\", which isn't in the form"},
    };
    for (const auto& [form, finding] : cases) {
        const std::string text = Checked(form);
        EXPECT_EQ(*finding ? text.substr(0, std::string(finding).size()) : text, finding) << form;
        EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 1) << text;
    }
    EXPECT_EQ(Checked(Ui(""), "ExampleSvc.PlotPag"),
              "0:0 form-unused no page has the PageProgID \"ExampleSvc.PlotPag\", so the form is never shown\n");
    // In tabs that are never seen at once a mnemonic may be twice.
    const std::string tab = "<widget class=\"QWidget\" name=\"T\"><layout class=\"QVBoxLayout\">";
    EXPECT_EQ(Checked(Ui("<item><widget class=\"QTabWidget\" name=\"Tabs\">" + tab +
                         Widget("QPushButton", "A", Has("text", "string", "&amp;Go")) + "</layout></widget>" + tab +
                         Widget("QPushButton", "B", Has("text", "string", "&amp;Go")) +
                         "</layout></widget></widget></item>")),
              "");
}

TEST(CheckForms, ComparesThemWithTheClass) {
    EXPECT_EQ(Checked(Ui(Labelled("QLineEdit", "Titel") + Labelled("QCheckBox", "Title") +
                         Labelled("QSpinBox", "Size") + Widget("QPushButton", "Draw", Has("text", "string", "Draw")) +
                         Widget("QPushButton", "Title2", Has("text", "string", "x"))),
                      "ExampleSvc.PlotPage", true),
              "2:7 form-member \"Titel\": the class \"ExampleSvc.PlotPage\" has no property of that name\n"
              "3:7 form-type \"Title\": the class \"ExampleSvc.PlotPage\" has the property in a type that can't hold "
              "every value of the field\n"
              "6:7 form-member \"Title2\": the class \"ExampleSvc.PlotPage\" has no member of that name\n");
    EXPECT_EQ(Checked(Ui(Labelled("QSpinBox", "Decimals") + Widget("QWidget", "Chart", Has("place", "bool", "true"))),
                      "Example.Figures", true),
              "3:7 form-place the place \"Chart\" stays empty, as there is no class \"Example.Figures\"\n");
}

// A class that no plug-in is named for can't be there, and so answers no button.
TEST(CheckForms, NeedAClassForButtons) {
    const std::string button = Ui(Widget("QPushButton", "Reset", Has("text", "string", "Reset")));
    EXPECT_EQ(Checked(button, "Example.Figures").substr(0, 16), "2:7 form-member ");
    EXPECT_EQ(Checked(button), "");
    // Nor does it fill, enable or show anything; an editable combo box needs no one.
    const std::string idle =
        Ui(Labelled("QComboBox", "A") + Labelled("QListWidget", "B") + Labelled("QTableWidget", "C") +
           Labelled("QLineEdit", "D", Has("enabled", "bool", "false")) +
           Labelled("QComboBox", "E", Has("editable", "bool", "true")));
    const std::string text = Checked(idle, "Example.Figures");
    for (const char* place : {"2:7 form-idle", "3:7 form-idle", "4:7 form-idle", "5:7 form-idle"})
        EXPECT_NE(text.find(place), std::string::npos) << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 5) << text;
    EXPECT_EQ(Checked(idle), "4:7 form-idle \"C\" has no columns, so its rows are shown empty\n");
    // The mnemonics of a window's own buttons; Apply is there unless it is said otherwise.
    CheckedFolder folder;
    folder
        .Write("Services/Example.xml", R"(<Service Name="Example" ProgID="ExampleSvc.E" Active="True"><Windows>
<Window Name="W" Type="Dialog" State="Normal" IsMDIChild="False"><Page PageProgID="ExampleSvc.P" Caption="P" HelpContextID="7"
IsOptional="False" IsResizable="True"/></Window></Windows></Service>)")
        .Write("Forms/ExampleSvc.P.ui", Ui(Widget("QPushButton", "A", Has("text", "string", "&amp;Add")) +
                                           Widget("QPushButton", "B", Has("text", "string", "&amp;Hide"))));
    const std::string found = folder.Text();
    EXPECT_NE(found.find("the window's button \"Apply\""), std::string::npos) << found;
    EXPECT_NE(found.find("the window's button \"Help\""), std::string::npos) << found;
}

TEST(CheckForms, AreExplained) {
    CheckedFolder folder;
    folder.Write("Services/Example.xml", definition)
        .Write("Forms/Example.Figures.ui", Ui(Labelled("QSpinBox", "Decimals", Has("maximum", "number", "6"))));
    const check::Explanation field = check::Explain(folder.Path(), "Forms/Example.Figures.decimals");
    for (const char* part :
         {"field \"Decimals\" of the form \"Example.Figures\"", "Example.Figures.ui:2:7", "integer",
          "the preference Decimals of the service Example, category Default", "at most 6", "of the preferences"})
        EXPECT_NE(field.text.find(part), std::string::npos) << field.text;
    EXPECT_EQ(check::Explain(folder.Path(), "Forms/Example.Figures.Decimal").nearest,
              std::vector<std::string>{"Forms/Example.Figures.Decimals"});
}

} // namespace corvane::testing
