// Who may begin: jobs in order of their numbers, with the keys that each reads and writes. A job waits for those with
// smaller numbers only, so none can wait for one another.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace corvane::jobs {

using Number = std::uint64_t;

class Keys {
public:
    // Numbers grow. A key that is both read and written is written.
    void Add(Number job, const std::vector<std::string>& reads, const std::vector<std::string>& writes);
    [[nodiscard]] bool MayBegin(Number job) const;
    // The job has ended. Returns those that may begin by now and couldn't before, and maybe some that already could.
    [[nodiscard]] std::vector<Number> Remove(Number job);

    struct Obstacle {
        Number job;
        std::string key;
    };
    // What the job waits for: each other job once, by the first of the keys.
    [[nodiscard]] std::vector<Obstacle> Obstacles(Number job) const;

private:
    struct Users {
        std::set<Number> readers;
        std::set<Number> writers;
    };
    struct Use {
        std::string key;    // as it was written
        std::string folded; // as it is compared
        bool writes;
    };

    [[nodiscard]] bool IsFree(const Use& use, Number job) const;

    std::map<std::string, Users> m_users;      // by folded key
    std::map<Number, std::vector<Use>> m_uses; // of the jobs that have any
};

} // namespace corvane::jobs
