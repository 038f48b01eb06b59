#include "desktop/application/Display.h"

#include <QString>
#include <QtGlobal>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr int exitCode = 3;
std::string theProgram;
QtMessageHandler theHandlerBefore = nullptr;

bool Has(int argumentCount, char** arguments, std::initializer_list<std::string_view> options) {
    return std::any_of(arguments + 1, arguments + argumentCount, [&](const char* argument) {
        return std::find(options.begin(), options.end(), std::string_view(argument)) != options.end();
    });
}

// The toolkit tells in several messages what it tried, and then aborts.
void OnMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtFatalMsg) {
        std::fprintf(stderr,
                     "%s: error: there is no display to draw on; set DISPLAY or WAYLAND_DISPLAY, or QT_QPA_PLATFORM="
                     "offscreen to draw without one\n",
                     theProgram.c_str());
        std::_Exit(exitCode);
    }
    const bool isOfPlatform = context.category && std::string_view(context.category).starts_with("qt.qpa");
    if (!isOfPlatform && theHandlerBefore)
        theHandlerBefore(type, context, text);
}

} // namespace

bool IsHelpWanted(int argumentCount, char** arguments) {
    return Has(argumentCount, arguments, {"-h", "--help", "--help-all"});
}

void ChooseDisplay(int argumentCount, char** arguments) {
    const bool isChosen =
        !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || Has(argumentCount, arguments, {"-platform", "--platform"});
    if (!isChosen && Has(argumentCount, arguments, {"--quit"}))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

DisplayWatch::DisplayWatch(const char* program) {
    theProgram = program;
    theHandlerBefore = qInstallMessageHandler(&OnMessage);
}

DisplayWatch::~DisplayWatch() {
    qInstallMessageHandler(std::exchange(theHandlerBefore, nullptr));
}

} // namespace corvane::desktop
