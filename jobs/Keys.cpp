#include "jobs/Keys.h"

#include "corvane/base/Text.h"

#include <algorithm>

namespace corvane::jobs {

void Keys::Add(Number job, const std::vector<std::string>& reads, const std::vector<std::string>& writes) {
    std::vector<Use> uses;
    const auto add = [&](const std::string& key, bool doesWrite) {
        std::string folded = FoldText(key);
        const bool known = std::any_of(uses.begin(), uses.end(), [&](const Use& use) { return use.folded == folded; });
        if (known)
            return;
        Users& users = m_users[folded];
        (doesWrite ? users.writers : users.readers).insert(job);
        uses.push_back({key, std::move(folded), doesWrite});
    };
    for (const std::string& key : writes)
        add(key, true);
    for (const std::string& key : reads)
        add(key, false);
    if (!uses.empty())
        m_uses.emplace(job, std::move(uses));
}

bool Keys::IsFree(const Use& use, Number job) const {
    const Users& users = m_users.at(use.folded);
    const auto isFirst = [job](const std::set<Number>& others) { return others.empty() || *others.begin() >= job; };
    return isFirst(users.writers) && (!use.writes || isFirst(users.readers));
}

bool Keys::MayBegin(Number job) const {
    const auto it = m_uses.find(job);
    return it == m_uses.end() ||
           std::all_of(it->second.begin(), it->second.end(), [&](const Use& use) { return IsFree(use, job); });
}

std::vector<Number> Keys::Remove(Number job) {
    const auto it = m_uses.find(job);
    if (it == m_uses.end())
        return {};
    const std::vector<Use> uses = std::move(it->second);
    m_uses.erase(it);
    std::set<Number> next;
    for (const Use& use : uses) {
        const auto place = m_users.find(use.folded);
        Users& users = place->second;
        (use.writes ? users.writers : users.readers).erase(job);
        const auto writer = users.writers.begin();
        if (writer != users.writers.end())
            next.insert(*writer);
        if (use.writes) // who reads has waited for no reader
            for (const Number reader : users.readers)
                if (writer == users.writers.end() || reader < *writer)
                    next.insert(reader);
        if (users.readers.empty() && users.writers.empty())
            m_users.erase(place);
    }
    std::vector<Number> free;
    std::copy_if(next.begin(), next.end(), std::back_inserter(free), [&](Number other) { return MayBegin(other); });
    return free;
}

std::vector<Keys::Obstacle> Keys::Obstacles(Number job) const {
    const auto it = m_uses.find(job);
    if (it == m_uses.end())
        return {};
    std::map<Number, std::string> found;
    for (const Use& use : it->second) {
        const Users& users = m_users.at(use.folded);
        for (const auto* others : {&users.writers, use.writes ? &users.readers : nullptr})
            if (others)
                for (auto other = others->begin(); other != others->end() && *other < job; ++other)
                    found.emplace(*other, use.key);
    }
    std::vector<Obstacle> obstacles;
    for (auto& [other, key] : found)
        obstacles.push_back({other, std::move(key)});
    return obstacles;
}

} // namespace corvane::jobs
