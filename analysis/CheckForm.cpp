#include "analysis/CheckForm.h"

#include "adapters/common/Encoding.h"
#include "adapters/common/Nearest.h"
#include "adapters/xml/XmlService.h"
#include "analysis/Edits.h"
#include "analysis/Malformed.h"
#include "analysis/PlainSource.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <cctype>

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

// Whether others refer by the value to the same thing, or it is that of a file or of a member.
bool IsNameOfThing(const AttributeFormat& format) {
    static constexpr auto names = [] {
        std::array<bool, std::size(names::known) + 1> table{};
        for (const AttributeName& name :
             std::to_array<AttributeName>({"Name", "ActionItem", "Action", "Path", "Parent", "ProgID", "PageProgID",
                                           "DefaultAction", "Image", "ImageDisabled", "ImagePressed"}))
            table[name.number] = true;
        return table;
    }();
    return names[format.name.number];
}

class FormCheck {
public:
    FormCheck(const File& file, Report& report, bool isAscii) : m_file(file), m_report(report), m_ascii(isAscii) {}

    void Check(const Element& element, const ElementFormat& format, bool values) {
        for (Attribute& attribute : element.attributes)
            CheckAttribute(element, format, attribute, values);
        if (values)
            for (const AttributeFormat& attribute : format.attributes)
                CheckNeed(element, attribute);
        m_open.push_back(&element);
        for (const Element& child : element.Children()) {
            if (const ElementFormat* elementFormat = format.Child(child.name))
                Check(child, *elementFormat, values);
            else
                ReportElement(element, format, child);
        }
        m_open.pop_back();
    }

    // Whether something was found that a schema would find, too.
    [[nodiscard]] bool HasUnknown() const { return !m_unknown.empty(); }
    // Whether the message of a schema is about such.
    [[nodiscard]] bool Names(const std::string& message) const {
        return std::any_of(m_unknown.begin(), m_unknown.end(), [&](const std::string& name) {
            return message.find("'" + name + "'") != std::string::npos;
        });
    }

private:
    void ReportElement(const Element& parent, const ElementFormat& format, const Element& element) {
        m_unknown.emplace_back(element.name);
        const std::vector<std::string> names = NamesOf(format.children);
        std::string cure = ElementCure(parent, format, element);
        if (cure.empty())
            cure = WriteInstead(names, element.name, "remove it");
        m_report.Add(Rule::UnknownElement, m_file.At(element.At()),
                     std::string(parent.name) + " has no element " + Quoted(element.name) +
                         ", so the whole file is left out",
                     std::move(cure));
    }

    // An element of the format that is at the wrong place; empty where none of that name is.
    [[nodiscard]] std::string ElementCure(const Element& parent, const ElementFormat& format, const Element& element) {
        for (const ElementFormat& group : format.children)
            if (group.Child(element.name))
                return "move it into " + std::string(group.name) +
                       (HasChild(parent, group.name) ? "" : ", which is missing here");
        // Nested as it will appear.
        if (element.name == "ExplorerItem" && (parent.name == "ExplorerItem" || IsBelow("ExplorerItem")))
            return "move it out, beside that item, and write Parent=" + Quoted(NameAbove("ExplorerItem"));
        if (element.name == "MenuItem" && parent.name == "MenuItem")
            return "move it out, beside that title, and write Path=" +
                   Quoted(std::string(parent.Value("Path")) + (parent.Value("Path").empty() ? "" : ".") +
                          std::string(parent.Value("ActionItem")));
        if (element.name == parent.name)
            return "move it out, beside this one";
        const std::vector<std::string> names = NamesOf(format.children);
        if (Nearest(names, element.name))
            return {};
        const std::string place = PlaceOf(ServiceFormat(), element.name);
        if (!place.empty())
            return "move it into " + place;
        const bool isOne = names.size() == 1 && !element.attributes.empty();
        return isOne ? "write " + Quoted(names.front()) + ", the one element that may be there" : std::string();
    }

    static bool HasChild(const Element& parent, std::string_view name) {
        for (const Element& child : parent.Children())
            if (child.name == name)
                return true;
        return false;
    }

    // Where in the whole format an element of that name may be.
    static std::string PlaceOf(const ElementFormat& format, std::string_view name) {
        if (format.Child(name))
            return std::string(format.name);
        for (const ElementFormat& child : format.children)
            if (std::string place = PlaceOf(child, name); !place.empty())
                return place;
        return {};
    }

