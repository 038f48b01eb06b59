#include "corvane/Page.h"
#include "forms/FormPage.h"
#include "headless/FormPages.h"
#include "tests/forms/Ui.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::forms;

namespace {

class Sample final : public Automation<Sample> {
    std::string m_name;
    Double m_mass = 0;

public:
    Sample(std::string name, Double mass) : m_name(std::move(name)), m_mass(mass) {}
    [[nodiscard]] Double Mass() const { return m_mass; }
    void SetMass(Double mass) {
        if (mass > 100)
            Fail(FailureNumber::InvalidProcedureCall, "Too heavy");
        m_mass = mass;
    }
    static constexpr auto Members = Fields<&Sample::m_name>(Property("Mass", &Sample::Mass, &Sample::SetMass));
};

class TestPage final : public Page<TestPage> {
    std::string m_title = "Sleep";
    Long m_size = 3;
    Long m_color = 1;
    Double m_mass = 0.5;
    std::string m_code;
    Ref<Rows> m_samples = New<Rows>();
    Long m_samplesRow = 0;

public:
    std::string m_statistics = "Name\tMean\ta&b\nx\t1,234.5\t1\ny\t-\tmany\tleft over\nz\n";
    int titleChanges = 0;
    int saves = 0;

    TestPage() {
        m_samples->Add(New<Sample>("a", 1));
        m_samples->Add(New<Sample>("b", 2));
    }
    void SetLevel(Double level) {
        if (level > 10)
            Fail(FailureNumber::InvalidProcedureCall, "Ten is enough");
        m_mass = level;
    }
    [[nodiscard]] Double Level() const { return m_mass; }
    void OnTitleChanged() {
        ++titleChanges;
        m_size = static_cast<Long>(m_title.size());
    }
    void Import() { m_title = "imported"; }
    [[nodiscard]] bool SizeEnabled() const { return m_title != "closed"; }
    [[nodiscard]] std::string CodeProblem() const { return m_code == m_title ? "The code is the title." : ""; }
    [[nodiscard]] std::string ColorChoices() const { return "red\tRed & rosé\ngreen\nblue"; }
    [[nodiscard]] Long Fixed() const { return 7; }
    void Veto() { OwnForm()->SetProblem("Code", "No."); }
    void OnSave() override { ++saves; }

    static constexpr auto Members = Fields<&TestPage::m_title, &TestPage::m_size, &TestPage::m_color, &TestPage::m_code,
                                           &TestPage::m_samples, &TestPage::m_samplesRow, &TestPage::m_statistics,
                                           &TestPage::OnTitleChanged, &TestPage::Import, &TestPage::Veto>(
        Property("Level", &TestPage::Level, &TestPage::SetLevel), Property("SizeEnabled", &TestPage::SizeEnabled),
        Property("CodeProblem", &TestPage::CodeProblem), Property("ColorChoices", &TestPage::ColorChoices),
        Property("Fixed", &TestPage::Fixed));
};

const std::string items =
    Item(0, "QLineEdit", "Title", Has("required", "bool", "true")) + Item(1, "QLineEdit", "Size") +
    Item(2, "QComboBox", "Color") + Item(3, "QDoubleSpinBox", "Level", Has("maximum", "double", "50")) +
    Item(4, "QLineEdit", "Code", Has("pattern", "string", "[a-z]+") + Has("wanted", "string", "small letters")) +
    Item(5, "QSpinBox", "Fixed") + Item(6, "QPushButton", "Import") + Item(7, "QPushButton", "Veto") +
    Item(8, "QLineEdit", "Free") +
    Item(9, "QTableWidget", "Samples", Has("columns", "string", "name:edit, mass:number:edit")) +
    Item(10, "QTableWidget", "Statistics", Has("kind", "string", "text"));

class Binding : public ::testing::Test {
protected:
    Ref<TestPage> page = New<TestPage>();
    Ref<FormPage> form = New<FormPage>(Read(items), page, false);
    Ref<FormModel> model = form->Model();

