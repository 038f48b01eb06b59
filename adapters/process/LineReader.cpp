#include "adapters/process/LineReader.h"

namespace corvane {

std::optional<std::string> LineReader::Next() {
    const std::size_t end = m_bytes.find('\n', m_searched);
    if (end == std::string::npos) {
        m_bytes.erase(0, m_begin);
        m_begin = 0;
        m_searched = m_bytes.size();
        return std::nullopt;
    }
    std::string line = m_bytes.substr(m_begin, end - m_begin);
    m_begin = m_searched = end + 1;
    return line;
}

std::string LineReader::TakeRest() {
    std::string rest = m_bytes.substr(m_begin);
    m_bytes.clear();
    m_begin = m_searched = 0;
    return rest;
}

} // namespace corvane
