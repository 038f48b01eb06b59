#include "desktop/forms/TypedEditors.h"

#include "desktop/forms/FormTexts.h"
#include "desktop/forms/StepBox.h"
#include "desktop/style/QtText.h"

#include <QCalendarWidget>
#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QSlider>
#include <QStyle>
#include <QToolButton>
#include <QWidgetAction>
#include <algorithm>

namespace corvane::desktop {

namespace {

using forms::FieldKind;
using forms::FieldLook;

constexpr int linesShown = 4;

bool HasArrows(const forms::FieldDef& field) {
    return field.look == FieldLook::Usual &&
           (field.kind == FieldKind::Integer || field.kind == FieldKind::Number || field.kind == FieldKind::Date ||
            field.kind == FieldKind::Time || field.kind == FieldKind::DateTime);
}

bool HasButton(FieldKind kind) {
    return kind == FieldKind::File || kind == FieldKind::Folder || kind == FieldKind::Color ||
           kind == FieldKind::Date || kind == FieldKind::DateTime;
}

// What is around it takes the hint for the least as soon as a text beside it wraps.
class FewLines final : public QPlainTextEdit {
public:
    using QPlainTextEdit::QPlainTextEdit;
    [[nodiscard]] QSize sizeHint() const override {
        return {QPlainTextEdit::sizeHint().width(), minimumSizeHint().height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override {
        const int around = 2 * frameWidth() + static_cast<int>(2 * document()->documentMargin());
        return {QPlainTextEdit::minimumSizeHint().width(), fontMetrics().lineSpacing() * linesShown + around};
    }
};

} // namespace

void TypedEditor::Typed(const QString& text) {
    Enter(TypedValue(Def().kind, text));
}

// Also "05" of a number that is 5: it is made even when the field is left.
bool TypedEditor::SaysTheSame() const {
    const std::string typed = TypedValue(Def().kind, TextOnScreen());
    const std::string text = Model().Text(Field());
    if (typed == text)
        return true;
    if (text != forms::WriteValue(Model().Value(Field())))
        return false; // the model has what was typed, and it is another text
    forms::Problem problem;
    const auto value = forms::ReadValue(Def(), Model().Choices(Field()), typed, problem);
    return value && *value == Model().Value(Field());
}

void TypedEditor::ShowValue() {
    if (!SaysTheSame())
        PutText(ShownValue(Def().kind, Model().Text(Field())));
}

void TypedEditor::Left() {
    const QString text = ShownValue(Def().kind, Model().Text(Field()));
    if (TextOnScreen() != text && SaysTheSame())
        PutText(text);
}

LineEditor::LineEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent)
    : TypedEditor(std::move(form), field) {
    const forms::FieldDef& def = Def();
    QWidget* main = nullptr;
    const bool isReadOnly = Model().IsReadOnly(field);
    if (HasArrows(def)) {
        auto* box = new StepBox(def, parent);
        box->setReadOnly(isReadOnly);
        LeaveWheel(box);
        m_line = &box->Line();
        main = box;
    } else {
        m_line = new QLineEdit(parent);
        m_line->setReadOnly(isReadOnly);
        main = m_line;
    }
    m_line->setPlaceholderText(Text(def.placeholder.text));
    if (def.look == FieldLook::Password)
        m_line->setEchoMode(QLineEdit::Password);
    std::vector<QWidget*> behind;
    if (!def.unit.IsEmpty())
        behind.push_back(new QLabel(Text(def.unit.text).trimmed(), parent));
    const bool isOfFile = def.kind == FieldKind::File || def.kind == FieldKind::Folder;
    if (HasButton(def.kind) && !isReadOnly && (!isOfFile || Form().Host().askFile))
        behind.push_back(NewButton(parent));
    const bool fills = forms::IsFreeText(def.kind) || !(HasArrows(def) || HasButton(def.kind));
    Compose(main, fills ? Growth::Fills : Growth::Keeps, std::move(behind));
    connect(m_line, &QLineEdit::textChanged, this, [this, &def](const QString& text) {
        if (!Form().IsShowing())
            Typed(OfSpecial(def, text));
    });
}

QString LineEditor::TextOnScreen() const {
    return m_line ? OfSpecial(Def(), m_line->text()) : QString();
}

void LineEditor::PutText(const QString& text) {
    if (m_line)
        m_line->setText(AsSpecial(Def(), text));
}

void LineEditor::ShowValue() {
    TypedEditor::ShowValue();
    if (m_button && Def().kind == FieldKind::Color)
        ShowColor();
}

QWidget* LineEditor::NewButton(QWidget* parent) {
    m_button = new QToolButton(parent);
    const QString call = Text(forms::CallOf(Def()));
    switch (Def().kind) {
    case FieldKind::Date:
    case FieldKind::DateTime:
        m_button->setArrowType(Qt::DownArrow);
        m_button->setToolTip(tr("Choose a date"));
        m_button->setAccessibleName(tr("Choose a date: %1").arg(call));
        break;
    case FieldKind::Color:
        m_button->setToolTip(tr("Choose a color"));
        m_button->setAccessibleName(tr("Choose a color: %1").arg(call));
        break;
    default:
        m_button->setIcon(m_button->style()->standardIcon(
            Def().kind == FieldKind::Folder ? QStyle::SP_DirOpenIcon : QStyle::SP_DialogOpenButton, nullptr, m_button));
        m_button->setToolTip(Def().kind == FieldKind::Folder ? tr("Choose a folder") : tr("Choose a file"));
        m_button->setAccessibleName(
            (Def().kind == FieldKind::Folder ? tr("Choose a folder: %1") : tr("Choose a file: %1")).arg(call));
    }
    connect(m_button, &QToolButton::clicked, this, &LineEditor::Choose);
    Watch(m_button);
    return m_button;
}

// The dialogs belong to the window: what is chosen is entered as if it had been typed.
void LineEditor::Choose() {
    const QPointer<LineEditor> alive(this);
    const QString now = TextOnScreen();
    QString chosen;
    switch (Def().kind) {
    case FieldKind::Date:
    case FieldKind::DateTime:
        return ChooseDate();
    case FieldKind::Color: {
        const QColor color = QColorDialog::getColor(QColor(now), m_button->window(), Text(forms::CallOf(Def())));
        chosen = color.isValid() ? color.name() : QString();
        break;
    }
    default:
        chosen = Text(Form().Host().askFile(Def(), now.toStdString()));
    }
    if (alive && !chosen.isEmpty() && m_line)
        m_line->setText(chosen);
}

void LineEditor::ChooseDate() {
    auto* menu = new QMenu(m_button);
    auto* calendar = new QCalendarWidget(menu);
    const std::string typed = TypedValue(Def().kind, TextOnScreen());
    if (const QDate date = QDate::fromString(Text(typed.substr(0, 10)), "yyyy-MM-dd"); date.isValid())
        calendar->setSelectedDate(date);
    auto* action = new QWidgetAction(menu);
    action->setDefaultWidget(calendar);
    menu->addAction(action);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto take = [this, menu](const QDate& date) {
        QString text = date.toString("yyyy-MM-dd");
        if (Def().kind == FieldKind::DateTime) {
            const QString now = TextOnScreen().trimmed();
            text += now.size() > 11 ? now.mid(10) : " 00:00";
        }
        menu->close();
        if (m_line) {
            m_line->setText(text);
            Main()->setFocus(Qt::OtherFocusReason);
        }
    };
    connect(calendar, &QCalendarWidget::activated, this, take);
    connect(calendar, &QCalendarWidget::clicked, this, take);
    menu->popup(m_button->mapToGlobal(QPoint(0, m_button->height())));
    calendar->setFocus(Qt::PopupFocusReason);
}

void LineEditor::ShowColor() {
    const QColor color(Text(Model().Text(Field())));
    const int size = m_button->style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, m_button);
    QPixmap pixmap(QSize(size, size) * m_button->devicePixelRatioF());
    pixmap.setDevicePixelRatio(m_button->devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(m_button->palette().color(QPalette::ButtonText));
    painter.setBrush(color.isValid() ? QBrush(color) : QBrush(Qt::NoBrush));
    painter.drawRect(1, 1, size - 3, size - 3);
    painter.end();
    m_button->setIcon(QIcon(pixmap));
}

LinesEditor::LinesEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent)
    : TypedEditor(std::move(form), field), m_lines(new FewLines(parent)) {
    m_lines->setTabChangesFocus(true);
    m_lines->setReadOnly(Model().IsReadOnly(field));
    m_lines->setPlaceholderText(Text(Def().placeholder.text));
    Compose(m_lines, Growth::Fills);
    connect(m_lines, &QPlainTextEdit::textChanged, this, [this] {
        if (!Form().IsShowing())
            Typed(m_lines->toPlainText());
    });
}

QString LinesEditor::TextOnScreen() const {
    return m_lines ? m_lines->toPlainText() : QString();
}

void LinesEditor::PutText(const QString& text) {
    if (m_lines)
        m_lines->setPlainText(text);
}

SliderEditor::SliderEditor(std::shared_ptr<FormContext> form, std::size_t field, bool isHorizontal, QWidget* parent)
    : FieldEditor(std::move(form), field), m_slider(new QSlider(isHorizontal ? Qt::Horizontal : Qt::Vertical, parent)),
      m_value(new QLabel(parent)) {
    const auto Whole = [](Double limit) { return static_cast<int>(std::clamp(limit, -1e9, 1e9)); };
    const int least = Whole(Def().minimum.value_or(0));
    const int most = std::max(least, Whole(Def().maximum.value_or(99)));
    m_slider->setRange(least, most);
    m_slider->setSingleStep(std::max(1, Whole(Def().step)));
    DisableReadOnly();
    LeaveWheel(m_slider);
    const auto Width = [this](int value) {
        return m_value->fontMetrics().horizontalAdvance(QString::number(value) + Text(Def().unit.text));
    };
    m_value->setMinimumWidth(std::max(Width(least), Width(most)));
    m_value->setTextFormat(Qt::PlainText);
    Compose(m_slider, Growth::Fills, {m_value});
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) {
        if (!Form().IsShowing())
            Enter(std::to_string(value));
    });
}

void SliderEditor::ShowValue() {
    const std::string text = Model().Text(Field());
    const Variant& value = Model().Value(Field());
    if (const auto* number = value.Get<LongLong>())
        m_slider->setValue(static_cast<int>(std::clamp<LongLong>(*number, m_slider->minimum(), m_slider->maximum())));
    m_value->setText(Text(text + Def().unit.text));
}

} // namespace corvane::desktop

#include "moc_TypedEditors.cpp"