    Ref<IPage> Inner() { return Ref<IPageAccess>(page)->Page(); }
    void SetUp() override { Inner()->Initialize(nullptr, nullptr, nullptr, nullptr); }
    void TearDown() override { Inner()->Terminate(nullptr); }
    std::size_t At(const std::string& name) { return *model->Find(name); }
    std::string Set(const std::string& name, const std::string& text) {
        std::string why = model->EnterText(At(name), text);
        if (why.empty())
            model->Leave(At(name));
        return why;
    }
    std::string Text(const std::string& name) { return model->Text(At(name)); }
    std::string ProblemAt(const std::string& name) { return model->ProblemOf(At(name)).Text(); }
};

TEST_F(Binding, ShowsAndWritesProperties) {
    EXPECT_EQ(Text("Title") + Text("Size") + Text("Color") + Text("Level") + Text("Fixed"), "Sleep3green0.57");
    EXPECT_TRUE(model->IsValid());
    EXPECT_FALSE(form->IsChanged());
    EXPECT_EQ(Set("Title", "Blood"), "");
    EXPECT_EQ(page->titleChanges, 1);
    EXPECT_EQ(Text("Size"), "5"); // that the page has changed itself
    EXPECT_EQ(Set("Color", "blue"), "");
    EXPECT_EQ(ToLong(page->Invoke("color", {})), 2);
    EXPECT_EQ(Set("Color", "Red & rosé"), ""); // a user chooses what is shown for it
    EXPECT_EQ(Text("Color"), "red");
    EXPECT_TRUE(form->IsChanged());
    EXPECT_EQ(model->Press(At("Import")), "");
    EXPECT_EQ(Text("Title"), "imported");
    EXPECT_EQ(Set("Free", "kept"), "");
    EXPECT_EQ(ToText(form->Value("free")), "kept");
    Inner()->Save();
    EXPECT_EQ(page->saves, 1);
    EXPECT_FALSE(form->IsChanged());
}

// What can't be accepted stays beside its reason, and the page doesn't get it.
TEST_F(Binding, KeepsWhatCanNotBeAccepted) {
    const struct {
        const char* field;
        const char* text;
        const char* problem;
    } cases[] = {
        {"Title", " ", "Please enter a value."},
        {"Size", "many", "This value can't be used here; a whole number is expected."},
        {"Size", "99999999999", "This value can't be used here; a whole number is expected."},
        {"Level", "60", "Please enter a value from 0 to 50."},
        {"Level", "1.234", "Please enter at most 2 decimal places."},
        {"Level", "11", "Ten is enough"},
        {"Code", "B", "Please enter: small letters."},
        {"Code", "Sleep", "Please enter: small letters."},
    };
    for (const auto& example : cases) {
        const std::string before = ToText(page->Invoke(example.field, {}));
        const std::string shown = Text(example.field);
        EXPECT_EQ(Set(example.field, example.text), "");
        EXPECT_EQ(ProblemAt(example.field), example.problem) << example.text;
        EXPECT_EQ(Text(example.field), example.text);
        EXPECT_EQ(ToText(page->Invoke(example.field, {})), before) << example.text;
        EXPECT_FALSE(model->IsValid() || Inner()->IsValid());
        EXPECT_EQ(model->FirstWrong(), At(example.field));
        form->Refresh({}); // takes nothing away from the user
        EXPECT_EQ(Text(example.field), example.text);
        model->Revert();
        EXPECT_EQ(Text(example.field), shown);
        EXPECT_TRUE(model->IsValid() && !model->IsChanged()) << example.text;
    }
    EXPECT_NE(Set("Level", "much"), ""); // can't be typed there
    EXPECT_NE(Set("Color", "purple"), "");
    EXPECT_NE(Set("Fixed", "8"), "");
}

TEST_F(Binding, FollowsWhatThePageSays) {
    EXPECT_EQ(Set("Title", "abc"), "");
    EXPECT_EQ(Set("Code", "abc"), "");
    EXPECT_EQ(ProblemAt("Code"), "The code is the title.");
    EXPECT_EQ(Set("Title", "abd"), "");
    EXPECT_EQ(ProblemAt("Code"), "");
    EXPECT_EQ(Set("Title", "closed"), "");
    EXPECT_NE(Set("Size", "9"), ""); // disabled
    form->SetVisible("Code", false);
    model->ShowProblem(At("Code"), {ProblemKind::Own, {"unseen"}});
    EXPECT_TRUE(model->IsValid()); // what is hidden holds nothing back
    EXPECT_THROW(form->SetEnabled("Cod", false), Failure);
}

// Not while one is at a field, but when another field makes it wrong, or when the page says so.
TEST_F(Binding, ShowsProblemsWhenTheUserIsDone) {
    const auto Shown = [this](const char* name) { return model->IsProblemShown(At(name)); };
    EXPECT_EQ(model->Type(At("Title"), "abc"), "");
    EXPECT_EQ(model->Type(At("Code"), "abc"), "");
    EXPECT_TRUE(!ProblemAt("Code").empty() && !Shown("Code"));
    EXPECT_EQ(model->Type(At("Code"), "abcd"), "");
    EXPECT_EQ(model->Type(At("Title"), "abcd"), "");
    EXPECT_TRUE(Shown("Code"));
    EXPECT_EQ(model->Type(At("Size"), "many"), "");
    EXPECT_FALSE(Shown("Size"));
    form->SetProblem("Size", "Not now.");
    EXPECT_TRUE(Shown("Size"));
}

TEST_F(Binding, HasNothingToSaveWhereEntriesTakeEffectAtOnce) {
    std::string text = Ui(items);
    text.insert(text.find("<layout"), Has("immediate", "bool", "true"));
    auto def = std::make_shared<FormDef>(ReadForm(text, "Forms/P.Page.ui"));
    EXPECT_TRUE(def->problems.empty());
    const auto own = New<TestPage>();
    const auto atOnce = New<FormPage>(def, own, false);
    Ref<IPageAccess>(own)->Page()->Initialize(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(atOnce->Model()->Type(At("Title"), "Blood"), "");
    EXPECT_EQ(atOnce->Model()->EnterCell(At("Samples"), 1, 1, "2.5"), "");
    EXPECT_EQ(ToText(own->Invoke("title", {})), "Blood");
    EXPECT_FALSE(atOnce->IsChanged() || atOnce->Model()->IsChanged(At("Title")));
    Ref<IPageAccess>(own)->Page()->Terminate(nullptr);
}

TEST_F(Binding, EditsTables) {
    const std::size_t table = At("Samples");
    EXPECT_EQ(model->RowCount(table), 2U);
    EXPECT_EQ(model->CellText(table, 1, 0), "b");
    EXPECT_EQ(model->EnterCell(table, 1, 1, "2.5"), "");
    EXPECT_EQ(model->CellText(table, 1, 1), "2.5");
    EXPECT_NE(model->EnterCell(table, 1, 1, "x"), "");
    EXPECT_NE(model->EnterCell(table, 2, 0, "x"), "");
    EXPECT_TRUE(form->IsChanged());
    EXPECT_EQ(model->SelectRow(table, 1), "");
    EXPECT_EQ(ToLong(page->Invoke("SamplesRow", {})), 2);
    EXPECT_EQ(inspect::ChooseRow(*model, "Samples", "none"), ""); // as a step that was recorded
    EXPECT_EQ(ToLong(page->Invoke("SamplesRow", {})), 0);
    model->Revert();
    EXPECT_EQ(model->CellText(table, 1, 1), "2");
    EXPECT_EQ(model->EnterCell(table, 1, 1, "2.5"), "");
    Inner()->Save();
    EXPECT_EQ(model->EnterCell(table, 0, 0, "c"), "");
    EXPECT_EQ(model->EnterCell(table, 0, 1, "200"), "");
    EXPECT_FALSE(model->IsValid());
    model->Revert();
    EXPECT_TRUE(model->IsValid());
    EXPECT_EQ(model->CellText(table, 0, 0) + model->CellText(table, 1, 1), "a2.5") << "what has been saved stays";
}

TEST_F(Binding, ShowsATableThatIsAText) {
    const std::size_t table = At("Statistics");
    const auto Shown = [&] {
        std::string text;
        for (const ColumnDef& column : model->Columns(table))
            text += column.title.text + (column.hasFigures ? "# " : " ");
        for (std::size_t row = 0; row < model->RowCount(table); ++row)
            for (std::size_t column = 0; column <= model->Columns(table).size(); ++column)
                text += "|" + model->CellText(table, row, column);
        return text;
    };
    EXPECT_EQ(Shown(), "Name Mean# a&b |x|1,234.5|1||y|-|many||z|||");
    EXPECT_NE(model->EnterCell(table, 0, 0, "c"), "");
    EXPECT_NE(model->SelectRow(table, 0), "") << "it is for reading and copying";
    page->m_statistics = "Median\n1\n";
    form->Refresh("Statistics");
    EXPECT_EQ(Shown(), "Median# |1|");
    page->m_statistics.clear();
    form->Refresh("Statistics");
    EXPECT_EQ(Shown(), "");
}

TEST_F(Binding, EndsWithThePage) {
    Inner()->Terminate(nullptr);
    EXPECT_NE(Set("Title", "late"), "");
    EXPECT_EQ(ToText(page->Invoke("title", {})), "Sleep");
    Inner()->Initialize(nullptr, nullptr, nullptr, nullptr); // for TearDown
}

} // namespace
