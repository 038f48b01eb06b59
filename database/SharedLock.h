// A lock that any number of programs hold together, so that each knows at its start whether it is the only one. The
// system releases it when its holder ends, however that happens.
#pragma once

#include <string>

namespace corvane::database {

class __attribute__((visibility("default"))) SharedLock {
public:
    // Creates the file, which stays. Where it can't be created there is no lock, and no other holder is noticed.
    explicit SharedLock(const std::string& path);
    ~SharedLock();
    SharedLock(const SharedLock&) = delete;
    SharedLock& operator=(const SharedLock&) = delete;

    // Whether another held it when this one took it.
    [[nodiscard]] bool WasHeld() const { return m_wasHeld; }

private:
    int m_file;
    bool m_wasHeld = false;
};

} // namespace corvane::database
