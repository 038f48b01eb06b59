#include "PageParts.h"

#include "QtText.h"

#include <QSignalBlocker>

namespace studies {

void FillColumns(QComboBox& oBox, const std::vector<Column>& aColumns, bool bNumbersOnly, const QString& sNone) {
    const QSignalBlocker oBlocker(oBox);
    oBox.clear();
    if (!sNone.isEmpty())
        oBox.addItem(sNone, QString());
    for (const Column& oColumn : aColumns)
        if (!bNumbersOnly || oColumn.IsNumeric())
            oBox.addItem(Text(oColumn.Label()), Text(oColumn.sName));
    oBox.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    oBox.setMinimumContentsLength(8);
}

void FillTexts(QComboBox& oBox, const std::vector<std::string>& aTexts, const QString& sNone) {
    const QSignalBlocker oBlocker(oBox);
    oBox.clear();
    if (!sNone.isEmpty())
        oBox.addItem(sNone, QString());
    for (const std::string& sText : aTexts)
        oBox.addItem(Text(sText), Text(sText));
    oBox.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    oBox.setMinimumContentsLength(8);
}

void Choose(QComboBox& oBox, const std::string& sName) {
    const QSignalBlocker oBlocker(oBox);
    oBox.setCurrentIndex(oBox.findData(Text(sName)));
}

std::string Chosen(const QComboBox& oBox) {
    return Utf8(oBox.currentData().toString());
}

void AddLabelled(QBoxLayout& oLayout, const QString& sLabel, QWidget* pControl) {
    auto* pLabel = new QLabel(sLabel);
    pLabel->setBuddy(pControl);
    oLayout.addWidget(pLabel);
    oLayout.addWidget(pControl, 1);
}

ResultLabel::ResultLabel(QWidget* pParent) : QLabel(pParent) {
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setWordWrap(true);
}

QSize ResultLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 30,
            fontMetrics().lineSpacing() * (1 + static_cast<int>(text().count('\n')))};
}

ProblemLabel::ProblemLabel(QWidget* pParent) : QLabel(pParent) {
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    hide();
}

void ProblemLabel::Show(const QString& sProblem) {
    const bool bDark = palette().color(QPalette::Window).lightness() < 128;
    setStyleSheet(bDark ? "color: #f0938a" : "color: #b3261e");
    setText(sProblem);
    setVisible(!sProblem.isEmpty());
}

} // namespace studies
