// A field for a number or a moment with two arrows. It takes any text: what is wrong with it is said below it.
#pragma once

#include "forms/FormModel.h"

#include <QAbstractSpinBox>

class QLineEdit;

namespace corvane::desktop {

class StepBox final : public QAbstractSpinBox {
    Q_OBJECT
public:
    StepBox(const forms::FieldDef& field, QWidget* parent);

    [[nodiscard]] QLineEdit& Line() const { return *lineEdit(); }
    void stepBy(int steps) override;
    [[nodiscard]] QValidator::State validate(QString& input, int& position) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] StepEnabled stepEnabled() const override;
    void changeEvent(QEvent* event) override;

private:
    const forms::FieldDef& m_field; // of the model, which the form's context keeps
    mutable QSize m_sizeHint;
};

// The text after so many steps, as FormModel::Type takes it: a number within its range, the next day, the hour or the
// minute in which the cursor is. A text that is no value becomes the first one that is.
[[nodiscard]] std::string Stepped(const forms::FieldDef& field, const std::string& text, int steps, int cursor);

} // namespace corvane::desktop
