// A form on screen: made from its model, it shows what that says and passes on what the user does. Nothing is in it
// that the model doesn't know, apart from the widgets that the page's class puts into its places.
#pragma once

#include "desktop/forms/FormParts.h"

#include <QWidget>
#include <memory>
#include <vector>

class QPushButton;

namespace corvane::desktop {

class FormWidget final : public QWidget {
    Q_OBJECT
public:
    FormWidget(const Ref<forms::FormModel>& model, FormHost host, QWidget* parent);
    ~FormWidget() override;

    // What gets the keyboard first: the first field that is shown to be wrong, or the first one at all. May be a null
    // pointer.
    [[nodiscard]] QWidget* FirstFocus() const;
    [[nodiscard]] const forms::FormModel& Model() const { return m_form->Model(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Take(const forms::FormNotice& notice);
    void ShowAll();
    void ShowState(std::size_t node);
    void ShowRestoreAll();
    void ShowLabel(std::size_t field);
    void MarkTabs(std::size_t field);
    void PutFocus(std::size_t field);
    void BringToFront(std::size_t field);
    void OrderTabs();
    void AddRestoreAll();
    void RestoreAll();

    std::shared_ptr<FormContext> m_form;
    FormParts m_parts;
    std::vector<const forms::FormNode*> m_nodes; // by their index
    std::vector<bool> m_enabled;                 // likewise, as it is on screen
    std::vector<bool> m_visible;
    std::vector<bool> m_wrong;      // by field, whether it is shown to be wrong
    std::vector<int> m_wrongInside; // by node, how many of these a tab holds
    QPointer<QPushButton> m_restoreAll;
    bool m_isMade = false;
    Subscription m_notices;
};

} // namespace corvane::desktop
