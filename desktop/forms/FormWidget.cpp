#include "desktop/forms/FormWidget.h"

#include "desktop/style/QtText.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QTabWidget>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr const char* restoreName = "RestoreDefaults"; // a form that has that button needs no other

} // namespace

FormWidget::FormWidget(const Ref<forms::FormModel>& model, FormHost host, QWidget* parent)
    : QWidget(parent), m_form(std::make_shared<FormContext>(model, std::move(host))) {
    {
        const FormContext::Showing showing(*m_form);
        QWidget* content = this;
        if (m_form->Host().resets && !model->Find(restoreName)) {
            content = new QWidget(this);
            auto* all = new QVBoxLayout(this);
            all->setContentsMargins(0, 0, 0, 0);
            all->addWidget(content, 1);
        }
        forms::ForEachNode(model->Def().root, [this](const forms::FormNode& node) { m_nodes.push_back(&node); });
        m_enabled.assign(m_nodes.size(), true);
        m_visible.assign(m_nodes.size(), true);
        m_wrong.assign(model->Count(), false);
        m_wrongInside.assign(m_nodes.size(), 0);
        FormBuilder builder(m_form, m_parts);
        // From now on: the widgets of places may give the form other values and choices.
        m_notices = model->Notice.Subscribe([this](const forms::FormNotice& notice) { Take(notice); });
        builder.Fill(*content);
        if (content != this)
            AddRestoreAll();
        OrderTabs();
        m_isMade = true;
        ShowAll();
    }
}

FormWidget::~FormWidget() = default;

void FormWidget::ShowAll() {
    for (const auto& editor : m_parts.editors) {
        if (!editor)
            continue;
        editor->Show();
        editor->ShowProblem();
        MarkTabs(editor->Field());
    }
    for (std::size_t node = 0; node < m_nodes.size(); ++node)
        ShowState(node);
    ShowRestoreAll();
}

void FormWidget::Take(const forms::FormNotice& notice) {
    const FormContext::Showing showing(*m_form);
    FieldEditor* editor = notice.field < m_parts.editors.size() ? m_parts.editors[notice.field].get() : nullptr;
    switch (notice.what) {
    case forms::FormChange::State:
        return m_isMade ? ShowState(notice.node) : void();
    case forms::FormChange::Changed:
    case forms::FormChange::Done:
        return ShowRestoreAll();
    default:
        break;
    }
    if (!editor)
        return;
    switch (notice.what) {
    case forms::FormChange::Value:
        editor->Show();
        break;
    case forms::FormChange::Problem:
        editor->ShowProblem();
        MarkTabs(notice.field);
        break;
    case forms::FormChange::Choices:
        editor->ShowChoices();
        break;
    case forms::FormChange::Rows:
        editor->ShowRows();
        break;
    case forms::FormChange::Cell:
        editor->ShowCells();
        break;
    case forms::FormChange::Selection:
        editor->ShowSelection();
        break;
    case forms::FormChange::Label:
        ShowLabel(notice.field);
        break;
    case forms::FormChange::Focus:
        PutFocus(notice.field);
        break;
    default:
        break;
    }
}

// What lies in it follows by itself. Only what is otherwise than before: a form may be large.
void FormWidget::ShowState(std::size_t node) {
    const FormParts::Part& part = m_parts.nodes[node];
    const bool isEnabled = m_form->Model().IsNodeEnabled(node);
    const bool isVisible = m_form->Model().IsNodeVisible(node);
    if (isEnabled != m_enabled[node]) {
        m_enabled[node] = isEnabled;
        if (part.tabs)
            part.tabs->setTabEnabled(part.tab, isEnabled);
        else if (part.editor)
            part.editor->SetEnabled(isEnabled);
        else if (part.widget)
            part.widget->setEnabled(isEnabled);
    }
    if (isVisible != m_visible[node]) {
        m_visible[node] = isVisible;
        if (part.tabs)
            part.tabs->setTabVisible(part.tab, isVisible);
        else if (part.editor)
            part.editor->SetVisible(isVisible);
        else if (part.widget && part.widget != this)
            part.widget->setVisible(isVisible);
        if (part.side)
            part.side->setVisible(isVisible);
    }
    // A problem of what can't be entered isn't shown.
    forms::ForEachNode(*m_nodes[node], [this](const forms::FormNode& inside) {
        if (inside.field != forms::none && m_parts.editors[inside.field] &&
            m_wrong[inside.field] != m_form->Model().IsProblemShown(inside.field)) {
            m_parts.editors[inside.field]->ShowProblem();
            MarkTabs(inside.field);
        }
    });
}

void FormWidget::ShowRestoreAll() {
    if (m_restoreAll)
        m_restoreAll->setEnabled(std::any_of(m_parts.editors.begin(), m_parts.editors.end(), [](const auto& editor) {
            return editor && editor->DiffersFromDefault();
        }));
}

