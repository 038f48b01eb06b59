#include "adapters/log/LogFile.h"

#include <cstdio>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <stdexcept>

namespace corvane {

struct LogFile::Sink {
    explicit Sink(const std::string& sPath) : oFile(sPath, FileBytes, FileCount - 1) {
        oFile.set_formatter(std::make_unique<spdlog::pattern_formatter>("%v", spdlog::pattern_time_type::local, "\n"));
    }
    spdlog::sinks::rotating_file_sink_st oFile;
};

LogFile::LogFile(std::string sPath) : m_sPath(std::move(sPath)) {}

LogFile::~LogFile() = default;

void LogFile::GiveUp(const char* sWhy) noexcept {
    std::fprintf(stderr, "The log \"%s\" can't be written, so its lines go here: %s\n", m_sPath.c_str(), sWhy);
    m_bGivenUp = true;
    m_pSink.reset();
}

void LogFile::Write(std::string_view sLine) noexcept {
    const std::lock_guard oLock(m_oMutex);
    if (!m_bGivenUp) {
        try {
            if (m_sPath.empty())
                throw std::runtime_error("there is no home folder");
            if (!m_pSink)
                m_pSink = std::make_unique<Sink>(m_sPath);
            m_pSink->oFile.log({spdlog::string_view_t(), spdlog::level::err, {sLine.data(), sLine.size()}});
            m_pSink->oFile.flush();
            return;
        } catch (const std::exception& oException) {
            GiveUp(oException.what());
        } catch (...) {
            GiveUp("an unknown failure");
        }
    }
    std::fprintf(stderr, "%.*s\n", static_cast<int>(sLine.size()), sLine.data());
}

} // namespace corvane
