// What a job belongs to.
#pragma once

#include "corvane/base/Ref.h"

#include <string>

namespace corvane {
class PanelForm;
class Window;
} // namespace corvane

namespace corvane::jobs {

// The texts by which users know an owner; empty where nothing is known.
struct Owner {
    std::string name;    // of the explorer item, or the window's caption; empty for a service
    std::string service; // in whose definition it is
};
[[nodiscard]] Owner OwnerOf(const Ref<Object>& owner);

// Whether the owner is an explorer item that has a node in one of the explorer's trees.
[[nodiscard]] bool HasNode(const Ref<Object>& owner, const PanelForm& explorer);

// False once it has closed; true for nothing, too.
[[nodiscard]] bool IsOpen(const Ref<Window>& window);

} // namespace corvane::jobs
