// A report on a study with its pictures, on screen and in files.
#pragma once

#include "StudyReport.h"

#include <QImage>
#include <vector>

class QTextDocument;

namespace corvane {
class JobProgress;
}

namespace studies {

struct DrawnReport {
    StudyReport report;
    std::vector<QImage> pictures; // in order of those of the report
};

// With a progress on a job's thread, which ends when the job is cancelled.
[[nodiscard]] DrawnReport DrawReport(StudyReport report, const corvane::JobProgress& progress);
void FillDocument(QTextDocument& document, const DrawnReport& drawn);
// PDF or HTML, by the ending of the path. Fails when the file can't be written.
void SaveReport(const DrawnReport& report, const std::string& path);

} // namespace studies
