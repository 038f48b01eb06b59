#include "Database.h"

#include "Errors.h"

#include <filesystem>

namespace studies {
namespace {

using corvane::database::Problem;

void TellProblem(Problem problem, const std::string& path, const std::string& detail) {
    switch (problem) {
    case Problem::NoFolder:
        FailWith(Translated("The folder “%1” can't be created: %2.",
                            {std::filesystem::path(path).parent_path().string(), detail}));
    case Problem::NotADatabase:
        FailWith(Translated(
            "The file “%1” is damaged or isn't a file of studies. Move it away to start with an empty one.", {path}));
    case Problem::InUse:
        FailWith(Translated("The file “%1” is in use by another program. Try again.", {path}));
    case Problem::NotOpened:
        FailWith(Translated("The file “%1” can't be opened.", {path}));
    case Problem::ReadOnly:
        FailWith(Translated("The file “%1” can't be written.", {path}));
    case Problem::Constraint:
        FailWith(Translated(
            "This doesn't fit what the studies are by now: they may have been changed in another window of Studies."));
    case Problem::NoSpace:
        FailWith(Translated("There is no space left for the file “%1”.", {path}));
    case Problem::Other:
        FailWith(Translated("The file “%1”: %2.", {path, detail}));
    }
}

} // namespace

Database::Database(std::string path) : corvane::database::Database(std::move(path), &TellProblem) {}

} // namespace studies
