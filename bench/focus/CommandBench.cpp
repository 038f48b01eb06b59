// What a command costs from Qt's trigger to the procedure behind its name, of a class with 1,000 names: one that it
// has, one that it hasn't and is asked for, and one that it hasn't and is called all the same, so that a failure comes
// back.

#include "bench/focus/Benches.h"
#include "corvane/base/Automation.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/controls/ActiveBar.h"

#include <QAction>
#include <cstdio>

namespace corvane::bench {
namespace {

constexpr std::size_t nNames = 1000;
constexpr int nCalls = 20000; // in one round
constexpr int nRounds = 15;

template <std::size_t I>
struct NameOf {
    static constexpr char aText[] = {'D', 'o', static_cast<char>('0' + I / 100), static_cast<char>('0' + I / 10 % 10),
                                     static_cast<char>('0' + I % 10)};
    static constexpr std::string_view Text{aText, sizeof aText};
};

int nDone = 0;

template <class C, std::size_t... I>
constexpr auto TableOf(std::index_sequence<I...>) {
    return MemberTable(Method(NameOf<I>::Text, &C::Do)...);
}

class Named final : public Automation<Named> {
public:
    void Do() { ++nDone; }

    static constexpr auto Members = TableOf<Named>(std::make_index_sequence<nNames>{});
};

// Nanoseconds a call.
template <class Act>
double Cost(Act&& fnAct) {
    std::vector<double> aRounds;
    for (int iRound = 0; iRound < nRounds; ++iRound)
        aRounds.push_back(Microseconds([&] {
                              for (int i = 0; i < nCalls; ++i)
                                  fnAct();
                          }) *
                          1000 / nCalls);
    return Median(aRounds);
}

} // namespace

void MeasureCommands() {
    const auto oNamed = New<Named>();
    QAction oPlain;
    QObject::connect(&oPlain, &QAction::triggered, [] { ++nDone; });
    QAction oByName;
    Ref<Object> oProvider = oNamed;
    QObject::connect(&oByName, &QAction::triggered, [&] { oProvider->Invoke("Do117", {}); });
    QAction oUnknown;
    QObject::connect(&oUnknown, &QAction::triggered, [&] {
        if (!oProvider->HasMember("DoNothing"))
            ++nDone;
    });
    QAction oRefused;
    QObject::connect(&oRefused, &QAction::triggered, [&] {
        try {
            oProvider->Invoke("DoNothing", {});
        } catch (const Failure&) {
            ++nDone;
        }
    });
    const double dblPlain = Cost([&] { oPlain.trigger(); });
    std::printf("a command, of %zu names\n", nNames);
    std::printf("  %-28s %9.1f ns\n", "Qt's trigger alone", dblPlain);
    const auto Print = [&](const char* sWhat, QAction& oAction) {
        const double dblCost = Cost([&] { oAction.trigger(); });
        std::printf("  %-28s %9.1f ns   %.1f beyond the trigger\n", sWhat, dblCost, dblCost - dblPlain);
    };
    Print("to the procedure by name", oByName);
    Print("an unknown name, asked for", oUnknown);
    Print("an unknown name, refused", oRefused);
}

} // namespace corvane::bench
