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

class Spoiler {
public:
    Spoiler(const check::File& file, std::string path, const std::function<void(const Mutant&)>& act)
        : m_file(file), m_path(std::move(path)), m_act(act) {}

    void Run() {
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

    void Make(const Element& element, const std::string& kind, Expected expected, const std::vector<Edit>& edits,
              bool adds = false) {
        m_act({kind, expected, m_path, check::Edited(m_file.bytes, edits), m_file.At(element.At()).at.line, adds});
    }

    void Set(const Element& element, const Attribute& attribute, const std::string& what, const std::string& value,
             Expected expected = Expected::Judged) {
        if (attribute.Value() != value)
            Make(element, what + " in " + std::string(element.name) + "." + std::string(attribute.Name()), expected,
                 {ValueEdit(m_file, attribute, value)});
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

    static bool IsName(const Attribute& attribute) {
        static constexpr std::array names{"ActionItem", "Path", "Parent", "DefaultAction", "Image", "ImageDisabled"};
        return std::find(names.begin(), names.end(), attribute.Name()) != names.end();
    }

    void SpoilAttribute(const Element& element, const Attribute& attribute, const check::AttributeFormat& format) {
        const std::string value(attribute.Value());
        const std::string where = std::string(element.name) + "." + std::string(attribute.Name());
        Make(element, "other case of the name " + where, Expected::Judged,
             {NameEdit(m_file, attribute, FoldText(attribute.Name()))});
        if (format.need != check::Need::Optional)
            Make(element, "without " + where, Expected::Judged, {RemovalEdit(m_file, attribute)});
        switch (format.kind) {
        case check::ValueKind::Boolean:
            Set(element, attribute, "word for a boolean", "maybe");
            Set(element, attribute, "empty", "");
            break;
        case check::ValueKind::Number:
        case check::ValueKind::WholeNumber:
            Set(element, attribute, "word for a number", "first");
            Set(element, attribute, "unit", value + "px");
            Set(element, attribute, "blanks", " " + value + " ", Expected::Silent);
            break;
        case check::ValueKind::Word:
            Set(element, attribute, "slip", Slip(value));
            Set(element, attribute, "other case", FoldText(value), Expected::Silent);
            break;
        case check::ValueKind::Text:
            if (IsName(attribute) && !value.empty()) {
                Set(element, attribute, "slip", Slip(value), Expected::Named);
                Set(element, attribute, "blank", value + " ", Expected::Named);
                Set(element, attribute, "other case", FoldText(value), Expected::Silent);
            }
            break;
        }
        if (attribute.Name() == "Caption" && element.name == "MenuItem" && value.find('#') != std::string::npos)
            SpoilMark(element, attribute, value);
        if (attribute.Name() == "ShortCutKey") {
            Set(element, attribute, "words of another language", "Umschalt+F11", Expected::Named);
            Set(element, attribute, "key of the desktop", "Alt+F4", Expected::Named);
            Set(element, attribute, "plain letter", "K", Expected::Named);
        }
    }

    void SpoilMark(const Element& element, const Attribute& attribute, std::string value) {
        const std::size_t mark = value.find('#');
        std::string doubled = value;
        Set(element, attribute, "doubled mark", doubled.insert(mark, 1, '#'), Expected::Named);
        std::erase(value, '#');
        Set(element, attribute, "mark at the end", value + "#", Expected::Named);
        Set(element, attribute, "mark before a blank", "# " + value, Expected::Named);
        Set(element, attribute, "sign that isn't shown", value + " & co", Expected::Named);
    }

    void Add(const Element& element, const char* attribute, const char* value, Expected expected = Expected::Judged) {
        if (!element.Find(attribute))
            Make(element,
                 "added " + std::string(element.name) + "." + attribute + "=" + value + " to " +
                     std::string(element.Value("Type")),
                 expected, {AdditionEdit(m_file, element, attribute, value)}, true);
    }

    void SpoilElement(const Element& element) {
        const std::string_view name = element.name;
        Make(element, "unknown attribute of " + std::string(name), Expected::Judged,
             {AdditionEdit(m_file, element, "Colour", "red")});
        if (name == "MenuItem")
            SpoilEntry(element);
        else if (name == "ExplorerItem")
            SpoilItem(element);
        else if (name == "Window")
            SpoilWindow(element);
        else if (name == "Service")
            SpoilService(element);
    }

    void SpoilEntry(const Element& element) {
        Add(element, "Tip", "What it does");
        Add(element, "Separator", "Befor", Expected::Named);
        if (!EqualText(element.Value("Type"), "MenuItem"))
            Add(element, "ShortCutKey", "Ctrl+F11");
        if (EqualText(element.Value("Type"), "ToolbarItem"))
            Add(element, "Separator", "Before");
        if (EqualText(element.Value("Type"), "ContextMenuItem"))
            Add(element, "Path", "File");
        for (const char* type : {"MenuItem", "ContextMenuItem", "ToolbarItem", "ContextMenuTitle"})
            if (const Attribute* attribute = element.Find("Type"))
                if (!EqualText(attribute->Value(), type) && !EqualText(attribute->Value(), "MenuTitle"))
                    Set(element, *attribute, std::string("Type ") + type, type);
        SpoilOrder(element);
    }

    // The order of each other entry of the same path in the file.
    void SpoilOrder(const Element& element) {
        const Attribute* order = element.Find("PositionOrder");
        if (!order || EqualText(element.Value("Type"), "MenuTitle"))
            return;
        for (const Element& other : std::span(m_file.root, 1 + m_file.root->below))
            if (&other != &element && other.name == "MenuItem" &&
                EqualText(other.Value("Path"), element.Value("Path")) &&
                EqualText(other.Value("Type"), element.Value("Type")) &&
                !EqualText(other.Value("ActionItem"), element.Value("ActionItem")) && other.Find("PositionOrder")) {
                Set(element, *order, "order of a neighbour", std::string(other.Value("PositionOrder")));
                return;
            }
    }

    void SpoilItem(const Element& element) {
        if (const Attribute* type = element.Find("Type"))
            for (const char* other : {"Folder", "FolderChild", "Default"})
                if (!EqualText(type->Value(), other))
                    Set(element, *type, std::string("Type ") + other + " for " + std::string(type->Value()), other);
        if (const Attribute* progId = element.Find("ProgID"))
            Make(element, "folder without a ProgID", Expected::Judged, {RemovalEdit(m_file, *progId)});
        else
            Add(element, "ProgID", "Other.Class");
        Add(element, "Parent", "Nowhere");
    }

    void SpoilWindow(const Element& element) {
        Add(element, "IsModal", "True");
        std::size_t begin = std::string::npos;
        for (const Element& page : element.Children()) {
            begin = static_cast<std::size_t>(page.At() - m_file.bytes.data());
            break;
        }
        const std::size_t end = m_file.bytes.find("</Window>", begin);
        if (begin != std::string::npos && end != std::string::npos)
            Make(element, "window without pages", Expected::Named, {Edit{m_file.path, begin, end, ""}});
    }

    void SpoilService(const Element& element) {
        if (const Attribute* active = element.Find("Active"))
            Make(element, "without Service.Active", Expected::Named, {RemovalEdit(m_file, *active)});
        if (const Attribute* progId = element.Find("ProgID")) {
            Set(element, *progId, "no class", "NoClass");
            Set(element, *progId, "start of nothing", "");
        }
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
