#include "corvane/base/PluginExport.h"

extern "C" [[gnu::visibility("default")]] const corvane::PluginTable* corvane_plugin() {
    return nullptr;
}
