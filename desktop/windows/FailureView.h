// Stands in the place of a page that can't be shown and says why, to read and to copy.
#pragma once

#include "corvane/base/Failure.h"

#include <QWidget>

namespace corvane::desktop {

class FailureView final : public QWidget {
    Q_OBJECT
public:
    FailureView(const QString& page, const Failure& failure, QWidget* parent = nullptr);

    // All that is reported, as Copy puts it on the clipboard.
    [[nodiscard]] const QString& Text() const { return m_text; }

private:
    QString m_text;
};

} // namespace corvane::desktop
