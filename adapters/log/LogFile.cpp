#include "adapters/log/LogFile.h"

#include <cstdio>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <stdexcept>

namespace corvane {

struct LogFile::Sink {
    explicit Sink(const std::string& path) : file(path, FileBytes, FileCount - 1) {
        file.set_formatter(std::make_unique<spdlog::pattern_formatter>("%v", spdlog::pattern_time_type::local, "\n"));
    }
    spdlog::sinks::rotating_file_sink_st file;
};

LogFile::LogFile(std::string path) : m_path(std::move(path)) {}

LogFile::~LogFile() = default;

void LogFile::GiveUp(const char* why) noexcept {
    std::fprintf(stderr, "The log \"%s\" can't be written, so its lines go here: %s\n", m_path.c_str(), why);
    m_givenUp = true;
    m_sink.reset();
}

void LogFile::Write(std::string_view line) noexcept {
    const std::lock_guard lock(m_mutex);
    if (!m_givenUp) {
        try {
            if (m_path.empty())
                throw std::runtime_error("there is no home folder");
            if (!m_sink)
                m_sink = std::make_unique<Sink>(m_path);
            m_sink->file.log({spdlog::string_view_t(), spdlog::level::err, {line.data(), line.size()}});
            m_sink->file.flush();
            return;
        } catch (const std::exception& exception) {
            GiveUp(exception.what());
        } catch (...) {
            GiveUp("an unknown failure");
        }
    }
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

} // namespace corvane
