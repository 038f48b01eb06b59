#include "ProblemLabel.h"

namespace studies {

ProblemLabel::ProblemLabel(QWidget* parent) : QLabel(parent) {
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    hide();
}

void ProblemLabel::Show(const QString& problem) {
    const bool dark = palette().color(QPalette::Window).lightness() < 128;
    setStyleSheet(dark ? "color: #f0938a" : "color: #b3261e");
    setText(problem);
    setVisible(!problem.isEmpty());
}

} // namespace studies

#include "moc_ProblemLabel.cpp"
