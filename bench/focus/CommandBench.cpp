// What a command costs from Qt's trigger to the procedure behind its name, of a class with 1,000 names: one that it
// has, one that it hasn't and is asked for, and one that it hasn't and is called all the same, so that a failure comes
// back.

#include "bench/Times.h"
#include "bench/focus/Benches.h"
#include "corvane/base/Automation.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/controls/ActiveBar.h"

#include <QAction>
#include <cstdio>

namespace corvane::bench {
namespace {

constexpr std::size_t names = 1000;
constexpr int calls = 20000; // in one round
constexpr int rounds = 15;

template <std::size_t I>
struct NameOf {
    static constexpr char text[] = {'D', 'o', static_cast<char>('0' + I / 100), static_cast<char>('0' + I / 10 % 10),
                                    static_cast<char>('0' + I % 10)};
    static constexpr std::string_view Text{text, sizeof text};
};

int done = 0;

template <class C, std::size_t... I>
constexpr auto TableOf(std::index_sequence<I...>) {
    return MemberTable(Method(NameOf<I>::Text, &C::Do)...);
}

class Named final : public Automation<Named> {
public:
    void Do() { ++done; }

    static constexpr auto Members = TableOf<Named>(std::make_index_sequence<names>{});
};

// Nanoseconds a call.
template <class Act>
double Cost(Act&& act) {
    std::vector<double> roundList;
    for (int round = 0; round < rounds; ++round)
        roundList.push_back(Microseconds([&] {
                                for (int i = 0; i < calls; ++i)
                                    act();
                            }) *
                            1000 / calls);
    return Median(roundList);
}

} // namespace

void MeasureCommands() {
    const auto named = New<Named>();
    QAction plain;
    QObject::connect(&plain, &QAction::triggered, [] { ++done; });
    QAction byName;
    Ref<Object> provider = named;
    QObject::connect(&byName, &QAction::triggered, [&] { provider->Invoke("Do117", {}); });
    QAction unknown;
    QObject::connect(&unknown, &QAction::triggered, [&] {
        if (!provider->HasMember("DoNothing"))
            ++done;
    });
    QAction refused;
    QObject::connect(&refused, &QAction::triggered, [&] {
        try {
            provider->Invoke("DoNothing", {});
        } catch (const Failure&) {
            ++done;
        }
    });
    const double plainValue = Cost([&] { plain.trigger(); });
    std::printf("a command, of %zu names\n", names);
    std::printf("  %-28s %9.1f ns\n", "Qt's trigger alone", plainValue);
    const auto Print = [&](const char* what, QAction& action) {
        const double cost = Cost([&] { action.trigger(); });
        std::printf("  %-28s %9.1f ns   %.1f beyond the trigger\n", what, cost, cost - plainValue);
    };
    Print("to the procedure by name", byName);
    Print("an unknown name, asked for", unknown);
    Print("an unknown name, refused", refused);
}

} // namespace corvane::bench