    [[nodiscard]] bool IsBelow(std::string_view name) const {
        return std::any_of(m_open.begin(), m_open.end(), [&](const Element* each) { return each->name == name; });
    }

    [[nodiscard]] std::string NameAbove(std::string_view name) const {
        for (auto each = m_open.rbegin(); each != m_open.rend(); ++each)
            if ((*each)->name == name)
                return std::string((*each)->Value("Name"));
        return {};
    }

    void CheckAttribute(const Element& element, const ElementFormat& format, Attribute& attribute, bool values) {
        if (attribute.Name().find(':') != std::string_view::npos || attribute.Name() == "xmlns")
            return; // the schema's affair
        const std::string_view written = m_ascii ? std::string_view() : attribute.Written();
        if (!IsAscii(written) && IsUtf8(written))
            m_report
                .Add(Rule::Utf8Bytes, m_file.At(attribute.AtValue()),
                     "this text was saved as UTF-8 and is read as Windows-1252, so users read " +
                         Quoted(attribute.Value()),
                     "write " + Quoted(WithReferences(written)) + ", or save the file as Windows-1252")
                .edits = {ReferencesEdit(written)};
        const AttributeFormat* attributeFormat = format.Attribute(attribute.Name());
        if (!attributeFormat) {
            m_unknown.emplace_back(attribute.Name());
            const std::vector<std::string> names = NamesOf(format.attributes);
            const auto nearest = MeantAttribute(names, element, attribute.Name());
            Finding& finding = m_report.Add(Rule::UnknownAttribute, m_file.At(attribute.AtName()),
                                            std::string(element.name) + " has no attribute " +
                                                Quoted(attribute.Name()) + ", so the whole file is left out",
                                            nearest ? "write " + Quoted(*nearest) : AttributeCure(element, attribute));
            if (nearest && !element.Find(*nearest))
                finding.edits = {NameEdit(m_file, attribute, *nearest)};
        } else if (values || (element.name == "Service" && attribute.Name() == "Active")) {
            CheckValue(*attributeFormat, attribute); // whether a file takes part is read of every one
            if (values && IsNameOfThing(*attributeFormat))
                CheckBlanks(attribute);
        }
    }

    // A blank counts in names, and cannot be seen.
    void CheckBlanks(Attribute& attribute) {
        const std::string_view value = attribute.Value();
        if (value.empty() ||
            (static_cast<unsigned char>(value.front()) > ' ' && static_cast<unsigned char>(value.back()) > ' ' &&
             value.find("  ") == std::string_view::npos))
            return;
        std::string meant(WithoutBlanksAround(value));
        for (std::size_t i; (i = meant.find("  ")) != std::string::npos;)
            meant.erase(i, 1);
        m_report
            .Add(Rule::StrayBlank, m_file.At(attribute.AtValue()),
                 "the " + std::string(attribute.Name()) + " " + Quoted(value) + " " + WhereBlankIs(value) +
                     ", which counts, so it isn't the same name as " + Quoted(meant),
                 meant.empty() ? "write a name" : "write " + Quoted(meant))
            .edits = meant.empty() ? std::vector<Edit>() : std::vector{ValueEdit(m_file, attribute, meant)};
    }

    static std::string_view WithoutBlanksAround(std::string_view text) {
        const auto IsBlank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
        while (!text.empty() && IsBlank(text.front()))
            text.remove_prefix(1);
        while (!text.empty() && IsBlank(text.back()))
            text.remove_suffix(1);
        return text;
    }

    static const char* WhereBlankIs(std::string_view value) {
        return static_cast<unsigned char>(value.front()) <= ' '  ? "begins with a blank"
               : static_cast<unsigned char>(value.back()) <= ' ' ? "ends with a blank"
                                                                 : "holds two blanks";
    }

