#include "desktop/forms/FieldEditor.h"

#include "desktop/forms/FormTexts.h"
#include "desktop/forms/ProblemLine.h"
#include "desktop/style/QtText.h"

#include <QAccessible>
#include <QApplication>
#include <QFocusEvent>
#include <QLabel>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int problemGap = 2; // between a field and its problem

} // namespace

QString Marked(const std::string& label, bool isRequired) {
    QString text = Text(label);
    if (!isRequired || text.isEmpty())
        return text;
    const bool hasColon = text.endsWith(':');
    if (hasColon)
        text.chop(1);
    return text + " *" + (hasColon ? ":" : "");
}

void FieldEditor::Compose(QWidget* main, Growth growth, std::vector<QWidget*> behind) {
    QWidget* parent = main->parentWidget();
    m_main = main;
    main->setObjectName(Text(Def().name));
    m_parts.emplace_back(main);
    for (QWidget* part : behind)
        m_parts.emplace_back(part);
    if (m_form->Host().resets && forms::IsEntered(Def().kind) && !Model().IsReadOnly(m_field)) {
        AddReset(parent);
        behind.push_back(m_reset);
    }
    m_column = new QVBoxLayout;
    m_column->setSpacing(problemGap);
    const bool isTall = main->sizePolicy().expandingDirections().testFlag(Qt::Vertical);
    const int stretch = isTall ? 1 : 0; // what isn't tall leaves the height to others
    if (behind.empty()) {
        m_column->addWidget(main, stretch, growth == Growth::Keeps ? Qt::AlignLeading : Qt::Alignment());
    } else {
        auto* line = new QHBoxLayout;
        line->addWidget(main, growth == Growth::Fills ? 1 : 0);
        for (QWidget* part : behind)
            line->addWidget(part, 0, isTall ? Qt::AlignTop : Qt::AlignVCenter);
        if (growth == Growth::Keeps)
            line->addStretch();
        m_column->addLayout(line, stretch);
    }
    if (!isTall)
        m_column->setAlignment(Qt::AlignTop);
    Watch(main);
    Describe();
}

QLayout* FieldEditor::Layout() {
    return m_column;
}

void FieldEditor::Watch(QWidget* widget) {
    widget->installEventFilter(this);
}

void FieldEditor::LeaveWheel(QWidget* widget) {
    m_leavesWheel = true;
    widget->setFocusPolicy(Qt::StrongFocus);
}

void FieldEditor::AddReset(QWidget* parent) {
    m_reset = new QToolButton(parent);
    m_reset->setAutoRaise(true);
    m_reset->setText(QString(QChar(0x21BA)));
    m_reset->setToolTip(tr("Restore the default"));
    m_reset->setAccessibleName(tr("Restore the default: %1").arg(Text(forms::CallOf(Def()))));
    QSizePolicy policy = m_reset->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_reset->setSizePolicy(policy);
    m_reset->hide();
    connect(m_reset, &QToolButton::clicked, this, &FieldEditor::Reset);
}

void FieldEditor::Reset() {
    const auto form = m_form; // what comes of it may end this
    form->Do({FormAct::What::Set, m_field, forms::WriteValue(Def().value)},
             [form, field = m_field] { form->Model().RestoreDefault(field); });
}

bool FieldEditor::DiffersFromDefault() const {
    return forms::IsEntered(Def().kind) && !Model().IsReadOnly(m_field) &&
           Model().Text(m_field) != forms::WriteValue(Def().value);
}

void FieldEditor::Show() {
    const FormContext::Showing showing(*m_form);
    ShowValue();
    if (m_reset)
        m_reset->setVisible(m_isVisible && DiffersFromDefault());
}

std::vector<QWidget*> FieldEditor::TabStops() const {
    std::vector<QWidget*> stops;
    for (const auto& part : m_parts)
        if (part && (part->focusPolicy() & Qt::TabFocus))
            stops.push_back(part);
    if (m_reset)
        stops.push_back(m_reset);
    return stops;
}

void FieldEditor::ShowProblem() {
    const FormContext::Showing showing(*m_form);
    const QString text = Model().IsProblemShown(m_field) ? ShownProblem(Model().ProblemOf(m_field)) : QString();
    if (!m_problem && text.isEmpty())
        return;
    if (!m_problem && m_column) {
        m_problem = new ProblemLine(m_column->parentWidget());
        m_column->addWidget(m_problem);
    }
    if (m_problem) {
        m_problem->SetText(text);
        m_problem->setVisible(m_isVisible && !text.isEmpty());
    }
    Describe();
}

// For assistive programs: what the field is called, and all that is to be known of it.
void FieldEditor::Describe() {
    QWidget* main = Main();
    if (!main)
        return;
    const forms::FieldDef& def = Def();
    const std::string label = forms::PlainText(Model().Label(m_field));
    QString name = Text(label.empty() ? forms::CallOf(def) : label);
    // A text that is only shown has no value of its own for them.
    if (const auto* shown = qobject_cast<QLabel*>(main); shown && !shown->text().isEmpty())
        name += ": " + shown->text();
    main->setAccessibleName(name);
    main->setToolTip(Text(def.tip.text));
    QStringList all;
    if (Model().IsProblemShown(m_field))
        all.append(ShownProblem(Model().ProblemOf(m_field)));
    if (def.required)
        all.append(tr("Required"));
    if (!def.unit.IsEmpty())
        all.append(Text(def.unit.text).trimmed());
    if (!def.tip.IsEmpty() && !all.isEmpty())
        all.append(Text(def.tip.text)); // alone it is read as the tooltip
    const QString description = all.join(". ");
    if (description != main->accessibleDescription())
        main->setAccessibleDescription(description);
}

QString FieldEditor::MarkedLabel() const {
    return Marked(Model().Label(m_field), Def().required);
}

void FieldEditor::SetEnabled(bool enabled) {
    const FormContext::Showing showing(*m_form);
    for (const auto& part : m_parts)
        if (part)
            part->setEnabled(enabled && !m_isFixed);
}

void FieldEditor::SetVisible(bool visible) {
    const FormContext::Showing showing(*m_form);
    m_isVisible = visible;
    for (const auto& part : m_parts)
        if (part)
            part->setVisible(visible);
    Show();
    ShowProblem();
}

void FieldEditor::Enter(const std::string& text) {
    const QPointer<FieldEditor> alive(this);
    const auto form = m_form;
    form->Do({FormAct::What::Set, m_field, text}, [form, field = m_field, &text] { form->Model().Type(field, text); });
    if (alive && !form->IsShowing())
        Show(); // also when it was refused
}

bool FieldEditor::IsOwn(const QWidget* widget) const {
    return widget && (widget == m_reset || std::any_of(m_parts.begin(), m_parts.end(), [&](const auto& part) {
                          return part && (part == widget || part->isAncestorOf(widget));
                      }));
}

bool FieldEditor::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Wheel && m_leavesWheel && widget && !widget->hasFocus()) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason &&
            reason != Qt::MenuBarFocusReason && !IsOwn(QApplication::focusWidget())) {
            const QPointer<FieldEditor> alive(this);
            const auto form = m_form;
            form->Do({FormAct::What::Leave, m_field}, [form, field = m_field] { form->Model().Leave(field); });
            if (!alive)
                return false;
            const FormContext::Showing showing(*form);
            Left();
        }
    }
    return false;
}

} // namespace corvane::desktop

#include "moc_FieldEditor.cpp"
