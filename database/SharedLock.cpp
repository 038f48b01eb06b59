#include "database/SharedLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace corvane::database {

SharedLock::SharedLock(const std::string& path) : m_file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (m_file < 0)
        return;
    m_wasHeld = ::flock(m_file, LOCK_EX | LOCK_NB) != 0;
    ::flock(m_file, LOCK_SH);
}

SharedLock::~SharedLock() {
    if (m_file >= 0)
        ::close(m_file);
}

} // namespace corvane::database
