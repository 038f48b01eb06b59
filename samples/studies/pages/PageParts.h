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
void FillColumns(QComboBox& box, const std::vector<Column>& columns, bool numbersOnly, const QString& none = {});
void FillTexts(QComboBox& box, const std::vector<std::string>& texts, const QString& none = {});
// Without telling anybody; an entry that isn't there leaves none chosen.
void Choose(QComboBox& box, const std::string& name);
[[nodiscard]] std::string Chosen(const QComboBox& box);

// A label for the control behind it, which takes the label's mnemonic.
void AddLabelled(QBoxLayout& layout, const QString& labelText, QWidget* control);

// Lines of figures. They wrap where they have to, and ask for no more height than that of one line each.
class ResultLabel final : public QLabel {
    Q_OBJECT
public:
    explicit ResultLabel(QWidget* parent = nullptr);
    [[nodiscard]] QSize minimumSizeHint() const override;
};

// A text that says what is wrong, in a colour that stands out on the theme; hidden while there is nothing.
class ProblemLabel final : public QLabel {
    Q_OBJECT
public:
    explicit ProblemLabel(QWidget* parent = nullptr);
    void Show(const QString& problem);
};

} // namespace studies
