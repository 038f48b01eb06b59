#include "PageParts.h"

#include "QtText.h"

#include <QCompleter>
#include <QLineEdit>
#include <QSignalBlocker>

namespace studies {

namespace {

constexpr int ManyEntries = 20;

// A long list is searched by typing a part of a name; what isn't in it is taken back.
void MakeSearchable(QComboBox& box) {
    box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box.setMinimumContentsLength(8);
    if (box.count() <= ManyEntries || box.isEditable())
        return;
    box.setEditable(true);
    box.setInsertPolicy(QComboBox::NoInsert);
    box.completer()->setCompletionMode(QCompleter::PopupCompletion);
    box.completer()->setFilterMode(Qt::MatchContains);
    QObject::connect(box.lineEdit(), &QLineEdit::editingFinished, &box,
                     [&box] { box.setEditText(box.itemText(box.currentIndex())); });
}

} // namespace

void FillColumns(QComboBox& box, const std::vector<Column>& columns, bool numbersOnly, const QString& none) {
    const QSignalBlocker blocker(box);
    box.clear();
    if (!none.isEmpty())
        box.addItem(none, QString());
    for (const Column& column : columns)
        if (!numbersOnly || column.IsNumeric())
            box.addItem(Text(column.Label()), Text(column.name));
    MakeSearchable(box);
}

void FillTexts(QComboBox& box, const std::vector<std::string>& texts, const QString& none) {
    const QSignalBlocker blocker(box);
    box.clear();
    if (!none.isEmpty())
        box.addItem(none, QString());
    for (const std::string& text : texts)
        box.addItem(Text(text), Text(text));
    MakeSearchable(box);
}

void Choose(QComboBox& box, const std::string& name) {
    const QSignalBlocker blocker(box);
    box.setCurrentIndex(box.findData(Text(name)));
}

std::string Chosen(const QComboBox& box) {
    return Utf8(box.currentData().toString());
}

void AddLabelled(QBoxLayout& layout, const QString& labelText, QWidget* control) {
    auto* label = new QLabel(labelText);
    label->setBuddy(control);
    layout.addWidget(label);
    layout.addWidget(control, 1);
}

ResultLabel::ResultLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setWordWrap(true);
}

QSize ResultLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 30,
            fontMetrics().lineSpacing() * (1 + static_cast<int>(text().count('\n')))};
}

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

#include "moc_PageParts.cpp"
