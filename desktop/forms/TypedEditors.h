// Fields that are typed: texts, numbers, dates, times, files, colours.
#pragma once

#include "desktop/forms/FieldEditor.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QSlider;

namespace corvane::desktop {

// What is being typed stays on screen as it is while it says the same as the model.
class TypedEditor : public FieldEditor {
    Q_OBJECT
public:
    using FieldEditor::FieldEditor;

protected:
    void ShowValue() override;
    void Left() override;
    void Typed(const QString& text);
    [[nodiscard]] virtual QString TextOnScreen() const = 0;
    virtual void PutText(const QString& text) = 0;

private:
    [[nodiscard]] bool SaysTheSame() const;
};

// A line, with arrows or a button where the kind has something to choose from.
class LineEditor final : public TypedEditor {
    Q_OBJECT
public:
    LineEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent);

protected:
    [[nodiscard]] QString TextOnScreen() const override;
    void PutText(const QString& text) override;
    void ShowValue() override;

private:
    [[nodiscard]] QWidget* NewButton(QWidget* parent);
    void Choose();
    void ChooseDate();
    void ShowColor();

    QPointer<QLineEdit> m_line;
    QPointer<QToolButton> m_button;
};

class LinesEditor final : public TypedEditor {
    Q_OBJECT
public:
    LinesEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent);

protected:
    [[nodiscard]] QString TextOnScreen() const override;
    void PutText(const QString& text) override;

private:
    QPointer<QPlainTextEdit> m_lines;
};

class SliderEditor final : public FieldEditor {
    Q_OBJECT
public:
    SliderEditor(std::shared_ptr<FormContext> form, std::size_t field, bool isHorizontal, QWidget* parent);

protected:
    void ShowValue() override;

private:
    QSlider* m_slider;
    QLabel* m_value;
};

} // namespace corvane::desktop
