#include "adapters/common/Nearest.h"
#include "corvane/base/Text.h"
#include "forms/FormReading.h"

#include <algorithm>
#include <array>
#include <map>

namespace corvane::forms {

namespace {

constexpr int mostPixels = 16777215; // Designer writes it for "no maximum"
constexpr int mostCells = 10000;

// All classes of the subset, for the nearest of an unknown one.
const std::vector<std::string>& KnownClasses() {
    static const std::vector<std::string> classes{
        "QWidget",        "QFrame",      "QGroupBox",     "QTabWidget",   "QScrollArea",    "QSplitter",
        "Line",           "QLabel",      "QLineEdit",     "QTextEdit",    "QPlainTextEdit", "QSpinBox",
        "QDoubleSpinBox", "QSlider",     "QCheckBox",     "QRadioButton", "QComboBox",      "QListWidget",
        "QDateEdit",      "QTimeEdit",   "QDateTimeEdit", "QPushButton",  "QToolButton",    "QTableWidget",
        "QTreeWidget",    "QProgressBar"};
    return classes;
}

LayoutKind LayoutOf(std::string_view className) {
    if (className == "QGridLayout")
        return LayoutKind::Grid;
    if (className == "QFormLayout")
        return LayoutKind::Form;
    if (className == "QHBoxLayout")
        return LayoutKind::Row;
    return className == "QVBoxLayout" ? LayoutKind::Column : LayoutKind::None;
}

// The whole numbers of "1,0,2"; what isn't one counts as 0.
std::vector<int> NumbersIn(std::string_view text) {
    std::vector<int> numbers;
    for (std::size_t begin = 0; begin < text.size() && numbers.size() < mostCells;) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const auto number = NumberIn(text.substr(begin, end - begin));
        numbers.push_back(number && *number > 0 && *number < 10000 ? static_cast<int>(*number) : 0);
        begin = end + 1;
    }
    return numbers;
}

void ReadSize(const XmlElement* size, int& width, int& height) {
    const auto Part = [&](std::string_view name) {
        const XmlElement* part = size->Child(name);
        const auto number = part ? NumberIn(part->text) : std::nullopt;
        return number && *number > 0 && *number < mostPixels ? static_cast<int>(*number) : 0;
    };
    if (size) {
        width = Part("width");
        height = Part("height");
    }
}

std::string WhatIs(const XmlElement& widget) {
    const std::string_view name = widget.Attribute("name");
    return name.empty() ? "a " + std::string(widget.Attribute("class")).substr(0, 40) : QuotedName(name);
}

// How much of the space along a splitter the widget gets, by its size policy.
int StretchOf(const XmlElement& widget, bool isHorizontal) {
    for (const XmlElement& property : widget.children) {
        const XmlElement* policy = property.Attribute("name") == "sizePolicy" ? property.Child("sizepolicy") : nullptr;
        const XmlElement* stretch = policy ? policy->Child(isHorizontal ? "horstretch" : "verstretch") : nullptr;
        if (const std::vector<int> numbers = NumbersIn(stretch ? stretch->text : ""); !numbers.empty())
            return numbers.front();
    }
    return 0;
}

bool IsContainer(std::string_view className) {
    return className == "QWidget" || className == "QFrame" || className == "QGroupBox";
}

} // namespace

FormNode WidgetReader::ReadRoot(const XmlElement& widget) {
    const std::string className(widget.Attribute("class"));
    FormNode node;
    node.at = widget.at;
    node.name = widget.Attribute("name");
    Properties properties(widget, WhatIs(widget), m_problems);
    properties.Ignore({"geometry", "windowTitle", "sizePolicy", "windowIcon"});
    m_form.service = properties.TakeText("service").text;
    m_form.category = properties.TakeText("category").text;
    m_form.immediate = properties.TakeBoolean("immediate").value_or(false);
    ReadCommon(widget, node, properties);
    properties.End();
    if (className != "QWidget" && className != "QFrame")
        m_problems.Add(FormFault::UnknownWidget, widget.at,
                       "the form is a " + QuotedName(className) + ", of which only the content is shown",
                       "Begin with the template \"Widget\" in Designer.");
    ReadChildren(widget, node, nullptr);
    return node;
}

