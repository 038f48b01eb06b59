#include "desktop/forms/StepBox.h"

#include "corvane/base/Text.h"
#include "desktop/forms/FormTexts.h"
#include "desktop/style/QtText.h"

#include <QDateTime>
#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <algorithm>
#include <cmath>

namespace corvane::desktop {

namespace {

using forms::FieldKind;

constexpr int widestValue = 20; // characters

std::string SteppedNumber(const forms::FieldDef& field, const std::string& text, int steps) {
    const auto number = NumberIn(text);
    const Double least = field.minimum.value_or(-1e15);
    const Double most = std::max(least, field.maximum.value_or(1e15));
    if (!number || !std::isfinite(*number))
        return forms::WriteValue(std::clamp(0.0, least, most));
    Double stepped = std::clamp(*number + steps * field.step, least, most);
    if (field.kind == FieldKind::Integer)
        return std::to_string(static_cast<LongLong>(std::round(stepped)));
    const Double scale = std::pow(10.0, std::min(field.decimals, 12));
    stepped = std::round(stepped * scale) / scale; // 0.1 + 0.2 is 0.3
    return forms::WriteValue(stepped);
}

// The cursor is in the text that is shown, where a blank divides date and time.
std::string SteppedMoment(FieldKind kind, const std::string& text, int steps, int cursor) {
    const int timeBegins = kind == FieldKind::DateTime ? 11 : 0;
    const bool isInDate = kind == FieldKind::Date || (kind == FieldKind::DateTime && cursor < timeBegins);
    const int hourEnds = timeBegins + 2;
    const int seconds = cursor <= hourEnds ? 3600 : cursor <= hourEnds + 3 ? 60 : 1;
    if (kind == FieldKind::Time) {
        const bool hasSeconds = text.size() > 5;
        const QTime time = QTime::fromString(Text(text), hasSeconds ? "HH:mm:ss" : "HH:mm");
        return (time.isValid() ? time.addSecs(steps * seconds) : QTime(0, 0))
            .toString(hasSeconds ? "HH:mm:ss" : "HH:mm")
            .toStdString();
    }
    if (kind == FieldKind::Date) {
        const QDate date = QDate::fromString(Text(text), "yyyy-MM-dd");
        const QDate next = date.isValid() ? date.addDays(steps) : QDate::currentDate();
        return next.isValid() && next.year() >= 1 && next.year() <= 9999 ? next.toString("yyyy-MM-dd").toStdString()
                                                                         : text;
    }
    const QString format = text.size() > 16 ? "yyyy-MM-ddTHH:mm:ss" : "yyyy-MM-ddTHH:mm";
    const QDateTime moment = QDateTime::fromString(Text(text), format);
    if (!moment.isValid())
        return QDateTime(QDate::currentDate(), QTime(0, 0)).toString("yyyy-MM-ddTHH:mm").toStdString();
    const QDateTime next = isInDate ? moment.addDays(steps) : moment.addSecs(static_cast<qint64>(steps) * seconds);
    return next.date().year() >= 1 && next.date().year() <= 9999 ? next.toString(format).toStdString() : text;
}

} // namespace

std::string Stepped(const forms::FieldDef& field, const std::string& text, int steps, int cursor) {
    return field.kind == FieldKind::Integer || field.kind == FieldKind::Number
               ? SteppedNumber(field, text, steps)
               : SteppedMoment(field.kind, text, steps, cursor);
}

StepBox::StepBox(const forms::FieldDef& field, QWidget* parent) : QAbstractSpinBox(parent), m_field(field) {
    setKeyboardTracking(true);
    setAccelerated(true);
}

void StepBox::stepBy(int steps) {
    const int cursor = lineEdit()->cursorPosition();
    const std::string next = Stepped(m_field, TypedValue(m_field.kind, OfSpecial(m_field, text())), steps, cursor);
    lineEdit()->setText(AsSpecial(m_field, ShownValue(m_field.kind, next)));
    if (m_field.kind == FieldKind::Integer || m_field.kind == FieldKind::Number)
        selectAll();
    else
        lineEdit()->setCursorPosition(cursor);
}

QValidator::State StepBox::validate(QString& /*input*/, int& /*position*/) const {
    return QValidator::Acceptable;
}

QAbstractSpinBox::StepEnabled StepBox::stepEnabled() const {
    if (isReadOnly())
        return StepNone;
    const auto number = NumberIn(TypedValue(m_field.kind, OfSpecial(m_field, text())));
    const bool isNumber = m_field.kind == FieldKind::Integer || m_field.kind == FieldKind::Number;
    StepEnabled enabled = StepNone;
    enabled.setFlag(StepUpEnabled, !isNumber || !number || !m_field.maximum || *number < *m_field.maximum);
    enabled.setFlag(StepDownEnabled, !isNumber || !number || !m_field.minimum || *number > *m_field.minimum);
    return enabled;
}

// Wide enough for all values that it can have.
QSize StepBox::sizeHint() const {
    ensurePolished();
    if (m_sizeHint.isValid()) // layouts ask for it again and again
        return m_sizeHint;
    int characters = 8;
    switch (m_field.kind) {
    case FieldKind::Date:
        characters = 11;
        break;
    case FieldKind::DateTime:
        characters = 17;
        break;
    case FieldKind::Integer:
    case FieldKind::Number:
        for (const auto& limit : {m_field.minimum, m_field.maximum})
            if (limit)
                characters = std::max(characters, 2 + static_cast<int>(forms::WriteValue(std::trunc(*limit)).size()) +
                                                      m_field.decimals);
        break;
    default:
        break;
    }
    const int width = std::max(fontMetrics().horizontalAdvance(QString(std::min(characters, widestValue), '0')),
                               fontMetrics().horizontalAdvance(Text(m_field.special.text) + "0"));
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    m_sizeHint =
        style()->sizeFromContents(QStyle::CT_SpinBox, &option, QSize(width, lineEdit()->sizeHint().height()), this);
    return m_sizeHint;
}

void StepBox::changeEvent(QEvent* event) {
    m_sizeHint = QSize(); // of another font or style
    QAbstractSpinBox::changeEvent(event);
}

} // namespace corvane::desktop

#include "moc_StepBox.cpp"
