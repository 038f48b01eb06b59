#include "desktop/forms/ChoiceEditors.h"

#include "desktop/style/QtText.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionComboBox>
#include <QVBoxLayout>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int fewestCharacters = 12; // of a box
constexpr int mostCharacters = 24;   // beyond which a choice is cut in a narrow box, and shown whole when it is opened
constexpr int rowsShown = 5;
constexpr int manyChoices = 20; // from which on they are searched by typing

QString LabelOf(const forms::FormChoice& choice) {
    return Text(forms::PlainText(choice.label.text));
}

int IndexOf(const std::vector<forms::FormChoice>& choices, const std::string& value) {
    const auto it = std::find_if(choices.begin(), choices.end(),
                                 [&](const forms::FormChoice& choice) { return choice.value == value; });
    return it == choices.end() ? -1 : static_cast<int>(it - choices.begin());
}

// Of a box that shows its choices whole, unless there are many or they are long.
int LeastWidth(const QComboBox& box) {
    const QFontMetrics metrics = box.fontMetrics();
    const int most = metrics.averageCharWidth() * mostCharacters;
    int widest = metrics.averageCharWidth() * fewestCharacters;
    for (int i = 0; i < std::min(box.count(), manyChoices); ++i)
        widest = std::max(widest, std::min(most, metrics.horizontalAdvance(box.itemText(i))));
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = box.isEditable();
    return box.style()->sizeFromContents(QStyle::CT_ComboBox, &option, {widest, metrics.height()}, &box).width();
}

} // namespace

ComboEditor::ComboEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent)
    : FieldEditor(std::move(form), field), m_box(new QComboBox(parent)),
      m_isEditable(Def().look == forms::FieldLook::EditableCombo) {
    LeaveWheel(m_box);
    if (m_isEditable) {
        m_box->setEditable(true);
        m_box->setInsertPolicy(QComboBox::NoInsert);
        m_box->setCompleter(nullptr);
        m_box->lineEdit()->setReadOnly(Model().IsReadOnly(field));
        m_box->lineEdit()->setPlaceholderText(Text(Def().placeholder.text));
        m_box->setFocusPolicy(Qt::StrongFocus);
    }
    DisableReadOnly();
    Compose(m_box, Growth::Fills);
    ComboEditor::ShowChoices();
    if (m_isEditable)
        connect(m_box, &QComboBox::editTextChanged, this, [this](const QString& text) {
            if (!Form().IsShowing())
                Enter(text.toStdString());
        });
    else
        connect(m_box, &QComboBox::currentIndexChanged, this, [this](int index) {
            const auto& choices = Model().Choices(Field());
            if (!Form().IsShowing() && index >= 0 && static_cast<std::size_t>(index) < choices.size()) {
                const std::string value = choices[static_cast<std::size_t>(index)].value;
                Enter(value);
            }
        });
}

// A part of a choice is typed; what isn't among them is taken back when the field is left.
void ComboEditor::MakeSearchable() {
    if (m_isEditable || m_box->isEditable() || m_box->count() <= manyChoices)
        return;
    m_box->setEditable(true);
    m_box->setInsertPolicy(QComboBox::NoInsert);
    m_box->completer()->setCompletionMode(QCompleter::PopupCompletion);
    m_box->completer()->setFilterMode(Qt::MatchContains);
    connect(m_box->lineEdit(), &QLineEdit::editingFinished, this,
            [this] { m_box->setEditText(m_box->itemText(m_box->currentIndex())); });
}

void ComboEditor::ShowChoices() {
    if (!m_box)
        return;
    const FormContext::Showing showing(Form());
    const QString typed = m_isEditable ? m_box->currentText() : QString();
    m_box->clear();
    for (const auto& choice : Model().Choices(Field()))
        m_box->addItem(LabelOf(choice));
    // Its own ways to be narrower than its longest choice make the list of the popup at once, which takes longer than
    // the rest of the field.
    m_box->setMinimumWidth(LeastWidth(*m_box));
    if (m_isEditable)
        m_box->setEditText(typed);
    else
        MakeSearchable();
    ShowValue();
}

bool ComboEditor::SaysTheSame() const {
    forms::Problem problem;
    const auto value = forms::ReadValue(Def(), Model().Choices(Field()), m_box->currentText().toStdString(), problem);
    return value && *value == Model().Value(Field());
}

// A value that isn't among the choices is shown all the same, as what is to be replaced.
void ComboEditor::ShowValue() {
    if (!m_box)
        return;
    const std::string text = Model().Text(Field());
    const int index = IndexOf(Model().Choices(Field()), text);
    if (!m_isEditable) {
        m_box->setPlaceholderText(Text(text.empty() ? Def().placeholder.text : text));
        m_box->setCurrentIndex(index);
    } else if (!SaysTheSame()) {
        m_box->setCurrentIndex(index);
        if (index < 0)
            m_box->setEditText(Text(text));
    }
}

ListEditor::ListEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent)
    : FieldEditor(std::move(form), field), m_list(new QListWidget(parent)),
      m_isOfSeveral(Def().kind == forms::FieldKind::Choices) {
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setUniformItemSizes(true);
    m_list->setTabKeyNavigation(false);
    m_list->setTextElideMode(Qt::ElideMiddle); // the tooltip has it whole
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setMinimumHeight(m_list->fontMetrics().lineSpacing() * rowsShown);
    DisableReadOnly();
    Compose(m_list, Growth::Fills);
    ListEditor::ShowChoices();
    if (m_isOfSeveral)
        connect(m_list, &QListWidget::itemChanged, this, &ListEditor::Chosen);
    else
        connect(m_list, &QListWidget::itemSelectionChanged, this, &ListEditor::Chosen);
}

