#include "tests/mutation/Mutations.h"

#include "analysis/Edits.h"
#include "analysis/Fix.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>

namespace corvane::mutation {

namespace {

using check::Attribute;
using check::Edit;
using check::Element;

bool IsOfType(const Element& element, std::string_view type) {
    return EqualText(element.Value("Type"), type);
}

class Spoiler {
public:
    Spoiler(const check::File& file, std::string path, const std::function<void(const Mutant&)>& act)
        : m_file(file), m_path(std::move(path)), m_act(act) {}

    void Run() {
        SpoilFile();
        for (const Element& element : std::span(m_file.root, 1 + m_file.root->below)) {
            const check::ElementFormat* format = FormatOf(check::ServiceFormat(), element.name);
            for (const Attribute& attribute : element.attributes)
                if (const check::AttributeFormat* known = format ? format->Attribute(attribute.Name()) : nullptr)
                    SpoilAttribute(element, attribute, *known);
            SpoilElement(element);
        }
    }

private:
    static const check::ElementFormat* FormatOf(const check::ElementFormat& format, std::string_view name) {
        if (format.name == name)
            return &format;
        for (const check::ElementFormat& child : format.children)
            if (const auto* found = FormatOf(child, name))
                return found;
        return nullptr;
    }

    void Make(const Element& element, std::string family, std::string kind, Expected expected,
              const std::vector<Edit>& edits, bool adds = false) {
        m_act({std::move(family), std::move(kind), expected, m_path, check::Edited(m_file.bytes, edits),
               m_file.At(element.At()).at.line, adds});
    }

    void Set(const Element& element, const Attribute& attribute, const std::string& family, const std::string& what,
             const std::string& value, Expected expected = Expected::Judged) {
        if (attribute.Value() != value)
            Make(element, family, what + " in " + NameOf(element, attribute), expected,
                 {ValueEdit(m_file, attribute, value)});
    }

    static std::string NameOf(const Element& element, const Attribute& attribute) {
        return std::string(element.name) + "." + std::string(attribute.Name());
    }

    [[nodiscard]] std::size_t OffsetOf(check::Spot spot) const {
        return static_cast<std::size_t>(spot - m_file.bytes.data());
    }

    // From its "<" to behind its end.
    [[nodiscard]] std::pair<std::size_t, std::size_t> ExtentOf(const Element& element) const {
        const std::string& text = m_file.bytes;
        const std::size_t begin = OffsetOf(element.At());
        const check::Spot behind = element.attributes.empty() ? element.name.data() + element.name.size()
                                                              : element.attributes.back().Written().data() +
                                                                    element.attributes.back().Written().size() + 1;
        const std::size_t tagEnd = text.find('>', OffsetOf(behind));
        if (text[tagEnd - 1] == '/')
            return {begin, tagEnd + 1};
        std::size_t last = tagEnd; // of the last element below it
        for (const Element& child : element.Children())
            last = ExtentOf(child).second;
        return {begin, text.find('>', text.find("</", last)) + 1};
    }

    // Two letters in the middle change places, or one is doubled.
    static std::string Slip(std::string_view value) {
        std::string slip(value);
        const std::size_t i = slip.size() / 2;
        if (slip.size() > 1 && slip[i - 1] != slip[i])
            std::swap(slip[i - 1], slip[i]);
        else
            slip += slip.empty() ? 'x' : slip.back();
        return slip;
    }

    static bool IsReference(const Attribute& attribute) {
        static constexpr std::array names{"ActionItem", "Path", "Parent", "DefaultAction", "Image", "ImageDisabled"};
        return std::find(names.begin(), names.end(), attribute.Name()) != names.end();
    }

