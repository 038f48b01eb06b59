// The form of a page, as the page's class sees it: a page whose inside is declared in a file Forms/PROGID.ui.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/base/Variant.h"

#include <string>

namespace corvane {

// Names are those of fields, groups and tabs of the form, and don't distinguish case. All fail with 5 for a name that
// the form doesn't have, and with 91 once the page has ended.
class __attribute__((visibility("default"))) IForm : public virtual Object {
public:
    // Of a group or tab with all that is in it.
    virtual void SetEnabled(const std::string& sName, bool bEnabled) = 0;
    virtual void SetVisible(const std::string& sName, bool bVisible) = 0;
    // The field can't be accepted, for the reason that the user reads beside it; "" takes that back, and so does
    // another value of the field.
    virtual void SetProblem(const std::string& sName, const std::string& sText) = 0;
    virtual void SetLabel(const std::string& sName, const std::string& sText) = 0; // "&" before its mnemonic
    // The page's properties have changed: value, choices, rows and problem of one field are read again, or without a
    // name of all.
    virtual void Refresh(const std::string& sName = {}) = 0;
    // What the field holds; of a field without a property this is the only place where it is. A number, boolean or
    // text.
    [[nodiscard]] virtual Variant Value(const std::string& sName) = 0;
    virtual void SetValue(const std::string& sName, const Variant& vValue) = 0; // fails with 13
    // The selected row of a table or tree, from 1; 0 for none.
    [[nodiscard]] virtual Long SelectedRow(const std::string& sName) = 0;
    // Puts the keyboard into the field.
    virtual void Focus(const std::string& sName) = 0;
};

// A page that wants its form implements this; the classes of corvane/Page.h do.
class __attribute__((visibility("default"))) IFormUser : public virtual Object {
public:
    // Before the page's initialization; nothing when the page has ended.
    virtual void UseForm(const Ref<IForm>& oForm) = 0;
};

} // namespace corvane