    // What other tools call it comes before what is merely spelt alike.
    static std::optional<std::string> MeantAttribute(const std::vector<std::string>& names, const Element& element,
                                                     std::string_view written) {
        struct Other {
            std::string_view name;
            std::string_view meant;
        };
        static constexpr auto others = std::to_array<Other>({{"Text", "Caption"},
                                                             {"Label", "Caption"},
                                                             {"Title", "Caption"},
                                                             {"ToolTip", "Tip"},
                                                             {"Hint", "Tip"},
                                                             {"Shortcut", "ShortCutKey"},
                                                             {"ShortcutKey", "ShortCutKey"},
                                                             {"Accelerator", "ShortCutKey"},
                                                             {"Keys", "ShortCutKey"},
                                                             {"Order", "PositionOrder"},
                                                             {"Position", "PositionOrder"},
                                                             {"Icon", "Image"},
                                                             {"Picture", "Image"},
                                                             {"Procedure", "Action"},
                                                             {"Method", "Action"},
                                                             {"Handler", "Action"},
                                                             {"Class", "ProgID"},
                                                             {"Class", "PageProgID"},
                                                             {"ProgID", "PageProgID"},
                                                             {"PageProgID", "ProgID"},
                                                             {"Id", "Name"},
                                                             {"Menu", "Path"},
                                                             {"ParentName", "Parent"},
                                                             {"Width", "PageWidth"},
                                                             {"Height", "PageHeight"},
                                                             {"Modal", "IsModal"},
                                                             {"Resizable", "IsResizable"},
                                                             {"Optional", "IsOptional"}});
        const auto IsThere = [&](std::string_view name) {
            return std::find(names.begin(), names.end(), name) != names.end();
        };
        for (const std::string& name : names)
            if (EqualText(name, written))
                return name;
        for (const Other& other : others)
            if (EqualText(other.name, written) && IsThere(other.meant) && !element.Find(other.meant))
                return std::string(other.meant);
        std::vector<std::string> free;
        for (const std::string& name : names)
            if (!element.Find(name))
                free.push_back(name);
        return Nearest(free, written);
    }

    // An attribute that belongs to what the element is about.
    static std::string AttributeCure(const Element& element, const Attribute& attribute) {
        const bool isOfAction = element.name == "MenuItem" && attribute.Name() != "Name" &&
                                ServiceFormat().Child("ActionItems")->Child("ActionItem")->Attribute(attribute.Name());
        const bool isOfPlace = element.name == "ActionItem" &&
                               ServiceFormat().Child("Menus")->Child("MenuItem")->Attribute(attribute.Name());
        const std::string name(attribute.Name());
        for (const char* picture : {"Icon", "Picture"})
            if (element.name == "MenuItem" && EqualText(name, picture))
                return "write it as Image of the ActionItem " + Quoted(element.Value("ActionItem"));
        if (isOfAction)
            return "move " + name + " to the ActionItem " + Quoted(element.Value("ActionItem"));
        if (isOfPlace)
            return "move " + name + " to the MenuItem of the action";
        return "remove it";
    }

    // The bytes as they are, but for the letters.
    [[nodiscard]] Edit ReferencesEdit(std::string_view written) const {
        const auto begin = static_cast<std::size_t>(written.data() - m_file.bytes.data());
        return {m_file.path, begin, begin + written.size(), WithReferences(written)};
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
        const auto nearest = MeantWord(words, attribute.Value());
        const bool isNeeded = format.need == Need::Required;
        Finding& finding =
            m_report.Add(isNeeded ? Rule::BadWord : Rule::NoEffect, m_file.At(attribute.AtValue()),
                         Quoted(attribute.Value()) + " isn't a " + std::string(format.name) + " that is known, so " +
                             (isNeeded ? "the whole file is left out" : "no line is drawn"),
                         nearest ? "write " + Quoted(*nearest) : "write " + Listed(format.words));
        if (nearest)
            finding.edits = {ValueEdit(m_file, attribute, *nearest)};
    }

    // The nearest word, or the only one that holds what is written.
    static std::optional<std::string> MeantWord(const std::vector<std::string>& words, std::string_view written) {
        if (auto nearest = Nearest(words, written))
            return nearest;
        constexpr std::size_t shortest = 4;
        const std::string part = FoldText(written);
        std::vector<std::string> found;
        for (const std::string& word : words)
            if (part.size() >= shortest && FoldText(word).find(part) != std::string::npos)
                found.push_back(word);
        return found.size() == 1 ? std::optional(found.front()) : std::nullopt;
    }

