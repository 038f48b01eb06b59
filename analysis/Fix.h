// Writes those cures into definition files that are certain.
#pragma once

#include "analysis/Check.h"

namespace corvane::check {

struct FixedFile {
    std::string path; // as a Place has it
    std::string before;
    std::string after;
};

struct Fixes {
    std::vector<FixedFile> files; // in order of their paths
    std::vector<Finding> left;    // what is found after that
};

// Nothing is written. A change is made only when there is less to find with it than without.
[[nodiscard]] Fixes Fix(const Options& options);

// The edits done to a text; those that overlap an earlier one are left out.
[[nodiscard]] std::string Edited(const std::string& text, std::vector<Edit> edits);

// The changes of a file in the unified form, with three lines around each; empty when there are none.
[[nodiscard]] std::string AsDiff(const FixedFile& file);

// The file as it was, beside itself with the ending ".bak" (or ".bak2" and so on where there is one), and then the new
// text in its place. Fails with 75 when it can't be written; the file is as it was then.
void WriteFixed(const FixedFile& file);
// The new text alone, in one step. Fails with 75, as above.
void ReplaceFile(const FixedFile& file);
// Fails with 75.
void WriteWhole(const std::string& path, const std::string& text);

} // namespace corvane::check
