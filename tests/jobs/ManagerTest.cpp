#include "jobs/Manager.h"

#include "corvane/author/ExplorerItem.h"
#include "corvane/author/Jobs.h"
#include "corvane/platform/controls/PanelForm.h"

#include <atomic>
#include <cmath>
#include <future>
#include <gtest/gtest.h>

namespace corvane::jobs {

namespace {

using Texts = std::vector<std::string>;

// As many threads as the parameter says; 0 is the thread of the test.
class JobsTest : public ::testing::TestWithParam<std::size_t> {
protected:
    JobsTest() : m_jobs(New<Manager>(MakeHost())) {}
    ~JobsTest() override { EXPECT_TRUE(m_jobs->Stop(std::chrono::hours(1))); }

    Host MakeHost() {
        Host host;
        host.mostThreads = GetParam();
        host.guard = [this](const std::function<void()>& act) {
            try {
                act();
            } catch (const Failure& failure) {
                m_shown.push_back(failure.Description + " | " + failure.Context);
            }
        };
        return host;
    }
    template <class W, class D>
    Ref<IJob> Start(JobOptions options, W work, D done) {
        return m_jobs->Start(std::move(options),
                             std::make_unique<detail::WorkTask<W, D>>(std::move(work), std::move(done)), "Test.Starts");
    }