void FormWidget::ShowLabel(std::size_t field) {
    const auto [begin, end] = m_parts.labels.equal_range(field);
    for (auto it = begin; it != end; ++it)
        if (it->second)
            it->second->setText(Marked(m_form->Model().Label(field), m_form->Model().Field(field).required));
    m_parts.editors[field]->ShowLabel();
}

// A tab in which something is shown to be wrong has a sign, as it may lie behind another one.
void FormWidget::MarkTabs(std::size_t field) {
    const forms::FormModel& model = m_form->Model();
    const bool isWrong = model.IsProblemShown(field);
    if (m_wrong[field] == isWrong)
        return;
    m_wrong[field] = isWrong;
    for (std::size_t node = model.Field(field).node; node != forms::none; node = m_nodes[node]->parent) {
        const FormParts::Part& part = m_parts.nodes[node];
        if (!part.tabs)
            continue;
        m_wrongInside[node] += isWrong ? 1 : -1;
        part.tabs->setTabIcon(part.tab, m_wrongInside[node] > 0
                                            ? style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this)
                                            : QIcon());
    }
}

void FormWidget::BringToFront(std::size_t field) {
    for (std::size_t node = m_form->Model().Field(field).node; node != forms::none; node = m_nodes[node]->parent)
        if (const FormParts::Part& part = m_parts.nodes[node]; part.tabs)
            part.tabs->setCurrentIndex(part.tab);
}

void FormWidget::PutFocus(std::size_t field) {
    QWidget* main = m_parts.editors[field] ? m_parts.editors[field]->Main() : nullptr;
    if (!main)
        return;
    BringToFront(field);
    main->setFocus(Qt::OtherFocusReason);
    for (QWidget* around = main->parentWidget(); around; around = around->parentWidget())
        if (auto* scroll = qobject_cast<QScrollArea*>(around))
            scroll->ensureWidgetVisible(main);
}

QWidget* FormWidget::FirstFocus() const {
    const forms::FormModel& model = m_form->Model();
    const std::size_t wrong = model.FirstWrong();
    if (wrong != forms::none && model.IsProblemShown(wrong) && m_parts.editors[wrong])
        return m_parts.editors[wrong]->Main();
    for (const std::size_t field : model.Def().tabOrder) {
        const auto& editor = m_parts.editors[field];
        QWidget* main = editor && model.IsVisible(field) && model.IsEnabled(field) ? editor->Main() : nullptr;
        if (main && (main->focusPolicy() & Qt::TabFocus) && main->isEnabled() && main->isVisibleTo(this))
            return main;
    }
    return nullptr;
}

// The widgets are made in the order of the form; another one is what the form says itself.
void FormWidget::OrderTabs() {
    const forms::FormDef& def = m_form->Model().Def();
    if (def.tabStops == 0)
        return;
    QWidget* before = nullptr;
    for (const std::size_t field : def.tabOrder) {
        if (!m_parts.editors[field])
            continue;
        for (QWidget* widget : m_parts.editors[field]->TabStops()) {
            if (before)
                setTabOrder(before, widget);
            before = widget;
        }
    }
}

// Return presses the form's own button, if it has one for that.
void FormWidget::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !(event->modifiers() & ~Qt::KeypadModifier) && !qobject_cast<QAbstractButton*>(focusWidget()))
        for (const auto& editor : m_parts.editors)
            if (auto* button = editor && m_form->Model().Field(editor->Field()).isDefault
                                   ? qobject_cast<QAbstractButton*>(editor->Main())
                                   : nullptr;
                button && button->isVisible() && button->isEnabled()) {
                event->accept();
                button->click();
                return;
            }
    QWidget::keyPressEvent(event);
}

void FormWidget::AddRestoreAll() {
    m_restoreAll = new QPushButton(tr("Restore Defaults"), this);
    m_restoreAll->setAutoDefault(false);
    auto* line = new QHBoxLayout;
    const int margin = style()->pixelMetric(QStyle::PM_LayoutLeftMargin, nullptr, this);
    line->setContentsMargins(margin, 0, margin, margin);
    line->addStretch();
    line->addWidget(m_restoreAll);
    static_cast<QBoxLayout*>(layout())->addLayout(line);
    connect(m_restoreAll, &QPushButton::clicked, this, &FormWidget::RestoreAll);
}

void FormWidget::RestoreAll() {
    const QPointer<FormWidget> alive(this);
    for (std::size_t i = 0; alive && i < m_parts.editors.size(); ++i)
        if (m_parts.editors[i] && m_parts.editors[i]->DiffersFromDefault())
            m_parts.editors[i]->Reset();
}

} // namespace corvane::desktop

#include "moc_FormWidget.cpp"
