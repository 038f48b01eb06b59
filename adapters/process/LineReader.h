// Lines out of bytes that come in pieces.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class LineReader {
public:
    explicit LineReader(std::size_t longest) : m_longest(longest) {}

    void Add(std::string_view bytes) { m_bytes.append(bytes); }
    // The next whole line, without its line feed; nothing while there is none.
    [[nodiscard]] std::optional<std::string> Next();
    [[nodiscard]] bool HasNext() const { return m_bytes.find('\n', m_searched) != std::string::npos; }
    // What has come behind the last line feed.
    [[nodiscard]] std::string TakeRest();
    // Whether the line that is coming in is longer than any may be.
    [[nodiscard]] bool IsTooLong() const {
        return m_bytes.size() - m_begin > m_longest && m_searched == m_bytes.size();
    }

private:
    std::size_t m_longest;
    std::string m_bytes;
    std::size_t m_begin = 0;    // of the next line
    std::size_t m_searched = 0; // no line feed between the two
};

} // namespace corvane
