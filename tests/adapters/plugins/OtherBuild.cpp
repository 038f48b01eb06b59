#include "corvane/base/PluginExport.h"

extern "C" [[gnu::visibility("default")]] const corvane::PluginTable* corvane_plugin() {
    static const corvane::PluginTable table{corvane::PluginAbiVersion, "another compiler", nullptr, 1};
    return &table;
}
