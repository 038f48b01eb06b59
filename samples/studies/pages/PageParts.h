// Small pieces that several pages are made of.
#pragma once

#include "Table.h"

#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QString>
#include <string>
#include <vector>

namespace studies {

// Replaces the entries without telling anybody. The data of an entry are the name; the first may stand for none.
void FillColumns(QComboBox& oBox, const std::vector<Column>& aColumns, bool bNumbersOnly, const QString& sNone = {});
void FillTexts(QComboBox& oBox, const std::vector<std::string>& aTexts, const QString& sNone = {});
// Without telling anybody; an entry that isn't there leaves none chosen.
void Choose(QComboBox& oBox, const std::string& sName);
[[nodiscard]] std::string Chosen(const QComboBox& oBox);

// A label for the control behind it, which takes the label's mnemonic.
void AddLabelled(QBoxLayout& oLayout, const QString& sLabel, QWidget* pControl);

// Lines of figures. They wrap where they have to, and ask for no more height than that of one line each.
class ResultLabel final : public QLabel {
    Q_OBJECT
public:
    explicit ResultLabel(QWidget* pParent = nullptr);
    [[nodiscard]] QSize minimumSizeHint() const override;
};

// A text that says what is wrong, in a colour that stands out on the theme; hidden while there is nothing.
class ProblemLabel final : public QLabel {
    Q_OBJECT
public:
    explicit ProblemLabel(QWidget* pParent = nullptr);
    void Show(const QString& sProblem);
};

} // namespace studies
