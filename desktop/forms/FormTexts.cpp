#include "desktop/forms/FormTexts.h"

#include "desktop/style/QtText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>
#include <array>

namespace corvane::desktop {

namespace {

using forms::FieldKind;
using forms::ProblemKind;

// For the catalogues: the sentences of forms::SentenceOf and the words of forms::WordsOf.
[[maybe_unused]] constexpr auto sentences = std::to_array<const char*>({
    QT_TRANSLATE_NOOP("FormProblem", "Please enter a value."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter a whole number."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter a number."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter a value from %1 to %2."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter at least %1."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter at most %1."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter at most %1 decimal places."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter at most %1 characters."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter: %1."),
    QT_TRANSLATE_NOOP("FormProblem", "Please choose one of the values."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter true or false."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter a date, such as 2026-11-25."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter a time, such as 18:30."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter a date and a time, such as 2026-11-25 18:30."),
    QT_TRANSLATE_NOOP("FormProblem", "Please enter a color, such as #1f77b4."),
    QT_TRANSLATE_NOOP("FormProblem", "This value can't be used here; %1 is expected."),
    QT_TRANSLATE_NOOP("FormProblem", "true or false"),
    QT_TRANSLATE_NOOP("FormProblem", "a whole number"),
    QT_TRANSLATE_NOOP("FormProblem", "a number"),
    QT_TRANSLATE_NOOP("FormProblem", "another value"),
});

bool IsShownAsNumber(FieldKind kind) {
    return kind == FieldKind::Number || kind == FieldKind::Progress;
}

// The first of the user's own forms in which the text is one, by the format of the field.
template <class Parse>
QString Canonical(const QString& text, const QString& format, Parse parse) {
    const QLocale locale;
    for (const auto& own :
         {locale.dateFormat(QLocale::ShortFormat), QString("dd.MM.yyyy"), QString("d.M.yyyy"), QString("dd/MM/yyyy")}) {
        const auto moment = parse(text, own);
        if (moment.isValid() && own.count('y') >= 4)
            return moment.toString(format);
    }
    return text;
}

} // namespace

QString ShownValue(FieldKind kind, const std::string& text) {
    QString shown = Text(text);
    if (IsShownAsNumber(kind))
        shown.replace('.', QLocale().decimalPoint());
    else if (kind == FieldKind::DateTime && shown.size() > 10 && shown[10] == 'T')
        shown[10] = ' ';
    return shown;
}

std::string TypedValue(FieldKind kind, const QString& text) {
    const QString typed = text.trimmed();
    if (IsShownAsNumber(kind))
        return QString(typed).replace(QLocale().decimalPoint(), ".").toStdString();
    if (kind == FieldKind::Date && !typed.isEmpty() && !QDate::fromString(typed, "yyyy-MM-dd").isValid())
        return Canonical(typed, "yyyy-MM-dd",
                         [](const QString& s, const QString& f) { return QDate::fromString(s, f); })
            .toStdString();
    if (kind == FieldKind::DateTime && typed.size() > 10 && typed[10] == ' ')
        return QString(typed).replace(10, 1, 'T').toStdString();
    return forms::IsFreeText(kind) ? text.toStdString() : typed.toStdString();
}

QString AsSpecial(const forms::FieldDef& field, const QString& text) {
    const bool isLeast = !field.special.IsEmpty() && field.minimum &&
                         text == ShownValue(field.kind, forms::WriteValue(Variant(*field.minimum)));
    return isLeast ? Text(field.special.text) : text;
}

QString OfSpecial(const forms::FieldDef& field, const QString& text) {
    return !field.special.IsEmpty() && field.minimum && text == Text(field.special.text)
               ? ShownValue(field.kind, forms::WriteValue(Variant(*field.minimum)))
               : text;
}

QString ShownProblem(const forms::Problem& problem) {
    if (!problem)
        return {};
    const std::string sentence(forms::SentenceOf(problem.kind));
    std::vector<std::string> parts = problem.parts;
    for (std::string& part : parts) {
        if (problem.kind == ProblemKind::OutOfRange || problem.kind == ProblemKind::TooSmall ||
            problem.kind == ProblemKind::TooLarge)
            part = ShownValue(FieldKind::Number, part).toStdString();
        else if (problem.kind == ProblemKind::NotConvertible)
            part = QCoreApplication::translate("FormProblem", part.c_str()).toStdString();
    }
    const QString shown = problem.kind == ProblemKind::Own
                              ? Text(sentence)
                              : QCoreApplication::translate("FormProblem", sentence.c_str());
    return Text(forms::Filled(shown.toStdString(), parts));
}

QStringList TextsToSearch(const forms::FormModel& model) {
    QStringList texts;
    const auto Add = [&](const std::string& text) {
        if (!text.empty())
            texts.append(Text(forms::PlainText(text)));
    };
    forms::ForEachNode(model.Def().root, [&](const forms::FormNode& node) {
        Add(node.text.text);
        Add(node.tip.text);
    });
    for (std::size_t i = 0; i < model.Count(); ++i) {
        const forms::FieldDef& field = model.Field(i);
        for (const auto* text : {&field.tip, &field.placeholder, &field.special, &field.accessibleName})
            Add(text->text);
        Add(model.Label(i));
        for (const auto& choice : model.Choices(i))
            Add(choice.label.text);
    }
    texts.removeDuplicates();
    return texts;
}

} // namespace corvane::desktop
