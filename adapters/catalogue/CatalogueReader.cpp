#include "adapters/catalogue/CatalogueReader.h"

#include "adapters/common/Encoding.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

constexpr std::string_view space = " \t\r";

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(space);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(space) + 1 - begin);
}

// Cuts the word off the text, with the blanks behind it.
bool Take(std::string_view& text, std::string_view word) {
    if (!text.starts_with(word))
        return false;
    text = Trimmed(text.substr(word.size()));
    return true;
}

// What the header says of the encoding; empty when it says nothing.
std::string CharsetIn(const std::string& header) {
    const std::size_t i = FoldText(header).find("charset=");
    if (i == std::string::npos)
        return {};
    const std::size_t begin = i + 8;
    return header.substr(begin, header.find_first_of(" \t\n;", begin) - begin);
}

} // namespace

bool CatalogueReader::Broken(const std::string& why) {
    m_faults.push_back({m_line, why});
    return false;
}

bool CatalogueReader::Read(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        ++m_line;
        const std::string_view line = Trimmed(text.substr(0, end));
        if (!IsUtf8(line))
            return Broken("isn't UTF-8; save the catalogue in that encoding");
        if (line.find('\0') != std::string_view::npos)
            return Broken("contains a zero byte, so it isn't text");
        if (!ReadLine(line))
            return false;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    if (!Finish())
        return false;
    const std::string charset = CharsetIn(m_header.translation);
    m_line = 1;
    if (!charset.empty() && !EqualText(charset, "UTF-8") && !EqualText(charset, "ASCII") &&
        !EqualText(charset, "CHARSET"))
        return Broken("says that it is written in " + charset + "; save it as UTF-8, and say so in its header");
    return true;
}

bool CatalogueReader::ReadLine(std::string_view line) {
    if (line.empty())
        return true;
    if (Take(line, "#~")) {
        if (line.starts_with("|"))
            return true; // what a vanished text was before
        if (m_pending.hasTranslation && !line.starts_with("\"") && !Finish())
            return false;
        m_pending.message.vanished = true;
        return ReadStatement(line);
    }
    if (!line.starts_with("#"))
        return ReadStatement(line);
    if (m_pending.hasTranslation && !Finish())
        return false;
    m_string = nullptr;
    if (Take(line, "#|")) {
        if (Take(line, "msgctxt"))
            m_previous = &m_ignored;
        else if (Take(line, "msgid"))
            m_previous = &m_pending.message.previous;
        return !m_previous || ReadString(line, *m_previous);
    }
    ReadComment(line);
    return true;
}

void CatalogueReader::ReadComment(std::string_view line) {
    CatalogueMessage& message = m_pending.message;
    if (Take(line, "#,"))
        message.unsure = message.unsure || line.find("fuzzy") != std::string_view::npos;
    else if (Take(line, "#:"))
        message.place = message.place.empty() ? std::string(line) : message.place + " " + std::string(line);
    else if (!line.starts_with("#."))
        message.remarks.emplace_back(Trimmed(line.substr(1)));
}

bool CatalogueReader::ReadStatement(std::string_view line) {
    if (line.starts_with("\"")) {
        if (!m_string)
            return Broken("there is a string without msgctxt, msgid or msgstr before it");
        return ReadString(line, *m_string);
    }
    if (Take(line, "msgid_plural") || Take(line, "msgstr["))
        return Broken("plural forms have no meaning for texts of definition files; take them out");
    CatalogueMessage& message = m_pending.message;
    if (Take(line, "msgctxt")) {
        if (m_pending.hasTranslation && !Finish())
            return false;
        if (m_pending.hasText)
            return Broken("msgstr is missing before this msgctxt");
        m_string = &message.key;
    } else if (Take(line, "msgid")) {
        if (m_pending.hasTranslation && !Finish())
            return false;
        if (m_pending.hasText)
            return Broken("msgstr is missing before this msgid");
        m_pending.hasText = true;
        message.line = m_line;
        m_string = &message.text;
    } else if (Take(line, "msgstr")) {
        if (!m_pending.hasText || m_pending.hasTranslation)
            return Broken("msgid is missing before this msgstr");
        m_pending.hasTranslation = true;
        m_string = &message.translation;
    } else {
        return Broken("\"" + std::string(FirstCharacters(line, 20)) +
                      "\" isn't a line of a catalogue; expected: msgctxt, msgid, msgstr, a string or a comment");
    }
    return ReadString(line, *m_string);
}

bool CatalogueReader::ReadString(std::string_view quoted, std::string& text) {
    if (quoted.size() < 2 || quoted.front() != '"' || quoted.back() != '"')
        return Broken("a string must stand between two quotation marks on one line");
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        if (quoted[i] == '"')
            return Broken("a quotation mark in a string needs a backslash before it");
        if (quoted[i] != '\\') {
            text += quoted[i];
            continue;
        }
        static constexpr std::string_view letters = "nrt\"\\";
        static constexpr std::string_view meanings = "\n\r\t\"\\";
        const std::size_t letter = i + 2 < quoted.size() ? letters.find(quoted[++i]) : std::string_view::npos;
        if (letter == std::string_view::npos)
            return Broken("a backslash must stand before n, r, t, a quotation mark or a backslash");
        text += meanings[letter];
    }
    return true;
}

bool CatalogueReader::Finish() {
    m_string = nullptr;
    m_previous = nullptr;
    Pending pending = std::exchange(m_pending, {});
    CatalogueMessage& message = pending.message;
    if (!pending.hasText)
        return true; // comments at the end
    if (!pending.hasTranslation)
        return Broken("msgstr is missing behind the last msgid");
    if (message.text.empty() && message.key.empty()) {
        m_header = std::move(message);
        return true;
    }
    m_messages.push_back(std::move(message));
    return true;
}

} // namespace corvane
