// Why the value of a field can't be accepted, below the field: a sign and a text, both in a colour that can be read.
#pragma once

#include <QWidget>

class QLabel;

namespace corvane::desktop {

class ProblemLine final : public QWidget {
    Q_OBJECT
public:
    explicit ProblemLine(QWidget* parent);

    void SetText(const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    void StayAtIcon();
    void FollowPalette();

    QLabel* m_icon;
    QLabel* m_text;
};

// The colour of such texts on that ground: that of all texts in a theme of contrast.
[[nodiscard]] QColor ProblemColor(const QPalette& palette);

} // namespace corvane::desktop
