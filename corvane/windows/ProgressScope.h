// Shows the progress bar while a long operation runs, and puts everything back at its end.
#pragma once

#include "corvane/windows/CVProgressBar.h"

#include <vector>

namespace corvane {

// A local variable of the procedure that does the work:
//
//     ProgressScope oProgress(nRows, true);
//     for (...) {
//         ...
//         oProgress.Increment();
//         if (oProgress.WasCanceled())
//             break;
//     }
//
// The bar goes with the variable, also when the procedure fails or returns early, and commands that were disabled
// before are disabled again. A scope within another shows its own progress in the same bar, and the outer one's
// afterwards. An application without an explorer shows the bar, too.
class __attribute__((visibility("default"))) ProgressScope final {
public:
    // dMax is the value at which all is done. Fails with 91 when there is no application, with 438 when its main form
    // has no progress control; the commands are as before then.
    explicit ProgressScope(Double dMax = 100.0, bool bCancel = false);
    // Never fails: what can't be put back, since the application has ended meanwhile, is left.
    ~ProgressScope();
    ProgressScope(const ProgressScope&) = delete;
    ProgressScope& operator=(const ProgressScope&) = delete;

    void Increment() { m_oBar->Increment(); }
    void Percent(Double dPercent) { m_oBar->Percent(dPercent); }
    [[nodiscard]] Double Value() const { return m_oBar->Value(); }
    void SetValue(Double dValue) { m_oBar->SetValue(dValue); }
    // Whether the user has cancelled, this operation or one within it.
    [[nodiscard]] bool WasCanceled() const { return m_oBar->WasCanceled(); }

private:
    // A command as it was, and what its owner said of it.
    struct Command {
        Ref<Tool> oTool;
        Ref<Object> oOwner;
        bool bEnabled;
        bool bByOwner;
    };

    void Show(Double dMax, bool bCancel);
    void Hide();
    void Note();
    void PutBack() const;

    Ref<CVProgressBar> m_oBar;
    Ref<ActiveBar> m_oActiveBar;
    bool m_bIsInner;
    // Of the bar that was shown already.
    Double m_dMax = 0;
    Double m_dValue = 0;
    bool m_bCancel = false;
    bool m_bWasCanceled = false;
    std::vector<Command> m_aCommands;
    bool m_bTreeEnabled = true;
};

} // namespace corvane