    // The file as a whole: where nothing reads it, or where it can't be read.
    void SpoilFile() {
        const auto Move = [&](const char* kind, const std::string& to) {
            m_act({"files that aren't read", kind, Expected::Named, m_path, m_file.bytes, 0, false, to});
        };
        const std::string stem = m_file.name.substr(0, m_file.name.rfind('.'));
        Move("another ending", "Services/" + stem + ".xml.txt");
        Move("an ending that looks like it", "Services/" + stem + ".xnl");
        Move("in a folder of Services", "Services/more/" + m_file.name);
        Move("in Images", "Images/" + m_file.name);
        const auto Write = [&](const char* kind, Expected expected, std::string text) {
            m_act({"form of the file", kind, expected, m_path, std::move(text), 0});
        };
        const std::string& text = m_file.bytes;
        const std::size_t root = OffsetOf(m_file.root->At());
        Write("nothing in it", Expected::Judged, "");
        Write("cut off in the middle", Expected::Judged, text.substr(0, (root + text.size()) / 2));
        Write("a byte order mark", Expected::Judged, "\xEF\xBB\xBF" + text);
        Write("root in small letters", Expected::Judged,
              text.substr(0, root) + "<service" + text.substr(root + 8, text.rfind("</") - root - 8) + "</service>");
        Write("a comment in front", Expected::Silent, text.substr(0, root) + "<!-- by hand -->\n" + text.substr(root));
        std::string lines = text;
        for (std::size_t i = 0; (i = lines.find('\n', i)) != std::string::npos; i += 2)
            lines.insert(i, "\r");
        Write("lines of another system", Expected::Silent, lines);
    }

    void SpoilAttribute(const Element& element, const Attribute& attribute, const check::AttributeFormat& format) {
        const std::string value(attribute.Value());
        const std::string where = NameOf(element, attribute);
        Make(element, "names of attributes", "other case of the name " + where, Expected::Judged,
             {NameEdit(m_file, attribute, FoldText(attribute.Name()))});
        Make(element, "form of the file", "no quotation mark at the end of " + where, Expected::Judged,
             {Edit{m_file.path, OffsetOf(attribute.AtValue()) + attribute.Written().size(),
                   OffsetOf(attribute.AtValue()) + attribute.Written().size() + 1, ""}});
        if (format.need != check::Need::Optional)
            Make(element, "attributes that are needed", "without " + where,
                 attribute.Name() == "PageProgID" ? Expected::Named // a stub is made of any class, also of none
                                                  : Expected::Judged,
                 {RemovalEdit(m_file, attribute)});
        switch (format.kind) {
        case check::ValueKind::Boolean:
            Set(element, attribute, "values", "word for a boolean", "maybe");
            Set(element, attribute, "values", "empty", "");
            Set(element, attribute, "sound rewriting", "other case", FoldText(value), Expected::Silent);
            break;
        case check::ValueKind::Number:
        case check::ValueKind::WholeNumber:
            Set(element, attribute, "values", "word for a number", "first");
            Set(element, attribute, "values", "unit", value + "px");
            Set(element, attribute, "values", "decimal comma", value + ",5");
            Set(element, attribute, "values", "very large", "1e12");
            Set(element, attribute, "sound rewriting", "blanks", " " + value + " ", Expected::Silent);
            break;
        case check::ValueKind::Word:
            Set(element, attribute, "words", "slip", Slip(value));
            Set(element, attribute, "sound rewriting", "other case", FoldText(value), Expected::Silent);
            break;
        case check::ValueKind::Text:
            if (!value.empty())
                SpoilText(element, attribute, value);
            break;
        }
        if (attribute.Name() == "Caption" && element.name == "MenuItem" && value.find('#') != std::string::npos)
            SpoilMark(element, attribute, value);
        if (attribute.Name() == "ShortCutKey") {
            for (const char* foreign : {"Umschalt+F11", "Strg+Entf", "Cmd+K"})
                Set(element, attribute, "shortcuts", std::string("words of another language, ") + foreign, foreign,
                    Expected::Named);
            for (const char* taken : {"Alt+F4", "K", "Meta+L", "Ctrl+", "Ctl+K"})
                Set(element, attribute, "shortcuts", std::string("key that isn't free, ") + taken, taken,
                    Expected::Named);
        }
    }

