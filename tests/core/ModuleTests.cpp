// The small functions that everybody shares.

#include "corvane/core/CorvaneMain.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IPage.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>
#include <limits>

namespace corvane::testing {
namespace {

using Lines = std::vector<std::string>;
constexpr Long lLargest = std::numeric_limits<Long>::max();
constexpr Long lSmallest = std::numeric_limits<Long>::min();

struct Placing {
    Long lItem;
    Long lContainer;
    Long lStart;
    Long lLeft; // -1 with a number for a failure
    Long lTop;
    Long lLeftNumber = 0;
    Long lTopNumber = 0;
};

TEST(Centered, InTheMiddleAndOptically) {
    const RecordingPlatform oPlatform;
    const Placing aPlacings[] = {
        {0, 100, 0, 50, 36},
        {0, 10, 0, 5, 4},
        {5, 5, 7, 7, 7},
        {0, 1, 0, 0, 1},
        {0, 2, 0, 1, 1},
        {0, 3, -10, -9, -8},
        {3, 0, 100, 99, 99}, // neither is kept inside
        {100, 0, 0, -50, -35},
        {200, 100, 1000, 950, 965},
        {lLargest, -2, 0, -1, -1, 6, 6},
        {lSmallest, 0, 0, -1, -1, 6, 6},
        {0, 100, lLargest - 49, -1, lLargest - 13, 6, 0},
        {0, 100, lLargest - 35, -1, -1, 6, 6},
    };
    for (const auto& o : aPlacings) {
        SCOPED_TRACE(::testing::Message() << o.lItem << " in " << o.lContainer << " from " << o.lStart);
        Long lLeft = -1;
        Long lTop = -1;
        EXPECT_EQ(NumberOf([&] { lLeft = CorvaneMain::CenteredLeft(o.lItem, o.lContainer, o.lStart); }), o.lLeftNumber);
        EXPECT_EQ(NumberOf([&] { lTop = CorvaneMain::CenteredTop(o.lItem, o.lContainer, o.lStart); }), o.lTopNumber);
        EXPECT_EQ(lLeft, o.lLeft);
        EXPECT_EQ(lTop, o.lTop);
        Lines aLog;
        if (o.lLeftNumber)
            aLog.emplace_back("CorvaneMain.CenteredLeft 6");
        if (o.lTopNumber)
            aLog.emplace_back("CorvaneMain.CenteredTop 6");
        EXPECT_EQ(oPlatform.TakeLines(), aLog);
    }
}

class Stranger final : public virtual Object {
public:
    std::string_view TypeName() const override { return "Stranger"; }
};

class EmptyService final : public IServiceAccess {
public:
    Ref<IService> Service() override { return nullptr; }
};

TEST(Query, AStrangerIsNamedInTheLog) {
    const RecordingPlatform oPlatform;
    const auto oStranger = New<Stranger>();
    EXPECT_EQ(NumberOf([&] { (void)CorvaneMain::QueryService(oStranger); }), 13);
    EXPECT_EQ(NumberOf([&] { (void)CorvaneMain::QueryPage(oStranger); }), 13);
    EXPECT_EQ(NumberOf([&] { (void)CorvaneMain::QueryExplorerItem(oStranger); }), 13);
    const auto Line = [](const std::string& sWhat) {
        return "CorvaneMain.Query" + sWhat + " 13 (Class: \"Stranger\" has not implemented the I" + sWhat +
               "Access interface.)";
    };
    EXPECT_EQ(oPlatform.TakeLines(), (Lines{Line("Service"), Line("Page"), Line("ExplorerItem")}));
}

TEST(Query, NothingGivesNothing) {
    const RecordingPlatform oPlatform;
    EXPECT_FALSE(CorvaneMain::QueryService(nullptr));
    EXPECT_FALSE(CorvaneMain::QueryPage(nullptr));
    EXPECT_FALSE(CorvaneMain::QueryExplorerItem(nullptr));
    EXPECT_FALSE(CorvaneMain::QueryService(New<EmptyService>()));
    EXPECT_EQ(oPlatform.TakeLines(), Lines());
}

TEST(Query, AnActionsProviderIsKnownWithoutALog) {
    const RecordingPlatform oPlatform;
    EXPECT_TRUE(CorvaneMain::IsActionsProvider(New<ServiceBase>()));
    EXPECT_TRUE(CorvaneMain::IsActionsProvider(New<ExplorerItemBase>()));
    EXPECT_FALSE(CorvaneMain::IsActionsProvider(New<Stranger>()));
    EXPECT_FALSE(CorvaneMain::IsActionsProvider(nullptr));
    EXPECT_EQ(oPlatform.TakeLines(), Lines());
}

TEST(ExplorerItemBase, ItsTextsNeedADefinition) {
    const RecordingPlatform oPlatform;
    const auto oBase = New<ExplorerItemBase>();
    EXPECT_EQ(NumberOf([&] { (void)oBase->DisplayName(); }), 91);
    EXPECT_EQ(NumberOf([&] { (void)oBase->EditName(); }), 91);
    EXPECT_EQ(oPlatform.TakeLines().size(), 2U);
    oBase->Initialize(New<ExplorerItemDef>());
    oBase->NameSilently("a");
    Lines aNames;
    const auto oRenamed = oBase->OnAfterRename.Subscribe([&](const std::string& sName) { aNames.push_back(sName); });
    const auto oShown = oBase->OnDisplayName.Subscribe([](std::string& sText) { sText = "<" + sText + ">"; });
    EXPECT_EQ(oBase->DisplayName(), "<a>");
    EXPECT_EQ(oBase->EditName(), "a");
    oBase->SetName("b");
    EXPECT_EQ(aNames, Lines{"b"});
    EXPECT_EQ(oBase->DisplayName(), "<b>");
    // Initialized once more it has new children.
    oBase->Children()->Add(New<Stranger>());
    oBase->Initialize(New<ExplorerItemDef>());
    EXPECT_EQ(oBase->Children()->Count(), 0);
}

} // namespace
} // namespace corvane::testing
