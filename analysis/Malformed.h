// What is wrong with a file that isn't well-formed XML, in words for those who write definition files.
#pragma once

#include "analysis/Model.h"
#include "corvane/platform/IXmlService.h"

#include <string>

namespace corvane::check {

void ReportMalformed(const File& file, const XmlError& error, Report& report);

// Without the "line 7: " that a finding reports by its place.
[[nodiscard]] std::string WithoutLine(const std::string& reason);

} // namespace corvane::check
