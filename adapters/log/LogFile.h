// A text file of lines that is turned over as it grows. Never fails: a line that can't be written goes to the error
// stream, after one notice.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace corvane {

class LogFile {
public:
    static constexpr std::size_t FileBytes = 1024 * 1024;
    static constexpr std::size_t FileCount = 5; // the present one and four before it

    // Nothing is made before the first line. An empty path means that there is no place for a log.
    explicit LogFile(std::string sPath);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    // On disk when the call returns. From any thread.
    void Write(std::string_view sLine) noexcept;
    [[nodiscard]] const std::string& Path() const { return m_sPath; }

private:
    struct Sink;

    void GiveUp(const char* sWhy) noexcept;

    std::string m_sPath;
    std::unique_ptr<Sink> m_pSink;
    std::mutex m_oMutex;
    bool m_bGivenUp = false;
};

} // namespace corvane
