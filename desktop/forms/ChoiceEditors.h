// Fields with choices, and those that are true or false.
#pragma once

#include "desktop/forms/FieldEditor.h"

#include <string>

class QAbstractButton;
class QButtonGroup;
class QComboBox;
class QGroupBox;
class QListWidget;
class QRadioButton;

namespace corvane::desktop {

class ComboEditor final : public FieldEditor {
    Q_OBJECT
public:
    ComboEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent);
    void ShowChoices() override;

protected:
    void ShowValue() override;

private:
    [[nodiscard]] bool SaysTheSame() const;
    void MakeSearchable();

    QPointer<QComboBox> m_box;
    bool m_isEditable; // to any text
};

// Of several choices each has a box for its check mark.
class ListEditor final : public FieldEditor {
    Q_OBJECT
public:
    ListEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent);
    void ShowChoices() override;

protected:
    void ShowValue() override;

private:
    void Chosen();

    QPointer<QListWidget> m_list;
    bool m_isOfSeveral;
};

// Its buttons lie at nodes of their own; what takes the keyboard is the one that is checked, or the first.
class RadioEditor final : public FieldEditor {
    Q_OBJECT
public:
    RadioEditor(std::shared_ptr<FormContext> form, std::size_t field);

    [[nodiscard]] QRadioButton* AddButton(std::size_t choice, QWidget* parent, QVBoxLayout* column);
    [[nodiscard]] QWidget* Main() const override;
    [[nodiscard]] std::vector<QWidget*> TabStops() const override;

protected:
    void ShowValue() override;

private:
    QButtonGroup* m_group;
};

class CheckEditor final : public FieldEditor {
    Q_OBJECT
public:
    CheckEditor(std::shared_ptr<FormContext> form, std::size_t field, QWidget* parent);
    void ShowLabel() override;

protected:
    void ShowValue() override;

private:
    QPointer<QAbstractButton> m_button;
};

// What lies in it is enabled while it is checked.
class GroupEditor final : public FieldEditor {
    Q_OBJECT
public:
    GroupEditor(std::shared_ptr<FormContext> form, std::size_t field, QGroupBox* group);
    void ShowLabel() override;

protected:
    void ShowValue() override;

private:
    QPointer<QGroupBox> m_group;
};

} // namespace corvane::desktop
