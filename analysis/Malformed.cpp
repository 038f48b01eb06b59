#include "analysis/Malformed.h"

#include "adapters/common/Encoding.h"
#include "adapters/common/Nearest.h"

#include <algorithm>
#include <libxml/parser.h>
#include <memory>
#include <optional>
#include <sstream>
#include <vector>

namespace corvane::check {

namespace {

struct Words {
    std::string text;
    std::string cure;
};

// The library's parser tells the line; where in it, libxml2 is asked again.
Long ErrorColumn(std::string_view bytes, Long line) {
    constexpr std::size_t largest = 1 << 26; // beyond it, the line must do
    if (bytes.size() > largest)
        return 0;
    const std::string text = DecodeWindows1252(bytes);
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> context(xmlNewParserCtxt(), &xmlFreeParserCtxt);
    if (!context)
        return 0;
    struct First {
        Long line = 0;
        Long column = 0;
    } first;
    context->_private = &first;
    context->sax->serror = [](void* userData, xmlErrorPtr error) {
        auto& to = *static_cast<First*>(static_cast<xmlParserCtxtPtr>(userData)->_private);
        if (to.line == 0 && error->level >= XML_ERR_ERROR)
            to = {error->line, error->int2};
    };
    xmlFreeDoc(xmlCtxtReadMemory(context.get(), text.data(), static_cast<int>(text.size()), nullptr, "UTF-8",
                                 XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_IGNORE_ENC));
    return first.line == line ? first.column : 0;
}

// The words of the parser's message behind one part of it; at least so many, or none.
std::vector<std::string> WordsBehind(const std::string& message, std::string_view part, std::size_t least) {
    std::vector<std::string> words;
    const std::size_t found = message.find(part);
    if (found == std::string::npos)
        return words;
    std::istringstream stream(message.substr(found + part.size()));
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words.size() >= least ? words : std::vector<std::string>();
}

Words OfNoElement(std::string_view bytes) {
    const std::size_t text = bytes.find_first_not_of(" \t\r\n");
    if (text == std::string_view::npos)
        return {"the file is empty", "write a Service element, or remove the file"};
    if (bytes[text] == '<')
        return {"the file has no element", "write a Service element, or remove the file"};
    return {"there is text before the first element", "remove everything before \"<\""};
}

// Of what isn't one byte a character.
Words OfEncoding(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF"))
        return {"the file begins with the byte order mark of UTF-8, and is read as Windows-1252",
                "save it as Windows-1252, or without the mark"};
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
        bytes.substr(0, 4).find('\0') != std::string_view::npos)
        return {"the file is UTF-16, and is read as Windows-1252", "save it as Windows-1252"};
    return {};
}

Words OfTags(const std::string& message) {
    const std::vector<std::string> words = WordsBehind(message, "mismatch: ", 5); // "Menus line 2 and Service"
    if (words.empty())
        return {};
    const std::string& open = words[0];
    const std::string& close = words[4];
    const std::string opened = Quoted(open) + " of line " + words[2];
    if (Nearest(std::vector{open}, close))
        return {Quoted("</" + close + ">") + " is to close " + opened, "write one name in both places"};
    return {opened + " isn't closed before " + Quoted("</" + close + ">"),
            "end it with \"/>\", or with " + Quoted("</" + open + ">")};
}

Words OfSigns(int code, const std::string& message) {
    switch (code) {
    case XML_ERR_ENTITYREF_SEMICOL_MISSING:
        return {"\"&\" begins a reference", "write &amp; for the character itself"};
    case XML_ERR_NAME_REQUIRED:
        if (message.find("EntityRef") != std::string::npos)
            return OfSigns(XML_ERR_ENTITYREF_SEMICOL_MISSING, message);
        if (message.find("attribute") != std::string::npos)
            return {"this isn't the beginning of an attribute",
                    "remove it, or end the tag before with \"/>\" or \">\""};
        return {"\"<\" begins an element, and no name follows", "write &lt; for the character itself"};
    case XML_ERR_LT_IN_ATTRIBUTE:
        return {"the value that begins here goes on up to a \"<\"",
                "end it with its quotation mark, or write &lt; for the character itself"};
    case XML_ERR_UNDECLARED_ENTITY:
        return {message, "write the character's number, as in &#252;"};
    case XML_ERR_HYPHEN_IN_COMMENT:
        return {"there is \"--\" in a comment", "write one hyphen, or end the comment there with \"-->\""};
    case XML_ERR_COMMENT_NOT_FINISHED:
        return {"a comment isn't closed", "end it with \"-->\""};
    default:
        return {};
    }
}

Words OfAttributes(int code, const std::string& message) {
    const bool isTwice = code == XML_ERR_ATTRIBUTE_REDEFINED;
    const std::vector<std::string> words = WordsBehind(message, isTwice ? "Attribute " : "", 1);
    const std::string nameText = words.empty() ? std::string() : isTwice ? words.front() : words.back();
    switch (code) {
    case XML_ERR_ATTRIBUTE_REDEFINED:
        return {"the attribute " + Quoted(nameText) + " is there twice", "remove one of them"};
    case XML_ERR_ATTRIBUTE_WITHOUT_VALUE:
        return {"the attribute " + Quoted(nameText) + " has no value", "write " + nameText + "=\"...\""};
    case XML_ERR_ATTRIBUTE_NOT_STARTED:
        return {"a value isn't in quotation marks", "write it as in Name=\"Value\""};
    case XML_ERR_ATTRIBUTE_NOT_FINISHED:
        return {"a value isn't closed", "end it with its quotation mark"};
    case XML_ERR_SPACE_REQUIRED:
        return {"there is no space between two attributes", "write one"};
    default:
        return {};
    }
}

Words OfStructure(int code, const std::string& message, std::string_view bytes) {
    switch (code) {
    case XML_ERR_DOCUMENT_EMPTY:
        return OfNoElement(bytes);
    case XML_ERR_DOCUMENT_END:
        return {"there is something after the end of the root element", "remove it, or move it inside"};
    case XML_ERR_TAG_NAME_MISMATCH:
        return OfTags(message);
    case XML_ERR_TAG_NOT_FINISHED:
        if (const auto words = WordsBehind(message, " tag ", 3); !words.empty()) // "Menus line 2"
            return {"the file ends before " + Quoted(words[0]) + " of line " + words[2] + " is closed",
                    "end it with " + Quoted("</" + words[0] + ">")};
        return {};
    case XML_ERR_GT_REQUIRED:
        return {"a tag has no end", "end it with \"/>\" or \">\""};
    case XML_ERR_RESERVED_XML_NAME:
        return {"the XML declaration isn't at the very beginning", "remove everything before it"};
    default:
        return {};
    }
}

// What has no words of its own keeps those of the parser.
Words InWords(int code, const std::string& message, std::string_view bytes) {
    for (const Words& words :
         {OfEncoding(bytes), OfStructure(code, message, bytes), OfSigns(code, message), OfAttributes(code, message)})
        if (!words.text.empty())
            return words;
    return {message, "correct the XML there, or just before"};
}

// A quotation mark that is missing shows at the next one's "<", maybe lines later: back to where the value begins.
Position BeginOfValue(const File& file, Position at) {
    const std::string_view text = file.bytes;
    const auto line = static_cast<std::size_t>(file.lines.EndOf(text, at.line - 1) - text.data());
    const std::size_t sign = text.rfind('<', line + static_cast<std::size_t>(std::max<Long>(at.column - 1, 0)));
    const std::size_t mark = sign == std::string_view::npos ? sign : text.find_last_of("\"'", sign);
    return mark == std::string_view::npos ? at : file.lines.PositionOf(text, text.data() + mark + 1);
}

// Where the value begins that goes on up to the quotation mark of the next attribute; nothing where no such is before
// the place.
std::optional<Position> ValueWithoutEnd(const File& file, Position at) {
    const std::string_view text = file.bytes;
    const auto line = static_cast<std::size_t>(file.lines.EndOf(text, at.line - 1) - text.data());
    const std::size_t mark =
        text.find_last_of("\"'", line + static_cast<std::size_t>(std::max<Long>(at.column - 1, 0)));
    const std::size_t before = mark == 0 || mark == std::string_view::npos ? mark : text.rfind(text[mark], mark - 1);
    if (before >= mark)
        return std::nullopt;
    const std::string_view value = text.substr(before + 1, mark - before - 1);
    const std::size_t blank = value.find_last_of(" \t\r\n");
    if (!value.ends_with('=') || blank == std::string_view::npos || blank + 2 >= value.size())
        return std::nullopt;
    return file.lines.PositionOf(text, text.data() + before + 1);
}

// A file in another encoding, in Windows-1252.
std::vector<Edit> EditsOf(const File& file) {
    const std::string_view bytes = file.bytes;
    if (bytes.starts_with("\xEF\xBB\xBF"))
        return {{file.path, 0, 3, {}}};
    const bool isLittle = bytes.starts_with("\xFF\xFE");
    if (!isLittle && !bytes.starts_with("\xFE\xFF"))
        return {};
    std::string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[isLittle ? i : i + 1]);
        const auto high = static_cast<unsigned char>(bytes[isLittle ? i + 1 : i]);
        const unsigned character = (static_cast<unsigned>(high) << 8) | low;
        if (character >= 0xD800 && character < 0xE000)
            return {}; // two of them are one character: not one of a name
        if (character < 0x80)
            text += static_cast<char>(character);
        else
            text += "&#" + std::to_string(character) + ";";
    }
    // The declaration may say otherwise, which counts for other programs.
    for (const std::string_view encoding : {"UTF-16LE", "UTF-16BE", "UTF-16", "utf-16"})
        if (const std::size_t i = text.find(encoding); i != std::string::npos && i < text.find('>'))
            text.replace(i, encoding.size(), "windows-1252");
    return {{file.path, 0, bytes.size(), text}};
}

} // namespace

std::string WithoutLine(const std::string& reason) {
    const std::size_t colon = reason.find(": ");
    return reason.starts_with("line ") && colon != std::string::npos ? reason.substr(colon + 2) : reason;
}

void ReportMalformed(const File& file, const XmlError& error, Report& report) {
    const auto code = static_cast<int>(error.lErrorCode);
    Words words = InWords(code, WithoutLine(error.sReason), file.bytes);
    Position at{error.lLine, ErrorColumn(file.bytes, error.lLine)};
    if (code == XML_ERR_LT_IN_ATTRIBUTE)
        at = BeginOfValue(file, at);
    if (code == XML_ERR_SPACE_REQUIRED)
        if (const auto begin = ValueWithoutEnd(file, at)) {
            at = *begin;
            words = {"the value that begins here goes on up to the next attribute", "end it with its quotation mark"};
        }
    Finding& finding =
        report.Add(Rule::NotWellFormed, {file.path, at}, words.text + ", so the whole file is left out", words.cure);
    finding.edits = EditsOf(file);
}

} // namespace corvane::check
