#include "desktop/forms/FormParts.h"

#include "desktop/style/QtText.h"

#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace corvane::desktop {

namespace {

using forms::FieldKind;
using forms::FormNode;
using forms::LayoutKind;
using forms::NodeKind;

constexpr int longLabel = 40; // characters, from which on a label may have several lines

Qt::Alignment AlignmentOf(const FormNode& node) {
    const QString words = Text(node.alignment).toLower();
    Qt::Alignment alignment;
    alignment.setFlag(Qt::AlignLeading, words.contains("left") || words.contains("leading"));
    alignment.setFlag(Qt::AlignTrailing, words.contains("right") || words.contains("trailing"));
    alignment.setFlag(Qt::AlignHCenter, words.contains("hcenter") || words.contains("aligncenter"));
    alignment.setFlag(Qt::AlignTop, words.contains("top"));
    alignment.setFlag(Qt::AlignBottom, words.contains("bottom"));
    alignment.setFlag(Qt::AlignVCenter, words.contains("vcenter") || words.contains("aligncenter"));
    return alignment;
}

// Whether it takes height that is left.
bool Grows(const FormNode& node, const forms::FormDef& form) {
    switch (node.kind) {
    case NodeKind::Place:
    case NodeKind::Scroll:
    case NodeKind::Splitter:
        return true;
    case NodeKind::Spacer:
        return node.expanding && !node.horizontal;
    case NodeKind::Field: {
        const forms::FieldDef& field = form.fields[node.field];
        return field.kind == FieldKind::Multiline || field.kind == FieldKind::Table || field.kind == FieldKind::Tree ||
               field.look == forms::FieldLook::List ||
               (!node.horizontal && (field.look == forms::FieldLook::Slider || field.kind == FieldKind::Progress));
    }
    default:
        return std::any_of(node.children.begin(), node.children.end(),
                           [&](const FormNode& child) { return Grows(child, form); });
    }
}

void LimitSize(const FormNode& node, QWidget& widget) {
    if (node.minimumWidth > 0)
        widget.setMinimumWidth(node.minimumWidth);
    if (node.minimumHeight > 0)
        widget.setMinimumHeight(node.minimumHeight);
    if (node.maximumWidth > 0)
        widget.setMaximumWidth(std::max(node.maximumWidth, node.minimumWidth));
    if (node.maximumHeight > 0)
        widget.setMaximumHeight(std::max(node.maximumHeight, node.minimumHeight));
}

QSpacerItem* SpacerOf(const FormNode& node) {
    const auto policy = node.expanding ? QSizePolicy::Expanding : QSizePolicy::Fixed;
    const int width = std::max(0, node.minimumWidth);
    const int height = std::max(0, node.minimumHeight);
    // What Designer writes down as the size of one that expands is what it was drawn with.
    if (node.expanding)
        return node.horizontal ? new QSpacerItem(0, 0, policy, QSizePolicy::Minimum)
                               : new QSpacerItem(0, 0, QSizePolicy::Minimum, policy);
    return node.horizontal ? new QSpacerItem(width, 0, policy, QSizePolicy::Minimum)
                           : new QSpacerItem(0, height, QSizePolicy::Minimum, policy);
}

void SetDistances(const FormNode& node, QLayout& layout) {
    if (node.margin)
        layout.setContentsMargins(*node.margin, *node.margin, *node.margin, *node.margin);
    if (node.spacing)
        layout.setSpacing(*node.spacing);
}

int StretchAt(const std::vector<int>& stretch, std::size_t index) {
    return index < stretch.size() ? stretch[index] : 0;
}

} // namespace

FormBuilder::FormBuilder(std::shared_ptr<FormContext> form, FormParts& parts)
    : m_form(std::move(form)), m_parts(parts) {
    std::size_t count = 0;
    forms::ForEachNode(m_form->Model().Def().root, [&](const Node&) { ++count; });
    m_parts.nodes.resize(count);
    m_parts.editors.resize(m_form->Model().Count());
}

void FormBuilder::Fill(QWidget& widget) {
    const Node& root = m_form->Model().Def().root;
    m_parts.nodes[root.index].widget = &widget;
    LimitSize(root, widget);
    LayOut(root, &widget, false);
    for (auto& [field, label] : m_parts.labels) // some lie before what they are for
        if (const auto& editor = m_parts.editors[field])
            label->setBuddy(editor->Main());
}

