// An application of the author's layer: who hears what, and what its calls do.
#include "corvane/Testing.h"
#include "corvane/author/Host.h"
#include "corvane/base/Dictionary.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/services/IService.h"

#include <gtest/gtest.h>

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

namespace {

// A host's dialogs: what they were asked, and one answer.
class Dialogs final : public Automation<Dialogs> {
public:
    std::string Three(const std::string& sFirst, const std::string& sSecond, const std::string& sThird) {
        sAsked = sFirst + "/" + sSecond + "/" + sThird;
        return sAnswer;
    }
    std::string sAsked;
    std::string sAnswer;
    static constexpr auto Members =
        MemberTable(Method("ShowOpen", &Dialogs::Three), Method("ShowSave", &Dialogs::Three),
                    Method("AskText", &Dialogs::Three), Method("Ask", &Dialogs::Three));
};

} // namespace

TEST_F(Shop, AsksByTheDialogsOfTheHost) {
    try {
        (void)AskText("Name?");
        ADD_FAILURE();
    } catch (const Failure& oFailure) {
        EXPECT_EQ(oFailure.Number, FailureNumber::NoSuchMember);
        EXPECT_NE(oFailure.Description.find("\"AskText\""), std::string::npos) << oFailure.Description;
    }
    const auto oDialogs = New<Dialogs>();
    m_oApplication.Host().MainForm()->AddMember("CommonDialog", oDialogs);
    const struct {
        std::optional<std::string> (*fnAsk)();
        const char* sAsked;
        const char* sAnswer; // "" for Cancel
    } aCases[] = {
        {[] { return AskOpenFile("Open", "Text|*.txt", "/data"); }, "Open/Text|*.txt//data", "/data/a.txt"},
        {[] { return AskOpenFile("Open"); }, "Open//", ""},
        {[] { return AskSaveFile("Save", "Text|*.txt", "b.txt"); }, "Save/Text|*.txt/b.txt", "c.txt"},
        {[] { return AskText("Name?", "Book", "New"); }, "New/Name?/Book", "Vase"},
        {[] {
             return Ask("Sell it?", {"Sell", "Keep"}, "Shop");
         },
         "Shop/Sell it?/Sell\nKeep", "Keep"},
        {[] { return Ask("Sell it?", {"Sell"}); }, "Corvane/Sell it?/Sell", ""},
    };
    for (const auto& [fnAsk, sAsked, sAnswer] : aCases) {
        oDialogs->sAnswer = sAnswer;
        const auto oAnswer = fnAsk();
        EXPECT_EQ(oDialogs->sAsked, sAsked);
        EXPECT_EQ(oAnswer.value_or(""), sAnswer);
        EXPECT_EQ(oAnswer.has_value(), *sAnswer != '\0');
    }
    ShowMessage("Sold out");
    EXPECT_EQ(m_oApplication.Host().Recorded().messages.back().title, "Corvane");

    // What can't be asked, and an answer that isn't one.
    oDialogs->sAnswer = "Maybe";
    EXPECT_THROW((void)Ask("Sell it?", {"Sell", "Keep"}), Failure);
    EXPECT_THROW((void)Ask("Sell it?", {}), Failure);
    EXPECT_THROW((void)Ask("Sell it?", {"Sell\nKeep"}), Failure);
}

} // namespace corvane::testing
