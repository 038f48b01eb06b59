#include "adapters/ini/IniReader.h"

#include "adapters/common/Encoding.h"
#include "adapters/common/Paths.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <charconv>
#include <ini.h>
#include <limits>
#include <vector>

namespace corvane {

namespace {

std::string_view WithoutBlanks(std::string_view text) {
    constexpr const char* blanks = " \t\r\v\f";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Hands inih its lines. inih takes no more than about 200 bytes of a line, sees a comment in " ;" and a continuation in
// an indented line, none of which holds for these files: so a value waits here, and inih sees its number.
struct Lines {
    std::string_view rest;
    std::vector<std::string_view> values;

    static char* Next(char* buffer, int bufferSize, void* userData) {
        auto& lines = *static_cast<Lines*>(userData);
        if (lines.rest.empty())
            return nullptr;
        const std::size_t end = std::min(lines.rest.find('\n'), lines.rest.size());
        const std::string_view line = WithoutBlanks(lines.rest.substr(0, end));
        lines.rest.remove_prefix(std::min(end + 1, lines.rest.size()));
        std::string given(line);
        const std::size_t sign = line.find('=');
        if (line.starts_with(';') || line.starts_with('[')) {
            // as it is
        } else if (sign == std::string_view::npos || line.substr(0, sign).find(':') != std::string_view::npos) {
            given.clear(); // no key: only inih would take a colon for the sign
        } else {
            given = std::string(line.substr(0, sign)) + "=" + std::to_string(lines.values.size());
            lines.values.push_back(WithoutBlanks(line.substr(sign + 1)));
        }
        if (given.size() + 2 > static_cast<std::size_t>(bufferSize))
            given.clear(); // no name is that long
        given += '\n';
        given.copy(buffer, given.size());
        buffer[given.size()] = '\0';
        return buffer;
    }
};

struct Search {
    Lines lines;
    std::string_view section;
    std::string_view key;
    std::optional<std::string> value;

    static int OnEntry(void* userData, const char* sectionName, const char* keyName, const char* number) {
        auto& search = *static_cast<Search*>(userData);
        if (!search.value && EqualText(WithoutBlanks(sectionName), search.section) && EqualText(keyName, search.key)) {
            std::size_t i = 0;
            const std::string_view digits = number;
            std::from_chars(digits.data(), digits.data() + digits.size(), i);
            if (i < search.lines.values.size())
                search.value = std::string(search.lines.values[i]);
        }
        return 1;
    }
};

} // namespace

std::optional<std::string> IniReader::Value(std::string_view file, std::string_view section, std::string_view key) {
    const std::optional<std::string> path = FindPath(file);
    std::optional<std::string> bytes = path ? ReadBytes(*path) : std::nullopt;
    if (!bytes)
        return std::nullopt;
    std::string text = IsUtf8(*bytes) ? *std::move(bytes) : DecodeWindows1252(*bytes);
    if (text.starts_with("\xEF\xBB\xBF"))
        text.erase(0, 3);
    std::replace(text.begin(), text.end(), '\0', ' ');
    Search search{{text, {}}, section, key, std::nullopt};
    ini_parse_stream(&Lines::Next, &search.lines, &Search::OnEntry, &search);
    return search.value;
}

Long IniReader::ReadInteger(std::string_view file, std::string_view section, std::string_view key,
                            Long defaultNumber) const {
    const std::optional<std::string> value = Value(file, section, key);
    if (!value)
        return defaultNumber;
    std::string_view digits = *value;
    if (digits.starts_with('+') && !digits.starts_with("+-"))
        digits.remove_prefix(1);
    Long number = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec == std::errc::result_out_of_range)
        return digits.starts_with('-') ? std::numeric_limits<Long>::min() : std::numeric_limits<Long>::max();
    return number;
}

std::string IniReader::ReadString(std::string_view file, std::string_view section, std::string_view key,
                                  std::string_view defaultText, std::size_t maximum) const {
    const std::optional<std::string> value = Value(file, section, key);
    return std::string(FirstCharacters(value ? std::string_view(*value) : defaultText, maximum));
}

} // namespace corvane