FormBuilder::Piece FormBuilder::Make(const Node& node, QWidget* parent) {
    Piece piece;
    switch (node.kind) {
    case NodeKind::Field:
        return MakeField(node, parent);
    case NodeKind::Radio:
        return MakeRadio(node, parent);
    case NodeKind::Group:
        return MakeGroup(node, parent);
    case NodeKind::Box:
        if (!node.isNative)
            return {nullptr, LayOut(node, parent, true)};
        piece.widget = MakeBox(node, parent);
        break;
    case NodeKind::Label:
        piece.widget = MakeLabel(node, parent);
        break;
    case NodeKind::Tabs:
        piece.widget = MakeTabs(node, parent);
        break;
    case NodeKind::Scroll:
        piece.widget = MakeScroll(node, parent);
        break;
    case NodeKind::Splitter:
        piece.widget = MakeSplitter(node, parent);
        break;
    case NodeKind::Separator: {
        auto* line = new QFrame(parent);
        line->setFrameShape(node.horizontal ? QFrame::HLine : QFrame::VLine);
        line->setFrameShadow(QFrame::Sunken);
        piece.widget = line;
        break;
    }
    case NodeKind::Place:
        piece.widget = MakePlace(node, parent);
        break;
    case NodeKind::Tab: // which MakeTabs makes
    case NodeKind::Spacer:
        piece.widget = new QWidget(parent);
        break;
    }
    m_parts.nodes[node.index].widget = piece.widget;
    LimitSize(node, *piece.widget);
    if (!node.tip.IsEmpty())
        piece.widget->setToolTip(Text(node.tip.text));
    return piece;
}

FormBuilder::Piece FormBuilder::MakeField(const Node& node, QWidget* parent) {
    auto editor = NewFieldEditor(m_form, node.field, node.horizontal, node.wraps, parent);
    if (auto* text = qobject_cast<QLabel*>(editor->Main()))
        AlignWithLine(*text);
    LimitSize(node, *editor->Main());
    m_parts.nodes[node.index].editor = editor.get();
    QLayout* layout = editor->Layout();
    m_parts.editors[node.field] = std::move(editor);
    return {nullptr, layout};
}

FormBuilder::Piece FormBuilder::MakeRadio(const Node& node, QWidget* parent) {
    auto& editor = m_parts.editors[node.field];
    if (!editor)
        editor = std::make_unique<RadioEditor>(m_form, node.field);
    auto* column = new QVBoxLayout;
    QRadioButton* button = static_cast<RadioEditor&>(*editor).AddButton(node.choice, parent, column);
    LimitSize(node, *button);
    m_parts.nodes[node.index].widget = button;
    return {nullptr, column};
}

FormBuilder::Piece FormBuilder::MakeGroup(const Node& node, QWidget* parent) {
    auto* group = new QGroupBox(Text(node.text.text), parent);
    LimitSize(node, *group);
    if (!node.tip.IsEmpty())
        group->setToolTip(Text(node.tip.text));
    LayOut(node, group, false);
    if (node.field == forms::none) {
        m_parts.nodes[node.index].widget = group;
        return {group, nullptr};
    }
    auto editor = std::make_unique<GroupEditor>(m_form, node.field, group);
    m_parts.nodes[node.index].editor = editor.get();
    QLayout* layout = editor->Layout();
    m_parts.editors[node.field] = std::move(editor);
    return {nullptr, layout};
}

QWidget* FormBuilder::MakeLabel(const Node& node, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    if (node.labelled != forms::none) {
        label->setText(Marked(m_form->Model().Label(node.labelled), m_form->Model().Field(node.labelled).required));
        m_parts.labels.emplace(node.labelled, label);
    } else {
        label->setText(Text(forms::PlainText(node.text.text)));
    }
    label->setWordWrap(node.wraps || label->text().size() > longLabel);
    if (node.bold) {
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
    }
    return label;
}

QWidget* FormBuilder::MakeTabs(const Node& node, QWidget* parent) {
    auto* tabs = new QTabWidget(parent);
    for (const Node& child : node.children) {
        auto* page = new QWidget(tabs);
        LayOut(child, page, false);
        const int index = tabs->addTab(page, Text(child.text.text));
        tabs->setTabToolTip(index, Text(child.tip.text));
        auto& part = m_parts.nodes[child.index];
        part.tabs = tabs;
        part.tab = index;
        part.widget = page;
    }
    return tabs;
}

QWidget* FormBuilder::MakeScroll(const Node& node, QWidget* parent) {
    auto* scroll = new QScrollArea(parent);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* content = new QWidget(scroll);
    if (node.children.size() == 1 && node.children.front().isNative && node.children.front().kind == NodeKind::Box &&
        node.layout == LayoutKind::None) {
        m_parts.nodes[node.children.front().index].widget = content;
        LayOut(node.children.front(), content, false);
    } else {
        LayOut(node, content, false);
    }
    scroll->setWidget(content);
    content->setAutoFillBackground(false);
    return scroll;
}

QWidget* FormBuilder::MakeSplitter(const Node& node, QWidget* parent) {
    auto* splitter = new QSplitter(node.horizontal ? Qt::Horizontal : Qt::Vertical, parent);
    splitter->setChildrenCollapsible(false);
    for (std::size_t i = 0; i < node.children.size(); ++i) {
        const Node& child = node.children[i];
        auto* side = new QWidget(splitter);
        auto* around = new QVBoxLayout(side);
        around->setContentsMargins(0, 0, 0, 0);
        const Piece piece = Make(child, side);
        if (piece.widget)
            around->addWidget(piece.widget);
        else
            around->addLayout(piece.layout);
        splitter->addWidget(side);
        m_parts.nodes[child.index].side = side;
        splitter->setStretchFactor(static_cast<int>(i), StretchAt(node.stretch, i));
    }
    return splitter;
}

