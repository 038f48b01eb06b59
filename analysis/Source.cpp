#include "analysis/Source.h"

#include "adapters/common/Encoding.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace corvane::check {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool EndsName(char c) {
    return IsBlank(c) || c == '=' || c == '>' || c == '/';
}

bool NeedsTheParser(std::string_view written) {
    return written.find_first_of("&\t\n\r") != std::string_view::npos;
}

// Whether a value reads as it is written.
bool IsPlain(std::string_view written) {
    bool plain = true;
    for (const char c : written) // to the end, as that is faster than to look where to stop
        plain &= c >= ' ' && c != '&';
    return plain;
}

template <class T>
std::span<T> Copied(std::pmr::memory_resource& memory, const std::vector<T>& things) {
    if (things.empty())
        return {};
    auto* copy = static_cast<T*>(memory.allocate(things.size() * sizeof(T), alignof(T)));
    std::uninitialized_copy(things.begin(), things.end(), copy);
    return {copy, things.size()};
}

class Scanner {
public:
    Scanner(std::string_view text, std::pmr::memory_resource& memory) : m_text(text), m_memory(memory) {}

    std::span<Element> Run() {
        while (const char* next = Find('<')) {
            m_i = static_cast<std::size_t>(next - m_text.data());
            if (const char sign = m_i + 1 < m_text.size() ? m_text[m_i + 1] : '\0';
                sign != '!' && sign != '?' && sign != '/')
                StartTag(); // as most are
            else if (At("<!--"))
                SkipThrough("-->");
            else if (At("<![CDATA["))
                SkipThrough("]]>");
            else if (At("<?"))
                SkipThrough("?>");
            else if (At("<!"))
                SkipDeclaration();
            else
                EndTag();
        }
        while (!m_open.empty())
            Close();
        return Copied(m_memory, m_elements);
    }

    [[nodiscard]] bool IsPlainText() const { return m_plain; }

private:
    [[nodiscard]] const char* Find(char c) const {
        return m_i < m_text.size() ? static_cast<const char*>(std::memchr(m_text.data() + m_i, c, m_text.size() - m_i))
                                   : nullptr;
    }
    [[nodiscard]] bool At(std::string_view what) const { return m_text.substr(m_i, what.size()) == what; }
    [[nodiscard]] char Here() const { return m_i < m_text.size() ? m_text[m_i] : '\0'; }
    void SkipThrough(std::string_view end) {
        const std::size_t i = m_text.find(end, m_i);
        m_i = i == std::string_view::npos ? m_text.size() : i + end.size();
    }
    void SkipBlanks() {
        while (IsBlank(Here()))
            ++m_i;
    }

    // A document type, with the declarations in its brackets.
    void SkipDeclaration() {
        int brackets = 0;
        for (; m_i < m_text.size(); ++m_i) {
            if (At("<!--")) {
                SkipThrough("-->");
                --m_i;
            } else if (Here() == '"' || Here() == '\'') {
                m_i = std::min(m_text.find(Here(), m_i + 1), m_text.size() - 1);
            } else if (Here() == '[') {
                ++brackets;
            } else if (Here() == ']') {
                --brackets;
            } else if (Here() == '>' && brackets == 0) {
                ++m_i;
                return;
            }
        }
    }

    void EndTag() {
        if (!m_open.empty())
            Close();
        SkipThrough(">");
    }

    void Close() {
        m_elements[m_open.back()].below = m_elements.size() - m_open.back() - 1;
        m_open.pop_back();
    }

    [[nodiscard]] std::string_view Name() {
        const auto begin = m_text.begin() + static_cast<std::ptrdiff_t>(m_i);
        const auto end = std::find_if(begin, m_text.end(), EndsName);
        m_i = static_cast<std::size_t>(end - m_text.begin());
        return {begin, end};
    }

    void StartTag() {
        ++m_i;
        const std::string_view name = Name();
        m_attributes.clear();
        for (SkipBlanks(); m_i < m_text.size() && Here() != '>' && Here() != '/'; SkipBlanks())
            AddAttribute();
        if (m_open.empty())
            m_elements.clear(); // the root
        m_elements.push_back({name, Copied(m_memory, m_attributes)});
        const bool empty = Here() == '/';
        SkipThrough(">");
        if (!empty)
            m_open.push_back(m_elements.size() - 1);
    }