    void ReportValue(const AttributeFormat& format, const Attribute& attribute, bool overflow) {
        const std::string value(attribute.Value());
        const bool boolean = format.kind == ValueKind::Boolean;
        std::string meant;
        std::string cure = boolean ? "write True or False" : "write a number such as 10 or 12.5";
        if (overflow)
            cure = "write a smaller number, such as 10";
        else if (value.empty() && format.need != Need::Required)
            cure = "remove " + std::string(format.name) + ", which then is " + (boolean ? "its default" : "0");
        else if (!boolean)
            meant = NumberMeant(value, format.kind == ValueKind::WholeNumber);
        else
            meant = BooleanMeant(value);
        if (!meant.empty())
            cure = "write " + Quoted(meant);
        Finding& finding = m_report.Add(Rule::BadValue, m_file.At(attribute.AtValue()),
                                        std::string(format.name) + " " + Quoted(value) +
                                            (overflow  ? " is too large a number"
                                             : boolean ? " is neither true nor false"
                                                       : " isn't a number") +
                                            ", so the whole file is left out",
                                        cure);
        if (!meant.empty())
            finding.edits = {ValueEdit(m_file, attribute, meant)};
        else if (value.empty() && format.need != Need::Required)
            finding.edits = {RemovalEdit(m_file, attribute)};
    }

    // "1,5", "10." and "10px"; empty when it isn't clear.
    static std::string NumberMeant(const std::string& value, bool isWhole) {
        std::string number = ReplaceText(value, ',', '.');
        std::erase_if(number, [](char c) { return c == ' ' || c == '_' || c == '\''; });
        const std::size_t end = number.find_first_not_of("+-.0123456789");
        const bool hasUnit =
            end != std::string::npos && end > 0 && number.find_first_of("+-.0123456789", end) == std::string::npos;
        if (hasUnit)
            number.resize(end);
        else if (end != std::string::npos)
            std::replace_if(
                number.begin(), number.end(), [](char c) { return c == 'O' || c == 'o'; }, '0');
        while (number.ends_with('.'))
            number.pop_back();
        if (number.find_first_of("0123456789") == std::string::npos || !NumberIn(number) ||
            (isWhole && number.find('.') != std::string::npos))
            return {};
        return number;
    }

    static std::string BooleanMeant(const std::string& value) {
        for (const char* word : {"yes", "on", "y", "t", "wahr", "ja", "oui", "vrai", "si", "x", "enabled"})
            if (EqualText(value, word))
                return "True";
        for (const char* word : {"no", "off", "n", "f", "falsch", "nein", "non", "faux", "none", "disabled"})
            if (EqualText(value, word))
                return "False";
        return Nearest(std::array<std::string, 2>{"True", "False"}, value).value_or("");
    }

    void CheckNeed(const Element& element, const AttributeFormat& format) {
        if (format.need == Need::Optional)
            return;
        const Attribute* attribute = element.Find(format.name);
        if (!attribute && IsMisspelt(element, format))
            return; // which has a finding of its own
        if (format.need == Need::Required && !attribute) {
            const std::string value = ValueToAdd(element, format);
            Finding& finding = m_report.Add(Rule::MissingAttribute, m_file.At(element.At()),
                                            NamedElement(element) + " has no " + std::string(format.name) +
                                                ", which it needs, so the whole file is left out",
                                            "write " + std::string(format.name) + "=" +
                                                (value.empty() ? AnyOf(format) : Quoted(value)));
            if (!value.empty())
                finding.edits = {AdditionEdit(m_file, element, format.name, value)};
        }
        if (format.need != Need::Name || (attribute && !attribute->Value().empty()))
            return;
        if (format.name == "PageProgID")
            m_report.Add(Rule::BadProgId, m_file.At(element.At(format.name)),
                         NamedElement(element) + " has no PageProgID, so its object can't be made and its window " +
                             "doesn't open (429)",
                         "write PageProgID=\"Library.Class\", the class of the page");
        else
            m_report.Add(Rule::MissingName, m_file.At(element.At(format.name)),
                         std::string(element.name) + " has no " + std::string(format.name) +
                             ", so nothing can refer to it",
                         "write " + std::string(format.name) + "=\"...\"");
    }

    static bool IsMisspelt(const Element& element, const AttributeFormat& format) {
        const std::vector<std::string> names{std::string(format.name)};
        return std::any_of(element.attributes.begin(), element.attributes.end(), [&](const Attribute& each) {
            return each.Name() != format.name && MeantAttribute(names, element, each.Name());
        });
    }

    static std::string NamedElement(const Element& element) {
        for (const char* attribute : {"Name", "ActionItem", "Caption", "PageProgID"})
            if (!element.Value(attribute).empty())
                return "the " + std::string(element.name) + " " + Quoted(element.Value(attribute));
        return "this " + std::string(element.name);
    }

