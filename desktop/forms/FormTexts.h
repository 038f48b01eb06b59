// The texts of a form as users read and type them, and as its model has them.
#pragma once

#include "forms/FormModel.h"

#include <QString>
#include <QStringList>

namespace corvane::desktop {

// A number with the user's decimal separator, everything else as it is.
[[nodiscard]] QString ShownValue(forms::FieldKind kind, const std::string& text);
// What the user has typed, as FormModel::Type takes it: also a date in the user's own form.
[[nodiscard]] std::string TypedValue(forms::FieldKind kind, const QString& text);

// With what a field shows in place of its minimum, and without.
[[nodiscard]] QString AsSpecial(const forms::FieldDef& field, const QString& text);
[[nodiscard]] QString OfSpecial(const forms::FieldDef& field, const QString& text);

// Why a value can't be accepted, in the user's language; "" for none.
[[nodiscard]] QString ShownProblem(const forms::Problem& problem);

// All that can be read on a form, for a search: labels, tips, titles, choices.
[[nodiscard]] QStringList TextsToSearch(const forms::FormModel& model);

} // namespace corvane::desktop
