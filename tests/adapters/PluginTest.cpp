#include "adapters/plugins/PluginFactory.h"
#include "corvane/base/PluginExport.h"
#include "corvane/base/Variant.h"
#include "tests/support/Failing.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;

namespace {

const std::string pluginFolder = CORVANE_TEST_PLUGINS;

std::string File(const std::string& library) {
    return "\"" + pluginFolder + "/lib" + library + ".so\"";
}

// This program's build tag with another hash over the headers.
std::string WithHash(const std::string& hash) {
    const std::string tag = PluginBuildTag;
    return tag.substr(0, tag.rfind(' ') + 1) + hash;
}

} // namespace

TEST(Plugins, AnObjectIsMadeAndCalledByName) {
    const auto factory = New<PluginFactory>(pluginFolder);
    const Ref<Object> counter = factory->Create("good.COUNTER");
    const Variant more(Long{5});
    EXPECT_EQ(counter->Invoke("add", std::span(&more, 1)), Variant(Long{5}));
    EXPECT_EQ(counter->TypeName(), "Counter");
    EXPECT_EQ(factory->Create("Good.Counter")->Invoke("Count", {}), Variant(Long{0}));
}

TEST(Plugins, EachFailureSaysWhatWasFoundAndWhatToDo) {
    struct {
        const char* progID;
        std::string why;
    } const cases[] = {
        {"Missing.Class",
         "there is no file " + File("Missing") + ". Put the plug-in there, or correct the name in front of the point"},
        {"NoEntry.Class",
         "the file " + File("NoEntry") +
             " is a shared library without the entry \"corvane_plugin\", so it isn't a plug-in. Declare "
             "its classes with CORVANE_PLUGIN and build it again"},
        {"NoTable.Class", "the entry \"corvane_plugin\" of the plug-in " + File("NoTable") +
                              " returned no table of classes. Declare them with CORVANE_PLUGIN"},
        {"OtherAbi.Class", "the plug-in " + File("OtherAbi") +
                               " has the interface version 7, this program wants version 1. Build the plug-in again "
                               "with this program's headers"},
        {"OtherBuild.Class", "the plug-in " + File("OtherBuild") +
                                 " was built as \"another compiler\", this program wants \"" + PluginBuildTag +
                                 "\". Build the plug-in again with the same compiler and standard library"},
        {"OtherHeaders.Class", "the plug-in " + File("OtherHeaders") + " was built as \"" + WithHash("0123456789ab") +
                                   "\", this program wants \"" + PluginBuildTag +
                                   "\". Build the plug-in again with this program's headers"},
        {"Good.Countre",
         "the plug-in " + File("Good") + " has no such class. It has \"Good.Counter\", \"Good.Account\""},
        {"Throwing.WithFailure",
         "its constructor in the plug-in " + File("Throwing") + " failed with 91 (Throwing): The licence is missing"},
        {"Throwing.WithForeign", "its constructor in the plug-in " + File("Throwing") +
                                     " failed with -2147467259 (Corvane): a foreign exception"},
        {"Throwing.WithNumber", "its constructor in the plug-in " + File("Throwing") +
                                    " failed with -2147467259 (Corvane): An exception of an unknown type"},
        {"NoPoint", "a ProgID has the form \"Library.Class\""},
        {"NoClass.", "a ProgID has the form \"Library.Class\""},
        {"", "a ProgID has the form \"Library.Class\""},
        {"a/b.Class", "the library's name \"a/b\" isn't a plain file name; a ProgID has the form \"Library.Class\", "
                      "without a folder"},
    };
    const auto factory = New<PluginFactory>(pluginFolder);
    for (const auto& testCase : cases)
        EXPECT_EQ(FailureOf([&] { (void)factory->Create(testCase.progID); }),
                  "429: Can't create an object of \"" + std::string(testCase.progID) + "\": " + testCase.why);
    // The loader's own words are part of this one.
    const std::string text = FailureOf([&] { (void)factory->Create("Text.Class"); });
    EXPECT_NE(text.find("the file " + File("Text") + " can't be loaded as a shared library: "), std::string::npos);
    EXPECT_NE(text.find("file too short"), std::string::npos) << text;
}

// A library and a process of one name: which is meant can't be known.
TEST(Plugins, TwoOfOneNameAreRefused) {
    test::TemporaryFolder folder;
    folder.Write("libGood.so", "");
    folder.Write("Good/plugin.json", R"({"run": ["./good"]})");
    const auto factory = New<PluginFactory>(folder.Path());
    const std::string text = FailureOf([&] { (void)factory->Create("Good.Counter"); });
    EXPECT_NE(text.find("there are both the file "), std::string::npos) << text;
}

TEST(Plugins, ToolsSeeClassesAndMembers) {
    const auto factory = New<PluginFactory>(pluginFolder);
    const auto classes = factory->Classes("GOOD");
    ASSERT_EQ(classes.size(), 2u);
    EXPECT_EQ(classes[0].progID, "Good.Account");
    EXPECT_TRUE(classes[0].members.empty());
    ASSERT_EQ(classes[1].members.size(), 2u);
    EXPECT_EQ(classes[1].members[0].Name, "Add");
    EXPECT_EQ(classes[1].members[0].ParameterCount, 1u);
    EXPECT_EQ(factory->Libraries(), (std::vector<std::string>{"Good", "NoEntry", "NoTable", "OtherAbi", "OtherBuild",
                                                              "OtherHeaders", "Text", "Throwing"}));
    EXPECT_TRUE(New<PluginFactory>(pluginFolder + "/none")->Libraries().empty());
}
