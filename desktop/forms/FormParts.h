// The widgets of a form, made from its model and laid out as it declares.
#pragma once

#include "desktop/forms/ChoiceEditors.h"
#include "desktop/forms/FieldEditor.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

class QGridLayout;
class QLabel;
class QLayout;
class QTabWidget;

namespace corvane::desktop {

struct FormParts {
    // What shows a node of the form: one of them, or none for a layout in a layout and for free space.
    struct Part {
        QPointer<QWidget> widget;
        FieldEditor* editor = nullptr;
        QPointer<QWidget> side;    // of a splitter, which has nothing but this node
        QPointer<QTabWidget> tabs; // of a tab, which is its page at that index
        int tab = 0;
    };

    std::vector<Part> nodes;                             // by the node's index
    std::vector<std::unique_ptr<FieldEditor>> editors;   // by the field's index; null where the form shows none
    std::multimap<std::size_t, QPointer<QLabel>> labels; // by the field's index
};

class FormBuilder {
public:
    FormBuilder(std::shared_ptr<FormContext> form, FormParts& parts);

    // Fills the widget with the whole form.
    void Fill(QWidget& widget);

private:
    // Exactly one of them.
    struct Piece {
        QWidget* widget = nullptr;
        QLayout* layout = nullptr;
    };
    using Node = forms::FormNode;

    [[nodiscard]] Piece Make(const Node& node, QWidget* parent);
    [[nodiscard]] Piece MakeField(const Node& node, QWidget* parent);
    [[nodiscard]] Piece MakeRadio(const Node& node, QWidget* parent);
    [[nodiscard]] Piece MakeGroup(const Node& node, QWidget* parent);
    [[nodiscard]] QWidget* MakeLabel(const Node& node, QWidget* parent);
    [[nodiscard]] QWidget* MakeTabs(const Node& node, QWidget* parent);
    [[nodiscard]] QWidget* MakeScroll(const Node& node, QWidget* parent);
    [[nodiscard]] QWidget* MakeSplitter(const Node& node, QWidget* parent);
    [[nodiscard]] QWidget* MakePlace(const Node& node, QWidget* parent);
    [[nodiscard]] QWidget* MakeBox(const Node& node, QWidget* parent);

    // Lays the node's children out in the widget, or in a layout of their own within its layout.
    QLayout* LayOut(const Node& node, QWidget* parent, bool isNested);
    QLayout* LayOutInLine(const Node& node, QWidget* parent, bool isNested);
    QLayout* LayOutInGrid(const Node& node, QWidget* parent, bool isNested);
    void AddToGrid(const Node& child, const Node& node, QGridLayout& grid, QWidget* parent);
    void AlignWithLine(QLabel& label);

    std::shared_ptr<FormContext> m_form;
    FormParts& m_parts;
    int m_lineHeight = 0; // of a field of one line
};

} // namespace corvane::desktop
