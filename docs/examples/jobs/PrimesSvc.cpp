#include "corvane/Jobs.h"
#include "corvane/Service.h"

#include <string>
#include <vector>

using namespace corvane;

namespace {

bool IsPrime(int number) {
    for (int divisor = 2; divisor * divisor <= number; ++divisor)
        if (number % divisor == 0)
            return false;
    return number > 1;
}

// Plain functions compute; they know nothing of the application but the progress.
int CountPrimes(int first, int last, JobProgress& progress) {
    int count = 0;
    for (int number = first; number < last; ++number) {
        progress.StopIfCancelled();
        progress.SetPart(static_cast<std::size_t>(number - first), static_cast<std::size_t>(last - first));
        count += IsPrime(number) ? 1 : 0;
    }
    return count;
}

} // namespace

class PrimesService final : public Service<PrimesService> {
public:
    // A value comes back, and is shown.
    void OnCount() {
        StartJob(
            {.title = "Count primes", .owner = Ref<Object>(this)},
            [](JobProgress& progress) { return CountPrimes(0, m_limit, progress); },
            [](int count) { SetStatus(std::to_string(count) + " primes"); });
    }

    // On all processors: as many parts as you like, the results in their order.
    void OnCompare() {
        StartJob(
            {.title = "Compare lists", .owner = Ref<Object>(this), .reads = {"list"}},
            [](JobProgress& progress) {
                JobGroup<int> group(progress);
                for (int part = 0; part < 10; ++part)
                    group.Add(
                        [part](JobProgress& ofPart) { return CountPrimes(part * 1000, part * 1000 + 1000, ofPart); });
                return group.Run();
            },
            [](const std::vector<int>& counts) {
                SetStatus(std::to_string(counts.front()) + " primes in the first thousand, " +
                          std::to_string(counts.back()) + " in the tenth");
            });
    }

    // Two steps of different length, with lines for the details. Whatever becomes of it is looked at.
    void OnUpdate() {
        StartJob(
            {.title = "Update the list", .owner = Ref<Object>(this), .writes = {"list"}},
            [limit = m_limit](JobProgress& progress) {
                const auto steps = progress.Split({3, 1});
                progress.SetText("Counting");
                const int count = CountPrimes(0, limit, steps[0]);
                progress.SetText("Checking");
                if (CountPrimes(0, 10, steps[1]) != 4)
                    Fail(FailureNumber::ObjectErrorBase + 1, "The first primes are wrong: count them again");
                progress.Log("Found " + std::to_string(count));
            },
            [](JobResult<void>& result) {
                if (result.WasCancelled())
                    SetStatus("The list is as it was");
                else if (const Failure* failure = result.Error())
                    SetStatus("The list is unusable: " + failure->Description);
                else
                    SetStatus("The list is up to date");
            });
    }

    // Again and again, until it is chosen once more or the service ends.
    void OnWatch() {
        if (m_timer.IsActive())
            m_timer.Stop();
        else
            m_timer.Start(
                5000, {.title = "Look at the list", .owner = Ref<Object>(this), .quiet = true, .reads = {"list"}},
                [] { return IsPrime(9973); },
                [this](bool) { SetStatus("Looked " + std::to_string(++m_looks) + " times"); });
    }

    static constexpr auto Members = Methods<&PrimesService::OnCount, &PrimesService::OnCompare,
                                            &PrimesService::OnUpdate, &PrimesService::OnWatch>();

private:
    static constexpr int m_limit = 10000;
    int m_looks = 0;
    JobTimer m_timer;
};

CORVANE_PLUGIN(Class<PrimesService>("PrimesSvc.PrimesService"))
