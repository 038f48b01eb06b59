// A modal message.
#pragma once

#include "corvane/base/Object.h"

#include <string_view>

namespace corvane {

class __attribute__((visibility("default"))) IMessageBox : public virtual Object {
public:
    // Returns when the user has answered.
    virtual void ShowInformation(std::string_view sText, std::string_view sTitle) = 0;
};

} // namespace corvane