// group is the nearest box around it that can name radio buttons.
FormNode WidgetReader::ReadWidget(const XmlElement& widget, const FormNode* group) {
    const std::string className(widget.Attribute("class"));
    FormNode node;
    node.at = widget.at;
    node.name = widget.Attribute("name");
    Properties properties(widget, WhatIs(widget), m_problems);
    properties.Ignore({"geometry", "sizePolicy", "accessibleDescription", "frameShape", "frameShadow"});
    ReadCommon(widget, node, properties);
    bool isUnknown = false; // whose properties need no problems of their own
    const bool isPlace = properties.TakeBoolean("place").value_or(false);
    if (isPlace) {
        node.kind = NodeKind::Place;
        node.text = properties.TakeText("accessibleName");
        if (node.name.empty())
            m_problems.Add(FormFault::MissingName, node.at, "a place for a widget has no name", "Name it in Designer.");
    } else if (className == "QLabel" && !EqualText(properties.TakeText("kind").text, WordOf(FieldKind::Shown))) {
        node.kind = NodeKind::Label;
        node.text = properties.TakeText("text");
        node.buddy = properties.TakeText("buddy").text;
        node.wraps = properties.TakeBoolean("wordWrap").value_or(false);
        if (const XmlElement* font = properties.Take("font"))
            node.bold = font->Child("bold") && EqualText(font->Child("bold")->text, "true");
        properties.Ignore({"alignment", "textFormat", "textInteractionFlags", "kind"});
    } else if (className == "Line") {
        node.kind = NodeKind::Separator;
        node.horizontal = properties.TakeWord("orientation") != "Vertical";
    } else if (className == "QRadioButton") {
        ReadRadio(widget, node, properties, group);
    } else if (className == "QTabWidget") {
        node.kind = NodeKind::Tabs;
        properties.Ignore({"currentIndex", "tabPosition", "documentMode"});
    } else if (className == "QScrollArea") {
        node.kind = NodeKind::Scroll;
        properties.Ignore({"widgetResizable", "horizontalScrollBarPolicy", "verticalScrollBarPolicy"});
    } else if (className == "QSplitter") {
        node.kind = NodeKind::Splitter;
        node.horizontal = properties.TakeWord("orientation") != "Vertical";
        properties.Ignore({"childrenCollapsible", "handleWidth", "opaqueResize"});
    } else if (className == "QGroupBox") {
        node.kind = NodeKind::Group;
        node.text = properties.TakeText("title");
        properties.Ignore({"flat", "alignment"});
        if (properties.TakeBoolean("checkable").value_or(false)) {
            FieldDef field = NewField(node);
            field.kind = FieldKind::Boolean;
            field.look = FieldLook::CheckableGroup;
            field.label = node.text;
            const auto checked = properties.TakeBoolean("checked");
            field.value = checked.value_or(true); // as Designer doesn't write it then
            field.hasDefault = true;
            ReadDefault(properties, field);
            AddField(node, std::move(field));
        } else {
            properties.Ignore({"checked"});
        }
    } else if (!IsContainer(className) && !ReadField(widget, className, node, properties)) {
        UnknownWidget(widget, className);
        isUnknown = true;
    }
    if (!isUnknown)
        properties.End();
    if (node.kind == NodeKind::Tabs)
        ReadTabs(widget, node);
    else if (node.kind == NodeKind::Box || node.kind == NodeKind::Group || node.kind == NodeKind::Scroll ||
             node.kind == NodeKind::Splitter)
        ReadChildren(widget, node, node.kind == NodeKind::Group && !node.name.empty() ? &node : group);
    return node;
}

void WidgetReader::ReadCommon(const XmlElement& /*widget*/, FormNode& node, Properties& properties) {
    ReadSize(properties.Take("minimumSize"), node.minimumWidth, node.minimumHeight);
    ReadSize(properties.Take("maximumSize"), node.maximumWidth, node.maximumHeight);
    node.tip = properties.TakeText("toolTip");
    node.enabled = properties.TakeBoolean("enabled").value_or(true);
    node.visible = properties.TakeBoolean("visible").value_or(true);
}

void WidgetReader::ReadChildren(const XmlElement& widget, FormNode& node, const FormNode* group) {
    bool hasLayout = false;
    for (const XmlElement& child : widget.children) {
        if (child.name == "layout" && !hasLayout) {
            hasLayout = true;
            ReadLayout(child, node, group);
        }
    }
    for (const XmlElement& child : widget.children) {
        if (child.name == "widget") {
            const bool isOutside = node.kind != NodeKind::Scroll && node.kind != NodeKind::Splitter;
            if (isOutside)
                m_problems.Add(FormFault::OutsideLayout, child.at,
                               WhatIs(child) + " lies in no layout, and is shown below the others",
                               "Lay out the widget around it in Designer.");
            FormNode part = ReadWidget(child, group);
            if (isOutside && node.layout == LayoutKind::None)
                node.layout = LayoutKind::Column;
            part.cell = {static_cast<int>(node.children.size()), 0, 1, node.layout == LayoutKind::Form ? 2 : 1};
            node.children.push_back(std::move(part));
            if (node.kind == NodeKind::Splitter)
                node.stretch.push_back(StretchOf(child, node.horizontal));
        } else if (child.name != "layout" && child.name != "property" && child.name != "attribute" &&
                   child.name != "item" && child.name != "column" && child.name != "row" && child.name != "addaction" &&
                   child.name != "action") {
            m_problems.Add(FormFault::UnknownElement, child.at,
                           "the element " + QuotedName(child.name) + " has no effect in a form", "Take it away.");
        }
    }
}

