// A definition file with the places of its elements and attributes. The library's XML reader decides whether a file is
// well formed and what values are; it knows lines, but no columns, and of attributes neither. So the text is read a
// second time, by a scanner that keeps where everything is and relies on the first. A file that is plain for certain
// needs neither, see PlainSource.
#pragma once

#include "analysis/Arena.h"
#include "analysis/AttributeName.h"
#include "analysis/Findings.h"
#include "corvane/platform/IXmlService.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::check {

// Where something is in the text of a file. Lines and columns are worked out of it for findings alone.
using Spot = const char*;

// There is one for each of some hundred thousand values, so it is small.
class Attribute {
public:
    // In the text, the value behind the name.
    Attribute(const AttributeName& name, std::string_view written)
        : m_name(name.text.data()), m_value(written.data()),
          m_nameNumber(static_cast<std::uint32_t>(name.text.size()) & longest), m_knownName(name.number & 0x7FU),
          m_bad(0), m_valueNumber(static_cast<std::uint32_t>(written.size())) {}

    [[nodiscard]] std::string_view Name() const { return {m_name, m_nameNumber}; }
    // The same name elsewhere in the text.
    [[nodiscard]] AttributeName NameAt(const char* spot) const {
        return {{spot, m_nameNumber}, static_cast<std::uint8_t>(m_knownName)};
    }
    [[nodiscard]] bool Is(const AttributeName& name) const {
        return m_knownName == name.number && (m_knownName != 0 || Name() == name.text);
    }
    // UTF-8.
    [[nodiscard]] std::string_view Value() const { return {m_value, m_valueNumber}; }
    // The value as it is in the text.
    [[nodiscard]] std::string_view Written() const;
    // For one that reads otherwise than it is written.
    void SetValue(std::string_view value) {
        m_value = value.data();
        m_valueNumber = static_cast<std::uint32_t>(value.size());
    }

    // Whether it has been found to be no value of its kind.
    [[nodiscard]] bool IsBad() const { return m_bad != 0; }
    void SetBad() { m_bad = 1; }

    [[nodiscard]] Spot AtName() const { return m_name; }
    [[nodiscard]] Spot AtValue() const { return Written().data(); }

private:
    static constexpr std::uint32_t longest = 0xFFFFFF; // libxml2 reads no name beyond it

    const char* m_name;
    const char* m_value;
    std::uint32_t m_nameNumber : 24;
    std::uint32_t m_knownName : 7;
    std::uint32_t m_bad : 1;
    std::uint32_t m_valueNumber;
};

// Elements lie one behind the other in the order of their start tags: behind each what is below it.
struct Element {
    std::string_view name;
    std::span<Attribute> attributes;
    std::size_t below = 0; // how many elements, at all depths

    class Iterator {
    public:
        explicit Iterator(const Element* element) : m_element(element) {}
        const Element& operator*() const { return *m_element; }
        Iterator& operator++() {
            m_element += 1 + m_element->below;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return m_element != other.m_element; }

    private:
        const Element* m_element;
    };
    struct Range {
        const Element* first;
        const Element* endElement;
        [[nodiscard]] Iterator begin() const { return Iterator(first); }
        [[nodiscard]] Iterator end() const { return Iterator(endElement); }
    };
    [[nodiscard]] Range Children() const { return {this + 1, this + 1 + below}; }

    [[nodiscard]] Attribute* Find(const AttributeName& attributeName) const {
        for (Attribute& attribute : attributes)
            if (attribute.Is(attributeName))
                return &attribute;
        return nullptr;
    }
    // Empty when it isn't there.
    [[nodiscard]] std::string_view Value(const AttributeName& attributeName) const {
        const Attribute* attribute = Find(attributeName);
        return attribute ? attribute->Value() : std::string_view();
    }
    // Its "<".
    [[nodiscard]] Spot At() const { return name.data() - 1; }
    // Of the attribute's value, or of the element when it has none such.
    [[nodiscard]] Spot At(const AttributeName& attributeName) const;
};

// The root, with all elements behind it, of a text that is known to be well formed; a null pointer when there is none.
// Names and values point into the text, or into memory where they are written otherwise than they read; elements and
// attributes are in memory. An element that comes out of an entity isn't seen.
[[nodiscard]] const Element* ScanElements(const std::string& bytes, const Ref<IXmlDocument>& document, Arena& memory);

// A text that stays as long as the memory does, made of parts.
[[nodiscard]] std::string_view Stored(Arena& memory, std::initializer_list<std::string_view> parts);

// The lines of a text, which it goes through when it is asked for the first time.
class Lines {
public:
    [[nodiscard]] Position PositionOf(std::string_view text, Spot spot);
    // Behind the line of that number, from 1; the end of the text when it has fewer.
    [[nodiscard]] Spot EndOf(std::string_view text, Long line);

private:
    void Read(std::string_view text);

    std::vector<Spot> m_begins; // of each line
};

} // namespace corvane::check
