// The end of the services, one of which may fail. The library then doesn't call the services after it, and its form
// stays loaded although the services have ended; the host completes the end.
#pragma once

#include "corvane/platform/controls/MdiForm.h"
#include "desktop/blame/Blame.h"
#include "desktop/failures/FailurePresenter.h"

#include <optional>

namespace corvane::desktop {

class ApplicationEnd final {
public:
    // Before the library is initialised: it is to hear of the end first.
    ApplicationEnd(Ref<MdiForm> mainForm, FailurePresenter& failures, Blame& blame);

    // For a failure that has reached that depth. True when it has interrupted the end of the services: those that the
    // library hadn't called yet have been called then, their failures have been shown, and the application has to end.
    [[nodiscard]] bool SeeThrough(int depth);

private:
    Ref<MdiForm> m_mainForm;
    FailurePresenter& m_failures;
    Blame& m_blame;
    std::optional<int> m_begun; // how deep; nothing before the end
    Subscription m_begins;
};

} // namespace corvane::desktop