    Ref<Manager> m_jobs;
    Texts m_shown;
};

std::vector<int> Numbers(int count) {
    std::vector<int> numbers;
    for (int i = 0; i < count; ++i)
        numbers.push_back(i);
    return numbers;
}

} // namespace

TEST_P(JobsTest, BringResultsBack) {
    const auto here = std::this_thread::get_id();
    Texts done;
    std::thread::id worker;
    Start(
        {.title = "Value"},
        [&, text = std::string("v")] {
            worker = std::this_thread::get_id();
            return text;
        },
        [&](const std::string& value) {
            EXPECT_EQ(std::this_thread::get_id(), here);
            done.push_back(value);
        });
    Start(
        {.title = "Own"}, [] { return std::make_unique<int>(7); }, // can be moved only
        [&](std::unique_ptr<int> value) { done.push_back(std::to_string(*value)); });
    Start(
        {.title = "Fails"}, []() -> int { throw std::runtime_error("no data"); },
        [&](int) { done.push_back("never"); });
    Start(
        {.title = "Seen"}, [] { Fail(5, "known"); },
        [&](JobResult<void>& result) { done.push_back(result.Error()->Description); });
    Start(
        {.title = "Passed on"}, []() -> int { Fail(5, "raised"); },
        [&](JobResult<int>& result) { done.push_back(std::to_string(result.Value())); });
    Start(
        {.title = "Nothing"}, [] {}, detail::NoDone{});
    m_jobs->RunToEnd();
    std::sort(done.begin(), done.end());
    std::sort(m_shown.begin(), m_shown.end());
    EXPECT_EQ(done, (Texts{"7", "known", "v"}));
    EXPECT_EQ(m_shown, (Texts{"no data | in the job \"Fails\", started in Test.Starts",
                              "raised | in the job \"Passed on\", started in Test.Starts"}));
    EXPECT_EQ(worker == here, GetParam() == 0);
    EXPECT_EQ(m_jobs->Ended().size(), 6U);
    EXPECT_FALSE(m_jobs->HasActive());
}

TEST_P(JobsTest, EndWhenTheyAreCancelled) {
    Texts done;
    const auto note = [&](JobResult<int>& result) {
        done.push_back(result.WasCancelled() ? "cancelled" : std::to_string(result.Value()));
    };
    const auto steps = [](JobProgress& progress) {
        int step = 0;
        for (; step < 100 && !progress.IsCancelled(); ++step)
            progress.SetPart(static_cast<std::size_t>(step), 100);
        return step;
    };
    const auto job = Start({.title = "Steps", .writes = {"x"}}, steps, note).As<Job>();
    const auto behind = Start({.title = "Behind", .reads = {"x"}}, steps, note).As<Job>();
    EXPECT_EQ(behind->State(), JobState::Waiting);
    EXPECT_EQ(behind->WaitsFor().front().title, "Steps");
    behind->Cancel();
    behind->Cancel();
    m_jobs->RunToEnd();
    EXPECT_EQ(behind->State(), JobState::Cancelled);
    EXPECT_FALSE(behind->Part()); // it never began
    EXPECT_EQ(job->State(), JobState::Done);
    std::sort(done.begin(), done.end());
    EXPECT_EQ(done, (Texts{"100", "cancelled"}));
    EXPECT_FALSE(job->CanCancel());

    const auto kept = Start({.title = "Kept", .canCancel = false}, steps, note);
    kept->Cancel();
    m_jobs->RunToEnd();
    EXPECT_EQ(done.back(), "100");
    // A value that comes although the work knew isn't one.
    const auto stops = Start(
                           {.title = "Stops"},
                           [](JobProgress& progress) {
                               while (!progress.IsCancelled())
                                   std::this_thread::yield();
                               return 3;
                           },
                           [&](int) { done.push_back("never"); })
                           .As<Job>();
    stops->Cancel();
    m_jobs->RunToEnd();
    EXPECT_EQ(stops->State(), JobState::Cancelled);
    EXPECT_EQ(done.back(), "100");
    // Those behind one that was cancelled before it began have their turn.
    const auto first = Start({.title = "First"}, steps, note);
    const auto second = Start({.title = "Second"}, steps, note).As<Job>();
    first->Cancel();
    m_jobs->Deliver();
    m_jobs->RunToEnd();
    EXPECT_EQ(second->State(), JobState::Done);
    EXPECT_TRUE(m_shown.empty());
}

TEST_P(JobsTest, AddUpTheirParts) {
    std::vector<Double> seen;
    const auto job = Start(
        {.title = "Whole"},
        [&](JobProgress& progress) {
            const auto parts = progress.Split({1, 3, 0, -1});
            const auto look = [&] { seen.push_back(static_cast<Part&>(progress).Done()); };
            parts[0].get().SetPart(0.5);
            look();
            const auto inner = parts[1].get().Split({1, 1});
            inner[1].get().SetPart(1);
            look();
            inner[1].get().SetPart(0.5); // may go back
            look();
            parts[2].get().SetPart(1);
            parts[3].get().SetPart(1);
            parts[0].get().SetPart(std::nan(""));
            look();
            inner[0].get().SetPart(7);
            parts[0].get().SetPart(2, 2);
            look();
            for (int i = 0; i < 600; ++i)
                progress.Log(std::to_string(i));
        },
        detail::NoDone{});
    m_jobs->RunToEnd();
    const std::vector<Double> expected{0.125, 0.5, 0.3125, 0.1875, 0.8125};
    ASSERT_EQ(seen.size(), expected.size());
    for (std::size_t i = 0; i < seen.size(); ++i)
        EXPECT_NEAR(seen[i], expected[i], 1e-9) << i;
    EXPECT_EQ(job->LogLines().size(), 500U);
    EXPECT_EQ(job->LogLines().front(), "100");
}

TEST_P(JobsTest, DivideTheirWork) {
    std::vector<int> found;
    Texts failures;
    // Groups within a group, more than there are threads: none waits for a thread.
    const auto nested = [](JobProgress& progress) {
        JobGroup<int> outer(progress);
        for (int i = 0; i < 20; ++i)
            outer.Add([i](JobProgress& part) {
                JobGroup<int> inner(part);
                for (int k = 0; k < 5; ++k)
                    inner.Add([i, k] { return i * 5 + k; }, k + 1);
                const std::vector<int> results = inner.Run();
                EXPECT_NEAR(static_cast<Part&>(part).Done(), 1, 1e-9);
                return results.front();
            });
        return outer.Run();
    };
    for (int repeat = 0; repeat < 3; ++repeat)
        Start({.title = "Nested"}, nested, [&](std::vector<int> numbers) { found = std::move(numbers); });
    m_jobs->RunToEnd();
    std::vector<int> expected = Numbers(20);
    std::transform(expected.begin(), expected.end(), expected.begin(), [](int i) { return 5 * i; });
    EXPECT_EQ(found, expected);

    // The one that failed, and not those that ended because of it. Parts that go on for ever are cancelled.
    const int failing = GetParam() > 1 && std::thread::hardware_concurrency() > 1 ? 1 : 0;
    std::atomic<int> ended = 0;
    Start(
        {.title = "Fails"},
        [&](JobProgress& progress) {
            JobGroup<void> group(progress);
            for (int i = 0; i < 8; ++i)
                group.Add([&ended, i, failing](JobProgress& part) {
                    if (i == failing)
                        Fail(5, "failed");
                    while (!part.IsCancelled())
                        std::this_thread::yield();
                    ++ended;
                    part.StopIfCancelled();
                });
            group.Run();
        },
        [&](JobResult<void>& result) { failures.push_back(result.Error()->Description); });
    Start(
        {.title = "Empty"}, [](JobProgress& progress) { return JobGroup<int>(progress).Run(); },
        [&](std::vector<int> numbers) { found = std::move(numbers); });
    m_jobs->RunToEnd();
    EXPECT_EQ(failures, (Texts{"failed"}));
    EXPECT_TRUE(found.empty());
}

TEST_P(JobsTest, KeepWhatConflictsApart) {
    std::vector<int> order; // without a lock: the key is one
    int done = 0;
    for (int i = 0; i < 200; ++i)
        Start(
            {.title = "Writes", .quiet = true, .writes = {"order"}}, [&order, i] { order.push_back(i); },
            [&] { ++done; });
    m_jobs->RunToEnd();
    EXPECT_EQ(order, Numbers(200));
    EXPECT_EQ(done, 200);
    EXPECT_TRUE(m_jobs->Ended().empty()); // they are quiet
}

TEST_P(JobsTest, MayBeStartedByWhatIsCalledBack) {
    int left = 5;
    std::function<void()> again = [&] {
        if (left-- > 0)
            Start(
                {.title = "Again"}, [] {}, [&] { again(); });
    };
    again();
    m_jobs->RunToEnd();
    EXPECT_EQ(left, -1);
    EXPECT_EQ(m_jobs->Ended().size(), 5U);
    m_jobs->ForgetEnded();
    EXPECT_TRUE(m_jobs->Ended().empty());
}

TEST_P(JobsTest, MayBeCancelledByWhatIsCalledBack) {
    std::atomic<bool> mayEnd = false;
    std::atomic<bool> hasEnded = false;
    Host host = MakeHost();
    host.begins = false;
    host.idle = [&] { mayEnd = true; };
    m_jobs = New<Manager>(std::move(host));
    std::promise<void> begun;
    Ref<IJob> runs;
    Start(
        {.title = "Cancels"}, [] {},
        [&] {
            if (GetParam() > 0)
                begun.get_future().wait();
            runs->Cancel();
            runs->Cancel();
        });
    Texts done;
    runs = Start(
        {.title = "Runs"},
        [&](JobProgress&) {
            begun.set_value();
            while (!mayEnd)
                std::this_thread::yield();
            hasEnded = true;
        },
        [&](JobResult<void>& result) {
            done.push_back(result.WasCancelled() ? "cancelled" : "done");
            EXPECT_EQ(hasEnded, GetParam() > 0); // not before its work
            mayEnd = true;
        });
    m_jobs->RunToEnd();
    EXPECT_EQ(done, Texts{GetParam() > 0 ? "done" : "cancelled"}); // the work didn't ask
    EXPECT_TRUE(m_shown.empty());
}

TEST_P(JobsTest, EndWithTheApplication) {
    bool called = false;
    std::promise<void> begun;
    auto hasBegun = begun.get_future();
    const auto runs = Start(
        {.title = "Runs", .canCancel = false},
        [&begun](JobProgress& progress) {
            begun.set_value();
            while (!progress.IsCancelled())
                std::this_thread::yield();
        },
        [&] { called = true; });
    const auto waits = Start(
        {.title = "Waits"}, [] {}, [&] { called = true; });
    if (GetParam() > 0)
        hasBegun.wait();
    EXPECT_TRUE(m_jobs->Stop(std::chrono::hours(1)));
    m_jobs->Deliver();
    EXPECT_FALSE(called);
    EXPECT_EQ(runs->State(), JobState::Cancelled);
    EXPECT_EQ(waits->State(), JobState::Cancelled);
    EXPECT_THROW(Start(
                     {.title = "Late"}, [] {}, detail::NoDone{}),
                 Failure);
}

TEST_P(JobsTest, RefuseWhatCannotBeStarted) {
    EXPECT_THROW(Start(
                     {}, [] {}, detail::NoDone{}),
                 Failure); // without a title
    if (GetParam() == 0)
        return; // work is in the right thread then
    Start(
        {.title = "Starts another"}, [&] { (void)m_jobs.Get()->Start({.title = "Inner"}, nullptr, ""); },
        detail::NoDone{});
    m_jobs->RunToEnd();
    ASSERT_EQ(m_shown.size(), 1U);
    EXPECT_EQ(m_shown.front().find("The job \"Inner\" is started by another thread"), 0U) << m_shown.front();
}

INSTANTIATE_TEST_SUITE_P(Threads, JobsTest, ::testing::Values(0U, 1U, 4U));

// Nor of a failure, which is shown as one of a window that has closed.
TEST(Jobs, DontCallAnItemThatIsNotInTheExplorerAnyMore) {
    class Bird final : public ExplorerItem<Bird> {
    public:
        using ExplorerItem<Bird>::Base;
    };
    Host host;
    host.mostThreads = 0;
    host.explorer = New<PanelForm>();
    Texts shown;
    host.guard = [&](const std::function<void()>& act) {
        try {
            act();
        } catch (const Failure& failure) {
            shown.push_back(failure.Description);
        }
    };
    const auto tree = host.explorer->AddControl("MSComctlLib.TreeCtrl.2", "tvw").As<TreeView>();
    const auto jobs = New<Manager>(std::move(host));
    Texts done;
    const auto start = [&](const Ref<Object>& owner, bool fails) {
        const auto work = [fails] {
            if (fails)
                Fail(5, "no seeds");
        };
        const auto note = [&](JobResult<void>&) { done.push_back("done"); };
        jobs->Start({.title = "Feed", .owner = owner},
                    std::make_unique<detail::WorkTask<decltype(work), decltype(note)>>(work, note), "");
    };
    const auto stays = New<Bird>();
    const auto goes = New<Bird>();
    const auto elsewhere = New<Bird>(); // never in the explorer: nothing is known of its end
    const char* key = "a";
    for (const auto& bird : {stays, goes}) {
        bird->Base()->NameSilently(key);
        bird->Base()->Initialize(New<ExplorerItemDef>());
        (void)tree->GetNodes()->Add("", NodeRelationship::First, key, key);
        key = "b";
    }
    for (const auto& bird : {stays, goes, elsewhere})
        for (const bool fails : {false, true})
            start(bird, fails);
    tree->GetNodes()->Remove("b");
    jobs->RunToEnd();
    EXPECT_EQ(done.size(), 4U);
    EXPECT_EQ(shown, Texts(3, "no seeds")); // none of those who are called back has taken it
    EXPECT_TRUE(jobs->Stop(std::chrono::hours(1)));
}

TEST(Jobs, KnowTheProcedureThatStartsThem) {
    struct Birds {
        static std::string Import() {
            return [] { return corvane::detail::ProcedureIn(CallPlace::current()); }();
        }
    };
#ifdef __cpp_lib_source_location
    EXPECT_EQ(Birds::Import().substr(0, 5), "Jobs_"); // a class within a test, whose name is the test's
    EXPECT_EQ(Birds::Import().find(' '), std::string::npos);
#else
    EXPECT_EQ(Birds::Import(), ""); // not "operator"
#endif
}

} // namespace corvane::jobs
