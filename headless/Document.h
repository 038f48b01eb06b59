// The state on screen after an inspection, as a JSON document or as readable text.
#pragma once

#include "headless/ModelHost.h"

#include <string>

namespace corvane::inspect {

struct DocumentOptions {
    bool standIns = false; // with the calls that stubs received
    bool popups = false;   // which bands were shown as pop-up menus
    bool messages = false;
    bool sizes = false; // of the trees
};

[[nodiscard]] std::string JsonDocument(const ModelHost& host, const DocumentOptions& options);

// Menus as trees with states and shortcuts, toolbars, context menus, explorer, windows, log.
[[nodiscard]] std::string TextDocument(const ModelHost& host, const DocumentOptions& options);

} // namespace corvane::inspect
