#include "corvane/base/Automation.h"
#include "corvane/base/PluginExport.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/windows/IPageAccess.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

enum class Level : Long { Low = 0, High = 4 };

class Callee final : public Automation<Callee> {
public:
    void Nothing() { m_sCalled = "Nothing"; }
    std::string Describe(bool bValue, Long lValue, Single fValue, Double dblValue, const std::string& sValue) const {
        return ToText(bValue) + " " + ToText(lValue) + " " + ToText(fValue) + " " + ToText(dblValue) + " " + sValue;
    }
    Level Raised(Level eLevel, std::string_view sWhy) {
        m_sCalled = sWhy;
        return eLevel == Level::Low ? Level::High : eLevel;
    }
    Ref<Callee> Other(const Ref<Callee>& oOther) noexcept { return oOther; }
    Variant Same(const Variant& vValue) const noexcept { return vValue; }
    void Throws() { Fail(-3, "its own"); }

    Single Height() const { return m_fHeight; }
    void SetHeight(Single fHeight) { m_fHeight = fHeight; }
    std::string Called() const { return m_sCalled; }

    static constexpr auto Members = MemberTable(
        Method("Nothing", &Callee::Nothing), Property("Height", &Callee::Height, &Callee::SetHeight),
        Method("Describe", &Callee::Describe), Method("Raised", &Callee::Raised), Method("Other", &Callee::Other),
        Method("Same", &Callee::Same), Property("Called", &Callee::Called), Method("Throws", &Callee::Throws));

private:
    Single m_fHeight = 0;
    std::string m_sCalled;
};

class Stranger final : public virtual Object {};

// What a call by name comes to: its result as text, or the number of its failure.
std::string Called(const Ref<Object>& oCallee, std::string_view sName, const std::vector<Variant>& aArguments) {
    return testing::ResultOf([&] {
        const Variant vResult = oCallee->Invoke(sName, aArguments);
        return vResult.IsObject() ? ToObject(vResult) ? "an object" : "nothing" : vResult;
    });
}

TEST(AutomationTest, CallsByName) {
    const Ref<Object> oCallee = New<Callee>();
    const Ref<Object> oStranger = New<Stranger>();
    const struct {
        const char* sName;
        std::vector<Variant> aArguments;
        const char* sResult;
    } aCases[] = {
        {"Nothing", {}, ""},
        {"nOTHING", {}, ""},
        {"Nothin", {}, "fails 438"},
        {"Nothing1", {}, "fails 438"},
        {"", {}, "fails 438"},
        {"Nothing", {1.0}, "fails 450"},
        {"Describe", {true, Long{2}, 1.5F, 2.5, "text"}, "True 2 1.5 2.5 text"},
        {"describe", {"TRUE", "2", "1.5", "2.5", Long{7}}, "True 2 1.5 2.5 7"},
        {"Describe", {Long{3}, 2.5, true, {}, false}, "True 2 -1 0 False"},
        {"Describe", {true, 3e9, 0.0, 0.0, ""}, "fails 6"},
        {"Describe", {"maybe", Long{2}, 1.5F, 2.5, ""}, "fails 13"},
        {"Describe", {true, oCallee, 1.5F, 2.5, ""}, "fails 13"},
        {"Describe", {true, Long{2}, "x", 2.5, ""}, "fails 13"},
        {"Describe", {true, Long{2}, 1.5F, 2.5, oCallee}, "fails 13"},
        {"Describe", {true, Long{2}, 1.5F, 2.5}, "fails 450"},
        {"Raised", {Long{0}, "why"}, "4"},
        {"Raised", {"4", Long{12}}, "4"},
        {"Other", {oCallee}, "an object"},
        {"Other", {Ref<Object>()}, "nothing"},
        {"Other", {Variant()}, "nothing"},
        {"Other", {oStranger}, "fails 13"},
        {"Other", {"text"}, "fails 13"},
        {"Same", {2.5}, "2.5"},
        {"Same", {oStranger}, "an object"},
        {"Throws", {}, "fails -3"},
        {"Height", {1.0}, "fails 450"},
    };
    for (const auto& oCase : aCases) {
        const std::string sResult = Called(oCallee, oCase.sName, oCase.aArguments);
        EXPECT_EQ(sResult, oCase.sResult) << oCase.sName;
        EXPECT_EQ(oCallee->HasMember(oCase.sName), sResult != "fails 438") << oCase.sName;
    }
    EXPECT_FALSE(oStranger->HasMember("Nothing"));
    EXPECT_EQ(Called(oCallee, "Called", {}), "12"); // the last text that Raised was given
}

