// A text that says what is wrong, in a colour that stands out on the theme; hidden while there is nothing.
#pragma once

#include <QLabel>

namespace studies {

class ProblemLabel final : public QLabel {
    Q_OBJECT
public:
    explicit ProblemLabel(QWidget* parent = nullptr);
    void Show(const QString& problem);
};

} // namespace studies
