// One field of a form on screen. What is entered goes to the model, and the widgets show what the model says: they keep
// nothing of their own.
#pragma once

#include "desktop/forms/FormHost.h"

#include <QObject>
#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>
#include <memory>
#include <vector>

class QLayout;
class QToolButton;

namespace corvane::desktop {

class ProblemLine;

class FieldEditor : public QObject {
    Q_OBJECT
public:
    FieldEditor(std::shared_ptr<FormContext> form, std::size_t field) : m_form(std::move(form)), m_field(field) {}

    [[nodiscard]] std::size_t Field() const { return m_field; }
    // What lies in the layout around it, with the unit, the buttons and the problem. Belongs to who asks.
    [[nodiscard]] QLayout* Layout();
    // What takes the keyboard, and what a label is for.
    [[nodiscard]] virtual QWidget* Main() const { return m_main; }

    // The model has changed.
    void Show();
    virtual void ShowChoices() {}
    virtual void ShowRows() {}
    virtual void ShowCells() {}
    virtual void ShowSelection() {}
    // Also whether it is required.
    virtual void ShowLabel() {}
    void ShowProblem();
    virtual void SetEnabled(bool enabled);
    void SetVisible(bool visible);
    // To what the form declares, as the user's doing.
    void Reset();
    // Whether the user can take its value back to that.
    [[nodiscard]] bool DiffersFromDefault() const;
    // In the order of Tab.
    [[nodiscard]] virtual std::vector<QWidget*> TabStops() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    enum class Growth { Fills, Keeps }; // the width that there is, or that of its content

    // Once, by what derives from this: the widget with what is behind it in the same line.
    void Compose(QWidget* main, Growth growth, std::vector<QWidget*> behind = {});
    // The problem goes below what lies in that column.
    void SetColumn(QVBoxLayout* column) { m_column = column; }
    // Losing the keyboard ends the entry.
    void Watch(QWidget* widget);
    // The wheel scrolls the page, unless the widget has the keyboard.
    void LeaveWheel(QWidget* widget);
    // A field that can't be made read-only, but is, is disabled.
    void DisableReadOnly() { m_isFixed = Model().IsReadOnly(m_field); }

    virtual void ShowValue() = 0;
    // The user has left the field.
    virtual void Left() {}

    [[nodiscard]] FormContext& Form() const { return *m_form; }
    // For what may end this editor.
    [[nodiscard]] const std::shared_ptr<FormContext>& SharedForm() const { return m_form; }
    [[nodiscard]] forms::FormModel& Model() const { return m_form->Model(); }
    [[nodiscard]] const forms::FieldDef& Def() const { return Model().Field(m_field); }
    // The label with a mark where a value is required.
    [[nodiscard]] QString MarkedLabel() const;
    void Enter(const std::string& text);
    // To assistive programs; after what is shown or wrong has changed.
    void Describe();

private:
    [[nodiscard]] bool IsOwn(const QWidget* widget) const;
    void AddReset(QWidget* parent);

    std::shared_ptr<FormContext> m_form;
    std::size_t m_field;
    QPointer<QWidget> m_main;
    QPointer<QVBoxLayout> m_column;
    std::vector<QPointer<QWidget>> m_parts; // with the main one
    QPointer<ProblemLine> m_problem;        // from the first problem on
    QPointer<QToolButton> m_reset;
    bool m_isVisible = true;
    bool m_leavesWheel = false;
    bool m_isFixed = false;
};

// Text of a label with the mark of a required field behind it.
[[nodiscard]] QString Marked(const std::string& label, bool isRequired);

// The editor of a field, but for radio buttons and groups, as children of that parent.
[[nodiscard]] std::unique_ptr<FieldEditor> NewFieldEditor(const std::shared_ptr<FormContext>& form, std::size_t field,
                                                          bool isHorizontal, bool wraps, QWidget* parent);

} // namespace corvane::desktop
