#include "desktop/windows/QtFormPage.h"

#include "corvane/base/Failure.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Platform.h"
#include "desktop/forms/FormPrint.h"
#include "desktop/forms/FormWidget.h"
#include "desktop/style/QtText.h"
#include "desktop/windows/FailureView.h"
#include "desktop/windows/LostBar.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QVBoxLayout>
#include <algorithm>

namespace corvane::desktop {

namespace {

// As a step has it on one line: plain, or as a text in JSON where it wouldn't be read back the same.
std::string InStep(const std::string& text) {
    const bool isPlain =
        !text.empty() && text.front() != '"' && text.front() != '[' && text.front() != ' ' && text.back() != ' ' &&
        std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x20; });
    if (isPlain)
        return text;
    const QByteArray json = QJsonDocument(QJsonArray{Text(text)}).toJson(QJsonDocument::Compact);
    return json.mid(1, json.size() - 2).toStdString();
}

} // namespace

QWidget* QtFormPage::NewWidget(QWidget* parent) {
    FormHost host;
    host.act = m_act;
    host.askFile = m_askFile;
    host.fill = [self = Ref<QtFormPage>(this)](QWidget* place) { return self->Fill(place); };
    host.resets = m_form->PageObj().TryAs<forms::PreferencesPage>() != nullptr;
    const auto page = PageObj().TryAs<Recoverable>();
    if (!page) {
        m_widget = new FormWidget(m_form->Model(), std::move(host), parent);
        return m_widget;
    }
    // Of a process of its own: the widget isn't the form itself.
    auto* both = new QWidget(parent);
    m_widget = new FormWidget(m_form->Model(), std::move(host), both);
    const auto recover = [self = Ref<QtFormPage>(this), page] {
        const auto work = [page] { page->Recover(); };
        if (self->m_act && self->m_form->Model()->Count() > 0)
            self->m_act({FormAct::What::Leave, 0}, work);
        else
            work();
    };
    auto* layout = new QVBoxLayout(both);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new LostBar(page, recover, both));
    layout->addWidget(m_widget, 1);
    return both;
}

// A place that stays empty says why; the rest of the form works.
QWidget* QtFormPage::Fill(QWidget* place) const {
    const Ref<Object> pageObj = PageObj();
    const std::string name = place->objectName().toStdString();
    try {
        const auto page = pageObj.TryAs<IQtPage>();
        if (!page)
            Fail(FailureNumber::TypeMismatch,
                 "The class of the page has no widget for the place \"" + name + "\": it must implement IQtPage",
                 std::string(pageObj->TypeName()));
        const Entering entering(pageObj);
        QWidget* widget = page->NewWidget(place);
        if (!widget)
            Fail(FailureNumber::ObjectNotSet, "The page returned no widget for the place \"" + name + "\"",
                 "NewWidget");
        return widget;
    } catch (...) {
        const Failure failure = CurrentFailure();
        const auto& utilities = CurrentPlatform().oUtilities;
        utilities->LogError(utilities->AppName(), "QtFormPage", "Fill", failure, name, false);
        return new FailureView(Text(name), failure, place);
    }
}

// That of the page's own widget, when it says one.
QWidget* QtFormPage::FirstFocus() {
    const auto page = PageObj().TryAs<IQtPage>();
    QWidget* own = page && m_widget ? page->FirstFocus() : nullptr;
    return own || !m_widget ? own : m_widget->FirstFocus();
}

Long QtFormPage::HelpTopic() {
    const auto page = PageObj().TryAs<IQtPage>();
    return page ? page->HelpTopic() : -1;
}

bool QtFormPage::Print(IPrintout& printout) {
    const auto page = PageObj().TryAs<IQtPage>();
    if (page && page->Print(printout))
        return true;
    if (m_widget)
        PrintForm(*m_widget, printout);
    return m_widget;
}

FormStepText StepOf(const forms::FormModel& model, const FormAct& act) {
    const std::string& field = model.Field(act.field).name;
    const auto Number = [](std::size_t number) { return std::to_string(number); };
    switch (act.what) {
    case FormAct::What::Set:
        return {"set", field + " " + InStep(act.text), field};
    case FormAct::What::Press:
        return {"press", field, field};
    case FormAct::What::Cell:
        return {"cell", field + " " + Number(act.row) + " " + Number(act.column) + " " + InStep(act.text), field};
    case FormAct::What::Row:
        return {"row", field + " " + (act.row == forms::none ? "none" : Number(act.row)), field};
    case FormAct::What::Leave:
        break;
    }
    return {};
}

} // namespace corvane::desktop