    // What nearly always is meant; empty where there is no such thing.
    static std::string ValueToAdd(const Element& element, const AttributeFormat& format) {
        if (format.name == "IsOptional")
            return "False";
        if (format.name == "IsResizable")
            return "True";
        if (format.name == "State")
            return "Normal";
        if (element.name == "Window" && format.name == "Type")
            return "Window";
        if (element.name == "ExplorerItem" && format.name == "Type")
            return element.Value("Parent").empty() || !element.Value("ProgID").empty() ? "Folder" : "Default";
        return {};
    }

    static std::string AnyOf(const AttributeFormat& format) {
        switch (format.kind) {
        case ValueKind::Word:
            return Listed(format.words);
        case ValueKind::Boolean:
            return "\"True\" or \"False\"";
        case ValueKind::Number:
        case ValueKind::WholeNumber:
            return "\"10\", or another number";
        case ValueKind::Text:
            break;
        }
        return "\"...\"";
    }

    const File& m_file;
    Report& m_report;
    bool m_ascii; // the whole file
    std::vector<std::string> m_unknown;
    std::vector<const Element*> m_open; // from the root down to what is being checked
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

void ReportRoot(const File& file, const Element* root, Report& report) {
    const bool isNamespace = root && root->Find("xmlns");
    report.Add(Rule::NoServiceElement, file.At(root ? root->At() : file.bytes.data()),
               (isNamespace ? "the root element has a namespace"
                            : "the root element is " + Quoted(root ? root->name : "") + ", not \"Service\"") +
                   ", so the file is left out",
               isNamespace ? "remove xmlns" : "write <Service ...> and </Service>");
}

// All elements of the format at all their places, each with all its attributes.
void AddWhole(const ElementFormat& format, std::string& text) {
    text += "<" + std::string(format.name);
    for (const AttributeFormat& attribute : format.attributes)
        text += " " + std::string(attribute.name.text) + "=\"\"";
    text += '>';
    for (const ElementFormat& child : format.children)
        AddWhole(child, text);
    text += "</" + std::string(format.name) + ">";
}

// Whether what has elements and attributes of the format alone is valid.
bool TakesFormat(const Ref<IXmlService>& xml, const Ref<IXmlSchemaCache>& schema) {
    std::string whole;
    AddWhole(ServiceFormat(), whole);
    const Ref<IXmlDocument> document = xml->NewDocument();
    return OnlyLists(schema) && document->LoadXml(whole) && document->Validate(schema).sReason.empty();
}

// Whether the library reads the records of a file; an Active that is neither true nor false is reported elsewhere.
bool TakesPart(const Element& root) {
    const Attribute* active = root.Find("Active");
    if (!active || root.Value("ProgID").empty())
        return false;
    try {
        return ToBoolean(Variant(active->Value()));
    } catch (const Failure&) {
        return true;
    }
}

} // namespace

FileReader::FileReader(Ref<IXmlService> xml, Ref<IXmlSchemaCache> schema)
    : m_xml(std::move(xml)), m_schema(std::move(schema)), m_takesFormat(!m_schema || TakesFormat(m_xml, m_schema)) {}

void FileReader::Read(File& file, Arena& memory, Report& report) const {
    const Element* root = ScanPlainElements(file.bytes, memory);
    const bool isPlain = root && root->name == "Service";
    const Ref<IXmlDocument> document = m_xml->NewDocument();
    if (!isPlain) {
        if (!document->LoadXml(file.bytes)) {
            ReportMalformed(file, document->ParseError(), report);
            return;
        }
        root = ScanElements(file.bytes, document, memory);
        if (!root || !document->SelectSingleNode("Service")) {
            ReportRoot(file, root, report);
            return;
        }
    }
    file.root = root;
    file.active = TakesPart(*root);
    FormCheck check(file, report, isPlain || IsAscii(file.bytes));
    // The library reads no record of a file that takes no part.
    check.Check(*root, ServiceFormat(), file.active);
    if (!m_schema || (isPlain && m_takesFormat && !check.HasUnknown()))
        return; // valid for certain
    if (isPlain)
        document->LoadXml(file.bytes);
    if (!document->Validate(m_schema).sReason.empty())
        ReportViolations(file, document, m_schema, check, report);
}

} // namespace corvane::check
