// What the library offers can be called by name: the tables of members against the public functions of the headers.

#include "corvane/base/Dictionary.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Preferences.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/CVProgressBar.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "tests/support/Application.h"
#include "tests/support/RecordingUtilities.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace corvane::testing {
namespace {

// The functions of a class that its header declares in public.
struct Declared {
    std::set<std::string> own;
    std::set<std::string> overriding; // are part of an interface
};

std::string WithoutComments(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::string text;
    for (std::string line; std::getline(in, line);)
        text += line.substr(0, line.find("//")) + "\n";
    return text;
}

// body begins at the brace of the class.
Declared PublicFunctions(const std::string& body, const std::string& className) {
    static const std::regex function(
        R"(\n    (?!static|using|template|friend|Event<)(?=\S)[^\n({;=~]*\b(\w+)\(([^;{]*))");
    Declared declared;
    std::size_t end = 0;
    for (std::size_t begin = body.find("\npublic:"); begin != std::string::npos; begin = body.find("\npublic:", end)) {
        end = std::min(body.find("\nprivate:", begin), body.size());
        const std::string part = body.substr(begin, end - begin);
        for (std::sregex_iterator it(part.begin(), part.end(), function), last; it != last; ++it)
            if (it->str(1) != className)
                (it->str(2).find(" override") != std::string::npos ? declared.overriding : declared.own)
                    .insert(it->str(1));
    }
    return declared;
}

// By the name of the class, those that have a table.
std::map<std::string, Declared> ClassesWithTables() {
    std::map<std::string, Declared> classes;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(CORVANE_SOURCE_DIR "/corvane")) {
        if (entry.path().extension() != ".h" || entry.path().parent_path().filename() == "author")
            continue;
        const std::string text = WithoutComments(entry.path());
        const std::string mark = " : public Automation<";
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
            const std::size_t begin = at + mark.size();
            const std::string name = text.substr(begin, text.find_first_of(",>", begin) - begin);
            classes[name] = PublicFunctions(text.substr(at, text.find("\n};", at) - at), name);
        }
    }
    return classes;
}

template <class C>
std::vector<MemberInfo> Table() {
    const auto members = C::Members.Listed();
    return {members.begin(), members.end()};
}

TEST(MemberTables, HaveEveryPublicFunction) {
    const std::map<std::string, std::vector<MemberInfo>> tables = {
        {"ActionItem", Table<ActionItem>()},
        {"CVProgressBar", Table<CVProgressBar>()},
        {"Dictionary", Table<Dictionary>()},
        {"ExplorerManager", Table<ExplorerManager>()},
        {"Framework", Table<Framework>()},
        {"MenuManager", Table<MenuManager>()},
        {"NavigationManager", Table<NavigationManager>()},
        {"Preferences", Table<Preferences>()},
        {"ServiceManager", Table<ServiceManager>()},
        {"Window", Table<Window>()},
        {"WindowManager", Table<WindowManager>()},
    };
    const std::map<std::string, const char*> exceptions = {
        {"ActionItem.CopyFrom", "takes a record that isn't counted"},
        {"CVProgressBar.Initialize", "takes the bar of the host, at the start"},
        {"Dictionary.Keys", "returns a list; by name there are Count and KeyAt"},
        {"Framework.EndAfterFailure", "is the host's, at the end"},
        {"Framework.LetGo", "is the library's own, at the end"},
        {"ServiceManager.TerminateRest", "is the host's, at the end"},
        {"WindowManager.ForgetPage", "is the host's form's, after a failure"},
    };
    std::set<std::string> excepted;
    const auto classes = ClassesWithTables();
    for (const auto& [name, declared] : classes) {
        const auto table = tables.find(name);
        if (table == tables.end()) {
            ADD_FAILURE() << name << " has a table that this test doesn't know";
            continue;
        }
        std::set<std::string> callable;
        for (const MemberInfo& member : table->second) {
            const std::string memberName(member.Name);
            EXPECT_TRUE(declared.own.contains(memberName) || declared.overriding.contains(memberName))
                << name << " has no public function " << memberName;
            callable.insert(memberName);
            if (member.CanWrite)
                callable.insert("Set" + memberName);
        }
        EXPECT_FALSE(declared.own.empty()) << name;
        for (const std::string& function : declared.own) {
            if (callable.contains(function))
                continue;
            const std::string full = name + "." + function;
            EXPECT_TRUE(exceptions.contains(full)) << full << " can't be called by name";
            excepted.insert(full);
        }
    }
    EXPECT_EQ(classes.size(), tables.size());
    EXPECT_EQ(excepted.size(), exceptions.size()) << "an exception isn't needed any more";
}

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
        EXPECT_EQ(NumberOf([&] { (void)services->Invoke("Item", arguments); }), number);
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
