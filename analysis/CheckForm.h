// What is wrong with one file by itself: its form, its words and its values.
#pragma once

#include "analysis/Model.h"

namespace corvane::check {

// Reads the file's elements into the memory and says whether it takes part; reports what is wrong with its form. The
// schema may be nothing.
void ReadFile(File& file, const Ref<IXmlService>& xml, const Ref<IXmlSchemaCache>& schema, Arena& memory,
              Report& report);

} // namespace corvane::check
