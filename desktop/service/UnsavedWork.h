// What would be lost if the application ended now, as its services and its windows report it, and the saving of it.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/base/Variant.h"
#include "desktop/guard/Guard.h"

#include <functional>
#include <string>
#include <vector>

namespace corvane {
class Framework;
}

namespace corvane::desktop {

struct UnsavedItem {
    std::string name;
    Ref<Object> object; // what it is about: a service's item, or a window's business context; nothing for neither
    std::function<void()> save; // fails when it can't be saved
};

struct UnsavedGroup {
    std::string name; // of the service
    std::vector<UnsavedItem> items;
};

// Windows with changes come first, as saving them may leave something with a service; then services by the order that
// they give themselves, of one order in order of loading. Groups without items are left out. A service that fails to
// report is shown by the guard, and the others are asked all the same.
[[nodiscard]] std::vector<UnsavedGroup> FindUnsavedWork(const Ref<Framework>& framework,
                                                        std::vector<UnsavedItem> windows, const Guard& guard);

struct ExitAnswer {
    enum class What { Save, Discard, Cancel } what = What::Cancel;
    std::vector<UnsavedItem> items; // what is to be saved
};

// Asks what to do about unsaved work, if there is any, does it, and tells every service that the saving has ended.
// False when the application must stay open: the user cancelled, or something couldn't be saved, which has been
// shown.
[[nodiscard]] bool SettleUnsavedWork(const Ref<Framework>& framework, std::vector<UnsavedItem> windows,
                                     const std::function<ExitAnswer(const std::vector<UnsavedGroup>&)>& ask,
                                     const Guard& guard);

} // namespace corvane::desktop
