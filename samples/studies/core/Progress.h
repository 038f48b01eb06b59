// The shell's progress bar for as long as a piece of work takes.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/menus/IActionsProvider.h"

namespace studies {

// While it lives, the shell is disabled and the bar offers to cancel. The bar enables every entry when it goes, so the
// entries get their own states back: those of all services, of the explorer's active item, and of the given provider,
// which is the page that works.
class Progress {
public:
    Progress(int steps, corvane::Ref<corvane::IActionsProvider> working);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // One step is done. False when the person has cancelled.
    bool Step();

private:
    corvane::Ref<corvane::IActionsProvider> m_working;
};

} // namespace studies