void ListEditor::ShowChoices() {
    if (!m_list)
        return;
    const FormContext::Showing showing(Form());
    const int row = m_list->currentRow();
    m_list->clear();
    for (const auto& choice : Model().Choices(Field())) {
        auto* item = new QListWidgetItem(LabelOf(choice));
        if (Def().tip.IsEmpty())
            item->setToolTip(item->text());
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        if (m_isOfSeveral) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Unchecked);
        }
        m_list->addItem(item);
    }
    if (m_isOfSeveral)
        m_list->setCurrentRow(std::min(row, m_list->count() - 1));
    ShowValue();
}

void ListEditor::ShowValue() {
    if (!m_list)
        return;
    const auto& choices = Model().Choices(Field());
    if (!m_isOfSeveral) {
        const int row = IndexOf(choices, Model().Text(Field()));
        if (row < 0)
            m_list->clearSelection();
        else
            m_list->setCurrentRow(row);
        return;
    }
    const std::vector<std::string> chosen = forms::LinesOf(Model().Value(Field()));
    for (int i = 0; i < m_list->count(); ++i) {
        const std::string& value = choices[static_cast<std::size_t>(i)].value;
        const bool isChosen = std::find(chosen.begin(), chosen.end(), value) != chosen.end();
        m_list->item(i)->setCheckState(isChosen ? Qt::Checked : Qt::Unchecked);
    }
}

void ListEditor::Chosen() {
    if (Form().IsShowing())
        return;
    std::string text;
    const auto& choices = Model().Choices(Field());
    for (int i = 0; i < m_list->count(); ++i) {
        const QListWidgetItem* item = m_list->item(i);
        const bool isChosen = m_isOfSeveral ? item->checkState() == Qt::Checked : item->isSelected();
        if (isChosen)
            text += (text.empty() ? "" : "\n") + choices[static_cast<std::size_t>(i)].value;
    }
    Enter(text);
}

RadioEditor::RadioEditor(std::shared_ptr<FormContext> form, std::size_t field)
    : FieldEditor(std::move(form), field), m_group(new QButtonGroup(this)) {
    connect(m_group, &QButtonGroup::idToggled, this, [this](int choice, bool isChecked) {
        if (isChecked && !this->Form().IsShowing()) {
            const std::string value = Model().Choices(Field())[static_cast<std::size_t>(choice)].value;
            Enter(value);
        }
    });
}

QRadioButton* RadioEditor::AddButton(std::size_t choice, QWidget* parent, QVBoxLayout* column) {
    auto* button = new QRadioButton(Text(Def().choices[choice].label.text), parent);
    button->setToolTip(Text(Def().tip.text));
    m_group->addButton(button, static_cast<int>(choice));
    Watch(button);
    column->addWidget(button);
    SetColumn(column);
    return button;
}

QWidget* RadioEditor::Main() const {
    if (QAbstractButton* checked = m_group->checkedButton())
        return checked;
    return m_group->buttons().isEmpty() ? nullptr : m_group->buttons().constFirst();
}

std::vector<QWidget*> RadioEditor::TabStops() const {
    const auto buttons = m_group->buttons();
    return {buttons.begin(), buttons.end()};
}

void RadioEditor::ShowValue() {
    const int index = IndexOf(Model().Choices(Field()), Model().Text(Field()));
    m_group->setExclusive(false);
    for (QAbstractButton* button : m_group->buttons())
        button->setChecked(m_group->id(button) == index);
    m_group->setExclusive(true);
}

CheckEditor::CheckEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent)
    : FieldEditor(std::move(form), field) {
    if (Def().look == forms::FieldLook::CheckedButton) {
        auto* button = new QPushButton(parent);
        button->setAutoDefault(false);
        button->setCheckable(true);
        m_button = button;
    } else {
        m_button = new QCheckBox(parent);
    }
    DisableReadOnly();
    Compose(m_button, Growth::Keeps);
    CheckEditor::ShowLabel();
    connect(m_button, &QAbstractButton::toggled, this, [this](bool isChecked) {
        if (!Form().IsShowing())
            Enter(isChecked ? "true" : "false");
    });
}

void CheckEditor::ShowLabel() {
    if (m_button && !Form().IsLabelledOutside(Field()))
        m_button->setText(MarkedLabel());
}

void CheckEditor::ShowValue() {
    if (m_button)
        m_button->setChecked(Model().Value(Field()) == Variant(true));
}

GroupEditor::GroupEditor(std::shared_ptr<FormContext> form, std::size_t field, QGroupBox* group)
    : FieldEditor(std::move(form), field), m_group(group) {
    m_group->setCheckable(true);
    DisableReadOnly();
    Compose(m_group, Growth::Fills);
    GroupEditor::ShowLabel();
    connect(m_group, &QGroupBox::toggled, this, [this](bool isChecked) {
        if (!Form().IsShowing())
            Enter(isChecked ? "true" : "false");
    });
}

void GroupEditor::ShowLabel() {
    if (m_group)
        m_group->setTitle(MarkedLabel());
}

void GroupEditor::ShowValue() {
    if (m_group)
        m_group->setChecked(Model().Value(Field()) == Variant(true));
}

} // namespace corvane::desktop

#include "moc_ChoiceEditors.cpp"
