#include "testing/Application.h"

#include <gtest/gtest.h>

using corvane::testing::Application;
using corvane::testing::Lines;

TEST(@Name@, AddsItemsAndOpensThem) {
    Application oApplication(APPLICATION_FOLDER);
    ASSERT_EQ(oApplication.Start(), 0) << oApplication.Text();
    const std::size_t iTab = oApplication.TabOf("@Name@");
    EXPECT_EQ(oApplication.Nodes(iTab), (Lines{"@Name@", " @Name@Item.Item 1"}));

    oApplication.Take("click @Name@.New@Name@");
    EXPECT_EQ(oApplication.Status(), "Added Item 2");
    EXPECT_EQ(oApplication.Nodes(iTab).size(), 3U);

    oApplication.Take("tab " + std::to_string(iTab) + "\nnode " + std::to_string(iTab) + " @Name@Item.Item 1\ndblclick");
    EXPECT_EQ(oApplication.OpenWindows(), (Lines{"@Name@Window"}));
    EXPECT_EQ(oApplication.TakeLog(), Lines());
}
