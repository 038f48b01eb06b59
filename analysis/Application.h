// The definition files of an application folder.
#pragma once

#include "analysis/Model.h"

namespace corvane::check {

// Reads the files that the library would read, in its order, and reports what is wrong with each by itself. Fails with
// 76 when there is no folder of definition files.
void ReadApplication(Model& model, const std::string& application, Report& report, const Buffers& buffers = {});

} // namespace corvane::check
