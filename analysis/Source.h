// A definition file with the places of its elements and attributes. The library's XML reader decides whether a file is
// well formed and what values are; it knows lines, but no columns, and of attributes neither. So the text is read a
// second time, by a scanner that keeps where everything stands and relies on the first.
#pragma once

#include "analysis/Findings.h"
#include "corvane/platform/IXmlService.h"

#include <cstdint>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::check {

// Where something stands in the text of a file. Lines and columns are worked out of it for findings alone.
using Spot = const char*;

// There is one for each of some hundred thousand values, so it is small.
class Attribute {
public:
    // In the text, the value behind the name.
    Attribute(std::string_view sName, std::string_view sWritten)
        : m_pName(sName.data()), m_pValue(sWritten.data()),
          m_nName(static_cast<std::uint32_t>(sName.size()) & nLongest), m_bBad(0),
          m_nValue(static_cast<std::uint32_t>(sWritten.size())) {}

    [[nodiscard]] std::string_view Name() const { return {m_pName, m_nName}; }
    // UTF-8.
    [[nodiscard]] std::string_view Value() const { return {m_pValue, m_nValue}; }
    // The value as it stands in the text.
    [[nodiscard]] std::string_view Written() const;
    // For one that reads otherwise than it is written.
    void SetValue(std::string_view sValue) {
        m_pValue = sValue.data();
        m_nValue = static_cast<std::uint32_t>(sValue.size());
    }

    // Whether it has been found to be no value of its kind.
    [[nodiscard]] bool IsBad() const { return m_bBad != 0; }
    void SetBad() { m_bBad = 1; }

    [[nodiscard]] Spot AtName() const { return m_pName; }
    [[nodiscard]] Spot AtValue() const { return Written().data(); }

private:
    static constexpr std::uint32_t nLongest = 0x7FFFFFFF; // as libxml2 reads no file beyond it

    const char* m_pName;
    const char* m_pValue;
    std::uint32_t m_nName : 31;
    std::uint32_t m_bBad : 1;
    std::uint32_t m_nValue;
};

// Elements lie one behind the other in the order of their start tags: behind each what stands below it.
struct Element {
    std::string_view sName;
    std::span<Attribute> aAttributes;
    std::size_t nBelow = 0; // how many elements, at all depths

    class Iterator {
    public:
        explicit Iterator(const Element* pElement) : m_pElement(pElement) {}
        const Element& operator*() const { return *m_pElement; }
        Iterator& operator++() {
            m_pElement += 1 + m_pElement->nBelow;
            return *this;
        }
        bool operator!=(const Iterator& oOther) const { return m_pElement != oOther.m_pElement; }

    private:
        const Element* m_pElement;
    };
    struct Range {
        const Element* pFirst;
        const Element* pEnd;
        [[nodiscard]] Iterator begin() const { return Iterator(pFirst); }
        [[nodiscard]] Iterator end() const { return Iterator(pEnd); }
    };
    [[nodiscard]] Range Children() const { return {this + 1, this + 1 + nBelow}; }

    [[nodiscard]] Attribute* Find(std::string_view sAttribute) const;
    // Empty when it isn't there.
    [[nodiscard]] std::string_view Value(std::string_view sAttribute) const;
    // Its "<".
    [[nodiscard]] Spot At() const { return sName.data() - 1; }
    // Of the attribute's value, or of the element when it has none such.
    [[nodiscard]] Spot At(std::string_view sAttribute) const;
};

// The root, with all elements behind it, of a text that is known to be well formed; a null pointer when there is none.
// Names and values point into the text, or into oMemory where they are written otherwise than they read; elements and
// attributes stand in oMemory. An element that comes out of an entity isn't seen.
[[nodiscard]] const Element* ScanElements(const std::string& sBytes, const Ref<IXmlDocument>& oDocument,
                                          std::pmr::memory_resource& oMemory);

// A text that stays as long as the memory does, made of parts.
[[nodiscard]] std::string_view Kept(std::pmr::memory_resource& oMemory, std::initializer_list<std::string_view> aParts);

// The lines of a text, which it goes through when it is asked for the first time.
class Lines {
public:
    [[nodiscard]] Position PositionOf(std::string_view sText, Spot pSpot);
    // Behind the line of that number, from 1; the end of the text when it has fewer.
    [[nodiscard]] Spot EndOf(std::string_view sText, Long lLine);

private:
    void Read(std::string_view sText);

    std::vector<Spot> m_aBegins; // of each line
};

} // namespace corvane::check
