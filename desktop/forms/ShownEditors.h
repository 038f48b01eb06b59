// Fields in which nothing is entered: buttons, and what only the page writes.
#pragma once

#include "desktop/forms/FieldEditor.h"

class QAbstractButton;
class QProgressBar;

namespace corvane::desktop {

class PictureLabel;

class ButtonEditor final : public FieldEditor {
    Q_OBJECT
public:
    ButtonEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent);
    void ShowLabel() override;

protected:
    void ShowValue() override {}

private:
    void Press();

    QPointer<QAbstractButton> m_button;
};

class ShownTextEditor final : public FieldEditor {
    Q_OBJECT
public:
    ShownTextEditor(std::shared_ptr<FormContext> form, std::size_t field, bool wraps, QWidget* parent);
    ~ShownTextEditor() override;

protected:
    void ShowValue() override;

private:
    QPointer<PictureLabel> m_text;
};

class ProgressEditor final : public FieldEditor {
    Q_OBJECT
public:
    ProgressEditor(std::shared_ptr<FormContext> form, std::size_t field, bool isHorizontal, QWidget* parent);

protected:
    void ShowValue() override;

private:
    QPointer<QProgressBar> m_bar;
};

} // namespace corvane::desktop
