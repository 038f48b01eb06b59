// Lets the window repaint and some buttons be pressed while work is running, and nothing else.
#pragma once

#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <QPushButton>
#include <vector>

namespace corvane::desktop {

// While it lives, only what paints, the buttons' own events, their underlined letters and Esc, which presses the first,
// reach anyone. Input to the rest of the shell is dropped. Timers fire again by themselves, and a socket is still ready
// afterwards.
class OnlyPaint final : public QObject {
public:
    explicit OnlyPaint(std::vector<QPushButton*> buttons);
    ~OnlyPaint() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QPushButton* ButtonOf(const QKeySequence& pressed) const;
    [[nodiscard]] bool IsForButton(const QObject* watched) const;

    std::vector<QPushButton*> m_buttons;
};

} // namespace corvane::desktop
