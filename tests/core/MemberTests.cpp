#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "tests/support/Application.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane::testing {
namespace {

// From the root to what lies behind the managers, without a header of any of them.
TEST(MemberTables, LeadFromTheRootToEverything) {
    Application application;
    application.AddService("A", R"(<Windows><Window Name="Data" Type="Window" State="Normal" Caption="Data">
        <Page PageProgID="A.Page" Caption="Values" IsOptional="False" IsResizable="True"/></Window></Windows>)");
    ASSERT_EQ(application.Start(), 0);
    const Ref<Object> root = CorvaneMain::Framework();
    const auto Read = [](const Ref<Object>& object, const char* name, std::vector<Variant> arguments = {}) {
        return object->Invoke(name, arguments);
    };
    const auto Inside = [&](const Ref<Object>& object, const char* name) { return ToObject(Read(object, name)); };
    root->Put("Status", "Ready");
    EXPECT_EQ(Read(root, "Status"), Variant("Ready"));
    EXPECT_EQ(application.Status(), "Ready");

    const Ref<Object> services = Inside(Inside(root, "ServiceManager"), "Services");
    EXPECT_EQ(Read(services, "HasKey", {"a"}), Variant(true));
    const Long count = ToLong(Read(services, "Count"));
    EXPECT_EQ(Read(services, "KeyAt", {count}), Variant("A"));
    EXPECT_EQ(Read(services, "Item", {"A"}), Read(services, "Item", {count}));
    const std::pair<std::vector<Variant>, Long> failures[] = {
        {{"B"}, 5}, {{Long{0}}, 5}, {{}, FailureNumber::WrongNumberOfArguments}, {{root}, FailureNumber::TypeMismatch}};
    for (const auto& [arguments, number] : failures)
        EXPECT_EQ(NumberOf([&, &with = arguments] { (void)services->Invoke("Item", with); }), number);
    EXPECT_EQ(NumberOf([&] { (void)services->Invoke("First", {}); }), FailureNumber::NoSuchMember);
    EXPECT_EQ(services->MembersByName().size(), 4U);
    EXPECT_TRUE(services->HasMember("keyat"));

    const Ref<Object> windows = Inside(root, "WindowManager");
    const Variant none = Ref<Object>();
    const std::vector<Variant> opening = {"Data",   none,     none,     Long{-1}, Long{-1}, Long{-1},
                                          Long{-1}, Long{-1}, Long{-1}, "key",    false,    false};
    const Ref<Object> window = ToObject(windows->Invoke("OpenWindow", opening));
    window->Put("Caption", "All data");
    EXPECT_EQ(Read(window, "Caption"), Variant("All data"));
    EXPECT_EQ(Read(Inside(windows, "Windows"), "KeyAt", {Long{1}}), Variant("key"));
    EXPECT_EQ(Read(window, "IsModal"), Variant(false));
    windows->Invoke("CloseAll", {});
    EXPECT_EQ(application.OpenWindows(), Lines());
    Inside(Inside(root, "NavigationManager"), "ExplorerManager")->Invoke("Populate", {});
    Inside(Inside(root, "NavigationManager"), "MenuManager")->Invoke("Refresh", {});
}

} // namespace
} // namespace corvane::testing
