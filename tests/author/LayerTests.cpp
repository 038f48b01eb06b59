// An application of the author's layer: who hears what, and what its calls do.
#include "corvane/Testing.h"
#include "corvane/author/Host.h"
#include "corvane/base/Dictionary.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/services/IService.h"
#include "headless/Steps.h"

#include <gtest/gtest.h>
#include <sstream>

namespace corvane::testing {

namespace {

class Shop : public ::testing::Test {
protected:
    Shop() { EXPECT_EQ(m_application.Start(), 0) << m_application.Text(); }
    std::string Heard() const { return ToText(CallByName(FindService("Shop"), "Heard")); }

    Application m_application{CORVANE_SHOP};
};

} // namespace

TEST_F(Shop, HearsWhatItsClassesOverride) {
    EXPECT_EQ(Heard(), "Initialize Start");
    EXPECT_EQ(m_application.Nodes(0), (Lines{"Shelf", " Parcel.Book", " Parcel.Vase"}));
    EXPECT_NE(m_application.Text().find("<Book>"), std::string::npos);
    const struct {
        const char* steps;
        const char* heard;
        const char* status;
    } cases[] = {
        {"click File.Sell", "", "Sold"},
        {"click File.Sell", "", ""}, // it is disabled by now
        {"node 0 Parcel.Book", "Active:Parcel", ""},
        {"dblclick", "Initialize Initialize WeightActivate Opened:Parcel Book", ""},
        {"node 0 Parcel.Vase\nnode 0 Parcel.Book", "Active:Parcel PageSees PageSees Active:Parcel PageSees PageSees",
         ""},
        {"page Book 0", "LabelActivate", ""},
        {"click File.Open", "LabelDeactivate WeightActivate Opened:Parcel Book", ""}, // the same window
        {"command Book OK", "Command1 Save:Book Terminate Terminate Exit:Parcel Book:done", ""},
        {"node 0 Parcel.Vase\nclick File.Open", "Active:Parcel Initialize Initialize WeightActivate Opened:Parcel Vase",
         ""},
        {"command Vase OK", "Command1", ""}, // a page that isn't valid keeps it open
        {"close Vase", "Terminate Terminate Exit:Parcel Vase:cancelled", ""},
        {"click File.Peek\n  command SealWindow OK",
         "Initialize LabelActivate Command1 Save:Vase LabelDeactivate Terminate Exit:Peek:done PeekDone", ""},
        {"click File.Peek", "Initialize LabelActivate LabelDeactivate Terminate Exit:Peek:cancelled PeekCancelled", ""},
        {"rename Jar", "Renamed:Jar", ""},
    };
    for (const auto& [steps, heard, status] : cases) {
        SetStatus("");
        m_application.Take(steps);
        EXPECT_EQ(Heard(), heard) << steps;
        EXPECT_EQ(m_application.Status(), status) << steps;
    }
    EXPECT_EQ(m_application.TakeLog(), Lines());
    const Ref<Object> service = FindService("Shop"); // which the managers forget
    m_application.Host().Exit();
    EXPECT_EQ(ToText(CallByName(service, "Heard")), "ShopTerminate");
}

TEST_F(Shop, SaysWhatIsUnsaved) {
    (void)Heard();
    const Ref<IService> service = CorvaneMain::QueryService(FindService("Shop"));
    Double order = 0;
    const auto items = service->UnsavedItems(order);
    EXPECT_EQ(items->Keys(), (Lines{"The ledger"}));
    EXPECT_EQ(order, 7);
    service->Save(ToObject(items->Item("The ledger")));
    service->SaveComplete(false);
    EXPECT_EQ(Heard(), "SavedShopService Finished");
}

TEST_F(Shop, FailsForWhatIsNotThere) {
    EXPECT_EQ(m_application.Click("File.Buy"), FailureNumber::InvalidProcedureCall);
    EXPECT_EQ(FindService("Bakery"), nullptr);
    for (const auto& [act, number] : std::initializer_list<std::pair<void (*)(), Long>>{
             {[] { (void)ServiceNamed("Bakery"); }, 5},
             {[] { (void)ServiceNamed<Window>("Shop"); }, 13},
             {[] { CallByName(FindService("Shop"), "Bake"); }, 438},
             {[] { CallByName(FindService("Shop"), "Start", 1); }, 450}}) {
        try {
            act();
            ADD_FAILURE() << number;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Number, number) << failure.Description;
        }
    }
    EXPECT_TRUE(AppPath("Services/Shop.xml").ends_with("/shop/Services/Shop.xml")) << AppPath("Services/Shop.xml");
}

TEST_F(Shop, AsksByTheDialogsOfTheHost) {
    const struct {
        std::optional<std::string> (*ask)();
        const char* asked;
        const char* answer; // "" for Cancel
    } cases[] = {
        {[] { return AskOpenFile("Open", "Text|*.txt", "/data"); }, "Open", "/data/a.txt"},
        {[] { return AskOpenFile("Open"); }, "Open", ""},
        {[] { return AskSaveFile("Save", "Text|*.txt", "b.txt"); }, "Save", "c.txt"},
        {[] { return AskText("Name?", "Book", "New"); }, "Name?", "Vase"},
        {[] {
             return Ask("Sell it?", {"Sell", "Keep"}, "Shop");
         },
         "Sell it?", "Keep"},
        {[] { return Ask("Sell it?", {"Sell"}); }, "Sell it?", ""},
    };
    auto& dialogs = m_application.Host().Dialogs();
    for (const auto& [ask, asked, answer] : cases) {
        dialogs.AddAnswer(answer);
        const auto got = ask();
        EXPECT_EQ(dialogs.Asked().back(), asked);
        EXPECT_EQ(got.value_or(""), answer);
        EXPECT_EQ(got.has_value(), *answer != '\0');
    }
    ShowMessage("Sold out");
    EXPECT_EQ(m_application.Host().Recorded().messages.back().title, "Corvane");

    // What can't be asked, and an answer that isn't one.
    dialogs.AddAnswer("Maybe");
    EXPECT_THROW((void)Ask("Sell it?", {"Sell", "Keep"}), Failure);
    EXPECT_THROW((void)Ask("Sell it?", {}), Failure);
    EXPECT_THROW((void)Ask("Sell it?", {"Sell\nKeep"}), Failure);
}

TEST_F(Shop, IsAnsweredBySteps) {
    (void)Heard();
    const struct {
        const char* steps;
        const char* status;
        std::size_t noteCount; // about questions without an answer
    } cases[] = {
        {"click File.Name\n  answer Corner", "Named Corner", 0},
        {"answer Market\nclick File.Name", "Named Market", 0},
        {"click File.Name\n  answer ", "Not named", 0},
        {"click File.Name\nanswer Late", "Not named", 1}, // for the next question
        {"click File.Name", "Named Late", 0},
    };
    for (const auto& [steps, status, noteCount] : cases) {
        std::istringstream stream(steps);
        m_application.Host().Recorded().missed.clear();
        inspect::TakeAll(m_application.Host(), inspect::ReadSteps(stream, "steps.txt"));
        EXPECT_EQ(m_application.Status(), status) << steps;
        EXPECT_EQ(m_application.Host().Recorded().missed.size(), noteCount) << steps;
    }
}

} // namespace corvane::testing
