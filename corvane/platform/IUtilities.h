// What the application supplies beside its forms: the log, the debugger's questions and the application's folders.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Object.h"

#include <string>
#include <string_view>

namespace corvane {

class __attribute__((visibility("default"))) IUtilities : public virtual Object {
public:
    // One line in the log. With bShow the user is shown the failure before the call returns.
    virtual void LogError(std::string_view sAppName, std::string_view sModule, std::string_view sProcedure,
                          const Failure& oFailure, std::string_view sContext, bool bShow) = 0;
    [[nodiscard]] virtual std::string AppName() const = 0;
    [[nodiscard]] virtual bool BreakOnError() const = 0;
    // Whether a debugger is attached.
    [[nodiscard]] virtual bool IsRunningInIDE() const = 0;
    // The path of the application folder "Services" or "Images". Fails with 76 for another name.
    [[nodiscard]] virtual std::string GetAppFolder(std::string_view sName) const = 0;
    // The equivalent of the folder from which the library was loaded; "QRZ.INI" is there.
    [[nodiscard]] virtual std::string LibraryFolder() const = 0;
};

} // namespace corvane
