#include "analysis/CheckForm.h"

#include "adapters/common/Encoding.h"
#include "adapters/xml/XmlService.h"
#include "analysis/Malformed.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>

namespace corvane::check {

namespace {

std::vector<std::string> NamesOf(const auto& formats) {
    std::vector<std::string> names;
    for (const auto& format : formats)
        names.emplace_back(format.name);
    return names;
}

std::string Listed(std::span<const std::string_view> words) {
    std::string list;
    for (std::size_t i = 0; i < words.size(); ++i)
        list += (i == 0 ? "" : i + 1 == words.size() ? " or " : ", ") + Quoted(words[i]);
    return list;
}

// "&#xDC;ber" for the bytes of a UTF-8 text.
std::string WithReferences(std::string_view raw) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; i < raw.size();) {
        const auto c = static_cast<unsigned char>(raw[i++]);
        if (c < 0x80) {
            text += static_cast<char>(c);
            continue;
        }
        unsigned u = c >= 0xF0 ? c & 0x07u : c >= 0xE0 ? c & 0x0Fu : c & 0x1Fu;
        for (; i < raw.size() && (static_cast<unsigned char>(raw[i]) & 0xC0u) == 0x80; ++i)
            u = (u << 6) | (static_cast<unsigned char>(raw[i]) & 0x3Fu);
        std::string hex;
        for (; u != 0; u >>= 4)
            hex.insert(hex.begin(), digits[u & 15u]);
        text += "&#x" + hex + ";";
    }
    return text;
}

class FormCheck {
public:
    FormCheck(const File& file, Report& report) : m_file(file), m_report(report), m_ascii(IsAscii(file.bytes)) {}

    void Check(const Element& element, const ElementFormat& format, bool values) {
        for (Attribute& attribute : element.attributes)
            CheckAttribute(element, format, attribute, values);
        if (values)
            for (const AttributeFormat& attribute : format.attributes)
                CheckNeed(element, attribute);
        for (const Element& child : element.Children()) {
            if (const ElementFormat* elementFormat = format.Child(child.name))
                Check(child, *elementFormat, values);
            else
                ReportElement(element, format, child);
        }
    }

    // Whether something was found that a schema would find, too.
    [[nodiscard]] bool Names(const std::string& message) const {
        return std::any_of(m_unknown.begin(), m_unknown.end(), [&](const std::string& name) {
            return message.find("'" + name + "'") != std::string::npos;
        });
    }

private:
    void ReportElement(const Element& parent, const ElementFormat& format, const Element& element) {
        m_unknown.emplace_back(element.name);
        const std::vector<std::string> names = NamesOf(format.children);
        m_report.Add(Rule::UnknownElement, m_file.At(element.At()),
                     std::string(parent.name) + " has no element " + Quoted(element.name),
                     WriteInstead(names, element.name, ElementCure(format, element.name)));
    }

    // An entry that is beside its group is meant to be in it.
    static std::string ElementCure(const ElementFormat& parent, std::string_view name) {
        for (const ElementFormat& group : parent.children)
            if (group.Child(name))
                return "move it into " + Quoted(group.name);
        return "remove it";
    }

    void CheckAttribute(const Element& element, const ElementFormat& format, Attribute& attribute, bool values) {
        if (attribute.Name().find(':') != std::string_view::npos || attribute.Name() == "xmlns")
            return; // the schema's affair
        const std::string_view written = m_ascii ? std::string_view() : attribute.Written();
        if (!IsAscii(written) && IsUtf8(written))
            m_report.Add(Rule::Utf8Bytes, m_file.At(attribute.AtValue()),
                         "the bytes of this text look like UTF-8, but are read as Windows-1252",
                         "write " + Quoted(WithReferences(written)) + ", or save the file as Windows-1252");
        const AttributeFormat* attributeFormat = format.Attribute(attribute.Name());
        if (!attributeFormat) {
            m_unknown.emplace_back(attribute.Name());
            const std::vector<std::string> names = NamesOf(format.attributes);
            m_report.Add(Rule::UnknownAttribute, m_file.At(attribute.AtName()),
                         std::string(element.name) + " has no attribute " + Quoted(attribute.Name()),
                         WriteInstead(names, attribute.Name(), "remove it"));
        } else if (values || (element.name == "Service" && attribute.Name() == "Active")) {
            CheckValue(*attributeFormat, attribute); // whether a file takes part is read of every one
        }
    }

    void CheckValue(const AttributeFormat& format, Attribute& attribute) {
        try {
            switch (format.kind) {
            case ValueKind::Text:
                break;
            case ValueKind::Boolean:
                (void)ToBoolean(Variant(attribute.Value()));
                break;
            case ValueKind::Number:
                (void)ToSingle(Variant(attribute.Value()));
                break;
            case ValueKind::WholeNumber:
                (void)ToLong(Variant(attribute.Value()));
                break;
            case ValueKind::Word:
                CheckWord(format, attribute);
                break;
            }
        } catch (const Failure& failure) {
            attribute.SetBad();
            ReportValue(format, attribute, failure.Number == FailureNumber::Overflow);
        }
    }

    void CheckWord(const AttributeFormat& format, Attribute& attribute) {
        const bool known = std::any_of(format.words.begin(), format.words.end(),
                                       [&](std::string_view s) { return EqualText(s, attribute.Value()); });
        if (known || (attribute.Value().empty() && format.need == Need::Optional))
            return;
        attribute.SetBad();
        const std::vector<std::string> words(format.words.begin(), format.words.end());
        m_report.Add(Rule::BadWord, m_file.At(attribute.AtValue()),
                     Quoted(attribute.Value()) + " is no " + std::string(format.name),
                     WriteInstead(words, attribute.Value(), "write " + Listed(format.words)));
    }

