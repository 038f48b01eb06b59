#include "corvane/base/PluginExport.h"

#include <stdexcept>

namespace {

struct WithFailure final : corvane::Object {
    WithFailure() { corvane::Fail(91, "The licence is missing", "Throwing"); }
};
struct WithForeign final : corvane::Object {
    WithForeign() { throw std::runtime_error("a foreign exception"); }
};
struct WithNumber final : corvane::Object {
    WithNumber() { throw 42; }
};

} // namespace

CORVANE_PLUGIN(Class<WithFailure>("Throwing.WithFailure"), Class<WithForeign>("Throwing.WithForeign"),
               Class<WithNumber>("Throwing.WithNumber"))
