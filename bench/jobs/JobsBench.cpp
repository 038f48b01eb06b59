// Measures jobs beside QtConcurrent in the same run: from the start to the first line of the work and from its last
// line to the result on the thread of the user interface, 10,000 small ones at once, and how long the user interface is
// kept from a tick while four compute.

#include "bench/Times.h"
#include "corvane/author/Jobs.h"
#include "desktop/jobs/DesktopJobs.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFutureWatcher>
#include <QTimer>
#include <QtConcurrentRun>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <vector>

namespace corvane::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int Rounds = 2000;
constexpr int Many = 10000;

struct Times {
    std::vector<double> microseconds;
    void Add(Clock::time_point from, Clock::time_point to) {
        microseconds.push_back(std::chrono::duration<double, std::micro>(to - from).count());
    }
    [[nodiscard]] double Typical() const { return Median(microseconds); }
};

// What the work says of itself: when it began and ended.
struct Moments {
    Clock::time_point begun;
    Clock::time_point ended;
};

Moments Work() {
    const auto begun = Clock::now();
    return {begun, Clock::now()};
}

class Bench {
public:
    Bench()
        : m_jobs({[](const std::function<void()>& act) { act(); },
                  [] { return true; },
                  {},
                  {},
                  [](const desktop::JobQuestion&) { return desktop::JobAnswer::KeepOpen; }}) {}

    void Run() {
        // In turn, so that both meet the machine in the same mood.
        Times start;
        Times back;
        Times plainStart;
        Times plainBack;
        for (int round = 0; round < Rounds; ++round) {
            OneJob(start, back);
            OnePlain(plainStart, plainBack);
        }
        Print("start to first line", start.Typical(), plainStart.Typical(), "us");
        Print("last line to result", back.Typical(), plainBack.Typical(), "us");
        std::vector<double> all;
        std::vector<double> plain;
        for (int round = 0; round < 5; ++round) {
            all.push_back(ManyJobs());
            plain.push_back(ManyPlain());
        }
        Print("10,000 small ones", Median(all), Median(plain), "ms");
        Ticks();
    }

private:
    template <class W, class D>
    void Start(W work, D done) {
        m_jobs.Manager()->Start({.title = "Bench", .quiet = true},
                                std::make_unique<detail::WorkTask<W, D>>(std::move(work), std::move(done)), "Bench");
    }
    static void Print(const char* what, double ours, double plain, const char* unit) {
        std::printf("%-24s jobs %9.1f %s   QtConcurrent %9.1f %s   ratio %5.2f\n", what, ours, unit, plain, unit,
                    ours / plain);
    }

    void OneJob(Times& start, Times& back) {
        QEventLoop loop;
        const auto begin = Clock::now();
        Start(&Work, [&](const Moments& moments) {
            back.Add(moments.ended, Clock::now());
            start.Add(begin, moments.begun);
            loop.quit();
        });
        loop.exec();
    }
    static void OnePlain(Times& start, Times& back) {
        QEventLoop loop;
        QFutureWatcher<Moments> watcher;
        Clock::time_point begin;
        QObject::connect(&watcher, &QFutureWatcher<Moments>::finished, [&] {
            const Moments moments = watcher.result();
            back.Add(moments.ended, Clock::now());
            start.Add(begin, moments.begun);
            loop.quit();
        });
        begin = Clock::now();
        watcher.setFuture(QtConcurrent::run(&Work));
        loop.exec();
    }

    double ManyJobs() {
        QEventLoop loop;
        int left = Many;
        QElapsedTimer time;
        time.start();
        for (int i = 0; i < Many; ++i)
            Start([i] { return i; },
                  [&](int) {
                      if (--left == 0)
                          loop.quit();
                  });
        loop.exec();
        return static_cast<double>(time.nsecsElapsed()) / 1e6;
    }
    static double ManyPlain() {
        QEventLoop loop;
        int left = Many;
        std::vector<std::unique_ptr<QFutureWatcher<int>>> watchers;
        QElapsedTimer time;
        time.start();
        for (int i = 0; i < Many; ++i) {
            auto& watcher = watchers.emplace_back(std::make_unique<QFutureWatcher<int>>());
            QObject::connect(watcher.get(), &QFutureWatcher<int>::finished, [&] {
                if (--left == 0)
                    loop.quit();
            });
            watcher->setFuture(QtConcurrent::run([i] { return i; }));
        }
        loop.exec();
        return static_cast<double>(time.nsecsElapsed()) / 1e6;
    }

    // A tick each 16 ms, as a frame; four jobs compute on however few processors there are.
    void Ticks() {
        constexpr int frame = 16;
        constexpr double longest = 50;
        QEventLoop loop;
        int left = 4;
        std::atomic<bool> ends = false;
        for (int i = 0; i < 4; ++i)
            Start(
                [&ends](JobProgress& progress) {
                    double sum = 0;
                    for (std::size_t step = 0; !ends; ++step) {
                        sum += 1 / static_cast<double>(step + 1);
                        if (step % 1000 == 0)
                            progress.SetPart(step % 100000, 100000);
                    }
                    return sum;
                },
                [&](double) {
                    if (--left == 0)
                        loop.quit();
                });
        std::vector<double> gaps;
        auto last = Clock::now();
        QTimer timer;
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, [&] {
            const auto now = Clock::now();
            gaps.push_back(std::chrono::duration<double, std::milli>(now - last).count());
            last = now;
        });
        timer.start(frame);
        QTimer::singleShot(5000, [&] { ends = true; });
        loop.exec();
        std::printf("four jobs for 5 s: %zu ticks, median %.1f ms, worst %.1f ms, %td over %.0f ms\n", gaps.size(),
                    Median(gaps), *std::max_element(gaps.begin(), gaps.end()),
                    std::count_if(gaps.begin(), gaps.end(), [](double gap) { return gap > longest; }), longest);
    }

    desktop::DesktopJobs m_jobs;
};

} // namespace
} // namespace corvane::bench

int main(int argc, char** argv) {
    const QApplication qt(argc, argv);
    corvane::bench::Bench().Run();
    return 0;
}