    void AddAttribute() {
        const std::string_view name = Name();
        while (m_i < m_text.size() && Here() != '"' && Here() != '\'')
            ++m_i;
        const char quote = Here();
        const std::size_t begin = std::min(++m_i, m_text.size());
        m_i = std::min(m_text.find(quote, begin), m_text.size());
        const std::string_view written = m_text.substr(begin, m_i - begin);
        m_attributes.emplace_back(name, written);
        m_plain = m_plain && IsPlain(written);
        ++m_i;
    }

    std::string_view m_text;
    std::pmr::memory_resource& m_memory;
    std::size_t m_i = 0;
    bool m_plain = true;
    std::vector<Element> m_elements;
    std::vector<std::size_t> m_open;
    std::vector<Attribute> m_attributes; // of the tag at hand
};

// Values that differ from what is written, from the document's elements, which are in the same order. nodes is empty
// where entities hold elements; values then stay as they are written.
void FillValues(std::span<Element> elements, const std::vector<Ref<IXmlNode>>& nodes,
                std::pmr::memory_resource& memory) {
    for (std::size_t i = 0; i < elements.size(); ++i)
        for (Attribute& attribute : elements[i].attributes) {
            const std::string_view written = attribute.Written();
            if (!nodes.empty() && NeedsTheParser(written))
                attribute.SetValue(Stored(memory, {nodes[i]->Attribute(attribute.Name()).value_or("")}));
            else if (!IsAscii(written))
                attribute.SetValue(Stored(memory, {DecodeWindows1252(written)}));
        }
}

} // namespace

std::string_view Attribute::Written() const {
    // The text has an end sign, should it end within a tag.
    const char* begin = m_name + m_nameNumber;
    while (*begin && *begin != '"' && *begin != '\'')
        ++begin;
    if (!*begin)
        return {begin, 0};
    const char* end = begin + 1;
    while (*end && *end != *begin)
        ++end;
    return {begin + 1, end};
}

Attribute* Element::Find(std::string_view attributeName) const {
    // Most names differ at their ends already, which is found without a call.
    for (Attribute& attribute : attributes)
        if (const std::string_view own = attribute.Name(); own.size() == attributeName.size() && !own.empty() &&
                                                           own.front() == attributeName.front() &&
                                                           own.back() == attributeName.back() && own == attributeName)
            return &attribute;
    return nullptr;
}

std::string_view Element::Value(std::string_view attributeName) const {
    const Attribute* attribute = Find(attributeName);
    return attribute ? attribute->Value() : std::string_view();
}

Spot Element::At(std::string_view attributeName) const {
    const Attribute* attribute = Find(attributeName);
    return attribute ? attribute->AtValue() : At();
}

const Element* ScanElements(const std::string& bytes, const Ref<IXmlDocument>& document,
                            std::pmr::memory_resource& memory) {
    Scanner scanner(bytes, memory);
    const std::span<Element> elements = scanner.Run();
    if (elements.empty())
        return nullptr;
    if (!scanner.IsPlainText()) {
        std::vector<Ref<IXmlNode>> nodes;
        if (const Ref<IXmlNode> node = document->SelectSingleNode("/*"))
            nodes = node->SelectNodes("//*");
        if (nodes.size() != elements.size())
            nodes.clear();
        FillValues(elements, nodes, memory);
    }
    return elements.data();
}

std::string_view Stored(std::pmr::memory_resource& memory, std::initializer_list<std::string_view> parts) {
    std::size_t length = 0;
    for (const std::string_view part : parts)
        length += part.size();
    auto* text = static_cast<char*>(memory.allocate(std::max<std::size_t>(length, 1), 1));
    char* end = text;
    for (const std::string_view part : parts)
        end = std::copy(part.begin(), part.end(), end);
    return {text, length};
}

void Lines::Read(std::string_view text) {
    if (!m_begins.empty())
        return;
    m_begins.push_back(text.data());
    for (std::size_t i = text.find('\n'); i != std::string_view::npos; i = text.find('\n', i + 1))
        m_begins.push_back(text.data() + i + 1);
}

Position Lines::PositionOf(std::string_view text, Spot spot) {
    Read(text);
    const auto next = std::upper_bound(m_begins.begin(), m_begins.end(), spot);
    return {static_cast<Long>(next - m_begins.begin()), static_cast<Long>(spot - *(next - 1)) + 1};
}

Spot Lines::EndOf(std::string_view text, Long line) {
    Read(text);
    const auto i = static_cast<std::size_t>(std::max<Long>(line, 0));
    return i < m_begins.size() ? m_begins[i] : text.data() + text.size();
}

} // namespace corvane::check
