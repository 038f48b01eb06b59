#include "desktop/forms/ShownEditors.h"

#include "desktop/forms/ChoiceEditors.h"
#include "desktop/forms/PictureLabel.h"
#include "desktop/forms/RowsEditor.h"
#include "desktop/forms/TypedEditors.h"
#include "desktop/style/QtText.h"

#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>
#include <cmath>

namespace corvane::desktop {

namespace {

using forms::FieldKind;
using forms::FieldLook;

constexpr int mostSteps = 1000; // of a progress bar

} // namespace

ButtonEditor::ButtonEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent)
    : FieldEditor(std::move(form), field) {
    if (Def().look == FieldLook::ToolButton) {
        m_button = new QToolButton(parent);
        m_button->setFocusPolicy(Qt::StrongFocus);
    } else {
        auto* button = new QPushButton(parent);
        button->setAutoDefault(false);
        m_button = button;
    }
    Compose(m_button, Growth::Keeps);
    ButtonEditor::ShowLabel();
    connect(m_button, &QAbstractButton::clicked, this, &ButtonEditor::Press);
}

void ButtonEditor::ShowLabel() {
    if (m_button)
        m_button->setText(Text(Model().Label(Field())));
}

void ButtonEditor::Press() {
    const auto form = SharedForm();
    form->Do({FormAct::What::Press, Field()}, [form, field = Field()] { form->Model().Press(field); });
}

ShownTextEditor::ShownTextEditor(std::shared_ptr<FormContext> form, std::size_t field, bool wraps, QWidget* parent)
    : FieldEditor(std::move(form), field), m_text(new PictureLabel(parent)) {
    m_text->setTextFormat(Qt::PlainText);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_text->setWordWrap(wraps);
    Compose(m_text, Growth::Fills);
}

ShownTextEditor::~ShownTextEditor() = default;

void ShownTextEditor::ShowValue() {
    if (!m_text)
        return;
    const std::string text = Model().Text(Field());
    if (const auto picture = forms::PictureIn(text))
        m_text->ShowPicture(*picture);
    else
        m_text->ShowText(Text(text + (text.empty() ? "" : Def().unit.text)));
    Describe();
}

ProgressEditor::ProgressEditor(std::shared_ptr<FormContext> form, std::size_t field, bool isHorizontal, QWidget* parent)
    : FieldEditor(std::move(form), field), m_bar(new QProgressBar(parent)) {
    m_bar->setOrientation(isHorizontal ? Qt::Horizontal : Qt::Vertical);
    Compose(m_bar, Growth::Fills);
}

// Without a range it is busy.
void ProgressEditor::ShowValue() {
    if (!m_bar)
        return;
    const Double least = Def().minimum.value_or(0);
    const Double most = Def().maximum.value_or(100);
    const auto* number = Model().Value(Field()).Get<Double>();
    if (!(most > least)) {
        m_bar->setRange(0, 0);
        return;
    }
    const Double part = (std::clamp(number ? *number : least, least, most) - least) / (most - least);
    m_bar->setRange(0, mostSteps);
    m_bar->setValue(static_cast<int>(std::lround(part * mostSteps)));
}

std::unique_ptr<FieldEditor> NewFieldEditor(const std::shared_ptr<FormContext>& form, std::size_t field,
                                            bool isHorizontal, bool wraps, QWidget* parent) {
    const forms::FieldDef& def = form->Model().Field(field);
    switch (def.kind) {
    case FieldKind::Multiline:
        return std::make_unique<LinesEditor>(form, field, parent);
    case FieldKind::Boolean:
        return std::make_unique<CheckEditor>(form, field, parent);
    case FieldKind::Choice:
        if (def.look == FieldLook::List)
            return std::make_unique<ListEditor>(form, field, parent);
        return std::make_unique<ComboEditor>(form, field, parent);
    case FieldKind::Choices:
        return std::make_unique<ListEditor>(form, field, parent);
    case FieldKind::Button:
        return std::make_unique<ButtonEditor>(form, field, parent);
    case FieldKind::Table:
    case FieldKind::Tree:
        return std::make_unique<RowsEditor>(form, field, parent);
    case FieldKind::Shown:
        return std::make_unique<ShownTextEditor>(form, field, wraps, parent);
    case FieldKind::Progress:
        return std::make_unique<ProgressEditor>(form, field, isHorizontal, parent);
    case FieldKind::Integer:
        if (def.look == FieldLook::Slider)
            return std::make_unique<SliderEditor>(form, field, isHorizontal, parent);
        [[fallthrough]];
    default:
        return std::make_unique<LineEditor>(form, field, parent);
    }
}

} // namespace corvane::desktop

#include "moc_ShownEditors.cpp"
