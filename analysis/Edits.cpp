#include "analysis/Edits.h"

#include <cctype>

namespace corvane::check {

namespace {

Edit Between(const File& file, Spot begin, Spot end, std::string text) {
    const char* first = file.bytes.data();
    return {file.path, static_cast<std::size_t>(begin - first), static_cast<std::size_t>(end - first), std::move(text)};
}

Spot EndOf(const Attribute& attribute) { // behind the quotation mark
    const std::string_view written = attribute.Written();
    return written.data() + written.size() + 1;
}

std::string Reference(unsigned character) {
    return "&#" + std::to_string(character) + ";";
}

} // namespace

std::string AsValue(std::string_view text, char quotationMark) {
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c == '&') {
            value += "&amp;";
        } else if (c == '<') {
            value += "&lt;";
        } else if (c < ' ' || text[i] == quotationMark) {
            value += Reference(c);
        } else if (c < 0x80) {
            value += text[i];
        } else {
            unsigned character = c >= 0xF0 ? c & 0x07u : c >= 0xE0 ? c & 0x0Fu : c & 0x1Fu;
            for (; i + 1 < text.size() && (static_cast<unsigned char>(text[i + 1]) & 0xC0u) == 0x80; ++i)
                character = (character << 6) | (static_cast<unsigned char>(text[i + 1]) & 0x3Fu);
            value += Reference(character);
        }
    }
    return value;
}

Edit ValueEdit(const File& file, const Attribute& attribute, std::string_view value) {
    const std::string_view written = attribute.Written();
    return Between(file, written.data(), written.data() + written.size(), AsValue(value, written.data()[-1]));
}

Edit NameEdit(const File& file, const Attribute& attribute, std::string_view name) {
    return Between(file, attribute.AtName(), attribute.AtName() + attribute.Name().size(), std::string(name));
}

Edit RemovalEdit(const File& file, const Attribute& attribute) {
    Spot begin = attribute.AtName();
    while (begin > file.bytes.data() && std::isspace(static_cast<unsigned char>(begin[-1])))
        --begin;
    return Between(file, begin, EndOf(attribute), {});
}

Edit AdditionEdit(const File& file, const Element& element, std::string_view attribute, std::string_view value) {
    const Spot at =
        element.attributes.empty() ? element.name.data() + element.name.size() : EndOf(element.attributes.back());
    return Between(file, at, at, " " + std::string(attribute) + "=\"" + AsValue(value) + "\"");
}

Edit SetEdit(const File& file, const Element& element, std::string_view attribute, std::string_view value) {
    const Attribute* there = element.Find(attribute);
    return there ? ValueEdit(file, *there, value) : AdditionEdit(file, element, attribute, value);
}

} // namespace corvane::check
