#include "corvane/base/PluginExport.h"

namespace {

class Unsafe final : public corvane::Object {};

} // namespace

CORVANE_PLUGIN(Class<Unsafe>("OtherHeaders.Class"))
