#include "adapters/catalogue/SourceTexts.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr std::string_view function = "Translated";

bool IsOfName(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

class SourceScanner {
public:
    SourceScanner(std::string_view source, const std::string& file, std::vector<DefinitionText>& texts)
        : m_source(source), m_file(file), m_texts(texts) {}

    void Scan() {
        while (m_i < m_source.size())
            if (Skip())
                continue;
            else if (IsOfName(m_source[m_i]))
                ReadName();
            else
                Advance();
    }

private:
    [[nodiscard]] bool At(std::string_view text) const { return m_source.substr(m_i).starts_with(text); }

    void Advance() {
        m_line += m_source[m_i] == '\n' ? 1 : 0;
        ++m_i;
    }

    void AdvanceTo(std::string_view end) {
        const std::size_t to = std::min(m_source.find(end, m_i), m_source.size() - end.size()) + end.size();
        while (m_i < to)
            Advance();
    }

    // Over what says nothing: comments, characters and strings that belong to no call.
    bool Skip() {
        if (At("//"))
            AdvanceTo("\n");
        else if (At("/*"))
            AdvanceTo("*/");
        else if (At("\""))
            (void)ReadString();
        else if (At("'"))
            SkipCharacter();
        else
            return false;
        return true;
    }

    void SkipCharacter() {
        Advance();
        while (m_i < m_source.size() && m_source[m_i] != '\'' && m_source[m_i] != '\n')
            m_i += m_source[m_i] == '\\' ? 2 : 1;
        m_i = std::min(m_i + 1, m_source.size());
    }

    void ReadName() {
        const std::size_t begin = m_i;
        while (m_i < m_source.size() && IsOfName(m_source[m_i]))
            ++m_i;
        if (m_source.substr(begin, m_i - begin) == function && At("("))
            ReadCall();
    }

    void ReadCall() {
        Advance();
        for (int depth = 1; depth > 0 && m_i < m_source.size();) {
            const char c = m_source[m_i];
            if (c == '"' && depth == 1) {
                AddText();
                continue;
            }
            if (IsOfName(c)) {
                ReadName(); // maybe another call, among the values
                continue;
            }
            if (Skip())
                continue;
            depth += c == '(' || c == '{' || c == '[' ? 1 : c == ')' || c == '}' || c == ']' ? -1 : 0;
            Advance();
        }
    }

    void SkipBetween() {
        while (m_i < m_source.size())
            if (At("//") || At("/*"))
                (void)Skip();
            else if (std::string_view(" \t\r\n").find(m_source[m_i]) != std::string_view::npos)
                Advance();
            else
                return;
    }

    void AddText() {
        const Long line = m_line;
        std::string text;
        while (At("\"")) { // pieces next to one another are one string
            text += ReadString();
            SkipBetween();
        }
        const bool known = std::any_of(m_texts.begin(), m_texts.end(), [&](const DefinitionText& other) {
            return other.key == sourceTextKey && other.text == text;
        });
        if (!text.empty() && !known)
            m_texts.push_back({sourceTextKey, std::move(text), m_file, line});
    }

    std::string ReadString() {
        std::string text;
        Advance();
        while (m_i < m_source.size() && m_source[m_i] != '"' && m_source[m_i] != '\n') {
            if (m_source[m_i] == '\\' && m_i + 1 < m_source.size()) {
                ++m_i;
                text += m_source[m_i] == 'n' ? '\n' : m_source[m_i] == 't' ? '\t' : m_source[m_i];
            } else {
                text += m_source[m_i];
            }
            Advance();
        }
        if (m_i < m_source.size())
            Advance();
        return text;
    }

    std::string_view m_source;
    const std::string& m_file;
    std::vector<DefinitionText>& m_texts;
    std::size_t m_i = 0;
    Long m_line = 1;
};

} // namespace

void AddSourceTexts(std::string_view source, const std::string& file, std::vector<DefinitionText>& texts) {
    SourceScanner(source, file, texts).Scan();
}

} // namespace corvane
