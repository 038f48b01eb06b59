// What stands on screen after an inspection, as a JSON document or as a text to read.
#pragma once

#include "headless/ModelHost.h"

#include <string>

namespace corvane::inspect {

struct DocumentOptions {
    bool bStandIns = false; // with the calls that stand-ins heard
    bool bPopups = false;   // which bands were shown as pop-up menus
    bool bMessages = false;
    bool bSizes = false; // of the trees
};

[[nodiscard]] std::string JsonDocument(const ModelHost& oHost, const DocumentOptions& oOptions);

// Menus as trees with states and shortcuts, toolbars, context menus, explorer, windows, log.
[[nodiscard]] std::string TextDocument(const ModelHost& oHost, const DocumentOptions& oOptions);

} // namespace corvane::inspect
