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
    Shop() { EXPECT_EQ(m_oApplication.Start(), 0) << m_oApplication.Text(); }
    std::string Heard() const { return ToText(CallByName(FindService("Shop"), "Heard")); }

    Application m_oApplication{CORVANE_SHOP};
};

} // namespace

TEST_F(Shop, HearsWhatItsClassesOverride) {
    EXPECT_EQ(Heard(), "Initialize Start");
    EXPECT_EQ(m_oApplication.Nodes(0), (Lines{"Shelf", " Parcel.Book", " Parcel.Vase"}));
    EXPECT_NE(m_oApplication.Text().find("<Book>"), std::string::npos);
    const struct {
        const char* sSteps;
        const char* sHeard;
        const char* sStatus;
    } aCases[] = {
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
    for (const auto& [sSteps, sHeard, sStatus] : aCases) {
        SetStatus("");
        m_oApplication.Take(sSteps);
        EXPECT_EQ(Heard(), sHeard) << sSteps;
        EXPECT_EQ(m_oApplication.Status(), sStatus) << sSteps;
    }
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
    const Ref<Object> oService = FindService("Shop"); // which the managers forget
    m_oApplication.Host().Exit();
    EXPECT_EQ(ToText(CallByName(oService, "Heard")), "ShopTerminate");
}

TEST_F(Shop, SaysWhatIsUnsaved) {
    (void)Heard();
    const Ref<IService> oService = CorvaneMain::QueryService(FindService("Shop"));
    Double dblOrder = 0;
    const auto dctItems = oService->UnsavedItems(dblOrder);
    EXPECT_EQ(dctItems->Keys(), (Lines{"The ledger"}));
    EXPECT_EQ(dblOrder, 7);
    oService->Save(ToObject(dctItems->Item("The ledger")));
    oService->SaveComplete(false);
    EXPECT_EQ(Heard(), "SavedShopService Finished");
}

TEST_F(Shop, FailsForWhatIsNotThere) {
    EXPECT_EQ(m_oApplication.Click("File.Buy"), FailureNumber::InvalidProcedureCall);
    EXPECT_EQ(FindService("Bakery"), nullptr);
    for (const auto& [fnAct, lNumber] : std::initializer_list<std::pair<void (*)(), Long>>{
             {[] { (void)ServiceNamed("Bakery"); }, 5},
             {[] { (void)ServiceNamed<Window>("Shop"); }, 13},
             {[] { CallByName(FindService("Shop"), "Bake"); }, 438},
             {[] { CallByName(FindService("Shop"), "Start", 1); }, 450}}) {
        try {
            fnAct();
            ADD_FAILURE() << lNumber;
        } catch (const Failure& oFailure) {
            EXPECT_EQ(oFailure.Number, lNumber) << oFailure.Description;
        }
    }
    EXPECT_TRUE(AppPath("Services/Shop.xml").ends_with("/shop/Services/Shop.xml")) << AppPath("Services/Shop.xml");
}

TEST_F(Shop, AsksByTheDialogsOfTheHost) {
    const struct {
        std::optional<std::string> (*fnAsk)();
        const char* sAsked;
        const char* sAnswer; // "" for Cancel
    } aCases[] = {
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
    auto& oDialogs = m_oApplication.Host().Dialogs();
    for (const auto& [fnAsk, sAsked, sAnswer] : aCases) {
        oDialogs.AddAnswer(sAnswer);
        const auto oAnswer = fnAsk();
        EXPECT_EQ(oDialogs.Asked().back(), sAsked);
        EXPECT_EQ(oAnswer.value_or(""), sAnswer);
        EXPECT_EQ(oAnswer.has_value(), *sAnswer != '\0');
    }
    ShowMessage("Sold out");
    EXPECT_EQ(m_oApplication.Host().Recorded().messages.back().title, "Corvane");

    // What can't be asked, and an answer that isn't one.
    oDialogs.AddAnswer("Maybe");
    EXPECT_THROW((void)Ask("Sell it?", {"Sell", "Keep"}), Failure);
    EXPECT_THROW((void)Ask("Sell it?", {}), Failure);
    EXPECT_THROW((void)Ask("Sell it?", {"Sell\nKeep"}), Failure);
}

TEST_F(Shop, IsAnsweredBySteps) {
    (void)Heard();
    const struct {
        const char* sSteps;
        const char* sStatus;
        std::size_t nNotes; // about questions without an answer
    } aCases[] = {
        {"click File.Name\n  answer Corner", "Named Corner", 0},
        {"answer Market\nclick File.Name", "Named Market", 0},
        {"click File.Name\n  answer ", "Not named", 0},
        {"click File.Name\nanswer Late", "Not named", 1}, // for the next question
        {"click File.Name", "Named Late", 0},
    };
    for (const auto& [sSteps, sStatus, nNotes] : aCases) {
        std::istringstream oStream(sSteps);
        m_oApplication.Host().Recorded().missed.clear();
        inspect::TakeAll(m_oApplication.Host(), inspect::ReadSteps(oStream, "steps.txt"));
        EXPECT_EQ(m_oApplication.Status(), sStatus) << sSteps;
        EXPECT_EQ(m_oApplication.Host().Recorded().missed.size(), nNotes) << sSteps;
    }
}

} // namespace corvane::testing