TEST(AutomationTest, WritesProperties) {
    const Ref<Object> oCallee = New<Callee>();
    oCallee->Put("hEIGHT", "2.5");
    EXPECT_EQ(oCallee->Invoke("Height", {}), Variant(2.5F));
    const std::pair<const char*, Long> aFailures[] = {{"Called", FailureNumber::NoSuchMember},
                                                      {"Nothing", FailureNumber::NoSuchMember},
                                                      {"Width", FailureNumber::NoSuchMember},
                                                      {"Height", FailureNumber::TypeMismatch}};
    for (const auto& oFailure : aFailures)
        EXPECT_EQ(testing::NumberOf([&] { oCallee->Put(oFailure.first, "high"); }), oFailure.second) << oFailure.first;
    EXPECT_EQ(oCallee->Invoke("Height", {}), Variant(2.5F));
}

std::string Listed(const std::vector<MemberInfo>& aMembers) {
    std::string sListed;
    for (const MemberInfo& oMember : aMembers) {
        sListed += sListed.empty() ? "" : ", ";
        sListed += oMember.Name;
        if (oMember.What == MemberInfo::Kind::Method)
            sListed += "(" + std::to_string(oMember.ParameterCount) + ")";
        else
            sListed += oMember.CanWrite ? " rw" : " r";
    }
    return sListed;
}

TEST(AutomationTest, ListsItsMembersByName) {
    EXPECT_EQ(Listed(New<Callee>()->MembersByName()),
              "Called r, Describe(5), Height rw, Nothing(0), Other(1), Raised(2), Same(1), Throws(0)");
}

// Every kind of value that travels by name.
class Types final : public Automation<Types> {
public:
    void Take(bool, Long, LongLong, Single, Double, const std::string&, std::string_view, MemberInfo::Kind,
              const Ref<Callee>&, const Variant&) {}
    unsigned long long Give(long long lSize, std::uint32_t uCount) {
        return static_cast<unsigned long long>(lSize) + uCount;
    }
    const char* Name() const noexcept { return "Types"; }
    static constexpr auto Members =
        MemberTable(Method("Take", &Types::Take), Method("Give", &Types::Give), Property("Name", &Types::Name));
};

TEST(AutomationTest, TellsTheTypesOfItsMembers) {
    const auto oTypes = New<Types>();
    const auto aMembers = oTypes->MembersByName();
    const auto Letters = [](const MemberInfo& oMember) {
        std::string sLetters;
        for (const ValueInfo& oValue : oMember.Parameters)
            sLetters += "-?bilsdteo"[static_cast<std::size_t>(oValue.What)];
        return sLetters + ">" + "-?bilsdteo"[static_cast<std::size_t>(oMember.Result.What)];
    };
    EXPECT_EQ(Letters(aMembers[0]) + " " + Letters(aMembers[1]) + " " + Letters(aMembers[2]), "ll>l >t bilsdtteo?>-");
    EXPECT_TRUE(aMembers[2].Parameters[8].Class.ends_with("::Callee"));
    EXPECT_EQ(Called(oTypes, "Give", {Variant(1LL << 40), Variant(2)}), "1099511627778");
    EXPECT_EQ(Called(oTypes, "Give", {Variant(1), Variant(-1)}), "fails 6"); // no count
    EXPECT_EQ(Called(oTypes, "Give", {Variant(-3), Variant(2)}), "fails 6"); // larger than any LongLong
}

class Plain final : public virtual Object {
public:
    explicit Plain() { ++nLiving; }
    ~Plain() override { --nLiving; }
    static inline int nLiving = 0;
};

TEST(PluginExportTest, OffersClasses) {
    const PluginClass aClasses[] = {Class<Callee>("Library.Callee"), Class<Plain>("Library.Plain")};
    EXPECT_STREQ(aClasses[1].ProgID, "Library.Plain");
    {
        const auto oPlain = Ref<Object>::Adopt(aClasses[1].Create());
        EXPECT_TRUE(oPlain.TryAs<Plain>());
        EXPECT_EQ(Plain::nLiving, 1);
    }
    EXPECT_EQ(Plain::nLiving, 0); // it was given with exactly one reference
    EXPECT_EQ(Listed(aClasses[0].Members()),
              "Nothing(0), Height rw, Describe(5), Raised(2), Other(1), Same(1), Called r, Throws(0)");
    EXPECT_EQ(Listed(aClasses[1].Members()), "");
    EXPECT_FALSE(aClasses[0].IsService || aClasses[0].IsExplorerItem || aClasses[0].IsPage);
    struct Access final : IServiceAccess, IPageAccess {
        Ref<IService> Service() override { return nullptr; }
        Ref<IPage> Page() override { return nullptr; }
    };
    const PluginClass oAccess = Class<Access>("Library.Access");
    EXPECT_TRUE(oAccess.IsService && !oAccess.IsExplorerItem && oAccess.IsPage);
}

} // namespace
} // namespace corvane