void WidgetReader::ReadTabs(const XmlElement& widget, FormNode& node) {
    for (const XmlElement& child : widget.children) {
        if (child.name != "widget")
            continue;
        FormNode tab;
        tab.kind = NodeKind::Tab;
        tab.at = child.at;
        tab.name = child.Attribute("name");
        Properties properties(child, WhatIs(child), m_problems);
        properties.Ignore({"geometry", "sizePolicy", "icon"});
        ReadCommon(child, tab, properties);
        tab.text = properties.TakeText("title");
        if (FormText tip = properties.TakeText("toolTip"); !tip.IsEmpty())
            tab.tip = std::move(tip); // the attribute beside the property
        properties.End();
        ReadChildren(child, tab, tab.name.empty() ? nullptr : &tab);
        node.children.push_back(std::move(tab));
    }
}

void WidgetReader::ReadLayout(const XmlElement& layout, FormNode& node, const FormNode* group) {
    const std::string className(layout.Attribute("class"));
    node.layout = LayoutOf(className);
    if (node.layout == LayoutKind::None) {
        m_problems.Add(FormFault::UnknownWidget, layout.at, "there is no layout " + QuotedName(className) + " in forms",
                       "Take a grid, a form, a horizontal or a vertical layout.");
        node.layout = LayoutKind::Column;
    }
    Properties properties(layout, "a layout", m_problems);
    properties.Ignore({"fieldGrowthPolicy", "rowWrapPolicy", "labelAlignment", "formAlignment", "sizeConstraint",
                       "topMargin", "rightMargin", "bottomMargin", "verticalSpacing"});
    node.margin = properties.TakeInteger("leftMargin", 0, 1000);
    node.spacing = properties.TakeInteger("spacing", -1, 1000);
    if (const auto spacing = properties.TakeInteger("horizontalSpacing", -1, 1000))
        node.spacing = spacing;
    if (node.spacing && *node.spacing < 0)
        node.spacing.reset(); // the style's
    properties.End();
    node.stretch = NumbersIn(layout.Attribute("stretch"));
    node.rowStretch = NumbersIn(layout.Attribute("rowstretch"));
    node.columnStretch = NumbersIn(layout.Attribute("columnstretch"));
    node.children.reserve(layout.children.size());
    for (const XmlElement& item : layout.children) {
        if (item.name == "item")
            ReadItem(item, node, group);
        else if (item.name != "property")
            m_problems.Add(FormFault::UnknownElement, item.at,
                           "the element " + QuotedName(item.name) + " has no effect in a form", "Take it away.");
    }
    CheckCells(node);
}

// Designer lays nothing upon another; what is written or merged by hand may.
void WidgetReader::CheckCells(const FormNode& layout) {
    if (layout.layout != LayoutKind::Grid && layout.layout != LayoutKind::Form)
        return;
    constexpr int looked = 16; // at so many rows and columns of one
    std::map<std::pair<int, int>, const FormNode*> taken;
    for (const FormNode& child : layout.children) {
        if (child.kind == NodeKind::Spacer)
            continue;
        const FormNode* other = nullptr;
        for (int row = 0; row < std::min(child.cell.rowSpan, looked); ++row)
            for (int column = 0; column < std::min(child.cell.columnSpan, looked); ++column)
                if (const auto [it, isNew] =
                        taken.try_emplace({child.cell.row + row, child.cell.column + column}, &child);
                    !isNew && !other)
                    other = it->second;
        if (other)
            m_problems.Add(FormFault::SharedCell, child.at,
                           (child.name.empty() ? "this" : QuotedName(child.name)) + " is in the cell of " +
                               (other->name.empty() ? "another one" : QuotedName(other->name)) + ", which it covers",
                           "Move one of both to a free cell in Designer.");
    }
}

