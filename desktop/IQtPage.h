// The interface by which a page provides its widget to this host. A page's class implements it beside IPageAccess.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Object.h"

class QWidget;

namespace corvane::desktop {

class IPrintout;

class __attribute__((visibility("default"))) IQtPage : public virtual Object {
public:
    // Creates the page's widget as a child of that parent, once, when the page first comes to the front; PageBase has
    // been initialized by then. The form deletes it after the page's Terminate. Its minimum size counts, and its size
    // hint where the definition gives no size.
    virtual QWidget* NewWidget(QWidget* parent) = 0;
    // The control that gets the focus when the page first comes to the front; nothing for the first one that takes it.
    // Only asked after NewWidget.
    [[nodiscard]] virtual QWidget* FirstFocus() { return nullptr; }
    // Whether there is something to save. Like the validity it may be queried before NewWidget. A page calls
    // PageBase.ValidityChanged when the answer changes, too.
    [[nodiscard]] virtual bool IsChanged() { return false; }
    // The current help topic, 0 for none; -1 for the definition's, which is the default.
    [[nodiscard]] virtual Long HelpTopic() { return -1; }
    // Adds what the page shows to what is printed, and returns true. False is for what the host makes of the widget:
    // all that it holds, also what isn't in sight. Only asked after NewWidget.
    [[nodiscard]] virtual bool Print(IPrintout& /*printout*/) { return false; }
};

} // namespace corvane::desktop
