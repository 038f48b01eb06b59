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
    explicit LogFile(std::string path);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    // On disk when the call returns. From any thread.
    void Write(std::string_view line) noexcept;
    [[nodiscard]] const std::string& Path() const { return m_path; }

private:
    struct Sink;

    void GiveUp(const char* why) noexcept;

    std::string m_path;
    std::unique_ptr<Sink> m_sink;
    std::mutex m_mutex;
    bool m_givenUp = false;
};

} // namespace corvane