void WidgetReader::ReadItem(const XmlElement& item, FormNode& parent, const FormNode* group) {
    const auto Number = [&](std::string_view name, int least, int otherwise) {
        const std::string_view text = item.Attribute(name);
        if (text.empty())
            return otherwise;
        const auto number = NumberIn(text);
        if (number && *number >= least && *number <= mostCells)
            return static_cast<int>(*number);
        m_problems.Add(FormFault::BadValue, item.at, "the " + std::string(name) + " of a cell is " + QuotedName(text),
                       "Arrange the layout again in Designer.");
        return otherwise;
    };
    const auto order = static_cast<int>(parent.children.size());
    const bool isRow = parent.layout == LayoutKind::Row;
    for (const XmlElement& child : item.children) {
        FormNode node;
        if (child.name == "widget") {
            node = ReadWidget(child, group);
        } else if (child.name == "layout") {
            node.at = child.at;
            node.isNative = false;
            node.margin = 0;
            ReadLayout(child, node, group);
        } else if (child.name == "spacer") {
            node.kind = NodeKind::Spacer;
            node.at = child.at;
            node.name = child.Attribute("name");
            Properties properties(child, "a spacer", m_problems);
            node.horizontal = properties.TakeWord("orientation") != "Vertical";
            const std::string type = properties.TakeWord("sizeType");
            node.expanding = type != "Fixed" && type != "Minimum";
            ReadSize(properties.Take("sizeHint"), node.minimumWidth, node.minimumHeight);
            properties.End();
        } else {
            m_problems.Add(FormFault::UnknownElement, child.at,
                           "the element " + QuotedName(child.name) + " has no effect in a form", "Take it away.");
            continue;
        }
        node.cell = {Number("row", 0, isRow ? 0 : order), Number("column", 0, isRow ? order : 0),
                     Number("rowspan", 1, 1), Number("colspan", 1, 1)};
        node.alignment = item.Attribute("alignment");
        parent.children.push_back(std::move(node));
    }
}

// The buttons of one group are one field, a choice; it has the name of the button group, or of the box around it.
void WidgetReader::ReadRadio(const XmlElement& /*widget*/, FormNode& node, Properties& properties,
                             const FormNode* group) {
    std::string name = properties.TakeText("buttonGroup").text;
    const bool isOfBox = name.empty() && group;
    if (isOfBox)
        name = group->name;
    if (name.empty())
        m_problems.Add(FormFault::MissingName, node.at,
                       "the radio button " + QuotedName(node.name) + " belongs to no group with a name",
                       "Put it into a group box, or into a button group, and name that.");
    node.kind = NodeKind::Radio;
    node.text = properties.TakeText("text");
    const auto [it, isNew] = m_radios.try_emplace(FoldText(name), m_form.fields.size());
    if (isNew) {
        FieldDef field;
        field.name = name;
        field.kind = FieldKind::Choice;
        field.look = FieldLook::Radio;
        field.at = node.at;
        field.value = "";
        if (isOfBox)
            field.label = group->text;
        AddField(node, std::move(field));
        it->second = node.field;
    }
    node.field = it->second;
    FieldDef& field = m_form.fields[node.field];
    node.choice = field.choices.size();
    field.choices.push_back({PlainText(node.text.text), node.text});
    if (properties.TakeBoolean("checked").value_or(false)) {
        field.value = field.choices.back().value;
        field.hasDefault = true;
    }
    field.required = properties.TakeBoolean("required").value_or(false) || field.required;
    if (field.tip.IsEmpty())
        field.tip = node.tip;
}

FieldDef WidgetReader::NewField(const FormNode& node) const {
    FieldDef field;
    field.name = node.name;
    field.at = node.at;
    field.tip = node.tip;
    field.enabled = node.enabled;
    field.visible = node.visible;
    return field;
}

void WidgetReader::AddField(FormNode& node, FieldDef field) {
    const bool isRadio = field.look == FieldLook::Radio; // each of its buttons says so
    if (field.name.empty() && !isRadio)
        m_problems.Add(FormFault::MissingName, field.at, "a field has no name, and so no property is bound to it",
                       "Name it in Designer as the property of the page's class.");
    else if (!field.name.empty() && !m_form.names.try_emplace(field.name, m_form.fields.size()).second)
        m_problems.Add(FormFault::DuplicateName, field.at,
                       "there are two fields " + QuotedName(field.name) + "; the second one is bound to nothing",
                       "Name one of them otherwise.");
    node.field = m_form.fields.size();
    m_form.fields.push_back(std::move(field));
}

void WidgetReader::UnknownWidget(const XmlElement& widget, const std::string& className) {
    const auto nearest = Nearest(KnownClasses(), className);
    m_problems.Add(FormFault::UnknownWidget, widget.at,
                   "there is no widget " + QuotedName(className) + " in forms; it is left out",
                   nearest ? "Take " + QuotedName(*nearest) +
                                 ", or give the widget the dynamic property \"place\" and make it in the page's class."
                           : "Give it the dynamic property \"place\" and make it in the page's class.");
}

} // namespace corvane::forms
