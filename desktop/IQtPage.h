// What a page gives to this host: its widget. A page's own class offers it beside IPageAccess.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Object.h"

class QWidget;

namespace corvane::desktop {

class __attribute__((visibility("default"))) IQtPage : public virtual Object {
public:
    // Makes the page's widget as a child of that parent, once, when the page first comes to the front; PageBase has
    // been initialised by then. The form deletes it after the page's Terminate. Its minimum size counts, and its size
    // hint where the definition gives no size.
    virtual QWidget* NewWidget(QWidget* parent) = 0;
    // Where the keyboard goes when the page first comes to the front; nothing: to the first control that takes it.
    // Only asked after NewWidget.
    [[nodiscard]] virtual QWidget* FirstFocus() { return nullptr; }
    // Whether there is something to save. Like the validity it may be asked before NewWidget. A page calls
    // PageBase.ValidityChanged when the answer changes, too.
    [[nodiscard]] virtual bool IsChanged() { return false; }
    // The help topic as things stand, 0 for none; by default the definition's, for which -1 stands.
    [[nodiscard]] virtual Long HelpTopic() { return -1; }
};

} // namespace corvane::desktop
