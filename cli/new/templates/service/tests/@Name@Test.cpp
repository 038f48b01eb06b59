#include "corvane/Testing.h"

#include <gtest/gtest.h>

using corvane::testing::Application;
using corvane::testing::Lines;

TEST(@Name@, AddsItemsAndOpensThem) {
    Application application(APPLICATION_FOLDER);
    ASSERT_EQ(application.Start(), 0) << application.Text();
    const std::size_t tab = application.TabOf("@Name@");
    EXPECT_EQ(application.Nodes(tab), (Lines{"@Name@", " @Name@Item.Item 1"}));

    application.Take("click @Name@.New@Name@");
    EXPECT_EQ(application.Status(), "Added Item 2");
    EXPECT_EQ(application.Nodes(tab).size(), 3U);

    application.Take("tab " + std::to_string(tab) + "\nnode " + std::to_string(tab) + " @Name@Item.Item 1\ndblclick");
    EXPECT_EQ(application.OpenWindows(), (Lines{"@Name@Window"}));
    EXPECT_EQ(application.Page("@Name@Page").Value("Name"), "Item 1");
    EXPECT_EQ(application.TakeLog(), Lines());
}
