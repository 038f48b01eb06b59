// What a form on screen needs of the host around it, and what its parts share.
#pragma once

#include "corvane/base/Ref.h"
#include "forms/FormModel.h"

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <utility>

class QWidget;

namespace corvane::desktop {

// What a user does to a form.
struct FormAct {
    enum class What { Set, Press, Cell, Row, Leave };
    What what;
    std::size_t field;                // its index
    std::string text = {};            // of Set and Cell: what is entered, as FormModel::Type takes it
    std::size_t row = forms::none;    // of Cell and Row, from 0; none for no row
    std::size_t column = forms::none; // of Cell
};

struct FormHost {
    using Work = std::function<void()>;

    // Runs what the user does, with all that it brings about; a failure in it is shown. Without it the work is just
    // done.
    std::function<void(const FormAct& act, const Work& work)> act;
    // The widget that the page's class makes for a place, as a child of that parent; the parent's objectName is the
    // place's name. Without it places stay empty.
    std::function<QWidget*(QWidget* parent)> fill;
    // Asks for a file or folder for that field, which has that path now; "" when the user cancels. Without it paths are
    // typed.
    std::function<std::string(const forms::FieldDef& field, const std::string& path)> askFile;
    // Whether the user can take values back to what the form declares, as among the preferences.
    bool resets = false;
};

// Shared by the parts of a form on screen, which live as long as any of them is at work.
class FormContext {
public:
    FormContext(Ref<forms::FormModel> model, FormHost host);

    [[nodiscard]] forms::FormModel& Model() const { return *m_model; }
    [[nodiscard]] const FormHost& Host() const { return m_host; }

    // What a widget says while it is made to show the model isn't the user's doing.
    [[nodiscard]] bool IsShowing() const { return m_showing > 0; }
    class Showing {
    public:
        explicit Showing(FormContext& form) : m_form(form) { ++m_form.m_showing; }
        ~Showing() { --m_form.m_showing; }
        Showing(const Showing&) = delete;
        Showing& operator=(const Showing&) = delete;

    private:
        FormContext& m_form;
    };

    // Unless it comes of showing.
    void Do(const FormAct& act, const FormHost::Work& work) const;
    // Whether another part of the form shows the field's label: a text beside it, or a title around it.
    [[nodiscard]] bool IsLabelledOutside(std::size_t field) const;

private:
    Ref<forms::FormModel> m_model;
    FormHost m_host;
    int m_showing = 0;
    std::set<std::pair<Long, Long>> m_labels; // places of texts that aren't a field's own
};

} // namespace corvane::desktop
