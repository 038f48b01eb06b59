// The options of a window and the commands that pass through it. -1 means that the definition decides.
#pragma once

#include "corvane/services/DefinitionEnums.h"

namespace corvane {

enum class WindowShowModeConstants : Long { cvDefinitionDefault = -1, cvModeless = 0, cvModal = 1 };
enum class MDIWindowTypeConstants : Long { cvDefinitionDefault = -1, cvMDIChild = 0, cvNonMDIChild = 1 };
enum class BusinessContextTypeConstants : Long { cvDefinitionDefault = -1, cvExisting = 0, cvNew = 1 };
enum class ShowApplyCommandConstants : Long {
    cvDefinitionDefault = -1,
    cvShowApplyCommand = 0,
    cvHideApplyCommand = 1,
};

// Some share a number, and only the number is passed: the window's type determines the meaning.
enum class StandardCommandConstants : Long {
    cvHelp = 0,
    cvOK = 1,
    cvCancel = 2,
    cvApply = 3,
    cvPrevious = 4,
    cvNext = 5,
    cvFinish = 1,
    cvSave = 1,
    cvSaveAs = 3,
};

} // namespace corvane
