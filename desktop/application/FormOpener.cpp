#include "desktop/application/FormOpener.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/Window.h"
#include "desktop/platform/HostParts.h"
#include "desktop/style/QtText.h"

#include <QFileInfo>
#include <algorithm>
#include <vector>

namespace corvane::desktop {

namespace {

// In the order in which the window shows its pages; -1 for a page that isn't among them.
int IndexOf(const Window& window, const Ref<PageDef>& pageDef) {
    std::vector<Ref<PageDef>> pageDefs;
    for (const auto& other : window.WindowDef()->PageDefs())
        pageDefs.push_back(other);
    std::stable_sort(pageDefs.begin(), pageDefs.end(),
                     [](const auto& a, const auto& b) { return a->PositionOrder() < b->PositionOrder(); });
    const auto it = std::find(pageDefs.begin(), pageDefs.end(), pageDef);
    return it == pageDefs.end() ? -1 : static_cast<int>(it - pageDefs.begin());
}

} // namespace

Ref<QtFormPage> FormOpener::operator()(const Ref<PageDef>& pageDef) const {
    forms::FormOptions options;
    options.application = m_folder;
    options.answersAll = m_isStub && m_isStub(pageDef->PageProgID());
    options.translate = [translation = m_translation](const std::string& key, const std::string& text) {
        return translation->OfForm(key, text);
    };
    const Ref<forms::FormPage> form = forms::FormPage::Open(options, pageDef);
    if (!form)
        return nullptr;
    const auto base = CorvaneMain::QueryPage(form->PageObj()).As<PageBase>();
    const auto act = [host = m_host, pageDef, base, model = form->Model()](const FormAct& what,
                                                                           const FormHost::Work& work) {
        host->guard([&] {
            const Ref<Window> window = base->Window();
            FormStepText step = window ? StepOf(*model, what) : FormStepText();
            if (host->byUser && !step.verb.empty())
                host->byUser({*window,
                              WindowStep::What::Field,
                              IndexOf(*window, pageDef),
                              {},
                              std::move(step.verb),
                              std::move(step.field),
                              std::move(step.rest)},
                             work);
            else
                work();
        });
    };
    return New<QtFormPage>(form, act, m_askFile);
}

std::string AskForPath(CommonDialog& dialog, const forms::FieldDef& field, const std::string& path) {
    const std::string purpose = forms::CallOf(field);
    const std::string folder = QFileInfo(Text(path)).path().toStdString();
    if (field.kind == forms::FieldKind::File)
        return field.savesTo ? dialog.ShowSave(purpose, field.filter, path)
                             : dialog.ShowOpen(purpose, field.filter, folder);
    return dialog.ShowFolder(purpose, path);
}

} // namespace corvane::desktop
