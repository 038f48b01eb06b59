#include "jobs/Keys.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace corvane::jobs {

namespace {

using Texts = std::vector<std::string>;

std::vector<Number> ObstaclesOf(const Keys& keys, Number job) {
    std::vector<Number> found;
    for (const auto& obstacle : keys.Obstacles(job))
        found.push_back(obstacle.job);
    return found;
}

} // namespace

TEST(Keys, WritersWaitForAllAndReadersForWriters) {
    Keys keys;
    keys.Add(1, {"a"}, {});
    keys.Add(2, {"A"}, {});
    keys.Add(3, {"b"}, {"a"}); // waits for both readers
    keys.Add(4, {"a", "a"}, {});
    keys.Add(5, {}, {"b"}); // waits for 3, which waits itself
    keys.Add(6, {"a"}, {"a"});
    EXPECT_TRUE(keys.MayBegin(1) && keys.MayBegin(2));
    EXPECT_TRUE(keys.MayBegin(99)); // has no keys
    EXPECT_EQ(ObstaclesOf(keys, 3), (std::vector<Number>{1, 2}));
    EXPECT_EQ(ObstaclesOf(keys, 4), (std::vector<Number>{3}));
    EXPECT_EQ(ObstaclesOf(keys, 6), (std::vector<Number>{1, 2, 3, 4}));
    EXPECT_EQ(keys.Obstacles(5).front().key, "b");

    EXPECT_TRUE(keys.Remove(2).empty());
    EXPECT_EQ(keys.Remove(1), (std::vector<Number>{3}));
    EXPECT_EQ(keys.Remove(3), (std::vector<Number>{4, 5}));
    EXPECT_EQ(keys.Remove(4), (std::vector<Number>{6}));
    EXPECT_TRUE(keys.Remove(5).empty());
    EXPECT_TRUE(keys.Remove(6).empty());
    EXPECT_TRUE(keys.Remove(6).empty()); // has gone already
}

// Whatever is declared: those that run don't conflict, everyone gets their turn, and in order.
TEST(Keys, NeitherConflictNorWaitForEver) {
    for (unsigned seed = 0; seed < 30; ++seed) {
        std::mt19937 random(seed);
        const Texts names{"a", "b", "c", "d"};
        const auto some = [&] {
            Texts chosen;
            std::copy_if(names.begin(), names.end(), std::back_inserter(chosen),
                         [&](auto&) { return random() % 3 == 0; });
            return chosen;
        };
        Keys keys;
        std::map<Number, std::pair<Texts, Texts>> jobs;
        std::set<Number> running;
        for (Number job = 1; job <= 40; ++job) {
            jobs[job] = {some(), some()};
            keys.Add(job, jobs[job].first, jobs[job].second);
            if (keys.MayBegin(job))
                running.insert(job);
        }
        const auto uses = [](const Texts& texts, const Texts& others) {
            return std::find_first_of(texts.begin(), texts.end(), others.begin(), others.end()) != texts.end();
        };
        std::size_t ended = 0;
        while (!running.empty()) {
            for (const Number one : running)
                for (const Number other : running)
                    if (one != other) {
                        ASSERT_FALSE(uses(jobs[one].second, jobs[other].second)) << seed;
                        ASSERT_FALSE(uses(jobs[one].second, jobs[other].first)) << seed;
                    }
            auto it = std::next(running.begin(), static_cast<long>(random() % running.size()));
            const Number job = *it;
            running.erase(it);
            ++ended;
            for (const Number next : keys.Remove(job))
                running.insert(next);
        }
        ASSERT_EQ(ended, jobs.size()) << seed;
    }
}

} // namespace corvane::jobs