    void SpoilText(const Element& element, const Attribute& attribute, const std::string& value) {
        if (IsReference(attribute)) {
            Set(element, attribute, "slips in names", "slip", Slip(value), Expected::Named);
            Set(element, attribute, "blanks in names", "blank", value + " ", Expected::Named);
            Set(element, attribute, "blanks in names", "blank in front", " " + value, Expected::Named);
            Set(element, attribute, "sound rewriting", "other case", FoldText(value), Expected::Silent);
        } else if (attribute.Name() == "Name") {
            Set(element, attribute, "blanks in names", "blank", value + " ", Expected::Named);
            // Whoever refers to it no longer finds it, and nobody needn't.
            Set(element, attribute, "slips in names", "slip", Slip(value));
        } else if (attribute.Name() == "ProgID" || attribute.Name() == "PageProgID") {
            Set(element, attribute, "classes", "no point", value.substr(0, value.find('.')), Expected::Named);
            Set(element, attribute, "classes", "two colons", value.substr(0, value.find('.')) + "::Class",
                Expected::Named);
            Set(element, attribute, "blanks in names", "blank", value + " ", Expected::Named);
        }
        if (attribute.Name() == "Path" && value.find('.') != std::string::npos) {
            std::string slashes = value;
            std::replace(slashes.begin(), slashes.end(), '.', '/');
            Set(element, attribute, "paths", "slashes", slashes, Expected::Named);
            Set(element, attribute, "paths", "last part", value.substr(value.rfind('.') + 1));
        }
        if (attribute.Name() == "Path" && IsOfType(element, "ToolbarItem"))
            Set(element, attribute, "paths", "prefix", "Toolbars." + value, Expected::Named);
    }

    void SpoilMark(const Element& element, const Attribute& attribute, std::string value) {
        const std::size_t mark = value.find('#');
        std::string doubled = value;
        const auto Mark = [&](const char* kind, const std::string& text) {
            Set(element, attribute, "marks in captions", kind, text, Expected::Named);
        };
        Mark("doubled mark", doubled.insert(mark, 1, '#'));
        std::erase(value, '#');
        Mark("mark at the end", value + "#");
        Mark("mark before a blank", "# " + value);
        Mark("sign that isn't shown", value + " & co");
    }

    void Add(const Element& element, const char* attribute, const char* value, Expected expected = Expected::Judged,
             const char* family = "attributes without effect") {
        if (!element.Find(attribute))
            Make(element, family,
                 "added " + std::string(element.name) + "." + attribute + "=" + value + " to " +
                     std::string(element.Value("Type")),
                 expected, {AdditionEdit(m_file, element, attribute, value)}, true);
    }

    void SpoilElement(const Element& element) {
        const std::string name(element.name);
        Make(element, "names of attributes", "unknown attribute of " + name, Expected::Judged,
             {AdditionEdit(m_file, element, "Colour", "red")});
        if (&element != m_file.root)
            SpoilWhole(element, name);
        if (name == "ActionItem")
            SpoilAction(element);
        else if (name == "MenuItem")
            SpoilEntry(element);
        else if (name == "ExplorerItem")
            SpoilItem(element);
        else if (name == "Window")
            SpoilWindow(element);
        else if (name == "Service")
            SpoilService(element);
    }

    void SpoilWhole(const Element& element, const std::string& name) {
        const auto [begin, end] = ExtentOf(element);
        const std::string text = m_file.bytes.substr(begin, end - begin);
        const auto Write = [&, from = begin, to = end](const char* family, const char* kind, std::string by, Long line,
                                                       Expected expected) {
            m_act({family, kind + name, expected, m_path,
                   check::Edited(m_file.bytes, {Edit{m_file.path, from, to, std::move(by)}}), line});
        };
        const Long line = m_file.At(element.At()).at.line;
        Write("elements that are missing", "without the ", "", 0, Expected::Judged);
        Write("elements that are there twice", "twice the ", text + "\n" + text, line, Expected::Judged);
        Write("sound rewriting", "a comment before the ", "<!-- here -->" + text, line, Expected::Silent);
        Write("elements at a wrong place", "below another one the ", "<Group>" + text + "</Group>", line,
              Expected::Judged);
        if (name == "MenuItem" || name == "ActionItem")
            Write("names of elements", "small letters of the ", "<" + FoldText(name) + text.substr(1 + name.size()),
                  line, Expected::Judged);
    }