QWidget* FormBuilder::MakePlace(const Node& node, QWidget* parent) {
    auto* place = new QWidget(parent);
    place->setObjectName(Text(node.name));
    place->setAccessibleName(Text(node.text.text));
    place->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto* layout = new QVBoxLayout(place);
    layout->setContentsMargins(0, 0, 0, 0);
    if (m_form->Host().fill)
        if (QWidget* own = m_form->Host().fill(place))
            layout->addWidget(own);
    return place;
}

QWidget* FormBuilder::MakeBox(const Node& node, QWidget* parent) {
    auto* box = new QWidget(parent);
    LayOut(node, box, false);
    return box;
}

QLayout* FormBuilder::LayOut(const Node& node, QWidget* parent, bool isNested) {
    QLayout* layout = node.layout == LayoutKind::Grid || node.layout == LayoutKind::Form
                          ? LayOutInGrid(node, parent, isNested)
                          : LayOutInLine(node, parent, isNested);
    SetDistances(node, *layout);
    return layout;
}

// What is left of the height stays below, unless something takes it.
QLayout* FormBuilder::LayOutInLine(const Node& node, QWidget* parent, bool isNested) {
    const bool isRow = node.layout == LayoutKind::Row;
    auto* line = new QBoxLayout(isRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, isNested ? nullptr : parent);
    for (std::size_t i = 0; i < node.children.size(); ++i) {
        const Node& child = node.children[i];
        if (child.kind == NodeKind::Spacer) {
            line->addItem(SpacerOf(child));
            line->setStretch(line->count() - 1, StretchAt(node.stretch, i));
            continue;
        }
        const Piece piece = Make(child, parent);
        Qt::Alignment alignment = AlignmentOf(child);
        auto* label = qobject_cast<QLabel*>(piece.widget);
        if (isRow && label && child.labelled != forms::none && !alignment && !label->wordWrap()) {
            AlignWithLine(*label);
            alignment = Qt::AlignTop;
        }
        if (piece.widget)
            line->addWidget(piece.widget, StretchAt(node.stretch, i), alignment);
        else
            line->addLayout(piece.layout, StretchAt(node.stretch, i));
    }
    if (!isRow && !isNested && !Grows(node, m_form->Model().Def()))
        line->addStretch(1);
    return line;
}

QLayout* FormBuilder::LayOutInGrid(const Node& node, QWidget* parent, bool isNested) {
    auto* grid = isNested ? new QGridLayout : new QGridLayout(parent);
    for (const Node& child : node.children)
        AddToGrid(child, node, *grid, parent);
    for (std::size_t i = 0; i < node.rowStretch.size(); ++i)
        grid->setRowStretch(static_cast<int>(i), node.rowStretch[i]);
    for (std::size_t i = 0; i < node.columnStretch.size(); ++i)
        grid->setColumnStretch(static_cast<int>(i), node.columnStretch[i]);
    if (node.layout == LayoutKind::Form && node.columnStretch.empty())
        grid->setColumnStretch(1, 1);
    if (!isNested && !Grows(node, m_form->Model().Def()))
        grid->setRowStretch(grid->rowCount(), 1);
    return grid;
}

void FormBuilder::AddToGrid(const Node& child, const Node& node, QGridLayout& grid, QWidget* parent) {
    const forms::GridCell& cell = child.cell;
    if (child.kind == NodeKind::Spacer)
        return grid.addItem(SpacerOf(child), cell.row, cell.column, cell.rowSpan, cell.columnSpan);
    const Piece piece = Make(child, parent);
    Qt::Alignment alignment = AlignmentOf(child);
    auto* label = qobject_cast<QLabel*>(piece.widget);
    if (label && child.labelled != forms::none && !alignment) {
        AlignWithLine(*label);
        alignment = Qt::AlignTop;
        if (node.layout == LayoutKind::Form)
            alignment |= Qt::Alignment(label->style()->styleHint(QStyle::SH_FormLayoutLabelAlignment)) &
                         Qt::AlignHorizontal_Mask;
        if (label->wordWrap())
            alignment = {}; // it needs the width to find its height
    }
    if (piece.widget)
        grid.addWidget(piece.widget, cell.row, cell.column, cell.rowSpan, cell.columnSpan, alignment);
    else
        grid.addLayout(piece.layout, cell.row, cell.column, cell.rowSpan, cell.columnSpan);
}

// The label of a field lies at its first line, also when a problem or more lines come below that; and so does a text
// that a field shows beside others.
void FormBuilder::AlignWithLine(QLabel& label) {
    if (m_lineHeight == 0) {
        const QLineEdit line;
        m_lineHeight = line.sizeHint().height();
    }
    label.setMinimumHeight(std::max(m_lineHeight, label.fontMetrics().height()));
}

} // namespace corvane::desktop
