// What a command costs from Qt's trigger to the procedure behind its name, of a class with 200 names. A table of more
// than about 400 needs more than the usual depth of templates.

#include "bench/focus/Benches.h"
#include "corvane/base/Automation.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/controls/ActiveBar.h"

#include <QAction>
#include <cstdio>

namespace corvane::bench {
namespace {

constexpr std::size_t nNames = 200;
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
        try {
            oProvider->Invoke("DoNothing", {});
        } catch (const Failure&) {
            ++nDone;
        }
    });
    const double dblPlain = Cost([&] { oPlain.trigger(); });
    const double dblByName = Cost([&] { oByName.trigger(); });
    const double dblUnknown = Cost([&] { oUnknown.trigger(); });
    std::printf("a command, of %zu names\n", nNames);
    std::printf("  %-28s %9.1f ns\n", "Qt's trigger alone", dblPlain);
    std::printf("  %-28s %9.1f ns   %.1f beyond the trigger\n", "to the procedure by name", dblByName,
                dblByName - dblPlain);
    std::printf("  %-28s %9.1f ns   %.1f beyond the trigger\n", "an unknown name, refused", dblUnknown,
                dblUnknown - dblPlain);
}

} // namespace corvane::bench
