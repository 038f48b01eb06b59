// What an application is, and what it is built on.
#pragma once

#include "desktop/platform/Identity.h"

#include <QDialog>

namespace corvane::desktop {

class AboutDialog final : public QDialog {
    Q_OBJECT
public:
    AboutDialog(const Identity& identity, QWidget* parent);
};

} // namespace corvane::desktop
