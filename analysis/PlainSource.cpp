#include "analysis/PlainSource.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace corvane::check {

namespace {

// Each character by what it may be. All are ASCII, and control characters are in none of the classes but blanks.
enum CharacterClass : std::uint8_t {
    Blank = 1,     // between elements and attributes
    NameStart = 2, // the first of a name
    NamePart = 4,  // any other of a name
    ValuePart = 8  // of a value; both quotation marks
};

constexpr auto classes = [] {
    std::array<std::uint8_t, 256> table{};
    for (unsigned c = ' '; c <= '~'; ++c) {
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        const bool isDigit = c >= '0' && c <= '9';
        if (isLetter || c == '_')
            table[c] |= NameStart;
        if (isLetter || isDigit || c == '_' || c == '-' || c == '.')
            table[c] |= NamePart;
        if (c != '<' && c != '&')
            table[c] |= ValuePart;
    }
    for (const char c : {' ', '\t', '\n', '\r'})
        table[static_cast<unsigned char>(c)] |= Blank;
    return table;
}();

bool Is(char c, std::uint8_t which) {
    return (classes[static_cast<unsigned char>(c)] & which) != 0;
}

// What it reads it reads by the strictest rules, and at the first doubt it gives up.
class PlainScanner {
public:
    PlainScanner(std::string_view text, Arena& memory)
        : m_here(text.data()), m_end(text.data() + text.size()), m_memory(memory),
          m_attributes(memory.RoomFor<Attribute>(text.size() / shortestAttribute + 1)), m_nextAttribute(m_attributes) {
        constexpr std::size_t usualElement = 80; // in characters
        m_elements.reserve(text.size() / usualElement + 1);
    }

    const Element* Run() {
        const bool isPlain = Declaration() && Content();
        m_memory.FreeFrom(isPlain ? m_nextAttribute : m_attributes);
        if (!isPlain)
            return nullptr;
        Element* elements = m_memory.RoomFor<Element>(m_elements.size());
        std::uninitialized_copy(m_elements.begin(), m_elements.end(), elements);
        return elements;
    }

private:
    static constexpr std::size_t shortestAttribute = 4; // characters, as in a=""
    static constexpr std::size_t deepest = 32;          // levels of elements, far below the reader's limit
    static constexpr std::ptrdiff_t longestValue = 64 * 1024;

    [[nodiscard]] bool At(std::string_view what) const {
        return static_cast<std::size_t>(m_end - m_here) >= what.size() &&
               std::memcmp(m_here, what.data(), what.size()) == 0;
    }
    bool Take(std::string_view what) {
        const bool isHere = At(what);
        m_here += isHere ? what.size() : 0;
        return isHere;
    }
    bool Take(char c) {
        const bool isHere = m_here < m_end && *m_here == c;
        m_here += isHere ? 1 : 0;
        return isHere;
    }
    // All that follow one another; how many.
    std::size_t Skip(std::uint8_t which) {
        const char* begin = m_here;
        while (m_here < m_end && Is(*m_here, which))
            ++m_here;
        return static_cast<std::size_t>(m_here - begin);
    }

    // Only at the very beginning. The encoding doesn't count, but its name must be one.
    bool Declaration() {
        if (!Take("<?xml version="))
            return true;
        if (!Take("\"1.0\"") && !Take("'1.0'"))
            return false;
        if (Take(" encoding=\"")) {
            if (m_here == m_end || !Is(*m_here, NameStart) || *m_here == '_')
                return false;
            Skip(NamePart);
            if (!Take('"'))
                return false;
        }
        Skip(Blank);
        return Take("?>");
    }

    // The root and what is around it. A text that isn't blank between elements is a doubt.
    bool Content() {
        while (Skip(Blank), m_here < m_end) {
            if (Take("<!--")) {
                if (!Comment())
                    return false;
            } else if (!Take('<') || !(Take('/') ? EndTag() : StartTag())) {
                return false;
            }
        }
        return m_open.empty() && !m_elements.empty();
    }

    bool Comment() {
        while (m_here < m_end && (Is(*m_here, ValuePart | Blank) || *m_here == '<' || *m_here == '&'))
            if (Take("--"))
                return Take('>');
            else
                ++m_here;
        return false;
    }

    bool StartTag() {
        if (m_open.empty() && !m_elements.empty())
            return false; // a second root
        const Element* before = m_elements.empty() ? nullptr : &m_elements.back();
        const Attribute* likely = before ? before->attributes.data() : nullptr;
        const Attribute* likelyEnd = before ? likely + before->attributes.size() : nullptr;
        const std::string_view name = Name();
        if (name.empty() || m_open.size() == deepest)
            return false;
        Attribute* first = m_nextAttribute;
        std::uint64_t seen = 0; // by the numbers of names
        while (Skip(Blank) > 0 && m_here < m_end && *m_here != '>' && *m_here != '/') {
            if (!AddAttribute(likely < likelyEnd ? likely : nullptr, seen))
                return false;
            likely += likely < likelyEnd ? 1 : 0;
        }
        m_elements.push_back({name, {first, m_nextAttribute}});
        if (Take("/>"))
            return true;
        m_open.push_back(m_elements.size() - 1);
        return Take('>');
    }

    bool EndTag() {
        if (m_open.empty())
            return false;
        Element& element = m_elements[m_open.back()];
        element.below = m_elements.size() - m_open.back() - 1;
        m_open.pop_back();
        if (!Take(element.name))
            return false;
        Skip(Blank);
        return Take('>');
    }

    // Empty when there is none.
    std::string_view Name() {
        const char* begin = m_here;
        if (m_here < m_end && Is(*m_here, NameStart))
            Skip(NamePart);
        return {begin, m_here};
    }

    // Elements mostly have the attributes of the one before, in the same order: likely is such.
    bool AddAttribute(const Attribute* likely, std::uint64_t& seen) {
        const AttributeName name = NameOfAttribute(likely);
        const std::uint64_t bit = std::uint64_t{1} << name.number;
        if (name.number == 0 || (seen & bit) != 0 || !Take('='))
            return false; // what isn't of the format, or is there twice
        seen |= bit;
        const char quote = m_here < m_end ? *m_here : '\0';
        if (quote != '"' && quote != '\'')
            return false;
        const char* begin = ++m_here;
        while (m_here < m_end && *m_here != quote && Is(*m_here, ValuePart))
            ++m_here;
        const std::string_view value(begin, m_here);
        if (!Take(quote) || m_here - begin > longestValue)
            return false;
        new (m_nextAttribute++) Attribute(name, value);
        return true;
    }

    [[nodiscard]] AttributeName NameOfAttribute(const Attribute* likely) {
        if (likely) {
            const std::string_view name = likely->Name();
            if (static_cast<std::size_t>(m_end - m_here) > name.size() && m_here[name.size()] == '=' && At(name)) {
                const char* spot = m_here;
                m_here += name.size();
                return likely->NameAt(spot);
            }
        }
        return Name();
    }

    const char* m_here;
    const char* m_end;
    Arena& m_memory;
    Attribute* m_attributes; // of all elements
    Attribute* m_nextAttribute;
    std::vector<Element> m_elements;
    std::vector<std::size_t> m_open;
};

static_assert(std::size(names::known) < 64, "the names of an element are noted in the bits of one number");

} // namespace

const Element* ScanPlainElements(std::string_view bytes, Arena& memory) {
    return PlainScanner(bytes, memory).Run();
}

} // namespace corvane::check