    void SpoilAction(const Element& element) {
        if (const Attribute* action = element.Find("Action"))
            Make(element, "commands", "without a procedure", Expected::Judged, {RemovalEdit(m_file, *action)});
    }

    void SpoilEntry(const Element& element) {
        Add(element, "Tip", "What it does");
        Add(element, "Separator", "Befor", Expected::Named);
        if (!IsOfType(element, "MenuItem"))
            Add(element, "ShortCutKey", "Ctrl+F11");
        if (IsOfType(element, "ToolbarItem"))
            Add(element, "Separator", "Before");
        if (IsOfType(element, "ContextMenuItem"))
            Add(element, "Path", "File");
        for (const char* type : {"MenuItem", "ContextMenuItem", "ToolbarItem", "ContextMenuTitle"})
            if (const Attribute* attribute = element.Find("Type"))
                if (!EqualText(attribute->Value(), type) && !EqualText(attribute->Value(), "MenuTitle"))
                    Set(element, *attribute, "types", std::string("Type ") + type, type);
        SpoilOrder(element);
    }

    // The order of each other entry of the same path in the file.
    void SpoilOrder(const Element& element) {
        const Attribute* order = element.Find("PositionOrder");
        if (!order || IsOfType(element, "MenuTitle"))
            return;
        for (const Element& other : std::span(m_file.root, 1 + m_file.root->below))
            if (&other != &element && other.name == "MenuItem" &&
                EqualText(other.Value("Path"), element.Value("Path")) && IsOfType(other, element.Value("Type")) &&
                !EqualText(other.Value("ActionItem"), element.Value("ActionItem")) && other.Find("PositionOrder")) {
                Set(element, *order, "orders", "order of a neighbour", std::string(other.Value("PositionOrder")));
                return;
            }
    }

    void SpoilItem(const Element& element) {
        if (const Attribute* type = element.Find("Type"))
            for (const char* other : {"Folder", "FolderChild", "Default"})
                if (!EqualText(type->Value(), other))
                    Set(element, *type, "types", std::string("Type ") + other + " for " + std::string(type->Value()),
                        other);
        if (const Attribute* progId = element.Find("ProgID"))
            Make(element, "classes", "folder without a ProgID", Expected::Judged, {RemovalEdit(m_file, *progId)});
        else
            Add(element, "ProgID", "Other.Class");
        Add(element, "Parent", "Nowhere", Expected::Judged, "slips in names");
        if (const Attribute* parent = element.Find("Parent")) {
            Make(element, "types", "without a Parent, a " + std::string(element.Value("Type")), Expected::Judged,
                 {RemovalEdit(m_file, *parent)});
            Set(element, *parent, "types", "itself", std::string(element.Value("Name")), Expected::Named);
        }
    }

    void SpoilWindow(const Element& element) {
        Add(element, "IsModal", "True", Expected::Judged, "windows");
        std::size_t begin = std::string::npos;
        std::size_t end = begin;
        for (const Element& page : element.Children()) {
            begin = std::min(begin, OffsetOf(page.At()));
            end = ExtentOf(page).second;
        }
        if (begin != std::string::npos)
            Make(element, "windows", "without pages", Expected::Named, {Edit{m_file.path, begin, end, ""}});
    }

    void SpoilService(const Element& element) {
        if (const Attribute* active = element.Find("Active"))
            Make(element, "services", "without Active", Expected::Named, {RemovalEdit(m_file, *active)});
        if (const Attribute* progId = element.Find("ProgID")) {
            Set(element, *progId, "services", "no class", "");
            Set(element, *progId, "services", "slip of the class", Slip(progId->Value()),
                EqualText(progId->Value(), "Corvane.Framework") ? Expected::Judged : Expected::Silent);
        }
        Add(element, "IsStartService", "True", Expected::Named, "services");
    }

    const check::File& m_file;
    std::string m_path;
    const std::function<void(const Mutant&)>& m_act;
};

} // namespace

void ForEachMutant(const check::File& file, const std::string& path, const std::function<void(const Mutant&)>& act) {
    Spoiler(file, path, act).Run();
}

} // namespace corvane::mutation
