// The button that empties a field, with a name for assistive programs, which Qt gives it none of.
#pragma once

#include <QCoreApplication>
#include <QLineEdit>
#include <QToolButton>

namespace corvane::desktop {

inline void AddClearButton(QLineEdit& field) {
    field.setClearButtonEnabled(true);
    for (QToolButton* button : field.findChildren<QToolButton*>())
        button->setAccessibleName(QCoreApplication::translate("ClearButton", "Clear"));
}

} // namespace corvane::desktop
