// A study as one file to send: a database like the store's, with nothing but that study. For jobs, too.
#pragma once

#include "Store.h"
#include "StudyReport.h"
#include "corvane/author/Jobs.h"

#include <string>
#include <string_view>

namespace studies {

constexpr std::int64_t SchemaVersion = 4; // of the store and of the file
constexpr std::string_view StudyEnding = ".study";

[[nodiscard]] bool IsStudyFile(std::string_view path); // by its name

// Replaces the file as a whole, or leaves it as it was and fails. The folders that data came from aren't written.
void WriteStudyFile(const ReportSubject& subject, const std::string& path,
                    corvane::JobProgress& progress = corvane::WithoutJob());

struct StudyFileHead {
    std::string name; // of the study
    std::size_t values = 0;
};
// Fails, saying what is the matter, when the file isn't there, is no study, is damaged, or is of a later version.
[[nodiscard]] StudyFileHead LookAtStudyFile(const std::string& path);
// Copies the rows into the store's file, under numbers that are free there, for Store::AddStudy. Fails as above, and
// when the disk has no space for them; what has been copied goes then.
[[nodiscard]] StudyContents CopyStudyFile(const std::string& path, const std::string& storePath,
                                          corvane::JobProgress& progress = corvane::WithoutJob());

// Parts of the above and of the store.
// Those that a file of that version hasn't; 0 for an empty file.
void MakeTables(Database& database, std::int64_t version);
[[nodiscard]] StudyContents ContentsOfFile(Database& file);
Id WriteContents(Database& database, const StudyContents& contents);
[[nodiscard]] Id ReserveNumber(Database& database);

} // namespace studies