    void ReportValue(const AttributeFormat& format, const Attribute& attribute, bool overflow) {
        const std::string value(attribute.Value());
        const bool boolean = format.kind == ValueKind::Boolean;
        std::string cure = boolean ? "write True or False" : "write a number such as 10 or 12.5";
        if (overflow)
            cure = "write a smaller one";
        else if (value.empty())
            cure = format.need == Need::Required ? cure : "remove the attribute";
        else if (const std::string point = ReplaceText(value, ',', '.'); !boolean && NumberIn(point))
            cure = "write " + Quoted(point);
        else if (boolean)
            cure = BooleanCure(value);
        m_report.Add(Rule::BadValue, m_file.At(attribute.AtValue()),
                     std::string(format.name) +
                         (overflow  ? " is too large: "
                          : boolean ? " is neither true nor false: "
                                    : " isn't a number: ") +
                         Quoted(value),
                     cure);
    }

    static std::string BooleanCure(const std::string& value) {
        for (const char* word : {"yes", "on", "y", "t", "wahr", "ja"})
            if (EqualText(value, word))
                return "write \"True\"";
        for (const char* word : {"no", "off", "n", "f", "falsch", "nein"})
            if (EqualText(value, word))
                return "write \"False\"";
        return WriteInstead(std::array<std::string, 2>{"True", "False"}, value, "write True or False");
    }

    void CheckNeed(const Element& element, const AttributeFormat& format) {
        if (format.need == Need::Optional)
            return;
        const Attribute* attribute = element.Find(format.name);
        if (format.need == Need::Required && !attribute)
            m_report.Add(Rule::MissingAttribute, m_file.At(element.At()),
                         std::string(element.name) + " needs the attribute " + std::string(format.name),
                         format.kind == ValueKind::Word      ? "write " + Listed(format.words)
                         : format.kind == ValueKind::Boolean ? "write True or False"
                                                             : "add it");
        if (format.need == Need::Name && (!attribute || attribute->Value().empty()))
            m_report.Add(Rule::MissingName, m_file.At(element.At(format.name)),
                         std::string(element.name) + " has no " + std::string(format.name), "give it one");
    }

    const File& m_file;
    Report& m_report;
    bool m_ascii; // the whole file
    std::vector<std::string> m_unknown;
};

// The last element of that name before the spot.
const Element* ElementBefore(const Element& root, std::string_view name, Spot spot) {
    const Element* found = nullptr;
    for (const Element& element : std::span(&root, 1 + root.below)) {
        if (element.At() >= spot)
            break;
        if (element.name == name)
            found = &element;
    }
    return found;
}

void ReportViolations(const File& file, const Ref<IXmlDocument>& document, const Ref<IXmlSchemaCache>& schema,
                      const FormCheck& check, Report& report) {
    for (const XmlError& error : Violations(document, schema)) {
        if (check.Names(error.sReason))
            continue;
        const std::string reason = WithoutLine(error.sReason);
        Place place{file.path, {error.lLine, 1}};
        if (const std::size_t nameIndex = reason.find("lement '"); nameIndex != std::string::npos) {
            const std::size_t begin = nameIndex + 8;
            const std::string name = reason.substr(begin, reason.find('\'', begin) - begin);
            // The validator was on the last line of a tag.
            const Spot end = file.lines.EndOf(file.bytes, error.lLine);
            if (const Element* element = ElementBefore(*file.root, name, end))
                place = file.At(element->At());
        }
        report.Add(Rule::Schema, std::move(place), reason,
                   "correct it, or use the Service.xdr that comes with Corvane");
    }
}

} // namespace

void ReadFile(File& file, const Ref<IXmlService>& xml, const Ref<IXmlSchemaCache>& schema,
              std::pmr::memory_resource& memory, Report& report) {
    const Ref<IXmlDocument> document = xml->NewDocument();
    if (!document->LoadXml(file.bytes)) {
        ReportMalformed(file, document->ParseError(), report);
        return;
    }
    const Element* root = ScanElements(file.bytes, document, memory);
    if (!root || !document->SelectSingleNode("Service")) {
        const bool isNamespace = root && root->Find("xmlns");
        report.Add(Rule::NoServiceElement, file.At(root ? root->At() : file.bytes.data()),
                   isNamespace ? "the root element has a namespace"
                               : "the root element is " + Quoted(root ? root->name : "") + ", not \"Service\"",
                   isNamespace ? "remove xmlns" : "name it Service");
        return;
    }
    file.root = root;
    const Element& element = *root;
    FormCheck check(file, report);
    const Attribute* active = element.Find("Active");
    const bool progID = !element.Value("ProgID").empty();
    bool isTrue = active != nullptr;
    try {
        isTrue = active && ToBoolean(Variant(active->Value()));
    } catch (const Failure&) {
        isTrue = true; // the check of values below says so
    }
    file.active = isTrue && progID;
    // The library reads no record of a file that takes no part.
    check.Check(element, ServiceFormat(), file.active);
    if (!active || (isTrue && !progID))
        report.Add(Rule::InactiveFile, file.At(element.At()),
                   std::string("the file has no effect, as it has no ") + (progID ? "Active" : "ProgID"),
                   progID ? "write Active=\"True\"" : "name the service's class");
    if (schema && !document->Validate(schema).sReason.empty())
        ReportViolations(file, document, schema, check, report);
}

} // namespace corvane::check
