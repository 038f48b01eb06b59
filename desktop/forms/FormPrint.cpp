#include "desktop/forms/FormPrint.h"

#include "desktop/IPrintout.h"
#include "desktop/forms/FormTexts.h"
#include "desktop/forms/FormWidget.h"
#include "desktop/forms/PictureLabel.h"
#include "desktop/style/QtText.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <set>

namespace corvane::desktop {

namespace {

using forms::FieldKind;
using forms::FormNode;
using forms::NodeKind;

class FormPrinting {
    Q_DECLARE_TR_FUNCTIONS(FormPrinting)
public:
    FormPrinting(const FormWidget& form, IPrintout& printout)
        : m_form(form), m_model(form.Model()), m_printout(printout) {}

    void Print(const FormNode& node) {
        if (!m_model.IsNodeVisible(node.index))
            return;
        switch (node.kind) {
        case NodeKind::Group:
        case NodeKind::Tab:
            m_printout.AddHeading(Plain(node.text.text));
            break;
        case NodeKind::Label:
            PrintLabel(node);
            break;
        case NodeKind::Place:
            if (auto* place = m_form.findChild<QWidget*>(Text(node.name)))
                m_printout.AddWidget(*place);
            break;
        case NodeKind::Field:
        case NodeKind::Radio:
            if (m_printed.insert(node.field).second)
                PrintField(node.field);
            break;
        default:
            break;
        }
        if (node.kind == NodeKind::Group && node.field != forms::none && m_model.Value(node.field) == Variant(false))
            return; // its content isn't in force
        for (const FormNode& child : node.children)
            Print(child);
    }

private:
    [[nodiscard]] static QString Plain(const std::string& text) { return Text(forms::PlainText(text)); }

    void PrintLabel(const FormNode& node) {
        if (node.labelled != forms::none)
            return; // with its field
        if (node.bold)
            m_printout.AddHeading(Plain(node.text.text));
        else
            m_printout.AddText(Plain(node.text.text));
    }

    void PrintField(std::size_t field) {
        const forms::FieldDef& def = m_model.Field(field);
        auto* widget = m_form.findChild<QWidget*>(Text(def.name));
        const auto* picture = dynamic_cast<const PictureLabel*>(widget);
        const QString label = Plain(m_model.Label(field));
        if (def.kind == FieldKind::Button || def.look == forms::FieldLook::Password)
            return;
        if (def.kind == FieldKind::Table || def.kind == FieldKind::Tree || (picture && picture->IsPicture())) {
            m_printout.AddHeading(label.isEmpty() ? Plain(forms::CallOf(def)) : label);
            if (auto* view = qobject_cast<QAbstractItemView*>(widget); view || picture)
                m_printout.AddWidget(*widget);
            return;
        }
        const QString value = Value(field);
        if (value.isEmpty())
            return;
        if (label.isEmpty())
            m_printout.AddText(value);
        else
            m_printout.AddField(label, value);
    }

    [[nodiscard]] QString Value(std::size_t field) const {
        const forms::FieldDef& def = m_model.Field(field);
        const std::string text = m_model.Text(field);
        switch (def.kind) {
        case FieldKind::Boolean:
            return m_model.Value(field) == Variant(true) ? tr("Yes") : tr("No");
        case FieldKind::Choice:
        case FieldKind::Choices: {
            QStringList labels;
            for (const auto& value : Text(text).split('\n', Qt::SkipEmptyParts))
                labels.append(LabelOf(field, value));
            return labels.join(", ");
        }
        default: {
            const QString shown = ShownValue(def.kind, text);
            const QString special = AsSpecial(def, shown);
            const bool hasUnit = !def.unit.IsEmpty() && !shown.isEmpty() && special == shown;
            return hasUnit ? shown + ' ' + Text(def.unit.text) : special;
        }
        }
    }

    [[nodiscard]] QString LabelOf(std::size_t field, const QString& value) const {
        const auto& choices = m_model.Choices(field);
        const auto choice =
            std::find_if(choices.begin(), choices.end(), [&](const auto& each) { return Text(each.value) == value; });
        return choice == choices.end() ? value : Plain(choice->label.text);
    }

    const FormWidget& m_form;
    const forms::FormModel& m_model;
    IPrintout& m_printout;
    std::set<std::size_t> m_printed; // fields of several buttons
};

} // namespace

void PrintForm(const FormWidget& form, IPrintout& printout) {
    FormPrinting(form, printout).Print(form.Model().Def().root);
}

} // namespace corvane::desktop
