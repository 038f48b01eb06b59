// The page of a form as this host shows pages: its widget is drawn from the form's model, and the page's class gives
// the widgets for the form's places.
#pragma once

#include "desktop/IQtPage.h"
#include "desktop/forms/FormHost.h"
#include "forms/FormPage.h"

#include <QPointer>
#include <functional>

namespace corvane::desktop {

class FormWidget;

class QtFormPage final : public IQtPage {
public:
    // act runs what the user does, and askFile asks for files, as FormHost has them.
    QtFormPage(Ref<forms::FormPage> form, decltype(FormHost::act) act, decltype(FormHost::askFile) askFile)
        : m_form(std::move(form)), m_act(std::move(act)), m_askFile(std::move(askFile)) {}

    [[nodiscard]] const Ref<Object>& PageObj() const { return m_form->PageObj(); }
    [[nodiscard]] const Ref<forms::FormModel>& Model() const { return m_form->Model(); }

    QWidget* NewWidget(QWidget* parent) override;
    [[nodiscard]] QWidget* FirstFocus() override;
    [[nodiscard]] bool IsChanged() override { return m_form->IsChanged(); }
    [[nodiscard]] Long HelpTopic() override;
    // As the page's class does, or from the model.
    [[nodiscard]] bool Print(IPrintout& printout) override;

    std::string_view TypeName() const override { return "QtFormPage"; }

private:
    [[nodiscard]] QWidget* Fill(QWidget* place) const;

    Ref<forms::FormPage> m_form;
    decltype(FormHost::act) m_act;
    decltype(FormHost::askFile) m_askFile;
    QPointer<FormWidget> m_widget;
};

// The step of a record for an act on a form, without the window and the page: "set" and "Title Sleep". Empty for an act
// that is no step.
struct FormStepText {
    std::string verb;
    std::string rest;
    std::string field;
};
[[nodiscard]] FormStepText StepOf(const forms::FormModel& model, const FormAct& act);

} // namespace corvane::desktop
