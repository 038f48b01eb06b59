#include "desktop/forms/FormHost.h"

namespace corvane::desktop {

FormContext::FormContext(Ref<forms::FormModel> model, FormHost host)
    : m_model(std::move(model)), m_host(std::move(host)) {
    forms::ForEachNode(m_model->Def().root, [this](const forms::FormNode& node) {
        const bool isTitle =
            (node.kind == forms::NodeKind::Group && node.field == forms::none) || node.kind == forms::NodeKind::Tab;
        if (node.kind == forms::NodeKind::Label || isTitle)
            m_labels.insert({node.text.at.line, node.text.at.column});
    });
}

void FormContext::Do(const FormAct& act, const FormHost::Work& work) const {
    if (IsShowing())
        return;
    if (m_host.act)
        m_host.act(act, work);
    else
        work();
}

bool FormContext::IsLabelledOutside(std::size_t field) const {
    const forms::FormPlace& at = m_model->Field(field).label.at;
    return m_labels.contains({at.line, at.column});
}

} // namespace corvane::desktop
